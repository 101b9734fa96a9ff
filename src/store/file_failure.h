#pragma once

#include <QString>

namespace store {

// Numbers of the failures of file operations.
namespace file_failure {
inline constexpr int kNotFound = 53;
inline constexpr int kExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kDenied = 70;
inline constexpr int kAccess = 75;
inline constexpr int kPathNotFound = 76;
}  // namespace file_failure

// The failure number of an error number of the system (errno) met at a path of the system.
int fileFailureOf(int error, const QString& path);
[[noreturn]] void failAtFile(int number, const QString& path);

}  // namespace store
