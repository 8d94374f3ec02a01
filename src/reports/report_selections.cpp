#include "reports/report_selections.h"

#include "engine/database.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"

#include <QStringList>
#include <functional>
#include <memory>

namespace selections {

namespace {

const QString tag = QStringLiteral("freports");

const QString pupil_failure = QStringLiteral("Unexpected error selecting a pupil's family");

// The query of the pupils' names, up to the list of ids. Setup_Changed_Pupils
// has always written the table in the singular in its last piece.
QString pupil_query(bool singular_table)
{
    return QStringLiteral("SELECT Pupils.Pupil_FirstName AS FirstName, ") + QStringLiteral(" Families.Family_Name AS FamilyName ")
           + QStringLiteral(" FROM Pupils, Families ") + QStringLiteral(" WHERE Pupils.Pupil_Family_id = Families.Family_id ")
           + (singular_table ? QStringLiteral(" AND Pupil.Pupil_id IN ( ") : QStringLiteral(" AND Pupils.Pupil_id IN ( "));
}

QString family_query()
{
    return QStringLiteral("SELECT DISTINCT Pupil_Family_id, Family_Name ") + QStringLiteral("FROM PUPILS, FAMILIES ")
           + QStringLiteral("WHERE Pupils.Pupil_Family_id = Families.Family_id ") + QStringLiteral("AND Pupils.Pupil_id IN ( ");
}

QString pupil_name(const engine::Recordset& row)
{
    return row.Fields(QStringLiteral("FirstName")).toString() + QLatin1Char(' ') + row.Fields(QStringLiteral("FamilyName")).toString();
}

// One kind of list turned into a formula of ids.
struct IdKind {
    QString routine;
    QString failure;          // the words of a failure to read the names
    QString invoice_field;    // with invoice_form
    QString master_field;     // otherwise
    QString names_query;      // up to the list of ids
    std::function<QString(const engine::Recordset&)> name_of;
};

QString field_of(const QString& column, const engine::Recordset& row)
{
    return row.Fields(column).toString();
}

// A failure to read the names: nothing half-built is left for the caller.
bool failed(const QString& failure, const QString& routine, QString& selection, QString& shown, int& status)
{
    Report_Error(report::Unexpected, failure, engine::mb::Critical, tag, routine);
    selection.clear();
    shown.clear();
    status = 0;
    return false;
}

// The rows of `sql` on the current database; null (engine error set) when it can't be read.
std::unique_ptr<engine::Recordset> open_rows(const QString& sql)
{
    engine::Database* db = current_database_or_error();
    return db ? db->OpenRecordset(sql) : nullptr;
}

// Walks the rows from the first, giving each to `each`; false when a move fails.
bool for_each_row(engine::Recordset& rows, const std::function<void(const engine::Recordset&)>& each)
{
    while (!rows.at_eof()) {
        each(rows);
        if (!rows.MoveNext())
            return false;
    }
    return true;
}

// The ids of the list that count, as the text of the query's IN list ("3, 8").
QStringList counted_ids(const IdList& list)
{
    QStringList ids;
    for (qint32 id : list.chosen())
        if (id > 0)
            ids << QString::number(id);
    return ids;
}

bool setup_ids(const IdList& list, const IdKind& kind, bool invoice_form, QString& selection, QString& shown, int& status)
{
    selection.clear();
    shown.clear();
    status = 0;
    const QString field = invoice_form ? kind.invoice_field : kind.master_field;
    if (list.is_empty())
        return true;
    const QStringList ids = counted_ids(list);
    for (const QString& id : ids) {
        if (!selection.isEmpty())
            selection += QStringLiteral(" OR ");
        selection += field + id;
    }
    if (selection.trimmed().isEmpty())
        return true;
    selection = QLatin1Char('(') + selection + QLatin1Char(')');

    std::unique_ptr<engine::Recordset> rows = open_rows(kind.names_query + ids.join(QStringLiteral(", ")) + QStringLiteral(");"));
    if (!rows || !for_each_row(*rows, [&](const engine::Recordset& row) { shown += kind.name_of(row) + QStringLiteral(", "); }))
        return failed(kind.failure, kind.routine, selection, shown, status);
    rows->Close();
    status = 1;
    return true;
}

// The pupils of the list as their families: the formula is made of the
// distinct families that the pupils belong to.
bool setup_families(const IdList& list, const QString& routine, bool invoice_form, QString& selection, QString& shown,
                    int& status)
{
    selection.clear();
    shown.clear();
    status = 0;
    const QString field =
        invoice_form ? QStringLiteral("{invoices.invoice_family_id} = ") : QStringLiteral("{families.family_id} = ");
    if (list.is_empty())
        return true;
    const QStringList ids = counted_ids(list);
    if (ids.isEmpty())
        return true;

    std::unique_ptr<engine::Recordset> rows = open_rows(family_query() + ids.join(QStringLiteral(", ")) + QStringLiteral(");"));
    const auto add_family = [&](const engine::Recordset& row) {
        if (!selection.isEmpty())
            selection += QStringLiteral(" OR ");
        selection += field + QString::number(row.Fields(QStringLiteral("Pupil_Family_id")).toLongLong());
        shown += row.Fields(QStringLiteral("Family_Name")).toString() + QStringLiteral(", ");
    };
    if (!rows || !for_each_row(*rows, add_family))
        return failed(pupil_failure, routine, selection, shown, status);
    rows->Close();
    // Pupils that are no longer there select no family.
    if (selection.trimmed().isEmpty()) {
        shown.clear();
        return true;
    }
    selection = QLatin1Char('(') + selection + QLatin1Char(')');
    status = 1;
    return true;
}

IdKind pupils_kind(const QString& routine, const QString& failure, bool singular_table)
{
    return {routine,
            failure,
            QStringLiteral("{Invoice_Lines.Inv_Line_Pupil_id} = "),
            QStringLiteral("{pupils.pupil_id} = "),
            pupil_query(singular_table),
            pupil_name};
}

}  // namespace

bool Setup_Terms(bool invoice_form, QString& selection, QString& shown, int& status)
{
    static const IdKind kind{QStringLiteral("Setup_Terms"),
                             QStringLiteral("Unexpected error selecting a term"),
                             QStringLiteral("{invoices.invoice_term_id} = "),
                             QStringLiteral("{Term_Dates.Term_id} = "),
                             QStringLiteral("SELECT term_name FROM Term_Dates ") + QStringLiteral(" WHERE Term_id IN ( "),
                             [](const engine::Recordset& row) { return field_of(QStringLiteral("Term_Name"), row); }};
    return setup_ids(Sel_Terms(), kind, invoice_form, selection, shown, status);
}

bool Setup_courses(bool invoice_form, QString& selection, QString& shown, int& status)
{
    static const IdKind kind{QStringLiteral("Setup_courses"),
                             QStringLiteral("Unexpected error selecting a course"),
                             QStringLiteral("{Invoice_Lines.Inv_Line_Course_id} = "),
                             QStringLiteral("{Courses.Course_id} = "),
                             QStringLiteral("SELECT course_title FROM Courses ") + QStringLiteral(" WHERE Course_id IN ( "),
                             [](const engine::Recordset& row) { return field_of(QStringLiteral("Course_Title"), row); }};
    return setup_ids(Sel_Courses(), kind, invoice_form, selection, shown, status);
}

bool Setup_pupils(bool invoice_form, QString& selection, QString& shown, int& status)
{
    static const IdKind kind =
        pupils_kind(QStringLiteral("Setup_pupils"), QStringLiteral("Unexpected error selecting a pupil"), false);
    return setup_ids(Sel_Pupils(), kind, invoice_form, selection, shown, status);
}

bool Setup_exams(bool invoice_form, QString& selection, QString& shown, int& status)
{
    static const IdKind kind{QStringLiteral("Setup_exams"),
                             QStringLiteral("Unexpected error selecting an Activity"),
                             QStringLiteral("{Invoice_Lines.Inv_Line_Exam_id} = "),
                             QStringLiteral("{exams.exam_id} = "),
                             QStringLiteral("SELECT exam_title FROM Exams ") + QStringLiteral(" WHERE Exam_id IN ( "),
                             [](const engine::Recordset& row) { return field_of(QStringLiteral("Exam_Title"), row); }};
    return setup_ids(Sel_Activities(), kind, invoice_form, selection, shown, status);
}

bool Setup_Pupil_Families(bool invoice_form, QString& selection, QString& shown, int& status)
{
    return setup_families(Sel_Pupils(), QStringLiteral("Setup_Pupil_Families"), invoice_form, selection, shown, status);
}

bool Setup_Changed_Pupils(bool invoice_form, QString& selection, QString& shown, int& status)
{
    static const IdKind kind = pupils_kind(QStringLiteral("Setup_Changed_Pupils"), pupil_failure, true);
    return setup_ids(Changed_Pupils(), kind, invoice_form, selection, shown, status);
}

bool Setup_Changed_Families(bool invoice_form, QString& selection, QString& shown, int& status)
{
    return setup_families(Changed_Pupils(), QStringLiteral("Setup_Changed_Families"), invoice_form, selection, shown,
                          status);
}

bool Setup_Dates(bool invoice_form, QString& selection, QString& shown, int& status)
{
    selection.clear();
    shown.clear();
    status = 0;
    const QString field =
        invoice_form ? QStringLiteral("{invoices.invoice_Activity_Date} = ") : QStringLiteral("{Exam_Results.Results_Date} =");
    const DateList& list = Sel_Activity_Dates();
    if (list.is_empty())
        return true;
    QStringList days;
    for (const QDate& day : list.chosen()) {
        // A date counts when it is above the date value 0.
        if (!day.isValid() || day <= engine::zero_date())
            continue;
        if (!selection.isEmpty())
            selection += QStringLiteral(" OR ");
        selection += field + QStringLiteral(" Date(") + QString::number(day.year()) + QLatin1Char(',')
                     + QString::number(day.month()) + QLatin1Char(',') + QString::number(day.day()) + QLatin1Char(')');
        days << vb::Format(engine::make_datetime(day), Glob_Date_Format());
    }
    if (selection.trimmed().isEmpty())
        return true;
    selection = QLatin1Char('(') + selection + QLatin1Char(')');
    shown = days.join(QStringLiteral(", "));
    status = 1;
    return true;
}

bool Setup_Invoices(QString& selection, int& status)
{
    selection.clear();
    status = 0;
    QString dummy_shown;
    const QString failure = QStringLiteral("Unexpected error selecting the invoices");
    const QString routine = QStringLiteral("Setup_Invoices");
    std::unique_ptr<engine::Recordset> rows = open_rows(QStringLiteral("SELECT * FROM tmp_Invoices;"));
    const auto add_invoice = [&](const engine::Recordset& row) {
        if (!selection.isEmpty())
            selection += QStringLiteral(" OR ");
        selection += QStringLiteral("{Invoices.Invoice_id} = ")
                     + QString::number(row.Fields(QStringLiteral("tmp_invoice_id")).toLongLong());
    };
    if (!rows || !for_each_row(*rows, add_invoice))
        return failed(failure, routine, selection, dummy_shown, status);
    rows->Close();
    engine::Database* db = current_database_or_error();
    if (!db || !db->Execute(QStringLiteral("DELETE * FROM Tmp_Invoices;"), engine::dbopt::FailOnErrorConsistent))
        return failed(failure, routine, selection, dummy_shown, status);
    if (selection.isEmpty())
        return true;
    selection = QLatin1Char('(') + selection + QLatin1Char(')');
    status = 1;
    return true;
}

}  // namespace selections
