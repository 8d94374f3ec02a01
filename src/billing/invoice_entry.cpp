#include "billing/invoice_entry.h"

#include "database/code_values.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "engine/workspace.h"
#include "script/current_database.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"

#include <QStringList>
#include <algorithm>
#include <memory>

namespace {

// The screen's tags in the log: its commands, its lists, its reads.
const QString line_screen_tag = QStringLiteral("fInvLine");
const QString lists_tag = QStringLiteral("fInvLines");
const QString reads_tag = QStringLiteral("fInvoices");

const QString unexpected = QStringLiteral("Unexpected error ");

void report_unexpected(const QString& module, const QString& routine)
{
    Report_Error(report::Unexpected, unexpected, engine::mb::Critical, module, routine);
}

std::unique_ptr<engine::QueryDef> stored_query(const QString& name)
{
    engine::Database* db = current_database_or_error();
    return db ? db->QueryDefs(name) : nullptr;
}

QVariant or_null(const std::optional<int>& id)
{
    return id ? QVariant(*id) : QVariant();
}

QVariant or_null(const std::optional<QDate>& day)
{
    return day ? QVariant(engine::make_datetime(*day)) : QVariant();
}

std::optional<int> id_or_nothing(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    return value.toInt();
}

std::optional<QDate> day_or_nothing(const QVariant& value)
{
    if (value.isNull() || !value.isValid())
        return std::nullopt;
    return value.toDateTime().date();
}

// The rows of a list, with the "(Blank)" entry first, or "(None)" alone when
// there are none. `entry` reads one row; false from any step is a failure.
template <typename ReadRow>
bool fill_entries(engine::Recordset* rows, ListEntries& entries, ReadRow entry)
{
    entries.clear();
    if (!rows)
        return false;
    ListEntries found;
    if (!rows->at_eof() && !rows->MoveFirst())
        return false;
    while (!rows->at_eof()) {
        found.push_back(entry(*rows));
        if (!rows->MoveNext())
            return false;
    }
    if (engine::Err().Number != 0)
        return false;
    if (found.empty()) {
        entries.push_back({None_Entry(), 0});
        return true;
    }
    entries.push_back({Blank_Entry(), 0});
    entries.insert(entries.end(), found.begin(), found.end());
    return true;
}

QString long_date(QDate day)
{
    return vb::Format(engine::make_datetime(day), Glob_Date_Format());
}

// How many blank-separated words a date in the long date format takes, so
// that the date can be read back from the head of an entry's text.
int words_in_long_date()
{
    return long_date(QDate(2000, 12, 31)).split(QLatin1Char(' '), Qt::SkipEmptyParts).size();
}

bool is_blank(const QString& text)
{
    return text.trimmed().isEmpty();
}

}  // namespace

// ---- The lists ----

QString Blank_Entry()
{
    return QStringLiteral("(Blank)");
}

QString None_Entry()
{
    return QStringLiteral("(None)");
}

QString Not_Applicable_Entry()
{
    return QStringLiteral("(Not Applicable)");
}

bool Invoice_Term_Entries(ListEntries& entries)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> terms = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Terms")) : nullptr;
    const bool ok = fill_entries(terms.get(), entries, [](const engine::Recordset& row) {
        return ListEntry{row.Fields(QStringLiteral("Term_Name")).toString(), row.Fields(QStringLiteral("Term_id")).toInt()};
    });
    if (!ok)
        report_unexpected(lists_tag, QStringLiteral("Get_Terms"));
    return ok;
}

QString Activity_Date_Entry_Text(QDate day, const QString& title)
{
    return long_date(day) + QLatin1Char(' ') + title;
}

std::optional<QDate> Activity_Date_At_Head(const QString& entry_text)
{
    const QStringList words = entry_text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const int date_words = words_in_long_date();
    if (words.size() < date_words)
        return std::nullopt;
    const QString head = words.mid(0, date_words).join(QLatin1Char(' '));
    QDateTime value;
    if (!vb::IsDate(head) || !vb::CDate(head, value)) {
        engine::Err().Clear();
        return std::nullopt;
    }
    return value.date();
}

bool Invoice_Activity_Date_Entries(ListEntries& entries)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> days =
        db ? db->OpenRecordset(QStringLiteral("Qry_Select_Activity_Dates")) : nullptr;
    const bool ok = fill_entries(days.get(), entries, [](const engine::Recordset& row) {
        return ListEntry{Activity_Date_Entry_Text(row.Fields(QStringLiteral("Activity_Date")).toDateTime().date(),
                                                  row.Fields(QStringLiteral("Activity_Title")).toString()),
                         0};
    });
    if (!ok)
        report_unexpected(lists_tag, QStringLiteral("Get_Activity_Dates"));
    return ok;
}

bool Family_Pupil_Entries(int family_id, ListEntries& entries)
{
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Select_Pupil_Names"));
    std::unique_ptr<engine::Recordset> pupils =
        query && query->set_parameter(QStringLiteral("par_fid"), family_id) ? query->OpenRecordset() : nullptr;
    const bool ok = fill_entries(pupils.get(), entries, [](const engine::Recordset& row) {
        return ListEntry{row.Fields(QStringLiteral("Pupil_FirstName")).toString(),
                         row.Fields(QStringLiteral("Pupil_id")).toInt()};
    });
    if (!ok)
        report_unexpected(lists_tag, QStringLiteral("Get_Pupils"));
    return ok;
}

namespace {

// The entries that stand for a pupil the database isn't asked about; false
// when the database has to be asked.
bool entries_without_pupil(PupilFor pupil_for, ListEntries& entries)
{
    entries.clear();
    switch (pupil_for) {
    case PupilFor::No_Invoice:
        entries.push_back({None_Entry(), 0});
        return true;
    case PupilFor::No_Pupil:
        return true;
    case PupilFor::Blank:
        entries.push_back({Not_Applicable_Entry(), 0});
        return true;
    case PupilFor::Pupil:
        break;
    }
    return false;
}

}  // namespace

bool Pupil_Course_Entries(PupilFor pupil_for, int pupil_id, ListEntries& entries)
{
    if (entries_without_pupil(pupil_for, entries))
        return true;
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Select_Pupil_Courses"));
    std::unique_ptr<engine::Recordset> courses =
        query && query->set_parameter(QStringLiteral("par_Pupil_id"), pupil_id) ? query->OpenRecordset() : nullptr;
    const bool ok = fill_entries(courses.get(), entries, [](const engine::Recordset& row) {
        return ListEntry{row.Fields(QStringLiteral("Course_Title")).toString(),
                         row.Fields(QStringLiteral("Course_id")).toInt()};
    });
    if (!ok)
        report_unexpected(lists_tag, QStringLiteral("Get_Courses"));
    return ok;
}

bool Pupil_Activity_Entries(PupilFor pupil_for, int pupil_id, std::optional<QDate> activity_date,
                            ListEntries& entries)
{
    if (entries_without_pupil(pupil_for, entries))
        return true;
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Select_Pupil_Activities"));
    std::unique_ptr<engine::Recordset> activities =
        query && query->set_parameter(QStringLiteral("par_Pupil_id"), pupil_id)
                && query->set_parameter(QStringLiteral("par_Date"), or_null(activity_date))
            ? query->OpenRecordset()
            : nullptr;
    const bool ok = fill_entries(activities.get(), entries, [](const engine::Recordset& row) {
        return ListEntry{row.Fields(QStringLiteral("Activity_Title")).toString() + QStringLiteral(" on ")
                             + vb::CStr(row.Fields(QStringLiteral("Activity_Date"))),
                         row.Fields(QStringLiteral("Activity_id")).toInt()};
    });
    if (!ok)
        report_unexpected(lists_tag, QStringLiteral("Get_Activities"));
    return ok;
}

// ---- The invoice ----

EntryRefusal Check_Invoice_Entry(const InvoiceTyped& typed, int family_id, QTime time_of_day, InvoiceHeader& header)
{
    QDateTime day;
    if (!vb::IsDate(typed.date) || !vb::CDate(typed.date, day)) {
        engine::Err().Clear();
        return {int(InvoiceField::Date), QStringLiteral("Invalid date")};
    }
    if (is_blank(typed.reason))
        return {int(InvoiceField::Reason), QStringLiteral("There must be a reason")};
    header.family_id = family_id;
    header.invoice_date = engine::make_datetime(day.date(), time_of_day);
    header.reason = typed.reason;
    header.notes = typed.notes;
    if (!typed.term && !typed.activity_date_entry)
        return {int(InvoiceField::Term), QStringLiteral("Please choose a term or an activity")};
    header.term_id = typed.term && *typed.term != 0 ? typed.term : std::nullopt;
    header.activity_date =
        typed.activity_date_entry ? Activity_Date_At_Head(*typed.activity_date_entry) : std::nullopt;
    return {};
}

namespace {

bool set_header_parameters(engine::QueryDef& query, const InvoiceHeader& header)
{
    return query.set_parameter(QStringLiteral("par_Invoice_Family_Id"), header.family_id)
           && query.set_parameter(QStringLiteral("par_Invoice_Date"), header.invoice_date)
           && query.set_parameter(QStringLiteral("par_Invoice_Reason"), header.reason)
           && query.set_parameter(QStringLiteral("par_Invoice_Notes"), header.notes)
           && query.set_parameter(QStringLiteral("par_Invoice_Generated"), code::invoice_generated::Manual)
           && query.set_parameter(QStringLiteral("par_Invoice_Term_id"), or_null(header.term_id))
           && query.set_parameter(QStringLiteral("par_Invoice_Activity_Date"), or_null(header.activity_date));
}

// The query that finds an invoice just inserted, with its parameters set:
// by its term, by its activity date, or by neither.
std::unique_ptr<engine::QueryDef> inserted_invoice_query(const InvoiceHeader& header)
{
    const bool by_term = header.term_id && !header.activity_date;
    const bool by_date = header.activity_date && !header.term_id;
    const QString name = by_term   ? QStringLiteral("Qry_Select_Inserted_Invoice_Term")
                         : by_date ? QStringLiteral("Qry_Select_Inserted_Invoice_Date")
                                   : QStringLiteral("Qry_Select_Inserted_Invoice_Neither");
    std::unique_ptr<engine::QueryDef> query = stored_query(name);
    if (!query || !query->set_parameter(QStringLiteral("par_Invoice_Family_Id"), header.family_id)
        || !query->set_parameter(QStringLiteral("par_Invoice_Reason"), header.reason)
        || !query->set_parameter(QStringLiteral("par_Invoice_Date"), header.invoice_date))
        return nullptr;
    if (by_term && !query->set_parameter(QStringLiteral("par_Invoice_Term_id"), *header.term_id))
        return nullptr;
    if (by_date && !query->set_parameter(QStringLiteral("par_Invoice_Activity_Date"), or_null(header.activity_date)))
        return nullptr;
    return query;
}

// The id of the invoice just inserted; 0 when none is found. Two invoices
// stored within one second with one reason would both match: the newer is ours.
bool find_inserted_invoice(const InvoiceHeader& header, int& invoice_id)
{
    invoice_id = 0;
    std::unique_ptr<engine::QueryDef> query = inserted_invoice_query(header);
    std::unique_ptr<engine::Recordset> found = query ? query->OpenRecordset() : nullptr;
    if (!found)
        return false;
    for (; !found->at_eof(); found->MoveNext())
        invoice_id = std::max(invoice_id, found->Fields(QStringLiteral("Invoice_id")).toInt());
    return engine::Err().Number == 0;
}

InvoiceSave duplicate()
{
    return {SaveOutcome::Duplicate, 0, QString()};
}

bool is_duplicate()
{
    return engine::Err().Number == engine::jet::DuplicateKey;
}

}  // namespace

InvoiceSave DB_Insert_Manual_Invoice(const InvoiceHeader& header)
{
    const QString routine = QStringLiteral("cmd_Update");
    engine::Workspace& workspace = Program_Workspace();
    std::unique_ptr<engine::QueryDef> insert = stored_query(QStringLiteral("Qry_Insert_Invoice"));
    if (!insert || !set_header_parameters(*insert, header)) {
        report_unexpected(line_screen_tag, routine);
        return {SaveOutcome::Failed, 0, QString()};
    }
    if (!workspace.BeginTrans()) {
        report_unexpected(line_screen_tag, routine);
        return {SaveOutcome::Failed, 0, QString()};
    }
    // Whatever goes wrong from here leaves nothing behind.
    const auto failed = [&](int number, const QString& words, const QString& status) {
        Report_Error(number, words, engine::mb::Critical, line_screen_tag, routine);
        workspace.Rollback();
        return InvoiceSave{SaveOutcome::Failed, 0, status};
    };
    if (!insert->Execute(engine::dbopt::FailOnErrorConsistent)) {
        if (is_duplicate()) {
            engine::Err().Clear();
            workspace.Rollback();
            return duplicate();
        }
        return failed(report::Unexpected, unexpected, QString());
    }
    if (insert->RecordsAffected() != 1)
        return failed(report::Detected, QStringLiteral("Could not insert record."),
                      QStringLiteral("Failed to add new Invoice"));
    int invoice_id = 0;
    if (!find_inserted_invoice(header, invoice_id))
        return failed(report::Unexpected, unexpected, QString());
    if (invoice_id == 0)
        return failed(report::Detected, QStringLiteral("Could not find newly inserted record."),
                      QStringLiteral("Failed to find new Invoice"));
    if (!workspace.CommitTrans())
        return failed(report::Unexpected, unexpected, QString());
    return {SaveOutcome::Saved, invoice_id, QStringLiteral("Invoice added successfully")};
}

InvoiceSave DB_Update_Manual_Invoice(int invoice_id, const InvoiceHeader& header)
{
    std::unique_ptr<engine::QueryDef> update = stored_query(QStringLiteral("Qry_Update_Invoice"));
    if (update && update->set_parameter(QStringLiteral("par_Invoice_id"), invoice_id)
        && set_header_parameters(*update, header) && update->Execute(engine::dbopt::FailOnErrorConsistent))
        return {SaveOutcome::Saved, invoice_id, QStringLiteral("Invoice updated successfully")};
    if (is_duplicate()) {
        engine::Err().Clear();
        return duplicate();
    }
    report_unexpected(line_screen_tag, QStringLiteral("cmd_Update"));
    return {SaveOutcome::Failed, invoice_id, QString()};
}

bool DB_Read_Invoice(int invoice_id, InvoiceRecord& invoice, bool& found)
{
    found = false;
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Select_Invoice"));
    std::unique_ptr<engine::Recordset> row =
        query && query->set_parameter(QStringLiteral("par_Invoice_id"), invoice_id) ? query->OpenRecordset() : nullptr;
    if (!row) {
        report_unexpected(reads_tag, QStringLiteral("Display_Invoice"));
        return false;
    }
    if (row->at_eof())
        return true;
    invoice.invoice_id = row->Fields(QStringLiteral("Invoice_id")).toInt();
    invoice.family_id = row->Fields(QStringLiteral("Invoice_Family_Id")).toInt();
    invoice.invoice_date = row->Fields(QStringLiteral("Invoice_Date")).toDateTime();
    invoice.reason = row->Fields(QStringLiteral("Invoice_Reason")).toString();
    invoice.notes = row->Fields(QStringLiteral("Invoice_Notes")).toString();
    invoice.term_id = id_or_nothing(row->Fields(QStringLiteral("Invoice_Term_Id")));
    invoice.activity_date = day_or_nothing(row->Fields(QStringLiteral("Invoice_Activity_Date")));
    invoice.generated = row->Fields(QStringLiteral("Invoice_Generated")).toInt();
    if (engine::Err().Number != 0) {
        report_unexpected(reads_tag, QStringLiteral("Display_Invoice"));
        return false;
    }
    found = true;
    return true;
}

// ---- The lines ----

int Invoice_Line_Type(const LineChoices& choices)
{
    namespace kind = code::inv_line_type;
    int type = choices.pupil && *choices.pupil >= 1 ? kind::Pupil_Only : kind::No_Pupil;
    if (choices.course && *choices.course != 0)
        type = kind::Course;
    if (choices.activity && *choices.activity != 0)
        type = kind::Activity;
    if (!choices.course && !choices.activity && choices.amount > engine::Currency())
        type = kind::Manual_Amount;
    return type;
}

EntryRefusal Check_Line_Entry(const LineTyped& typed, LineValues& line)
{
    line.type = 0;
    engine::Currency amount;
    if (!vb::IsNumeric(typed.amount) || !vb::CCur(typed.amount, amount)) {
        engine::Err().Clear();
        return {int(LineField::Amount), QStringLiteral("Invalid amount")};
    }
    int32_t invoice_id = 0;
    if (!vb::IsNumeric(typed.invoice_id) || !vb::CLng(typed.invoice_id, invoice_id) || invoice_id == 0) {
        engine::Err().Clear();
        return {int(LineField::Invoice), QStringLiteral("Invalid invoice number - ") + QStringLiteral("Please exit and try again")};
    }
    line.invoice_id = invoice_id;
    if (!typed.pupil)
        return {int(LineField::Pupil), QStringLiteral("Invalid pupil")};
    line.pupil_id = *typed.pupil >= 1 ? typed.pupil : std::nullopt;
    line.course_id = typed.course && *typed.course != 0 ? typed.course : std::nullopt;
    line.activity_id = typed.activity && *typed.activity != 0 ? typed.activity : std::nullopt;
    line.type = Invoice_Line_Type({typed.pupil, typed.course, typed.activity, amount});
    line.amount = amount;
    line.description = typed.description;
    return {};
}

LineSave DB_Save_Invoice_Line(int line_id, const LineValues& line)
{
    const bool adding = line_id == 0;
    std::unique_ptr<engine::QueryDef> query =
        stored_query(adding ? QStringLiteral("Qry_Insert_Invoice_Line") : QStringLiteral("Qry_Update_Invoice_Line"));
    const bool ran = query && (adding || query->set_parameter(QStringLiteral("par_Line_id"), line_id))
                     && query->set_parameter(QStringLiteral("par_Invoice_id"), line.invoice_id)
                     && query->set_parameter(QStringLiteral("par_Pupil_id"), or_null(line.pupil_id))
                     && query->set_parameter(QStringLiteral("par_Course_id"), or_null(line.course_id))
                     && query->set_parameter(QStringLiteral("par_Activity_id"), or_null(line.activity_id))
                     && query->set_parameter(QStringLiteral("par_Type"), line.type)
                     && query->set_parameter(QStringLiteral("par_Amount"), QVariant::fromValue(line.amount))
                     && query->set_parameter(QStringLiteral("par_Description"), line.description)
                     && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!ran) {
        report_unexpected(line_screen_tag, QStringLiteral("cmd_Update_Line"));
        return {false, false, QString()};
    }
    if (query->RecordsAffected() == 1)
        return {true, true, adding ? QStringLiteral("Line added successfully") : QStringLiteral("Line updated successfully")};
    return {true, false, adding ? QStringLiteral("COULD NOT ADD LINE") : QStringLiteral("COULD NOT UPDATE LINE")};
}

bool DB_Read_Invoice_Line(int line_id, LineRecord& line, bool& found)
{
    found = false;
    const QString routine = QStringLiteral("Display_Line for ") + QString::number(line_id);
    std::unique_ptr<engine::QueryDef> query = stored_query(QStringLiteral("Qry_Select_Invoice_Line"));
    std::unique_ptr<engine::Recordset> row =
        query && query->set_parameter(QStringLiteral("par_Line_id"), line_id) ? query->OpenRecordset() : nullptr;
    if (!row) {
        report_unexpected(reads_tag, routine);
        return false;
    }
    if (row->at_eof())
        return true;
    line.line_id = row->Fields(QStringLiteral("Invoice_Line_id")).toInt();
    line.invoice_id = row->Fields(QStringLiteral("Inv_Line_Inv_id")).toInt();
    line.pupil_id = id_or_nothing(row->Fields(QStringLiteral("Inv_Line_Pupil_id")));
    line.course_id = id_or_nothing(row->Fields(QStringLiteral("Inv_Line_Course_id")));
    line.activity_id = id_or_nothing(row->Fields(QStringLiteral("Inv_Line_Exam_id")));
    line.type = row->Fields(QStringLiteral("Inv_Line_Type")).toInt();
    line.description = row->Fields(QStringLiteral("Description")).toString();
    const QVariant amount = row->Fields(QStringLiteral("Amount"));
    line.amount = engine::Currency();
    if (amount.isValid() && !amount.isNull())
        vb::CCur(amount, line.amount);
    if (engine::Err().Number != 0) {
        report_unexpected(reads_tag, routine);
        return false;
    }
    found = true;
    return true;
}
