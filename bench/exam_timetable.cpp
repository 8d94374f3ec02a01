// How long the exam timetable takes on a long exam day of the large school
// (bench/large_school.h): 400 candidates timetabled two by two in 200 slots
// of five minutes from 06:00, and 400 more still without a time. Loading
// derives the slots from the stored times; storing writes every candidate's
// time and order after the start has moved by a minute.

#include "activities/timetable_grid.h"
#include "large_school.h"

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

const QDate exam_day(2027, 3, 13);
constexpr int timed = 400;

void add_exam_day()
{
    static bool added = false;
    if (added)
        return;
    added = true;
    engine::Database& db = *Current_Db();
    const QStringList statements = {
        QStringLiteral("INSERT INTO Exams (Exam_Type, Exam_Title, Exam_Dance, Exam_Level, Exam_Duration) "
                       "VALUES (1, 'Grade 1', 'Ballet', 1, 5)"),
        QStringLiteral("INSERT INTO Activity_Titles (ActT_Date, ActT_Title) VALUES ('2027-03-13 00:00:00', 'Exams')"),
        numbers(2 * timed) + QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date, "
                                            "Results_Time_txt, Results_Order, Results_Mark, Results_Grade) "
                                            "SELECT i, 1, '2027-03-13 00:00:00', CASE WHEN i <= %1 THEN "
                                            "printf('%02d:%02d', (360 + 5 * ((i - 1) / 2)) / 60, (360 + 5 * ((i - 1) / 2)) % 60) "
                                            "ELSE '' END, 1 + (i - 1) % 2, 0, '' FROM n")
                                 .arg(timed),
    };
    for (const QString& sql : statements)
        must(db.execute_native(sql), "adding the exam day");
}

struct Day {
    Day()
    {
        school();
        add_exam_day();
        timetable.Initialise();
    }
    TextBoxGrid grid{8, 112};
    ExamTimetable timetable{grid};
};

void BM_LoadExamDay(benchmark::State& state)
{
    Day day;
    for (auto _ : state) {
        must(day.timetable.Setup_Grid(exam_day), "loading the day");
        must(day.grid.record().last_row == timed / 2, "deriving the slots");
    }
    state.counters["slots"] = timed / 2;
}
BENCHMARK(BM_LoadExamDay)->Unit(benchmark::kMillisecond);

void BM_StoreExamDay(benchmark::State& state)
{
    Day day;
    must(day.timetable.Setup_Grid(exam_day), "loading the day");
    bool later = false;
    for (auto _ : state) {
        // Every slot moves by a minute, so every candidate is written.
        later = !later;
        day.timetable.start = later ? QStringLiteral("06:01") : QStringLiteral("06:00");
        must(day.timetable.Calculate_Times(), "recalculating");
        must(day.timetable.Handle_Update(), "storing the day");
    }
    state.counters["candidates"] = timed;
}
BENCHMARK(BM_StoreExamDay)->Unit(benchmark::kMillisecond);

void BM_ScrollExamDay(benchmark::State& state)
{
    Day day;
    must(day.timetable.Setup_Grid(exam_day), "loading the day");
    short row = 1;
    for (auto _ : state) {
        row = static_cast<short>(row % (timed / 2) + 1);
        day.grid.txg_vscroll_change(row);
    }
}
BENCHMARK(BM_ScrollExamDay)->Unit(benchmark::kMicrosecond);

}  // namespace
