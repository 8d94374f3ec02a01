#include "support/school_made_current.h"

#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/workspace.h"
#include "shell/selection_lists.h"
#include "support/template_database.h"

#include <gtest/gtest.h>

namespace testing_support {

SchoolMadeCurrent::SchoolMadeCurrent(StartingSettings settings)
    : TestFolder(settings), path_(copy_of_new_database(file(QStringLiteral("school.qdb")), true))
{
    EXPECT_TRUE(DB_Open(path_)) << engine::Err().Description.toStdString();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
}

SchoolMadeCurrent::~SchoolMadeCurrent()
{
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0) << "a transaction was left open";
    while (Program_Workspace().transaction_depth() > 0)
        Program_Workspace().Rollback();
    DB_Close_All();
    Reset_Changed_Lists();
    Glob_Keep_Changed_List() = false;
}

engine::Database& SchoolMadeCurrent::db()
{
    EXPECT_NE(Current_Db(), nullptr) << "no current database";
    return *Current_Db();
}

}  // namespace testing_support
