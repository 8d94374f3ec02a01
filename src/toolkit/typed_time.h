#pragma once
// Reading a time of day as people type it into a box: "21:30", "9:30",
// "9.30", "930", "2330", "9pm", "9:30 pm". Kept apart from any screen so that
// every field that takes a time reads it the same way.

#include <QString>
#include <QTime>

// The time a typed text stands for, to the minute (seconds are kept when
// typed). Accepted: hours and minutes joined by ':' or '.', or by the
// machine's time separator; three or four digits read as hours and minutes
// ("930" 09:30, "2330" 23:30); one or two digits as whole hours ("9" 09:00);
// any of these followed by am or pm (also "a", "p", "a.m.", "p.m."), where
// the hour runs from 1 to 12. False, and `time` untouched, for anything
// else: blank text, words, hours beyond 23 or minutes beyond 59 ("25:00",
// "1260"), a single figure of minutes ("9:5").
bool Read_Time_Of_Day(const QString& typed, QTime& time);
