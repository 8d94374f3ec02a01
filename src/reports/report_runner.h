#pragma once
// The one place where the program asks for a report: a request (the file,
// selections to add to the report's own, formula values, the output), the
// report opened and prepared from it, and its export. Printing and the
// viewer screen draw the same prepared report.

#include "reportengine/page_model.h"
#include "reportengine/report_definition.h"

#include <QString>
#include <functional>
#include <memory>

// The module tag of the runner's reports.
inline QString report_runner_tag()
{
    return QStringLiteral("Glob_Crystal_Reports");
}

// The request, filled by the callers before a run.
QString& GCR_Report_File();
QString& GCR_Output_Type();  // "0" screen or printer; "1" to "7" and others: the exports
QString& GCR_Export_File();
QString& GCR_Invoice_Type_Value();
QString& GCR_Formula_Name();
QString& GCR_Formula_Value();
QString& GCR_Group_Selection();
QString& GCR_Record_Selection();

// The report now open, as Init_Report prepared it; null when none is.
struct OpenReport {
    reportengine::ReportDefinition definition;
};
OpenReport* GCR_Report();

// Opens GCR_Report_File and applies the request: the selections and-ed to the
// report's own, the two formulas, every table of the report and its
// subreports pointed at the open database. True when the report is usable.
bool Init_Report();
// Sets one formula's text; a text that can't be read is reported and the
// formula keeps its own. The run goes on either way.
void Set_and_Check_Formula(reportengine::ReportFormula& field, const QString& name, const QString& value);
// Points every table of the report, and of the subreports it shows, at the open database.
bool Init_SubReports();
// Lays the open report out into pages from the open database.
bool GCR_Lay_Out(reportengine::PageModel& model);
// Exports to GCR_Export_File in the kind GCR_Output_Type names.
bool GCR_Run_Export();
// Shows the messages of the alerts that the last run set off.
void GCR_Check_Alerts();
// The paper and orientation the report asks for, and their words ("A4 - Portrait").
void GCR_Get_Report_Page_Setup(qint16& size, qint16& orientation, QString& text, int printer_size, int printer_orientation);
// Releases the open report.
void GCR_End_Report();

// The writers of the exports that need more than the core (PDF, Word, Excel):
// a writer takes the pages, the file and the report's title, and gives false
// with the reason. Installed by the programs that link them.
using ReportWriter = std::function<bool(const reportengine::PageModel&, const QString& path, const QString& title, QString& error)>;
struct ReportWriters {
    ReportWriter pdf, docx, xlsx;
};
void install_report_writers(ReportWriters writers);

// Our own output kind beside the numbered ones: a PDF file. A letter, so that
// every digit keeps the meaning it has ("8" and the like give HTML).
inline const QString pdf_output_type = QStringLiteral("P");
