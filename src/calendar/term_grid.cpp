#include "calendar/term_grid.h"

#include "engine/jet_date.h"

int weekday_index(QDate date)
{
    return date.dayOfWeek() % term_grid::Days;  // Qt numbers Monday 1 .. Sunday 7
}

TermSpan check_term_span(QDate start, QDate end)
{
    const qint64 days = start.daysTo(end);
    if (days < 0)
        return TermSpan::EndBeforeStart;
    if (days > term_grid::Cells)
        return TermSpan::TooLong;
    return TermSpan::Fits;
}

void walk_term_grid(QDate start, QDate end, const std::function<bool(QDate)>& is_holiday, TermGrid& grid,
                    WeekdayDates& dates)
{
    const int first_column = weekday_index(start);
    dates.first.fill(engine::zero_date());
    dates.last.fill(engine::zero_date());
    for (int i = 0; i < term_grid::Days; ++i)
        dates.first[(first_column + i) % term_grid::Days] = start.addDays(i);

    QDate day = start;
    for (int cell = first_column; cell < term_grid::Cells && day <= end; ++cell, day = day.addDays(1)) {
        const int column = cell % term_grid::Days;
        grid.cells[cell].date = day;
        dates.last[column] = day;
        if (is_holiday(day))
            grid.cells[cell].holiday = true;
        else
            ++grid.totals[column];
    }
}
