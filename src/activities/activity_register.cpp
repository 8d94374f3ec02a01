#include "activities/activity_register.h"

#include "database/code_values.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/vb_values.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/locale_formats.h"
#include "shell/selection_lists.h"

namespace {

const QString module = QStringLiteral("gendbde");

QString detail(qint32 exam_id, qint32 pupil_id)
{
    return QStringLiteral("pupil_id = %1 Exam_id = %2").arg(pupil_id).arg(exam_id);
}

// Whether the pupil has an entry for this exam on any date; false (error set)
// when that can't be read. Shows, outings and competitions may be repeated.
bool has_taken_exam(qint32 exam_id, qint32 pupil_id, bool& taken)
{
    taken = false;
    engine::Database* db = current_database_or_error();
    const QString sql = QStringLiteral("SELECT Exams.Exam_Type AS Exam_Type FROM Exam_Results, Exams ")
                        + QStringLiteral(" WHERE Exam_Results.Results_Exam_id = Exams.Exam_id ")
                        + QStringLiteral(" AND Results_Pupil_id = ") + QString::number(pupil_id)
                        + QStringLiteral(" AND Results_Exam_id = ") + QString::number(exam_id) + QStringLiteral(" ;");
    std::unique_ptr<engine::Recordset> entries = db ? db->OpenRecordset(sql) : nullptr;
    if (!entries)
        return false;
    if (!entries->at_eof())
        taken = entries->Fields(QStringLiteral("Exam_Type")).toInt() == code::exam_type::Exam;
    entries->Close();
    return true;
}

bool run_entry_query(const QString& name, const QString& date_parameter, qint32 exam_id, qint32 pupil_id,
                     const QDateTime& date)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    return query && query->set_parameter(QStringLiteral("p_Exam_id"), exam_id)
           && query->set_parameter(QStringLiteral("p_Pupil_Id"), pupil_id) && query->set_parameter(date_parameter, date)
           && query->Execute(engine::dbopt::FailOnErrorConsistent);
}

int box(const QString& text)
{
    return engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

bool read_field(engine::Recordset& rows, const QString& field, QVariant& value)
{
    if (!rows.get(field, value))
        return false;
    if (!value.isValid() || value.isNull()) {
        engine::Err().Raise(engine::vberr::InvalidUseOfNull, QStringLiteral("Invalid use of Null"));
        return false;
    }
    return true;
}

bool read_id(engine::Recordset& rows, const QString& field, qint32& id)
{
    QVariant value;
    if (!read_field(rows, field, value))
        return false;
    id = static_cast<qint32>(value.toLongLong());
    return true;
}

}  // namespace

bool DB_Add_Pupil_To_Activity(qint32 exam_id, qint32 pupil_id, const QDateTime& date)
{
    engine::Err().Clear();
    bool taken = false;
    if (has_taken_exam(exam_id, pupil_id, taken) && taken) {
        box(QStringLiteral("The pupil has already taken this exam"));
        return false;
    }
    if (engine::Err().Number == 0
        && run_entry_query(QStringLiteral("Qry_Insert_Pupil_doing_Activity"), QStringLiteral("p_Exam_Date"), exam_id,
                           pupil_id, date))
        return true;
    if (engine::Err().Number == engine::jet::DuplicateKey) {
        engine::Err().Clear();
        box(QStringLiteral("The pupil is already on this activity"));
        return false;
    }
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error inserting into exam register"), engine::mb::Critical,
                 module, detail(exam_id, pupil_id));
    return false;
}

bool DB_Delete_Pupil_From_Activity(qint32 exam_id, qint32 pupil_id, const QDateTime& date)
{
    if (run_entry_query(QStringLiteral("Qry_Delete_Pupil_doing_Exam"), QStringLiteral("p_date"), exam_id, pupil_id, date))
        return true;
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting from exam register"), engine::mb::Critical,
                 module, detail(exam_id, pupil_id));
    return false;
}

void Add_Pupils_To_Activities(const QVector<ActivityChoice>& activities, const QVector<RegisterPupil>& pupils,
                              const QDateTime& date, EntryOutcome& outcome)
{
    outcome = EntryOutcome();
    for (const ActivityChoice& activity : activities) {
        for (const RegisterPupil& pupil : pupils) {
            if (DB_Add_Pupil_To_Activity(activity.exam_id, pupil.pupil_id, date)) {
                outcome.done += QStringLiteral(", ") + pupil.name;
                Glob_Add_Changed_Pupil(pupil.pupil_id);
            } else {
                outcome.failed += QStringLiteral(", ") + pupil.name;
            }
        }
    }
    if (!outcome.failed.isEmpty())
        outcome.status = QStringLiteral("The following could NOT be added") + outcome.failed;
    else if (outcome.done.isEmpty())
        outcome.status = QStringLiteral("No-one added");
    else
        outcome.status = QStringLiteral("Pupils successfully added to Register");
}

void Remove_Pupils_From_Activities(const QVector<ActivityEntry>& entries, EntryOutcome& outcome)
{
    outcome = EntryOutcome();
    for (const ActivityEntry& entry : entries) {
        if (DB_Delete_Pupil_From_Activity(entry.exam_id, entry.pupil_id, entry.date)) {
            outcome.done += QStringLiteral(", ") + entry.name;
            Glob_Add_Changed_Pupil(entry.pupil_id);
        } else {
            outcome.failed += QStringLiteral(", ") + entry.name;
        }
    }
    outcome.status = outcome.failed.isEmpty() ? QStringLiteral("Pupils successfully deleted from Register")
                                              : QStringLiteral("The following could NOT be deleted") + outcome.failed;
}

std::unique_ptr<engine::Recordset> Open_Empty_Activity_Register()
{
    engine::Database* db = current_database_or_error();
    return db ? db->OpenRecordset(QStringLiteral("Select Results_id from Exam_Results where Results_id = 0")) : nullptr;
}

std::unique_ptr<engine::Recordset> Open_Activity_Register(qint32 exam_id, const QDateTime& date,
                                                          std::optional<qint32> course_id)
{
    engine::Database* db = current_database_or_error();
    const QString name = course_id ? QStringLiteral("Qry_Select_Course_Pupil_doing_Exam")
                                   : QStringLiteral("Qry_Select_All_Pupil_doing_Exam");
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    if (!query || !query->set_parameter(QStringLiteral("par_Exam_id"), exam_id)
        || !query->set_parameter(QStringLiteral("par_DAte"), date)
        || (course_id && !query->set_parameter(QStringLiteral("par_Course_id"), *course_id)))
        return nullptr;
    return query->OpenRecordset();
}

QString Activity_Register_Caption(const QString& title, const QDateTime& date)
{
    return QStringLiteral("Register for ") + title + QStringLiteral(" on ") + vb::Format(date, Glob_Date_Format());
}

bool Read_Activities(engine::Recordset& rows, const QList<engine::Bookmark>& marks, QVector<ActivityChoice>& activities)
{
    activities.clear();
    for (const engine::Bookmark mark : marks) {
        ActivityChoice activity;
        QVariant title;
        if (!rows.set_bookmark(mark) || !read_id(rows, QStringLiteral("exam_id"), activity.exam_id)
            || !rows.get(QStringLiteral("Exam_Title"), title))
            return false;
        activity.title = title.toString();
        activities << activity;
    }
    return true;
}

bool Read_Activity_Entries(engine::Recordset& rows, const QList<engine::Bookmark>& marks,
                           QVector<ActivityEntry>& entries)
{
    entries.clear();
    for (const engine::Bookmark mark : marks) {
        ActivityEntry entry;
        QVariant name;
        QVariant date;
        if (!rows.set_bookmark(mark) || !rows.get(QStringLiteral("DisplayName"), name)
            || !read_id(rows, QStringLiteral("Exam_id"), entry.exam_id) || !read_id(rows, QStringLiteral("Pid"), entry.pupil_id)
            || !read_field(rows, QStringLiteral("EDate"), date))
            return false;
        entry.name = name.toString();
        entry.date = date.toDateTime();
        entries << entry;
    }
    return true;
}
