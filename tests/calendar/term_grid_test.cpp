#include "calendar/term_grid.h"
#include "engine/jet_date.h"

#include <QSet>

#include <gtest/gtest.h>

namespace {

const QDate sunday(2026, 1, 4);
const QDate saturday(2026, 1, 10);

struct Walk {
    TermGrid grid;
    WeekdayDates dates;
    int filled_cells() const
    {
        int filled = 0;
        for (const GridCell& cell : grid.cells)
            filled += cell.date.isValid() ? 1 : 0;
        return filled;
    }
};

Walk walk(QDate start, QDate end, const QSet<QDate>& holidays = {})
{
    Walk result;
    walk_term_grid(start, end, [&holidays](QDate day) { return holidays.contains(day); }, result.grid, result.dates);
    return result;
}

TEST(TermGridTest, EachWeekdayHasItsLessonsAndFirstAndLastDatesOrTheZeroDate)
{
    const Walk week = walk(sunday, saturday);
    for (int day = 0; day < term_grid::Days; ++day) {
        EXPECT_EQ(week.grid.totals[day], 1) << day;
        EXPECT_EQ(week.dates.first[day], sunday.addDays(day)) << day;
        EXPECT_EQ(week.dates.last[day], week.dates.first[day]) << day;
        EXPECT_EQ(week.grid.cells[day].date, sunday.addDays(day));
    }
    EXPECT_EQ(week.filled_cells(), 7);

    // A three-day term leaves the absent weekdays with the zero date and first dates beyond the end.
    const QDate wednesday(2026, 1, 7);
    const QDate friday(2026, 1, 9);
    const Walk term = walk(wednesday, friday);
    EXPECT_EQ(term.grid.cells[3].date, wednesday);  // the first row starts at the start's own weekday
    EXPECT_FALSE(term.grid.cells[2].date.isValid());
    for (int day : {3, 4, 5}) {
        EXPECT_EQ(term.grid.totals[day], 1);
        EXPECT_EQ(term.dates.last[day], term.dates.first[day]);
    }
    for (int day : {0, 1, 2, 6}) {
        EXPECT_EQ(term.grid.totals[day], 0);
        EXPECT_EQ(term.dates.last[day], engine::zero_date()) << day;
        EXPECT_GT(term.dates.first[day], friday) << day;
    }
    EXPECT_EQ(term.dates.first[6], QDate(2026, 1, 10));
    EXPECT_EQ(term.dates.first[2], QDate(2026, 1, 13));
}

TEST(TermGridTest, ALongTermIsClippedAtTheLastCell)
{
    // From a Sunday every cell is filled and the 113th date falls off.
    const Walk from_sunday = walk(sunday, sunday.addDays(112));
    EXPECT_EQ(from_sunday.filled_cells(), 112);
    EXPECT_EQ(from_sunday.dates.last[0], sunday.addDays(105));
    for (int day = 0; day < term_grid::Days; ++day)
        EXPECT_EQ(from_sunday.grid.totals[day], 16);

    // From a Saturday only the 106 cells from index 6 on are filled.
    const Walk from_saturday = walk(saturday, saturday.addDays(112));
    EXPECT_EQ(from_saturday.filled_cells(), 106);
    EXPECT_EQ(from_saturday.grid.cells[6].date, saturday);
    EXPECT_EQ(from_saturday.grid.cells[111].date, saturday.addDays(105));
    EXPECT_EQ(from_saturday.grid.totals[6], 16);
    EXPECT_EQ(from_saturday.grid.totals[0], 15);
    EXPECT_EQ(from_saturday.dates.last[5], saturday.addDays(104));
}

TEST(TermGridTest, HolidaysAreMarkedAndLeftOutOfTheTotalsButNotOutOfTheDates)
{
    const QDate first_monday(2026, 1, 5);
    const QDate last_monday(2026, 1, 26);
    const Walk term = walk(sunday, QDate(2026, 1, 31), {first_monday, last_monday});
    EXPECT_EQ(term.grid.totals[1], 2);
    EXPECT_EQ(term.grid.totals[2], 4);
    EXPECT_TRUE(term.grid.cells[1].holiday);
    EXPECT_FALSE(term.grid.cells[8].holiday);
    EXPECT_EQ(term.dates.first[1], first_monday);
    EXPECT_EQ(term.dates.last[1], last_monday);
}

}  // namespace
