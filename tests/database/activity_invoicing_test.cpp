#include "database/code_values.h"
#include "engine/err.h"
#include "support/school_fixture.h"

#include <gtest/gtest.h>

namespace {

using testing_support::NewActivity;
using testing_support::Rows;
using testing_support::SchoolFixture;
using testing_support::money_text;

// The Smiths' Anna and Ben and the Joneses' Cara take part in the spring
// exams and the summer show.
class ActivityInvoicing : public ::testing::Test {
protected:
    ActivityInvoicing()
    {
        school.title_date(exam_day, "Spring Exams");
        school.title_date(show_day, "Summer Show");
        school.set_standard("Deflt_Exam_Hourly_Rate", 30);
        school.set_standard("Show_Cost_per_Pupil", 5);
    }

    void pick_everyone()
    {
        for (int pupil : {anna, ben, cara})
            school.pick_pupil(pupil);
    }

    void run(const char* query) { ASSERT_TRUE(school.run(query)) << query << ": " << engine::Err().Description.toStdString(); }

    Rows lines_of(int family)
    {
        return school.rows(QStringLiteral("SELECT L.* FROM Invoice_Lines L, Invoices I WHERE L.Inv_Line_Inv_id = I.Invoice_id "
                                          "AND I.Invoice_Family_Id = %1 ORDER BY L.Inv_Line_Type, L.Description").arg(family));
    }

    SchoolFixture school;
    QDate exam_day{2026, 3, 14};
    QDate show_day{2026, 7, 4};
    int smiths = school.add_family("Smith");
    int joneses = school.add_family("Jones");
    int anna = school.add_pupil(smiths, "Anna");
    int ben = school.add_pupil(smiths, "Ben", code::gender::Male);
    int cara = school.add_pupil(joneses, "Cara");
    int grade1 = school.add_activity(NewActivity("Grade 1 Ballet").priced(25).with_expenses(3.5));
    int grade2 = school.add_activity(NewActivity("Grade 2 Ballet").at_level(2).priced(0));
    int show = school.add_activity(NewActivity("Summer Show").of_kind(code::exam_type::Show));
};

// Everyone is picked, but only the Smiths have entries on the exam day: one
// invoice for the date, each entrant priced and their expenses added.
TEST_F(ActivityInvoicing, EachFamilyWithEntriesGetsOneInvoiceForTheDateWithPricesAndExpenses)
{
    school.enter(anna, grade1, exam_day);
    school.enter(ben, grade2, exam_day);
    school.pick_activity(grade1, exam_day);
    school.pick_activity(grade2, exam_day);
    pick_everyone();
    run("Qry_Setup_Invoice_ActivityDates");
    run("Qry_Setup_Invoice_Activities");
    run("Qry_Insert_Invoice_Activity_Expenses");

    const Rows made = school.rows("SELECT * FROM Invoices");
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0]["Invoice_Family_Id"].toInt(), smiths);
    EXPECT_EQ(made[0]["Invoice_Activity_Date"].toDate(), exam_day);
    EXPECT_EQ(made[0]["Invoice_Reason"].toString(), "Invoice for Spring Exams");
    EXPECT_TRUE(made[0]["Invoice_Term_Id"].isNull());

    QStringList texts;
    for (const auto& line : lines_of(smiths))
        texts << QStringLiteral("%1|%2|%3|%4|%5").arg(line["Description"].toString(), line["Inv_Line_Type"].toString(),
                                                      money_text(line["Amount"]), line["Inv_Line_Exam_id"].toString(),
                                                      line["Inv_Line_Pupil_id"].toString());
    EXPECT_EQ(texts, QStringList({QStringLiteral("Anna's Grade 1 Ballet|%1|25|%2|%3").arg(code::inv_line_type::Activity).arg(grade1).arg(anna),
                                  QStringLiteral("Ben's Grade 2 Ballet|%1|0|%2|%3").arg(code::inv_line_type::Activity).arg(grade2).arg(ben),
                                  QStringLiteral("Anna's Grade 1 Ballet Expenses|%1|3.5|%2|%3")
                                      .arg(code::inv_line_type::Activity_Expenses).arg(grade1).arg(anna)}));
}

TEST_F(ActivityInvoicing, TheDefaultExamRateIsNeverChargedForItsTestsAgainstNullNeverHold)
{
    school.enter(ben, grade2, exam_day);
    school.pick_activity(grade2, exam_day);
    school.pick_pupil(ben);
    run("Qry_Setup_Invoice_ActivityDates");
    run("Qry_Setup_Invoice_Default_Exam");
    EXPECT_TRUE(lines_of(smiths).empty());
}

TEST_F(ActivityInvoicing, AShowCostsEachFamilyPerPupilOnOneLine)
{
    for (int pupil : {anna, ben, cara})
        school.enter(pupil, show, show_day);
    school.pick_activity(show, show_day);
    pick_everyone();
    run("Qry_Setup_Invoice_ActivityDates");
    run("Qry_Setup_Invoice_Show_Expenses");

    const Rows smith_lines = lines_of(smiths);
    ASSERT_EQ(smith_lines.size(), 1u);
    EXPECT_EQ(smith_lines[0]["Description"].toString(), "Cost per Pupil Expenses");
    EXPECT_EQ(smith_lines[0]["Inv_Line_Type"].toInt(), code::inv_line_type::Show_Cost_Per_Pupil);
    EXPECT_TRUE(smith_lines[0]["Inv_Line_Pupil_id"].isNull());
    EXPECT_EQ(money_text(smith_lines[0]["Amount"]), "10");
    const Rows jones_lines = lines_of(joneses);
    ASSERT_EQ(jones_lines.size(), 1u);
    EXPECT_EQ(money_text(jones_lines[0]["Amount"]), "5");
}

}  // namespace
