// How long generating a school's own report files takes: a folder of 60
// report files of 200 fields each (a large standard set) copied into
// genrepfmts, each report read, its fields given the machine's date and time
// settings, and saved again.

#include "engine/msg_box.h"
#include "reports/report_generation.h"
#include "shell/install_folder.h"
#include "shell/locale_formats.h"
#include "shell/settings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int reports = 60;
constexpr int fields_per_report = 200;

void must(bool done, const char* what)
{
    if (!done) {
        std::fprintf(stderr, "bench setup failed: %s\n", what);
        std::exit(1);
    }
}

QString report_text()
{
    QString fields;
    for (int i = 0; i < fields_per_report; ++i)
        fields += QStringLiteral(R"(<field x="0" y="%1" width="30" height="5" source="{Families.Family_Name}" format="date"/>)")
                      .arg(i % 50);
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<report version="1"><tables><table name="Families"/></tables>
<area kind="pageHeader"><section height="30"><subreport x="0" y="0" width="180" height="25" file="PrtHead.rpt"/></section></area>
<area kind="details"><section height="260">%1</section></area></report>
)").arg(fields);
}

void write(const QString& path, const QString& text)
{
    QFile file(path);
    must(file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0, "writing a report file");
}

void BM_GenerateReports(benchmark::State& state)
{
    QTemporaryDir folder;
    const QString app = folder.filePath(QStringLiteral("app"));
    const QString standard = app + QStringLiteral("/repfmts");
    must(QDir().mkpath(standard), "making the report folder");
    for (int i = 0; i < reports; ++i)
        write(standard + QStringLiteral("/Report%1.rpt").arg(i), report_text());
    write(standard + QStringLiteral("/PrtHead.rpt"), report_text());
    write(standard + QStringLiteral("/zrepfmt.lst"), QStringLiteral("Report,Report0.rpt\n"));
    set_install_folder_for_tests(app);
    Settings().report_format_dir = standard;
    Settings().report_list = standard + QStringLiteral("/zrepfmt.lst");
    Glob_Date_Order() = 0;
    Glob_Standard_Formats() = false;
    engine::set_msgbox_responder([](const QString&, int, const QString&) { return engine::answer::Yes; });

    for (auto _ : state) {
        QString new_dir;
        QString new_list;
        must(GCR_Generate_Reports(new_dir, new_list), "generating");
    }
    state.counters["reports"] = reports + 1;
}
BENCHMARK(BM_GenerateReports)->Unit(benchmark::kMillisecond);

}  // namespace
