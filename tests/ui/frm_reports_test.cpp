// The Reports screen as a secretary uses it: choosing from the school's list,
// the criteria each report shows and insists on, and a run to a file, to the
// screen, and one stopped by its script. What the list, the criteria and the
// runner do is tested without the screen; here the screen must pass the
// clicks on and show what came of them.

#include "ui/reports/frm_reports.h"

#include "engine/msg_box.h"
#include "reports/report_runner.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"
#include "ui/reports/frm_report_params.h"
#include "ui/reports/frm_view_report.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/frm_select_file.h"

#include <QAction>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using testing_support::ScriptedBoxes;

namespace {

const QString families_report = QStringLiteral(R"xml(<report version="1" title="Families">
  <tables><table name="Families"/></tables>
  <sort field="{Families.Family_Name}"/>
  <area kind="details"><section height="6">
    <field x="0" y="0" width="80" height="5" source="{Families.Family_Name}"/></section></area>
</report>)xml");

QString report_line(const char* type, int id, const char* name, int terms, int notices, const char* script = "")
{
    return QStringLiteral("\"%1\",%2,\"Families.rpt\",\"%3\",\"\",\"\",%4,1,1,1,1,1,%5,\"\",\"\",\"%6\"\n")
        .arg(QLatin1String(type)).arg(id).arg(QLatin1String(name)).arg(terms).arg(notices).arg(QLatin1String(script));
}

void wait_for(const std::function<bool()>& done)
{
    for (int wait = 0; wait < 200 && !done(); ++wait)
        QTest::qWait(10);
}

class ReportsScreen : public ScreenTest<frm_Reports> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        for (const char* name : {"Ashby", "Brook"})
            school.add_family(QLatin1String(name));
        const QString folder = QFileInfo(school.file(QStringLiteral("x"))).absolutePath();
        Settings().report_format_dir = folder;
        Settings().report_output_dir = folder;
        Settings().script_dir = folder;
        school.write_file(QStringLiteral("Families.rpt"), families_report);
        Settings().report_list = school.write_file(
            QStringLiteral("zrepfmt.lst"),
            QStringLiteral("\"*\",0,\"\",\"Families and money\",\"\",\"\",1,1,1,1,1,1,1,\"\",\"\",\"\"\n")
                + report_line("R", 10, "Family list", 1, 1) + report_line("R", 11, "Families for a term", 19, 1)
                + report_line("R", 12, "Family notices", 1, 3) + report_line("R", 13, "Families after a script", 1, 1, "Tidy.sql"));
        open();
    }
    void TearDown() override
    {
        for (const char* name : {"frm_View_Report", "frm_Report_Params"})
            if (QWidget* other = Loaded_Screen(QLatin1String(name)))
                Unload(other);
        GCR_End_Report();
        ScreenTest::TearDown();
    }

    // Chooses the report and sends it to a file of the kind, as proposed.
    QString to_file(const QString& report, const QString& kind)
    {
        click_row(screen->lst_Reports, report);
        click(screen->opt_File);
        click_row(screen->lst_OutputFileType, kind);
        return screen->txt_Filename->text();
    }
    bool row_shown(int kind) const { return screen->txt_Value[kind]->isVisible(); }
};

TEST_F(ReportsScreen, OnlyReportsCanBeChosenAndEachShowsWhatItTakes)
{
    EXPECT_EQ(screen->windowTitle(), QStringLiteral("Reports"));
    EXPECT_EQ(entries(screen->lst_Reports),
              QStringList({"Choose myself", "Families and money", "Family list", "Families for a term", "Family notices",
                           "Families after a script"}));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("no personalised file found"));

    click_row(screen->lst_Reports, QStringLiteral("Family notices"));
    EXPECT_TRUE(screen->frame_messages->isVisible());
    EXPECT_FALSE(row_shown(Param_Terms));
    EXPECT_EQ(screen->lbl_Report_Paper->text(), QStringLiteral("Default - Default"));

    click_row(screen->lst_Reports, QStringLiteral("Families and money"));
    EXPECT_EQ(screen->lst_Reports->currentRow(), -1);
    EXPECT_FALSE(screen->frame_messages->isVisible());
    EXPECT_TRUE(GCR_Report_File().isEmpty());

    // "Choose myself" shows no criteria until a file is chosen, and then all of them, of unknown need.
    QTimer::singleShot(0, [] {
        auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
        ASSERT_NE(selector, nullptr);
        selector->cmd_Cancel_Click();
    });
    click_row(screen->lst_Reports, QStringLiteral("Choose myself"));
    for (int kind = 0; kind < Param_Count; ++kind)
        EXPECT_FALSE(row_shown(kind)) << kind;
    const QString own = school.file(QStringLiteral("Families.rpt"));
    QTimer::singleShot(0, [&] {
        auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
        ASSERT_NE(selector, nullptr);
        selector->selectFile(own);
        selector->cmd_Select_Click();
    });
    click_row(screen->lst_Reports, QStringLiteral("Choose myself"));
    EXPECT_EQ(GCR_Report_File(), own);
    for (int kind = 0; kind < Param_Count; ++kind) {
        EXPECT_TRUE(row_shown(kind)) << kind;
        EXPECT_EQ(screen->lbl_Optional[kind]->text(), QStringLiteral("Unknown"));
        EXPECT_EQ(screen->lbl_All[kind]->text(), QStringLiteral("All"));
    }
}

TEST_F(ReportsScreen, AMissingMandatorySelectionRefusesTheRunUntilTheCriteriaGiveIt)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This report needs a Term."));
    QString file;
    boxes.during([&] { file = to_file(QStringLiteral("Families for a term"), QStringLiteral("Comma separated(CSV)")); });
    boxes.expect(QStringLiteral("This report needs a Term.")).during([&] { click(screen->cmd_Do); });
    EXPECT_FALSE(QFileInfo::exists(file));
    EXPECT_FALSE(screen->txt_Status->text().startsWith(QStringLiteral("Running report ")));
    EXPECT_EQ(screen->lbl_Optional[Param_Terms]->text(), QStringLiteral("Mandatory"));

    // A term chosen on the criteria screen shows when the screen comes back.
    Sel_Terms().append(school.add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 27)));
    screen->mnu_Criteria->trigger();
    settle();
    auto* criteria = qobject_cast<frm_Report_Params*>(Loaded_Screen(QStringLiteral("frm_Report_Params")));
    ASSERT_NE(criteria, nullptr);
    boxes.expect(QStringLiteral("You have not set up your selections."), No).during([&] {
        criteria->mnu_Exit->trigger();
        settle();
    });
    bring_to_front(screen);
    wait_for([&] { return screen->lbl_All[Param_Terms]->text() == QStringLiteral("One"); });
    EXPECT_EQ(screen->lbl_All[Param_Terms]->text(), QStringLiteral("One"));
    EXPECT_EQ(screen->txt_Value[Param_Terms]->text(), QStringLiteral("Spring 2026, "));
}

TEST_F(ReportsScreen, AReportRunToAFileEndsFinishedWithTheFileWritten)
{
    const QString file = to_file(QStringLiteral("Family list"), QStringLiteral("Comma separated(CSV)"));
    EXPECT_EQ(file, school.file(QStringLiteral("Families.csv")));
    EXPECT_TRUE(screen->txt_Filename->isVisible());
    click(screen->cmd_Do);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("report finished OK - ") + GCR_Report_File());
    EXPECT_TRUE(QFileInfo::exists(file));

    screen->txt_Filename->clear();
    ScriptedBoxes().expect(QStringLiteral("Please enter a filename for the output")).during([&] { click(screen->cmd_Do); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("No output file selected"));
}

TEST_F(ReportsScreen, AFailingScriptStopsTheReport)
{
    const QString file = to_file(QStringLiteral("Families after a script"), QStringLiteral("Text"));
    const QString words = QStringLiteral("Error occurred in script ") + school.file(QStringLiteral("Tidy.sql"));
    ScriptedBoxes().expect(QStringLiteral("Cannot open file ")).expect(words).during([&] { click(screen->cmd_Do); });
    EXPECT_EQ(screen->txt_Status->text(),
              words + QStringLiteral(" before the report ") + GCR_Report_File() + QStringLiteral(" could be run."));
    EXPECT_FALSE(QFileInfo::exists(file));
}

TEST_F(ReportsScreen, AReportOnTheScreenSaysHowItWentOnComingBack)
{
    click_row(screen->lst_Reports, QStringLiteral("Family list"));
    click(screen->cmd_Do);
    frm_View_Report* viewer = nullptr;
    wait_for([&] {
        viewer = qobject_cast<frm_View_Report*>(Loaded_Screen(QStringLiteral("frm_View_Report")));
        return viewer && !viewer->lbl_Page->text().isEmpty();
    });
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(viewer->windowTitle(), QStringLiteral("Family list View Report Screen"));
    EXPECT_FALSE(screen->isVisible());
    click(viewer->cmd_Close);
    bring_to_front(screen);
    wait_for([&] { return screen->isVisible() && screen->txt_Status->text().startsWith(QStringLiteral("report")); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("report finished OK - ") + GCR_Report_File());
}

}  // namespace
