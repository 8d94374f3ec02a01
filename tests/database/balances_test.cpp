#include "support/school_fixture.h"

#include <QSet>

#include <gtest/gtest.h>

namespace {

using testing_support::Rows;
using testing_support::SchoolFixture;
using testing_support::money_text;

QSet<int> ids(const Rows& rows, const char* column = "Invoice_id")
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

// An invoice is paid when its receipts match its lines to the fourth place;
// the unpaid list leaves out invoices without receipts, a family's unpaid
// list doesn't; a family whose unpaid invoices cancel out balances to zero.
TEST_F(Balances, EachListHoldsTheInvoicesOrFamiliesItShould)
{
    struct Case {
        const char* query;
        testing_support::Params params;
        const char* column;
        QSet<int> listed;
    };
    const QList<Case> cases = {
        {"Qry_Select_Paid_Invoices", {}, "Invoice_id", {paid}},
        {"Qry_Select_Unpaid_Invoices", {}, "Invoice_id", {part_paid, overpaid, underpaid}},
        {"Qry_Select_Family_Invoices_Unpaid", {{"par_Family_id", smiths}}, "Invoice_id", {part_paid, unpaid}},
        {"Qry_Select_Family_Invoices_All", {{"par_Family_id", smiths}}, "Invoice_id", {paid, part_paid, unpaid}},
        {"Qry_Select_Invoices_Balance_Zero", {}, "Family_id", {joneses}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ids(school.rows(c.query, c.params), c.column), c.listed) << c.query;
}

TEST_F(Balances, TheListsAndTotalsShowWhatIsOwedAndPaidAndLoneInvoicesGo)
{
    for (const auto& row : school.rows("Qry_Select_Unpaid_Invoices")) {
        if (row["Invoice_id"].toInt() == part_paid) {
            EXPECT_EQ(money_text(row["Owed"]) + "/" + money_text(row["Paid"]), "50/20");
        }
    }
    for (const auto& row : school.rows("Qry_Select_Family_Invoices_Unpaid", {{"par_Family_id", smiths}})) {
        if (row["Invoice_id"].toInt() == unpaid) {
            EXPECT_TRUE(row["Paid"].isNull());
        }
    }
    const Rows balanced = school.rows("Qry_Select_Invoices_Balance_Zero");
    ASSERT_EQ(balanced.size(), 1u);
    EXPECT_EQ(money_text(balanced[0]["SumOwed"]) + "/" + money_text(balanced[0]["SumPaid"]), "50/50");

    // A family's totals are summed exactly.
    const Rows paid_total = school.rows("Qry_Select_Family_Paid", {{"par_Family_id", smiths}});
    ASSERT_EQ(paid_total.size(), 1u);
    EXPECT_EQ(money_text(paid_total[0]["Paid"]), "20.3");
    const Rows owed_total = school.rows("Qry_Select_Family_Owes", {{"par_Family_id", smiths}});
    ASSERT_EQ(owed_total.size(), 1u);
    EXPECT_EQ(money_text(owed_total[0]["Owes"]), "90.3");
    const Rows invoice_total = school.rows("Qry_Select_Invoice_Amount", {{"par_Invoice_id", paid}});
    EXPECT_EQ(money_text(invoice_total[0]["total"]), "0.3");

    // Only invoices with neither line nor receipt are deleted as lone.
    const int lone = school.add_invoice(smiths, "Nothing yet");
    const int receipt_only = school.add_invoice(smiths, "Deposit");
    school.add_receipt(receipt_only, 5);
    ASSERT_TRUE(school.run("Qry_Delete_Lone_Invoices"));
    const QSet<int> left = ids(school.rows("SELECT Invoice_id FROM Invoices"));
    EXPECT_FALSE(left.contains(lone));
    EXPECT_EQ(left, QSet<int>({paid, part_paid, unpaid, overpaid, underpaid, receipt_only}));
}

}  // namespace
