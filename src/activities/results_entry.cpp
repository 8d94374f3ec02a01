#include "activities/results_entry.h"

#include "activities/timetable_times.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"

namespace {

const QString module = QStringLiteral("fexamtim");

void box(const QString& text)
{
    engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

void unexpected(const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Information, module, routine);
}

std::unique_ptr<engine::QueryDef> query_of_date(const QString& name, const QVariant& date)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    if (!query || !query->set_parameter(QStringLiteral("par_startDate"), date))
        return nullptr;
    return query;
}

// A blank cell stores Null; anything else must convert to a 16-bit whole number.
bool short_or_null(const QString& text, QVariant& value)
{
    if (text.trimmed().isEmpty()) {
        value = QVariant();
        return true;
    }
    int16_t number = 0;
    if (!vb::CInt(text, number))
        return false;
    value = number;
    return true;
}

}  // namespace

QVector<txg_column> ResultsEntry::columns()
{
    const auto column = [](const char* title, short type) { return txg_column{QString::fromLatin1(title), type, 0, false, {}}; };
    return {column("Pupil Name", txg::Locked), column("Activity Title", txg::Locked), column("Date", txg::Editable),
            column("Time", txg::Editable),     column("Order", txg::Editable),         column("Mark", txg::Editable),
            column("Grade", txg::Editable),    column("Teacher", txg::Locked),         column("Result_id", txg::Invisible)};
}

void ResultsEntry::Initialise()
{
    grid_.txg_Initialise(txg::Whole_Row, columns());
}

bool ResultsEntry::Setup_Controls()
{
    engine::Database* db = current_database_or_error();
    dates_ = db ? db->OpenRecordset(QStringLiteral("Qry_Select_Dates_Of_Exam")) : nullptr;
    teachers_ = db ? db->OpenRecordset(QStringLiteral("Select * from Teachers")) : nullptr;
    if (!dates_ || !teachers_) {
        unexpected(QStringLiteral("Setup_Controls"));
        return false;
    }
    return true;
}

void ResultsEntry::Close()
{
    if (dates_)
        dates_->Close();
    if (teachers_)
        teachers_->Close();
    dates_.reset();
    teachers_.reset();
}

// ---- Filling the grid ----

QString ResultsEntry::Find_Teacher_Name(const QVariant& teacher_id) const
{
    if (teacher_id.isNull() || !teacher_id.isValid())
        return QString();
    if (!teachers_ || teachers_->RecordCount() == 0)
        return QStringLiteral("eeee");
    if (!teachers_->FindFirst(QStringLiteral("Teacher_id = ") + QString::number(teacher_id.toLongLong())) || teachers_->NoMatch()) {
        engine::Err().Clear();
        return QStringLiteral("uuuu");
    }
    const QVariant nickname = teachers_->Fields(QStringLiteral("Teacher_Nickname"));
    if (!nickname.isNull() && nickname.isValid())
        return vb::CStr(nickname);
    return vb::CStr(teachers_->Fields(QStringLiteral("Teacher_Name"))) + QStringLiteral(" ")
           + vb::CStr(teachers_->Fields(QStringLiteral("Teacher_SurName")));
}

QStringList ResultsEntry::row_values(const engine::Recordset& rows) const
{
    const auto text = [&rows](const char* name) { return vb::CStr(rows.Fields(QString::fromLatin1(name))); };
    const QVariant day = rows.Fields(QStringLiteral("EDay"));
    return {text("DisplayName"),
            text("Title"),
            day.isNull() ? QString() : vb::Format(day, Glob_Date_Format()),
            timetable::time_text(text("ETime")),
            text("EOrder"),
            text("Mark"),
            text("Grade"),
            Find_Teacher_Name(rows.Fields(QStringLiteral("Teacher_id"))),
            text("results_id")};
}

bool ResultsEntry::Get_Register(bool date_chosen)
{
    if (!date_chosen || !dates_ || dates_->at_bof() || dates_->at_eof()) {
        box(QStringLiteral("Please select a date"));
        return true;
    }
    filling_ = true;
    std::unique_ptr<engine::QueryDef> query =
        query_of_date(QStringLiteral("Qry_Select_Exam_Date"), dates_->Fields(QStringLiteral("ActT_Date")));
    std::unique_ptr<engine::Recordset> rows = query ? query->OpenRecordset() : nullptr;
    grid_.txg_clear();
    if (!rows) {
        filling_ = false;
        unexpected(QStringLiteral("Get_Register"));
        return false;
    }
    if (rows->RecordCount() > 0 && rows->MoveFirst()) {
        for (; !rows->at_eof(); rows->MoveNext())
            grid_.txg_add_row(true, row_values(*rows));
        grid_.txg_show();
    } else {
        status = QStringLiteral("No data for this date");
    }
    filling_ = false;
    return true;
}

// ---- Editing ----

bool ResultsEntry::Element_Left(int element, const QString& typed)
{
    if (filling_)
        return true;
    QString old_text;
    grid_.txg_change(element, typed, old_text);
    const short row = grid_.record().current_row;
    const short column = grid_.record().current_col;
    const QString now = grid_.elements().value(element).text;
    if (row == -1 || column == -1 || now == old_text)
        return true;
    const QString refusal = dates_ ? Cell_Refusal(column, now, *dates_) : QString();
    if (!refusal.isEmpty()) {
        box(refusal);
        grid_.put_text(row, column, old_text);
        grid_.txg_repaint();
        return false;
    }
    grid_.txg_change_colour(row, result::Changed, column);
    grid_.txg_change_colour(row, result::Changed, result::Result_id);
    return true;
}

// ---- Storing ----

colours::Rgb ResultsEntry::key_colour(short row)
{
    QString text;
    colours::Rgb colour = txg::Default_Cell;
    bool highlighted = false;
    grid_.txg_get_data(row, result::Result_id, text, colour, highlighted);
    return colour;
}

bool ResultsEntry::Update_Result(short row)
{
    const QStringList cells = grid_.row_texts(row);
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Update_Exam_Results")) : nullptr;
    int32_t id = 0;
    QDateTime day;
    QVariant mark;
    QVariant order;
    const QString time = cells.value(result::Time - 1);
    const bool stored = query && vb::CLng(cells.value(result::Result_id - 1), id)
                        && vb::CDate(cells.value(result::Date - 1), day)
                        && short_or_null(cells.value(result::Mark - 1), mark)
                        && short_or_null(cells.value(result::Order - 1), order)
                        && query->set_parameter(QStringLiteral("par_Result_id"), id)
                        && query->set_parameter(QStringLiteral("par_DAte"), day)
                        && query->set_parameter(QStringLiteral("par_time"),
                                                timetable::is_blank(time) ? QVariant() : QVariant(timetable::time_text(time)))
                        && query->set_parameter(QStringLiteral("par_Mark"), mark)
                        && query->set_parameter(QStringLiteral("par_Grade"), cells.value(result::Grade - 1))
                        && query->set_parameter(QStringLiteral("par_order"), order)
                        && query->Execute(engine::dbopt::FailOnErrorConsistent);
    if (!stored)
        Report_Error(report::Unexpected, QStringLiteral("Could not update Exam Results table"), engine::mb::Information, module,
                     QStringLiteral("Update_Result"));
    return stored;
}

void ResultsEntry::cmd_Update(bool date_chosen)
{
    status = QStringLiteral("beginning the update");
    int failed = 0;
    for (short row = 1; row <= grid_.record().last_row; ++row) {
        if (key_colour(row) != result::Changed || Update_Result(row))
            continue;
        // The other rows are still tried; this one stays as typed, marked.
        grid_.txg_change_colour(row, result::Failed, result::Result_id);
        grid_.txg_highlight(row);
        ++failed;
    }
    if (failed < 1) {
        status = QStringLiteral("Update successful");
        Get_Register(date_chosen);
    } else {
        status = QStringLiteral("Highlighted rows NOT updated");
    }
}

bool ResultsEntry::cmd_Teachers(bool date_chosen)
{
    if (!date_chosen || !dates_ || dates_->at_bof() || dates_->at_eof()) {
        box(QStringLiteral("Please select a date"));
        return true;
    }
    std::unique_ptr<engine::QueryDef> query =
        query_of_date(QStringLiteral("Qry_Update_Exam_Teachers"), dates_->Fields(QStringLiteral("ActT_Date")));
    if (!query || !query->Execute(engine::dbopt::FailOnErrorConsistent)) {
        unexpected(QStringLiteral("cmd_Teachers_Click"));
        return false;
    }
    return Get_Register(date_chosen);
}

bool ResultsEntry::has_changes()
{
    for (short row = 1; row <= grid_.record().last_row; ++row)
        if (key_colour(row) == result::Changed)
            return true;
    return false;
}
