// The copy of the current database into a new file: the roll-forward to a
// new term, with some or all of the data.

#include "database/copy_merge.h"

#include "database/code_values.h"
#include "database/copy_merge_tables.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "shell/error_log.h"

#include <vector>

namespace {

using copy_merge::Transfer;

const QString module = QStringLiteral("gendbde");

Transfer whole(const QString& table)
{
    return Transfer{table, table, QStringLiteral("main.") + table, false};
}

// Runs a step's transfers from the open file into new_name, in order. A
// failure is reported with the step's name and the statement.
bool copy_tables(const QString& step, const QString& new_name, const std::vector<Transfer>& transfers)
{
    engine::Database* db = Current_Db();
    QString statement;
    QString label;
    bool ok = db && copy_merge::attach_other(*db, new_name, statement);
    for (auto it = transfers.begin(); ok && it != transfers.end(); ++it) {
        label = it->label;
        ok = copy_merge::transfer_statement(*db, QStringLiteral("main"), copy_merge::other_file, *it, statement)
             && db->Execute(statement, engine::dbopt::FailOnError);
    }
    if (!ok)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error copying database table ") + label,
                     engine::mb::Critical, module, step + QStringLiteral("  SQL is :-") + statement);
    return ok;
}

QString of_type(const QString& tables, int exam_type, const QString& joins = QString())
{
    return tables + QStringLiteral(" WHERE ") + joins + QStringLiteral("Exams.Exam_Type = %1").arg(exam_type);
}

}  // namespace

bool DB_Copy_DB_Pupils_and_Courses(const QString&, const QString& new_name)
{
    return copy_tables(QStringLiteral("DB_Copy_DB_Pupils_and_Courses"), new_name,
                       {
                           Transfer{QStringLiteral("Standard Values"), QStringLiteral("Standard_Values"),
                                    QStringLiteral("main.Standard_Values WHERE stndrd_id = %1").arg(code::Standard_Values_Row)},
                           whole(QStringLiteral("Families")),
                           whole(QStringLiteral("Pupils")),
                           whole(QStringLiteral("Teachers")),
                           whole(QStringLiteral("Courses")),
                           whole(QStringLiteral("Register_Courses")),
                       });
}

bool DB_Copy_Exams_Of_Type(const QString&, const QString& new_name, int exam_type)
{
    return copy_tables(
        QStringLiteral("DB_Copy_Exams_Of_Type"), new_name,
        {
            Transfer{QStringLiteral("Exams"), QStringLiteral("Exams"), of_type(QStringLiteral("main.Exams"), exam_type)},
            Transfer{QStringLiteral("Exam_Results"), QStringLiteral("Exam_Results"),
                     of_type(QStringLiteral("main.Exam_Results, main.Exams"), exam_type,
                             QStringLiteral("Exam_Results.Results_Exam_id = Exams.Exam_id AND "))},
            Transfer{QStringLiteral("Activity_Titles"), QStringLiteral("Activity_Titles"),
                     of_type(QStringLiteral("main.Activity_Titles, main.Exam_Results, main.Exams"), exam_type,
                             QStringLiteral("Activity_Titles.ActT_Date = Exam_Results.Results_Date AND "
                                            "Exam_Results.Results_Exam_id = Exams.Exam_id AND ")),
                     true},
        });
}

bool DB_Copy_Exams_All(const QString&, const QString& new_name)
{
    return copy_tables(QStringLiteral("DB_Copy_Exams_All"), new_name,
                       {whole(QStringLiteral("Exams")), whole(QStringLiteral("Exam_Results")),
                        whole(QStringLiteral("Activity_Titles"))});
}

bool DB_Copy_Invoices_All(const QString&, const QString& new_name)
{
    return copy_tables(QStringLiteral("DB_Copy_Invoices_All"), new_name,
                       {whole(QStringLiteral("Term_Dates")), whole(QStringLiteral("Number_Lessons")),
                        whole(QStringLiteral("Holidays")), whole(QStringLiteral("Invoices")),
                        whole(QStringLiteral("Invoice_Lines")), whole(QStringLiteral("Receipts"))});
}

bool DB_Copy_DB_For_NewTerm(const QString& old_name, const QString& new_name, bool copy_all)
{
    DB_Close_All();
    if (!DB_Open_Raw(old_name))
        return false;
    // The new file is reached first here, so that a failure to reach it is
    // reported as the copy's own.
    QString statement;
    bool ok = copy_merge::attach_other(*Current_Db(), new_name, statement);
    if (!ok)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error copying database table "), engine::mb::Critical,
                     module,
                     QStringLiteral("DB_Copy_DB_For_NewTerm where old=") + old_name + QStringLiteral(" new=") + new_name
                         + QStringLiteral(" SQL is :-") + statement);
    ok = ok && DB_Copy_DB_Pupils_and_Courses(old_name, new_name);
    if (copy_all)
        ok = ok && DB_Copy_Exams_All(old_name, new_name) && DB_Copy_Invoices_All(old_name, new_name);
    else
        ok = ok && DB_Copy_Exams_Of_Type(old_name, new_name, code::exam_type::Exam);
    DB_Close_All();
    if (!ok)
        DB_Delete_Files(new_name);
    return ok;
}
