#pragma once
// What the exam timetable reads and writes: the pupils of a date with and
// without a time, and per pupil the time and the place in the running order
// (Results_Time_txt, Results_Order) that are all a stored timetable is.

#include "engine/recordset.h"

#include <QDate>
#include <QString>
#include <QVector>
#include <memory>

namespace timetable {

// The module tag of the timetable's reports.
QString module();

// The pupils of a date with a time and no grade or mark, in time order
// (Qry_Exam_Timetable_Pupils_Times); null on failure.
std::unique_ptr<engine::Recordset> open_timed_pupils(QDate date);
// The pupils of a date still without a time (Qry_Exam_Timetable_Pupils_Without_Times).
std::unique_ptr<engine::Recordset> open_pupils_without_times(QDate date);

// One transaction around a command's writes: rolled back unless committed.
class Writes {
public:
    Writes();
    ~Writes();
    Writes(const Writes&) = delete;
    Writes& operator=(const Writes&) = delete;
    bool began() const { return began_; }
    bool commit();

private:
    bool began_ = false;
    bool done_ = false;
};

}  // namespace timetable

// A slot holds at most this many pupils.
inline constexpr int Most_Result_ids = 20;

// The ids of a slot's list "12, 13, 14": ids[1] to ids[count] (ids[0] is
// unused). A piece that is no number is reported and gives -1. More than 20
// ids are a failure (engine error set) for the caller to report.
bool Extract_Result_ids(short count, const QString& list, QVector<qint32>& ids);

// Writes one pupil's time (blank clears it) and order. False, reported, on failure.
bool Update_Register(qint32 id, const QString& time, short order);
