// How long the money screens take to open on a large school and show their
// first family (the families' list, the first family's pupils, invoices,
// receipts and balance), and Automated Invoicing to open and prepare its run
// (the temporary tables filled for every pupil, the pupil list shown). The
// school is bench/large_school.h, with the second term invoiced for every
// family and every other invoice paid.

#include "billing/auto_invoicing.h"
#include "screen_timing.h"
#include "ui/billing/frm_auto_invoice.h"
#include "ui/billing/frm_invoices.h"
#include "ui/billing/frm_receipts.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include <benchmark/benchmark.h>

namespace {

using namespace bench_school;

void invoice_the_school()
{
    static bool invoiced = false;
    if (invoiced)
        return;
    school();
    {
        AutoInvoicing run;
        must(run.prepare(), "preparing the run");
        must(run.insert_term(), "the term run");
        must(run.unload(), "ending the run");
    }
    must(Current_Db()->execute_native(QStringLiteral(
             "INSERT INTO Receipts (Receipt_Invoice_id, Receipt_Date, Receipt_Amount, Receipt_Method) "
             "SELECT Inv_Line_Inv_id, '2026-02-01 00:00:00', sum(Amount), 'Cash' FROM Invoice_Lines "
             "WHERE Inv_Line_Inv_id % 2 = 0 GROUP BY Inv_Line_Inv_id")),
         "paying every other invoice");
    invoiced = true;
}

template <typename Screen>
void open_screen(benchmark::State& state)
{
    invoice_the_school();
    time_opening<Screen>(
        state, [](Screen& screen) { return !screen.txt_Family_Name->text().isEmpty() && screen.lst_Invoices->count() > 0; },
        "showing the first family");
    state.counters["families"] = families;
}

void BM_OpenReceipts(benchmark::State& state)
{
    open_screen<frm_Receipts>(state);
}
BENCHMARK(BM_OpenReceipts)->Unit(benchmark::kMillisecond);

void BM_OpenInvoices(benchmark::State& state)
{
    open_screen<frm_Invoices>(state);
}
BENCHMARK(BM_OpenInvoices)->Unit(benchmark::kMillisecond);

void BM_OpenAutoInvoicing(benchmark::State& state)
{
    invoice_the_school();
    time_opening<frm_Auto_Invoice>(
        state, [](frm_Auto_Invoice& screen) { return !screen.lbl_All[AutoInvoicing::Terms]->text().isEmpty(); },
        "preparing the run");
    state.counters["families"] = families;
}
BENCHMARK(BM_OpenAutoInvoicing)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    return bench_school::run_screen_benchmarks(argc, argv);
}
