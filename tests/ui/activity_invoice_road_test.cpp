// The road of an activity invoice, driven from the screens: pupils entered
// for two exams on the Activity Register, the exam day chosen as the
// criteria, the activity run of Automated Invoicing, and the lines checked
// against the prices, default exam rate and expenses the database holds.

#include "billing/invoicing_school.h"
#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "ui/activities/frm_exam_register.h"
#include "ui/billing/frm_auto_invoice.h"
#include "ui/reports/frm_report_params.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/data_grid.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::NewActivity;

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

class ActivityInvoiceRoad : public ::testing::Test {
protected:
    ActivityInvoiceRoad()
    {
        school.set_standard(QStringLiteral("Deflt_Exam_Hourly_Rate"), 32);
        school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")).priced(38.5).with_expenses(2.25));
        school.add_activity(NewActivity(QStringLiteral("Ballet Grade 2")).priced(0).at_level(2));
        school.title_date(QDate(2027, 3, 13), QStringLiteral("Spring Exams"));
        Glob_Keep_Changed_List() = true;
        menu.setObjectName(QStringLiteral("frm_Main_Menu"));
        set_main_menu(&menu);
    }
    ~ActivityInvoiceRoad() override
    {
        for (const char* form : {"frm_ExamRegister", "frm_Report_Params", "frm_Auto_Invoice"})
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
    void click_pupil(DataGrid* pupils, const QString& first_and_family, bool add)
    {
        for (const QString& shown : entries(pupils))
            if (shown.startsWith(first_and_family))
                return click_row(pupils, shown, add);
        ADD_FAILURE() << "no pupil " << first_and_family.toStdString();
    }

    testing_support::InvoicingSchool school;
    QWidget menu;
};

TEST_F(ActivityInvoiceRoad, FromTheRegisterToLinesAtTheStoredPrices)
{
    // Activity Register: Amy and Cara take Grade 1, Ben Grade 2, on the exam day.
    auto* activities = from_menu<frm_ExamRegister>("frm_ExamRegister");
    ASSERT_NE(activities, nullptr);
    click_pupil(activities->dbg_Pupil, QStringLiteral("Amy Ashby"), false);
    click_pupil(activities->dbg_Pupil, QStringLiteral("Cara Brook"), true);
    click(activities->cmd_Add);
    click_row(activities->dbg_Exam, QStringLiteral("Ballet Grade 2"));
    click_pupil(activities->dbg_Pupil, QStringLiteral("Ben Ashby"), false);
    click(activities->cmd_Add);
    EXPECT_EQ(activities->txt_Status->text(), QStringLiteral("Pupils successfully added to Register"));
    EXPECT_EQ(school.count(QStringLiteral("Exam_Results")), 3);
    activities->mnu_Exit->trigger();
    settle();

    // Automated Invoicing for the exam day, for the pupils whose entries changed.
    auto* invoicing = from_menu<frm_Auto_Invoice>("frm_Auto_Invoice");
    ASSERT_NE(invoicing, nullptr);
    invoicing->mnu_Criteria->trigger();
    auto* criteria = showing<frm_Report_Params>("frm_Report_Params");
    ASSERT_NE(criteria, nullptr);
    bring_to_front(criteria);
    click(criteria->opt_Specific_Exams);
    click_row(criteria->dbg_Activity_Dates, QStringLiteral("Spring Exams"), false, 1);
    click(criteria->cmd_Go);
    ASSERT_EQ(showing<frm_Auto_Invoice>("frm_Auto_Invoice"), invoicing);
    for (int wait = 0; wait < 200 && invoicing->lbl_All[AutoInvoicing::Activity_Dates]->text() != QStringLiteral("One"); ++wait)
        QTest::qWait(10);
    ASSERT_EQ(invoicing->lbl_All[AutoInvoicing::Activity_Dates]->text(), QStringLiteral("One"));
    EXPECT_TRUE(invoicing->Opt_Saved_List->isChecked());
    click(invoicing->cmd_Insert_Activities);
    EXPECT_EQ(invoicing->txt_Status->text(), QStringLiteral("Activity invoices raised. Script successfully applied"));

    EXPECT_EQ(school.invoices(), QStringList({QStringLiteral("Ashby|Invoice for Spring Exams|0"),
                                              QStringLiteral("Brook|Invoice for Spring Exams|0")}));
    // The price, and the expenses where there are any. The default exam
    // rate's query keeps its tests against Null, which never hold, so an
    // exam without a price of its own is charged nothing.
    EXPECT_EQ(school.lines(), QStringList({QStringLiteral("Ashby|Amy's Ballet Grade 1|1|38.5"),
                                           QStringLiteral("Ashby|Amy's Ballet Grade 1 Expenses|2|2.25"),
                                           QStringLiteral("Ashby|Ben's Ballet Grade 2|1|0"),
                                           QStringLiteral("Brook|Cara's Ballet Grade 1|1|38.5"),
                                           QStringLiteral("Brook|Cara's Ballet Grade 1 Expenses|2|2.25")}));
    // Every line against the catalogue it came from.
    EXPECT_EQ(school.scalar(QStringLiteral(
                  "SELECT count(*) FROM Invoice_Lines L INNER JOIN Exams E ON E.Exam_id = L.Inv_Line_Exam_id "
                  "WHERE round(L.Amount, 4) <> round(CASE L.Inv_Line_Type WHEN 2 THEN E.Exam_Expenses ELSE E.Exam_Price END, 4)"))
                  .toInt(),
              0);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT count(*) FROM Invoice_Lines L INNER JOIN Invoices I "
                                           "ON I.Invoice_id = L.Inv_Line_Inv_id WHERE I.Invoice_Activity_Date = '2027-03-13 00:00:00'"))
                  .toInt(),
              5);
}

}  // namespace
