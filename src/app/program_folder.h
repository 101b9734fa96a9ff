#pragma once

#include <QString>

namespace tavolix {

// The folder of the program's own files: that of the executable if a writable tvx.ini lies there
// (a copy on a stick), else the user's data folder.
QString programFolder();

// Lays the files of a folder down in another, which is made if need be. The sample and the settings
// are so once, for the user to change or delete; of the settings, only the keys that are the
// program's own follow it. Other files follow theirs. No file is seen under its name before it is
// whole. Failures leave out a file.
void layDownFiles(const QString& from, const QString& to);
// Does so with the installed files and the program's folder.
void prepareProgramFolder();

}  // namespace tavolix
