#pragma once
// A tiny school in a new database of its own, in a temporary folder, open in
// the program's workspace without being its current database: what the
// database's own tables, rules and stored queries are tested on.

#include "engine/database.h"
#include "support/school_rows.h"
#include "support/stored_values.h"
#include "support/test_folder.h"

#include <QString>

namespace testing_support {

class SchoolFixture : public TestFolder, public SchoolRows {
public:
    // A new database, with its Standard_Values row, open for the test.
    SchoolFixture();
    ~SchoolFixture() override;

    engine::Database& db() override { return *db_; }
    QString path() const { return path_; }

private:
    QString path_;
    engine::Database* db_ = nullptr;
};

}  // namespace testing_support
