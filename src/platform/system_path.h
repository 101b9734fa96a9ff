#pragma once

#include <QChar>
#include <QString>

namespace platform {

// The path of this system that a path of the settings stands for: "\" separates like "/"; a path
// that begins with either is a full one; "A:" and "B:" stand for the folders given for them, and
// nothing leads out of these; any other drive letter is dropped ("C:\x" is "/x", "C:x" is x in
// the current directory). Names that do not exist as written stand for those that differ in case
// only. Empty, a path that leads nowhere, for an empty path and a drive A or B without a folder.
QString systemPath(const QString& given);
// The same, but the names stay as written.
QString fullPath(const QString& given);
// Says which folder (a path of the system) drive A or B stands for; empty for none.
void setDriveFolder(QChar drive, const QString& folder);

// The folder that relative paths start from, a path of the system. At first it is the process's,
// which is never changed: a folder in use could not be unmounted.
QString currentDirectory();
// 76 if there is no such folder.
void setCurrentDirectory(const QString& path);

}  // namespace platform
