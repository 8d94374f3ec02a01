#pragma once
// Putting pupils on activities for a date and taking them off: one row of
// Exam_Results is one pupil doing one catalogue entry on one activity date,
// and the same row later carries the pupil's time and result. An exam may be
// taken once in a pupil's life; a show, outing or competition may be
// repeated on any number of dates. Every change is added to the list of
// changed pupils, so that invoicing can take it up.

#include "courses/register_changes.h"
#include "engine/recordset.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVector>
#include <memory>
#include <optional>

// On the current database. False, after its message, when the pupil has
// already taken this exam (on any date) or is on this activity on this date.
bool DB_Add_Pupil_To_Activity(qint32 exam_id, qint32 pupil_id, const QDateTime& date);
bool DB_Delete_Pupil_From_Activity(qint32 exam_id, qint32 pupil_id, const QDateTime& date);

struct ActivityChoice {
    qint32 exam_id = 0;
    QString title;
};

// One row of an activity's register: a pupil on an activity on a date.
struct ActivityEntry {
    qint32 exam_id = 0;
    qint32 pupil_id = 0;
    QDateTime date;
    QString name;  // as the register shows it
};

// The names done and not done, each after ", ", and the status words.
struct EntryOutcome {
    QString done;
    QString failed;
    QString status;
};

// Each pupil on each activity, activities first to last and pupils first to
// last, all on the one date. A refusal doesn't stop the loops: the others
// are still added.
void Add_Pupils_To_Activities(const QVector<ActivityChoice>& activities, const QVector<RegisterPupil>& pupils,
                              const QDateTime& date, EntryOutcome& outcome);
// Takes each entry off its activity, in the order given.
void Remove_Pupils_From_Activities(const QVector<ActivityEntry>& entries, EntryOutcome& outcome);

// The register of nobody, which the screen opens with.
std::unique_ptr<engine::Recordset> Open_Empty_Activity_Register();
// Who is on an activity on a date, of all pupils or of one course's
// pupils; null (engine error set) when it can't be read.
std::unique_ptr<engine::Recordset> Open_Activity_Register(qint32 exam_id, const QDateTime& date,
                                                          std::optional<qint32> course_id);
// "Register for <title> on <date>", the date in the long date format.
QString Activity_Register_Caption(const QString& title, const QDateTime& date);

// The rows of a record set at these bookmarks, in the order given, read as
// activities ("exam_id", "Exam_Title") or register rows ("Exam_id", "Pid",
// "EDate", "DisplayName"). False (engine error set) when one can't be read.
bool Read_Activities(engine::Recordset& rows, const QList<engine::Bookmark>& marks, QVector<ActivityChoice>& activities);
bool Read_Activity_Entries(engine::Recordset& rows, const QList<engine::Bookmark>& marks,
                           QVector<ActivityEntry>& entries);
