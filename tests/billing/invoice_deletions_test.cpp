#include "billing/auto_invoicing.h"
#include "billing/invoice_deletions.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "invoicing_school.h"
#include "shell/selection_lists.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

namespace {

using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

class InvoiceDeletionTest : public ::testing::Test {
protected:
    // The Spring term invoiced for Ashby, Brook and Cole by the default scripts.
    void invoice_spring()
    {
        Sel_Terms().append(school.spring);
        screen.prepare();
        ASSERT_TRUE(screen.insert_term());
    }
    int invoice_of(int family)
    {
        return school.scalar(QStringLiteral("SELECT Invoice_id FROM Invoices WHERE Invoice_Family_Id = %1").arg(family)).toInt();
    }

    testing_support::InvoicingSchool school;
    AutoInvoicing screen;
};

TEST_F(InvoiceDeletionTest, SelectedDeletionIsRefusedWholeWhenAnyInvoiceHasAReceipt)
{
    invoice_spring();
    school.add_receipt(invoice_of(school.brook), 50);
    screen.prepare();
    const QString before = school.dump();

    ScriptedBoxes()
        .expect(QStringLiteral("Do you want to delete invoices for the given term dates and families?"), Yes, 36)
        .expect(QStringLiteral("Cannot delete the Invoices because there are 1 receipts for them"), Ok, 16)
        .during([&] { screen.delete_selected_terms(); });
    EXPECT_EQ(screen.status, QStringLiteral("Error during Deletion of selected invoices"));
    EXPECT_EQ(school.dump(), before);
}

TEST_F(InvoiceDeletionTest, SelectedDeletionTakesTheChosenFamiliesOrCoursesInvoicesAndLines)
{
    invoice_spring();
    Sel_Pupils().append(school.cara);
    screen.prepare();
    ScriptedBoxes().expect(QStringLiteral("Do you want to delete invoices for the given term dates and families?"), Yes)
        .during([&] { screen.delete_selected_terms(); });
    EXPECT_EQ(screen.status, QStringLiteral("Deletion of (1) selected invoices successful"));
    EXPECT_EQ(school.invoices().size(), 2);
    EXPECT_EQ(school.lines().size(), 3);
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices")), 0);

    // Chosen courses pick the invoices with a line for them: Ashby's, for Ben's jazz.
    Sel_Pupils().reset();
    Sel_Courses().append(school.jazz);
    screen.prepare();
    int count = 0;
    ASSERT_TRUE(DB_Delete_Selected_Invoices(true, count));
    EXPECT_EQ(count, 1);
    EXPECT_EQ(school.invoices(), QStringList{QStringLiteral("Cole|Invoice for Spring 2026|0")});
}

TEST_F(InvoiceDeletionTest, SelectedDeletionNeedsATermAndCanBeCancelled)
{
    invoice_spring();
    Sel_Terms().reset();
    screen.prepare();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("There must be one specified term. \nPlease choose one by pressing 'Criteria'."), Ok);
    boxes.expect(QStringLiteral("There must be one specified activity date. \nPlease choose one by pressing 'Criteria'."), Ok);
    screen.delete_selected_terms();
    screen.delete_selected_activities();
    Sel_Terms().append(school.spring);
    boxes.expect(QStringLiteral("Do you want to delete invoices for the given term dates and families?"), No);
    screen.delete_selected_terms();
    EXPECT_EQ(screen.status, QStringLiteral("Deletion Cancelled"));
    EXPECT_EQ(school.invoices().size(), 3);
}

TEST_F(InvoiceDeletionTest, PaidDeletionTakesPaidInvoicesAndFamiliesThatBalance)
{
    // Ashby: 100 paid 120 and 50 paid 30, which balance. Brook: 80 paid 80.
    // Cole: 60 paid 20, still owing. Dyer: 0.10 + 0.20 paid 0.30, paid to the penny.
    const int ashby_1 = school.add_invoice(school.ashby, QStringLiteral("Uniform"));
    school.add_line(ashby_1, 100);
    school.add_receipt(ashby_1, 120);
    const int ashby_2 = school.add_invoice(school.ashby, QStringLiteral("Shoes"));
    school.add_line(ashby_2, 50);
    school.add_receipt(ashby_2, 30);
    const int brook = school.add_invoice(school.brook, QStringLiteral("Uniform"));
    school.add_line(brook, 80);
    school.add_receipt(brook, 80);
    const int cole = school.add_invoice(school.cole, QStringLiteral("Uniform"));
    school.add_line(cole, 60);
    school.add_receipt(cole, 20);
    const int dyer = school.add_invoice(school.dyer, QStringLiteral("Tights"));
    school.add_line(dyer, 0.10);
    school.add_line(dyer, 0.20);
    school.add_receipt(dyer, 0.30);

    int balanced = 0;
    ASSERT_TRUE(DB_Delete_Balanced_Invoices(balanced));
    EXPECT_EQ(balanced, 2);
    EXPECT_EQ(school.count(QStringLiteral("Invoices WHERE Invoice_Family_Id = %1").arg(school.ashby)), 0);

    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you want to delete all the paid invoices and receipts?"), Yes, 36);
    screen.delete_paid();
    EXPECT_EQ(screen.status, QStringLiteral("Deletion of Paid Invoices (2) successful"));
    EXPECT_EQ(school.invoices(), QStringList{QStringLiteral("Cole|Uniform|1")});
    EXPECT_EQ(school.count(QStringLiteral("Receipts")), 1);
    EXPECT_EQ(school.count(QStringLiteral("Tmp_Invoices")), 0);

    boxes.expect(QStringLiteral("Do you want to delete all the paid invoices and receipts?"), Yes);
    screen.delete_paid();
    EXPECT_EQ(screen.status, QStringLiteral("Nothing Deleted"));
}

TEST_F(InvoiceDeletionTest, DeletingEverythingAsksFirstAndCountsTheInvoices)
{
    invoice_spring();
    school.add_receipt(invoice_of(school.brook), 120);
    ScriptedBoxes boxes;
    const QString question = QStringLiteral("Do you REALLY want to delete EVERY invoice and receipt in the database?");
    boxes.expect(question, No, 36);
    screen.delete_all();
    EXPECT_EQ(screen.status, QStringLiteral("Deletion Cancelled"));
    EXPECT_EQ(school.invoices().size(), 3);

    boxes.expect(question, Yes);
    screen.delete_all();
    EXPECT_EQ(screen.status, QStringLiteral("All (3) Invoices and Receipts successfully Deleted"));
    EXPECT_EQ(school.count(QStringLiteral("Invoices")) + school.count(QStringLiteral("Invoice_Lines"))
                  + school.count(QStringLiteral("Receipts")),
              0);

    boxes.expect(question, Yes);
    screen.delete_all();
    EXPECT_EQ(screen.status, QStringLiteral("Nothing Deleted"));
}

TEST_F(InvoiceDeletionTest, TmpInvoicesIsEmptiedBeforeTheInvoicesItListsGo)
{
    const int kept = school.add_invoice(school.ashby, QStringLiteral("Kept"));
    const int gone = school.add_invoice(school.brook, QStringLiteral("Gone"));
    school.exec(QStringLiteral("INSERT INTO Tmp_Invoices (Tmp_Invoice_id) VALUES (%1)").arg(gone));
    int count = -1;
    ASSERT_TRUE(Program_Workspace().BeginTrans());
    EXPECT_TRUE(DB_Delete_Tmp_Invoices(count));
    ASSERT_TRUE(Program_Workspace().CommitTrans());
    EXPECT_EQ(count, 1);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Invoice_id FROM Invoices")).toInt(), kept);
    EXPECT_TRUE(DB_Delete_Tmp_Invoices(count));
    EXPECT_EQ(count, 0);
}

}  // namespace
