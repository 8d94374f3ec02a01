#pragma once
// The school that the guarded deletions, the copy and the merge work on: a
// school database made the program's current database, with the program's
// default settings, and what a test needs of the other database files.

#include "support/school_made_current.h"

#include <QString>
#include <QStringList>

namespace testing_support {

class AdminSchool : public SchoolMadeCurrent {
public:
    AdminSchool();

    // A new, empty database file in the test's folder (without the
    // Standard_Values row when blank_row is false), not opened.
    QString new_database(const QString& name, bool blank_row) const;

    // The first column of each row of SQLite text, in a database file that
    // isn't (or is no longer) the current one.
    static QStringList values_in(const QString& path, const QString& sql);
    // Every table of a file, every row, in a stable order.
    static QString dump_of(const QString& path);
};

}  // namespace testing_support
