// The Invoices screen: a family's invoices and the chosen one's lines, the
// deletion guards, and the hand-over to the Invoice Lines screen and back.

#include "ui/billing/frm_invoices.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/transfer_ids.h"
#include "support/scripted_boxes.h"
#include "ui/billing/frm_invoice_lines.h"
#include "ui/shell/screen_catalogue.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

class InvoicesScreen : public ScreenTest<frm_Invoices> {
protected:
    void TearDown() override
    {
        if (QWidget* lines = Loaded_Screen(QStringLiteral("frm_Invoice_Lines")))
            Unload(lines);
        Glob_Xfer_Family_id() = -1;
        Glob_Xfer_Invoice_id() = -1;
        ScreenTest::TearDown();
    }
    QStringList texts(const QListWidget* list) const
    {
        QStringList shown;
        for (int i = 0; i < list->count(); ++i)
            shown << list->item(i)->text();
        return shown;
    }

    int family = school.add_family(QStringLiteral("Ashby"));
    int amy = school.add_pupil(family, QStringLiteral("Amy"));
};

TEST_F(InvoicesScreen, AFamilyWithoutInvoicesHasNothingToDelete)
{
    open();
    EXPECT_EQ(texts(screen->lst_Invoices), QStringList{QStringLiteral("(None)")});
    EXPECT_EQ(texts(screen->lst_Lines), QStringList{QStringLiteral("(None)")});
    click(screen->cmd_Delete_Invoice);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("There are no Invoices to select"));
}

TEST_F(InvoicesScreen, TheChosenInvoicesLinesAreShownAndAnInvoiceWithoutLinesIsPointedAt)
{
    const int empty = school.add_invoice(family, QStringLiteral("Empty"));
    const int spring = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    school.exec(QStringLiteral("UPDATE Invoices SET Invoice_Date = '2026-01-01 00:00:00' WHERE Invoice_id = %1").arg(empty));
    school.add_line(spring, {{QStringLiteral("Inv_Line_Pupil_id"), amy},
                             {QStringLiteral("Amount"), 120},
                             {QStringLiteral("Description"), QStringLiteral("Amy's Ballet")}});
    open();
    ASSERT_EQ(screen->lst_Invoices->count(), 2);
    EXPECT_EQ(screen->txt_Invoice_id->text().toInt(), spring);
    ASSERT_EQ(screen->lst_Lines->count(), 1);
    EXPECT_TRUE(screen->lst_Lines->item(0)->text().startsWith(QStringLiteral("Amy --- ")));

    QTest::mouseClick(screen->lst_Invoices->viewport(), Qt::LeftButton, Qt::NoModifier,
                      screen->lst_Invoices->visualItemRect(screen->lst_Invoices->item(1)).center());
    settle();
    EXPECT_EQ(screen->txt_Invoice_id->text().toInt(), empty);
    EXPECT_EQ(texts(screen->lst_Lines), QStringList{QStringLiteral("**** (None) - Why are there no lines for this invoice?")});
}

TEST_F(InvoicesScreen, AnInvoiceWithAReceiptStaysButItsLinesMayGo)
{
    const int spring = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    school.add_line(spring, {{QStringLiteral("Inv_Line_Pupil_id"), amy}, {QStringLiteral("Amount"), 120}});
    school.add_receipt(spring, 100);
    open();
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("There are 1 Receipts on this invoice.\nPlease delete them and try again. "), Ok);
        click(screen->cmd_Delete_Invoice);
    }
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 1);

    screen->lst_Lines->setCurrentRow(0);
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to delete this Line?"), Yes, 36);
    click(screen->cmd_Delete_Line);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion successful"));
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines")), 0);
    // Received more than it now comes to: the family is in credit.
    EXPECT_TRUE(screen->txt_Overall_Posn->text().contains(QStringLiteral("100.00")));
}

TEST_F(InvoicesScreen, DeletingAnInvoiceAsksThenTakesItWithItsLines)
{
    const int spring = school.add_invoice(family, QStringLiteral("Invoice for Spring"));
    school.add_line(spring, 50);
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to delete this Invoice?"), Yes, 36);
    click(screen->cmd_Delete_Invoice);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion successful"));
    EXPECT_EQ(school.count(QStringLiteral("Invoices")), 0);
    EXPECT_EQ(school.count(QStringLiteral("Invoice_Lines")), 0);
    EXPECT_EQ(texts(screen->lst_Invoices), QStringList{QStringLiteral("(None)")});
}

TEST_F(InvoicesScreen, AddNewInvoiceOpensTheLinesScreenForANewInvoiceAndComesBackToTheList)
{
    open();
    Glob_Return_Form() = screen;  // as the menu leaves it when it opens the screen
    click(screen->cmd_Add_Invoice);
    auto* lines = qobject_cast<frm_Invoice_Lines*>(Loaded_Screen(QStringLiteral("frm_Invoice_Lines")));
    ASSERT_NE(lines, nullptr);
    EXPECT_TRUE(lines->isVisible());
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(lines->txt_Invoice_id->text(), QStringLiteral("0"));

    // An invoice made meanwhile shows once the screen is back.
    school.add_invoice(family, QStringLiteral("Made on the lines screen"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you wish to save the changes?"), engine::answer::No, 36);
    lines->mnu_Exit->trigger();
    settle();
    QTest::qWait(50);
    settle();
    ASSERT_TRUE(screen->isVisible());
    EXPECT_TRUE(screen->lst_Invoices->item(0)->text().endsWith(QStringLiteral("Made on the lines screen")));
}

}  // namespace
