#pragma once
// The one failure reporter and trace facility, and the log it writes.
//
// Every entry goes to the log file named by Current_Log_File() (when there is
// one); every report but a trace (report::Trace) is also shown in a message
// box with the caller's style and the application title, its answer left in
// engine::Glob_Msg_Result(). Reporting clears engine::Err(): the caller's trap
// has dealt with the failure.

#include "shell/report_numbers.h"

#include <QString>

// `module` is the source's short tag ("globals", "fpupils", ...), written as
// exactly 10 characters. `routine`, when given, goes on a second line.
void Report_Error(int number, const QString& message, int style, const QString& module,
                  const QString& routine = QString());

// Appends one entry, "<yyyy-MM-dd hh:mm:ss> -- <text>", to the log file.
// Failures to write are passed over: there is no one to tell.
void Write_Log(const QString& text);
