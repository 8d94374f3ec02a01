#pragma once
// The rules a course's typed values must meet before the course is stored,
// and the values worked out from them, kept apart from the screen so that
// they read as the school's rules.

#include <QString>
#include <QStringList>

// What the secretary typed, as the screen holds it; the checks may complete
// it (a blank price becomes "0", a blank start time "00:00") and write the
// start time the way the machine shows times ("2330" becomes "23:30").
struct CourseEntry {
    QString price;
    QString duration;
    QString start_time;
    int day_index = -1;  // the day list's row: 0 blank, 1 Sunday .. 7 Saturday, -1 none
};

// The field a refusal sends the secretary back to.
enum class CourseField { None, Price, Duration, Start_Time, Day };

struct CourseRefusal {
    CourseField field = CourseField::None;
    QString message;  // the words of the refusal; empty when all is well
};

// The price, duration, start time and day rules, in the order the secretary
// meets them; the first broken rule is the answer. A start time is read as
// people type one (see toolkit/typed_time.h).
CourseRefusal Check_Course_Entry(CourseEntry& entry);

// The start and end of the lesson as the course keeps them for reports, in
// the time format of the machine. A lesson that runs past midnight ends at
// the next day's clock time. False (error 13 set) when the start can't be
// read as a time of day or the duration as minutes.
bool Course_Clock_Times(const QString& start_time, const QString& duration, QString& start_text,
                        QString& end_text);

// The start time as the screen shows it; text that isn't a time stays as typed.
QString Course_Time_Shown(const QString& start_time);

// The full names of the week's days in the machine's language, Sunday first,
// so that position + 1 is the weekday number.
QStringList Course_Day_Names();

// The stored query that orders the course list, as the user's settings choose it.
QString Course_Order_Query();
