#include "database/code_values.h"
#include "engine/err.h"
#include "support/school_fixture.h"

#include <map>

#include <gtest/gtest.h>

namespace {

using testing_support::NewCourse;
using testing_support::SchoolFixture;
using testing_support::money_text;
using namespace code::weekday;

// The autumn term has 12 Mondays and 7 Tuesdays of lessons.
class CourseCosts : public ::testing::Test {
protected:
    CourseCosts()
    {
        school.set_lessons(autumn, Monday, 12);
        school.set_lessons(autumn, Tuesday, 7);
    }

    // The cost of each course for the autumn term, by course.
    std::map<int, QString> autumn_costs()
    {
        std::map<int, QString> costs;
        for (const auto& row : school.rows(QStringLiteral("SELECT * FROM Tmp_CourseCosts WHERE Tmp_Term_id = %1").arg(autumn)))
            costs[row["Tmp_Course_id"].toInt()] = money_text(row["Tmp_Cost"]);
        return costs;
    }

    void run(const char* query) { ASSERT_TRUE(school.run(query)) << query << ": " << engine::Err().Description.toStdString(); }

    SchoolFixture school;
    int autumn = school.add_term("Autumn 2026", QDate(2026, 9, 7), QDate(2026, 12, 18));
};

TEST_F(CourseCosts, ALessonPriceIsChargedForEveryLessonOfTheWeekdayOnceATerm)
{
    const int ballet = school.add_course(NewCourse("Ballet").on(Monday).priced(10));
    const int tap = school.add_course(NewCourse("Tap").on(Tuesday).priced(8.5));
    run("Qry_Setup_Course_Costs");
    EXPECT_EQ(autumn_costs(), (std::map<int, QString>{{ballet, "120"}, {tap, "59.5"}}));
    // A course is costed once a term.
    EXPECT_FALSE(school.run("Qry_Setup_Course_Costs"));
    EXPECT_EQ(engine::Err().Number, engine::jet::DuplicateKey);
}

TEST_F(CourseCosts, WithoutAPriceTheDefaultHourlyRatePaysForTheMinutesTaught)
{
    school.set_standard("Deflt_Course_Hourly_Rate", 20);
    const int ballet = school.add_course(NewCourse("Ballet").on(Monday).lasting(45));
    const int tap = school.add_course(NewCourse("Tap").on(Tuesday).lasting(45).priced(0));
    const int priced = school.add_course(NewCourse("Jazz").on(Monday).priced(10));
    run("Qry_Setup_Default_Course_Costs");
    // (20 * 45 * 12) / 60 and (20 * 45 * 7) / 60, never divided as whole numbers.
    EXPECT_EQ(autumn_costs(), (std::map<int, QString>{{ballet, "180"}, {tap, "105"}}));
    run("Qry_Setup_Course_Costs");
    EXPECT_EQ(autumn_costs()[priced], "120");

    // The rate keeps fractions of money: (15 * 45 * 7) / 60.
    school.exec("DELETE FROM Tmp_CourseCosts");
    school.set_standard("Deflt_Course_Hourly_Rate", 15);
    run("Qry_Setup_Default_Course_Costs");
    EXPECT_EQ(autumn_costs()[tap], "78.75");
}

TEST_F(CourseCosts, ANumericTypeIsAFlatFeeForTheTermAndOtherTypesChangeNothing)
{
    const int ballet = school.add_course(NewCourse("Ballet").on(Monday).priced(10).of_type("150"));
    const int tap = school.add_course(NewCourse("Tap").on(Monday).priced(10).of_type("Grade 3"));
    run("Qry_Setup_Course_Costs");
    run("Qry_Setup_Alternate_Course_Costs");
    EXPECT_EQ(autumn_costs(), (std::map<int, QString>{{ballet, "150"}, {tap, "120"}}));
}

TEST_F(CourseCosts, AFlatFeeCourseWithoutPriceOrRateStartsAtZeroForEveryTerm)
{
    const int spring = school.add_term("Spring 2027", QDate(2027, 1, 4), QDate(2027, 3, 26));
    const int ballet = school.add_course(NewCourse("Ballet").on(Monday).of_type("150"));
    school.add_course(NewCourse("Tap").on(Monday));  // no type: no cost at all
    run("Qry_Setup_Default_Zero_Course_Costs");
    EXPECT_EQ(autumn_costs(), (std::map<int, QString>{{ballet, "0"}}));
    run("Qry_Setup_Alternate_Course_Costs");
    EXPECT_EQ(autumn_costs(), (std::map<int, QString>{{ballet, "150"}}));
    EXPECT_EQ(school.rows(QStringLiteral("SELECT * FROM Tmp_CourseCosts WHERE Tmp_Term_id = %1").arg(spring)).size(), 1u);
}

TEST_F(CourseCosts, SuppressedAndCancelledCoursesCostNothing)
{
    school.add_course(NewCourse("Ballet").on(Monday).priced(10).of_type("150").suppressed_from_invoicing());
    school.add_course(NewCourse("Tap").on(Monday).of_type("150").no_longer_running());
    school.set_standard("Deflt_Course_Hourly_Rate", 20);
    run("Qry_Setup_Course_Costs");
    run("Qry_Setup_Default_Course_Costs");
    school.set_standard("Deflt_Course_Hourly_Rate", 0);
    run("Qry_Setup_Default_Zero_Course_Costs");
    run("Qry_Setup_Alternate_Course_Costs");
    EXPECT_TRUE(autumn_costs().empty());
}

TEST_F(CourseCosts, ThePrintedCostsShowEveryRunningCourseWithItsLessons)
{
    const int ballet = school.add_course(NewCourse("Ballet").on(Monday).priced(10));
    const int jazz = school.add_course(NewCourse("Jazz").on(Monday));
    school.add_course(NewCourse("Tap").on(Monday).priced(10).no_longer_running());
    run("Qry_Setup_Course_Costs");
    std::map<int, QVariant> printed;
    for (const auto& row : school.rows("Qry_Print_Course_Costs")) {
        EXPECT_EQ(row["Num_Lessons"].toInt(), 12);
        printed[row["Course_id"].toInt()] = row["Tmp_Cost"];
    }
    ASSERT_EQ(printed.size(), 2u);
    EXPECT_EQ(money_text(printed[ballet]), "120");
    EXPECT_TRUE(printed[jazz].isNull());
}

}  // namespace
