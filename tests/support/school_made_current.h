#pragma once
// A school database made the program's current database, in a test folder of
// its own: a copy of a new database, with its Standard_Values row, as the
// program's runs, deletions, copies and merges find it. The changed-pupils and
// selection lists start empty; at the end no transaction may be left open, and
// every database closes.

#include "support/school_rows.h"
#include "support/test_folder.h"

#include <QString>

namespace testing_support {

class SchoolMadeCurrent : public TestFolder, public SchoolRows {
public:
    explicit SchoolMadeCurrent(StartingSettings settings);
    ~SchoolMadeCurrent() override;

    // The current database; the test fails if none is open.
    engine::Database& db() override;
    // The school's database file.
    QString path() const { return path_; }

private:
    QString path_;
};

}  // namespace testing_support
