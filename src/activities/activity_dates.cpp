#include "activities/activity_dates.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "engine/workspace.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"

namespace {

const QString module = QStringLiteral("fActDate");

int box(const QString& text, int style = engine::mb::OkOnly)
{
    return engine::MsgBox(text, style, App_Title());
}

// One stored count of the date's uses, read from its field tmpNum.
int count_of(const QString& query_name, const QDateTime& date)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(query_name) : nullptr;
    std::unique_ptr<engine::Recordset> counted =
        query && query->set_parameter(QStringLiteral("p_date"), date) ? query->OpenRecordset() : nullptr;
    if (!counted) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module,
                     QStringLiteral("Display_Data"));
        return -1;
    }
    if (counted->at_bof() && counted->at_eof()) {
        box(QStringLiteral("Couldn't check if the date is used, ") + QStringLiteral("so cannot be deleted"));
        return -1;
    }
    const QVariant number = counted->Fields(QStringLiteral("tmpNum"));
    counted->Close();
    return number.isNull() ? 0 : number.toInt();
}

bool run_date_query(const QString& name, const QDateTime& date, const QDateTime* new_date = nullptr)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    return query && query->set_parameter(QStringLiteral("p_date"), date)
           && (!new_date || query->set_parameter(QStringLiteral("p_New_date"), *new_date))
           && query->Execute(engine::dbopt::FailOnErrorConsistent);
}

}  // namespace

DateUses Count_Date_Uses(const QDateTime& date)
{
    DateUses uses;
    uses.results = count_of(QStringLiteral("Qry_Count_Exam_Results_Activity"), date);
    uses.invoices = count_of(QStringLiteral("Qry_Count_Invoices_Activity"), date);
    uses.receipts = count_of(QStringLiteral("Qry_Count_Receipts_Activity"), date);
    return uses;
}

bool Date_In_Use(const DateUses& uses)
{
    return uses.results > 0 || uses.invoices > 0 || uses.receipts > 0;
}

bool Date_Change_Allowed(const DateUses& uses)
{
    if (uses.receipts > 0) {
        box(QStringLiteral("Cannot change the date or the title ") + QStringLiteral(" when there are receipts"));
        return false;
    }
    // Any edit of a date with invoices deletes them, a change of title too:
    // the question says so.
    if (uses.invoices > 0)
        return box(QStringLiteral("About to delete invoices for this date. ") + QLatin1Char('\n') + QStringLiteral("Continue?")
                       + QLatin1Char('\n') + QStringLiteral("You must re-invoice for the new date"),
                   engine::mb::YesNo | engine::mb::Question)
               == engine::answer::Yes;
    return true;
}

bool Change_Activity_Date(const DateUses& uses, const QDateTime& old_date, const QDateTime& new_date,
                          const std::function<bool()>& write_record)
{
    engine::Workspace& workspace = Program_Workspace();
    if (!workspace.BeginTrans())
        return false;
    const bool changed =
        (uses.results <= 0 || run_date_query(QStringLiteral("Qry_Update_Exam_Results_Activity"), old_date, &new_date))
        && (uses.invoices <= 0
            || (run_date_query(QStringLiteral("Qry_Delete_Invoice_Lines_Activity"), old_date)
                && run_date_query(QStringLiteral("Qry_Delete_Invoices_Activity"), old_date)))
        && write_record() && workspace.CommitTrans();
    if (changed)
        return true;
    // The failure is what the caller tells; the rollback mustn't replace it.
    const engine::ErrState failure = engine::Err();
    workspace.Rollback();
    engine::Err() = failure;
    return false;
}

bool Date_Text_After_Leaving(QString& text)
{
    QDateTime date;
    if (!vb::CDate(text, date))
        return false;
    if (date.date() == engine::zero_date().addDays(-1) && date.time() == QTime(0, 0))
        text = vb::Format(date, Glob_Date_Format());
    return true;
}
