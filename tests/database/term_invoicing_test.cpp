#include "database/code_values.h"
#include "engine/jet_date.h"
#include "support/school_fixture.h"

#include <gtest/gtest.h>

namespace {

using testing_support::NewCourse;
using testing_support::Rows;
using testing_support::SchoolFixture;
using testing_support::money_text;
using namespace code::weekday;

// The Smiths' Anna does Ballet and Jazz, Ben does Tap; the Joneses' Cara does
// Ballet. The office invoices the autumn term for Ballet and Tap.
class TermInvoicing : public ::testing::Test {
protected:
    TermInvoicing()
    {
        school.set_lessons(autumn, Monday, 12);
        school.set_lessons(autumn, Tuesday, 10);
        school.put_on_course(anna, ballet);
        school.put_on_course(anna, jazz);
        school.put_on_course(ben, tap);
        school.put_on_course(cara, ballet);
        school.pick_term(autumn);
        school.pick_course(ballet);
        school.pick_course(tap);
        EXPECT_TRUE(school.run("Qry_Setup_Course_Costs"));
    }

    Rows invoices() { return school.rows("SELECT * FROM Invoices ORDER BY Invoice_id"); }
    Rows lines() { return school.rows("SELECT * FROM Invoice_Lines ORDER BY Description"); }

    SchoolFixture school;
    int smiths = school.add_family("Smith");
    int joneses = school.add_family("Jones");
    int anna = school.add_pupil(smiths, "Anna");
    int ben = school.add_pupil(smiths, "Ben", code::gender::Male);
    int cara = school.add_pupil(joneses, "Cara");
    int autumn = school.add_term("Autumn 2026", QDate(2026, 9, 7), QDate(2026, 12, 18));
    int ballet = school.add_course(NewCourse("Ballet").on(Monday).priced(10));
    int tap = school.add_course(NewCourse("Tap").on(Tuesday).priced(8));
    int jazz = school.add_course(NewCourse("Jazz").on(Monday).priced(5));
};

// Anna alone is picked: her family gets one final invoice for the term, and
// each of its pupils on a picked course a line at the term's cost.
TEST_F(TermInvoicing, APickedPupilsFamilyGetsOneFinalInvoiceWithALineForEachPupilOnAPickedCourse)
{
    school.pick_pupil(anna);
    ASSERT_TRUE(school.run("Qry_Setup_Invoice_Terms"));
    ASSERT_TRUE(school.run("Qry_Setup_Invoice_Courses"));
    const Rows made = invoices();
    ASSERT_EQ(made.size(), 1u);
    EXPECT_EQ(made[0]["Invoice_Family_Id"].toInt(), smiths);
    EXPECT_EQ(made[0]["Invoice_Term_Id"].toInt(), autumn);
    EXPECT_EQ(made[0]["Invoice_Reason"].toString(), "Invoice for Autumn 2026");
    EXPECT_EQ(made[0]["Invoice_Generated"].toInt(), code::invoice_generated::Automatic);
    EXPECT_TRUE(made[0]["Invoice_Activity_Date"].isNull());
    EXPECT_EQ(made[0]["Invoice_Date"].toDateTime().date(), engine::now().date());

    const int invoice = made[0]["Invoice_id"].toInt();
    QStringList texts;
    for (const auto& line : lines()) {
        EXPECT_EQ(line["Inv_Line_Inv_id"].toInt(), invoice);
        EXPECT_EQ(line["Inv_Line_Type"].toInt(), code::inv_line_type::Course);
        texts << QStringLiteral("%1|%2|%3|%4").arg(line["Description"].toString(), money_text(line["Amount"]))
                     .arg(line["Inv_Line_Pupil_id"].toInt()).arg(line["Inv_Line_Course_id"].toInt());
    }
    EXPECT_EQ(texts, QStringList({QStringLiteral("Anna's Ballet|120|%1|%2").arg(anna).arg(ballet),
                                  QStringLiteral("Ben's Tap|80|%1|%2").arg(ben).arg(tap)}));
}

TEST_F(TermInvoicing, ProvisionalInvoicesAreMadeFinalLater)
{
    school.pick_pupil(cara);
    ASSERT_TRUE(school.run("Qry_Setup_Invoice_Terms_Temp"));
    EXPECT_EQ(invoices()[0]["Invoice_Generated"].toInt(), code::invoice_generated::Provisional);
    ASSERT_TRUE(school.run("Qry_Update_Generation_to_Auto"));
    EXPECT_EQ(invoices()[0]["Invoice_Generated"].toInt(), code::invoice_generated::Automatic);
}

}  // namespace
