#include "calendar/calendar_db.h"

#include "calendar/calendar_words.h"
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

bool run_holiday_query(const QString& query_name, QDate day, const QString& failure)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(query_name) : nullptr;
    if (query && query->set_parameter(QStringLiteral("p_date"), engine::make_datetime(day))
        && query->Execute(engine::dbopt::FailOnErrorConsistent))
        return true;
    Report_Error(report::Unexpected, failure, engine::mb::Critical, calendar_tag(),
                 QStringLiteral("date = ") + vb::Format(engine::make_datetime(day), Glob_Date_Format()));
    return false;
}

// The one value of a query's first row; null when there is no row.
bool first_value(const QString& sql, QVariant& value)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> rows = db ? db->OpenRecordset(sql) : nullptr;
    if (!rows)
        return false;
    value = rows->at_eof() ? QVariant() : rows->Fields(rows->field(0).name);
    return true;
}

bool refuse_when_invoiced(int term_id)
{
    const int invoices = DB_Term_Invoice_Count(term_id);
    if (invoices < 0)
        return true;
    if (invoices == 0)
        return false;
    engine::MsgBox(QStringLiteral("There are ") + QString::number(invoices) + QStringLiteral(" invoices that reference this term.")
                       + QLatin1Char('\n') + QStringLiteral("So the term cannot be deleted."),
                   engine::mb::OkOnly, App_Title());
    return true;
}

}  // namespace

bool DB_Insert_Holiday(QDate day)
{
    return run_holiday_query(QStringLiteral("Qry_Insert_Holiday"), day, QStringLiteral("Unexpected error inserting Holiday"));
}

bool DB_Delete_Holiday(QDate day)
{
    return run_holiday_query(QStringLiteral("Qry_Delete_Holiday"), day, QStringLiteral("Unexpected error deleting Holiday"));
}

bool DB_Tidy_Holidays()
{
    QVariant oldest;
    bool tidied = first_value(QStringLiteral("SELECT MIN(Term_Start) AS Min_Start from Term_Dates;"), oldest);
    if (tidied) {
        engine::Database* db = Current_Db();
        const QString sql = oldest.isNull()
                                ? QStringLiteral("DELETE * from Holidays;")
                                : QStringLiteral("DELETE * from Holidays WHERE day_off < #") + vb::Format(oldest, QStringLiteral("mm/dd/yyyy"))
                                      + QStringLiteral("#;");
        tidied = db->Execute(sql, engine::dbopt::FailOnErrorConsistent);
    }
    if (!tidied)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error tidying Holidays"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("DB_Tidy_Holidays"));
    return tidied;
}

bool DB_Delete_Term(int term_id)
{
    if (refuse_when_invoiced(term_id))
        return false;
    engine::Workspace& workspace = Program_Workspace();
    if (!workspace.BeginTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting Term Dates"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("DB_Delete_Term"));
        return false;
    }
    const QString id = QString::number(term_id);
    const QStringList statements = {
        QStringLiteral("Delete * from Number_Lessons WHERE Term_id = ") + id + QStringLiteral(";"),
        QStringLiteral("Delete * from tmp_CourseCosts WHERE tmp_Term_id = ") + id + QStringLiteral(";"),
        QStringLiteral("Delete * from Term_Dates WHERE Term_id = ") + id + QStringLiteral(";"),
    };
    for (const QString& sql : statements) {
        engine::Database* db = current_database_or_error();
        if (!db || !db->Execute(sql, engine::dbopt::FailOnErrorConsistent)) {
            Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting Term Dates"), engine::mb::Critical,
                         calendar_tag(), QStringLiteral("SQl = ") + sql);
            workspace.Rollback();
            return false;
        }
    }
    if (!DB_Tidy_Holidays()) {
        workspace.Rollback();
        return false;
    }
    if (!workspace.CommitTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting Term Dates"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("DB_Delete_Term"));
        workspace.Rollback();
        return false;
    }
    return true;
}

int DB_Term_Invoice_Count(int term_id)
{
    QVariant count;
    const QString sql = QStringLiteral("Select count(*) AS count from Invoices WHERE Invoice_Term_id = ")
                        + QString::number(term_id) + QStringLiteral(";");
    if (first_value(sql, count) && !count.isNull())
        return count.toInt();
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error Counting Term Invoices"), engine::mb::Critical,
                 calendar_tag(), QStringLiteral("DB_Term_Invoice_Count no count of invoices "));
    return -1;
}
