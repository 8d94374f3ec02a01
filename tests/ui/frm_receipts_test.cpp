// The Money Received screen: that it shows a family's account as the account
// logic works it out, proposes the outstanding amount, records, changes and
// deletes receipts, writes debts off and looks for families that owe.

#include "ui/billing/frm_receipts.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/transfer_ids.h"
#include "support/scripted_boxes.h"
#include "toolkit/gen_colours.h"
#include "ui/billing/frm_invoices.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

class ReceiptsScreen : public ScreenTest<frm_Receipts> {
protected:
    void TearDown() override
    {
        Glob_Xfer_Family_id() = -1;
        Glob_Xfer_Invoice_id() = -1;
        ScreenTest::TearDown();
    }
    // A family with one invoice of the given lines.
    int family_owing(const QString& name, std::initializer_list<double> lines)
    {
        const int family = school.add_family(name);
        const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
        for (double amount : lines)
            school.add_line(invoice, amount);
        return family;
    }
    QString receipts_total() const
    {
        return school_total(QStringLiteral("SELECT round(sum(Receipt_Amount), 4) FROM Receipts"));
    }
    QString school_total(const QString& sql) const
    {
        return const_cast<ReceiptsScreen*>(this)->school.scalar(sql).toString();
    }
    bool ends_with(const QLineEdit* box, const QString& figure) const { return box->text().endsWith(figure); }
};

TEST_F(ReceiptsScreen, AnUnpaidInvoiceProposesWhatIsOwedAndUpdateRecordsItToThePenny)
{
    family_owing(QStringLiteral("Ashby"), {0.10, 0.20});
    open();
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Ashby"));
    EXPECT_EQ(field_colour(screen->txt_Receipt_id), colours::Proposed);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Receipt"));
    EXPECT_TRUE(ends_with(screen->txt_Amount, QStringLiteral("0.30"))) << screen->txt_Amount->text().toStdString();
    EXPECT_EQ(field_colour(screen->txt_Outstanding), colours::Owing);
    EXPECT_EQ(field_colour(screen->txt_Overall_Posn), colours::Owing);

    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Receipt added successfully"));
    EXPECT_EQ(receipts_total(), QStringLiteral("0.3"));
    EXPECT_EQ(screen->lst_Receipts->count(), 1);
    EXPECT_TRUE(ends_with(screen->txt_Outstanding, QStringLiteral("0.00")));
    EXPECT_TRUE(ends_with(screen->txt_Overall_Posn, QStringLiteral("0.00")));
    EXPECT_EQ(field_colour(screen->txt_Overall_Posn), colours::Pale_Yellow);
    EXPECT_EQ(field_colour(screen->txt_Receipt_id), colours::At_Rest);
}

TEST_F(ReceiptsScreen, ATypedAmountIsCheckedOnLeavingAndTheChangeCanBeCancelled)
{
    family_owing(QStringLiteral("Ashby"), {40});
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This is not a valid currency"), Ok);
    retype(screen->txt_Amount, QStringLiteral("forty"));
    tab_out(screen->txt_Amount);
    EXPECT_EQ(field_colour(screen->txt_Receipt_id), colours::Proposed);

    retype(screen->txt_Amount, QStringLiteral("25"));
    tab_out(screen->txt_Amount);
    EXPECT_EQ(field_colour(screen->txt_Receipt_id), colours::Highlight);
    EXPECT_EQ(field_colour(screen->txt_Amount), colours::Highlight);
    click(screen->cmd_Cancel);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Addition cancelled"));
    EXPECT_EQ(field_colour(screen->txt_Receipt_id), colours::At_Rest);
    EXPECT_EQ(school.count(QStringLiteral("Receipts")), 0);
}

TEST_F(ReceiptsScreen, AReceiptIsChangedAndDeletedFromTheList)
{
    const int family = family_owing(QStringLiteral("Ashby"), {40});
    school.add_receipt(school.scalar(QStringLiteral("SELECT Invoice_id FROM Invoices")).toInt(), 30);
    Q_UNUSED(family);
    open();
    EXPECT_EQ(field_colour(screen->txt_Receipt_id), colours::At_Rest);
    EXPECT_TRUE(ends_with(screen->txt_Amount, QStringLiteral("30.00")));
    EXPECT_TRUE(ends_with(screen->txt_Outstanding, QStringLiteral("10.00")));

    retype(screen->txt_Amount, QStringLiteral("40"));
    tab_out(screen->txt_Amount);
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Receipt updated successfully"));
    EXPECT_EQ(receipts_total(), QStringLiteral("40"));

    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to delete this receipt?"), Yes, 36);
    click(screen->cmd_Delete);
    EXPECT_EQ(school.count(QStringLiteral("Receipts")), 0);
    EXPECT_EQ(screen->lst_Receipts->item(0)->text(), QStringLiteral("(None)"));
    EXPECT_EQ(field_colour(screen->txt_Overall_Posn), colours::Owing);
}

TEST_F(ReceiptsScreen, AFamilyWithoutInvoicesCannotBeGivenAReceipt)
{
    school.add_family(QStringLiteral("Ashby"));
    open();
    EXPECT_EQ(screen->lst_Invoices->item(0)->text(), QStringLiteral("(None)"));
    EXPECT_EQ(screen->lst_Receipts->item(0)->text(), QStringLiteral("(None)"));
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("There must be an Invoice before you can add a receipt"));
}

TEST_F(ReceiptsScreen, MovingOnDiscardsAnUntouchedProposal)
{
    family_owing(QStringLiteral("Ashby"), {40});
    school.add_family(QStringLiteral("Brook"));
    open();
    click(screen->cmd_Next);
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Brook"));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Automatic receipt addition cancelled"));
    EXPECT_EQ(school.count(QStringLiteral("Receipts")), 0);
}

TEST_F(ReceiptsScreen, WritingOffTheOutstandingAmountClearsTheDebt)
{
    family_owing(QStringLiteral("Ashby"), {155.8333});
    open();
    click(screen->cmd_Cancel);  // the proposal is left aside
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral(" Written off, by raising a discount line for the amount?"), Yes, 36);
    boxes.expect(QStringLiteral("Outstanding amount written off"), Ok);
    click(screen->cmd_Bad_Debt);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Line added successfully"));
    EXPECT_EQ(school_total(QStringLiteral("SELECT round(sum(Amount), 4) FROM Invoice_Lines")), QStringLiteral("0"));
    EXPECT_EQ(field_colour(screen->txt_Overall_Posn), colours::Pale_Yellow);
}

TEST_F(ReceiptsScreen, NextOwingPassesFamiliesThatOweNothingOverallAndStopsAtTheEnd)
{
    school.add_family(QStringLiteral("Ashby"));
    const int brook = family_owing(QStringLiteral("Brook"), {100});
    // One invoice overpaid, another underpaid by as much: nothing owed overall.
    const int cole = school.add_family(QStringLiteral("Cole"));
    const int over = school.add_invoice(cole, QStringLiteral("Over"));
    school.add_line(over, 100);
    school.add_receipt(over, 120);
    const int under = school.add_invoice(cole, QStringLiteral("Under"));
    school.add_line(under, 50);
    school.add_receipt(under, 30);
    school.add_family(QStringLiteral("Dyer"));
    open();

    click(screen->cmd_Next_Owing);
    EXPECT_EQ(screen->txt_Family_id->text().toInt(), brook);
    click(screen->cmd_Cancel);
    click(screen->cmd_Next_Owing);
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Dyer"));
    EXPECT_TRUE(screen->txt_Status->text().startsWith(QStringLiteral("There are no more families. ")));
}

TEST_F(ReceiptsScreen, InvoicesMenuHandsTheFamilyAndInvoiceOver)
{
    family_owing(QStringLiteral("Ashby"), {40});
    const int brook = family_owing(QStringLiteral("Brook"), {10});
    const int invoice =
        school.scalar(QStringLiteral("SELECT Invoice_id FROM Invoices WHERE Invoice_Family_id = %1").arg(brook)).toInt();
    open();
    Glob_Return_Form() = screen;  // as the menu leaves it when it opens the screen
    screen->cmb_Names->setCurrentIndex(1);
    screen->cmb_Names_Click();
    click(screen->cmd_Cancel);  // the proposal is left aside
    screen->mnu_Invoices->trigger();
    settle();
    EXPECT_EQ(Glob_Xfer_Family_id(), brook);
    EXPECT_EQ(Glob_Xfer_Invoice_id(), invoice);
    auto* invoices = qobject_cast<frm_Invoices*>(Loaded_Screen(QStringLiteral("frm_Invoices")));
    ASSERT_NE(invoices, nullptr);
    for (int wait = 0; wait < 100 && invoices->txt_Family_Name->text() != QStringLiteral("Brook"); ++wait)
        QTest::qWait(10);
    EXPECT_EQ(invoices->txt_Family_Name->text(), QStringLiteral("Brook"));
    EXPECT_EQ(invoices->chosen_invoice_id(), invoice);
    Unload(invoices);
}

}  // namespace

namespace {

TEST_F(ReceiptsScreen, ArrivingFromAnotherScreenShowsTheFamilyAndInvoiceHandedOver)
{
    const int ashby = family_owing(QStringLiteral("Ashby"), {40});
    const int older = school.scalar(QStringLiteral("SELECT Invoice_id FROM Invoices")).toInt();
    school.exec(QStringLiteral("UPDATE Invoices SET Invoice_Date = '2025-01-01 00:00:00'"));
    school.add_line(school.add_invoice(ashby, QStringLiteral("Newer")), 10);
    Glob_Xfer_Family_id() = ashby;
    Glob_Xfer_Invoice_id() = older;
    open();
    settle();
    EXPECT_EQ(screen->chosen_invoice_id(), older);
    EXPECT_TRUE(ends_with(screen->txt_Amount, QStringLiteral("40.00")));
}

}  // namespace
