// How long the term invoicing of a large school takes: the course costs
// script alone, the preparation of the temporary tables, and the whole term
// run (costs, check, term invoices) as the Automated Invoicing screen does it.
//
// The school is bench/large_school.h. Each run of the term invoicing is undone
// afterwards, outside the timing, so that every iteration raises the same
// 10,000 invoices and 30,000 lines.

#include "billing/auto_invoicing.h"
#include "large_school.h"
#include "script/global_run_sql.h"

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

void BM_CourseCostsScript(benchmark::State& state)
{
    school();
    for (auto _ : state) {
        QString status;
        must(Global_Run_SQL(Settings().cost_script, status), "the course costs script");
    }
}
BENCHMARK(BM_CourseCostsScript)->Unit(benchmark::kMillisecond);

void BM_PrepareTemporaryTables(benchmark::State& state)
{
    school();
    for (auto _ : state) {
        AutoInvoicing screen;
        must(screen.prepare(), "preparing the run");
    }
}
BENCHMARK(BM_PrepareTemporaryTables)->Unit(benchmark::kMillisecond);

void BM_TermRun(benchmark::State& state)
{
    school();
    AutoInvoicing screen;
    must(screen.prepare(), "preparing the run");
    for (auto _ : state) {
        state.PauseTiming();
        must(Program_Workspace().BeginTrans(), "beginning the undo");
        state.ResumeTiming();
        must(screen.insert_term(), "the term run");
        state.PauseTiming();
        const int raised = Current_Db()->OpenRecordset(QStringLiteral("SELECT count(*) AS n FROM Invoices"))->Fields(QStringLiteral("n")).toInt();
        const int lines = Current_Db()->OpenRecordset(QStringLiteral("SELECT count(*) AS n FROM Invoice_Lines"))->Fields(QStringLiteral("n")).toInt();
        must(raised == families, "raising an invoice for every family");
        state.counters["lines"] = lines;
        must(Program_Workspace().Rollback(), "undoing the run");
        state.ResumeTiming();
    }
    state.counters["invoices"] = families;
}
BENCHMARK(BM_TermRun)->Unit(benchmark::kMillisecond);

// The term script's steps one by one, each timed on its own after the
// steps before it: where the time of the term run goes.
void run_query(const char* name)
{
    auto query = Current_Db()->QueryDefs(QString::fromLatin1(name));
    must(query && query->Execute(engine::dbopt::FailOnErrorConsistent), name);
}

void BM_TermScriptStep(benchmark::State& state)
{
    static const char* const steps[] = {"Qry_Setup_Invoice_Terms_Temp", "Qry_Setup_Invoice_Courses",
                                        "Qry_Update_Generation_to_Auto"};
    school();
    AutoInvoicing screen;
    must(screen.prepare(), "preparing the run");
    QString status;
    must(Global_Run_SQL(Settings().cost_script, status), "the course costs script");
    const int step = static_cast<int>(state.range(0));
    state.SetLabel(steps[step]);
    for (auto _ : state) {
        state.PauseTiming();
        must(Program_Workspace().BeginTrans(), "beginning the undo");
        for (int before = 0; before < step; ++before)
            run_query(steps[before]);
        state.ResumeTiming();
        run_query(steps[step]);
        state.PauseTiming();
        must(Program_Workspace().Rollback(), "undoing the step");
        state.ResumeTiming();
    }
}
BENCHMARK(BM_TermScriptStep)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

}  // namespace
