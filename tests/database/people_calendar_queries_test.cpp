#include "database/code_values.h"
#include "support/school_fixture.h"

#include <QSet>

#include <gtest/gtest.h>

namespace {

using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::Rows;
using testing_support::SchoolFixture;
using namespace code::weekday;

TEST(CalendarQueries, HolidaysArePairedWithTheCoursesOnTheirWeekday)
{
    SchoolFixture school;
    const int spring = school.add_term("Spring 2026", QDate(2026, 1, 5), QDate(2026, 3, 27));
    const int sunday_class = school.add_course(NewCourse("Sunday Stretch").on(Sunday));
    const int ballet = school.add_course(NewCourse("Ballet").on(Monday));
    school.add_course(NewCourse("Tap").on(Tuesday));
    school.add_holiday(QDate(2026, 2, 15));  // a Sunday
    school.add_holiday(QDate(2026, 2, 16));  // a Monday
    school.add_holiday(QDate(2026, 4, 6));   // a Monday after the term

    QSet<QString> pairs;
    for (const auto& row : school.rows("Qry_Select_Holidays_per_Course")) {
        EXPECT_EQ(row["Term_id"].toInt(), spring);
        pairs.insert(QStringLiteral("%1 %2").arg(row["Course_id"].toInt()).arg(row["Day_Off"].toDate().toString(Qt::ISODate)));
    }
    EXPECT_EQ(pairs, QSet<QString>({QStringLiteral("%1 2026-02-15").arg(sunday_class),
                                    QStringLiteral("%1 2026-02-16").arg(ballet)}));
}

TEST(PeopleQueries, HiddenPupilsAreLeftOutOfTheWorkingList)
{
    SchoolFixture school;
    const int smiths = school.add_family("Smith");
    school.add_pupil(smiths, "Anna", code::gender::Female);
    school.add_pupil(smiths, "Ben", code::gender::Male);
    school.add_pupil(smiths, "Carl", code::gender::Hidden_Male);
    school.add_pupil(smiths, "Dora", code::gender::Hidden_Female);

    QStringList shown;
    for (const auto& row : school.rows("Qry_Select_Pupils_Not_Hidden"))
        shown << row["DisplayName"].toString();
    EXPECT_EQ(shown, QStringList({"Anna Smith ", "Ben Smith "}));
    EXPECT_EQ(school.rows("Qry_Select_Pupils").size(), 4u);
}

TEST(ActivityQueries, AnEntryTakesItsTeacherFromTheCatalogue)
{
    SchoolFixture school;
    ASSERT_TRUE(school.db().execute_native("INSERT INTO Teachers (Teacher_Name, Teacher_SurName) VALUES ('Jane', 'Doe')"));
    const int grade1 = school.add_activity(NewActivity("Grade 1 Ballet"));
    ASSERT_TRUE(school.db().execute_native("UPDATE Exams SET Exam_Teacher = 1"));
    const int anna = school.add_pupil(school.add_family("Smith"), "Anna");
    ASSERT_TRUE(school.run("Qry_Insert_Pupil_doing_Activity",
                           {{"p_Pupil_id", anna}, {"p_Exam_id", grade1}, {"p_Exam_Date", QDate(2026, 3, 14)}}));
    const Rows entries = school.rows("SELECT * FROM Exam_Results");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0]["Results_Teacher_id"].toInt(), 1);
    EXPECT_EQ(entries[0]["Results_Date"].toDate(), QDate(2026, 3, 14));
}

TEST(ActivityQueries, ATimetabledEntryHasItsEndWorkedOutAndAnUntimedOneNothing)
{
    SchoolFixture school;
    const int grade1 = school.add_activity(NewActivity("Grade 1 Ballet"));  // 15 minutes an entrant
    const int smiths = school.add_family("Smith");
    school.enter(school.add_pupil(smiths, "Anna"), grade1, QDate(2026, 3, 14));
    school.enter(school.add_pupil(smiths, "Ben"), grade1, QDate(2026, 3, 14));
    ASSERT_TRUE(school.db().execute_native("UPDATE Exam_Results SET Results_Time_txt = '10:30' WHERE Results_id = 1"));

    const Rows formats = school.rows("SELECT * FROM Qry_Exam_Results_Formats ORDER BY Results_id");
    ASSERT_EQ(formats.size(), 2u);
    EXPECT_EQ(formats[0]["Results_end_txt"].toString(), "10:45");
    // Exact fractions of a day, so that timetable arithmetic on them cannot
    // drift by a minute at a boundary.
    EXPECT_EQ(formats[0]["Results_start_dbl"].toDouble(), 10.5 / 24);
    EXPECT_EQ(formats[0]["Results_end_dbl"].toDouble(), 10.75 / 24);
    EXPECT_EQ(formats[0]["Five_Min_Break_dbl"].toDouble(), 5.0 / 1440);
    EXPECT_TRUE(formats[1]["Results_start_date"].isNull());
    EXPECT_TRUE(formats[1]["Results_end_txt"].isNull());
}

TEST(ActivityQueries, TheTimetableListsKeepTheirTestsAgainstNull)
{
    SchoolFixture school;
    const int grade1 = school.add_activity(NewActivity("Grade 1 Ballet"));
    const int smiths = school.add_family("Smith");
    for (const char* name : {"Anna", "Ben", "Cara"})
        school.enter(school.add_pupil(smiths, name), grade1, QDate(2026, 3, 14));
    ASSERT_TRUE(school.db().execute_native("UPDATE Exam_Results SET Results_Mark = 0, Results_Grade = ''"));
    ASSERT_TRUE(school.db().execute_native("UPDATE Exam_Results SET Results_Time_txt = '' WHERE Results_id = 2"));
    ASSERT_TRUE(school.db().execute_native("UPDATE Exam_Results SET Results_Time_txt = '10:30' WHERE Results_id = 3"));

    // Only the empty time counts as "without", only a real time as timetabled: a null one is in neither list.
    const Rows without = school.rows("Qry_Exam_Timetable_Pupils_Without_Times", {{"par_date", QDate(2026, 3, 14)}});
    ASSERT_EQ(without.size(), 1u);
    EXPECT_EQ(without[0]["Results_id"].toInt(), 2);
    const Rows timed = school.rows("Qry_Exam_Timetable_Pupils_Times", {{"par_date", QDate(2026, 3, 14)}});
    ASSERT_EQ(timed.size(), 1u);
    EXPECT_EQ(timed[0]["Results_id"].toInt(), 3);
}

}  // namespace
