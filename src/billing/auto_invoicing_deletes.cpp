// Deleting invoices in bulk from the Automated Invoicing screen: the
// question, the deletion, and its outcome in the status line.

#include "billing/auto_invoicing.h"

#include "billing/invoice_deletions.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/selection_lists.h"

namespace {

bool confirmed(const QString& question)
{
    return engine::MsgBox(question, engine::mb::YesNo + engine::mb::Question, App_Title()) == engine::answer::Yes;
}

QString cancelled()
{
    return QStringLiteral("Deletion Cancelled");
}

QString nothing_deleted()
{
    return QStringLiteral("Nothing Deleted");
}

}  // namespace

bool AutoInvoicing::delete_all()
{
    if (!confirmed(QStringLiteral("Do you REALLY want to delete EVERY invoice and receipt in the database?"))) {
        status = cancelled();
        return false;
    }
    int count = 0;
    if (!DB_Delete_All_Invoices(count)) {
        status = QStringLiteral("Error during Deletion of all invoices");
        return false;
    }
    status = count == 0 ? nothing_deleted()
                        : QStringLiteral("All (") + QString::number(count) + QStringLiteral(") Invoices and Receipts successfully Deleted");
    return true;
}

bool AutoInvoicing::delete_paid()
{
    if (!confirmed(QStringLiteral("Do you want to delete all the paid invoices and receipts?"))) {
        status = cancelled();
        return false;
    }
    int paid = 0;
    int balanced = 0;
    // The balanced families go even when the paid invoices couldn't.
    const bool paid_deleted = DB_Delete_Paid_Invoices(paid);
    const bool balanced_deleted = DB_Delete_Balanced_Invoices(balanced);
    if (!paid_deleted || !balanced_deleted) {
        status = QStringLiteral("Error during Deletion of Paid Invoices");
        return false;
    }
    status = paid + balanced == 0
                 ? nothing_deleted()
                 : QStringLiteral("Deletion of Paid Invoices (") + QString::number(paid + balanced) + QStringLiteral(") successful");
    return true;
}

bool AutoInvoicing::delete_selected_terms()
{
    if (Sel_Terms().is_empty()) {
        engine::MsgBox(QStringLiteral("There must be one specified term. ") + QLatin1Char('\n')
                           + QStringLiteral("Please choose one by pressing 'Criteria'."),
                       engine::mb::OkOnly, App_Title());
        return false;
    }
    if (!confirmed(QStringLiteral("Do you want to delete invoices for the given term dates and families?"))) {
        status = cancelled();
        return false;
    }
    return delete_selected(true);
}

bool AutoInvoicing::delete_selected_activities()
{
    if (Sel_Activity_Dates().is_empty()) {
        engine::MsgBox(QStringLiteral("There must be one specified activity date. ") + QLatin1Char('\n')
                           + QStringLiteral("Please choose one by pressing 'Criteria'."),
                       engine::mb::OkOnly, App_Title());
        return false;
    }
    if (!confirmed(QStringLiteral("Do you want to delete invoices for the given activity dates and families?"))) {
        status = cancelled();
        return false;
    }
    return delete_selected(false);
}

bool AutoInvoicing::delete_selected(bool term_invoices)
{
    if (!ready_to_run())
        return false;
    int count = 0;
    if (!DB_Delete_Selected_Invoices(term_invoices, count)) {
        status = QStringLiteral("Error during Deletion of selected invoices");
        return false;
    }
    status = count == 0 ? nothing_deleted()
                        : QStringLiteral("Deletion of (") + QString::number(count) + QStringLiteral(") selected invoices successful");
    return true;
}
