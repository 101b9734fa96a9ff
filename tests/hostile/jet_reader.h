#pragma once

#include <QString>

namespace store {

// Reads all that a file of the earlier engine has to give. Any content ends in rows or a failure.
// The number of rows, -1 for a failure.
qint64 readEverything(const QString& path);

}  // namespace store
