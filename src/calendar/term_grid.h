#pragma once
// The walk of a term over the calendar grid: 16 weeks of 7 cells, Sunday
// first, giving each weekday its number of lessons and its first and last
// dates. Nothing here touches the database or a screen.

#include <QDate>
#include <array>
#include <functional>

namespace term_grid {
inline constexpr int Days = 7;
inline constexpr int Weeks = 16;
inline constexpr int Cells = Days * Weeks;  // 112
}  // namespace term_grid

// The weekday index of a date as the screen uses it: 0 Sunday to 6 Saturday.
int weekday_index(QDate date);

struct GridCell {
    QDate date;  // null for a blank cell
    bool holiday = false;
};

// What the grid shows of a term.
struct TermGrid {
    std::array<GridCell, term_grid::Cells> cells{};
    std::array<int, term_grid::Days> totals{};  // lessons per weekday index
};

// Per weekday index: the first date at or after the start (holidays not
// skipped, even beyond the end in a short term) and the last date on the
// grid (the zero date when the weekday never occurs).
struct WeekdayDates {
    std::array<QDate, term_grid::Days> first{};
    std::array<QDate, term_grid::Days> last{};
};

enum class TermSpan { Fits, EndBeforeStart, TooLong };

// An end before the start is refused, and so is an end more than 112 days
// after the start. A span that passes may still not fit: see walk_term_grid.
TermSpan check_term_span(QDate start, QDate end);

// Fills an empty grid from the start's own weekday in the first row on, and
// sets every first and last date. The walk ends at the end date or at the
// last cell, whichever comes first: a term that starts late in the week has
// fewer than 112 cells (106 from a Saturday), and dates beyond the last cell
// are left out of the totals and the last dates.
void walk_term_grid(QDate start, QDate end, const std::function<bool(QDate)>& is_holiday, TermGrid& grid,
                    WeekdayDates& dates);
