#pragma once
// A believable small dance school in a new database, the same every time:
// for trying the program, for the manual's walk-through, and for tests.

#include <QString>

namespace demo {
// Creates the database file and fills it. The file must not exist yet.
// On failure the file is removed and false is returned.
bool build_demo_school(const QString& path);
}  // namespace demo
