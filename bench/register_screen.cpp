// How long the course register screen takes to open on a large school with
// its lists filled (bench/large_school.h: 300 courses, 15,000 pupils), and to
// show the register of a course gone to.

#include "screen_timing.h"
#include "ui/courses/frm_register.h"
#include "ui/courses/register_grid.h"

#include <QApplication>
#include <QLabel>

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

void BM_OpenCourseRegister(benchmark::State& state)
{
    school();
    time_opening<frm_Register>(
        state,
        [](frm_Register& screen) {
            return screen.dbg_Course->model()->rowCount() == courses && screen.dbg_Pupil->model()->rowCount() == pupils;
        },
        "filling the lists");
    state.counters["pupils"] = pupils;
}
BENCHMARK(BM_OpenCourseRegister)->Unit(benchmark::kMillisecond);

void BM_ShowARegister(benchmark::State& state)
{
    school();
    auto* screen = new frm_Register;
    screen->show();
    QApplication::processEvents();
    int row = 0;
    for (auto _ : state) {
        // Each step goes to the next course, as the arrow key does, and shows its register.
        row = (row + 1) % courses;
        screen->dbg_Course->setCurrentIndex(screen->dbg_Course->model()->index(row, 0));
        must(screen->register_caption->text().startsWith(QStringLiteral("Register for ")), "showing the register");
    }
    delete screen;
}
BENCHMARK(BM_ShowARegister)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return bench_school::run_screen_benchmarks(argc, argv);
}
