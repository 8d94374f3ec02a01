#include "activities/timetable_grid.h"

#include "activities/timetable_store.h"
#include "activities/timetable_times.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"

using namespace timetable;

namespace {

void box(const QString& text)
{
    engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

QStringList blank_row()
{
    return QStringList(slot::Columns, QString());
}

QString& at(QStringList& row, short column)
{
    return row[column - 1];
}

QString text_of(const engine::Recordset& rows, const QString& field)
{
    return vb::CStr(rows.Fields(field));
}

// One timed pupil as a row of its own: a slot of one.
QStringList pupil_row(const engine::Recordset& times)
{
    QStringList row = blank_row();
    at(row, slot::Pupils) = QStringLiteral("1");
    at(row, slot::Names) = text_of(times, QStringLiteral("DisplayName"));
    at(row, slot::Time) = time_text(text_of(times, QStringLiteral("Results_Time_txt")));
    at(row, slot::Exam) = text_of(times, QStringLiteral("Exam_Title"));
    at(row, slot::Duration) = text_of(times, QStringLiteral("Exam_duration"));
    at(row, slot::Ids) = text_of(times, QStringLiteral("results_id"));
    return row;
}

// The pupil joins the slot held.
void join_slot(QStringList& slot_row, const QStringList& pupil)
{
    QString& pupils = at(slot_row, slot::Pupils);
    pupils = vb::IsNumeric(pupils) ? QString::number(whole_minutes(pupils) + 1) : QStringLiteral("1");
    at(slot_row, slot::Ids) += QStringLiteral(", ") + pupil[slot::Ids - 1];
    at(slot_row, slot::Names) += QStringLiteral(", ") + pupil[slot::Names - 1];
}

}  // namespace

QVector<txg_column> ExamTimetable::columns()
{
    const auto column = [](const char* title, short type, bool tooltip = false,
                           std::optional<colours::Rgb> colour = std::nullopt) {
        return txg_column{QString::fromLatin1(title), type, 0, tooltip, colour};
    };
    return {column("Calcultd", txg::Locked),
            column("Time", txg::Locked),
            column("Duration", txg::Locked),
            column("Extra", txg::Editable, false, colours::At_Rest),
            column("Pupils", txg::Locked),
            column("Exam", txg::Locked, true),
            column("Names", txg::Locked, true),
            column("id", txg::Invisible)};
}

void ExamTimetable::Initialise()
{
    grid_.txg_Initialise(txg::Whole_Row, columns());
}

void ExamTimetable::unexpected(const QString& routine) const
{
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error "), engine::mb::Information, module(), routine);
}

QStringList ExamTimetable::read_row(short row)
{
    QStringList texts = grid_.row_texts(row);
    if (texts.isEmpty()) {
        // Outside the grid: the grid reports it, and the row reads blank.
        QString text;
        colours::Rgb colour;
        bool highlighted = false;
        grid_.txg_get_data(row, 1, text, colour, highlighted);
        return blank_row();
    }
    return texts.mid(0, slot::Columns);
}

colours::Rgb ExamTimetable::calculated_colour(short row)
{
    QString text;
    colours::Rgb colour = txg::Default_Cell;
    bool highlighted = false;
    grid_.txg_get_data(row, slot::Calculated, text, colour, highlighted);
    return colour;
}

// ---- Loading a date ----

// Adds the slot held, with the extra minutes or the break that the gap up to
// the next time stands for.
void ExamTimetable::add_slot_row(QStringList& prev, QString& break_start, int& break_length)
{
    grid_.txg_add_row(true, prev);
    if (break_length > 0)
        Add_Break(-1, break_start, QString::number(break_length));
    break_length = 0;
}

bool ExamTimetable::Setup_Grid(std::optional<QDate> date)
{
    grid_.txg_clear();
    status.clear();
    if (!date) {
        status = QStringLiteral("There are no dates");
        return true;
    }
    std::unique_ptr<engine::Recordset> times = open_timed_pupils(*date);
    if (!times) {
        unexpected(QStringLiteral("Setup_Grid"));
        return false;
    }
    if (times->RecordCount() == 0 || !times->MoveFirst())
        return true;

    QStringList prev = blank_row();
    at(prev, slot::Pupils) = QStringLiteral("0");
    // The session starts at the earliest time stored for the date.
    const QString first = text_of(*times, QStringLiteral("Results_Time_txt"));
    start = is_blank(first) ? QString() : time_text(first);

    QString break_start;
    int break_length = 0;
    for (; !times->at_eof(); times->MoveNext()) {
        const QStringList cur = pupil_row(*times);
        const QString prev_time = at(prev, slot::Time);
        if (prev_time != cur[slot::Time - 1]) {
            if (!prev_time.isEmpty()) {
                const int gap = minutes_between(prev_time, cur[slot::Time - 1]) - whole_minutes(at(prev, slot::Duration));
                if (gap < 0) {
                    box(QStringLiteral("There isn't enough time for the exam at ") + prev_time);
                    at(prev, slot::Extra) = QString::number(gap);
                } else if (gap >= 1 && gap <= 9) {
                    at(prev, slot::Extra) = QString::number(gap);
                } else if (gap >= 10) {
                    break_start = add_minutes(prev_time, whole_minutes(at(prev, slot::Duration)));
                    break_length = gap;
                }
                add_slot_row(prev, break_start, break_length);
            }
            prev = cur;
        } else if (at(prev, slot::Exam) != cur[slot::Exam - 1]) {
            grid_.txg_add_row(true, prev);
            status = QStringLiteral("There are two different exams are at ") + prev_time;
            prev = cur;
        } else {
            join_slot(prev, cur);
        }
    }
    if (!at(prev, slot::Time).isEmpty())
        grid_.txg_add_row(true, prev);
    Calculate_Times();
    grid_.txg_show();
    return true;
}

// ---- Times ----

bool ExamTimetable::Calculate_Times()
{
    if (!holds_time(start)) {
        box(QStringLiteral("Please enter a valid start time"));
        return false;
    }
    grid_.set_element_guard(true);
    const short rows = grid_.array_rows();
    for (short row = 1; row <= rows; ++row) {
        grid_.put_text(row, slot::Calculated, QString());
        grid_.put_colour(row, slot::Calculated, txg::Default_Cell);
    }
    QString clock = start;
    for (short row = 1; row <= rows; ++row) {
        const QStringList texts = grid_.row_texts(row);
        const QString calculated = time_text(clock);
        grid_.put_text(row, slot::Calculated, calculated);
        if (texts.value(slot::Time - 1) != calculated)
            grid_.put_colour(row, slot::Calculated, slot::Changed_Mark);
        clock = add_minutes(clock, whole_minutes(texts.value(slot::Duration - 1)) + whole_minutes(texts.value(slot::Extra - 1)));
    }
    grid_.set_element_guard(false);
    return true;
}

bool ExamTimetable::Determine_Time(short row, QString& time)
{
    if (row >= 2) {
        // From the time stored on the row before, not the one calculated.
        const QStringList before = read_row(static_cast<short>(row - 1));
        const QString stored = before[slot::Time - 1];
        if (is_blank(stored) || !holds_time(stored)) {
            time.clear();
            return false;
        }
        const QString extra = before[slot::Extra - 1].trimmed();
        if (!extra.isEmpty() && !vb::IsNumeric(extra))
            box(QStringLiteral("Please enter a valid whole number for Extra"));
        time = add_minutes(stored, whole_minutes(before[slot::Duration - 1]) + whole_minutes(extra));
        return true;
    }
    if (!holds_time(start)) {
        box(QStringLiteral("Please enter a valid start time"));
        time.clear();
        return false;
    }
    time = time_text(start);
    return true;
}

// ---- Breaks ----

void ExamTimetable::Add_Break(short row, const QString& time, const QString& length)
{
    QStringList values = blank_row();
    at(values, slot::Time) = time;
    at(values, slot::Extra) = length;
    at(values, slot::Exam) = slot::Break;
    if (row == -1 || row > grid_.array_rows())
        grid_.txg_add_row(false, values);
    else
        grid_.txg_insert_row(row, values);
}

void ExamTimetable::cmd_Add_Break()
{
    const QString ten = QStringLiteral("10");
    const short highlighted = grid_.record().highlight_row;
    if (highlighted != -1) {
        // The break takes the row's time, and the row moves down.
        Add_Break(highlighted, read_row(highlighted)[slot::Time - 1], ten);
    } else if (grid_.array_rows() > 1) {
        QString time;
        if (Determine_Time(static_cast<short>(grid_.array_rows() + 1), time))
            Add_Break(-1, time, ten);
    } else if (holds_time(start)) {
        Add_Break(-1, start, ten);
    } else {
        box(QStringLiteral("Please enter a valid start time"));
    }
    Calculate_Times();
    grid_.txg_repaint();
}

// ---- Leaving ----

bool ExamTimetable::OK_TO_Exit()
{
    // A grid of one row never counts as changed.
    if (grid_.array_rows() == 1)
        return true;
    for (short row = 1; row <= grid_.array_rows(); ++row)
        if (calculated_colour(row) != txg::Default_Cell)
            return false;
    return true;
}

void ExamTimetable::Element_Left(int element, const QString& typed)
{
    QString old_text;
    grid_.txg_change(element, typed, old_text);
    const QString now = grid_.elements().value(element).text;
    if (old_text == now || grid_.record().current_col != slot::Extra)
        return;
    Calculate_Times();
    grid_.txg_repaint();
    // The element's number stands for the row here, as it always has.
    grid_.txg_highlight(static_cast<short>(element));
}
