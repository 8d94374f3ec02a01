// The road of a term invoice, driven from the screens as the office drives
// it: the term's dates saved, the term chosen as the criteria, the term run,
// the invoice seen with its line, and the money received recorded, after
// which the family owes nothing to the hundredth of a penny.

#include "billing/invoicing_school.h"
#include "road_steps.h"
#include "ui/billing/frm_invoices.h"
#include "ui/billing/frm_receipts.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QListWidget>

#include <gtest/gtest.h>

using namespace road_steps;
using engine::answer::Ok;

namespace {

class TermInvoiceRoad : public ::testing::Test {
protected:
    TermInvoiceRoad()
    {
        // 17 an hour for 50 minutes, eleven Mondays: 155.8333, no whole number of pence.
        school.set_standard(QStringLiteral("Deflt_Course_Hourly_Rate"), 17);
        const int contemporary =
            school.add_course(testing_support::NewCourse(QStringLiteral("Contemporary")).on(code::weekday::Monday).lasting(50));
        school.put_on_course(school.eve, contemporary);
        // The road starts with no term stored.
        school.exec(QStringLiteral("DELETE FROM Number_Lessons"));
        school.exec(QStringLiteral("DELETE FROM Term_Dates"));
        menu.setObjectName(QStringLiteral("frm_Main_Menu"));
        set_main_menu(&menu);
    }
    ~TermInvoiceRoad() override
    {
        for (const char* form : {"frm_Dates", "frm_Report_Params", "frm_Auto_Invoice", "frm_Invoices", "frm_Receipts"})
            if (QWidget* loaded = Loaded_Screen(QString::fromLatin1(form)))
                Unload(loaded);
        settle();
        set_main_menu(nullptr);
        Glob_Return_Form() = nullptr;
    }
    QString sum(const char* sql) { return school.scalar(QString::fromLatin1(sql)).toString(); }

    testing_support::InvoicingSchool school;
    QWidget menu;
};

TEST_F(TermInvoiceRoad, FromTermDatesToAFamilyOwingNothing)
{
    // Term Dates: the autumn term has eleven Mondays.
    const int autumn = save_term(&menu, QStringLiteral("Autumn 2026"), QStringLiteral("07 Sep 2026"), QStringLiteral("16 Nov 2026"));
    ASSERT_GT(autumn, 0);

    // Automated Invoicing, with the autumn term chosen as its criteria.
    EXPECT_EQ(invoice_term(&menu, QStringLiteral("Autumn 2026")), QStringLiteral("Term invoices raised. Script successfully applied"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT count(*) FROM Invoices WHERE Invoice_Term_id = %1").arg(autumn)).toInt(), 4);

    // Invoices: Dyer's invoice has Eve's line at the uneven cost.
    auto* invoices = from_menu<frm_Invoices>(&menu, "frm_Invoices");
    ASSERT_NE(invoices, nullptr);
    invoices->cmb_Names->setCurrentIndex(invoices->cmb_Names->findText(QStringLiteral("Dyer")));
    invoices->cmb_Names_Click();
    ASSERT_EQ(invoices->lst_Invoices->count(), 1);
    EXPECT_TRUE(invoices->lst_Invoices->item(0)->text().endsWith(QStringLiteral("Invoice for Autumn 2026")));
    ASSERT_EQ(invoices->lst_Lines->count(), 1);
    EXPECT_TRUE(invoices->lst_Lines->item(0)->text().startsWith(QStringLiteral("Eve --- ")));
    EXPECT_TRUE(invoices->lst_Lines->item(0)->text().endsWith(QStringLiteral("155.83 Eve's Contemporary")));
    EXPECT_EQ(field_colour(invoices->txt_Overall_Posn), colours::Owing);

    // Money Received, handed the same family and invoice: the proposal is paid as it stands.
    invoices->mnu_Receipts->trigger();
    auto* receipts = showing<frm_Receipts>("frm_Receipts");
    ASSERT_NE(receipts, nullptr);
    bring_to_front(receipts);
    wait_until([receipts] { return receipts->txt_Family_Name->text() == QStringLiteral("Dyer"); });
    ASSERT_EQ(receipts->txt_Family_Name->text(), QStringLiteral("Dyer"));
    EXPECT_EQ(receipts->txt_Amount->text(), QStringLiteral("155.8333"));
    click(receipts->cmd_Update);
    EXPECT_EQ(receipts->txt_Status->text(), QStringLiteral("Receipt added successfully"));
    EXPECT_TRUE(receipts->txt_Overall_Posn->text().endsWith(QStringLiteral("0.00")));
    EXPECT_EQ(field_colour(receipts->txt_Overall_Posn), colours::Pale_Yellow);
    const QString family = QStringLiteral("(SELECT Invoice_id FROM Invoices I INNER JOIN Families F "
                                          "ON F.Family_id = I.Invoice_Family_id WHERE F.Family_Name = 'Dyer')");
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT round(sum(Receipt_Amount), 4) FROM Receipts WHERE Receipt_Invoice_id IN ")
                            + family)
                  .toString(),
              QStringLiteral("155.8333"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT round(sum(Amount), 4) FROM Invoice_Lines WHERE Inv_Line_Inv_id IN ") + family)
                  .toString(),
              QStringLiteral("155.8333"));
}

}  // namespace
