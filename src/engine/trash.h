#pragma once
#include <QString>

namespace engine {
// Moves a file to the user's trash, where it can be recovered.
// Returns false and sets Err (53 when the file is not there) on failure.
bool move_to_trash(const QString& path);
}  // namespace engine
