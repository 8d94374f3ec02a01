#include "calendar/term_calendar.h"

#include "calendar/calendar_db.h"
#include "calendar/calendar_words.h"
#include "engine/database.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"

namespace {

void report_unexpected(const QString& routine)
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Critical, calendar_tag(), routine);
}

bool refuse_span(TermSpan span)
{
    switch (span) {
    case TermSpan::Fits:
        return false;
    case TermSpan::EndBeforeStart:
        engine::MsgBox(QStringLiteral("end date is before start date"), engine::mb::OkOnly, App_Title());
        return true;
    case TermSpan::TooLong:
        engine::MsgBox(QStringLiteral("Sorry, I cannot handle this number of weeks per term!"), engine::mb::OkOnly, App_Title());
        return true;
    }
    return true;
}

QString long_date(QDate day)
{
    return vb::Format(engine::make_datetime(day), Glob_Date_Format());
}

std::unique_ptr<engine::Recordset> open_term(int term_id)
{
    engine::Database* db = current_database_or_error();
    return db ? db->OpenRecordset(QStringLiteral("SELECT * FROM Term_Dates WHERE Term_id = ") + QString::number(term_id))
              : nullptr;
}

}  // namespace

TermCalendar::TermCalendar()
{
    dates_.first.fill(engine::zero_date());
    dates_.last.fill(engine::zero_date());
}

QString TermCalendar::cell_text(int n) const
{
    const QDate day = cell(n).date;
    return day.isValid() ? long_date(day) : QString();
}

unsigned TermCalendar::cell_colour(int n) const
{
    return cell(n).holiday ? calendar_colour::Holiday : calendar_colour::School_Day;
}

unsigned TermCalendar::total_colour(int day) const
{
    return total_differs(day) ? calendar_colour::Total_Differs : calendar_colour::Total;
}

QString Term_Dates_Refusal(QDate start, QDate end)
{
    switch (check_term_span(start, end)) {
    case TermSpan::Fits:
        return QString();
    case TermSpan::EndBeforeStart:
        return QStringLiteral("The end date is before the start date.") + QLatin1Char('\n')
               + QStringLiteral("Please enter an end date on or after the start date.");
    case TermSpan::TooLong:
        return QStringLiteral("The term is longer than the 16 weeks that the calendar can show.") + QLatin1Char('\n')
               + QStringLiteral("Please enter an earlier end date.");
    }
    return QString();
}

void TermCalendar::Clear_Grid()
{
    grid_ = TermGrid{};
    differs_.fill(false);
    grid_start_ = QDate();
    grid_end_ = QDate();
}

void TermCalendar::Clear_Screen()
{
    Clear_Grid();
    boxes = Boxes{};
}

bool TermCalendar::Fill_Grid(QDate start, QDate end)
{
    Clear_Grid();
    if (refuse_span(check_term_span(start, end)))
        return false;

    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Holidays")) : nullptr;
    std::unique_ptr<engine::Recordset> holidays;
    if (query && query->set_parameter(QStringLiteral("p_start_date"), engine::make_datetime(start))
        && query->set_parameter(QStringLiteral("p_end_date"), engine::make_datetime(end)))
        holidays = query->OpenRecordset();
    if (!holidays) {
        report_unexpected(QStringLiteral("Fill_Grid"));
        return false;
    }
    // Searched as the screen always searched them: by the date in American order.
    const auto is_holiday = [&holidays](QDate day) {
        const QString criteria = QStringLiteral("day_off = #")
                                 + vb::Format(engine::make_datetime(day), QStringLiteral("mm/dd/yyyy")) + QLatin1Char('#');
        return holidays->FindFirst(criteria) && !holidays->NoMatch();
    };
    walk_term_grid(start, end, is_holiday, grid_, dates_);
    grid_start_ = start;
    grid_end_ = end;
    return true;
}

void TermCalendar::click_cell(int n)
{
    if (n < 0 || n >= term_grid::Cells)
        return;
    GridCell& clicked = grid_.cells[n];
    if (!clicked.date.isValid())
        return;
    int& weekday_total = grid_.totals[n % term_grid::Days];
    if (clicked.holiday) {
        if (DB_Delete_Holiday(clicked.date)) {
            clicked.holiday = false;
            ++weekday_total;
        }
    } else if (DB_Insert_Holiday(clicked.date)) {
        clicked.holiday = true;
        --weekday_total;
    }
}

bool TermCalendar::Check_Totals(int term_id)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Number_Lessons")) : nullptr;
    std::unique_ptr<engine::Recordset> rows;
    if (query && query->set_parameter(QStringLiteral("p_Term_id"), term_id))
        rows = query->OpenRecordset();
    if (!rows) {
        report_unexpected(QStringLiteral("Check_Totals"));
        return false;
    }
    std::array<int, term_grid::Days> stored{};
    for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext()) {
        const int day = rows->Fields(QStringLiteral("Day_Number")).toInt() - 1;
        if (day >= 0 && day < term_grid::Days)
            stored[day] = rows->Fields(QStringLiteral("Num_Lessons")).toInt();
    }
    bool all_match = true;
    for (int day = 0; day < term_grid::Days; ++day) {
        if (grid_.totals[day] != stored[day]) {
            differs_[day] = true;
            all_match = false;
        }
    }
    return all_match;
}

bool TermCalendar::load_term(int term_id, bool& totals_match)
{
    totals_match = true;
    std::unique_ptr<engine::Recordset> term = open_term(term_id);
    if (!term) {
        report_unexpected(QStringLiteral("read_from_db"));
        return false;
    }
    if (term->at_eof()) {
        Clear_Screen();
        return false;
    }
    const QDate start = term->Fields(QStringLiteral("Term_Start")).toDateTime().date();
    const QDate end = term->Fields(QStringLiteral("Term_End")).toDateTime().date();
    const bool filled = Fill_Grid(start, end);
    boxes.start = long_date(start);
    boxes.end = long_date(end);
    boxes.term_id = QString::number(term_id);
    boxes.name = term->Fields(QStringLiteral("Term_Name")).toString();
    // A grid that could not be filled (the failure is reported) says nothing
    // of the stored counts: comparing with it would offer to store zeros.
    totals_match = !filled || Check_Totals(term_id);
    const int invoices = DB_Term_Invoice_Count(term_id);
    boxes.num_invoices = invoices < 0 ? QStringLiteral(" ") : QString::number(invoices);
    return true;
}
