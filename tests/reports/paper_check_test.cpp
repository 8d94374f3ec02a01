// The paper check before printing, for each kind of report and printer.

#include "reports/paper_check.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace {

using namespace reportengine;
using testing_support::ScriptedBoxes;

const QString fit_question = QStringLiteral("You are printing to A5 paper. Shall I change the report to fit onto the smaller paper?");
const QString wrong_paper = QStringLiteral("Your printer seems to have the wrong paper settings for this report.\nContinue anyway?");

TEST(PaperCheck, EachReportAndPrinterMeetAsTheyShould)
{
    struct Case {
        const char* story;
        int size, orientation, fit;
        PrinterState printer;
        QString question;  // empty: none is asked
        int answer;
        bool passes;
        int size_after, orientation_after;
    };
    const PrinterState a4{QStringLiteral("Office"), paper::A4, orientation::Portrait};
    const PrinterState a5_landscape{QStringLiteral("Office"), paper::A5, orientation::Landscape};
    const QList<Case> cases = {
        {"a report that follows the printer", 0, 0, 0, a5_landscape, {}, 0, true, 0, 0},
        {"the paper the printer holds", paper::A4, orientation::Portrait, 0, a4, {}, 0, true, paper::A4, orientation::Portrait},
        {"A4 fitted onto A5 on Yes", paper::A4, orientation::Portrait, 7, a5_landscape, fit_question, engine::answer::Yes, true,
         paper::A5, orientation::Landscape},
        {"A4 left as it is on No, and printed", paper::A4, orientation::Portrait, 7, a5_landscape, fit_question,
         engine::answer::No, true, paper::A4, orientation::Portrait},
        {"A4 without the fit setting", paper::A4, orientation::Portrait, 0, a5_landscape, wrong_paper, engine::answer::Yes, true,
         paper::A4, orientation::Portrait},
        {"wrong paper, stopped", paper::DL_Envelope, orientation::Landscape, 0, a4, wrong_paper, engine::answer::No, false,
         paper::DL_Envelope, orientation::Landscape},
        {"no printer at all", paper::A5, orientation::Portrait, 0, PrinterState{QString(), paper::A4, orientation::Portrait}, {}, 0,
         false, paper::A5, orientation::Portrait},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.story);
        ReportDefinition report;
        report.page.paper_size = c.size;
        report.page.orientation = c.orientation;
        report.page.fit_setting = c.fit;
        ScriptedBoxes boxes;
        if (!c.question.isEmpty())
            boxes.expect(c.question, c.answer, engine::mb::YesNo + engine::mb::Question);
        EXPECT_EQ(GCR_Check_Paper(report, c.printer), c.passes);
        EXPECT_EQ(report.page.paper_size, c.size_after);
        EXPECT_EQ(report.page.orientation, c.orientation_after);
    }
}

}  // namespace
