// The merge of one database file into another, by ids.

#include "database/copy_merge.h"

#include "database/copy_merge_tables.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "shell/error_log.h"

#include <vector>

namespace {

using copy_merge::Transfer;

const QString module = QStringLiteral("gendbde");

// The rows of the source whose key the target lacks. Sys_tab,
// Standard_Values and the Tmp tables stay as the target has them.
Transfer missing_rows(const QString& table, const QString& key, const QString& label)
{
    return Transfer{label, table,
                    QStringLiteral("%1.%2 WHERE %2.%3 NOT IN (SELECT %3 FROM main.%2)").arg(copy_merge::other_file, table, key)};
}

// Parents before children. The lessons of a term carry the terms' label.
const std::vector<Transfer>& merge_order()
{
    static const std::vector<Transfer> order = {
        missing_rows("Families", "Family_id", "Families"),
        missing_rows("Pupils", "Pupil_id", "Pupils"),
        missing_rows("Teachers", "Teacher_id", "Teachers"),
        missing_rows("Courses", "Course_id", "Courses"),
        missing_rows("Register_Courses", "Register_id", "Register_Courses"),
        missing_rows("Exams", "Exam_id", "Exams"),
        missing_rows("Activity_Titles", "ActT_Date", "Activity_Titles"),
        missing_rows("Exam_Results", "Results_id", "Exam_Results"),
        missing_rows("Term_Dates", "Term_id", "Term_Dates"),
        missing_rows("Number_Lessons", "Term_id", "Term_Dates"),
        missing_rows("Holidays", "Day_Off", "Holidays"),
        missing_rows("Invoices", "Invoice_id", "Invoices"),
        missing_rows("Invoice_Lines", "Invoice_Line_id", "Invoice_Lines"),
        missing_rows("Receipts", "Receipt_id", "Receipts"),
    };
    return order;
}

}  // namespace

bool DB_Merge_ALL(const QString& source_name, const QString&)
{
    engine::Database* db = Current_Db();
    QString statement;
    QString label;
    // A file merged into itself lacks nothing; SQLite couldn't write to a
    // file attached to itself, and a failure would delete it.
    if (db && copy_merge::is_same_file(*db, source_name))
        return true;
    bool ok = db && copy_merge::attach_other(*db, source_name, statement);
    for (auto it = merge_order().begin(); ok && it != merge_order().end(); ++it) {
        label = it->label;
        ok = copy_merge::transfer_statement(*db, copy_merge::other_file, QStringLiteral("main"), *it, statement)
             && db->Execute(statement, engine::dbopt::FailOnError);
    }
    if (!ok)
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error merging database table ") + label,
                     engine::mb::Critical, module, QStringLiteral("DB_Merge_ALL  SQL is :-") + statement);
    return ok;
}

bool DB_Merge_Databases(const QString& source_name, const QString& target_name)
{
    DB_Close_All();
    if (!DB_Open_Raw(target_name))
        return false;
    if (DB_Merge_ALL(source_name, target_name)) {
        DB_Close_All();
        return true;
    }
    DB_Close_All();
    DB_Delete_Files(target_name);
    return false;
}
