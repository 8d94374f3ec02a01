#include "billing/auto_invoicing.h"
#include "billing/tmp_tables.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "invoicing_school.h"
#include "shell/selection_lists.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace {

using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::NewActivity;
using testing_support::Row;
using testing_support::ScriptedBoxes;

const QDate exam_day(2026, 3, 14);
const QDate show_day(2026, 6, 20);

// Amy and Cara take the Grade 1 exam on exam day, Ben the Grade 2 exam; Amy
// and Ben are in the summer show.
class ActivityInvoicingTest : public ::testing::Test {
protected:
    ActivityInvoicingTest()
    {
        grade_1 = school.add_activity(NewActivity(QStringLiteral("Grade 1 Exam")).priced(25).with_expenses(5));
        grade_2 = school.add_activity(NewActivity(QStringLiteral("Grade 2 Exam")).priced(30).at_level(2));
        show = school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show).priced(12));
        school.title_date(exam_day, QStringLiteral("Spring Exams"));
        school.title_date(show_day, QStringLiteral("Summer Show Night"));
        school.enter(school.amy, grade_1, exam_day);
        school.enter(school.cara, grade_1, exam_day);
        school.enter(school.ben, grade_2, exam_day);
        school.enter(school.amy, show, show_day);
        school.enter(school.ben, show, show_day);
        school.set_standard(QStringLiteral("Show_Cost_per_Pupil"), 4);
    }
    QStringList picked()
    {
        QStringList texts;
        for (const Row& row : school.rows(QStringLiteral(
                 "SELECT Tmp_Activity_id, Tmp_Date FROM Tmp_Activities ORDER BY Tmp_Activity_id, Tmp_Date")))
            texts << row["Tmp_Activity_id"].toString() + QLatin1Char('@')
                         + row["Tmp_Date"].toDateTime().date().toString(Qt::ISODate);
        return texts;
    }

    testing_support::InvoicingSchool school;
    AutoInvoicing screen;
    int grade_1 = 0, grade_2 = 0, show = 0;
};

TEST_F(ActivityInvoicingTest, ActivitiesAndDatesChooseTheEntriesInOneOfFourWays)
{
    QString label;
    ASSERT_TRUE(Setup_exams(label));  // nothing chosen: every activity, no date
    EXPECT_EQ(picked(), QStringList({QStringLiteral("%1@").arg(grade_1), QStringLiteral("%1@").arg(grade_2),
                                     QStringLiteral("%1@").arg(show)}));
    EXPECT_EQ(label, QString());

    Sel_Activities().append(grade_2);
    ASSERT_TRUE(Setup_exams(label));  // activities alone: no date
    EXPECT_EQ(picked(), QStringList{QStringLiteral("%1@").arg(grade_2)});

    Sel_Activity_Dates().append(exam_day);
    Sel_Activity_Dates().append(show_day);
    ASSERT_TRUE(Setup_exams(label));  // both: the entries of those activities on those dates
    EXPECT_EQ(picked(), QStringList{QStringLiteral("%1@2026-03-14").arg(grade_2)});
    EXPECT_EQ(label, QStringLiteral("- Spring Exams"));

    Sel_Activities().reset();
    ASSERT_TRUE(Setup_exams(label));  // dates alone: every activity held on them
    EXPECT_EQ(picked(), QStringList({QStringLiteral("%1@2026-03-14").arg(grade_1), QStringLiteral("%1@2026-03-14").arg(grade_2),
                                     QStringLiteral("%1@2026-06-20").arg(show)}));
}

TEST_F(ActivityInvoicingTest, AnExamDateIsInvoicedPerFamilyWithPricesAndExpenses)
{
    Sel_Activity_Dates().append(exam_day);
    screen.prepare();
    EXPECT_EQ(screen.activity_date, QStringLiteral("- Spring Exams"));
    EXPECT_EQ(screen.amounts[AutoInvoicing::Activity_Dates], QStringLiteral("One"));
    EXPECT_TRUE(screen.insert_activities());
    EXPECT_EQ(screen.status, QStringLiteral("Activity invoices raised. Script successfully applied"));
    EXPECT_EQ(school.invoices(), QStringList({QStringLiteral("Ashby|Invoice for Spring Exams|0"),
                                              QStringLiteral("Brook|Invoice for Spring Exams|0")}));
    // Each entry priced, with its expenses: what each line holds is the queries' own business.
    EXPECT_EQ(school.lines().size(), 5);
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices")), 2);
}

TEST_F(ActivityInvoicingTest, ASecondRunAsksFirstAndFailsWithoutAChange)
{
    Sel_Activity_Dates().append(exam_day);
    screen.prepare();
    ASSERT_TRUE(screen.insert_activities());
    screen.prepare();
    const QString before = school.dump();

    // Counted per invoice and chosen activity of the date: two invoices, two activities.
    ScriptedBoxes boxes;
    const QString question = QStringLiteral("There are already 4 invoices for these dates. They MAY be for the same activities.\n"
                                            "Do you wish to continue?");
    boxes.expect(question, No, 36);
    EXPECT_FALSE(screen.insert_activities());
    boxes.expect(question, Yes);
    boxes.expect(QStringLiteral("The data cannot be inserted because there are already records there."), Ok);
    EXPECT_FALSE(screen.insert_activities());
    EXPECT_EQ(screen.status, QStringLiteral("Script file abandoned and all changes undone"));
    EXPECT_EQ(school.dump(), before);
}

TEST_F(ActivityInvoicingTest, WithoutADateTheRunIsRefused)
{
    Sel_Activities().append(grade_1);
    screen.prepare();
    ScriptedBoxes()
        .expect(QStringLiteral("There must be one specified activity date. \nPlease choose one by pressing 'Criteria'."), Ok)
        .during([&] { EXPECT_FALSE(screen.insert_activities()); });
}

TEST_F(ActivityInvoicingTest, SelectedDeletionOfActivityInvoicesFollowsTheChosenActivities)
{
    Sel_Activity_Dates().append(exam_day);
    screen.prepare();
    ASSERT_TRUE(screen.insert_activities());
    Sel_Activities().append(grade_2);
    screen.prepare();
    ScriptedBoxes()
        .expect(QStringLiteral("Do you want to delete invoices for the given activity dates and families?"), Yes)
        .during([&] { screen.delete_selected_activities(); });
    EXPECT_EQ(screen.status, QStringLiteral("Deletion of (1) selected invoices successful"));
    EXPECT_EQ(school.invoices(), QStringList{QStringLiteral("Brook|Invoice for Spring Exams|0")});
}

TEST_F(ActivityInvoicingTest, TheScriptOfTheUsersChoosing)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Please choose a script file"), Ok);
    EXPECT_FALSE(screen.run_script());
    screen.filename = school.write_file(QStringLiteral("mine.sql"), QStringLiteral("display Mine ran.\n"));
    EXPECT_TRUE(screen.run_script());
    EXPECT_EQ(screen.status, QStringLiteral("Mine ran. Script successfully applied"));
}

TEST_F(ActivityInvoicingTest, TheTemporaryTablesAreEmptiedWhenTheScreenGoes)
{
    Sel_Activity_Dates().append(exam_day);
    screen.prepare();
    EXPECT_GT(school.count(QStringLiteral("Tmp_Activities")), 0);
    EXPECT_GT(school.count(QStringLiteral("Tmp_Pupils")), 0);
    EXPECT_TRUE(screen.unload());
    for (const char* table : {"Tmp_Terms", "Tmp_Courses", "Tmp_Pupils", "Tmp_Activities", "Tmp_Invoices", "Tmp_CourseCosts"})
        EXPECT_EQ(school.count(QString::fromLatin1(table)), 0) << table;
}

}  // namespace
