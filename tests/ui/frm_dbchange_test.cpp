// The Change Current Database screen: its commands reach the routines and
// show their outcome; an old file chosen goes through the upgrade question;
// locations kept in a database follow it when it is chosen. What the
// commands do in detail is tested in tests/database.

#include "ui/admin/frm_dbchange.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/settings.h"
#include "support/database_file.h"
#include "support/old_version_file.h"
#include "support/scripted_boxes.h"
#include "support/template_database.h"
#include "ui/toolkit/frm_select_file.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;
using testing_support::value_in;

namespace {

class DBChangeScreen : public ScreenTest<frm_DBChange> {
protected:
    // Chooses a file with Display Files and goes back to the menu with it.
    void use(const QString& path, ScriptedBoxes& boxes)
    {
        QTimer::singleShot(0, [path] {
            auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
            ASSERT_NE(selector, nullptr);
            selector->selectFile(path);
            selector->cmd_Select_Click();
        });
        click(screen->cmd_Select);
        EXPECT_EQ(screen->txt_New_DB_Name->text(), path);
        boxes.expect(QStringLiteral("The default database has been changed to ") + path)
            .during([&] { click(screen->cmd_Use_New); });
        EXPECT_FALSE(screen && screen->isVisible());
        EXPECT_EQ(Current_Db_Name(), path);
    }
};

TEST_F(DBChangeScreen, ThinkAnsweredYesKeepsTheDatabase)
{
    open();
    EXPECT_EQ(screen->lbl_Current_DB_Name->text(), school.path());
    ScriptedBoxes()
        .expect(QStringLiteral("THINK !! \nDo you need the information in ") + school.path(), Yes,
                engine::mb::YesNo | engine::mb::Question)
        .during([&] { click(screen->cmd_Delete_Current_DB); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion cancelled"));
    EXPECT_TRUE(QFile::exists(school.path()));
    EXPECT_EQ(Current_Db_Name(), school.path());
    EXPECT_EQ(screen->lbl_Current_DB_Name->text(), school.path());
}

TEST_F(DBChangeScreen, ANameLeftWithBlanksIsTrimmedAndAnEmptyDatabaseIsCreatedButNotUsed)
{
    open();
    type_into(screen->txt_New_DB_Name, QStringLiteral("  ") + school.file(QStringLiteral("spring")) + QStringLiteral(" "));
    tab_out(screen->txt_New_DB_Name);
    EXPECT_EQ(screen->txt_New_DB_Name->text(), school.file(QStringLiteral("spring")));
    click(screen->cmd_CreateDB);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("New database created"));
    EXPECT_TRUE(QFile::exists(school.file(QStringLiteral("spring.mdb"))));
    EXPECT_EQ(Current_Db_Name(), school.path());
}

TEST_F(DBChangeScreen, ChoosingAnOldDatabaseAsksToUpgradeItFirst)
{
    const QString old = school.file(QStringLiteral("old.mdb"));
    upgrade_testing::make_old_version_file(old, 7);
    open();
    ScriptedBoxes boxes;
    // An upgraded file keeps its locations in itself, which these settings don't.
    boxes.expect(QStringLiteral("This database is an old version. \n\nIt can be upgraded"), Yes,
                 engine::mb::YesNo | engine::mb::Question)
        .expect(QStringLiteral("This database is out of sync with the registry. "));
    use(old, boxes);
    EXPECT_EQ(Sys_Record().version, 13);
    EXPECT_EQ(Settings().default_database, old);
}

TEST_F(DBChangeScreen, LocationsKeptInADatabaseFollowItWhenItIsChosen)
{
    Settings().file_locations = 1;
    school.exec(QStringLiteral("UPDATE Sys_tab SET s_Style_Type = 1, s_Filename_InvTerm = '/school/InTerms.sql'"));
    const QString other = testing_support::change_in(
        testing_support::copy_of_new_database(school.file(QStringLiteral("other.mdb")), true),
        QStringLiteral("UPDATE Sys_tab SET s_Style_Type = 1, s_Filename_InvTerm = '/other/InTerms.sql', "
                       "s_Filename_zrepfmt = '/other/zrepfmt.lst'"));
    open();
    ScriptedBoxes boxes;
    use(other, boxes);
    EXPECT_EQ(Settings().term_script, QStringLiteral("/other/InTerms.sql"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/other/zrepfmt.lst"));

    open();
    ScriptedBoxes back;
    use(school.path(), back);
    EXPECT_EQ(Settings().term_script, QStringLiteral("/school/InTerms.sql"));
}

}  // namespace
