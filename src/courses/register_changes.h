#pragma once
// Putting chosen pupils onto chosen courses, and taking pupils off a course
// register, in one action: the register on view that the adding loop searches,
// the loops over courses and pupils, the names that could and could not be
// changed, and what the status line says afterwards.

#include "engine/recordset.h"

#include <QList>
#include <QString>
#include <QVector>
#include <functional>
#include <memory>

struct RegisterCourse {
    qint32 course_id = 0;
    QString title;
};

struct RegisterPupil {
    qint32 pupil_id = 0;
    QString name;  // as the pupil list shows it
};

// One row of a register: a pupil on a course.
struct RegisterEntry {
    qint32 course_id = 0;
    qint32 pupil_id = 0;
    QString first_name;
};

// The register on view: the pupils on one course (Qry_Select_Pupil_on_Course),
// or, before any course has been shown, a register of no one.
class ShownRegister {
public:
    ShownRegister();
    ~ShownRegister();
    ShownRegister(const ShownRegister&) = delete;
    ShownRegister& operator=(const ShownRegister&) = delete;

    // The register of no one that the screen opens with.
    bool Open_Empty();
    // The register of a course. False (engine error set) when it can't be
    // read; nothing is on view then.
    bool Open(qint32 course_id);
    void Close();

    // The rows on view; null when none are.
    engine::Recordset* rows() const { return rows_.get(); }

    // Whether the rows on view list the pupil on the course, by the search
    // "pid = <pupil> AND cid = <course>". Only the rows on view are searched,
    // whatever course they are of. False (engine error set) when the search
    // itself fails, as it does on the register of no one.
    bool Lists(qint32 pupil_id, qint32 course_id, bool& listed);

    // The count shown beside the register: the record set's count of the rows
    // the engine has reached, read straight after opening without going to the
    // last row. So it is 1 for any register with someone on it, 0 for an
    // empty one.
    int Count_Shown() const;

private:
    std::unique_ptr<engine::Recordset> rows_;
};

// The names done and not done, each followed by ", ", and the status words.
struct RegisterOutcome {
    QString done;
    QString failed;
    QString status;
};

// Shows the register of a course; the screen's Display_Register.
using ShowRegister = std::function<void(const RegisterCourse&)>;

// For each course, in the order given, and each pupil, in the order given: a
// pupil the register on view lists on the course already is passed over in
// silence; any other is put on the course (database/pupil_course_changes.h),
// and the register of that course is shown. The search is made before the
// register of a course is first shown, so a pupil already on a course that
// the register on view isn't of is tried, refused with its message, and
// counted as failed. False (engine error set) when a search fails: the loops
// stop there, and what was added stays.
bool Add_Pupils_To_Courses(const QVector<RegisterCourse>& courses, const QVector<RegisterPupil>& pupils,
                           ShownRegister& shown, const ShowRegister& show, RegisterOutcome& outcome);

// Takes each entry off its course's register, in the order given.
void Remove_Pupils_From_Register(const QVector<RegisterEntry>& entries, RegisterOutcome& outcome);

// The rows of a record set at these bookmarks, in the order given, read as
// courses ("course_id", "Course_Title"), pupils ("Pid", "DisplayName") or
// register entries ("Cid", "Pid", "Firstname"). False (engine error set) when
// a bookmark or field can't be read.
bool Read_Courses(engine::Recordset& rows, const QList<engine::Bookmark>& marks, QVector<RegisterCourse>& courses);
bool Read_Pupils(engine::Recordset& rows, const QList<engine::Bookmark>& marks, QVector<RegisterPupil>& pupils);
bool Read_Register_Entries(engine::Recordset& rows, const QList<engine::Bookmark>& marks,
                           QVector<RegisterEntry>& entries);
