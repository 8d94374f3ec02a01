#include "billing/invoice_removal.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"

#include <memory>

namespace {

void report_failure(const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, invoices_tag(), routine);
}

// Runs a stored query with the given parameters; the engine error is left set on failure.
bool run_query(engine::Database& db, const QString& name, const QList<std::pair<QString, QVariant>>& parameters,
               long long* affected = nullptr)
{
    std::unique_ptr<engine::QueryDef> query = db.QueryDefs(name);
    if (!query)
        return false;
    for (const auto& [parameter, value] : parameters)
        if (!query->set_parameter(parameter, value))
            return false;
    if (!query->Execute(engine::dbopt::FailOnError))
        return false;
    if (affected)
        *affected = query->RecordsAffected();
    return true;
}

}  // namespace

bool Count_Invoice_Receipts(int invoice_id, int& count)
{
    count = 0;
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Invoice_Receipts")) : nullptr;
    std::unique_ptr<engine::Recordset> receipts =
        query && query->set_parameter(QStringLiteral("par_Invoice_Id"), invoice_id) ? query->OpenRecordset() : nullptr;
    if (!receipts) {
        report_failure(QStringLiteral("cmd_Delete"));
        return false;
    }
    if (!receipts->at_eof())
        receipts->MoveLast();
    count = receipts->RecordCount();
    return true;
}

InvoiceDeletion Delete_Invoice(int invoice_id)
{
    engine::Database* db = current_database_or_error();
    if (!db || !Program_Workspace().BeginTrans()) {
        report_failure(QStringLiteral("cmd_Delete"));
        return InvoiceDeletion::Failed;
    }
    const QList<std::pair<QString, QVariant>> invoice = {{QStringLiteral("par_Invoice_Id"), invoice_id}};
    long long deleted = 0;
    const bool ran =
        run_query(*db, QStringLiteral("Qry_Delete_All_Invoice_Lines"), invoice)
        && db->Execute(QStringLiteral("DELETE * FROM tmp_Invoices WHERE tmp_Invoice_id = ") + QString::number(invoice_id)
                           + QStringLiteral(" ;"),
                       engine::dbopt::FailOnError)
        && run_query(*db, QStringLiteral("Qry_Delete_Invoice"), invoice, &deleted) && Program_Workspace().CommitTrans();
    if (ran)
        return deleted >= 1 ? InvoiceDeletion::Deleted : InvoiceDeletion::Not_Deleted;
    const int number = engine::Err().Number;
    Program_Workspace().Rollback();
    if (number == 3022)
        engine::MsgBox(QStringLiteral("The data cannot be deleted because ")
                           + QStringLiteral("the invoice number is used by another table."),
                       engine::mb::OkOnly, App_Title());
    else
        report_failure(QStringLiteral("cmd_Delete"));
    return InvoiceDeletion::Failed;
}

bool Delete_Invoice_Line(int line_id, int invoice_id, long long& affected)
{
    affected = 0;
    engine::Database* db = current_database_or_error();
    if (db
        && run_query(*db, QStringLiteral("Qry_Delete_Invoice_Line"),
                     {{QStringLiteral("par_Line_id"), line_id}, {QStringLiteral("par_Invoice_Id"), invoice_id}}, &affected))
        return true;
    report_failure(QStringLiteral("cmd_Delete_Line"));
    return false;
}
