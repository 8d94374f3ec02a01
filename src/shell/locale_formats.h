#pragma once
// The date and time pictures that every screen uses, worked out once at start
// from the machine's regional settings (engine::locale_source()). Months are
// always three letters, so that a date can't be misread between day-first and
// month-first countries. Dates put into SQL text don't use these: they always
// have the picture "mm/dd/yyyy".
//
// Each global keeps its default when the settings can't be read.

#include <QString>

short& Glob_Date_Order();            // 1: 0 month first, 1 day first, 2 year first
QString& Glob_Date_Sep();            // " "
QString& Glob_Time_Sep();            // ":"
QString& Glob_Date_Format();         // "dd mmm yyyy": the long date format
QString& Glob_Day_Month_Format();    // "dd-mmm"; empty when the short and long orders disagree
QString& Glob_Entry_Date_Format();   // "dd mmm yyyy": always the long date format
QString& Glob_Time_Format();         // "hh:nn"
QString& Glob_Time_AMPM_Format();    // "hh:nn ampm"
bool& Glob_Standard_Formats();       // false; true for separators " " and ":" with day-first order

// Gives every global its default, then reads the date separator, the short
// and long date orders and the time separator, and builds the pictures from
// them. A value that can't be read is reported (number 300000, module
// "globLib", the reason as the routine line of the log entry) and leaves every
// global at its default. Called once at start, after the settings are read.
void Setup_Formats();
