// How long the reports of a large school take: a statement of account for
// every family (one family a page) to PDF, the standard set's statements and
// invoices likewise, a list of every pupil laid out for the viewer's first
// page, and the same list to a spreadsheet. The peak
// memory of the whole program is printed at the end.
//
// The school: 10,000 families, each with an invoice of two lines and a
// receipt; 15,000 pupils.

#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "reportengine/report_file.h"
#include "reportengine/report_layout.h"
#include "reportoutput/office_exports.h"
#include "reportoutput/output_writers.h"
#include "reportoutput/page_painter.h"
#include "reports/report_runner.h"
#include "shell/settings.h"
#include "ui/reports/frm_view_report.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>

namespace {

using namespace reportengine;

constexpr int families = 10000;
constexpr int pupils = 15000;

void must(bool done, const char* what, const QString& why = QString())
{
    if (done)
        return;
    std::fprintf(stderr, "%s failed: %d %s %s\n", what, engine::Err().Number, qPrintable(engine::Err().Description), qPrintable(why));
    std::exit(1);
}

QString numbers(int n)
{
    return QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) ").arg(n);
}

const QByteArray statement_report = R"xml(<report version="1" title="Statement of account">
  <page paper="A4" orientation="portrait"/>
  <tables>
    <table name="Families"/><table name="Invoices"/><table name="Invoice_Lines"/>
    <link from="Families.Family_id" to="Invoices.Invoice_Family_id"/>
    <link from="Invoices.Invoice_id" to="Invoice_Lines.Inv_Line_Inv_id"/>
  </tables>
  <sort field="{Invoice_Lines.Invoice_Line_id}"/>
  <group field="{Families.Family_id}"/>
  <area kind="pageHeader"><section height="20">
    <text x="0" y="0" width="120" height="8" fontSize="14" bold="true">Statement of account</text>
    <line x="0" y="15" width="180" height="0"/></section></area>
  <area kind="groupHeader" group="1"><section height="25">
    <field x="0" y="0" width="100" height="6" source="{Families.Family_Name}" bold="true"/>
    <field x="0" y="6" width="100" height="6" source="{Families.Family_Address}"/></section></area>
  <area kind="details"><section height="6">
    <field x="0" y="0" width="120" height="5" source="{Invoice_Lines.Description}"/>
    <field x="130" y="0" width="40" height="5" source="{Invoice_Lines.Amount}" format="currency" align="right"/></section></area>
  <area kind="groupFooter" group="1"><section height="10" newPageAfter="true">
    <text x="90" y="2" width="40" height="5" bold="true">Owed</text>
    <field x="130" y="2" width="40" height="5" source="Sum({Invoice_Lines.Amount}, {Families.Family_id})" format="currency" align="right" bold="true"/></section></area>
  <area kind="pageFooter"><section height="8">
    <field x="100" y="0" width="80" height="5" align="right" source="'Page ' &amp; ToText(PageNumber, 0) &amp; ' of ' &amp; ToText(TotalPageCount, 0)"/></section></area>
</report>)xml";

const QByteArray pupil_list = R"xml(<report version="1" title="Pupils">
  <tables><table name="Pupils"/><table name="Families"/><link from="Pupils.Pupil_Family_Id" to="Families.Family_id"/></tables>
  <sort field="{Families.Family_Name}"/><sort field="{Pupils.Pupil_FirstName}"/>
  <area kind="pageHeader"><section height="10"><text x="0" y="0" width="100" height="8" bold="true">Pupils</text></section></area>
  <area kind="details"><section height="5">
    <field x="0" y="0" width="60" height="5" source="{Pupils.Pupil_FirstName}"/>
    <field x="60" y="0" width="60" height="5" source="{Families.Family_Name}"/>
    <field x="130" y="0" width="40" height="5" source="{Pupils.Pupil_Birthdate}" format="date"/></section></area>
  <area kind="pageFooter"><section height="8"><field x="100" y="0" width="80" height="5" align="right" source="'Page ' &amp; ToText(PageNumber, 0)"/></section></area>
</report>)xml";

class LargeSchool {
public:
    LargeSchool()
    {
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(folder_.filePath(QStringLiteral("s.ini"))));
        engine::set_msgbox_responder([](const QString& text, int style, const QString& title) {
            std::fprintf(stderr, "unexpected box: %s\n", qPrintable(text));
            return engine::stderr_responder(text, style, title);
        });
        const QString path = folder_.filePath(QStringLiteral("large.qdb"));
        must(DB_Create_Database(path, true), "creating the database");
        must(DB_Open(path), "opening the database");
        const QStringList statements = {
            numbers(families) + QStringLiteral("INSERT INTO Families (Family_Name, Family_Address) SELECT 'Family ' || i, i || ' High Street, Bellwood' FROM n"),
            numbers(pupils) + QStringLiteral("INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Gender, Pupil_Birthdate) "
                                             "SELECT 'Pupil ' || i, 1 + i % %1, 'F', date('2012-01-01', '+' || (i % 3000) || ' days') || ' 00:00:00' FROM n").arg(families),
            numbers(families) + QStringLiteral("INSERT INTO Invoices (Invoice_Family_id, Invoice_Date, Invoice_Reason, Invoice_Generated) "
                                               "SELECT i, '2026-09-01 00:00:00', 'Invoice for Autumn', 0 FROM n"),
            numbers(families) + QStringLiteral("INSERT INTO Invoice_Lines (Inv_Line_Inv_id, Inv_Line_Type, Description, Amount) "
                                               "SELECT i, 3, 'Ballet, autumn term', 120.5 FROM n UNION ALL "
                                               "SELECT i, 3, 'Tap, autumn term', 99.75 FROM n"),
        };
        for (const QString& sql : statements)
            must(Current_Db()->execute_native(sql), "building the school");
    }
    ~LargeSchool() { DB_Close_All(); }
    QString file(const QString& name) const { return folder_.filePath(name); }

private:
    QTemporaryDir folder_;
};

LargeSchool& school()
{
    static LargeSchool made;
    return made;
}

PageModel lay_out(const QByteArray& xml)
{
    ReportDefinition report;
    ReportFileError file_error;
    must(read_report_text(xml, QStringLiteral("bench.rpt"), report, file_error), "reading the report", file_error.text());
    ReportFormulas formulas;
    ReportData data;
    PageModel model;
    QString error;
    must(formulas.parse(report, error) && read_report_data(*Current_Db(), report, formulas, data, error)
             && lay_out_report(report, formulas, data, SubreportLoader(), LayoutSettings(), model, error),
         "laying out", error);
    return model;
}

void BM_StatementsForEveryFamilyToPdf(benchmark::State& state)
{
    school();
    for (auto _ : state) {
        const PageModel model = lay_out(statement_report);
        QString error;
        must(model.pages.size() == families, "one page a family");
        must(reportoutput::write_pdf(model, school().file(QStringLiteral("statements.pdf")), QStringLiteral("Statements"), error), "PDF", error);
    }
}
BENCHMARK(BM_StatementsForEveryFamilyToPdf)->Unit(benchmark::kMillisecond)->Iterations(1);

// The standard set's own statement and invoice, with their page heading,
// running balances and notices, through the runner as the Reports screen runs them.
void standard_report_for_every_family(benchmark::State& state, const char* file)
{
    school();
    GCR_Report_File() = QCoreApplication::applicationDirPath() + QStringLiteral("/../repfmts/") + QLatin1String(file);
    for (auto _ : state) {
        PageModel model;
        must(Init_Report() && GCR_Lay_Out(model), "laying out the standard report");
        QString error;
        must(model.pages.size() == families, "one page a family");
        must(reportoutput::write_pdf(model, school().file(QStringLiteral("standard.pdf")), QStringLiteral("Standard"), error), "PDF", error);
    }
}
void BM_StandardStatementsForEveryFamilyToPdf(benchmark::State& state)
{
    standard_report_for_every_family(state, "Statement.rpt");
}
BENCHMARK(BM_StandardStatementsForEveryFamilyToPdf)->Unit(benchmark::kMillisecond)->Iterations(1);
void BM_StandardInvoicesForEveryFamilyToPdf(benchmark::State& state)
{
    standard_report_for_every_family(state, "Invoice.rpt");
}
BENCHMARK(BM_StandardInvoicesForEveryFamilyToPdf)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_PupilListForTheViewer(benchmark::State& state)
{
    school();
    for (auto _ : state)
        benchmark::DoNotOptimize(lay_out(pupil_list));
}
BENCHMARK(BM_PupilListForTheViewer)->Unit(benchmark::kMillisecond);

void BM_PupilListToSpreadsheet(benchmark::State& state)
{
    school();
    for (auto _ : state) {
        const PageModel model = lay_out(pupil_list);
        QString error;
        must(reportoutput::write_xlsx(model, school().file(QStringLiteral("pupils.xlsx")), QStringLiteral("Pupils"), error), "xlsx", error);
    }
}
BENCHMARK(BM_PupilListToSpreadsheet)->Unit(benchmark::kMillisecond);

// From the request to the first page painted in the viewer: the report
// opened, laid out whole (the viewer says how many pages there are) and its
// first page drawn.
void BM_PupilListFirstPageInTheViewer(benchmark::State& state)
{
    school();
    QFile file(school().file(QStringLiteral("Pupils.rpt")));
    must(file.open(QIODevice::WriteOnly) && file.write(pupil_list) == pupil_list.size(), "writing the report");
    file.close();
    GCR_Report_File() = file.fileName();
    for (auto _ : state) {
        must(Init_Report(), "opening the report");
        auto* viewer = new frm_View_Report(QStringLiteral("Pupils"));
        viewer->show();
        while (viewer->lbl_Page->text().isEmpty())
            QApplication::processEvents(QEventLoop::AllEvents, 5);
        viewer->grab();  // the page painted
        state.PauseTiming();
        delete viewer;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_PupilListFirstPageInTheViewer)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    reportoutput::install_output_writers();  // the fonts' own measure, as the program has it
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("peak memory: %ld MB\n", usage.ru_maxrss / 1024);
    return 0;
}
