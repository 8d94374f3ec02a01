// What hangs on an activity date and what a change of the date does to it:
// the entries follow, the invoices go after a Yes, receipts block, and a
// failure anywhere leaves the database as it was.

#include "activities/activity_dates.h"

#include "engine/err.h"
#include "engine/msg_box.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using engine::answer::No;
using engine::answer::Yes;
using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2027, 3, 13);
const QDate moved_day(2027, 3, 20);

QDateTime at(QDate day)
{
    return QDateTime(day, QTime(0, 0), Qt::UTC);
}

class ActivityDates : public ::testing::Test {
protected:
    ActivityDates()
    {
        const int family = school.add_family(QStringLiteral("Ashdown"));
        amy = school.add_pupil(family, QStringLiteral("Amy"));
        ben = school.add_pupil(family, QStringLiteral("Ben"), 'M');
        exam = school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")));
        school.title_date(exam_day, QStringLiteral("Spring Exams"));
        school.enter(amy, exam, exam_day);
        school.enter(ben, exam, exam_day);
        invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring Exams"), std::nullopt, exam_day);
        school.add_line(invoice, 38);
    }
    int on(QDate day)
    {
        return school.scalar(QStringLiteral("SELECT count(*) FROM Exam_Results WHERE Results_Date = '%1 00:00:00'")
                                 .arg(day.toString(Qt::ISODate)))
            .toInt();
    }

    testing_support::SchoolMadeCurrent school;
    int amy = 0, ben = 0, exam = 0, invoice = 0;
};

TEST_F(ActivityDates, TheUsesOfADateAreCountedAndADateInUseIsKept)
{
    const DateUses uses = Count_Date_Uses(at(exam_day));
    EXPECT_EQ(uses.results, 2);
    EXPECT_EQ(uses.invoices, 1);
    EXPECT_EQ(uses.receipts, 0);
    EXPECT_TRUE(Date_In_Use(uses));
    EXPECT_FALSE(Date_In_Use(Count_Date_Uses(at(moved_day))));
    // A count that couldn't be read is no use.
    EXPECT_FALSE(Date_In_Use(DateUses{}));
}

TEST_F(ActivityDates, ReceiptsBlockAnyChangeAndInvoicesGoOnlyAfterAYes)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Cannot change the date or the title  when there are receipts"), engine::answer::Ok, 0);
    EXPECT_FALSE(Date_Change_Allowed(DateUses{2, 1, 1}));
    const QString question = QStringLiteral("About to delete invoices for this date. \nContinue?\nYou must re-invoice for the new date");
    boxes.expect(question, No, 36).expect(question, Yes, 36);
    EXPECT_FALSE(Date_Change_Allowed(DateUses{2, 1, 0}));
    EXPECT_TRUE(Date_Change_Allowed(DateUses{2, 1, 0}));
    EXPECT_TRUE(Date_Change_Allowed(DateUses{2, 0, -1}));
}

TEST_F(ActivityDates, AChangedDateTakesItsEntriesAndDropsItsInvoicesInOneTransaction)
{
    bool written = false;
    ASSERT_TRUE(Change_Activity_Date(Count_Date_Uses(at(exam_day)), at(exam_day), at(moved_day), [&] { return written = true; }));
    EXPECT_TRUE(written);
    EXPECT_EQ(on(exam_day), 0);
    EXPECT_EQ(on(moved_day), 2);
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 0);
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines")), 0);
}

TEST_F(ActivityDates, ARecordThatCannotBeWrittenUndoesTheWholeChange)
{
    const QString before = school.dump();
    const bool changed = Change_Activity_Date(Count_Date_Uses(at(exam_day)), at(exam_day), at(moved_day), [] {
        engine::raise_engine_error(engine::jet::DuplicateKey, QStringLiteral("duplicate"));
        return false;
    });
    EXPECT_FALSE(changed);
    EXPECT_EQ(engine::Err().Number, engine::jet::DuplicateKey);
    engine::Err().Clear();
    EXPECT_EQ(school.dump(), before);
}

TEST(ActivityDateText, ADateStaysAsTypedAndWordsAreNoDate)
{
    QString typed = QStringLiteral("13 Mar 2027");
    EXPECT_TRUE(Date_Text_After_Leaving(typed));
    EXPECT_EQ(typed, QStringLiteral("13 Mar 2027"));
    QString words = QStringLiteral("next week");
    EXPECT_FALSE(Date_Text_After_Leaving(words));
    engine::Err().Clear();
}

}  // namespace
