// The main menu: its commands open screens one at a time, it shows the
// database in use, keeps the changed-pupils choice, and ends the program.

#include "ui/shell/frm_main_menu.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/app_globals.h"
#include "shell/install_folder.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"
#include "toolkit/help_pages.h"
#include "ui/shell/frm_about.h"
#include "ui/shell/frm_auditlog.h"
#include "ui/people/frm_family.h"
#include "ui/people/frm_teachers.h"
#include "ui/toolkit/help_window.h"
#include "ui/toolkit/screen_kit.h"
#include "ui/shell/screen_catalogue.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include <functional>
#include <vector>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

class MainMenu : public ::testing::Test {
protected:
    void SetUp() override
    {
        Abort_Flag() = false;
        Settings().default_database = school.path();
        menu = new frm_Main_Menu;
    }
    void TearDown() override
    {
        if (menu)
            Main_End_Prog(menu);
        settle();
        Glob_Return_Form() = nullptr;
        Glob_Keep_Changed_List() = false;
        Changed_Pupils().reset();
    }

    template <typename Screen>
    Screen* loaded(const char* name)
    {
        return qobject_cast<Screen*>(Loaded_Screen(QString::fromLatin1(name)));
    }

    testing_support::CurrentSchool school;
    QPointer<frm_Main_Menu> menu;
};

TEST_F(MainMenu, ShowsTheDatabaseByItsFileName)
{
    bring_to_front(menu);
    EXPECT_EQ(menu->lbl_Current_DB_Name->text(), QStringLiteral("school"));
    EXPECT_FALSE(menu->cmd_Change_Database->isDefault());
}

TEST_F(MainMenu, WithoutADatabaseTheLabelIsEmptyAndEnterLeadsToChangingIt)
{
    DB_Close_All();
    bring_to_front(menu);
    EXPECT_EQ(menu->lbl_Current_DB_Name->text(), QString());
    EXPECT_TRUE(menu->cmd_Change_Database->isDefault());
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : menu.data(), Qt::Key_Return);
    settle();
    EXPECT_NE(loaded<QWidget>("frm_DBChange"), nullptr);
    EXPECT_FALSE(menu->isVisible());
}

TEST_F(MainMenu, ACommandOpensItsScreenAndTheScreensExitComesBack)
{
    school.add_teacher(QStringLiteral("Ada"));
    bring_to_front(menu);
    click(menu->cmd_Teachers);
    frm_Teachers* teachers = loaded<frm_Teachers>("frm_Teachers");
    ASSERT_NE(teachers, nullptr);
    EXPECT_TRUE(teachers->isVisible());
    EXPECT_FALSE(menu->isVisible());
    EXPECT_EQ(teachers->txt_Nickname->text(), QStringLiteral("Ada"));

    teachers->mnu_Exit->trigger();
    settle();
    EXPECT_EQ(loaded<frm_Teachers>("frm_Teachers"), nullptr);
    EXPECT_TRUE(menu->isVisible());
}

// Every command and Options entry opens its own screen, which hides the menu.
TEST_F(MainMenu, EveryCommandAndOptionsEntryOpensItsScreen)
{
    const std::vector<std::pair<std::function<void()>, const char*>> entries = {
        {[&] { click(menu->cmd_Exam); }, "frm_Exam"},
        {[&] { click(menu->cmd_Exam_Dates); }, "frm_Activity_Dates"},
        {[&] { click(menu->cmd_Exam_Register); }, "frm_ExamRegister"},
        {[&] { click(menu->cmd_Exam_Times); }, "frm_ExamList"},
        {[&] { click(menu->cmd_Exam_Results); }, "frm_ExamTimes"},
        {[&] { click(menu->cmd_Reports); }, "frm_Reports"},
        {[&] { click(menu->cmd_Standard_Text); }, "frm_Standard_Text"},
        {[&] { click(menu->cmd_Change_Database); }, "frm_DBChange"},
        {[&] { menu->mnu_Change_Defaults->trigger(); }, "frm_Change_Defaults"},
        {[&] { menu->mnu_Preferences->trigger(); }, "frm_Preferences"},
        {[&] { menu->mnu_Refresh_db->trigger(); }, "frm_DBControl"},
        {[&] { menu->mnu_db_stats->trigger(); }, "frm_db_stats"},
    };
    // The Reports screen reads its list of reports as it opens.
    testing_support::TestFolder reports;
    Settings().report_list = reports.write_file(QStringLiteral("zrepfmt.lst"), QString());
    Settings().report_format_dir = QFileInfo(Settings().report_list).absolutePath();
    for (const auto& [open, form] : entries) {
        SCOPED_TRACE(form);
        bring_to_front(menu);
        open();
        settle();
        QWidget* screen = Loaded_Screen(QString::fromLatin1(form));
        ASSERT_NE(screen, nullptr);
        EXPECT_TRUE(screen->isVisible());
        EXPECT_FALSE(menu->isVisible());
        Unload(screen);
        settle();
    }
    menu->Open_Screen(7);  // not a screen: nothing at all
    settle();
    EXPECT_EQ(Glob_Return_Form(), nullptr);
}

TEST_F(MainMenu, FamiliesAlwaysOpenAtTheFirstFamily)
{
    school.add_family(QStringLiteral("Archer"));
    const int brown = school.add_family(QStringLiteral("Brown"));
    bring_to_front(menu);
    auto* families = qobject_cast<frm_Family*>(Load_Screen(QStringLiteral("frm_Family")));
    ASSERT_NE(families, nullptr);
    families->txt_Xfer_Id->setText(QString::number(brown));
    click(menu->cmd_Families);
    EXPECT_EQ(loaded<frm_Family>("frm_Family"), families);
    EXPECT_EQ(families->txt_Family_Name->text(), QStringLiteral("Archer"));
}

TEST_F(MainMenu, KeepingAListOfChangedPupils)
{
    bring_to_front(menu);
    EXPECT_TRUE(menu->Opt_No_List->isChecked());
    click(menu->Opt_Save_List);
    EXPECT_TRUE(Glob_Keep_Changed_List());
    Glob_Add_Changed_Pupil(7);
    click(menu->Opt_Save_List);  // choosing it again starts a new list
    EXPECT_TRUE(Changed_Pupils().is_empty());
    click(menu->Opt_No_List);
    EXPECT_FALSE(Glob_Keep_Changed_List());

    // Coming back to the menu shows the choice without acting on it.
    Glob_Keep_Changed_List() = true;
    Glob_Add_Changed_Pupil(5);
    menu->hide();
    menu->show();
    settle();
    EXPECT_TRUE(menu->Opt_Save_List->isChecked());
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>{5});
}

TEST_F(MainMenu, ExitAsksFirstAndYesEndsTheProgramWithEveryScreenAndDatabaseClosed)
{
    school.add_teacher(QStringLiteral("Ada"));
    bring_to_front(menu);
    click(menu->cmd_Teachers);
    // A screen left loaded (hidden) goes too.
    QPointer<QWidget> teachers = Loaded_Screen(QStringLiteral("frm_Teachers"));
    ASSERT_TRUE(teachers);
    teachers->hide();
    bring_to_front(menu);
    ScriptedBoxes()
        .expect(QStringLiteral("Have you finished working with QUILLARY?"), No, engine::mb::YesNo | engine::mb::Question)
        .during([&] { click(menu->cmd_exit); });
    ASSERT_TRUE(menu);  // a No leaves everything as it was
    EXPECT_TRUE(menu->isVisible());
    EXPECT_NE(Current_Db(), nullptr);
    ScriptedBoxes().expect(QStringLiteral("Have you finished working with QUILLARY?"), Yes).during([&] {
        click(menu->cmd_exit);
        settle();
    });
    EXPECT_FALSE(menu);
    EXPECT_FALSE(teachers);
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(Main_Menu(), nullptr);
}

TEST_F(MainMenu, TheWindowsCloseBoxEndsWithoutAsking)
{
    bring_to_front(menu);
    menu->close();
    settle();
    EXPECT_FALSE(menu);
    EXPECT_EQ(Current_Db(), nullptr);
}

TEST_F(MainMenu, AboutAndTheLogViewerOpenAndGoBackAndTheViewerShowsTheEndOfTheLog)
{
    bring_to_front(menu);
    menu->mnu_About->trigger();
    settle();
    frm_About* about = loaded<frm_About>("frm_About");
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->lbl_ini_file->text().contains(QStringLiteral("Startup")));
    about->mnu_exit->trigger();
    settle();
    EXPECT_TRUE(menu->isVisible());

    QString log;
    for (int i = 1; i <= 200; ++i)
        log += QStringLiteral("2026-01-01 10:00:00 -- globals    : entry %1 .\n").arg(i);
    school.write_file(QStringLiteral("quillary.log"), log);
    bring_to_front(menu);
    menu->mnu_View_Auditlog->trigger();
    settle();
    frm_auditlog* viewer = loaded<frm_auditlog>("frm_auditlog");
    ASSERT_NE(viewer, nullptr);
    // The paging itself is audit_log_pages_test's; here the viewer shows the last page and pages up.
    EXPECT_TRUE(viewer->txt_Audit->toPlainText().contains(QStringLiteral("entry 200 .")));
    EXPECT_TRUE(viewer->cmd_Up->isEnabled());
    EXPECT_FALSE(viewer->cmd_Down->isEnabled());
    click(viewer->cmd_Up);
    EXPECT_TRUE(viewer->cmd_Down->isEnabled());
    viewer->mnu_exit->trigger();
    settle();
    EXPECT_TRUE(menu->isVisible());
}

TEST_F(MainMenu, HelpOpensTheManualsPageForTheScreen)
{
    set_install_folder_for_tests(school.file(QStringLiteral("install")));
    ASSERT_TRUE(QDir().mkpath(school.file(QStringLiteral("install/manual"))));
    for (const char* page : {"1000.html", "1010.html"})
        school.write_file(QStringLiteral("install/manual/") + QLatin1String(page), QString());
    const auto page_on_view = [] {
        HelpWindow* window = existing_help_window();
        return window && window->isVisible() ? QFileInfo(window->page()).fileName() : QString();
    };
    bring_to_front(menu);
    menu->mnu_Help[2]->trigger();
    EXPECT_EQ(page_on_view(), QStringLiteral("1010.html"));
    menu->mnu_Help[1]->trigger();
    EXPECT_EQ(page_on_view(), QStringLiteral("1000.html"));
    Show_Help(menu, help::Quit, 0);
    set_install_folder_for_tests(QString());
}

}  // namespace
