#include "support/school_made_current.h"

#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/workspace.h"
#include "shell/selection_lists.h"
#include "support/template_database.h"

#include <gtest/gtest.h>

namespace testing_support {

SchoolMadeCurrent::SchoolMadeCurrent(StartingSettings settings, OpenTransactionAtEnd open_at_end)
    : TestFolder(settings), path_(copy_of_new_database(file(QStringLiteral("school.qdb")), true)), open_at_end_(open_at_end)
{
    EXPECT_TRUE(DB_Open(path_)) << engine::Err().Description.toStdString();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
    // Durability on disk is not what these tests are about, and waiting for it is slow.
    exec(QStringLiteral("PRAGMA synchronous = OFF"));
}

SchoolMadeCurrent::~SchoolMadeCurrent()
{
    if (open_at_end_ == OpenTransactionAtEnd::Fails) {
        EXPECT_EQ(Program_Workspace().transaction_depth(), 0) << "a transaction was left open";
    }
    while (Program_Workspace().transaction_depth() > 0)
        Program_Workspace().Rollback();
    DB_Close_All();
    Program_Workspace().Close();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
}

engine::Database& SchoolMadeCurrent::db()
{
    EXPECT_NE(Current_Db(), nullptr) << "no current database";
    return *Current_Db();
}

}  // namespace testing_support
