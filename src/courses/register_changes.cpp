#include "courses/register_changes.h"

#include "database/pupil_course_changes.h"
#include "engine/database.h"
#include "engine/err.h"
#include "script/current_database.h"

namespace {

// The register of no one: its one field is no pupil's.
const QString empty_register = QStringLiteral("Select Register_id from Register_Courses Where Register_id= 0");

bool no_rows()
{
    engine::raise_engine_error(engine::jet::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
    return false;
}

// A field of the current row as an id or as text; false (error set) when the
// field can't be read, or an id is blank.
bool read_id(engine::Recordset& rows, const QString& field, qint32& id)
{
    QVariant value;
    if (!rows.get(field, value))
        return false;
    if (!value.isValid() || value.isNull()) {
        engine::Err().Raise(engine::vberr::InvalidUseOfNull, QStringLiteral("Invalid use of Null"));
        return false;
    }
    id = static_cast<qint32>(value.toLongLong());
    return true;
}

bool read_text(engine::Recordset& rows, const QString& field, QString& text)
{
    QVariant value;
    if (!rows.get(field, value))
        return false;
    text = value.toString();
    return true;
}

}  // namespace

// ---- The register on view ----

ShownRegister::ShownRegister() = default;

ShownRegister::~ShownRegister()
{
    Close();
}

bool ShownRegister::Open_Empty()
{
    Close();
    engine::Database* db = current_database_or_error();
    rows_ = db ? db->OpenRecordset(empty_register) : nullptr;
    return rows_ != nullptr;
}

bool ShownRegister::Open(qint32 course_id)
{
    Close();
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(QStringLiteral("Qry_Select_Pupil_on_Course")) : nullptr;
    if (!query || !query->set_parameter(QStringLiteral("par_Course_id"), course_id))
        return false;
    rows_ = query->OpenRecordset();
    return rows_ != nullptr;
}

void ShownRegister::Close()
{
    if (rows_)
        rows_->Close();
    rows_.reset();
}

bool ShownRegister::Lists(qint32 pupil_id, qint32 course_id, bool& listed)
{
    listed = false;
    if (!rows_)
        return no_rows();
    const QString criteria = QStringLiteral("pid = ") + QString::number(pupil_id) + QStringLiteral(" AND cid = ")
                             + QString::number(course_id);
    if (!rows_->FindFirst(criteria))
        return false;
    listed = !rows_->NoMatch();
    return true;
}

int ShownRegister::Count_Shown() const
{
    // Only the current row has been reached when nothing has moved the
    // record set on since it opened.
    if (!rows_ || rows_->RecordCount() == 0)
        return 0;
    return rows_->AbsolutePosition() + 1;
}

// ---- Adding and removing ----

bool Add_Pupils_To_Courses(const QVector<RegisterCourse>& courses, const QVector<RegisterPupil>& pupils,
                           ShownRegister& shown, const ShowRegister& show, RegisterOutcome& outcome)
{
    outcome = RegisterOutcome();
    bool searched = true;
    for (const RegisterCourse& course : courses) {
        for (const RegisterPupil& pupil : pupils) {
            bool listed = false;
            if (!shown.Lists(pupil.pupil_id, course.course_id, listed)) {
                searched = false;
                break;
            }
            if (listed)
                continue;
            if (DB_Add_Pupil_To_Course(course.course_id, pupil.pupil_id, pupil.name))
                outcome.done += pupil.name + QStringLiteral(", ");
            else
                outcome.failed += pupil.name + QStringLiteral(", ");
            show(course);
        }
        if (!searched)
            break;
    }
    if (!outcome.failed.isEmpty())
        outcome.status = QStringLiteral("The following could NOT be added") + outcome.failed;
    else if (!outcome.done.isEmpty())
        outcome.status = QStringLiteral("Pupils successfully added to Course Register");
    else
        outcome.status = QStringLiteral("No-one added");
    return searched;
}

void Remove_Pupils_From_Register(const QVector<RegisterEntry>& entries, RegisterOutcome& outcome)
{
    outcome = RegisterOutcome();
    for (const RegisterEntry& entry : entries) {
        if (DB_Delete_Pupil_From_Course(entry.course_id, entry.pupil_id))
            outcome.done += entry.first_name + QStringLiteral(", ");
        else
            outcome.failed += entry.first_name + QStringLiteral(", ");
    }
    outcome.status = outcome.failed.isEmpty() ? QStringLiteral("Pupils successfully deleted from the Register")
                                              : QStringLiteral("The following could NOT be deleted") + outcome.failed;
}

// ---- Reading the chosen rows ----

bool Read_Courses(engine::Recordset& rows, const QList<engine::Bookmark>& marks, QVector<RegisterCourse>& courses)
{
    courses.clear();
    for (const engine::Bookmark mark : marks) {
        RegisterCourse course;
        if (!rows.set_bookmark(mark) || !read_id(rows, QStringLiteral("course_id"), course.course_id)
            || !read_text(rows, QStringLiteral("Course_Title"), course.title))
            return false;
        courses << course;
    }
    return true;
}

bool Read_Pupils(engine::Recordset& rows, const QList<engine::Bookmark>& marks, QVector<RegisterPupil>& pupils)
{
    pupils.clear();
    for (const engine::Bookmark mark : marks) {
        RegisterPupil pupil;
        if (!rows.set_bookmark(mark) || !read_id(rows, QStringLiteral("Pid"), pupil.pupil_id)
            || !read_text(rows, QStringLiteral("DisplayName"), pupil.name))
            return false;
        pupils << pupil;
    }
    return true;
}

bool Read_Register_Entries(engine::Recordset& rows, const QList<engine::Bookmark>& marks,
                           QVector<RegisterEntry>& entries)
{
    entries.clear();
    for (const engine::Bookmark mark : marks) {
        RegisterEntry entry;
        if (!rows.set_bookmark(mark) || !read_text(rows, QStringLiteral("Firstname"), entry.first_name)
            || !read_id(rows, QStringLiteral("Cid"), entry.course_id) || !read_id(rows, QStringLiteral("Pid"), entry.pupil_id))
            return false;
        entries << entry;
    }
    return true;
}
