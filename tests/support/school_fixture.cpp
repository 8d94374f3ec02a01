#include "support/school_fixture.h"

#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/err.h"
#include "engine/workspace.h"

#include <gtest/gtest.h>

namespace testing_support {

SchoolFixture::SchoolFixture() : path_(file(QStringLiteral("school.qdb")))
{
    EXPECT_TRUE(DB_Create_Database(path_, true));
    db_ = Program_Workspace().OpenDatabase(path_);
    EXPECT_NE(db_, nullptr) << engine::Err().Description.toStdString();
}

SchoolFixture::~SchoolFixture()
{
    if (db_)
        Program_Workspace().close_database(db_);
}

}  // namespace testing_support
