// The Activity Dates screen: the counts of what hangs on the date shown, a
// date with entries moved and its entries following, invoices dropped after
// the question, and the refusals of receipts and of a date in use.

#include "ui/activities/frm_activity_dates.h"

#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2027, 3, 13);
const QDate show_day(2027, 7, 10);

class ActivityDatesScreen : public ScreenTest<frm_Activity_Dates> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        family = school.add_family(QStringLiteral("Ashdown"));
        const int exam = school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")));
        school.title_date(exam_day, QStringLiteral("Spring Exams"));
        school.title_date(show_day, QStringLiteral("Summer Show"));
        school.enter(school.add_pupil(family, QStringLiteral("Amy")), exam, exam_day);
        school.enter(school.add_pupil(family, QStringLiteral("Ben")), exam, exam_day);
    }
    void go_to(const QString& title)
    {
        screen->cmb_Names->setCurrentIndex(screen->cmb_Names->findText(title));
        screen->cmb_Names_Click();
        settle();
    }
    QStringList counts() const
    {
        return {screen->txt_Exam_Results->text(), screen->txt_Invoices->text(), screen->txt_Receipts->text()};
    }
    int entries_on(QDate day)
    {
        return school.scalar(QStringLiteral("SELECT count(*) FROM Exam_Results WHERE Results_Date = '%1 00:00:00'")
                                 .arg(day.toString(Qt::ISODate)))
            .toInt();
    }
    void move_date_to(const QString& typed)
    {
        retype(screen->txt_Date, typed);
        tab_out(screen->txt_Date);
    }

    int family = 0;
};

TEST_F(ActivityDatesScreen, ADateWithEntriesMovesWithThemWithoutAQuestion)
{
    open();
    // Newest first: the show has nothing on it.
    EXPECT_EQ(screen->txt_Activity_Title->text(), QStringLiteral("Summer Show"));
    EXPECT_EQ(counts(), QStringList({QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")}));
    go_to(QStringLiteral("Spring Exams"));
    EXPECT_EQ(counts(), QStringList({QStringLiteral("2"), QStringLiteral("0"), QStringLiteral("0")}));

    move_date_to(QStringLiteral("20 Mar 2027"));
    EXPECT_EQ(screen->EditMode(), engine::editmode::InProgress);
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Spring Exams updated successfully"));
    EXPECT_EQ(entries_on(exam_day), 0);
    EXPECT_EQ(entries_on(QDate(2027, 3, 20)), 2);
    EXPECT_EQ(screen->txt_Activity_Title->text(), QStringLiteral("Spring Exams"));
    EXPECT_EQ(screen->txt_Exam_Results->text(), QStringLiteral("2"));
}

TEST_F(ActivityDatesScreen, InvoicesOfTheDateGoAfterTheQuestionAndReceiptsBlockEveryChange)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring Exams"), std::nullopt, exam_day);
    school.add_line(invoice, 38);
    open();
    go_to(QStringLiteral("Spring Exams"));
    EXPECT_EQ(screen->txt_Invoices->text(), QStringLiteral("1"));

    // Only the title changes, and the invoices go all the same.
    retype(screen->txt_Activity_Title, QStringLiteral("Spring Exams 2027"));
    tab_out(screen->txt_Activity_Title);
    ScriptedBoxes()
        .expect(QStringLiteral("About to delete invoices for this date. \nContinue?\nYou must re-invoice for the new date"), Yes, 36)
        .during([&] { click(screen->cmd_Update); });
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 0);
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines")), 0);
    EXPECT_EQ(entries_on(exam_day), 2);

    const int paid = school.add_invoice(family, QStringLiteral("Invoice for Spring Exams"), std::nullopt, exam_day);
    school.add_receipt(paid, 38);
    go_to(QStringLiteral("Summer Show"));
    go_to(QStringLiteral("Spring Exams 2027"));
    move_date_to(QStringLiteral("20 Mar 2027"));
    ScriptedBoxes()
        .expect(QStringLiteral("Cannot change the date or the title  when there are receipts"), Ok, 0)
        .during([&] { click(screen->cmd_Update); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Update cancelled"));
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
    EXPECT_EQ(entries_on(exam_day), 2);
}

TEST_F(ActivityDatesScreen, ADateWithPupilsIsKeptAndAnUnusedOneIsDeleted)
{
    open();
    go_to(QStringLiteral("Spring Exams"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to delete Spring Exams"), Yes, 36)
        .expect(QStringLiteral("There are results or invoices for this  date, so it cannot be deleted"), Ok, 0);
    click(screen->cmd_Delete);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion abandoned"));

    go_to(QStringLiteral("Summer Show"));
    boxes.expect(QStringLiteral("Do you really want to delete Summer Show"), Yes, 36);
    click(screen->cmd_Delete);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Summer Show deleted"));
    EXPECT_EQ(school.count(QStringLiteral("Activity_Titles")), 1);
    EXPECT_EQ(screen->txt_Activity_Title->text(), QStringLiteral("Spring Exams"));
}

}  // namespace
