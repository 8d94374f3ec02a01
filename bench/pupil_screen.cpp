// How long Pupil Details takes to open on a large school until its first
// pupil is shown: the 15,000 pupils' list, the 10,000 families' list, the
// courses, and the first pupil with the family and the four grids. The
// school is bench/large_school.h.

#include "screen_timing.h"
#include "ui/people/frm_pupil.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

void BM_OpenPupilDetails(benchmark::State& state)
{
    school();
    // Activate runs once the window is on view.
    time_opening<frm_Pupil>(
        state,
        [](frm_Pupil& screen) {
            return screen.cmb_Navigation->count() == pupils && screen.cmb_Navigation->currentIndex() == 0
                   && !screen.txt_First_Name->text().isEmpty();
        },
        "showing the first pupil");
    state.counters["pupils"] = pupils;
}
BENCHMARK(BM_OpenPupilDetails)->Unit(benchmark::kMillisecond);

// Going to the last pupil and back by the list, as a secretary picks a name.
void BM_ChoosePupilFromTheList(benchmark::State& state)
{
    school();
    frm_Pupil screen;
    screen.show();
    while (screen.cmb_Navigation->count() == 0)
        QApplication::processEvents(QEventLoop::AllEvents, 5);
    int index = pupils - 1;
    for (auto _ : state) {
        screen.cmb_Navigation->setCurrentIndex(index);
        screen.cmb_Navigation_Click();
        index = pupils - 1 - index;
    }
    must(!screen.txt_First_Name->text().isEmpty(), "showing a pupil");
}
BENCHMARK(BM_ChoosePupilFromTheList)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return bench_school::run_screen_benchmarks(argc, argv);
}
