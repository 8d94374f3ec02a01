// The Invoice Lines screen as the Invoices screen opens it: a new invoice
// saved and its first line begun, a line added, and the refusals that keep
// one half of the screen still while the other is being changed. The rules
// themselves are tested in tests/billing/invoice_entry_test.cpp.

#include "ui/billing/frm_invoice_lines.h"

#include "engine/currency.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "support/stored_values.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using testing_support::ScriptedBoxes;

namespace {

const colours::Rgb white = colours::At_Rest;
const colours::Rgb pale_blue = colours::Highlight;

class InvoiceLinesScreen : public ScreenTest<frm_Invoice_Lines> {
protected:
    InvoiceLinesScreen()
    {
        family = school.add_family(QStringLiteral("Ashby"), QStringLiteral("3 Mill Lane"));
        amy = school.add_pupil(family, QStringLiteral("Amy"));
        ben = school.add_pupil(family, QStringLiteral("Ben"));
        spring = school.add_term(QStringLiteral("Spring 2026"), QDate(2026, 1, 5), QDate(2026, 3, 28));
    }

    // The screen as the Invoices screen leaves it: opened on an invoice and line.
    void open_at(int invoice, int line)
    {
        open();
        EXPECT_TRUE(screen->fIL_Display_Invoice(QStringLiteral("Ashby"), QStringLiteral("3 Mill Lane"), family, invoice,
                                                line));
        settle();
    }

    void choose(QListWidget* list, const QString& text)
    {
        const QList<QListWidgetItem*> items = list->findItems(text, Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1) << text.toStdString();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(items.first()).center());
        settle();
    }

    static QString chosen(const QListWidget* list)
    {
        const QList<QListWidgetItem*> items = list->selectedItems();
        return items.isEmpty() ? QString() : items.first()->text();
    }

    // The lines stored, one text each: "invoice|pupil|description|amount".
    QStringList stored_lines()
    {
        QStringList texts;
        for (const auto& line : school.rows(QStringLiteral("SELECT * FROM Invoice_Lines ORDER BY Invoice_Line_id")))
            texts << QStringLiteral("%1|%2|%3|%4").arg(line["Inv_Line_Inv_id"].toString(), line["Inv_Line_Pupil_id"].toString(),
                                                       line["Description"].toString(), testing_support::money_text(line["Amount"]));
        return texts;
    }

    colours::Rgb invoice_state() const { return field_colour(screen->txt_Invoice_id); }
    colours::Rgb line_state() const { return field_colour(screen->txt_Line_id); }

    int family = 0, amy = 0, ben = 0, spring = 0;
};

TEST_F(InvoiceLinesScreen, ANewInvoiceSavedGoesStraightOnToItsFirstLine)
{
    const int ballet = school.add_course(testing_support::NewCourse(QStringLiteral("Ballet Grade 1")));
    school.put_on_course(amy, ballet);
    open_at(0, -1);
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Ashby"));
    EXPECT_EQ(screen->txt_Invoice_id->text(), QStringLiteral("0"));
    EXPECT_EQ(invoice_state(), pale_blue);
    EXPECT_EQ(line_state(), white);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Invoice"));
    EXPECT_EQ(entries(screen->lst_Terms), (QStringList{QStringLiteral("(Blank)"), QStringLiteral("Spring 2026")}));
    EXPECT_EQ(entries(screen->lst_Activity_Dates), QStringList{QStringLiteral("(None)")});

    retype(screen->txt_Reason, QStringLiteral("Costume"));
    tab_out(screen->txt_Reason);
    EXPECT_EQ(field_colour(screen->txt_Reason), pale_blue);
    choose(screen->lst_Terms, QStringLiteral("(Blank)"));  // for neither a term nor a date
    click(screen->cmd_Update);

    const int invoice = school.scalar(QStringLiteral("SELECT max(Invoice_id) FROM Invoices")).toInt();
    ASSERT_GT(invoice, 0);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT count(*) FROM Invoices WHERE Invoice_Term_Id IS NULL AND "
                                           "Invoice_Activity_Date IS NULL AND Invoice_Generated = 1 AND "
                                           "Invoice_Reason = 'Costume'"))
                  .toInt(),
              1);
    EXPECT_EQ(screen->txt_Invoice_id->text(), QString::number(invoice));
    EXPECT_EQ(invoice_state(), white);
    EXPECT_EQ(field_colour(screen->txt_Reason), white);
    EXPECT_EQ(line_state(), pale_blue);
    EXPECT_EQ(screen->txt_Line_id->text(), QStringLiteral("0"));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Line"));
    EXPECT_EQ(chosen(screen->lst_Pupils), QStringLiteral("Amy"));
    EXPECT_EQ(field_colour(screen->lst_Pupils), pale_blue);
    EXPECT_EQ(entries(screen->lst_Courses), (QStringList{QStringLiteral("(Blank)"), QStringLiteral("Ballet Grade 1")}));

    // Her costume, with nothing chosen in the course and activity lists.
    retype(screen->txt_Amount, QStringLiteral("25"));
    click(screen->cmd_Update_Line);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Line added successfully"));
    EXPECT_EQ(line_state(), white);
    EXPECT_EQ(stored_lines(), QStringList{QStringLiteral("%1|%2||25").arg(invoice).arg(amy)});
}

TEST_F(InvoiceLinesScreen, ANewInvoiceWithAReasonUsedForTheTermGetsTheDuplicateBoxAndNoLineCanBeStarted)
{
    school.add_invoice(family, QStringLiteral("Extra lessons"), spring);
    open_at(0, -1);
    retype(screen->txt_Reason, QStringLiteral("Extra lessons"));
    tab_out(screen->txt_Reason);
    choose(screen->lst_Terms, QStringLiteral("Spring 2026"));
    // That nothing is stored is the entry's own business (invoice_entry_test).
    ScriptedBoxes()
        .expect(QStringLiteral("There is already an invoice with this combination of Reason/Term Name/Activity Date.\n"
                               "Change the Reason and try again."),
                Ok, 0)
        .during([&] { click(screen->cmd_Update); });
    EXPECT_EQ(screen->txt_Invoice_id->text(), QStringLiteral("0"));
    EXPECT_EQ(invoice_state(), pale_blue);
    EXPECT_EQ(screen->txt_Reason->text(), QStringLiteral("Extra lessons"));
    EXPECT_EQ(chosen(screen->lst_Terms), QStringLiteral("Spring 2026"));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Invoice"));

    // A line cannot be started on an invoice not yet saved.
    ScriptedBoxes().expect(QStringLiteral("There are already changes to the Invoice in progress"), Ok, 0).during([&] {
        click(screen->cmd_Add_Line);
    });
    EXPECT_EQ(line_state(), white);
    EXPECT_EQ(invoice_state(), pale_blue);
}

// An invoice change while a line is in progress is refused and undone; Exit
// then asks, and No goes back to the invoices.
TEST_F(InvoiceLinesScreen, AnInvoiceChangeWhileALineIsInProgressIsRefusedAndExitAsks)
{
    QWidget invoices;
    invoices.setObjectName(QStringLiteral("frm_Invoices"));
    Glob_Return_Form() = &invoices;
    const int invoice = school.add_invoice(family, QStringLiteral("Spring fees"), spring);
    const int line = school.add_line(invoice, {{"Amount", 120},
                                               {"Inv_Line_Pupil_id", amy},
                                               {"Inv_Line_Type", code::inv_line_type::Pupil_Only},
                                               {"Description", "Amy's lessons"}});
    open_at(invoice, line);
    EXPECT_EQ(screen->txt_Reason->text(), QStringLiteral("Spring fees"));
    EXPECT_EQ(chosen(screen->lst_Terms), QStringLiteral("Spring 2026"));
    EXPECT_EQ(screen->txt_Line_id->text(), QString::number(line));
    EXPECT_EQ(chosen(screen->lst_Pupils), QStringLiteral("Amy"));
    EXPECT_EQ(screen->txt_Amount->text(),
              vb::Format(QVariant::fromValue(engine::Currency::from_whole(120)), QStringLiteral("currency")));
    EXPECT_EQ(invoice_state(), white);
    EXPECT_EQ(line_state(), white);

    retype(screen->txt_Amount, QStringLiteral("100"));
    tab_out(screen->txt_Amount);
    EXPECT_EQ(line_state(), pale_blue);
    EXPECT_EQ(field_colour(screen->txt_Amount), pale_blue);

    ScriptedBoxes()
        .expect(QStringLiteral("There are already changes to the Line in progress.\nPress Update Line or Cancel first."), Ok, 0)
        .during([&] {
            retype(screen->txt_Reason, QStringLiteral("Spring fees, again"));
            tab_out(screen->txt_Reason);
        });
    EXPECT_EQ(screen->txt_Reason->text(), QStringLiteral("Spring fees"));
    EXPECT_EQ(invoice_state(), white);
    EXPECT_EQ(line_state(), pale_blue);
    EXPECT_EQ(screen->txt_Amount->text(), QStringLiteral("100"));

    retype(screen->txt_Amount, QStringLiteral("12"));  // and straight to Exit: leaving the box counts the change
    ScriptedBoxes()
        .expect(QStringLiteral("You have made changes that have not been stored in the database.\n"
                               "Do you wish to save the changes?"),
                No, 36)
        .during([&] { screen->mnu_Exit->trigger(); settle(); });
    EXPECT_TRUE(screen.isNull());
    EXPECT_TRUE(invoices.isVisible());
    EXPECT_EQ(stored_lines(), QStringList{QStringLiteral("%1|%2|Amy's lessons|120").arg(invoice).arg(amy)});
    invoices.hide();
}

TEST_F(InvoiceLinesScreen, OpenedForANewLineItStoresTheLineAsTyped)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Spring fees"), spring);
    open_at(invoice, 0);
    EXPECT_EQ(line_state(), pale_blue);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Line"));
    EXPECT_EQ(chosen(screen->lst_Pupils), QString());

    choose(screen->lst_Pupils, QStringLiteral("Ben"));
    retype(screen->txt_Amount, QStringLiteral("-15.50"));
    retype(screen->txt_Description, QStringLiteral("Sibling discount"));
    click(screen->cmd_Update_Line);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Line added successfully"));
    EXPECT_EQ(line_state(), white);
    EXPECT_EQ(stored_lines(), QStringList{QStringLiteral("%1|%2|Sibling discount|-15.5").arg(invoice).arg(ben)});
}

TEST_F(InvoiceLinesScreen, ACourseThenAnActivityBringsTheBoxAndTheCourseIsLetGo)
{
    const QDate exam_day(2026, 3, 14);
    const int ballet = school.add_course(testing_support::NewCourse(QStringLiteral("Ballet Grade 1")));
    school.put_on_course(amy, ballet);
    const int exam = school.add_activity(testing_support::NewActivity(QStringLiteral("Grade 1 Exam")));
    school.title_date(exam_day, QStringLiteral("Spring Exams"));
    school.enter(amy, exam, exam_day);
    const int invoice = school.add_invoice(family, QStringLiteral("Exam fees"), std::nullopt, exam_day);
    open_at(invoice, 0);
    choose(screen->lst_Pupils, QStringLiteral("Amy"));
    choose(screen->lst_Courses, QStringLiteral("Ballet Grade 1"));

    ASSERT_EQ(screen->lst_Activities->count(), 2);
    ScriptedBoxes()
        .expect(QStringLiteral("You cannot invoice for both a course and an activity. \nChoose either a course OR an activity."),
                Ok, 0)
        .during([&] { choose(screen->lst_Activities, screen->lst_Activities->item(1)->text()); });
    EXPECT_EQ(chosen(screen->lst_Courses), QString());
    EXPECT_TRUE(chosen(screen->lst_Activities).startsWith(QStringLiteral("Grade 1 Exam on ")));
}

}  // namespace
