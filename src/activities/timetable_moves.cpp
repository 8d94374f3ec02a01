// Moving pupils into and out of the timetable, and storing it. A pupil moved
// in or out is stored at once; recalculated times wait for Update. Each
// command's writes are one transaction.

#include "activities/timetable_grid.h"
#include "activities/timetable_store.h"
#include "activities/timetable_times.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "shell/app_globals.h"

using namespace timetable;

// The pupils chosen in the list of those without a time.
struct ChosenPupils {
    QString exam;
    QString duration;
    QString names;
    QString ids;
    int count = 0;
};

namespace {

void box(const QString& text)
{
    engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

QString field(const engine::Recordset& rows, const QString& name)
{
    return vb::CStr(rows.Fields(name));
}

bool is_number(const QString& text)
{
    return !is_blank(text) && vb::IsNumeric(text.trimmed());
}

}  // namespace

// Reads the chosen pupils; true when they are not all of one exam (said so).
bool ExamTimetable::mixed_exams(const QList<engine::Bookmark>& chosen, ChosenPupils& pupils)
{
    for (const engine::Bookmark mark : chosen) {
        register_->set_bookmark(mark);
        const QString exam = field(*register_, QStringLiteral("Exam_Title"));
        const QString name = field(*register_, QStringLiteral("DisplayName"));
        const QString id = field(*register_, QStringLiteral("results_id"));
        pupils.duration = field(*register_, QStringLiteral("Exam_duration"));
        if (pupils.count == 0) {
            pupils.exam = exam;
            pupils.names = name;
            pupils.ids = id;
        } else {
            pupils.names += QStringLiteral(", ") + name;
            pupils.ids += QStringLiteral(", ") + id;
        }
        ++pupils.count;
        if (exam != pupils.exam) {
            box(QStringLiteral("There are mixed exams in your selection. \nPlease select again."));
            return true;
        }
    }
    return false;
}

// Stores the chosen pupils' time, their order continuing the slot's.
bool ExamTimetable::store_chosen(const QList<engine::Bookmark>& chosen, const QString& time, int base)
{
    Writes writes;
    if (!writes.began()) {
        unexpected(QStringLiteral("Handle_Add_Pupil"));
        return false;
    }
    for (int i = 0; i < chosen.size(); ++i) {
        register_->set_bookmark(chosen[i]);
        const qint32 id = register_->Fields(QStringLiteral("results_id")).toInt();
        if (!Update_Register(id, time, static_cast<short>(base + i + 1)))
            return false;
    }
    if (!writes.commit()) {
        unexpected(QStringLiteral("Handle_Add_Pupil"));
        return false;
    }
    return true;
}

void ExamTimetable::requery_register()
{
    if (register_)
        register_->Requery();
}

bool ExamTimetable::Handle_Add_Pupil(const QList<engine::Bookmark>& chosen)
{
    status.clear();
    if (chosen.isEmpty() || !register_) {
        box(QStringLiteral("Please select a Pupil to add"));
        return true;
    }
    ChosenPupils pupils;
    if (mixed_exams(chosen, pupils))
        return true;

    // Into the highlighted row, or into a new row at the end.
    short row = grid_.record().highlight_row;
    QStringList sel = QStringList(slot::Columns, QString());
    int base = 0;
    const bool at_end = row == -1;
    if (!at_end) {
        sel = read_row(row);
        base = whole_minutes(sel[slot::Pupils - 1]);
    } else {
        grid_.txg_add_row(false, sel);
        grid_.txg_highlight(grid_.record().current_row);
        row = grid_.record().highlight_row;
        status = QStringLiteral("Pupil added to the end");
    }

    QStringList added = QStringList(slot::Columns, QString());
    QString remainder_start;
    int remainder = 0;
    if (!sel[slot::Names - 1].isEmpty()) {
        if (sel[slot::Exam - 1] != pupils.exam) {
            box(QStringLiteral("The current position is not for the selected exams. \n"
                               "The pupil cannot be added to this time slot.\n"
                               "Remember, to add an exam to the middle of the list \n"
                               "you must first insert a break."));
            return true;
        }
        added = sel;
        added[slot::Pupils - 1] = QString::number(base + pupils.count);
        added[slot::Ids - 1] = sel[slot::Ids - 1] + QStringLiteral(", ") + pupils.ids;
        added[slot::Names - 1] = sel[slot::Names - 1] + QStringLiteral(", ") + pupils.names;
        status = QStringLiteral("Pupil added to the exam");
    } else {
        added[slot::Duration - 1] = pupils.duration;
        added[slot::Exam - 1] = pupils.exam;
        added[slot::Pupils - 1] = QString::number(pupils.count);
        added[slot::Ids - 1] = pupils.ids;
        added[slot::Names - 1] = pupils.names;
        if (sel[slot::Time - 1].isEmpty()) {
            QString time;
            Determine_Time(row, time);
            added[slot::Time - 1] = time;
        } else {
            // Into a break: the exam takes the break's time, and what is left
            // of the break follows it.
            added[slot::Time - 1] = sel[slot::Time - 1];
            const QString length = sel[slot::Extra - 1];
            if (pupils.duration == length) {
                status = QStringLiteral("Pupil replaces the break");
            } else if (!vb::IsNumeric(pupils.duration) || !vb::IsNumeric(length)) {
                status = QStringLiteral("Pupil added, but no duration found");
            } else if (whole_minutes(length) - whole_minutes(pupils.duration) < 1) {
                status = QStringLiteral("Pupil replaces break");
            } else {
                remainder = whole_minutes(length) - whole_minutes(pupils.duration);
                remainder_start = add_minutes(added[slot::Time - 1], whole_minutes(pupils.duration));
                status = QStringLiteral("Pupil inserted, break changed");
            }
        }
    }
    grid_.txg_amend_row(row, added);
    if (remainder > 0)
        Add_Break(static_cast<short>(row + 1), remainder_start, QString::number(remainder));
    if (at_end)
        grid_.txg_remove_highlight();

    if (!store_chosen(chosen, added[slot::Time - 1], base))
        return false;
    requery_register();
    return true;
}

bool ExamTimetable::Handle_Delete_Slot()
{
    status.clear();
    const short row = grid_.record().highlight_row;
    if (row == -1) {
        box(QStringLiteral("Please select a line to delete"));
        return true;
    }
    const QStringList texts = read_row(row);
    if (!is_number(texts[slot::Pupils - 1])) {
        grid_.txg_remove_row(row);
        Calculate_Times();
        grid_.txg_repaint();
        status = QStringLiteral("Break deleted");
        return true;
    }
    // The whole slot goes at once: its pupils lose their time and order.
    const short count = static_cast<short>(whole_minutes(texts[slot::Pupils - 1]));
    QVector<qint32> ids;
    if (!Extract_Result_ids(count, texts[slot::Ids - 1], ids)) {
        unexpected(QStringLiteral("Handle_Delete_Slot"));
        return false;
    }
    Writes writes;
    if (!writes.began()) {
        unexpected(QStringLiteral("Handle_Delete_Slot"));
        return false;
    }
    for (int i = 1; i <= count; ++i)
        if (!Update_Register(ids[i], QString(), 0))
            return false;
    if (!writes.commit()) {
        unexpected(QStringLiteral("Handle_Delete_Slot"));
        return false;
    }
    grid_.txg_remove_row(row);
    Calculate_Times();
    grid_.txg_repaint();
    status = QStringLiteral("Pupil(s) removed");
    requery_register();
    return true;
}

bool ExamTimetable::Handle_Update()
{
    status.clear();
    Writes writes;
    if (!writes.began()) {
        unexpected(QStringLiteral("Handle_Update"));
        return false;
    }
    for (short row = 1; row <= grid_.array_rows(); ++row) {
        if (calculated_colour(row) == txg::Default_Cell)
            continue;
        const QStringList texts = read_row(row);
        if (!is_number(texts[slot::Pupils - 1]))
            continue;  // a break: nothing of it is stored
        // Each pupil of the slot takes its time, in the order of the ids.
        const short count = static_cast<short>(whole_minutes(texts[slot::Pupils - 1]));
        QVector<qint32> ids;
        if (!Extract_Result_ids(count, texts[slot::Ids - 1], ids)) {
            unexpected(QStringLiteral("Handle_Update"));
            return false;
        }
        for (int i = 1; i <= count; ++i)
            if (!Update_Register(ids[i], texts[slot::Calculated - 1], static_cast<short>(i)))
                return false;
    }
    if (!writes.commit()) {
        unexpected(QStringLiteral("Handle_Update"));
        return false;
    }
    requery_register();
    status = QStringLiteral("Sucessfully Updated");
    return true;
}
