// The Preferences screen: the machine's date order in words, the course
// order stored by Update, and Generate refused while a run is under way
// (the run itself is report_generation_test's).

#include "ui/reports/frm_preferences.h"

#include "engine/settings_store.h"
#include "reports/report_generation.h"
#include "screen_driver.h"
#include "shell/install_folder.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"

#include <QDir>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;

namespace {

class PreferencesScreen : public ScreenTest<frm_Preferences> {
protected:
    void TearDown() override
    {
        Glob_Date_Order() = 1;
        set_install_folder_for_tests(QString());
        GCR_Generate_State() = generate_state::Idle;
        ScreenTest::TearDown();
    }
};

TEST_F(PreferencesScreen, ADateOrderOfNoKnownKindIsSaidToDefaultToDayFirst)
{
    Glob_Date_Order() = 5;
    open();
    EXPECT_EQ(screen->lbl_Date_Order->text(), QStringLiteral("unknown - defaulting to day month year"));
    EXPECT_TRUE(screen->opt_Course_Order[0]->isChecked());  // no order stored: by title
    EXPECT_FALSE(screen->lbl_Persnl_Header->isVisible());
}

TEST_F(PreferencesScreen, UpdateStoresTheChosenCourseOrderAndCloses)
{
    Settings().course_query = QStringLiteral("Qry_Order_Courses_Day");
    open();
    EXPECT_TRUE(screen->opt_Course_Order[1]->isChecked());
    click(screen->opt_Course_Order[2]);
    click(screen->cmd_Update);
    EXPECT_EQ(Settings().course_query, QStringLiteral("Qry_Order_Courses_Location"));
    EXPECT_EQ(engine::settings_store().GetSetting(QStringLiteral("Startup"), QStringLiteral("$CQ"), QString()),
              QStringLiteral("3"));
    EXPECT_TRUE(screen.isNull() || !screen->isVisible());
}

TEST_F(PreferencesScreen, GenerateIsRefusedWhileARunIsUnderWayOrAfterCancel)
{
    open();
    GCR_Generate_State() = generate_state::Running;
    click(screen->cmd_Generate);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Generation already in progress"));

    // Cancel with no run leaves the state set, so Generate stays refused.
    GCR_Generate_State() = generate_state::Idle;
    screen->txt_Status->clear();
    click(screen->cmd_Cancel_Generate);
    EXPECT_EQ(GCR_Generate_State(), generate_state::Cancelled);
    click(screen->cmd_Generate);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Generation already in progress"));
}

TEST_F(PreferencesScreen, AGeneratedCopyBecomesTheReportFolderInForce)
{
    set_install_folder_for_tests(school.file(QStringLiteral("app")));
    ASSERT_TRUE(QDir().mkpath(school.file(QStringLiteral("app/repfmts"))));
    school.write_file(QStringLiteral("app/repfmts/PrtHead.rpt"),
                      QStringLiteral("<report version=\"1\"><tables><table name=\"Families\"/></tables></report>"));
    Settings().report_format_dir = school.file(QStringLiteral("app/repfmts"));
    Settings().report_list = school.write_file(QStringLiteral("app/repfmts/zrepfmt.lst"), QString());
    Glob_Standard_Formats() = false;
    open();
    testing_support::ScriptedBoxes()
        .expect(QStringLiteral("About to create a new folder with report files."), engine::answer::Yes)
        .during([&] { click(screen->cmd_Generate); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Customised reports generated successfully and default values changed"));
    EXPECT_EQ(Settings().report_format_dir, school.file(QStringLiteral("app/genrepfmts")));
    EXPECT_EQ(Settings().report_list, school.file(QStringLiteral("app/genrepfmts/zrepfmt.lst")));
    EXPECT_EQ(GCR_Generate_State(), generate_state::Idle);
}

}  // namespace
