#pragma once
// The running order of one exam day, laid out in a TextBoxGrid: one row a
// slot (one exam taken by one or more pupils together) or a break. Nothing
// but each pupil's time and order is stored; every load derives the slots
// again from the stored times: a gap of 10 minutes or more after an exam
// comes back as a break, a smaller one as extra minutes on the slot before.
//
// Column 1 ("Calcultd") is the time a row would get if stored now, worked
// out from the start time, the durations, the extras and the breaks; column 2
// is the time stored. A Calcultd cell in the changed mark is a row that
// Handle_Update will store: that colour is the whole of the change tracking.

#include "engine/recordset.h"
#include "toolkit/text_box_grid.h"

#include <QDate>
#include <QList>
#include <QString>
#include <optional>

namespace slot {
inline constexpr short Calculated = 1;
inline constexpr short Time = 2;
inline constexpr short Duration = 3;
inline constexpr short Extra = 4;
inline constexpr short Pupils = 5;
inline constexpr short Exam = 6;
inline constexpr short Names = 7;
inline constexpr short Ids = 8;
inline constexpr short Columns = 8;

// Column 1 of a row whose calculated time differs from the stored one.
inline constexpr colours::Rgb Changed_Mark{255, 128, 128};
// Column 6 of a break.
inline const QString Break = QStringLiteral("BREAK");
}  // namespace slot

struct ChosenPupils;

class ExamTimetable {
public:
    explicit ExamTimetable(TextBoxGrid& grid) : grid_(grid) {}

    // The timetable's column definitions, and the grid built from them.
    static QVector<txg_column> columns();
    void Initialise();

    // The pupils still without a time, whose chosen rows Handle_Add_Pupil
    // moves in; read again after every command that stores times. Not owned.
    void set_register(engine::Recordset* pupils) { register_ = pupils; }

    // The screen's start time (txt_Start) and status line (txt_Status).
    QString start;
    QString status;

    // Rebuilds the timetable from the times stored for `date`; with no date
    // at all, says so.
    bool Setup_Grid(std::optional<QDate> date);
    // Fills column 1 and its colour in every row; false, with a message, when
    // the start time is no time. The caller repaints.
    bool Calculate_Times();
    // The time at which a new row at `row` would start; false when there is none.
    bool Determine_Time(short row, QString& time);
    // A break row of `length` minutes at `time`, before `row` (-1: at the end).
    void Add_Break(short row, const QString& time, const QString& length);
    // The Add Break command: before the highlighted row, or at the end.
    void cmd_Add_Break();
    // Moves the chosen pupils into the highlighted slot or break, or to the
    // end, and stores their time and order at once.
    bool Handle_Add_Pupil(const QList<engine::Bookmark>& chosen);
    // Removes the highlighted row; a slot's pupils lose their time.
    bool Handle_Delete_Slot();
    // Stores every row in the changed mark.
    bool Handle_Update();
    // True when nothing is waiting to be stored.
    bool OK_TO_Exit();
    // An element was left: a new Extra recalculates the times.
    void Element_Left(int element, const QString& typed);

private:
    QStringList read_row(short row);
    colours::Rgb calculated_colour(short row);
    void add_slot_row(QStringList& prev, QString& break_start, int& break_length);
    bool mixed_exams(const QList<engine::Bookmark>& chosen, ChosenPupils& pupils);
    bool store_chosen(const QList<engine::Bookmark>& chosen, const QString& time, int base);
    void requery_register();
    void unexpected(const QString& routine) const;

    TextBoxGrid& grid_;
    engine::Recordset* register_ = nullptr;
};
