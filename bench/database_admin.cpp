// How long the database administration takes on a large school: a backup
// (a compressed copy recorded in the school, the school opened again) and a
// new year's copy of the people and courses, as the screens run them.
//
// The school is bench/large_school.h. Each copy is deleted afterwards, and
// the school opened again, outside the timing.

#include "database/database_change.h"
#include "database/database_control.h"
#include "large_school.h"
#include "shell/file_checks.h"

#include <QFile>

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

struct NameBox : TextBoxLike {
    QString value;
    QString text() const override { return value; }
    void setText(const QString& text) override { value = text; }
    void setFocus() override {}
};

QString copy_name()
{
    static QTemporaryDir folder;
    return folder.filePath(QStringLiteral("copy.mdb"));
}

void BM_Backup(benchmark::State& state)
{
    school();
    Settings().default_database = Current_Db_Name();
    NameBox box;
    for (auto _ : state) {
        box.value = copy_name();
        DatabaseControl control;
        control.run(DatabaseControl::Command::Backup, box, Settings().default_database);
        state.PauseTiming();
        must(control.status.startsWith(QStringLiteral("Successfully Copied")), "the backup");
        QFile::remove(copy_name());
        state.ResumeTiming();
    }
}
BENCHMARK(BM_Backup)->Unit(benchmark::kMillisecond);

void BM_NewYearCopy(benchmark::State& state)
{
    school();
    const QString current = Current_Db_Name();
    NameBox box;
    for (auto _ : state) {
        box.value = copy_name();
        DatabaseChange change;
        change.show_current();
        change.copy_selection(box, false);
        state.PauseTiming();
        must(change.status == QStringLiteral("successfully copied"), "the copy");
        QFile::remove(copy_name());
        must(DB_Open(current), "opening the school again");
        state.ResumeTiming();
    }
}
BENCHMARK(BM_NewYearCopy)->Unit(benchmark::kMillisecond);

}  // namespace
