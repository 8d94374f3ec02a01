// The Term Dates screen as a secretary uses it: typing a term's dates, clicking
// holidays, storing the lesson counts, moving between terms, and the refusals
// and warnings that keep Number_Lessons in step with the holidays.

#include "ui/calendar/frm_dates.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

constexpr colours::Rgb pale_yellow{255, 255, 192};
constexpr colours::Rgb pale_blue{192, 192, 255};
constexpr colours::Rgb teal{0, 192, 192};
constexpr colours::Rgb red{255, 0, 0};

// Two terms of exactly four weeks, Sunday to Saturday: four lessons each weekday.
const QDate january_start(2026, 1, 4);
const QDate january_end(2026, 1, 31);
const QDate february_start(2026, 2, 1);
const QDate february_end(2026, 2, 28);

class TermDatesScreen : public ScreenTest<frm_Dates> {
protected:

    // A stored term whose lesson counts agree with its grid.
    int stored_term(const QString& name, QDate start, QDate end, int lessons_each_day = 4)
    {
        const int term = school.add_term(name, start, end);
        for (int day = 1; day <= 7; ++day)
            school.set_lessons(term, day, lessons_each_day);
        return term;
    }

    void type_dates(const QString& name, const QString& start, const QString& end)
    {
        retype(screen->txt_Term_Name, name);
        tab_out(screen->txt_Term_Name);
        retype(screen->txt_Start_Date, start);
        tab_out(screen->txt_Start_Date);
        retype(screen->txt_End_Date, end);
        tab_out(screen->txt_End_Date);
    }

    QString totals() const
    {
        QStringList texts;
        for (QLineEdit* total : screen->txt_Total)
            texts << total->text();
        return texts.join(QLatin1Char(' '));
    }

    void click_cell(int n)
    {
        QLabel* cell = screen->txg_Element[n];
        QTest::mouseClick(cell, Qt::LeftButton, Qt::NoModifier, cell->rect().center());
        settle();
    }

    int lessons(int term, int day_number)
    {
        const QString sql = QStringLiteral("SELECT Num_Lessons FROM Number_Lessons WHERE Term_Id = %1 AND Day_Number = %2");
        return school.scalar(sql.arg(term).arg(day_number)).toInt();
    }
};

// ---- Opening and moving between terms ----

TEST_F(TermDatesScreen, OpensAtTheNewestTermAndPickingASavedTermShowsItsDatesHolidaysAndInvoices)
{
    const int january = stored_term(QStringLiteral("January"), january_start, january_end);
    school.exec(QStringLiteral("UPDATE Number_Lessons SET Num_Lessons = 3 WHERE Term_Id = %1 AND Day_Number = 3")
                    .arg(january));  // Tuesday 13 January is a holiday
    school.add_holiday(QDate(2026, 1, 13));
    school.add_invoice(school.add_family(QStringLiteral("Ashdown")), QStringLiteral("Spring fees"), january);
    stored_term(QStringLiteral("February"), february_start, february_end);
    open();

    ASSERT_EQ(screen->cmb_Name->count(), 2);
    EXPECT_EQ(screen->cmb_Name->itemText(0), QStringLiteral("February"));
    EXPECT_EQ(screen->cmb_Name->currentText(), QStringLiteral("February"));
    EXPECT_EQ(screen->txt_Start_Date->text(), QStringLiteral("01 Feb 2026"));
    EXPECT_EQ(screen->txt_End_Date->text(), QStringLiteral("28 Feb 2026"));
    EXPECT_TRUE(screen->txt_Term_id->isHidden());
    EXPECT_EQ(screen->txt_Num_Invoices->text(), QStringLiteral("0"));

    EXPECT_EQ(screen->txg_Element[0]->text(), QStringLiteral("01 Feb 2026"));
    EXPECT_EQ(screen->txg_Element[28]->text(), QString());
    EXPECT_EQ(frame_colour(screen->txg_Element[0]), pale_yellow);
    EXPECT_EQ(totals(), QStringLiteral("4 4 4 4 4 4 4"));
    EXPECT_EQ(field_colour(screen->txt_Total[0]), teal);

    screen->cmb_Name->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(screen->cmb_Name, Qt::Key_Down);  // the user picks the older term
    settle();

    EXPECT_EQ(screen->cmb_Name->currentText(), QStringLiteral("January"));
    EXPECT_EQ(screen->txt_Term_Name->text(), QStringLiteral("January"));
    EXPECT_EQ(screen->txt_Start_Date->text(), QStringLiteral("04 Jan 2026"));
    EXPECT_EQ(screen->txt_Term_id->text(), QString::number(january));
    EXPECT_EQ(screen->txt_Num_Invoices->text(), QStringLiteral("1"));
    EXPECT_EQ(screen->txg_Element[9]->text(), QStringLiteral("13 Jan 2026"));
    EXPECT_EQ(frame_colour(screen->txg_Element[9]), pale_blue);
    EXPECT_EQ(totals(), QStringLiteral("4 4 3 4 4 4 4"));
    EXPECT_EQ(field_colour(screen->txt_Total[2]), teal);
}

// ---- A new term ----

TEST_F(TermDatesScreen, TypingAStartFillsTheGridFourteenWeeksAhead)
{
    open();  // no terms: an empty screen
    EXPECT_EQ(screen->cmb_Name->count(), 0);
    EXPECT_EQ(totals(), QStringLiteral("0 0 0 0 0 0 0"));

    retype(screen->txt_Start_Date, QStringLiteral("1/1/2026"));
    QTest::keyClick(screen->txt_Start_Date, Qt::Key_Return);  // Enter moves on as Tab does
    settle();
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_End_Date);
    EXPECT_EQ(screen->txt_Start_Date->text(), QStringLiteral("01 Jan 2026"));
    EXPECT_EQ(screen->txt_End_Date->text(), QStringLiteral("09 Apr 2026"));  // start + 14 weeks
    EXPECT_EQ(screen->txg_Element[4]->text(), QStringLiteral("01 Jan 2026"));
    EXPECT_EQ(totals(), QStringLiteral("14 14 14 14 15 14 14"));
}

TEST_F(TermDatesScreen, BadDatesAndNamesAreRefusedWithTheirWords)
{
    open();
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Term Names cannot include quotes"), Ok, 0);
        retype(screen->txt_Term_Name, QStringLiteral("Spring \"A\""));
        tab_out(screen->txt_Term_Name);
        EXPECT_EQ(QApplication::focusWidget(), screen->txt_Term_Name);
    }
    retype(screen->txt_Term_Name, QStringLiteral("Spring"));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Invalid start date"), Ok, 0);
        retype(screen->txt_Start_Date, QStringLiteral("someday"));
        tab_out(screen->txt_Start_Date);
        EXPECT_EQ(QApplication::focusWidget(), screen->txt_Start_Date);
    }
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Please enter a start date"), Ok, 0);
        screen->txt_End_Date->setText(QStringLiteral("31 Mar 2026"));
        screen->txt_Start_Date->clear();
        click(screen->cmd_Save);
    }
    EXPECT_EQ(school.count(QStringLiteral("Term_Dates")), 0);
}

// ---- Update ----

TEST_F(TermDatesScreen, UpdateStoresTheTermAndItsLessonCountsAsShown)
{
    open();
    type_dates(QStringLiteral("Spring 2026"), QStringLiteral("1 Jan 2026"), QStringLiteral("31 Mar 2026"));
    click_cell(4 + 16);  // Saturday 17 January
    ScriptedBoxes().expect(QStringLiteral("Saved successfully"), Ok, 0).during([&] { click(screen->cmd_Save); });
    const int term = screen->txt_Term_id->text().toInt();
    ASSERT_GT(term, 0);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Term_Name FROM Term_Dates WHERE Term_Id = %1").arg(term)).toString(),
              QStringLiteral("Spring 2026"));
    EXPECT_EQ(lessons(term, 7), 12);
    EXPECT_EQ(screen->cmb_Name->currentText(), QStringLiteral("Spring 2026"));

    // Stored and in step: leaving asks nothing.
    screen->mnu_Exit->trigger();
    settle();
    EXPECT_FALSE(screen && screen->isVisible());
}

// Clear names the boxes of a stored term that were changed; Clear and Add New
// leave no term named in the list over the blank screen.
TEST_F(TermDatesScreen, ClearNamesTheChangedBoxesAndClearAndAddNewLeaveNoTermNamed)
{
    stored_term(QStringLiteral("January"), january_start, january_end);
    open();
    retype(screen->txt_Term_Name, QStringLiteral("Jan"));
    retype(screen->txt_End_Date, QStringLiteral("30 Jan 2026"));
    tab_out(screen->txt_End_Date);
    ScriptedBoxes()
        .expect(QStringLiteral(" The name has changed. The End Date has changed.There are unsaved changes."), No, 36)
        .during([&] { screen->mnu_Clear->trigger(); settle(); });
    EXPECT_EQ(screen->cmb_Name->currentText(), QString());
    EXPECT_EQ(screen->txt_Term_Name->text(), QString());
    EXPECT_EQ(screen->txt_Term_id->text(), QString());
    EXPECT_EQ(screen->txg_Element[0]->text(), QString());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Term_Name FROM Term_Dates")).toString(), QStringLiteral("January"));

    screen->cmb_Name->setCurrentIndex(0);
    settle();
    ASSERT_EQ(screen->cmb_Name->currentText(), QStringLiteral("January"));
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Term_Name->text(), QString());
    EXPECT_EQ(screen->cmb_Name->currentIndex(), -1);
    EXPECT_EQ(screen->cmb_Name->currentText(), QString());
    EXPECT_EQ(screen->cmb_Name->count(), 1);  // the terms are still there to choose from
}

TEST_F(TermDatesScreen, ChangingATermWithInvoicesRemindsToReRunTheInvoicing)
{
    const int january = stored_term(QStringLiteral("January"), january_start, january_end);
    school.add_invoice(school.add_family(QStringLiteral("Ashdown")), QStringLiteral("Spring fees"), january);
    open();
    retype(screen->txt_Term_Name, QStringLiteral("January 2026"));
    ScriptedBoxes()
        .expect(QStringLiteral("You are making changes to a term that already has invoices. \nPlease remember to re-run "
                               "the automated invoicing to change the invoices."),
                Ok, 64)
        .expect(QStringLiteral("Saved successfully"), Ok, 0)
        .during([&] { click(screen->cmd_Save); });
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Term_Name FROM Term_Dates WHERE Term_Id = %1").arg(january)).toString(),
              QStringLiteral("January 2026"));
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 1);
}

// ---- Leaving with changes outstanding ----

TEST_F(TermDatesScreen, AClickedHolidayIsCountedOffAndIfLeftUnsavedIsWarnedAboutOnExitAndOnTheNextOpening)
{
    const int january = stored_term(QStringLiteral("January"), january_start, january_end);
    open();
    click_cell(12);  // Friday 16 January
    EXPECT_EQ(frame_colour(screen->txg_Element[12]), pale_blue);
    EXPECT_EQ(totals(), QStringLiteral("4 4 4 4 4 3 4"));
    ScriptedBoxes()
        .expect(QStringLiteral("You have changed holidays, which have changed the Totals. The Totals are VITAL.  If "
                               "you dont SAVE, the database will be out of step and your invoices will be calculated "
                               "incorrectly!There are unsaved changes.\n\nDo you wish to save them now?"),
                No, 36)
        .during([&] { screen->mnu_Exit->trigger(); settle(); });
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT COUNT(*) FROM Holidays WHERE Day_Off LIKE '2026-01-16%'")).toInt(), 1);
    EXPECT_EQ(lessons(january, 6), 4);

    ScriptedBoxes()
        .expect(QStringLiteral("The database is out of date and MUST be saved to ensure correct operation.\nSave Now?"),
                No, 36)
        .during([&] { open(); });
    EXPECT_EQ(field_colour(screen->txt_Total[5]), red);
    EXPECT_EQ(screen->txt_Total[5]->text(), QStringLiteral("3"));
}

TEST_F(TermDatesScreen, TheCloseBoxAsksAboutANewTermAsExitDoes)
{
    open();
    type_into(screen->txt_Term_Name, QStringLiteral("Summer"));
    QTest::keyClick(screen->txt_Term_Name, Qt::Key_Return);
    settle();
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Start_Date);
    ScriptedBoxes().expect(QStringLiteral("There are unsaved changes."), No, 36)
        .during([&] { screen->close(); settle(); });
    EXPECT_TRUE(menu.isVisible());
    EXPECT_FALSE(screen && screen->isVisible());
    EXPECT_EQ(school.count(QStringLiteral("Term_Dates")), 0);
}

TEST_F(TermDatesScreen, AnsweringSaveNowOnOpeningStoresTheCountsAsShown)
{
    const int january = stored_term(QStringLiteral("January"), january_start, january_end);
    school.add_holiday(QDate(2026, 1, 21));  // a Wednesday added by another route
    ScriptedBoxes().expect(QStringLiteral("Save Now?"), Yes, 36)
        .expect(QStringLiteral("Saved successfully"), Ok, 0)
        .during([&] { open(); });
    EXPECT_EQ(lessons(january, 4), 3);
    EXPECT_EQ(field_colour(screen->txt_Total[3]), teal);
    EXPECT_EQ(screen->cmb_Name->currentText(), QStringLiteral("January"));
}

// ---- Delete ----

// A term with invoices is refused by the deletion's own rules (term_calendar_test).
TEST_F(TermDatesScreen, DeletingATermShowsTheNextOneAndATermNotYetStoredCannotBeDeleted)
{
    const int february = stored_term(QStringLiteral("February"), february_start, february_end);
    stored_term(QStringLiteral("March"), QDate(2026, 3, 1), QDate(2026, 3, 28));
    open();
    ASSERT_EQ(screen->txt_Term_Name->text(), QStringLiteral("March"));
    ScriptedBoxes().expect(QStringLiteral("Do you wish to DELETE term March from the database?"), Yes, 36)
        .expect(QStringLiteral("Term March successfully deleted"), Ok)
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(school.count(QStringLiteral("Term_Dates")), 1);
    EXPECT_EQ(screen->txt_Term_id->text(), QString::number(february));
    EXPECT_EQ(screen->cmb_Name->count(), 1);

    click(screen->cmd_Add);
    ScriptedBoxes()
        .expect(QStringLiteral("These dates have not yet been saved to the database, so cannot be deleted."), Ok, 0)
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(school.count(QStringLiteral("Term_Dates")), 1);
}

}  // namespace
