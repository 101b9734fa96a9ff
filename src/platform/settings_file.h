#pragma once

#include <QString>

namespace platform {

// Settings in "[section]" and "key=value" lines, UTF-8, ";" or "#" before a comment. Sections and
// keys are without case, the first of equal keys counts. The path is one for systemPath.

// The value, at most 255 characters: blanks around it and one pair of quotes do not belong to it.
// `fallback` if there is no such key, or no file that can be read and is text.
QString readString(const QString& path, const QString& section, const QString& key,
                   const QString& fallback);
// The number the value begins with ("12abc" is 12), 0 if it begins with none.
qint64 readInt(const QString& path, const QString& section, const QString& key, qint64 fallback);
// Sets a value; file and section are made if missing, everything else in the file stays. False,
// with the file unchanged, if it cannot be written or the value would not read back the same
// (a line break in it, a file that is no text).
bool writeString(const QString& path, const QString& section, const QString& key,
                 const QString& value);

}  // namespace platform
