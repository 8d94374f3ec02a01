// How long the activity register takes to open on a large school
// (bench/large_school.h: 15,000 pupils), with a catalogue of activities and
// dates, the pupil list filled and the first activity's register shown.

#include "screen_timing.h"
#include "ui/activities/frm_exam_register.h"
#include "ui/toolkit/data_grid.h"

#include <QApplication>
#include <QLabel>

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

// Forty activities and twelve dates, with last year's exams taken by a third of the pupils.
void add_activities()
{
    static bool added = false;
    if (added)
        return;
    added = true;
    engine::Database& db = *Current_Db();
    for (const QString& sql :
         {numbers(40) + QStringLiteral("INSERT INTO Exams (Exam_Type, Exam_Title, Exam_Dance, Exam_Level, Exam_Price) "
                                       "SELECT 1 + i % 4, 'Activity ' || i, 'Dance ' || (i % 5), i, 30 FROM n"),
          numbers(12) + QStringLiteral("INSERT INTO Activity_Titles (ActT_Date, ActT_Title) "
                                       "SELECT date('2026-01-10', '+' || (i * 28) || ' days') || ' 00:00:00', 'Day ' || i FROM n"),
          numbers(pupils / 3) + QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date) "
                                               "SELECT i * 3, 1 + i % 40, '2026-02-07 00:00:00' FROM n")})
        must(db.execute_native(sql), "adding the activities");
}

void BM_OpenActivityRegister(benchmark::State& state)
{
    school();
    add_activities();
    time_opening<frm_ExamRegister>(
        state,
        [](frm_ExamRegister& screen) {
            return screen.dbg_Pupil->model()->rowCount() == pupils
                   && screen.register_caption->text().startsWith(QStringLiteral("Register for "));
        },
        "filling the lists");
    state.counters["pupils"] = pupils;
}
BENCHMARK(BM_OpenActivityRegister)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return bench_school::run_screen_benchmarks(argc, argv);
}
