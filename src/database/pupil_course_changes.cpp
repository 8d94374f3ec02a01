#include "database/pupil_course_changes.h"

#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/selection_lists.h"

#include <memory>

namespace {

const QString module = QStringLiteral("gendbde");

bool run_register_query(const QString& name, qint32 course_id, qint32 pupil_id)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    return query && query->set_parameter(QStringLiteral("p_Course_id"), course_id)
           && query->set_parameter(QStringLiteral("p_Pupil_Id"), pupil_id)
           && query->Execute(engine::dbopt::FailOnErrorConsistent);
}

QString detail(qint32 course_id, qint32 pupil_id)
{
    return QStringLiteral("pupil_id = %1 Course_id = %2").arg(pupil_id).arg(course_id);
}

}  // namespace

bool DB_Add_Pupil_To_Course(qint32 course_id, qint32 pupil_id, const QString& pupil_name)
{
    if (run_register_query(QStringLiteral("Qry_Insert_Pupil_on_Course"), course_id, pupil_id)) {
        Glob_Add_Changed_Pupil(pupil_id);
        return true;
    }
    if (engine::Err().Number == engine::jet::DuplicateKey) {
        // Expected in a batch: shown once, and only traced in the log.
        const QString text = QStringLiteral("Pupil ") + pupil_name + QStringLiteral(" is already on this register");
        engine::MsgBox(text, engine::mb::Critical, App_Title());
        Report_Error(report::Trace, text, engine::mb::Critical, module, detail(course_id, pupil_id));
        return false;
    }
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error inserting into register"), engine::mb::Critical,
                 module, detail(course_id, pupil_id));
    return false;
}

bool DB_Delete_Pupil_From_Course(qint32 course_id, qint32 pupil_id)
{
    if (!run_register_query(QStringLiteral("Qry_Delete_Pupil_on_Course"), course_id, pupil_id)) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting from register"), engine::mb::Critical,
                     module, detail(course_id, pupil_id));
        return false;
    }
    Glob_Add_Changed_Pupil(pupil_id);
    return true;
}
