# Debian package of the installed files: cpack -G DEB in the build folder.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tavolix)
set(CPACK_PACKAGE_VENDOR Tavolix)
set(CPACK_PACKAGE_CONTACT "Tavolix <tavolix@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Catalogo di casa: libri, riviste, audio, video e altro")
set(CPACK_PACKAGE_DESCRIPTION
    "Tavolix tiene in ordine le raccolte di una casa: libri, riviste, dischi, film, programmi,\
 medicinali, oggetti e persone, con elenchi, ricerche e stampe.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
