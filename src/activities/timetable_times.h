#pragma once
// The clock arithmetic of an exam day. Times are texts in the program's time
// format ("hh:nn" as a rule); a duration, an extra or a break is a whole
// number of minutes. A time is moved on by reading it, adding the minutes and
// writing it in the time format again, so that a day running past midnight
// simply goes round the clock.

#include <QString>

namespace timetable {

// True when the text reads as a date or a time.
bool holds_time(const QString& text);
// The time written in the time format; text that is no time comes back as it is.
QString time_text(const QString& text);
// The time `minutes` later (earlier when negative), in the time format.
QString add_minutes(const QString& time, int minutes);
// Minutes from one time of the day to another.
int minutes_between(const QString& from, const QString& to);
// The whole number a cell holds: blank or not a number counts as 0.
int whole_minutes(const QString& text);
// True for text that is blank after trimming.
bool is_blank(const QString& text);

}  // namespace timetable
