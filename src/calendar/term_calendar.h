#pragma once
// The Term Dates screen's state and calculation, without widgets: the text
// boxes' contents, the grid of 112 cells with its holidays, the totals under
// it and the first and last dates and holiday list per weekday. The screen
// shows what this holds, passes on clicks and buttons, and reads the colours
// back from here.

#include "calendar/term_grid.h"

#include <QDate>
#include <QString>
#include <array>

// The colours that carry meaning on the screen, as 0xRRGGBB.
namespace calendar_colour {
inline constexpr unsigned Header = 0x008000;         // the weekday headers
inline constexpr unsigned School_Day = 0xFFFFC0;     // a cell in its normal state, dated or blank
inline constexpr unsigned Holiday = 0xC0C0FF;        // a cell that is a holiday
inline constexpr unsigned Total = 0x00C0C0;          // a total in its normal state
inline constexpr unsigned Total_Differs = 0xFF0000;  // a total unlike the stored lesson count
}  // namespace calendar_colour

// Why a term with these dates can't be stored: its end is before its start,
// or it is longer than the grid can show. Empty when the dates will do.
QString Term_Dates_Refusal(QDate start, QDate end);

class TermCalendar {
public:
    // What the screen's text boxes hold, as typed or as shown.
    struct Boxes {
        QString term_id;       // blank for a term not yet saved
        QString name;
        QString start;
        QString end;
        QString num_invoices;  // invoices using this term
    };

    TermCalendar();

    Boxes boxes;

    // The grid.
    const GridCell& cell(int n) const { return grid_.cells.at(n); }
    QString cell_text(int n) const;  // the date in the long date format; blank cells empty
    unsigned cell_colour(int n) const;
    int total(int day) const { return grid_.totals.at(day); }
    unsigned total_colour(int day) const;
    bool total_differs(int day) const { return differs_.at(day); }
    QDate first_date(int day) const { return dates_.first.at(day); }
    QDate last_date(int day) const { return dates_.last.at(day); }
    QString holidays_text(int day) const { return holidays_text_.at(day); }
    // The end put in when the start is typed with no end: start + 14 weeks.
    QDate default_end_date() const { return default_end_; }
    void set_default_end_date(QDate end) { default_end_ = end; }

    // Blanks every cell and sets every total to 0, in their normal colours.
    void Clear_Grid();
    // Clear_Grid, then blanks start, end, name, invoices and id.
    void Clear_Screen();
    // Shows a term on the grid with its holidays and totals. A span that
    // is refused gets its message and leaves the grid empty; the first and
    // last dates then keep what they held.
    bool Fill_Grid(QDate start, QDate end);
    // A click on cell n: a date becomes a holiday, or a holiday a school day,
    // in the database at once; the total follows. A blank cell, or a failed
    // database change, leaves everything as it was.
    void click_cell(int n);
    // Compares the totals with the lesson counts stored for the term; each
    // that differs turns red. True when none differs.
    bool Check_Totals(int term_id);
    // The holidays of each weekday between start and end, as "dd-mmm, dd-mmm".
    bool Build_Hols_Str(QDate start, QDate end);
    // Stores the term from the boxes, and its seven lesson counts from the
    // totals as shown, in one transaction. On success the id box holds the id.
    // Dates that Term_Dates_Refusal refuses are refused with its words and
    // nothing is written; a grid that shows other dates than the boxes is
    // filled from the boxes first, so that the counts stored are the term's.
    bool Save_Term();

    // Shows a stored term as the screen does on moving to it: grid, boxes,
    // the check of the totals and the count of invoices. `totals_match` is
    // what Check_Totals found; the screen asks to save when it is false.
    bool load_term(int term_id, bool& totals_match);

private:
    TermGrid grid_;
    // The dates the grid was last filled for; null while it is empty.
    QDate grid_start_;
    QDate grid_end_;
    WeekdayDates dates_;
    std::array<bool, term_grid::Days> differs_{};
    std::array<QString, term_grid::Days> holidays_text_{};
    QDate default_end_;
};
