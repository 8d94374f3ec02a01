#pragma once
// Printing a report: the printer's paper told to the paper check, the print
// dialog, and the pages drawn on the printer the user chose. The printer may
// be a real one or Qt's printing to a PDF file.

#include "reports/paper_check.h"

#include <functional>

class QPrinter;
class QWidget;

namespace reportengine {
struct PageModel;
}

// What the paper check knows of a printer. Printing to a file counts as a
// printer of its own.
PrinterState printer_state(const QPrinter& printer);

// Gives the printer the report's paper, so that the print dialog starts from
// it; a report that follows the printer leaves the printer as it is.
void give_printer_paper(QPrinter& printer, int paper_size, int orientation);

// The print dialog: false when the user cancels. A test puts its own answer
// in its place; the previous one is given back.
using PrintDialogRunner = std::function<bool(QPrinter& printer, QWidget* parent)>;
PrintDialogRunner set_print_dialog_runner(PrintDialogRunner runner);
bool Run_Print_Dialog(QPrinter& printer, QWidget* parent);

// Draws every page on the printer; false (engine error set) when it can't be printed on.
bool print_pages(const reportengine::PageModel& model, QPrinter& printer);

// Prints the requested report: Init_Report, the paper check for `printer`,
// the print dialog, the pages, then the report's alerts. True when printed.
bool GCR_Run_Printer(QPrinter& printer);
