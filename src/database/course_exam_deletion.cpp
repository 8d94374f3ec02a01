#include "database/course_exam_deletion.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"

#include <memory>

namespace {

const QString module = QStringLiteral("gendbde");

// What tells the course guard from the activity guard: the record's words,
// its queries and its own texts. "%1" stands for the id or a count.
struct Guard {
    QString routine_prefix;      // before the step in a failure report
    QString first_step;
    QString costs_statement;     // working rows that go without a question; empty for none
    QString failure;             // the message of every unexpected failure
    QString count_entries;
    QString no_entries_count;
    QString entries_question;
    QString removal_query;
    QString removal_parameter;
    QString entries_difference;  // routine text, before the count
    QString entries_difference_message;
    QString count_lines;
    QString no_lines_count;
    QString lines_question;
    QString retype_query;
    QString retype_parameter;
    QString lines_difference;
    QString lines_difference_message;
};

QString question(const QString& first_line, const QString& second_line)
{
    return first_line + QLatin1Char('\n') + second_line + QLatin1Char('\n') + QStringLiteral("Continue ?");
}

const Guard& course_guard()
{
    static const Guard guard{
        QStringLiteral("Check_Course_Deletion - "),
        QStringLiteral("begin transaction"),
        QStringLiteral("DELETE * FROM tmp_CourseCosts WHERE Tmp_Course_id = %1;"),
        QStringLiteral("Unexpected error deleting Course"),
        QStringLiteral("Select count(*) as count from Register_Courses WHERE Course_id = %1;"),
        QStringLiteral("Check_Course_Deletion no count "),
        question(QStringLiteral("There are %1 pupils left in the register."), QStringLiteral("About to delete them.")),
        QStringLiteral("Qry_Delete_All_Pupils_from_Course"),
        QStringLiteral("p_Course_id"),
        QStringLiteral("Check_Course_Deletion pupil count = "),
        QStringLiteral("Unexpected error deleting pupils from Course"),
        QStringLiteral("Select count(*) AS count from Invoice_Lines WHERE Inv_Line_Course_id = %1;"),
        QStringLiteral("Check_Course_Deletion no count of invoices "),
        question(QStringLiteral("There are %1 invoices that reference this course."),
                 QStringLiteral("About to re-name them. The detail of the course will no-longer be available on the invoices.")),
        QStringLiteral("Qry_Update_Invoice_Line_Null_Course"),
        QStringLiteral("par_Course_id"),
        QStringLiteral("Check_Course_Deletion course count = "),
        QStringLiteral("Unexpected error deleting course from Invoices"),
    };
    return guard;
}

const Guard& activity_guard()
{
    static const Guard guard{
        QStringLiteral("Check_Exam_Deletion "),
        QStringLiteral("about to begin transaction"),
        QString(),
        QStringLiteral("Unexpected error deleting activity"),
        QStringLiteral("Select count(*) as count from Exam_Results WHERE Results_Exam_id = %1;"),
        QStringLiteral("Check_Exam_Deletion no count "),
        question(QStringLiteral("There are %1 pupils left in the register or results."),
                 QStringLiteral("About to delete them.")),
        QStringLiteral("Qry_Delete_All_Pupils_from_Activity"),
        QStringLiteral("p_Activity_id"),
        QStringLiteral("Check_Exam_Deletion pupil count = "),
        QStringLiteral("Unexpected error deleting pupils from activity"),
        QStringLiteral("Select count(*) as count from Invoice_Lines WHERE Inv_Line_Exam_id = %1;"),
        QStringLiteral("Check_Exam_Deletion no count of invoices "),
        question(QStringLiteral("There are %1 invoices that reference this activity."),
                 QStringLiteral("About to re-name them. The detail of the activity will no-longer be available on the invoices.")),
        QStringLiteral("Qry_Update_Invoice_Line_Null_Activity"),
        QStringLiteral("p_Activity_id"),
        QStringLiteral("Check_Exam_Deletion activity count = "),
        QStringLiteral("Unexpected error deleting activity from Invoices"),
    };
    return guard;
}

// One run of a guard over one record, with the step text that a failure
// report names.
class GuardRun {
public:
    GuardRun(const Guard& guard, qint32 id) : guard_(guard), id_(id), step_(guard.first_step) {}

    bool run()
    {
        db_ = Current_Db();
        if (!db_ || !workspace().BeginTrans())
            return trap();
        began_ = true;
        if (!guard_.costs_statement.isEmpty()) {
            step_ = QStringLiteral("Delete Course from Costs");
            if (!db_->Execute(guard_.costs_statement.arg(id_), engine::dbopt::FailOnErrorConsistent))
                return trap();
        }
        const Outcome entries = clear(guard_.count_entries, guard_.no_entries_count, guard_.entries_question,
                                      guard_.removal_query, guard_.removal_parameter, guard_.entries_difference,
                                      guard_.entries_difference_message);
        if (entries != Outcome::Done)
            return entries == Outcome::Failed ? trap() : roll_back();
        const Outcome lines = clear(guard_.count_lines, guard_.no_lines_count, guard_.lines_question, guard_.retype_query,
                                    guard_.retype_parameter, guard_.lines_difference, guard_.lines_difference_message);
        if (lines != Outcome::Done)
            return lines == Outcome::Failed ? trap() : roll_back();
        step_ = QStringLiteral("commit");
        return workspace().CommitTrans() || trap();
    }

private:
    enum class Outcome { Done, Refused, Failed };

    static engine::Workspace& workspace() { return Program_Workspace(); }

    // Counts the references, and if there are any asks, changes them by the
    // stored query and checks that it changed as many rows as were counted.
    Outcome clear(const QString& count_sql, const QString& no_count, const QString& ask, const QString& query_name,
                  const QString& parameter, const QString& difference, const QString& difference_message)
    {
        qint64 count = 0;
        const Outcome counted = read_count(count_sql.arg(id_), no_count, count);
        if (counted != Outcome::Done || count == 0)
            return counted;
        if (engine::MsgBox(ask.arg(count), engine::mb::YesNo + engine::mb::Question, App_Title()) != engine::answer::Yes)
            return Outcome::Refused;
        std::unique_ptr<engine::QueryDef> query = db_->QueryDefs(query_name);
        if (!query || !query->set_parameter(parameter, id_) || !query->Execute(engine::dbopt::FailOnErrorConsistent))
            return Outcome::Failed;
        if (query->RecordsAffected() != count) {
            Report_Error(report::Detected, difference_message, engine::mb::Critical, module,
                         difference + QString::number(count) + QStringLiteral(" records affected = ")
                             + QString::number(query->RecordsAffected()));
            return Outcome::Refused;
        }
        return Outcome::Done;
    }

    // A count query that gives no row at all is refused with its own report.
    Outcome read_count(const QString& sql, const QString& no_count, qint64& count)
    {
        std::unique_ptr<engine::Recordset> rows = db_->OpenRecordset(sql);
        if (!rows)
            return Outcome::Failed;
        if (rows->at_eof()) {
            Report_Error(report::Detected, guard_.failure, engine::mb::Critical, module, no_count);
            return Outcome::Refused;
        }
        QVariant value;
        if (!rows->get(QStringLiteral("count"), value))
            return Outcome::Failed;
        count = value.toLongLong();
        return Outcome::Done;
    }

    bool trap()
    {
        Report_Error(report::Unexpected, guard_.failure, engine::mb::Critical, module, guard_.routine_prefix + step_);
        return roll_back();
    }

    // Everything since the guard began goes back, costs included; a No is no
    // error and is not reported.
    bool roll_back()
    {
        engine::Err().Clear();
        step_ = QStringLiteral("rollback");
        if (began_ && !workspace().Rollback())
            Report_Error(report::Unexpected, guard_.failure, engine::mb::Critical, module, guard_.routine_prefix + step_);
        return false;
    }

    const Guard& guard_;
    const qint32 id_;
    QString step_;
    engine::Database* db_ = nullptr;
    bool began_ = false;
};

}  // namespace

bool Check_Course_Deletion(qint32 course_id)
{
    return GuardRun(course_guard(), course_id).run();
}

bool Check_Exam_Deletion(qint32 activity_id)
{
    return GuardRun(activity_guard(), activity_id).run();
}
