#include "billing/tmp_tables.h"

#include "billing/billing_words.h"
#include "engine/database.h"
#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/vb_values.h"
#include "engine/workspace.h"
#include "database/db_handling.h"
#include "script/current_database.h"
#include "shell/error_log.h"
#include "shell/selection_lists.h"

#include <QStringList>

namespace {

bool execute(const QString& sql)
{
    engine::Database* db = current_database_or_error();
    return db && db->Execute(sql, engine::dbopt::FailOnErrorConsistent);
}

// Runs the statements in turn; on failure reports `failure` with the
// statement that failed and gives false.
bool execute_all(const QStringList& statements, const QString& failure, const QString& routine)
{
    for (const QString& sql : statements) {
        if (!execute(sql)) {
            Report_Error(report::Unexpected, failure, engine::mb::Critical, billing_tag(), routine + QStringLiteral(" - ") + sql);
            return false;
        }
    }
    return true;
}

QVector<qint32> chosen_ids(const IdList& list)
{
    QVector<qint32> ids;
    for (qint32 id : list.chosen())
        if (id > 0)
            ids << id;
    return ids;
}

QVector<QDate> chosen_dates(const DateList& list)
{
    QVector<QDate> dates;
    for (const QDate& day : list.chosen())
        if (day.isValid() && day != engine::zero_date())
            dates << day;
    return dates;
}

QString joined(const QVector<qint32>& ids)
{
    QStringList texts;
    for (qint32 id : ids)
        texts << QString::number(id);
    return texts.join(QStringLiteral(", "));
}

QString joined(const QVector<QDate>& dates)
{
    QStringList texts;
    for (const QDate& day : dates)
        texts << QLatin1Char('#') + vb::Format(engine::make_datetime(day), QStringLiteral("mm/dd/yyyy")) + QLatin1Char('#');
    return texts.join(QStringLiteral(", "));
}

// The first column of the first row, as text; empty when there is no row.
bool first_text(const QString& sql, QString& text)
{
    engine::Database* db = current_database_or_error();
    std::unique_ptr<engine::Recordset> rows = db ? db->OpenRecordset(sql) : nullptr;
    if (!rows)
        return false;
    text = rows->at_eof() ? QString() : rows->Fields(rows->field(0).name).toString();
    return true;
}

QStringList pupil_statements(const QVector<qint32>& ids, bool none_means_all)
{
    const QString all = QStringLiteral("INSERT INTO Tmp_Pupils SELECT Pupil_id AS tmp_Pupil_id, "
                                       "Pupil_Family_id AS tmp_Family_id FROM Pupils");
    QStringList statements{QStringLiteral("DELETE * FROM Tmp_Pupils;")};
    if (ids.isEmpty() && none_means_all)
        statements << all + QLatin1Char(';');
    for (qint32 id : ids)
        statements << all + QStringLiteral(" WHERE pupil_id = ") + QString::number(id) + QLatin1Char(';');
    return statements;
}

// Tmp_Activities takes two columns; a statement that gives only the
// activity names its column so that the date stays empty.
QString activity_statement(const QVector<qint32>& activities, const QVector<QDate>& dates)
{
    if (!activities.isEmpty() && !dates.isEmpty())
        return QStringLiteral("INSERT INTO Tmp_Activities ") + QStringLiteral("SELECT DISTINCT Results_Exam_id AS tmp_Activity_id, Results_Date AS tmp_Date ")
               + QStringLiteral("FROM Exam_Results ") + QStringLiteral("WHERE Results_Date IN ( ") + joined(dates)
               + QStringLiteral(" ) AND Results_Exam_id IN ( ") + joined(activities) + QStringLiteral(" );");
    if (dates.isEmpty())
        return QStringLiteral("INSERT INTO Tmp_Activities (tmp_Activity_id) SELECT Exam_id AS tmp_Activity_id FROM Exams ;");
    return QStringLiteral("INSERT INTO Tmp_Activities ") + QStringLiteral("SELECT DISTINCT Results_Exam_id AS tmp_Activity_Id, ")
           + QStringLiteral("Results_Date AS tmp_Date ") + QStringLiteral("FROM Exam_Results ")
           + QStringLiteral("WHERE Results_Date IN ( ") + joined(dates) + QStringLiteral(") ;");
}

}  // namespace

bool DB_Clear_Tmp_Tables()
{
    engine::Workspace& workspace = Program_Workspace();
    if (!workspace.BeginTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error clearing the temporary tables"),
                     engine::mb::Critical, billing_tag(), QStringLiteral("DB_Clear_Tmp_Tables"));
        return false;
    }
    const QStringList statements = {
        QStringLiteral("DELETE * FROM Tmp_Courses;"),    QStringLiteral("DELETE * FROM Tmp_Pupils;"),
        QStringLiteral("DELETE * FROM Tmp_Terms;"),      QStringLiteral("DELETE * FROM Tmp_Activities;"),
        QStringLiteral("DELETE * FROM Tmp_Invoices;"),   QStringLiteral("DELETE * FROM Tmp_CourseCosts;"),
    };
    if (!execute_all(statements, QStringLiteral("Unexpected error clearing the temporary tables"),
                     QStringLiteral("DB_Clear_Tmp_Tables"))) {
        workspace.Rollback();
        return false;
    }
    if (!workspace.CommitTrans()) {
        Report_Error(report::Unexpected, QStringLiteral("Unexpected error clearing the temporary tables"),
                     engine::mb::Critical, billing_tag(), QStringLiteral("DB_Clear_Tmp_Tables"));
        workspace.Rollback();
        return false;
    }
    return true;
}

bool Setup_Terms(QString& term_label)
{
    const QVector<qint32> ids = chosen_ids(Sel_Terms());
    QStringList statements{QStringLiteral("DELETE * FROM Tmp_Terms;")};
    if (ids.isEmpty())
        statements << QStringLiteral("INSERT INTO Tmp_Terms SELECT Term_id AS tmp_Term_id FROM Term_Dates;");
    for (qint32 id : ids)
        statements << QStringLiteral("INSERT INTO Tmp_Terms (tmp_Term_id) VALUES (") + QString::number(id) + QStringLiteral(" );");
    const QString failure = QStringLiteral("Unexpected error selecting a term");
    if (!execute_all(statements, failure, QStringLiteral("Setup_Terms")))
        return false;
    if (ids.size() != 1)
        return true;
    QString name;
    if (!first_text(QStringLiteral("SELECT term_name FROM Term_Dates  WHERE Term_id = ") + QString::number(ids.first()), name)) {
        Report_Error(report::Unexpected, failure, engine::mb::Critical, billing_tag(), QStringLiteral("Setup_Terms"));
        return false;
    }
    term_label = QStringLiteral("- ") + name;
    return true;
}

bool Setup_Courses()
{
    const QVector<qint32> ids = chosen_ids(Sel_Courses());
    QStringList statements{QStringLiteral("DELETE * FROM Tmp_Courses;")};
    if (ids.isEmpty())
        statements << QStringLiteral("INSERT INTO Tmp_Courses SELECT Course_id AS tmp_Course_id FROM Courses;");
    for (qint32 id : ids)
        statements << QStringLiteral("INSERT INTO Tmp_Courses (tmp_Course_id) VALUES (") + QString::number(id) + QStringLiteral(" );");
    return execute_all(statements, QStringLiteral("Unexpected error selecting a course"), QStringLiteral("Setup_Courses"));
}

bool Setup_Pupils()
{
    return execute_all(pupil_statements(chosen_ids(Sel_Pupils()), true), QStringLiteral("Unexpected error selecting a pupil"),
                       QStringLiteral("Setup_Pupils"));
}

bool DB_Setup_Changed_Pupils()
{
    return execute_all(pupil_statements(chosen_ids(Changed_Pupils()), false),
                       QStringLiteral("Unexpected error selecting a pupil"), QStringLiteral("DB_Setup_Changed_Pupils"));
}

bool Setup_exams(QString& date_label)
{
    const QVector<qint32> activities = chosen_ids(Sel_Activities());
    const QVector<QDate> dates = chosen_dates(Sel_Activity_Dates());
    QStringList statements{QStringLiteral("DELETE * FROM Tmp_Activities;")};
    if (!activities.isEmpty() && dates.isEmpty()) {
        for (qint32 id : activities)
            statements << QStringLiteral("INSERT INTO Tmp_Activities (tmp_Activity_id) VALUES( ") + QString::number(id)
                              + QStringLiteral(");");
    } else {
        statements << activity_statement(activities, dates);
    }
    const QString failure = QStringLiteral("Unexpected error selecting a exam");
    for (const QString& sql : statements) {
        if (!execute(sql)) {
            Report_Error(report::Unexpected, failure, engine::mb::Critical, billing_tag(), QStringLiteral("Setup_exams - ") + sql);
            return false;
        }
    }
    QString title;
    const QString title_sql = QStringLiteral("SELECT DISTINCT ActT_Title  FROM Tmp_Activities T inner join Activity_Titles A  "
                                             "ON T.tmp_Date = A.ActT_Date; ");
    if (!first_text(title_sql, title)) {
        Report_Error(report::Unexpected, failure, engine::mb::Critical, billing_tag(), QStringLiteral("Setup_exams - ") + title_sql);
        return false;
    }
    if (!title.isEmpty())
        date_label = QStringLiteral("- ") + title;
    return true;
}
