// Results entry on its own: what a typed cell must hold, the teacher's name
// shown, and Update storing the changed rows and marking the ones it could not.

#include "activities/results_entry.h"

#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2026, 3, 14);

class Results : public ::testing::Test {
protected:
    void SetUp() override
    {
        results.Initialise();
        school.title_date(exam_day, QStringLiteral("Spring Exams"));
        school.title_date(QDate(2026, 7, 4), QStringLiteral("Summer Show"));  // not an exam date
        teacher = school.add_teacher(QStringLiteral("Miss Ada"));
        const int grade1 = school.add_activity(NewActivity(QStringLiteral("Grade 1")).taught_by(teacher));
        const int family = school.add_family(QStringLiteral("Ashdown"));
        for (const char* name : {"Amy", "Bea"})
            ids << school.insert(QStringLiteral("Exam_Results"),
                                 {{"Results_Pupil_id", school.add_pupil(family, QString::fromLatin1(name))},
                                  {"Results_Exam_id", grade1}, {"Results_Teacher_id", teacher}, {"Results_Date", exam_day},
                                  {"Results_Time_txt", QStringLiteral("10:00")}, {"Results_Order", ids.size() + 1}});
        ASSERT_TRUE(results.Setup_Controls());
        ASSERT_TRUE(results.dates()->MoveFirst());
        ASSERT_TRUE(results.Get_Register(true));
    }
    void TearDown() override { results.Close(); }

    QString cell(short row, short column) const { return grid.row_texts(row)[column - 1]; }
    colours::Rgb key(short row) const { return grid.record().rows[row - 1].colours[result::Result_id - 1]; }

    testing_support::SchoolMadeCurrent school;
    TextBoxGrid grid{9, 99};
    ResultsEntry results{grid};
    QList<int> ids;
    int teacher = 0;
};

TEST_F(Results, ATypedCellIsKeptOnlyWhenItHoldsWhatItsColumnTakes)
{
    struct Case {
        short column;
        const char* typed;
        const char* refusal;  // empty: kept
    };
    const Case cases[] = {
        {result::Date, "", "Please enter a date"},
        {result::Date, "31 Feb 2026", "The entered date is invalid"},
        {result::Date, "4 Jul 2026", "The entered date is NOT on the activities list"},
        {result::Date, "14/3/2026", ""},
        {result::Time, " ", "Please select a time"},
        {result::Time, "soon", "The time is invalid"},
        {result::Time, "10:20", ""},
        {result::Mark, "101", "The mark must be a whole number,  less than 100"},
        {result::Mark, "-1", "The mark must be a whole number,  less than 100"},
        {result::Mark, "good", "The mark must be a whole number,  less than 100"},
        {result::Mark, "", "The mark must be a whole number,  less than 100"},
        {result::Mark, "100", ""},
        {result::Order, "anything", ""},
        {result::Grade, "Distinction", ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.typed) + " in column " + std::to_string(c.column));
        EXPECT_EQ(Cell_Refusal(c.column, QString::fromLatin1(c.typed), *results.dates()), QString::fromLatin1(c.refusal));
    }
}

TEST_F(Results, TheGridShowsTheDayWithTheTeachersName)
{
    EXPECT_EQ(grid.record().last_row, 2);
    EXPECT_EQ(grid.row_texts(1).mid(0, 8),
              (QStringList{QStringLiteral("Amy Ashdown "), QStringLiteral("Grade 1"), QStringLiteral("14 Mar 2026"),
                           QStringLiteral("10:00"), QStringLiteral("1"), QString(), QString(), QStringLiteral("Miss Ada")}));
    EXPECT_EQ(results.Find_Teacher_Name(teacher + 99), QStringLiteral("uuuu"));
    EXPECT_EQ(results.Find_Teacher_Name(QVariant()), QString());
}

TEST_F(Results, ARefusedCellGetsItsOldTextBackAndAKeptOneMarksItsRow)
{
    ScriptedBoxes().expect(QStringLiteral("The mark must be a whole number,  less than 100")).during([&] {
        EXPECT_FALSE(results.Element_Left(5, QStringLiteral("101")));
    });
    EXPECT_EQ(cell(1, result::Mark), QString());
    EXPECT_EQ(key(1), txg::Default_Cell);

    EXPECT_TRUE(results.Element_Left(5, QStringLiteral("88")));
    EXPECT_TRUE(results.Element_Left(6, QStringLiteral("Distinction")));
    EXPECT_EQ(key(1), result::Changed);
    EXPECT_EQ(grid.record().rows[0].colours[result::Mark - 1], result::Changed);
    EXPECT_TRUE(results.has_changes());

    results.cmd_Update(true);
    EXPECT_EQ(results.status, QStringLiteral("Update successful"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Results_Mark || ' ' || Results_Grade FROM Exam_Results WHERE Results_id = %1")
                                .arg(ids[0])),
              QStringLiteral("88 Distinction"));
    EXPECT_EQ(cell(1, result::Mark), QStringLiteral("88"));  // read again, and no longer marked
    EXPECT_FALSE(results.has_changes());
}

TEST_F(Results, ARowThatCannotBeStoredIsMarkedAndTheOthersAreStillStored)
{
    results.Element_Left(9 + 4, QStringLiteral("first"));  // Bea's order: taken, but no number
    results.Element_Left(5, QStringLiteral("70"));         // Amy's mark
    ScriptedBoxes().expect(QStringLiteral("Could not update Exam Results table")).during([&] { results.cmd_Update(true); });
    EXPECT_EQ(results.status, QStringLiteral("Highlighted rows NOT updated"));
    EXPECT_EQ(key(2), result::Failed);
    EXPECT_EQ(grid.record().highlight_row, 2);
    EXPECT_EQ(key(1), result::Changed);  // stored, but still coloured until the next load
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Results_Mark FROM Exam_Results WHERE Results_id = %1").arg(ids[0])).toInt(), 70);
}

}  // namespace
