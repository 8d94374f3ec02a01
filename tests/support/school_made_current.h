#pragma once
// A school database made the program's current database, in a test folder of
// its own: a copy of a new database, with its Standard_Values row, as the
// program's runs, deletions, copies, merges and screens find it. The
// changed-pupils and selection lists start empty; at the end no transaction
// may be left open (unless the school allows it), and every database closes.

#include "support/school_rows.h"
#include "support/test_folder.h"

#include <QString>

namespace testing_support {

class SchoolMadeCurrent : public TestFolder, public SchoolRows {
public:
    enum class OpenTransactionAtEnd { Fails, Allowed };

    explicit SchoolMadeCurrent(StartingSettings settings = StartingSettings::Blank,
                               OpenTransactionAtEnd open_at_end = OpenTransactionAtEnd::Fails);
    ~SchoolMadeCurrent() override;

    // The current database; the test fails if none is open.
    engine::Database& db() override;
    // The school's database file.
    QString path() const { return path_; }

private:
    QString path_;
    OpenTransactionAtEnd open_at_end_;
};

// The school that the calendar, the script engine and invoicing runs work on.
using SchoolForRuns = SchoolMadeCurrent;

// The school that the guarded deletions, the copy and the merge work on: the
// program's default settings.
class AdminSchool : public SchoolMadeCurrent {
public:
    AdminSchool() : SchoolMadeCurrent(StartingSettings::ProgramDefaults) {}
};

}  // namespace testing_support
