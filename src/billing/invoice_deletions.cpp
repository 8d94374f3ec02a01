#include "billing/invoice_deletions.h"

#include "billing/billing_words.h"
#include "database/db_handling.h"
#include "database/tmp_tables_lock.h"
#include "engine/database.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "script/current_database.h"
#include "shell/app_globals.h"
#include "shell/error_log.h"
#include "shell/selection_lists.h"

#include <QStringList>

namespace {

const QString delete_receipts_listed =
    QStringLiteral("DELETE * FROM Receipts WHERE Receipt_Invoice_id IN (SELECT * FROM Tmp_Invoices); ");
const QString delete_lines_listed =
    QStringLiteral("DELETE * FROM Invoice_Lines WHERE Inv_Line_inv_id IN (SELECT * FROM Tmp_Invoices); ");

// One deletion's transaction and its failure report. Deletions list their
// invoices in Tmp_Invoices, so each holds the temporary tables' lock.
class Deletion {
public:
    Deletion(QString failure, QString routine) : failure_(std::move(failure)), routine_(std::move(routine)) {}

    bool begin()
    {
        if (!lock_.acquire(Current_Db_Name(), billing_tag()))
            return false;
        if (Program_Workspace().BeginTrans())
            return true;
        Report_Error(report::Unexpected, failure_, engine::mb::Critical, billing_tag(), routine_);
        return false;
    }
    // Runs a statement; a failure is reported with it, and undoes the deletion.
    bool execute(const QString& sql, long long* affected = nullptr)
    {
        engine::Database* db = current_database_or_error();
        if (!db || !db->Execute(sql, engine::dbopt::FailOnErrorConsistent))
            return fail(QStringLiteral("SQl = ") + sql);
        if (affected)
            *affected = db->RecordsAffected();
        return true;
    }
    bool fail(const QString& detail)
    {
        Report_Error(report::Unexpected, failure_, engine::mb::Critical, billing_tag(), detail);
        Program_Workspace().Rollback();
        return false;
    }
    // Undoes the deletion when someone else has already reported why.
    static bool undo()
    {
        Program_Workspace().Rollback();
        return false;
    }
    bool commit()
    {
        if (Program_Workspace().CommitTrans())
            return true;
        return fail(routine_);
    }

private:
    QString failure_;
    QString routine_;
    TmpTablesLock lock_;
};

// The ids in Tmp_Invoices, joined for a literal list.
bool listed_invoice_ids(QString& ids)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> listed = db ? db->OpenRecordset(QStringLiteral("SELECT * FROM Tmp_Invoices;")) : nullptr;
    if (!listed)
        return false;
    QStringList texts;
    for (listed->MoveFirst(); !listed->at_eof(); listed->MoveNext())
        texts << QString::number(listed->Fields(QStringLiteral("Tmp_Invoice_id")).toLongLong());
    ids = texts.join(QStringLiteral(", "));
    return true;
}

// Lists invoices in Tmp_Invoices with `fill`, then deletes them with their
// receipts and lines: what the paid and the balanced deletions share.
bool delete_listed_with_receipts(const QString& fill, const QString& routine, int& count)
{
    count = 0;
    Deletion deletion(QStringLiteral("Unexpected error deleting Paid Invoices and Receipts"), routine);
    long long listed = 0;
    if (!deletion.begin() || !deletion.execute(QStringLiteral("DELETE * FROM Tmp_Invoices;"))
        || !deletion.execute(fill, &listed))
        return false;
    if (listed > 0) {
        if (!deletion.execute(delete_receipts_listed) || !deletion.execute(delete_lines_listed))
            return false;
        if (!DB_Delete_Tmp_Invoices(count))
            return Deletion::undo();
    }
    return deletion.commit();
}

QString selected_invoices_statement(bool term_invoices)
{
    QString sql = QStringLiteral("INSERT INTO tmp_Invoices SELECT I.Invoice_id AS tmp_Invoice_id ");
    if (term_invoices && !Sel_Courses().is_empty())
        sql += QStringLiteral("  FROM Invoice_Lines L, Invoices I, ") + QStringLiteral("       tmp_Terms T, tmp_Courses C, tmp_Pupils P ")
               + QStringLiteral("  WHERE I.Invoice_id = L.Inv_Line_Inv_id ") + QStringLiteral("  AND I.Invoice_Term_Id = T.tmp_Term_id ")
               + QStringLiteral("  AND I.Invoice_Family_id = P.Tmp_Family_id ")
               + QStringLiteral("  AND L.Inv_Line_Course_id = C.Tmp_Course_id ");
    else if (term_invoices)
        sql += QStringLiteral("  FROM Invoices I, tmp_Terms T, tmp_Pupils P ") + QStringLiteral("  WHERE I.Invoice_Term_Id = T.tmp_Term_id ")
               + QStringLiteral("  AND I.Invoice_Family_id = P.Tmp_Family_id ");
    else if (!Sel_Activities().is_empty())
        sql += QStringLiteral("  FROM Invoice_Lines L, Invoices I, ") + QStringLiteral("       tmp_Activities A, tmp_Pupils P ")
               + QStringLiteral("  WHERE I.Invoice_id = L.Inv_Line_Inv_id ")
               + QStringLiteral("  AND I.Invoice_Activity_Date = A.tmp_Date ")
               + QStringLiteral("  AND I.Invoice_Family_id = P.Tmp_Family_id ")
               + QStringLiteral("  AND L.Inv_Line_Exam_id = A.Tmp_Activity_id ");
    else
        sql += QStringLiteral("  FROM Invoices I, tmp_Activities A, tmp_Pupils P ")
               + QStringLiteral("  WHERE I.Invoice_Activity_Date = A.tmp_Date ")
               + QStringLiteral("  AND I.Invoice_Family_id = P.Tmp_Family_id ");
    return sql + QStringLiteral("  GROUP BY I.Invoice_id ; ");
}

// Receipts against the invoices in Tmp_Invoices; below 0 when they couldn't be counted.
int receipts_of_listed()
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> counted =
        db ? db->OpenRecordset(QStringLiteral("SELECT DISTINCT count(Receipt_id) AS Num_Receipts  FROM Receipts  "
                                              "WHERE Receipt_Invoice_id IN (SELECT * FROM Tmp_Invoices); "))
           : nullptr;
    if (!counted || counted->at_eof())
        return -1;
    return counted->Fields(QStringLiteral("Num_Receipts")).toInt();
}

}  // namespace

bool DB_Delete_All_Invoices(int& count)
{
    count = 0;
    Deletion deletion(QStringLiteral("Unexpected error deleting All Invoices and Receipts"),
                      QStringLiteral("DB_Delete_All_Invoices"));
    long long deleted = 0;
    // The invoices an invoicing run listed for printing go with the rest:
    // while listed, an invoice can't be deleted.
    if (!deletion.begin() || !deletion.execute(QStringLiteral("DELETE * FROM Tmp_Invoices;"))
        || !deletion.execute(QStringLiteral("DELETE * FROM Receipts;"))
        || !deletion.execute(QStringLiteral("DELETE * FROM Invoice_Lines;"))
        || !deletion.execute(QStringLiteral("Delete * from Invoices;"), &deleted))
        return false;
    if (!deletion.commit())
        return false;
    count = static_cast<int>(deleted);
    return true;
}

bool DB_Delete_Paid_Invoices(int& count)
{
    return delete_listed_with_receipts(QStringLiteral("INSERT INTO Tmp_Invoices SELECT Invoice_id AS tmp_Invoice_id   "
                                                      "FROM Qry_Select_Paid_Invoices; "),
                                       QStringLiteral("DB_Delete_Paid_Invoices"), count);
}

bool DB_Delete_Balanced_Invoices(int& count)
{
    return delete_listed_with_receipts(
        QStringLiteral("INSERT INTO tmp_Invoices SELECT Invoices.Invoice_id AS tmp_Invoice_id FROM  "
                       "Qry_Select_Invoices_Balance_Zero LEFT JOIN Invoices  ON Invoices.Invoice_Family_id =     "
                       "Qry_Select_Invoices_Balance_Zero.Family_id; "),
        QStringLiteral("DB_Delete_Balanced_Invoices"), count);
}

bool DB_Delete_Selected_Invoices(bool term_invoices, int& count)
{
    count = 0;
    Deletion deletion(QStringLiteral("Unexpected error deleting selected Invoices and Receipts"),
                      QStringLiteral("DB_Delete_Selected_Invoices"));
    if (!deletion.begin() || !deletion.execute(QStringLiteral("DELETE * FROM Tmp_Invoices;"))
        || !deletion.execute(selected_invoices_statement(term_invoices)))
        return false;
    const int receipts = receipts_of_listed();
    if (receipts < 0)
        return deletion.fail(QStringLiteral("DB_Delete_Selected_Invoices"));
    if (receipts > 0) {
        engine::MsgBox(QStringLiteral("Cannot delete the Invoices because there are ") + QString::number(receipts)
                           + QStringLiteral(" receipts for them"),
                       engine::mb::Critical, App_Title());
        return Deletion::undo();
    }
    if (!deletion.execute(delete_lines_listed))
        return false;
    if (!DB_Delete_Tmp_Invoices(count))
        return Deletion::undo();
    return deletion.commit();
}

bool DB_Delete_Tmp_Invoices(int& count)
{
    count = 0;
    Deletion deletion(QStringLiteral("Unexpected error deleting Invoices"), QStringLiteral("DB_Delete_Tmp_Invoices"));
    if (!deletion.begin())
        return false;
    QString ids;
    if (!listed_invoice_ids(ids))
        return deletion.fail(QStringLiteral("DB_Delete_Tmp_Invoices"));
    // The ids stand as literals: Tmp_Invoices refers to the invoices, so it
    // has to be emptied before they can go.
    const QString delete_invoices =
        QStringLiteral("DELETE * FROM Invoices  WHERE Invoices.Invoice_id IN (") + ids + QStringLiteral(");");
    long long deleted = 0;
    if (!deletion.execute(QStringLiteral("DELETE * FROM Tmp_Invoices;")))
        return false;
    if (!ids.isEmpty() && !deletion.execute(delete_invoices, &deleted))
        return false;
    if (!deletion.commit())
        return false;
    count = static_cast<int>(deleted);
    return true;
}
