#include "billing/invoice_checks.h"

#include "billing/billing_words.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"

bool Check_Course_Costs()
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> uncosted =
        db ? db->OpenRecordset(QStringLiteral("SELECT DISTINCT Courses.Course_Title  FROM Courses LEFT JOIN Tmp_CourseCosts  "
                                              "ON Courses.Course_id = Tmp_CourseCosts.Tmp_Course_id  "
                                              "WHERE ( Tmp_CourseCosts.Tmp_Cost Is Null    Or Tmp_CourseCosts.Tmp_Cost =0)  "
                                              "AND Courses.Course_Suppressed= false  AND Courses.Course_Cancelled = false ;"))
           : nullptr;
    if (!uncosted) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error Checking course costs"), engine::mb::Critical,
                     billing_tag(), QStringLiteral("Check_Course_Costs"));
        return true;
    }
    if (uncosted->at_eof())
        return true;
    QString titles;
    for (uncosted->MoveFirst(); !uncosted->at_eof(); uncosted->MoveNext())
        titles += uncosted->Fields(QStringLiteral("Course_Title")).toString() + QStringLiteral(", ");
    const int answer = engine::MsgBox(QStringLiteral("There are no costs set up for ") + titles + QLatin1Char('\n')
                                          + QStringLiteral("Do you want to cancel the invoice run?"),
                                      engine::mb::YesNo + engine::mb::Question, App_Title());
    return answer != engine::answer::Yes;
}

int DB_Activity_Invoice_Count()
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> counted =
        db ? db->OpenRecordset(QStringLiteral("Select count(*) AS count from Invoices I inner join tmp_Activities A "
                                              "on I.Invoice_Activity_Date = A.Tmp_Date ;"))
           : nullptr;
    if (counted && !counted->at_eof())
        return counted->Fields(QStringLiteral("count")).toInt();
    Report_Error(report::Unexpected, QStringLiteral("Unexpected error Counting Activity Invoices"), engine::mb::Critical,
                 billing_tag(), QStringLiteral("DB_Activity_Invoice_Count no count of invoices "));
    return -1;
}
