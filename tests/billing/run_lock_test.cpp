// One invoicing run at a time on a database, and runs that stop at the step
// that failed: the file held by another program, the temporary tables held by
// another run.

#include "billing/auto_invoicing.h"
#include "database/db_handling.h"
#include "database/tmp_tables_lock.h"
#include "engine/workspace.h"
#include "script/global_run_sql.h"
#include "invoicing_school.h"
#include "shell/selection_lists.h"
#include "support/scripted_boxes.h"

#include <QLockFile>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

using testing_support::ScriptedBoxes;

class RunLockTest : public ::testing::Test {
protected:
    void SetUp() override { TmpTablesLock::set_wait(std::chrono::milliseconds(200)); }
    void TearDown() override { TmpTablesLock::set_wait(std::chrono::milliseconds(5000)); }

    int invoices() { return school.count(QStringLiteral("Invoices")); }

    testing_support::InvoicingSchool school;
};

// Another program's write lock on the file, as `sqlite3 school.mdb` with
// BEGIN IMMEDIATE holds it.
class OtherWriter {
public:
    explicit OtherWriter(const QString& path)
    {
        sqlite3_open_v2(path.toUtf8().constData(), &db_, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    }
    ~OtherWriter()
    {
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close_v2(db_);
    }

private:
    sqlite3* db_ = nullptr;
};

TEST_F(RunLockTest, AFileHeldByAnotherProgramStopsTheRunAtItsPreparation)
{
    Sel_Terms().append(school.spring);
    AutoInvoicing screen;
    {
        const OtherWriter writer(school.path());
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Unexpected error clearing the temporary tables\n3045 : Could not use the database; "
                                    "file already in use."));
        EXPECT_FALSE(screen.prepare());
        boxes.expect(QStringLiteral("The chosen criteria could not be set up, so nothing has been done."));
        EXPECT_FALSE(screen.insert_term());
        EXPECT_TRUE(boxes.all_shown());
    }
    EXPECT_EQ(screen.amounts[AutoInvoicing::Terms], QStringLiteral("?"));
    EXPECT_FALSE(screen.status.contains(QStringLiteral("successfully")));
    EXPECT_EQ(invoices(), 0);
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0);

    // Once the file is free again, coming back to the screen prepares it anew.
    ASSERT_TRUE(screen.prepare());
    ScriptedBoxes none;
    EXPECT_TRUE(screen.insert_term());
    EXPECT_GT(invoices(), 0);
    screen.unload();
}

TEST_F(RunLockTest, ASecondRunOrAScriptOnTheSameDatabaseIsRefusedByName)
{
    // Another run, in another program, holds the temporary tables.
    QLockFile other(TmpTablesLock::lock_file_of(school.path()));
    ASSERT_TRUE(other.tryLock());
    school.exec(QStringLiteral("INSERT INTO Tmp_Terms (tmp_Term_id) VALUES (%1)").arg(school.spring));

    Sel_Terms().append(school.spring);
    AutoInvoicing screen;
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Another invoicing or report run is using the database ") + school.path());
    EXPECT_FALSE(screen.prepare());
    // The other run's selection is untouched.
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Terms")), 1);

    boxes.expect(QStringLiteral("The chosen criteria could not be set up"));
    EXPECT_FALSE(screen.insert_term());
    EXPECT_EQ(invoices(), 0);
    // A script run refuses too, and leaves the status as it was.
    const QString script = school.write_file(QStringLiteral("s.sql"), QStringLiteral("DELETE * FROM Tmp_Terms;"));
    QString status = QStringLiteral("before");
    boxes.expect(QStringLiteral("Another invoicing or report run is using the database"));
    EXPECT_FALSE(Global_Run_SQL(script, status));
    EXPECT_EQ(status, QStringLiteral("before"));
    EXPECT_TRUE(boxes.all_shown());

    other.unlock();
    ASSERT_TRUE(screen.prepare());
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Terms")), 1);
    screen.unload();
}

TEST_F(RunLockTest, TheRunHoldsTheLockFromPreparationToUnloadAndScriptsShareIt)
{
    Sel_Terms().append(school.spring);
    AutoInvoicing screen;
    ASSERT_TRUE(screen.prepare());
    QLockFile other(TmpTablesLock::lock_file_of(school.path()));
    EXPECT_FALSE(other.tryLock(std::chrono::milliseconds(0)));

    // The scripts and deletions of the same run take the lock again.
    ScriptedBoxes none;
    EXPECT_TRUE(screen.insert_term());
    EXPECT_GT(invoices(), 0);

    screen.unload();
    EXPECT_TRUE(other.tryLock(std::chrono::milliseconds(0)));
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Terms")), 0);
}

}  // namespace
