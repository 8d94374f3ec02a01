#include "database/guarded_deletions.h"

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

enum class Count { Read, No_Row, Failed };

// Opens a snapshot of a count query and reads its Count field. A query that
// gives no row at all is a failure of its own kind.
Count read_count(const QString& sql, qint64& count)
{
    count = 0;
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::Recordset> rows = db ? db->OpenRecordset(sql) : nullptr;
    if (!rows)
        return Count::Failed;
    if (rows->at_eof())
        return Count::No_Row;
    QVariant value;
    if (!rows->get(QStringLiteral("count"), value))
        return Count::Failed;
    count = value.toLongLong();
    rows->Close();
    return Count::Read;
}

void refuse(const QString& text)
{
    engine::MsgBox(text, engine::mb::OkOnly, App_Title());
}

// Runs a stored query of the current database with one parameter.
bool run_query(const QString& name, const QString& parameter, qint32 value)
{
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> query = db ? db->QueryDefs(name) : nullptr;
    return query && query->set_parameter(parameter, value) && query->Execute(engine::dbopt::FailOnErrorConsistent);
}

}  // namespace

bool DB_Delete_Pupil(qint32 pupil_id)
{
    engine::Workspace& workspace = Program_Workspace();
    const QString detail = QStringLiteral("pupil_id = ") + QString::number(pupil_id);
    auto give_up = [&] {
        engine::Err().Clear();
        workspace.Rollback();
        return false;
    };
    if (!workspace.BeginTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting pupil"), engine::mb::Critical, module,
                     detail);
        return false;
    }
    qint64 invoices = 0;
    switch (read_count(QStringLiteral("Select count(*) as count from Invoice_Lines WHERE Inv_Line_Pupil_id = ")
                           + QString::number(pupil_id) + QLatin1Char(';'),
                       invoices)) {
    case Count::Failed:
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting pupil"), engine::mb::Critical, module,
                     detail);
        return give_up();
    case Count::No_Row:
        // The words are those of the activity guard; they stand as they are.
        Report_Error(report::Detected, QStringLiteral("Unexpected error deleting activity"), engine::mb::Critical, module,
                     QStringLiteral("DB_Delete_Pupil - no count of invoices "));
        return give_up();
    case Count::Read: break;
    }
    if (invoices > 0) {
        refuse(QStringLiteral("There are ") + QString::number(invoices) + QStringLiteral(" invoices that reference this pupil.")
               + QLatin1Char('\n') + QStringLiteral("Please delete them manually. ") + QLatin1Char('\n')
               + QStringLiteral("Abandoning Deletion"));
        return give_up();
    }
    for (const char* query : {"Qry_Delete_Pupil_from_Courses", "Qry_Delete_Pupil_from_Exams", "Qry_Delete_Pupil"}) {
        if (!run_query(QString::fromLatin1(query), QStringLiteral("p_Pupil_Id"), pupil_id)) {
            Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting pupil"), engine::mb::Critical,
                         module, detail);
            return give_up();
        }
    }
    if (!workspace.CommitTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error deleting pupil"), engine::mb::Critical, module,
                     detail);
        return give_up();
    }
    return true;
}

bool Check_Family_Deletion(qint32 family_id)
{
    const QString failure = QStringLiteral("Unexpected error deleting Family");
    qint64 invoices = 0;
    switch (read_count(QStringLiteral("Select count(*) AS count from Invoices WHERE Invoice_Family_id = ")
                           + QString::number(family_id) + QLatin1Char(';'),
                       invoices)) {
    case Count::Failed:
        Report_Error(report::Unexpected, failure, engine::mb::Critical, module, QStringLiteral("Check_Family_Deletion"));
        return false;
    case Count::No_Row:
        Report_Error(report::Detected, failure, engine::mb::Critical, module,
                     QStringLiteral("Check_Family_Deletion no count of invoices "));
        return false;
    case Count::Read: break;
    }
    if (invoices > 0) {
        refuse(QStringLiteral("There are ") + QString::number(invoices)
               + QStringLiteral(" invoices that reference this Family.") + QLatin1Char('\n')
               + QStringLiteral("Please delete these manually.") + QLatin1Char('\n')
               + QStringLiteral("Note that deleting these Invoices will affect your full accounts - the totals Owed "
                                "and Received will change. ")
               + QLatin1Char('\n') + QStringLiteral("Unable to Continue"));
        return false;
    }

    engine::Workspace& workspace = Program_Workspace();
    QString step = QStringLiteral("begin transaction");
    bool began = false;
    auto trap = [&] {
        Report_Error(report::Unexpected, failure, engine::mb::Critical, module,
                     QStringLiteral("Check_Family_Deletion - ") + step);
        if (began)
            workspace.Rollback();
        return false;
    };
    if (!workspace.BeginTrans())
        return trap();
    began = true;
    step = QStringLiteral("pupils");
    engine::Database* db = Current_Db();
    std::unique_ptr<engine::QueryDef> names = db ? db->QueryDefs(QStringLiteral("Qry_Select_Pupil_Names")) : nullptr;
    if (!names || !names->set_parameter(QStringLiteral("par_fid"), family_id))
        return trap();
    std::unique_ptr<engine::Recordset> pupils = names->OpenRecordset();
    if (!pupils)
        return trap();
    while (!pupils->at_eof()) {
        if (!DB_Delete_Pupil(pupils->Fields(QStringLiteral("pupil_id")).toInt())) {
            // The family's own transaction stays open with the pupils already
            // deleted pending, until the workspace's next commit or rollback.
            pupils->Close();
            return false;
        }
        if (!pupils->MoveNext())
            return trap();
    }
    pupils->Close();
    step = QStringLiteral("commit");
    if (!workspace.CommitTrans())
        return trap();
    return true;
}

bool Check_Teacher_Deletion(qint32 teacher_id)
{
    struct Reference {
        const char* table_and_column;
        const char* refusal_before;
        const char* refusal_after;
        const char* no_row;
    };
    // The results name their teacher in Results_Teacher_id.
    static const Reference references[] = {
        {"Courses WHERE Course_Teacher_id", "This teacher is teaching ", " courses so cannot be deleted.",
         "Check_Teacher_Deletion no count courses"},
        {"Exams WHERE Exam_Teacher", "This teacher is on ", " exams so cannot be deleted.",
         "Check_Teacher_Deletion no count exams"},
        {"Exam_Results WHERE Results_Teacher_id", "This teacher is in the results for ", " exams so cannot be deleted.",
         "Check_Teacher_Deletion no count results"},
    };
    const QString failure = QStringLiteral("Unexpected error deleting Teacher");
    for (const Reference& reference : references) {
        qint64 count = 0;
        switch (read_count(QStringLiteral("Select count(*) as count from ") + QString::fromLatin1(reference.table_and_column)
                               + QStringLiteral(" = ") + QString::number(teacher_id) + QLatin1Char(';'),
                           count)) {
        case Count::Failed:
            Report_Error(report::Unexpected, failure, engine::mb::Critical, module,
                         QStringLiteral("Check_Teacher_Deletion"));
            return false;
        case Count::No_Row:
            Report_Error(report::Detected, failure, engine::mb::Critical, module, QString::fromLatin1(reference.no_row));
            return false;
        case Count::Read: break;
        }
        if (count > 0) {
            refuse(QString::fromLatin1(reference.refusal_before) + QString::number(count)
                   + QString::fromLatin1(reference.refusal_after));
            return false;
        }
    }
    return true;
}
