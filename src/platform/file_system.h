#pragma once

#include <QString>
#include <QStringList>

#include "platform/system_path.h"
#include "store/file_failure.h"

namespace platform {

// Numbers of the failures (store::Failure) of file operations.
namespace file_failure = store::file_failure;

// All paths below are taken "as given" and go through systemPath first.

bool exists(const QString& path);  // a file or a folder
bool folderExists(const QString& path);
// Length in bytes; 53 if there is no such file.
qint64 fileLength(const QString& path);
// Names of the files in a folder that fit the last component of `pattern`, in alphabetical order.
// "*" is any run, "?" one character, without case; ".*" at the end may be missing, so that "*.*"
// means all. Empty if there is no such folder.
QStringList listFiles(const QString& pattern);

// True if two paths lead to one existing file, by whatever name or link.
bool isSameFile(const QString& left, const QString& right);

// Copies the bytes of a file, over an older one if there is one; that one stays as it is until the
// copy is complete. 53, 61, 70 (also for a file onto itself), 75 (a folder), 76.
// Not for an archive the process has open: closing the source drops the process's locks on it.
void copyFile(const QString& from, const QString& to);
// True if a file may not get a name, since another one has it, if only in another case; `by` is the
// file that is to get it, where there is one already.
bool isTaken(const QString& path, const QString& by = {});
void deleteFile(const QString& path);  // 53, 70, 75
// Renames or moves; 58 if the new name is taken (the same name in another case is not), 53, 70, 76.
void renameFile(const QString& from, const QString& to);
void createFolder(const QString& path);  // 75 if it exists, 70, 76

// Fail if the file could not be opened now: 53, 75, 70 (no permission, or another program has
// locked it). As with copyFile, not for an archive the process has open.
void checkReadable(const QString& path);
void checkWritable(const QString& path);

}  // namespace platform
