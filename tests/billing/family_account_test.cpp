// A family's account as the money screens see it: invoice lists, totals,
// receipts, balances, write-offs and single deletions, all worked out in
// currency from the lines and receipts.

#include "billing/family_account.h"
#include "billing/invoice_removal.h"
#include "billing/receipts.h"
#include "engine/msg_box.h"
#include "database/db_handling.h"
#include "engine/workspace.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace {

using engine::Currency;
using testing_support::ScriptedBoxes;

const QString module = QStringLiteral("fTest");

Currency money(const char* text)
{
    return Currency::from_units(static_cast<int64_t>(std::llround(std::stod(text) * Currency::Scale)));
}

class FamilyAccountTest : public ::testing::Test {
protected:
    Currency position_of(int family)
    {
        Currency position;
        EXPECT_TRUE(Account_Overall_Position(family, position, module));
        return position;
    }
    Currency total_of(int invoice)
    {
        Currency total;
        EXPECT_TRUE(Account_Invoice_Total(invoice, total, module));
        return total;
    }
    QVector<AccountEntry> invoices_of(int family, bool outstanding_only = false)
    {
        QVector<AccountEntry> invoices;
        EXPECT_TRUE(Account_Family_Invoices(family, outstanding_only, invoices, module));
        return invoices;
    }
    void record(int invoice, const char* amount)
    {
        ReceiptValues receipt;
        receipt.invoice_id = invoice;
        receipt.amount = money(amount);
        receipt.method = QStringLiteral("Cash");
        receipt.date = QDateTime(QDate(2026, 9, 14), QTime(0, 0));
        ASSERT_TRUE(Insert_Receipt(receipt));
    }

    testing_support::SchoolForRuns school;
    int family = school.add_family(QStringLiteral("Ashby"));
};

TEST_F(FamilyAccountTest, InvoicesAreListedNewestFirstWithTheirActivityDates)
{
    const int term = school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 28));
    const int spring = school.add_invoice(family, QStringLiteral("Invoice for Spring"), term);
    const int show = school.add_invoice(family, QStringLiteral("Invoice for Summer Show"), std::nullopt, QDate(2026, 6, 20));
    school.exec(QStringLiteral("UPDATE Invoices SET Invoice_Date = '2026-01-02 10:00:00' WHERE Invoice_id = %1").arg(spring));
    school.exec(QStringLiteral("UPDATE Invoices SET Invoice_Date = '2026-05-01 09:00:00' WHERE Invoice_id = %1").arg(show));

    const QVector<AccountEntry> expected = {
        {QStringLiteral("01 May 2026  Invoice for Summer Show on 20 Jun 2026"), show},
        {QStringLiteral("02 Jan 2026  Invoice for Spring"), spring},
    };
    EXPECT_EQ(invoices_of(family), expected);
    EXPECT_TRUE(invoices_of(school.add_family(QStringLiteral("Brook"))).isEmpty());
}

TEST_F(FamilyAccountTest, OutstandingOnlyLeavesOutInvoicesPaidToThePenny)
{
    const int paid = school.add_invoice(family, QStringLiteral("Paid"));
    school.add_line(paid, 0.10);
    school.add_line(paid, 0.20);
    const int unpaid = school.add_invoice(family, QStringLiteral("Unpaid"));
    school.add_line(unpaid, 40);
    const int no_receipt = school.add_invoice(family, QStringLiteral("No receipt yet"));
    school.add_line(no_receipt, 5);
    record(paid, "0.30");
    record(unpaid, "39.99");

    QVector<int> listed;
    for (const AccountEntry& entry : invoices_of(family, true))
        listed.append(entry.id);
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed, (QVector<int>{unpaid, no_receipt}));
}

TEST_F(FamilyAccountTest, AReceiptOfPointThreeForPointOneAndPointTwoLeavesNothingOwed)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    school.add_line(invoice, 0.10);
    school.add_line(invoice, 0.20);
    EXPECT_EQ(total_of(invoice), money("0.30"));
    EXPECT_EQ(position_of(family), money("0.30"));

    record(invoice, "0.30");
    QVector<AccountEntry> receipts;
    Currency received;
    ASSERT_TRUE(Account_Invoice_Receipts(invoice, receipts, received, module));
    EXPECT_EQ(received, money("0.30"));
    ASSERT_EQ(receipts.size(), 1);
    EXPECT_TRUE(receipts[0].text.endsWith(QStringLiteral("0.30 on 14 Sep 2026"))) << receipts[0].text.toStdString();
    EXPECT_EQ(position_of(family), Currency());
}

TEST_F(FamilyAccountTest, PositionIsEverythingOwedLessEverythingPaidAcrossInvoices)
{
    const int first = school.add_invoice(family, QStringLiteral("First"));
    school.add_line(first, 100);
    const int second = school.add_invoice(family, QStringLiteral("Second"));
    school.add_line(second, 50);
    record(first, "120");
    record(second, "30");
    EXPECT_EQ(position_of(family), Currency());
    EXPECT_EQ(total_of(school.add_invoice(family, QStringLiteral("No lines"))), Currency());
    EXPECT_EQ(position_of(school.add_family(QStringLiteral("Nothing at all"))), Currency());
}

TEST_F(FamilyAccountTest, ReceiptsAreChangedAndDeletedOnlyOnTheirOwnInvoice)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    record(invoice, "25");
    const int receipt = school.scalar(QStringLiteral("SELECT max(Receipt_id) FROM Receipts")).toInt();

    ReceiptValues changed;
    changed.invoice_id = invoice;
    changed.amount = money("-2.5");  // a refund is a negative receipt
    changed.method = QStringLiteral("Standing order");
    changed.notes = QStringLiteral("refund");
    changed.date = QDateTime(QDate(2026, 10, 1), QTime(0, 0));
    ASSERT_TRUE(Update_Receipt(receipt, changed));
    ReceiptValues read;
    bool found = false;
    ASSERT_TRUE(Read_Receipt(receipt, read, found));
    ASSERT_TRUE(found);
    EXPECT_EQ(read.amount, money("-2.5"));
    EXPECT_EQ(read.method, QStringLiteral("Standing order"));
    EXPECT_EQ(read.notes, QStringLiteral("refund"));
    EXPECT_EQ(read.date.date(), QDate(2026, 10, 1));

    changed.invoice_id = school.add_invoice(family, QStringLiteral("Another"));
    changed.amount = money("99");
    ASSERT_TRUE(Update_Receipt(receipt, changed));  // not this receipt's invoice: nothing changes
    ASSERT_TRUE(Read_Receipt(receipt, read, found));
    EXPECT_EQ(read.amount, money("-2.5"));

    ASSERT_TRUE(Delete_Receipt(receipt));
    ASSERT_TRUE(Read_Receipt(receipt, read, found));
    EXPECT_FALSE(found);
}

TEST_F(FamilyAccountTest, WritingOffRaisesALineForMinusWhatIsOutstanding)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    school.add_line(invoice, 155.8333);
    record(invoice, "100");
    long long affected = 0;
    ASSERT_TRUE(Insert_Bad_Debt(invoice, QString(), money("55.8333"), affected));
    EXPECT_EQ(affected, 1);
    EXPECT_EQ(position_of(family), Currency());
    const auto lines = school.rows(QStringLiteral("SELECT Inv_Line_Type, Description, Inv_Line_Pupil_id FROM Invoice_Lines "
                                                  "WHERE Inv_Line_Type = 9"));
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0]["Description"].toString(), QStringLiteral("Amount written off"));
    EXPECT_TRUE(lines[0]["Inv_Line_Pupil_id"].isNull());

    // An overpaid invoice is written off by a positive line, with the notes as its words.
    const int overpaid = school.add_invoice(family, QStringLiteral("Overpaid"));
    school.add_line(overpaid, 10);
    record(overpaid, "12");
    ASSERT_TRUE(Insert_Bad_Debt(overpaid, QStringLiteral("Kept as credit"), money("-2"), affected));
    EXPECT_EQ(total_of(overpaid), money("12"));
}

TEST_F(FamilyAccountTest, LinesShowPupilsFirstAndFamilyLinesNeverMatchTheirNullTest)
{
    const int amy = school.add_pupil(family, QStringLiteral("Amy"));
    const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    const int ballet = school.add_line(invoice, {{QStringLiteral("Inv_Line_Pupil_id"), amy},
                                                 {QStringLiteral("Amount"), 120},
                                                 {QStringLiteral("Description"), QStringLiteral("Amy's Ballet")}});
    school.add_line(invoice, {{QStringLiteral("Amount"), -5}, {QStringLiteral("Description"), QStringLiteral("Discount")}});
    QVector<AccountEntry> lines;
    ASSERT_TRUE(Account_Invoice_Lines(invoice, lines, module));
    // The family's own lines are looked for with "= NULL", which never holds.
    ASSERT_EQ(lines.size(), 1);
    EXPECT_EQ(lines[0].id, ballet);
    EXPECT_TRUE(lines[0].text.startsWith(QStringLiteral("Amy --- "))) << lines[0].text.toStdString();
    EXPECT_TRUE(lines[0].text.endsWith(QStringLiteral("120.00 Amy's Ballet"))) << lines[0].text.toStdString();
}

TEST_F(FamilyAccountTest, DeletingAnInvoiceTakesItsLinesAndItsPlaceInTheRunList)
{
    const int invoice = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    school.add_line(invoice, 10);
    school.add_line(invoice, 20);
    const int kept = school.add_invoice(family, QStringLiteral("Kept"));
    school.add_line(kept, 30);
    school.exec(QStringLiteral("INSERT INTO Tmp_Invoices (tmp_Invoice_id) VALUES (%1)").arg(invoice));

    EXPECT_EQ(Delete_Invoice(invoice), InvoiceDeletion::Deleted);
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 1);
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines")), 1);
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices")), 0);
    EXPECT_EQ(Delete_Invoice(invoice), InvoiceDeletion::Not_Deleted);
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0);

    int receipts = -1;
    record(kept, "30");
    ASSERT_TRUE(Count_Invoice_Receipts(kept, receipts));
    EXPECT_EQ(receipts, 1);

    // A line goes whatever the invoice has received; the balance follows.
    const int line = school.scalar(QStringLiteral("SELECT Invoice_Line_id FROM Invoice_Lines")).toInt();
    long long affected = 0;
    ASSERT_TRUE(Delete_Invoice_Line(line, invoice, affected));
    EXPECT_EQ(affected, 0);  // not a line of that invoice
    ASSERT_TRUE(Delete_Invoice_Line(line, kept, affected));
    EXPECT_EQ(affected, 1);
    EXPECT_EQ(position_of(family), money("-30"));
}

}  // namespace
