#pragma once
// Timing screens off screen: a screen made, shown and waited for until it
// shows what it should, the deletion left out of the timing; and the main of
// a benchmark program that opens screens.

#include "large_school.h"

#include <QApplication>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>
#include <functional>

namespace bench_school {

// Each iteration opens a new screen and lets events run until `shown` holds
// (at most 10 s); `what` names the failure when it never does.
template <typename Screen>
void time_opening(benchmark::State& state, const std::function<bool(Screen&)>& shown, const char* what)
{
    for (auto _ : state) {
        auto* screen = new Screen;
        screen->show();
        QElapsedTimer waited;
        waited.start();
        do
            QApplication::processEvents(QEventLoop::AllEvents, 5);
        while (!shown(*screen) && waited.elapsed() < 10000);
        must(shown(*screen), what);
        state.PauseTiming();
        delete screen;
        state.ResumeTiming();
    }
}

inline int run_screen_benchmarks(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

}  // namespace bench_school
