#pragma once

#include <QString>

namespace tavolix {

// The folder of the program's own files: that of the executable if a writable tvx.ini lies there
// (a copy on a stick), else the user's data folder.
QString programFolder();

// Copies the files of a folder that the other does not have yet, which is made if need be; nothing
// is overwritten, and no file is seen under its name before it is whole. Failures leave out a file.
void copyMissingFiles(const QString& from, const QString& to);
// Does so with the installed files and the program's folder.
void prepareProgramFolder();

}  // namespace tavolix
