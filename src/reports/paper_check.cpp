#include "reports/paper_check.h"

#include "engine/msg_box.h"
#include "shell/app_globals.h"

using namespace reportengine;

namespace {

bool ask(const QString& question)
{
    return engine::MsgBox(question, engine::mb::YesNo + engine::mb::Question, App_Title()) == engine::answer::Yes;
}

}  // namespace

bool GCR_Check_Paper(ReportDefinition& report, const PrinterState& current)
{
    if (current.name.isEmpty())
        return false;
    const int size = report.page.paper_size;
    const int orientation = report.page.orientation;
    if (size == paper::Default && orientation == orientation::Default)
        return true;
    if (size == current.paper_size && orientation == current.orientation)
        return true;
    if (size == paper::A4 && orientation == orientation::Portrait && current.paper_size == paper::A5
        && current.orientation == orientation::Landscape && report.page.fit_setting == 7) {
        if (ask(QStringLiteral("You are printing to A5 paper. Shall I change the report to fit onto the smaller paper?"))) {
            report.page.paper_size = paper::A5;
            report.page.orientation = orientation::Landscape;
        }
        return true;
    }
    return ask(QStringLiteral("Your printer seems to have the wrong paper settings for this report.\nContinue anyway?"));
}
