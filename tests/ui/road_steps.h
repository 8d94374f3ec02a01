#pragma once
// Steps of the office's roads through the screens, shared by the road tests:
// going to a screen from the menu, and the term's dates saved and the term
// invoiced as the secretary does both.

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/billing/frm_auto_invoice.h"
#include "ui/calendar/frm_dates.h"
#include "ui/reports/frm_report_params.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/data_grid.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <functional>

#include <gtest/gtest.h>

namespace road_steps {

using namespace screen_driver;

// The loaded screen of that form once it is on view; null (and a failure) when it never is.
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

inline void wait_until(const std::function<bool()>& done)
{
    for (int wait = 0; wait < 200 && !done(); ++wait)
        QTest::qWait(10);
}

// The screen opened from the menu, in front.
template <typename Screen>
Screen* from_menu(QWidget* menu, const char* form)
{
    Go_To_Screen(menu, QString::fromLatin1(form));
    Screen* screen = showing<Screen>(form);
    if (screen)
        bring_to_front(screen);
    return screen;
}

// Term Dates: a new term saved from its name and dates; its id, or 0.
inline int save_term(QWidget* menu, const QString& name, const QString& start, const QString& end)
{
    auto* dates = from_menu<frm_Dates>(menu, "frm_Dates");
    if (!dates)
        return 0;
    dates->cmd_Add_Click();
    for (const auto& [field, text] : {std::pair{dates->txt_Term_Name, name}, std::pair{dates->txt_Start_Date, start},
                                      std::pair{dates->txt_End_Date, end}}) {
        retype(field, text);
        tab_out(field);
    }
    testing_support::ScriptedBoxes().expect(QStringLiteral("Saved successfully"), engine::answer::Ok, 0).during([&] {
        click(dates->cmd_Save);
    });
    const int term = dates->txt_Term_id->text().toInt();
    dates->mnu_Exit->trigger();
    settle();
    return term;
}

// Automated Invoicing: the term chosen as its criteria and its invoices
// raised; the status the run left.
inline QString invoice_term(QWidget* menu, const QString& term)
{
    auto* invoicing = from_menu<frm_Auto_Invoice>(menu, "frm_Auto_Invoice");
    if (!invoicing)
        return QString();
    invoicing->mnu_Criteria->trigger();
    auto* criteria = showing<frm_Report_Params>("frm_Report_Params");
    if (!criteria)
        return QString();
    bring_to_front(criteria);
    click(criteria->opt_Specific_Terms);
    click_row(criteria->dbg_Term, term);
    click(criteria->cmd_Go);
    EXPECT_EQ(showing<frm_Auto_Invoice>("frm_Auto_Invoice"), invoicing);
    wait_until([invoicing] { return invoicing->lbl_All[AutoInvoicing::Terms]->text() == QStringLiteral("One"); });
    EXPECT_EQ(invoicing->lbl_All[AutoInvoicing::Terms]->text(), QStringLiteral("One"));
    click(invoicing->cmd_Insert_Term);
    const QString status = invoicing->txt_Status->text();
    invoicing->mnu_Exit->trigger();
    settle();
    return status;
}

}  // namespace road_steps
