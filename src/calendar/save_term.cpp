// Update on the Term Dates screen: the term and its seven lesson counts, in
// one transaction.

#include "calendar/calendar_words.h"
#include "calendar/term_calendar.h"
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

namespace {

// Failures up to the term's row: a duplicate name or start has words of its own.
bool term_row_failure(int term_id)
{
    if (engine::Err().Number == engine::jet::DuplicateKey) {
        engine::Err().Clear();
        engine::MsgBox(QStringLiteral("There is already a term with this name or start date.") + QLatin1Char('\n')
                           + QStringLiteral("Choose a different name and try again"),
                       engine::mb::OkOnly, App_Title());
    } else {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error writing to Term_Dates"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("Term_id = ") + QString::number(term_id));
    }
    Program_Workspace().Rollback();
    return false;
}

bool lesson_rows_failure()
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error writing to Number Lessons"), engine::mb::Critical,
                 calendar_tag(), QStringLiteral("Save_Term"));
    Program_Workspace().Rollback();
    return false;
}

bool read_date(const QString& text, QDate& day)
{
    QDateTime value;
    if (!vb::CDate(text, value))
        return false;
    day = value.date();
    return true;
}

// Adds the term (id 0) or writes it over the stored one.
bool write_term_row(engine::Database& db, int term_id, const QString& name, QDate start, QDate end)
{
    std::unique_ptr<engine::QueryDef> query =
        db.QueryDefs(term_id == 0 ? QStringLiteral("Qry_Add_Term") : QStringLiteral("Qry_Update_Term"));
    if (!query)
        return false;
    if (term_id != 0 && !query->set_parameter(QStringLiteral("par_id"), term_id))
        return false;
    return query->set_parameter(QStringLiteral("par_Name"), name)
           && query->set_parameter(QStringLiteral("par_Start_Date"), engine::make_datetime(start))
           && query->set_parameter(QStringLiteral("par_End_Date"), engine::make_datetime(end))
           && query->Execute(engine::dbopt::FailOnErrorConsistent);
}

// The id of a term just added, found again by its name; 0 when it isn't there.
bool find_new_term(engine::Database& db, const QString& name, int& term_id)
{
    std::unique_ptr<engine::QueryDef> query = db.QueryDefs(QStringLiteral("Qry_Select_Term_Id"));
    std::unique_ptr<engine::Recordset> rows;
    if (query && query->set_parameter(QStringLiteral("par_Name"), name))
        rows = query->OpenRecordset();
    if (!rows)
        return false;
    term_id = rows->at_eof() ? 0 : rows->Fields(QStringLiteral("Term_id")).toInt();
    return true;
}

}  // namespace

bool TermCalendar::Save_Term()
{
    // The dates are checked again here: a term that ends before it starts
    // would be stored with no lessons at all.
    QDate start;
    QDate end;
    if (read_date(boxes.start, start) && read_date(boxes.end, end)) {
        const QString refusal = Term_Dates_Refusal(start, end);
        if (!refusal.isEmpty()) {
            engine::MsgBox(refusal, engine::mb::OkOnly, App_Title());
            return false;
        }
        if ((start != grid_start_ || end != grid_end_) && !Fill_Grid(start, end))
            return false;
    }
    engine::Err().Clear();

    engine::Workspace& workspace = Program_Workspace();
    int term_id = 0;
    if (!workspace.BeginTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error writing to Term_Dates"), engine::mb::Critical,
                     calendar_tag(), QStringLiteral("Term_id = 0"));
        return false;
    }
    // What the user sees is what is stored: the totals are not worked out again.
    const std::array<int, term_grid::Days> totals = grid_.totals;
    const QString name = boxes.name;
    if (!read_date(boxes.start, start) || !read_date(boxes.end, end))
        return term_row_failure(term_id);
    if (!Build_Hols_Str(start, end)) {
        // Nothing was written yet; closing the transaction keeps later work out of it.
        workspace.Rollback();
        return false;
    }

    engine::Database* db = current_database_or_error();
    if (!db)
        return term_row_failure(term_id);
    if (!boxes.term_id.trimmed().isEmpty()) {
        int32_t stored_id = 0;
        if (!vb::CLng(boxes.term_id, stored_id))
            return term_row_failure(term_id);
        term_id = stored_id;
    }
    if (!write_term_row(*db, term_id, name, start, end))
        return term_row_failure(term_id);
    if (term_id == 0) {
        if (!find_new_term(*db, name, term_id))
            return term_row_failure(term_id);
        if (term_id == 0) {
            Report_Error(report::Detected, QStringLiteral("Unexpected error writing to Term_Dates"), engine::mb::Critical,
                         calendar_tag(), QStringLiteral("Couldn't find after insert"));
            workspace.Rollback();
            return false;
        }
    }

    const QString id = QString::number(term_id);
    if (!db->Execute(QStringLiteral("DELETE * FROM Number_Lessons WHERE Term_id = ") + id + QStringLiteral(";"),
                     engine::dbopt::FailOnErrorConsistent))
        return lesson_rows_failure();
    std::unique_ptr<engine::QueryDef> lessons = db->QueryDefs(QStringLiteral("Qry_Insert_Number_Lessons"));
    if (!lessons || !lessons->set_parameter(QStringLiteral("p_Term_id"), term_id))
        return lesson_rows_failure();
    for (int day = 0; day < term_grid::Days; ++day) {
        if (!lessons->set_parameter(QStringLiteral("p_Day_Number"), day + 1)
            || !lessons->set_parameter(QStringLiteral("p_Num_Lessons"), totals[day])
            || !lessons->set_parameter(QStringLiteral("p_First"), engine::make_datetime(dates_.first[day]))
            || !lessons->set_parameter(QStringLiteral("p_Last"), engine::make_datetime(dates_.last[day]))
            || !lessons->set_parameter(QStringLiteral("p_Hols_Str"), holidays_text_[day])
            || !lessons->Execute(engine::dbopt::FailOnErrorConsistent))
            return lesson_rows_failure();
    }

    // The box stands before the commit, as it always has.
    engine::MsgBox(QStringLiteral("Saved successfully"), engine::mb::OkOnly, App_Title());
    differs_.fill(false);
    if (!workspace.CommitTrans())
        return lesson_rows_failure();
    boxes.term_id = id;
    return true;
}
