# Debian package of the installed files: cpack -G DEB in the build folder.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavolix)
set(CPACK_PACKAGE_VENDOR Tavolix)
set(CPACK_PACKAGE_CONTACT "Tavolix <tavolix@tavolix.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "catalogue of what a household owns (Italian)")
set(CPACK_PACKAGE_DESCRIPTION
    "Tavolix keeps the collections of a household in order: books, magazines,
records, films, programs, medicines, things and addresses, each archive in
one file, with lists, searches, analyses and printed reports. Its window
speaks Italian.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The toolkit's own texts in Italian are not in its libraries.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-translations-l10n")
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
    GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
