#pragma once
// Why a file could not be opened, in the run-time error numbers the program's
// routines branch on (53 file not found, 76 path not found, 70 permission
// denied, 75 path/file access error, 52 bad file name).

#include "engine/err.h"

#include <QString>

class QFileDevice;

namespace file_errors {
inline constexpr int BadFileName = 52;
inline constexpr int PathFileAccess = 75;

enum class Purpose { Reading, Creating };
}  // namespace file_errors

// The error of a failed open of `name` through `file`, made for `purpose`.
engine::ErrState open_failure(const QString& name, const QFileDevice& file,
                              file_errors::Purpose purpose = file_errors::Purpose::Reading);

// The error of a failed read or seek on an open file.
engine::ErrState read_failure(const QFileDevice& file);
