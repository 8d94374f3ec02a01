// The Change Default Filenames screen: a changed box is highlighted and
// checked as it is left, keeping the focus on a refusal; the new values are
// applied in one step. The checks and the applying are tested in tests/shell.

#include "ui/admin/frm_change_defaults.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::ScriptedBoxes;

namespace {

class ChangeDefaultsScreen : public ScreenTest<frm_Change_Defaults> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        QDir().mkpath(school.file(QStringLiteral("repfmts")));
        Settings().report_format_dir = school.file(QStringLiteral("repfmts"));
    }
};

TEST_F(ChangeDefaultsScreen, AFolderThatDoesNotExistIsRefusedAndKeepsTheFocus)
{
    open();
    EXPECT_EQ(screen->lbl_old[change_defaults::Repfmt_dir]->text(), school.file(QStringLiteral("repfmts")));
    retype(screen->txt_Repfmt_dir, school.file(QStringLiteral("missing")));
    EXPECT_EQ(field_colour(screen->txt_Repfmt_dir), colours::Highlight);
    ScriptedBoxes()
        .expect(QStringLiteral("This is not a valid directory."), engine::answer::Ok, engine::mb::Critical)
        .during([&] { tab_out(screen->txt_Repfmt_dir); });
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Repfmt_dir);

    retype(screen->txt_Repfmt_dir, school.file(QStringLiteral("repfmts")));
    EXPECT_EQ(field_colour(screen->txt_Repfmt_dir), colours::At_Rest);
    tab_out(screen->txt_Repfmt_dir);
    EXPECT_NE(QApplication::focusWidget(), screen->txt_Repfmt_dir);
}

TEST_F(ChangeDefaultsScreen, NewValuesForEachSchoolAreAppliedInOneStepAndTheScreenCloses)
{
    const QString script = school.write_file(QStringLiteral("Terms.sql"), QStringLiteral("display Terms."));
    open();
    EXPECT_TRUE(screen->Opt_Store_Registry->isChecked());
    retype(screen->txt_CrTermInv_File, script);
    tab_out(screen->txt_CrTermInv_File);
    click(screen->Opt_Store_DB);
    EXPECT_EQ(screen->txt_Store->text(), QStringLiteral("1"));
    click(screen->cmd_Accept);
    EXPECT_FALSE(screen && screen->isVisible());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT s_Style_Type FROM Sys_tab")).toInt(), 1);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT s_Filename_InvTerm FROM Sys_tab")).toString(), script);
    EXPECT_EQ(Settings().file_locations, 1);
}

TEST_F(ChangeDefaultsScreen, LeavingWithUnsavedChangesAsksFirst)
{
    open();
    click(screen->cmd_Reset);
    ScriptedBoxes()
        .expect(QStringLiteral("There are unsaved changes.\nDo you still wish to Exit?"), engine::answer::No)
        .during([&] { click(screen->cmd_Exit); });
    EXPECT_TRUE(screen->isVisible());
}

}  // namespace
