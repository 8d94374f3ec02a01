// Raising invoices: the term run, the activity run and a script of the user's choosing.

#include "billing/auto_invoicing.h"

#include "billing/billing_words.h"
#include "billing/invoice_checks.h"
#include "calendar/calendar_db.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "script/global_run_sql.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/file_checks.h"
#include "shell/selection_lists.h"
#include "shell/settings.h"

namespace {

constexpr QChar line_end = QLatin1Char('\n');

void refuse(const QString& text)
{
    engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

bool ask(const QString& question)
{
    return engine::MsgBox(question, engine::mb::YesNo + engine::mb::Question, App_Title()) == engine::answer::Yes;
}

// A term already invoiced, when no pupils are listed at all; the unique
// keys of Invoices are what really stop a second run.
bool term_already_invoiced()
{
    for (qint32 term : Sel_Terms().chosen()) {
        const int invoices = DB_Term_Invoice_Count(term);
        if (invoices > 0) {
            refuse(QStringLiteral("There are already ") + QString::number(invoices) + QStringLiteral(" invoices for this term. ")
                   + line_end + QStringLiteral("Please choose another term using Criteria."));
            return true;
        }
    }
    return false;
}

}  // namespace

bool AutoInvoicing::run_script_file(const QString& path, bool& could_not_open)
{
    filename = path;
    QString message;
    could_not_open = Glob_File_Check(path, message) == 2;
    if (could_not_open) {
        refuse(QStringLiteral("The script file could not be opened ") + message + line_end
               + QStringLiteral("Please choose another using View Files."));
        return false;
    }
    return Global_Run_SQL(path, status);
}

bool AutoInvoicing::insert_term()
{
    status.clear();
    if (!ready_to_run())
        return false;
    if (Sel_Terms().is_empty()) {
        refuse(QStringLiteral("There must be one specified term. ") + line_end
               + QStringLiteral("Please choose one by pressing 'Criteria'."));
        return false;
    }
    if (pupil_list.isEmpty() && term_already_invoiced())
        return false;

    // Each script is a transaction of its own: a failed term script leaves the
    // committed costs in the temporary table until the screen clears it.
    bool could_not_open = false;
    // A cost script that can't be opened still lets the run go on: the check
    // of the costs then names every course.
    if (!run_script_file(Settings().cost_script, could_not_open) && !could_not_open)
        return false;
    if (!Check_Course_Costs()) {
        status = QStringLiteral("Insert Invoices abandoned");
        return false;
    }
    return run_script_file(Settings().term_script, could_not_open);
}

bool AutoInvoicing::insert_activities()
{
    if (!ready_to_run())
        return false;
    if (Sel_Activity_Dates().is_empty()) {
        refuse(QStringLiteral("There must be one specified activity date. ") + line_end
               + QStringLiteral("Please choose one by pressing 'Criteria'."));
        return false;
    }
    const int invoices = DB_Activity_Invoice_Count();
    if (invoices < 0)
        return false;
    if (invoices > 0
        && !ask(QStringLiteral("There are already ") + QString::number(invoices) + QStringLiteral(" invoices for these dates. ")
                + QStringLiteral("They MAY be for the same activities.") + line_end + QStringLiteral("Do you wish to continue?")))
        return false;
    bool could_not_open = false;
    return run_script_file(Settings().activity_script, could_not_open);
}

bool AutoInvoicing::run_script()
{
    if (filename.trimmed().isEmpty()) {
        refuse(QStringLiteral("Please choose a script file"));
        return false;
    }
    return Global_Run_SQL(filename, status);
}
