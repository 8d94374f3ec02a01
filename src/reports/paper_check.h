#pragma once
// Whether the printer holds the paper a report asks for, asked before a
// report is printed and when the viewer's print button is pressed.

#include "reportengine/report_definition.h"

#include <QString>

// What the program knows of a printer: its name (empty when none is chosen)
// and its paper and orientation in the platform's numbers.
struct PrinterState {
    QString name;
    int paper_size = reportengine::paper::A4;
    int orientation = reportengine::orientation::Portrait;
};

// `printer` is the one the report prints on: the one it names, or the
// default printer when it names none; without any printer the check fails.
// A report that follows the printer, or asks for what it holds, passes. An A4
// portrait report that may be fitted (its fit setting 7) meets an A5
// landscape printer with the offer to fit it, which changes the report on Yes
// and passes either way. Otherwise the user is asked whether to go on; No
// gives false.
bool GCR_Check_Paper(reportengine::ReportDefinition& report, const PrinterState& printer);
