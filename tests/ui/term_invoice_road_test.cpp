// The road of a term invoice, driven from the screens as the office drives
// it: the term's dates saved, the term chosen as the criteria, the term run,
// the invoice seen with its line, and the money received recorded, after
// which the family owes nothing to the hundredth of a penny.

#include "billing/invoicing_school.h"
#include "engine/msg_box.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/billing/frm_auto_invoice.h"
#include "ui/billing/frm_invoices.h"
#include "ui/billing/frm_receipts.h"
#include "ui/calendar/frm_dates.h"
#include "ui/reports/frm_report_params.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/screen_kit.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::Ok;
using testing_support::ScriptedBoxes;

namespace {

template <typename Screen>
Screen* showing(const char* form)
{
    for (int wait = 0; wait < 100; ++wait) {
        auto* screen = qobject_cast<Screen*>(Loaded_Screen(QString::fromLatin1(form)));
        if (screen && screen->isVisible())
            return screen;
        QTest::qWait(10);
    }
    ADD_FAILURE() << form << " is not on view";
    return nullptr;
}

void wait_until(const std::function<bool()>& done)
{
    for (int wait = 0; wait < 200 && !done(); ++wait)
        QTest::qWait(10);
}

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
    template <typename Screen>
    Screen* from_menu(const char* form)
    {
        Go_To_Screen(&menu, QString::fromLatin1(form));
        Screen* screen = showing<Screen>(form);
        if (screen)
            bring_to_front(screen);
        return screen;
    }
    QString sum(const char* sql) { return school.scalar(QString::fromLatin1(sql)).toString(); }

    testing_support::InvoicingSchool school;
    QWidget menu;
};

TEST_F(TermInvoiceRoad, FromTermDatesToAFamilyOwingNothing)
{
    // Term Dates: the autumn term has eleven Mondays.
    auto* dates = from_menu<frm_Dates>("frm_Dates");
    ASSERT_NE(dates, nullptr);
    dates->cmd_Add_Click();
    for (const auto& [field, text] : {std::pair{dates->txt_Term_Name, QStringLiteral("Autumn 2026")},
                                      std::pair{dates->txt_Start_Date, QStringLiteral("07 Sep 2026")},
                                      std::pair{dates->txt_End_Date, QStringLiteral("16 Nov 2026")}}) {
        retype(field, text);
        tab_out(field);
    }
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Saved successfully"), Ok, 0);
        click(dates->cmd_Save);
    }
    const int autumn = dates->txt_Term_id->text().toInt();
    ASSERT_GT(autumn, 0);
    dates->mnu_Exit->trigger();
    settle();

    // Automated Invoicing, with the autumn term chosen as its criteria.
    auto* invoicing = from_menu<frm_Auto_Invoice>("frm_Auto_Invoice");
    ASSERT_NE(invoicing, nullptr);
    invoicing->mnu_Criteria->trigger();
    auto* criteria = showing<frm_Report_Params>("frm_Report_Params");
    ASSERT_NE(criteria, nullptr);
    bring_to_front(criteria);
    click(criteria->opt_Specific_Terms);
    click_row(criteria->dbg_Term, QStringLiteral("Autumn 2026"));
    click(criteria->cmd_Go);
    ASSERT_EQ(showing<frm_Auto_Invoice>("frm_Auto_Invoice"), invoicing);
    wait_until([invoicing] { return invoicing->lbl_All[AutoInvoicing::Terms]->text() == QStringLiteral("One"); });
    ASSERT_EQ(invoicing->lbl_All[AutoInvoicing::Terms]->text(), QStringLiteral("One"));
    click(invoicing->cmd_Insert_Term);
    EXPECT_EQ(invoicing->txt_Status->text(), QStringLiteral("Term invoices raised. Script successfully applied"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT count(*) FROM Invoices WHERE Invoice_Term_id = %1").arg(autumn)).toInt(), 4);
    invoicing->mnu_Exit->trigger();
    settle();

    // Invoices: Dyer's invoice has Eve's line at the uneven cost.
    auto* invoices = from_menu<frm_Invoices>("frm_Invoices");
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
