// A course's typed values: what is refused with which words and field, how a
// blank price or start time is completed, and the clock times kept for reports.

#include "courses/course_entry.h"

#include "engine/err.h"
#include "shell/locale_formats.h"

#include <gtest/gtest.h>

namespace {

struct EntryCase {
    const char* price;
    const char* duration;
    const char* start_time;
    int day_index;
    CourseField field;           // None: accepted
    const char* message;         // the refusal's words; empty when accepted
    const char* start_after;     // the start time as the screen shows it afterwards
};

const char* const no_time = "The start time must be a time of day, such as 9:30 or 21:30";

const EntryCase entry_cases[] = {
    {"12.50", "45", "18:30", 2, CourseField::None, "", "18:30"},
    // A typed start time comes out in the machine's form (the ways of typing
    // one are typed_time_test's).
    {"12.50", "45", "2330", 2, CourseField::None, "", "23:30"},
    {"12.50", "45", "9:30pm", 2, CourseField::None, "", "21:30"},
    {"12.50", "45", "", 2, CourseField::None, "", "00:00"},
    // What is no time is refused with the screen's words, before the day.
    {"12.50", "45", "25:00", 2, CourseField::Start_Time, no_time, "25:00"},
    {"12.50", "45", "abc", 0, CourseField::Start_Time, no_time, "abc"},
    // The other rules, in the order the secretary meets them.
    {"ten", "45", "abc", 0, CourseField::Price, "The price must be a decimal number", "abc"},
    {"", "", "", 2, CourseField::Duration, "The duration must be a number", ""},
    {"1", "40000", "9", 2, CourseField::Duration, "The duration must be an integer", "9"},
    {"1", "-5", "9", 2, CourseField::Duration, "The duration must be positive!", "9"},
    {"1", "1441", "9", 2, CourseField::Duration, "The duration must be less than a day!", "9"},
    {"1", "1440", "9", 2, CourseField::None, "", "09:00"},
    {"1", "60.4", "9", 0, CourseField::Day, "There must be a day", "09:00"},
    {"1", "60", "9", -1, CourseField::Day, "There must be a day", "09:00"},
};

TEST(CourseEntry, EachRuleRefusesWithItsWordsAndFieldAndATypedTimeIsWrittenAsATime)
{
    Glob_Time_Format() = QStringLiteral("hh:nn");
    Glob_Time_Sep() = QStringLiteral(":");
    for (const EntryCase& row : entry_cases) {
        CourseEntry entry{QString::fromUtf8(row.price), QString::fromUtf8(row.duration),
                          QString::fromUtf8(row.start_time), row.day_index};
        const CourseRefusal refusal = Check_Course_Entry(entry);
        const std::string label = std::string(row.price) + " / " + row.duration + " / " + row.start_time;
        EXPECT_EQ(refusal.field, row.field) << label;
        EXPECT_EQ(refusal.message, QString::fromUtf8(row.message)) << label;
        EXPECT_EQ(entry.start_time, QString::fromUtf8(row.start_after)) << label;
        engine::Err().Clear();
    }
}

TEST(CourseEntry, ABlankPriceBecomesNought)
{
    CourseEntry entry{QString(), QStringLiteral("45"), QStringLiteral("10:00"), 3};
    EXPECT_EQ(Check_Course_Entry(entry).field, CourseField::None);
    EXPECT_EQ(entry.price, QStringLiteral("0"));
}

struct ClockCase {
    const char* start;
    const char* duration;
    const char* start_text;  // empty: refused
    const char* end_text;
};

const ClockCase clock_cases[] = {
    {"18:05", "60", "18:05", "19:05"},
    {"23:30", "60", "23:30", "00:30"},  // past midnight: the next day's clock time
    {"930", "45", "09:30", "10:15"},
    {"9pm", "1440", "21:00", "21:00"},
    {"0:00", "0", "00:00", "00:00"},
    {"25:00", "60", "", ""},
    {"teatime", "60", "", ""},
    {"10:00", "forty", "", ""},
};

TEST(CourseEntry, TheLessonsClockTimesAreTheStartAndTheStartPlusTheDuration)
{
    Glob_Time_Format() = QStringLiteral("hh:nn");
    for (const ClockCase& row : clock_cases) {
        QString start_text = QStringLiteral("unset");
        QString end_text = QStringLiteral("unset");
        const bool ok = Course_Clock_Times(QString::fromUtf8(row.start), QString::fromUtf8(row.duration), start_text,
                                           end_text);
        const std::string label = std::string(row.start) + " + " + row.duration;
        if (QString::fromUtf8(row.start_text).isEmpty()) {
            EXPECT_FALSE(ok) << label;
            EXPECT_NE(engine::Err().Number, 0) << label << ": the failure leaves its cause for the report";
        } else {
            EXPECT_TRUE(ok) << label;
            EXPECT_EQ(start_text, QString::fromUtf8(row.start_text)) << label;
            EXPECT_EQ(end_text, QString::fromUtf8(row.end_text)) << label;
        }
        engine::Err().Clear();
    }
}

TEST(CourseEntry, AStartTimeIsShownInTheMachinesFormOrLeftAsTypedWhenItIsNoTime)
{
    Glob_Time_Format() = QStringLiteral("hh:nn");
    EXPECT_EQ(Course_Time_Shown(QStringLiteral("18:30:00")), QStringLiteral("18:30"));
    EXPECT_EQ(Course_Time_Shown(QStringLiteral("6:05 pm")), QStringLiteral("18:05"));
    EXPECT_EQ(Course_Time_Shown(QStringLiteral("25:00")), QStringLiteral("25:00"));
    EXPECT_EQ(Course_Time_Shown(QString()), QString());
    EXPECT_EQ(engine::Err().Number, 0);
}

}  // namespace
