#include "billing/receipts.h"

#include "database/code_values.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/error_log.h"
#include "shell/report_numbers.h"

#include <memory>

namespace {

void report_failure(const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, receipts_tag(), routine);
}

std::unique_ptr<engine::QueryDef> stored_query(const QString& name)
{
    engine::Database* db = current_database_or_error();
    return db ? db->QueryDefs(name) : nullptr;
}

QVariant text_or_null(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

bool set_receipt_parameters(engine::QueryDef& query, const ReceiptValues& receipt)
{
    return query.set_parameter(QStringLiteral("p_invoice_id"), receipt.invoice_id)
           && query.set_parameter(QStringLiteral("p_Amount"), QVariant::fromValue(receipt.amount))
           && query.set_parameter(QStringLiteral("p_Method"), text_or_null(receipt.method))
           && query.set_parameter(QStringLiteral("p_notes"), text_or_null(receipt.notes))
           && query.set_parameter(QStringLiteral("p_date"), receipt.date);
}

bool write_receipt(const QString& query_name, int receipt_id, const ReceiptValues& receipt)
{
    std::unique_ptr<engine::QueryDef> query = stored_query(query_name);
    const bool ok = query && (receipt_id == 0 || query->set_parameter(QStringLiteral("p_Receipt_id"), receipt_id))
                    && set_receipt_parameters(*query, receipt)
                    && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!ok)
        report_failure(QStringLiteral("cmd_Update"));
    return ok;
}

}  // namespace

bool Insert_Receipt(const ReceiptValues& receipt)
{
    return write_receipt(QStringLiteral("Qry_Insert_Receipt"), 0, receipt);
}

bool Update_Receipt(int receipt_id, const ReceiptValues& receipt)
{
    return write_receipt(QStringLiteral("Qry_Update_Receipt"), receipt_id, receipt);
}

bool Delete_Receipt(int receipt_id)
{
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Delete_Receipt"));
    const bool ok = query && query->set_parameter(QStringLiteral("par_Receipt_id"), receipt_id)
                    && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!ok)
        report_failure(QStringLiteral("cmd_Delete"));
    return ok;
}

bool Read_Receipt(int receipt_id, ReceiptValues& receipt, bool& found)
{
    found = false;
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Select_Receipt"));
    std::unique_ptr<engine::Recordset> row =
        query && query->set_parameter(QStringLiteral("par_Receipt_id"), receipt_id) ? query->OpenRecordset() : nullptr;
    if (!row) {
        report_failure(QStringLiteral("Display_Receipt"));
        return false;
    }
    if (row->at_eof())
        return true;
    found = true;
    receipt.invoice_id = row->Fields(QStringLiteral("Receipt_Invoice_id")).toInt();
    const QVariant amount = row->Fields(QStringLiteral("Receipt_Amount"));
    if (amount.isNull() || !vb::CCur(amount, receipt.amount))
        receipt.amount = engine::Currency();
    receipt.method = row->Fields(QStringLiteral("Receipt_Method")).toString();
    receipt.notes = row->Fields(QStringLiteral("Receipt_Notes")).toString();
    receipt.date = row->Fields(QStringLiteral("Receipt_Date")).toDateTime();
    return true;
}

bool Insert_Bad_Debt(int invoice_id, const QString& description, const engine::Currency& outstanding,
                     long long& affected)
{
    affected = 0;
    std::unique_ptr<engine::QueryDef> line = stored_query(QStringLiteral("Qry_Insert_Invoice_Line"));
    const bool ok =
        line && line->set_parameter(QStringLiteral("par_Invoice_Id"), invoice_id)
        && line->set_parameter(QStringLiteral("par_Pupil_id"), QVariant())
        && line->set_parameter(QStringLiteral("par_Course_id"), QVariant())
        && line->set_parameter(QStringLiteral("par_Activity_id"), QVariant())
        && line->set_parameter(QStringLiteral("par_Type"), code::inv_line_type::Written_Off)
        && line->set_parameter(QStringLiteral("par_Amount"), QVariant::fromValue(-outstanding))
        && line->set_parameter(QStringLiteral("par_Description"),
                               description.trimmed().isEmpty() ? QStringLiteral("Amount written off") : description)
        && line->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!ok) {
        report_failure(QStringLiteral("Insert_Bad_Debt"));
        return false;
    }
    affected = line->RecordsAffected();
    return true;
}
