// How long the Reports screen takes to open with a long report list and a
// personalised list editing it, and to take over a chosen report whose
// criteria name 1,000 chosen pupils of the large school (bench/large_school.h).

#include "screen_timing.h"
#include "ui/reports/frm_reports.h"

#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

constexpr int listed_reports = 400;
constexpr int personal_lines = 100;
constexpr int chosen_pupils = 1000;

void write(const QString& path, const QString& text)
{
    QFile file(path);
    must(file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0, "writing a report list");
}

// A standard list of headings and reports, each report needing a term and
// optionally pupils, and a personalised list renaming some and adding others.
QTemporaryDir& report_folder()
{
    static QTemporaryDir folder;
    static const bool written = [] {
        QString standard;
        for (int id = 10; id < 10 + listed_reports; ++id)
            standard += id % 20 == 0 ? QStringLiteral("\"*\",0,\"\",\"Heading %1\",\"\",\"\",1,1,1,1,1,1,1,\"\",\"\",\"\"\n").arg(id)
                                     : QStringLiteral("\"R\",%1,\"Report%1.rpt\",\"Report %1\",\"\",\"\",3,1,1,2,1,1,1,\"\",\"\",\"\"\n").arg(id);
        QString personal;
        for (int line = 0; line < personal_lines; ++line)
            personal += line % 2 ? QStringLiteral("\"=\",%1,\"\",\"Our report %1\",\"\",\"\",0,0,0,0,0,0,0,\"\",\"\",\"\"\n").arg(11 + line)
                                 : QStringLiteral("\"+\",%1,\"?Own%1.rpt\",\"Own %1\",\"\",\"\",2,1,1,1,1,1,1,\"\",\"\",\"\"\n").arg(1000 + line);
        write(folder.filePath(QStringLiteral("zrepfmt.lst")), standard);
        // The two reports the benchmark goes between, so that their paper can be read.
        for (const char* name : {"Report11.rpt", "Report12.rpt"})
            write(folder.filePath(QLatin1String(name)),
                  QStringLiteral("<report version=\"1\" title=\"Pupils\"><page paper=\"A4\" orientation=\"portrait\"/>"
                                 "<tables><table name=\"Pupils\"/></tables></report>"));
        write(folder.filePath(QStringLiteral("own.lst")), personal);
        Settings().report_format_dir = folder.path();
        Settings().report_list = folder.filePath(QStringLiteral("own.lst"));
        return true;
    }();
    (void)written;
    return folder;
}

void BM_OpenReportsScreen(benchmark::State& state)
{
    school();
    report_folder();
    // "Choose myself", every standard line and the reports the personalised list adds.
    const int listed = 1 + listed_reports + personal_lines / 2;
    time_opening<frm_Reports>(
        state, [listed](frm_Reports& screen) { return screen.lst_Reports->count() == listed; }, "listing the reports");
    state.counters["reports"] = listed;
}
BENCHMARK(BM_OpenReportsScreen)->Unit(benchmark::kMillisecond);

void BM_ChooseAReportWithManyPupils(benchmark::State& state)
{
    school();
    report_folder();
    Sel_Pupils().reset();
    for (int pupil = 1; pupil <= chosen_pupils; ++pupil)
        Sel_Pupils().append(pupil * 7);
    auto* screen = new frm_Reports;
    screen->show();
    QApplication::processEvents();
    int row = 2;
    for (auto _ : state) {
        // Each step goes to another report, as the arrow key does, and shows its criteria.
        row = row == 2 ? 3 : 2;
        screen->txt_Value[Param_Pupils]->clear();
        screen->lst_Reports->setCurrentRow(row);
        must(!screen->txt_Value[Param_Pupils]->text().isEmpty(), "showing the chosen pupils");
    }
    delete screen;
    Sel_Pupils().reset();
    state.counters["pupils"] = chosen_pupils;
}
BENCHMARK(BM_ChooseAReportWithManyPupils)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return bench_school::run_screen_benchmarks(argc, argv);
}
