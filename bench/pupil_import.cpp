// How long the pupil import takes on the large school: a file of 10,000 new
// pupils, each with a new family, and a file bringing 10,000 of the school's
// own pupils up to date.
//
// The school is bench/large_school.h. Each run is undone afterwards, outside
// the timing, so that every iteration imports into the same school.

#include "large_school.h"
#include "people/pupil_import.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

constexpr int file_pupils = 10000;

// A file of pupils "<first> <n>" of families "<family> <n>", n from 1.
QString pupil_file(const QString& name, const QString& first, const QString& family)
{
    static QTemporaryDir folder;
    const QString path = folder.filePath(name);
    if (QFile::exists(path))
        return path;
    QString text;
    for (int n = 1; n <= file_pupils; ++n)
        text += QStringLiteral("%1 %3,%2 %3,,2015-%4-%5,F,Gold,,,pupil%3@example.org,,\"Keen, and early\",,,,,2024-09-01,Paid,"
                               "%3 Low Road,,Leeds,,LS1 1AA,0113 %3,,,,Mother\r\n")
                    .arg(first, family)
                    .arg(n)
                    .arg(1 + n % 12, 2, 10, QLatin1Char('0'))
                    .arg(1 + n % 28, 2, 10, QLatin1Char('0'));
    QFile file(path);
    must(file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0, "writing the import file");
    return path;
}

// Imports the file once per iteration, undoing it outside the timing.
void time_import(benchmark::State& state, const QString& path, int pupil_import::ImportOutcome::*counted)
{
    school();
    for (auto _ : state) {
        state.PauseTiming();
        must(Program_Workspace().BeginTrans(), "beginning the undo");
        state.ResumeTiming();
        pupil_import::PupilImport importer;
        const pupil_import::ImportOutcome outcome = importer.run(path, {});
        state.PauseTiming();
        if (outcome.*counted != file_pupils)
            std::fprintf(stderr, "%s\n", qPrintable(outcome.stopped_by));
        must(outcome.*counted == file_pupils, "importing every pupil of the file");
        must(Program_Workspace().Rollback(), "undoing the import");
        state.ResumeTiming();
    }
    state.counters["pupils"] = file_pupils;
}

void BM_ImportNewPupils(benchmark::State& state)
{
    time_import(state, pupil_file(QStringLiteral("new.csv"), QStringLiteral("Newcomer"), QStringLiteral("Incomer")),
                &pupil_import::ImportOutcome::added);
}
BENCHMARK(BM_ImportNewPupils)->Unit(benchmark::kMillisecond);

void BM_ImportKnownPupils(benchmark::State& state)
{
    // The school's own "Pupil n" of "Family n": every line an update.
    time_import(state, pupil_file(QStringLiteral("known.csv"), QStringLiteral("Pupil"), QStringLiteral("Family")),
                &pupil_import::ImportOutcome::updated);
}
BENCHMARK(BM_ImportKnownPupils)->Unit(benchmark::kMillisecond);

}  // namespace
