#pragma once
// Making a school database with all its stored queries takes a while: a test
// starts from a copy of one made once for the whole test program.

#include <QString>

namespace testing_support {

// Copies a new school database, with its Standard_Values row or without it,
// to target, not opened, and gives target.
QString copy_of_new_database(const QString& target, bool with_standard_values);

}  // namespace testing_support
