#include "billing/family_account.h"

#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/report_numbers.h"

#include <memory>

namespace {

void report_failure(const QString& module, const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, module, routine);
}

// Opens a stored query with its one parameter; null (engine error set) on failure.
std::unique_ptr<engine::Recordset> open_query(const QString& name, const QString& parameter, const QVariant& value)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    if (!query || !query->set_parameter(parameter, value))
        return nullptr;
    return query->OpenRecordset();
}

// A money value read from a row; null counts as nothing.
engine::Currency money_of(const QVariant& value)
{
    engine::Currency money;
    if (value.isNull() || !vb::CCur(value, money))
        return engine::Currency();
    return money;
}

// The sum a query gives in its first row; 0 for null or no row.
bool first_sum(const QString& query_name, const QString& parameter, int key, const QString& column,
               engine::Currency& sum)
{
    std::unique_ptr<engine::Recordset> rows = open_query(query_name, parameter, key);
    if (!rows)
        return false;
    sum = rows->at_eof() ? engine::Currency() : money_of(rows->Fields(column));
    return true;
}

QString long_date(const QVariant& value)
{
    return value.isNull() ? QString() : vb::Format(value, Glob_Date_Format());
}

}  // namespace

QString Money_Shown(const engine::Currency& amount)
{
    return vb::Format(QVariant::fromValue(amount), QStringLiteral("currency"));
}

bool Account_Pupil_Names(int family_id, QString& names, const QString& module)
{
    names.clear();
    std::unique_ptr<engine::Recordset> pupils =
        open_query(QStringLiteral("Qry_Select_Pupil_Names"), QStringLiteral("par_fid"), family_id);
    if (!pupils) {
        report_failure(module, QStringLiteral("Get_Pupils"));
        return false;
    }
    for (; !pupils->at_eof(); pupils->MoveNext())
        names += pupils->Fields(QStringLiteral("Pupil_FirstName")).toString() + QLatin1Char(' ');
    if (names.isEmpty())
        names = QStringLiteral(" ");
    return true;
}

bool Account_Family_Invoices(int family_id, bool outstanding_only, QVector<AccountEntry>& invoices,
                             const QString& module)
{
    invoices.clear();
    const QString query = outstanding_only ? QStringLiteral("Qry_Select_Family_Invoices_Unpaid")
                                           : QStringLiteral("Qry_Select_Family_Invoices");
    std::unique_ptr<engine::Recordset> rows = open_query(query, QStringLiteral("par_Family_id"), family_id);
    if (!rows) {
        report_failure(module, QStringLiteral("Get_Invoices"));
        return false;
    }
    for (; !rows->at_eof(); rows->MoveNext()) {
        QString text = long_date(rows->Fields(QStringLiteral("Invoice_Date"))) + QStringLiteral("  ")
                       + rows->Fields(QStringLiteral("Invoice_Reason")).toString();
        const QVariant activity_date = rows->Fields(QStringLiteral("Invoice_Activity_Date"));
        if (!activity_date.isNull())
            text += QStringLiteral(" on ") + long_date(activity_date);
        invoices.append({text, rows->Fields(QStringLiteral("Invoice_id")).toInt()});
    }
    return true;
}

bool Account_Invoice_Total(int invoice_id, engine::Currency& total, const QString& module)
{
    if (first_sum(QStringLiteral("Qry_Select_Invoice_Amount"), QStringLiteral("par_Invoice_Id"), invoice_id,
                  QStringLiteral("total"), total))
        return true;
    report_failure(module, QStringLiteral("lst_Invoices_Click"));
    return false;
}

bool Account_Invoice_Receipts(int invoice_id, QVector<AccountEntry>& receipts, engine::Currency& total,
                              const QString& module)
{
    receipts.clear();
    total = engine::Currency();
    std::unique_ptr<engine::Recordset> rows =
        open_query(QStringLiteral("Qry_Select_Invoice_Receipts"), QStringLiteral("par_Invoice_Id"), invoice_id);
    if (!rows) {
        report_failure(module, QStringLiteral("Get_Receipts"));
        return false;
    }
    for (; !rows->at_eof(); rows->MoveNext()) {
        const engine::Currency amount = money_of(rows->Fields(QStringLiteral("Receipt_Amount")));
        receipts.append({Money_Shown(amount) + QStringLiteral(" on ") + long_date(rows->Fields(QStringLiteral("Receipt_Date"))),
                         rows->Fields(QStringLiteral("Receipt_id")).toInt()});
        total += amount;
    }
    return true;
}

bool Account_Overall_Position(int family_id, engine::Currency& position, const QString& module)
{
    engine::Currency paid;
    engine::Currency owes;
    if (!first_sum(QStringLiteral("Qry_Select_Family_Paid"), QStringLiteral("par_Family_id"), family_id,
                   QStringLiteral("Paid"), paid)
        || !first_sum(QStringLiteral("Qry_Select_Family_Owes"), QStringLiteral("par_Family_id"), family_id,
                      QStringLiteral("Owes"), owes)) {
        report_failure(module, QStringLiteral("Calculate_Overall_Posn"));
        return false;
    }
    position = owes - paid;
    return true;
}

bool Account_Invoice_Lines(int invoice_id, QVector<AccountEntry>& lines, const QString& module)
{
    lines.clear();
    std::unique_ptr<engine::Recordset> pupil_lines = open_query(QStringLiteral("Qry_Select_Invoice_Lines_Display"),
                                                                QStringLiteral("par_Invoice_Id"), invoice_id);
    std::unique_ptr<engine::Recordset> family_lines =
        pupil_lines ? open_query(QStringLiteral("Qry_Select_Invoice_Lines_NP_Display"), QStringLiteral("par_Invoice_Id"),
                                 invoice_id)
                    : nullptr;
    if (!family_lines) {
        report_failure(module, QStringLiteral("Get_Invoice_Lines"));
        return false;
    }
    for (; !pupil_lines->at_eof(); pupil_lines->MoveNext())
        lines.append({pupil_lines->Fields(QStringLiteral("Pupil_Name")).toString() + QStringLiteral(" --- ")
                          + Money_Shown(money_of(pupil_lines->Fields(QStringLiteral("Amount")))) + QLatin1Char(' ')
                          + pupil_lines->Fields(QStringLiteral("Description")).toString(),
                      pupil_lines->Fields(QStringLiteral("Line_id")).toInt()});
    for (; !family_lines->at_eof(); family_lines->MoveNext())
        lines.append({Money_Shown(money_of(family_lines->Fields(QStringLiteral("Amount")))) + QStringLiteral(" for ")
                          + family_lines->Fields(QStringLiteral("Description")).toString(),
                      family_lines->Fields(QStringLiteral("Line_id")).toInt()});
    return true;
}
