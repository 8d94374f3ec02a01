#include "calendar/calendar_db.h"
#include "calendar/term_calendar.h"
#include "database/db_handling.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace {

using engine::answer::Ok;
using testing_support::NewCourse;
using testing_support::Rows;
using testing_support::ScriptedBoxes;

// Spring term 2026: Thursday 1 January to Tuesday 31 March.
const QDate spring_start(2026, 1, 1);
const QDate spring_end(2026, 3, 31);

class TermCalendarTest : public ::testing::Test {
protected:
    // Types a new term into the boxes and fills the grid, as the screen does.
    void type_term(const QString& name, QDate start, QDate end)
    {
        calendar.Clear_Screen();
        calendar.boxes.name = name;
        calendar.boxes.start = start.toString(QStringLiteral("dd MMM yyyy"));
        calendar.boxes.end = end.toString(QStringLiteral("dd MMM yyyy"));
        ASSERT_TRUE(calendar.Fill_Grid(start, end));
    }
    bool save()
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Saved successfully"), Ok);
        return calendar.Save_Term();
    }
    int cell_of(QDate day) const
    {
        for (int n = 0; n < term_grid::Cells; ++n)
            if (calendar.cell(n).date == day)
                return n;
        return -1;
    }
    Rows lessons(int term)
    {
        return school.rows(QStringLiteral("SELECT * FROM Number_Lessons WHERE Term_Id = %1 ORDER BY Day_Number").arg(term));
    }

    testing_support::SchoolForRuns school;
    TermCalendar calendar;
};

TEST_F(TermCalendarTest, ARefusedSpanLeavesTheGridEmptyAndTheDatesAsTheyWere)
{
    type_term(QStringLiteral("Spring"), spring_start, spring_start.addDays(2));
    ScriptedBoxes().expect(QStringLiteral("end date is before start date"), Ok, 0)
        .expect(QStringLiteral("Sorry, I cannot handle this number of weeks per term!"), Ok, 0)
        .during([&] {
            EXPECT_FALSE(calendar.Fill_Grid(spring_start, spring_start.addDays(-1)));
            EXPECT_FALSE(calendar.Fill_Grid(spring_start, spring_start.addDays(113)));
        });
    EXPECT_EQ(calendar.cell_text(4), QString());
    EXPECT_EQ(calendar.total(4), 0);
    EXPECT_EQ(calendar.first_date(4), spring_start);
    EXPECT_EQ(calendar.last_date(4), spring_start);
}

TEST_F(TermCalendarTest, TheGridShowsStoredHolidaysInTheirColourAndADateClickedTwiceIsAsItWas)
{
    school.add_holiday(QDate(2026, 1, 5));
    type_term(QStringLiteral("Spring"), spring_start, spring_end);
    const int monday = cell_of(QDate(2026, 1, 5));
    EXPECT_EQ(calendar.cell_text(monday), QStringLiteral("05 Jan 2026"));
    EXPECT_EQ(calendar.cell_colour(monday), calendar_colour::Holiday);
    EXPECT_EQ(calendar.cell_colour(monday + 7), calendar_colour::School_Day);
    EXPECT_EQ(calendar.cell_colour(0), calendar_colour::School_Day);  // blank, before the start
    EXPECT_EQ(calendar.total(1), 12);  // 13 Mondays, one a holiday

    // Clicking a date twice leaves the holidays and the total as they were.
    const QString before = school.dump();
    const int friday = cell_of(QDate(2026, 2, 13));
    const int fridays = calendar.total(5);

    calendar.click_cell(friday);
    EXPECT_EQ(calendar.total(5), fridays - 1);
    EXPECT_EQ(calendar.cell_colour(friday), calendar_colour::Holiday);
    EXPECT_EQ(school.count(QStringLiteral("Holidays")), 2);

    calendar.click_cell(friday);
    EXPECT_EQ(calendar.total(5), fridays);
    EXPECT_EQ(calendar.cell_colour(friday), calendar_colour::School_Day);
    EXPECT_EQ(school.dump(), before);

    calendar.click_cell(0);  // blank
    EXPECT_EQ(school.dump(), before);
}

TEST_F(TermCalendarTest, SavingANewTermStoresSevenLessonCountsWithDatesAndHolidayLists)
{
    for (QDate day : {QDate(2026, 1, 3), QDate(2026, 1, 10), QDate(2026, 2, 16), QDate(2026, 4, 4)})
        school.add_holiday(day);
    type_term(QStringLiteral("Spring 2026"), spring_start, spring_end);
    ASSERT_TRUE(save());

    const int term = calendar.boxes.term_id.toInt();
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Term_Name FROM Term_Dates WHERE Term_id = %1").arg(term)).toString(),
              QStringLiteral("Spring 2026"));
    const auto rows = lessons(term);
    ASSERT_EQ(rows.size(), 7u);
    const int expected[7] = {13, 12, 13, 12, 13, 13, 11};  // Sunday first
    for (int day = 0; day < 7; ++day)
        EXPECT_EQ(rows[day]["Num_Lessons"].toInt(), expected[day]) << day;
    EXPECT_EQ(rows[6]["Hols_Str"].toString(), QStringLiteral("03-Jan, 10-Jan"));
    EXPECT_EQ(rows[1]["Hols_Str"].toString(), QStringLiteral("16-Feb"));
    EXPECT_EQ(rows[0]["Hols_Str"].toString(), QString());
    EXPECT_EQ(rows[4]["First_Date"].toDateTime().date(), spring_start);
    EXPECT_EQ(rows[2]["Last_Date"].toDateTime().date(), spring_end);
    EXPECT_EQ(rows[6]["First_Date"].toDateTime().date(), QDate(2026, 1, 3));  // a holiday, still the first
    EXPECT_TRUE(calendar.Check_Totals(term));
}

// Saving again updates the term, its lesson counts worked out from the boxes
// even when the grid still shows the dates it was filled with.
TEST_F(TermCalendarTest, SavingAStoredTermAgainReplacesItsLessonCountsFromTheBoxes)
{
    type_term(QStringLiteral("Spring"), spring_start, spring_end);
    ASSERT_TRUE(save());
    const QString id = calendar.boxes.term_id;

    calendar.boxes.name = QStringLiteral("Spring (short)");
    calendar.boxes.end = QStringLiteral("31 Jan 2026");
    ASSERT_TRUE(save());
    EXPECT_EQ(calendar.boxes.term_id, id);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT group_concat(Term_Name) FROM Term_Dates")).toString(),
              QStringLiteral("Spring (short)"));
    const auto rows = lessons(id.toInt());
    ASSERT_EQ(rows.size(), 7u);
    EXPECT_EQ(rows[6]["Num_Lessons"].toInt(), 5);  // the Saturdays of January
    EXPECT_EQ(rows[4]["Num_Lessons"].toInt(), 5);  // and its Thursdays
    EXPECT_EQ(rows[1]["Last_Date"].toDateTime().date(), QDate(2026, 1, 26));
    EXPECT_EQ(calendar.total(6), 5);
}

TEST(TermDatesRefusal, DatesThatTheGridCannotHoldAreRefusedWithTheirReason)
{
    struct Case {
        QDate start;
        QDate end;
        const char* refusal;  // the first line of the words; empty: accepted
    };
    const Case cases[] = {
        {spring_start, spring_end, ""}, {spring_start, spring_start, ""}, {spring_start, spring_start.addDays(112), ""},
        {spring_start, spring_start.addDays(-1), "The end date is before the start date."},
        {spring_end, spring_start, "The end date is before the start date."},
        {spring_start, spring_start.addDays(113), "The term is longer than the 16 weeks that the calendar can show."},
    };
    for (const Case& row : cases) {
        const QString refusal = Term_Dates_Refusal(row.start, row.end);
        EXPECT_EQ(refusal.section(QLatin1Char('\n'), 0, 0), QString::fromUtf8(row.refusal))
            << row.start.toString().toStdString() << " to " << row.end.toString().toStdString();
    }
}

TEST_F(TermCalendarTest, ATermEndingBeforeItStartsIsRefusedAndNothingIsStored)
{
    const QString before = school.dump();
    // The grid was refused when the end was typed, and stands empty.
    calendar.Clear_Screen();
    calendar.boxes.name = QStringLiteral("Backwards");
    calendar.boxes.start = QStringLiteral("31 Mar 2026");
    calendar.boxes.end = QStringLiteral("01 Jan 2026");
    ScriptedBoxes().expect(QStringLiteral("The end date is before the start date.\n"
                                          "Please enter an end date on or after the start date."),
                           Ok, engine::mb::OkOnly)
        .during([&] { EXPECT_FALSE(calendar.Save_Term()); });
    EXPECT_EQ(school.dump(), before);
    EXPECT_EQ(calendar.boxes.term_id, QString());
}

TEST_F(TermCalendarTest, ADuplicateNameOrStartDateStoresNothing)
{
    type_term(QStringLiteral("Spring"), spring_start, spring_end);
    ASSERT_TRUE(save());
    const QString before = school.dump();

    ScriptedBoxes boxes;
    const QString refusal = QStringLiteral("There is already a term with this name or start date.\n"
                                           "Choose a different name and try again");
    boxes.expect(refusal, Ok, 0);
    boxes.expect(refusal, Ok, 0);
    type_term(QStringLiteral("Spring"), QDate(2026, 4, 13), QDate(2026, 7, 17));
    EXPECT_FALSE(calendar.Save_Term());
    type_term(QStringLiteral("Summer"), spring_start, QDate(2026, 2, 28));
    EXPECT_FALSE(calendar.Save_Term());
    EXPECT_EQ(school.dump(), before);
    EXPECT_EQ(calendar.boxes.term_id, QString());
}

TEST_F(TermCalendarTest, AHolidayClickedAfterSavingShowsAsADifferingTotal)
{
    type_term(QStringLiteral("Spring"), spring_start, spring_end);
    ASSERT_TRUE(save());
    const int term = calendar.boxes.term_id.toInt();
    calendar.click_cell(cell_of(QDate(2026, 3, 4)));  // a Wednesday

    TermCalendar reopened;
    bool totals_match = true;
    ASSERT_TRUE(reopened.load_term(term, totals_match));
    EXPECT_FALSE(totals_match);
    EXPECT_EQ(reopened.total_colour(3), calendar_colour::Total_Differs);
    EXPECT_EQ(reopened.total_colour(2), calendar_colour::Total);
    EXPECT_EQ(reopened.boxes.name, QStringLiteral("Spring"));
    EXPECT_EQ(reopened.boxes.start, QStringLiteral("01 Jan 2026"));
    EXPECT_EQ(reopened.boxes.num_invoices, QStringLiteral("0"));

    // Saving brings the counts back in step.
    ASSERT_TRUE([&] {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Saved successfully"), Ok);
        return reopened.Save_Term();
    }());
    EXPECT_EQ(reopened.total_colour(3), calendar_colour::Total);
    EXPECT_TRUE(reopened.Check_Totals(term));

    // A term that isn't there shows an empty screen.
    EXPECT_FALSE(reopened.load_term(term + 99, totals_match));
    EXPECT_EQ(reopened.boxes.name, QString());
}

TEST_F(TermCalendarTest, AGridThatCannotBeFilledNeverOffersToStoreItsEmptyTotals)
{
    type_term(QStringLiteral("Spring"), spring_start, spring_end);
    ASSERT_TRUE(save());
    const int term = calendar.boxes.term_id.toInt();
    ASSERT_TRUE(school.db().DeleteQueryDef(QStringLiteral("Qry_Select_Holidays")));

    TermCalendar reopened;
    bool totals_match = false;
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unexpected error"), Ok);
    ASSERT_TRUE(reopened.load_term(term, totals_match));
    EXPECT_TRUE(totals_match);
    EXPECT_EQ(reopened.boxes.name, QStringLiteral("Spring"));
    // Saving cannot store zeros either: the grid is filled again first, and fails again.
    boxes.expect(QStringLiteral("Unexpected error"), Ok);
    EXPECT_FALSE(reopened.Save_Term());
    EXPECT_EQ(lessons(term).size(), 7u);
    EXPECT_GT(school.scalar(QStringLiteral("SELECT sum(Num_Lessons) FROM Number_Lessons WHERE Term_Id = %1").arg(term)).toInt(), 0);
}

// The oldest term goes with the holidays before the new oldest term; the only
// term left goes with all of them, its lesson counts and its working costs.
TEST_F(TermCalendarTest, DeletingTheOldestTermKeepsHolidaysFromTheNewOldestOnAndTheOnlyTermClearsThemAll)
{
    const int autumn = school.add_term(QStringLiteral("Autumn"), QDate(2025, 9, 1), QDate(2025, 12, 19));
    const int spring = school.add_term(QStringLiteral("Spring"), spring_start, spring_end);
    school.set_lessons(spring, 2, 12);
    school.exec(QStringLiteral("INSERT INTO Tmp_CourseCosts (Tmp_Course_id, Tmp_Term_id, Tmp_Cost) VALUES (%1, %2, 10)")
                    .arg(school.add_course(NewCourse(QStringLiteral("Ballet 1"))))
                    .arg(spring));
    for (QDate day : {QDate(2025, 10, 27), QDate(2026, 1, 1), QDate(2026, 2, 16), QDate(2026, 8, 31)})
        school.add_holiday(day);
    EXPECT_TRUE(DB_Delete_Term(autumn));
    const auto left = school.rows(QStringLiteral("SELECT Day_Off FROM Holidays ORDER BY Day_Off"));
    ASSERT_EQ(left.size(), 3u);
    EXPECT_EQ(left[0]["Day_Off"].toDateTime().date(), QDate(2026, 1, 1));

    EXPECT_TRUE(DB_Delete_Term(spring));
    for (const char* table : {"Term_Dates", "Number_Lessons", "Tmp_CourseCosts", "Holidays"})
        EXPECT_EQ(school.count(QLatin1String(table)), 0) << table;
}

TEST_F(TermCalendarTest, ATermWithInvoicesCannotBeDeleted)
{
    const int term = school.add_term(QStringLiteral("Spring"), spring_start, spring_end);
    const int family = school.add_family(QStringLiteral("Ashby"));
    school.add_invoice(family, QStringLiteral("Invoice for Spring"), term);
    school.add_invoice(school.add_family(QStringLiteral("Brook")), QStringLiteral("Invoice for Spring"), term);
    school.add_holiday(QDate(2026, 2, 16));
    const QString before = school.dump();

    EXPECT_EQ(DB_Term_Invoice_Count(term), 2);
    ScriptedBoxes()
        .expect(QStringLiteral("There are 2 invoices that reference this term.\nSo the term cannot be deleted."), Ok, 0)
        .during([&] { EXPECT_FALSE(DB_Delete_Term(term)); });
    EXPECT_EQ(school.dump(), before);
}

}  // namespace
