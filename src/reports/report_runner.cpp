#include "reports/report_runner.h"

#include "database/db_handling.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "reportengine/formula.h"
#include "reportengine/report_data.h"
#include "reportengine/report_file.h"
#include "reportengine/report_layout.h"
#include "reportengine/text_exports.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <map>

using namespace reportengine;

namespace {

const QString tag = report_runner_tag();

// The engine's number for a report file it cannot use, carried in the error
// state so that the report shows what was wrong with the file.
constexpr int report_file_fault = 20525;

std::unique_ptr<OpenReport>& open_report()
{
    static std::unique_ptr<OpenReport> report;
    return report;
}

std::vector<QStringList>& last_alerts()
{
    static std::vector<QStringList> alerts;
    return alerts;
}

ReportWriters& writers()
{
    static ReportWriters installed;
    return installed;
}

void report_failure(const QString& message, const QString& routine)
{
    Report_Error(report::Unexpected, message, engine::mb::Information, tag, routine);
}

bool parses(const QString& text, QString& why)
{
    Formula formula;
    FormulaError error;
    if (formula.parse(text, error))
        return true;
    why = QStringLiteral("position %1: %2").arg(error.position).arg(error.message);
    return false;
}

// The report's own condition, and the request's after it.
QString joined(const QString& own, const QString& requested)
{
    return own.trimmed().isEmpty() ? requested : own + QStringLiteral(" and ") + requested;
}

bool apply_selections(ReportDefinition& report)
{
    if (!GCR_Record_Selection().trimmed().isEmpty())
        report.record_selection = joined(report.record_selection, GCR_Record_Selection());
    if (!GCR_Group_Selection().trimmed().isEmpty())
        report.group_selection = joined(report.group_selection, GCR_Group_Selection());
    QString why;
    if (parses(report.record_selection, why) && parses(report.group_selection, why))
        return true;
    engine::Err().Raise(report_file_fault, why);
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error in Criteria.  Try changing the criteria."),
                 engine::mb::Information, tag,
                 QStringLiteral("Init_Report - Record error in ") + GCR_Report_File() + QStringLiteral(" Record ")
                     + report.record_selection + QStringLiteral("\n        Init_Report - Group error in ") + GCR_Report_File()
                     + QStringLiteral(" Group ") + report.group_selection);
    return false;
}

void apply_formulas(ReportDefinition& report)
{
    if (GCR_Invoice_Type_Value().trimmed().isEmpty() && GCR_Formula_Name().trimmed().isEmpty())
        return;
    const QString named = QStringLiteral("{@") + GCR_Formula_Name() + QLatin1Char('}');
    const QString invoice_type = QStringLiteral("{@InvoiceType}");
    for (ReportFormula& f : report.formulas) {
        const QString name = QStringLiteral("{@") + f.name + QLatin1Char('}');
        if (name.compare(named, Qt::CaseInsensitive) == 0)
            Set_and_Check_Formula(f, name, GCR_Formula_Value());
        else if (name.compare(invoice_type, Qt::CaseInsensitive) == 0)
            Set_and_Check_Formula(f, name, GCR_Invoice_Type_Value());
    }
}

// The subreports a report shows, read from the files beside it, with their rows.
class Subreports {
public:
    explicit Subreports(const QString& folder) : folder_(folder) {}

    const Subreport* load(const QString& file, QString& error)
    {
        auto found = loaded_.find(file);
        if (found != loaded_.end())
            return &found->second;
        Subreport sub;
        ReportFileError file_error;
        if (!read_report_file(QDir(folder_).filePath(file), sub.definition, file_error)) {
            error = file_error.text();
            return nullptr;
        }
        for (ReportTable& t : sub.definition.tables)
            t.location = Current_Db_Name();
        engine::Database* db = Current_Db();
        if (!db) {
            error = QStringLiteral("No database is open.");
            return nullptr;
        }
        if (!sub.formulas.parse(sub.definition, error) || !read_report_data(*db, sub.definition, sub.formulas, sub.data, error))
            return nullptr;
        return &loaded_.emplace(file, std::move(sub)).first->second;
    }

private:
    QString folder_;
    std::map<QString, Subreport> loaded_;
};

struct ExportKind {
    QString name;  // for the log: the engine's own words
    QString library;
    std::function<bool(const PageModel&, const QString&, const QString&, QString&)> write;
    bool without_headers = false;
};

bool write_bytes(const QByteArray& bytes, const QString& path, QString& error)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    error = file.errorString();
    return false;
}

ReportWriter from_text(QByteArray (*make)(const PageModel&, const QString&))
{
    return [make](const PageModel& m, const QString& path, const QString& title, QString& error) {
        return write_bytes(make(m, title), path, error);
    };
}

ExportKind export_kind(const QString& type)
{
    const auto unavailable = [](const QString& what) {
        return [what](const PageModel&, const QString&, const QString&, QString& error) {
            error = what + QStringLiteral(" files cannot be written by this program.");
            return false;
        };
    };
    const auto or_unavailable = [&](const ReportWriter& w, const QString& what) { return w ? w : ReportWriter(unavailable(what)); };
    if (type == QLatin1String("1"))
        return {QStringLiteral("Word"), QStringLiteral("libzip"), or_unavailable(writers().docx, QStringLiteral("Word"))};
    if (type == QLatin1String("2") || type == QLatin1String("3"))
        return {QStringLiteral("Excel"), QStringLiteral("libxlsxwriter"), or_unavailable(writers().xlsx, QStringLiteral("Excel")),
                type == QLatin1String("3")};
    if (type == QLatin1String("4"))
        return {QStringLiteral("Comma Seperated (CSV)"), QStringLiteral("csv"),
                [](const PageModel& m, const QString& p, const QString&, QString& e) { return write_bytes(csv_export(m), p, e); }, true};
    if (type == QLatin1String("5"))
        return {QStringLiteral("Text"), QStringLiteral("text"),
                [](const PageModel& m, const QString& p, const QString&, QString& e) { return write_bytes(text_export(m), p, e); }};
    if (type == QLatin1String("6"))
        return {QStringLiteral("Rich Text"), QStringLiteral("rtf"), from_text(&rtf_export)};
    if (type == QLatin1String("7"))
        return {QStringLiteral("none"), QStringLiteral("none"), [](const PageModel&, const QString&, const QString&, QString&) { return true; }};
    if (type == pdf_output_type)
        return {QStringLiteral("PDF"), QStringLiteral("QPdfWriter"), or_unavailable(writers().pdf, QStringLiteral("PDF"))};
    return {QStringLiteral("HTML"), QStringLiteral("html"), from_text(&html_export)};
}

}  // namespace

QString& GCR_Report_File() { static QString v; return v; }
QString& GCR_Output_Type() { static QString v; return v; }
QString& GCR_Export_File() { static QString v; return v; }
QString& GCR_Invoice_Type_Value() { static QString v; return v; }
QString& GCR_Formula_Name() { static QString v; return v; }
QString& GCR_Formula_Value() { static QString v; return v; }
QString& GCR_Group_Selection() { static QString v; return v; }
QString& GCR_Record_Selection() { static QString v; return v; }

OpenReport* GCR_Report()
{
    return open_report().get();
}

void install_report_writers(ReportWriters installed)
{
    writers() = std::move(installed);
}

void GCR_End_Report()
{
    open_report().reset();
}

bool Init_Report()
{
    GCR_End_Report();
    auto report = std::make_unique<OpenReport>();
    ReportFileError error;
    if (!read_report_file(GCR_Report_File(), report->definition, error)) {
        engine::Err().Raise(report_file_fault, error.text());
        report_failure(QStringLiteral("Unable to open the report ") + GCR_Report_File(), QStringLiteral("Init_Report"));
        return false;
    }
    if (!apply_selections(report->definition))
        return false;
    apply_formulas(report->definition);
    // Nothing of an earlier run is kept in a report file: there is no saved data to discard.
    open_report() = std::move(report);
    return Init_SubReports();
}

void Set_and_Check_Formula(ReportFormula& field, const QString& name, const QString& value)
{
    QString why;
    if (parses(value, why)) {
        field.text = value;
        return;
    }
    engine::Err().Raise(report_file_fault, why);
    report_failure(QStringLiteral("Unable to set up the function ") + name + QStringLiteral(" with ") + value
                       + QStringLiteral(" because ") + why,
                   QStringLiteral("Set_and_Check_Formula"));
}

bool Init_SubReports()
{
    OpenReport* report = GCR_Report();
    if (!report)
        return false;
    for (ReportTable& t : report->definition.tables)
        t.location = Current_Db_Name();
    return true;
}

bool GCR_Lay_Out(PageModel& model)
{
    OpenReport* report = GCR_Report();
    engine::Database* db = Current_Db();
    if (!report || !db)
        return false;
    const ReportDefinition& definition = report->definition;
    ReportFormulas formulas;
    ReportData data;
    QString error;
    Subreports subreports(QFileInfo(GCR_Report_File()).absolutePath());
    LayoutSettings settings;
    const bool laid_out = formulas.parse(definition, error) && read_report_data(*db, definition, formulas, data, error)
                          && lay_out_report(definition, formulas, data,
                                            [&subreports](const QString& file, QString& e) { return subreports.load(file, e); },
                                            settings, model, error);
    if (!laid_out) {
        engine::Err().Raise(report_file_fault, error);
        return false;
    }
    last_alerts() = {model.alert_messages};
    return true;
}

bool GCR_Run_Export()
{
    if (!Init_Report())
        return false;
    const ExportKind kind = export_kind(GCR_Output_Type());
    const QString words = GCR_Report_File() + QStringLiteral(" as ") + kind.name;
    const QString detail = QStringLiteral("destination dll = disk file  format dll = ") + kind.library;
    ReportDefinition& definition = GCR_Report()->definition;
    if (kind.without_headers) {
        // The report and page headers and footers are left out of tables.
        for (int n : {2, 1, definition.area_count(), definition.area_count() - 1})
            definition.area(n)->suppress = true;
    }
    PageModel model;
    if (!GCR_Lay_Out(model)) {
        report_failure(QStringLiteral("Unexpected error exporting report ") + words, detail);
        GCR_End_Report();
        return false;
    }
    QString error;
    if (!kind.write(model, GCR_Export_File(), definition.title, error)) {
        engine::Err().Raise(report_file_fault, error);
        report_failure(QStringLiteral("Unable to export the report ") + words, detail);
        GCR_End_Report();
        return false;
    }
    GCR_Check_Alerts();
    GCR_End_Report();
    return true;
}

void GCR_Check_Alerts()
{
    for (const QStringList& messages : last_alerts())
        for (const QString& message : messages)
            engine::MsgBox(message, engine::mb::OkOnly, App_Title());
    last_alerts().clear();
}

void GCR_Get_Report_Page_Setup(qint16& size, qint16& orientation, QString& text, int printer_size, int printer_orientation)
{
    size = 0;
    orientation = 0;
    text = QStringLiteral("Unknown");
    if (GCR_Report_File().trimmed().isEmpty())
        return;
    ReportDefinition report;
    ReportFileError error;
    if (!read_report_file(GCR_Report_File(), report, error)) {
        engine::Err().Raise(report_file_fault, error.text());
        report_failure(QStringLiteral("Unable to open the report ") + GCR_Report_File(), QStringLiteral("GCR_Get_Report_Page_Setup"));
        return;
    }
    QString paper_word;
    switch (report.page.paper_size) {
    case paper::Default: size = static_cast<qint16>(printer_size); paper_word = QStringLiteral("Default"); break;
    case paper::A4: size = paper::A4; paper_word = QStringLiteral("A4"); break;
    case paper::A5: size = paper::A5; paper_word = QStringLiteral("A5"); break;
    case paper::DL_Envelope: size = paper::DL_Envelope; paper_word = QStringLiteral("DL Envelope"); break;
    default: size = paper::A4; paper_word = QStringLiteral("Unknown"); break;
    }
    QString orientation_word;
    switch (report.page.orientation) {
    case orientation::Default: orientation = static_cast<qint16>(printer_orientation); orientation_word = QStringLiteral("Default"); break;
    case orientation::Portrait: orientation = orientation::Portrait; orientation_word = QStringLiteral("Portrait"); break;
    case orientation::Landscape: orientation = orientation::Landscape; orientation_word = QStringLiteral("Landscape"); break;
    default: orientation = static_cast<qint16>(printer_orientation); orientation_word = QStringLiteral("Unknown"); break;
    }
    text = paper_word + QStringLiteral(" - ") + orientation_word;
}
