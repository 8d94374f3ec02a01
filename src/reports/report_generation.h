#pragma once
// Customised report files: the standard report files are laid out for
// day-first dates with blanks between the parts and a colon in times. A
// school on a machine with other settings, or with a page heading of its own,
// gets its own copy in "genrepfmts" in the program's folder: every file of the
// report format folder copied, the heading put in place, and the date and time
// settings of every field rewritten to the machine's. The program then uses
// the copy as its report format folder.
//
// The run lets pending events happen between files, so that a Cancel pressed
// meanwhile is seen at the next file; the file in hand is finished first.

#include "reportengine/report_definition.h"

#include <QString>
#include <QtGlobal>
#include <array>

// Where a run stands.
namespace generate_state {
inline constexpr quint8 Idle = 0;
inline constexpr quint8 Running = 1;
inline constexpr quint8 Cancelled = 2;  // the user asked the run to stop
}  // namespace generate_state
quint8& GCR_Generate_State();

// The subreports found in the report now handled: at most five, a limit
// that is deliberate and fixed. The name is the subreport's file.
struct GCR_Subreport {
    QString name;
    short area = 0;     // 1 to Areas.Count
    short section = 0;  // from 1 within the area
};
inline constexpr int GCR_Max_Subreports = 5;
std::array<GCR_Subreport, GCR_Max_Subreports>& GCR_Subreports();
short& GCR_Subreport_Count();

// The name of the folder a run makes, in the program's own folder.
inline QString generate_folder_name()
{
    return QStringLiteral("genrepfmts");
}

// The whole run. On success the new report format folder and its list file
// (which stays as it was copied); false when the user said No, the copy
// failed, a report failed or the run was cancelled (the new folder is then deleted).
bool GCR_Generate_Reports(QString& new_report_dir, QString& new_list_file);

// Asks before copying, then copies every file of the report format folder
// into the generate folder and the page heading over its PrtHead.rpt: the
// personalised heading given in `header_path`, or else the standard one,
// whose path comes back in `header_path`. False when the user said No or a
// step failed (reported).
bool Setup_Copy_Directories(QString& header_path, QString& source_dir, QString& generate_dir);

// Gives every field of the report the machine's date order and time
// separator, with blanks between the parts of dates, and keeps its
// subreports in GCR_Subreports. More than five subreports is a failure.
bool Set_Locale_in_Report(reportengine::ReportDefinition& report, const QString& name);

// Sets the locale of each subreport kept by Set_Locale_in_Report and saves
// it back, beside the report. Stops at the first failure.
bool Handle_Subreports(reportengine::ReportDefinition& report, const QString& name);
