#include "support/school_fixture.h"

#include <QSet>

#include <gtest/gtest.h>

namespace {

using testing_support::Rows;
using testing_support::SchoolFixture;
using testing_support::money;

QSet<int> invoice_ids(const Rows& rows, const char* column = "Invoice_id")
{
    QSet<int> ids;
    for (const auto& row : rows)
        ids.insert(row[column].toInt());
    return ids;
}

// The Smiths have paid one invoice in pennies, part of another and nothing of
// a third. The Joneses overpaid one invoice by what they underpaid another.
class Balances : public ::testing::Test {
protected:
    Balances()
    {
        school.add_line(paid, 0.10);
        school.add_line(paid, 0.20);
        school.add_receipt(paid, 0.30);
        school.add_line(part_paid, 50);
        school.add_receipt(part_paid, 20);
        school.add_line(unpaid, 40);
        school.add_line(overpaid, 30);
        school.add_receipt(overpaid, 40);
        school.add_line(underpaid, 20);
        school.add_receipt(underpaid, 10);
    }

    SchoolFixture school;
    int smiths = school.add_family("Smith");
    int joneses = school.add_family("Jones");
    int paid = school.add_invoice(smiths, "Uniform");
    int part_paid = school.add_invoice(smiths, "Summer school");
    int unpaid = school.add_invoice(smiths, "Shoes");
    int overpaid = school.add_invoice(joneses, "Uniform");
    int underpaid = school.add_invoice(joneses, "Shoes");
};

TEST_F(Balances, AnInvoiceIsPaidWhenItsReceiptsMatchItsLinesToTheFourthPlace)
{
    EXPECT_EQ(invoice_ids(school.rows("Qry_Select_Paid_Invoices")), QSet<int>({paid}));
}

TEST_F(Balances, TheUnpaidListLeavesOutInvoicesWithoutReceipts)
{
    const Rows listed = school.rows("Qry_Select_Unpaid_Invoices");
    EXPECT_EQ(invoice_ids(listed), QSet<int>({part_paid, overpaid, underpaid}));
    for (const auto& row : listed) {
        if (row["Invoice_id"].toInt() == part_paid) {
            EXPECT_EQ(money(row["Owed"]), 50);
            EXPECT_EQ(money(row["Paid"]), 20);
        }
    }
}

TEST_F(Balances, AFamilysUnpaidListShowsInvoicesWithoutReceiptsToo)
{
    const Rows listed = school.rows("Qry_Select_Family_Invoices_Unpaid", {{"par_Family_id", smiths}});
    EXPECT_EQ(invoice_ids(listed), QSet<int>({part_paid, unpaid}));
    for (const auto& row : listed) {
        if (row["Invoice_id"].toInt() == unpaid) {
            EXPECT_TRUE(row["Paid"].isNull());
        }
    }
    EXPECT_EQ(invoice_ids(school.rows("Qry_Select_Family_Invoices_All", {{"par_Family_id", smiths}})),
              QSet<int>({paid, part_paid, unpaid}));
}

TEST_F(Balances, AFamilyWhoseUnpaidInvoicesCancelOutBalancesToZero)
{
    const Rows balanced = school.rows("Qry_Select_Invoices_Balance_Zero");
    ASSERT_EQ(balanced.size(), 1u);
    EXPECT_EQ(balanced[0]["Family_id"].toInt(), joneses);
    EXPECT_EQ(money(balanced[0]["SumOwed"]), 50);
    EXPECT_EQ(money(balanced[0]["SumPaid"]), 50);
}

TEST_F(Balances, AFamilysTotalsAreSummedExactly)
{
    const Rows paid_total = school.rows("Qry_Select_Family_Paid", {{"par_Family_id", smiths}});
    ASSERT_EQ(paid_total.size(), 1u);
    EXPECT_EQ(money(paid_total[0]["Paid"]), 20.3);
    const Rows owed_total = school.rows("Qry_Select_Family_Owes", {{"par_Family_id", smiths}});
    ASSERT_EQ(owed_total.size(), 1u);
    EXPECT_EQ(money(owed_total[0]["Owes"]), 90.3);
    const Rows invoice_total = school.rows("Qry_Select_Invoice_Amount", {{"par_Invoice_id", paid}});
    EXPECT_EQ(money(invoice_total[0]["total"]), 0.3);
}

TEST_F(Balances, OnlyInvoicesWithNeitherLineNorReceiptAreDeletedAsLone)
{
    const int lone = school.add_invoice(smiths, "Nothing yet");
    const int receipt_only = school.add_invoice(smiths, "Deposit");
    school.add_receipt(receipt_only, 5);
    ASSERT_TRUE(school.run("Qry_Delete_Lone_Invoices"));
    const QSet<int> left = invoice_ids(school.rows("SELECT Invoice_id FROM Invoices"));
    EXPECT_FALSE(left.contains(lone));
    EXPECT_EQ(left, QSet<int>({paid, part_paid, unpaid, overpaid, underpaid, receipt_only}));
}

}  // namespace
