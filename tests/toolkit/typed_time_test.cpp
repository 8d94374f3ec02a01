// The ways a secretary types a time of day, and what is no time at all.

#include "shell/locale_formats.h"
#include "toolkit/typed_time.h"

#include <gtest/gtest.h>

namespace {

struct TypedTime {
    const char* typed;
    int hour;
    int minute;
    int second = 0;
};

const TypedTime typed_times[] = {
    // Hours and minutes with a separator.
    {"21:30", 21, 30}, {"9:30", 9, 30}, {"09:30", 9, 30}, {"9.30", 9, 30}, {"0:00", 0, 0}, {"23:59", 23, 59},
    {"18:30:15", 18, 30, 15}, {"  7:45 ", 7, 45},
    // Figures alone: hours, or hours and minutes.
    {"2330", 23, 30}, {"930", 9, 30}, {"0930", 9, 30}, {"0000", 0, 0}, {"9", 9, 0}, {"21", 21, 0},
    // A twelve-hour clock.
    {"9:30pm", 21, 30}, {"9:30 pm", 21, 30}, {"9.30PM", 21, 30}, {"6:05 pm", 18, 5}, {"9pm", 21, 0}, {"9 am", 9, 0},
    {"930pm", 21, 30}, {"9:30 p.m.", 21, 30}, {"9:30a", 9, 30}, {"12am", 0, 0}, {"12:15 am", 0, 15}, {"12pm", 12, 0},
    {"12:45pm", 12, 45},
};

// Not times: refused, and the time given is left as it was.
const char* const not_times[] = {
    "25:00", "24:00", "1260", "2360", "12:60", "10:30:61", "abc", "teatime", "", "   ", "pm", "9:5", "12345",
    "13pm", "0am", "00:30 pm", "-9:30", "9:30:", "9 30", "9:30 xm"
};

TEST(TypedTime, EachWayOfTypingATimeGivesThatTimeWithTheMachinesSeparatorTooAndEverythingElseIsRefused)
{
    Glob_Time_Sep() = QStringLiteral(":");
    for (const TypedTime& row : typed_times) {
        QTime time;
        EXPECT_TRUE(Read_Time_Of_Day(QString::fromUtf8(row.typed), time)) << row.typed;
        EXPECT_EQ(time, QTime(row.hour, row.minute, row.second)) << row.typed;
    }
    for (const char* typed : not_times) {
        const QTime untouched(1, 2, 3);
        QTime time = untouched;
        EXPECT_FALSE(Read_Time_Of_Day(QString::fromUtf8(typed), time))
            << typed << " read as " << time.toString().toStdString();
        EXPECT_EQ(time, untouched) << typed;
    }
    // The machine's own time separator is read too, a letter never.
    Glob_Time_Sep() = QStringLiteral("h");
    QTime time;
    EXPECT_FALSE(Read_Time_Of_Day(QStringLiteral("9h30"), time));
    Glob_Time_Sep() = QStringLiteral("-");
    ASSERT_TRUE(Read_Time_Of_Day(QStringLiteral("9-30"), time));
    EXPECT_EQ(time, QTime(9, 30));
    Glob_Time_Sep() = QStringLiteral(":");
    EXPECT_FALSE(Read_Time_Of_Day(QStringLiteral("9-30"), time));
}

}  // namespace
