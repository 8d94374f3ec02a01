#pragma once
// Results entry for one date: every pupil taking part in an exam or
// competition that day, one row each in a TextBoxGrid, with the date, time,
// order, mark and grade open to typing. An accepted edit turns its cell and
// the row's hidden key cell to the changed colour; Update writes the rows so
// marked, one by one, and marks those that failed.

#include "activities/results_checks.h"
#include "engine/recordset.h"
#include "toolkit/text_box_grid.h"

#include <QString>
#include <memory>

namespace result {
// The hidden key cell of a row with edits to store, and of one whose store failed.
inline constexpr colours::Rgb Changed{192, 192, 255};
inline constexpr colours::Rgb Failed{255, 128, 128};
}  // namespace result

class ResultsEntry {
public:
    explicit ResultsEntry(TextBoxGrid& grid) : grid_(grid) {}

    static QVector<txg_column> columns();
    void Initialise();

    // Opens the dates of exams and competitions, newest first
    // (Qry_Select_Dates_Of_Exam), and the teachers.
    bool Setup_Controls();
    void Close();
    // The dates' record set; its current record is the date on view.
    engine::Recordset* dates() const { return dates_.get(); }

    // The screen's status line (txt_Status).
    QString status;
    // True while the grid is being filled, when edits mean nothing.
    bool filling() const { return filling_; }

    // Fills the grid with the pupils of the current date; `date_chosen`
    // false asks for a date first.
    bool Get_Register(bool date_chosen);
    // The teacher's name for the Teacher column: "eeee" when there are no
    // teachers, "uuuu" for one that isn't there.
    QString Find_Teacher_Name(const QVariant& teacher_id) const;

    // An element was left with `typed` in it. False when the text was
    // refused: it is put back, and the focus belongs in the element again.
    bool Element_Left(int element, const QString& typed);
    // Writes one row; false (reported) when it can't be stored.
    bool Update_Result(short row);
    // Stores every changed row.
    void cmd_Update(bool date_chosen);
    // Gives each pupil of the date the activity's own teacher again.
    bool cmd_Teachers(bool date_chosen);
    // True when a row has edits not yet stored.
    bool has_changes();

private:
    colours::Rgb key_colour(short row);
    QStringList row_values(const engine::Recordset& rows) const;

    TextBoxGrid& grid_;
    std::unique_ptr<engine::Recordset> dates_;
    std::unique_ptr<engine::Recordset> teachers_;
    bool filling_ = false;
};
