#include "ui/reports/report_printing.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "reportengine/page_model.h"
#include "reportoutput/page_painter.h"
#include "reports/report_runner.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"

#include <QCoreApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPrintDialog>
#include <QPrinter>

using namespace reportengine;

namespace {

PrintDialogRunner& dialog_runner()
{
    static PrintDialogRunner runner = [](QPrinter& printer, QWidget* parent) {
        QPrintDialog dialog(&printer, parent);
        return dialog.exec() == QDialog::Accepted;
    };
    return runner;
}

void report_printing_failure()
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error printing report ") + GCR_Report_File(),
                 engine::mb::Information, report_runner_tag(), QStringLiteral("GCR_Run_Printer"));
}

}  // namespace

PrinterState printer_state(const QPrinter& printer)
{
    PrinterState state;
    state.name = printer.outputFormat() == QPrinter::PdfFormat ? QStringLiteral("PDF file") : printer.printerName();
    const QPageLayout layout = printer.pageLayout();
    switch (layout.pageSize().id()) {
    case QPageSize::A4: state.paper_size = paper::A4; break;
    case QPageSize::A5: state.paper_size = paper::A5; break;
    case QPageSize::EnvelopeDL: state.paper_size = paper::DL_Envelope; break;
    default: state.paper_size = -1; break;  // a paper the reports never ask for
    }
    state.orientation = layout.orientation() == QPageLayout::Landscape ? orientation::Landscape : orientation::Portrait;
    return state;
}

void give_printer_paper(QPrinter& printer, int paper_size, int orientation)
{
    switch (paper_size) {
    case paper::A4: printer.setPageSize(QPageSize(QPageSize::A4)); break;
    case paper::A5: printer.setPageSize(QPageSize(QPageSize::A5)); break;
    case paper::DL_Envelope: printer.setPageSize(QPageSize(QPageSize::EnvelopeDL)); break;
    default: break;
    }
    if (orientation == orientation::Portrait)
        printer.setPageOrientation(QPageLayout::Portrait);
    else if (orientation == orientation::Landscape)
        printer.setPageOrientation(QPageLayout::Landscape);
}

PrintDialogRunner set_print_dialog_runner(PrintDialogRunner runner)
{
    PrintDialogRunner previous = std::move(dialog_runner());
    dialog_runner() = std::move(runner);
    return previous;
}

bool Run_Print_Dialog(QPrinter& printer, QWidget* parent)
{
    return dialog_runner()(printer, parent);
}

bool print_pages(const PageModel& model, QPrinter& printer)
{
    // The pages are drawn on the paper the report was laid out for, edge to edge.
    printer.setFullPage(true);
    if (reportoutput::paint_pages(model, printer))
        return true;
    engine::Err().Raise(report::Unexpected, QStringLiteral("The printer could not be printed on"));
    return false;
}

bool GCR_Run_Printer(QPrinter& printer)
{
    if (!Init_Report())
        return false;
    ReportDefinition& report = GCR_Report()->definition;
    if (!GCR_Check_Paper(report, printer_state(printer)))
        return false;
    give_printer_paper(printer, report.page.paper_size, report.page.orientation);
    if (!Run_Print_Dialog(printer, nullptr))
        return false;
    PageModel model;
    if (!GCR_Lay_Out(model) || !print_pages(model, printer)) {
        report_printing_failure();
        return false;
    }
    QCoreApplication::processEvents();
    GCR_Check_Alerts();
    return true;
}
