#pragma once

#include <QString>

namespace tavolix {

// The folder of the program's own files: that of the executable if a writable tvx.ini lies there
// (a copy on a stick), else the user's data folder.
QString programFolder();

// Copies the installed files that the user's folder does not have yet; nothing is overwritten.
void prepareProgramFolder();

}  // namespace tavolix
