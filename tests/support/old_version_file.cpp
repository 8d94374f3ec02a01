#include "support/old_version_file.h"

#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/database_file.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace upgrade_testing {

namespace {

using testing_support::values_of;

void run(engine::Database& db, const QString& sql)
{
    EXPECT_TRUE(db.execute_native(sql)) << sql.toStdString() << "\n"
                                        << engine::Err().Number << " " << engine::Err().Description.toStdString();
}

// The school, written into a current file.
void add_school(engine::Database& db)
{
    run(db, "INSERT INTO Families (Family_id, Family_Name, Family_Address) VALUES "
            "(1, 'Smith', '1 High Street'), (2, 'Jones', '2 Low Road')");
    run(db, "INSERT INTO Pupils (Pupil_id, Pupil_FirstName, Pupil_Family_Id, Pupil_Gender) VALUES "
            "(1, 'Anna', 1, 'F'), (2, 'Ben', 1, 'M'), (3, 'Cara', 2, 'F')");
    run(db, "INSERT INTO Courses (Course_id, Course_Title, Day_of_Week, Course_Teacher) VALUES "
            "(1, 'Ballet 1', 2, 'Miss Jones'), (2, 'Ballet 2', 3, 'Miss Jones'), (3, 'Tap', 4, 'Mr Brown'), "
            "(4, 'Modern', 5, ''), (5, 'Jazz', 6, NULL)");
    run(db, "INSERT INTO Register_Courses (Pupil_id, Course_id) VALUES (1, 1), (2, 3), (3, 2)");
    run(db, "INSERT INTO Exams (Exam_id, Exam_Type, Exam_Title, Exam_Dance, Exam_Level) VALUES "
            "(1, 1, 'Grade 1 Ballet', 'Ballet', 1), (2, 2, 'Summer Show', 'Show', 0)");
    run(db, "INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date) VALUES "
            "(1, 1, '2026-03-14'), (2, 1, '2026-03-14'), (3, 1, '2026-03-21'), (1, 2, '2026-07-04')");
}

// A current file with the school in it, made once for the test program.
QString template_file()
{
    static QTemporaryDir folder;
    static const QString path = [] {
        const QString made = folder.filePath(QStringLiteral("current.qdb"));
        EXPECT_TRUE(DB_Create_Database(made, true));
        engine::Workspace workspace;
        engine::Database* db = workspace.OpenDatabase(made);
        EXPECT_NE(db, nullptr);
        if (db)
            add_school(*db);
        workspace.Close();
        return made;
    }();
    return path;
}

void drop_columns(engine::Database& db, const QString& table, const QStringList& columns)
{
    // The storage-convention triggers name every column: they go first and
    // are made again for the columns that stay.
    for (const QString& trigger : values_of(
             db, QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'trigger' AND tbl_name = '%1' "
                                "AND name LIKE 'qy!_%' ESCAPE '!'").arg(table)))
        run(db, QStringLiteral("DROP TRIGGER \"%1\"").arg(trigger));
    for (const QString& column : columns)
        run(db, QStringLiteral("ALTER TABLE %1 DROP COLUMN %2").arg(table, column));
    EXPECT_TRUE(db.apply_conventions(table));
}

void drop_index(engine::Database& db, const QString& index)
{
    run(db, QStringLiteral("DROP INDEX %1; DROP TRIGGER IF EXISTS %1_null_insert; DROP TRIGGER IF EXISTS %1_null_update;")
                .arg(index));
}

QStringList numbered(const QString& stem, int first, int last)
{
    QStringList names;
    for (int i = first; i <= last; ++i)
        names << stem.arg(i);
    return names;
}

// Takes away what the step from `version` adds, leaving a file of `version`.
void take_away_step(engine::Database& db, int version)
{
    switch (version) {
    case 12:
        drop_columns(db, "Standard_Values",
                     QStringList{"VAT_Type"} + numbered("VAT_Percent%1", 1, 6)
                         + QStringList{"VAT_Regn_Notice", "VAT_Notice", "VAT_Included"});
        drop_columns(db, "Sys_tab",
                     {"s_Style_Type", "s_Filename_zrepfmt", "s_Filename_InvTerm", "s_Filename_InvAct", "s_Filename_CrsCost"});
        break;
    case 8:
        drop_index(db, "Results_PE");
        break;
    case 7:
        drop_columns(db, "Exams", {"Exam_Faculty", "Exam_Branch", "Exam_Category", "Exam_Notes_M", "Exam_Teacher"});
        drop_columns(db, "Courses", {"Course_Teacher_id"});
        drop_columns(db, "Exam_Results", {"Results_Order", "Results_Teacher_id"});
        run(db, "DROP TABLE Activity_Titles; DROP TABLE Teachers;");
        // Before the date joined the key, a pupil took an activity once.
        run(db, "DROP INDEX Results_Uniq; "
                "CREATE UNIQUE INDEX Results_Uniq ON Exam_Results (Results_Pupil_id, Results_Exam_id);");
        break;
    case 6:
        drop_columns(db, "Families", {"Family_Address2", "Family_Address3", "Family_Address4"});
        drop_columns(db, "Pupils", QStringList{"Pupil_Startdate", "Pupil_Regn_Fee", "Pupil_Ethnicity"}
                                       + numbered("Pupil_Ref_Num%1", 2, 4));
        break;
    case 5:
        drop_index(db, "Activity_Dates");
        break;
    case 4:
        drop_columns(db, "Courses", {"Course_Suppressed", "Course_Cancelled", "Course_Location"});
        break;
    case 3:
        run(db, "DROP TABLE Tmp_CourseCosts; DROP TABLE Tmp_Invoices; DROP TABLE Tmp_Pupils; "
                "DROP TABLE Tmp_Activities; DROP TABLE Tmp_Courses; DROP TABLE Tmp_Terms; "
                "DROP TABLE Receipts; DROP TABLE Invoice_Lines; DROP TABLE Invoices;");
        drop_columns(db, "Exam_Results", {"Results_Grade"});
        drop_columns(db, "Families", {"Family_Correspondence"});
        break;
    case 2:
        drop_columns(db, "Pupils", {"Pupil_E_Mail", "Pupil_Special_Needs", "Pupil_Notes"});
        drop_columns(db, "Exams", {"Exam_Description", "Exam_Marker", "Exam_Grade"});
        drop_columns(db, "Families", {"Family_Marker"});
        break;
    case 1: {
        QStringList texts = {"Competition_Payment_Details", "Competition_Arrival", "Competition_Notices",
                             "Spare_Payment_Details",       "Spare_Arrival",       "Spare_Notices"};
        for (int i = 1; i <= 8; ++i)
            texts << QStringLiteral("Discount_%1").arg(i) << QStringLiteral("txt_Discount_%1").arg(i);
        drop_columns(db, "Standard_Values", texts);
        drop_columns(db, "Pupils", {"Pupil_Marker", "Pupil_Ref_Num", "Pupil_Medical"});
        drop_columns(db, "Courses", {"Course_Teacher", "Course_Type"});
        break;
    }
    default:  // 9, 10 and 11 change only the version
        break;
    }
}

// An old file has old queries: only the one that opening needs is kept, so
// that the upgrade must make the others.
void keep_only_system_query(engine::Database& db)
{
    for (const QString& name : db.QueryDef_names()) {
        if (name.compare(QStringLiteral("Qry_Select_Sys"), Qt::CaseInsensitive) != 0) {
            EXPECT_TRUE(db.DeleteQueryDef(name)) << name.toStdString();
        }
    }
}

QStringList outline_of(engine::Database& db)
{
    QStringList lines;
    lines << values_of(db, "SELECT lower(m.name) || '.' || lower(p.name) || ' ' || upper(p.type) || "
                               "' default ' || ifnull(p.dflt_value, '-') || ' notnull ' || p.\"notnull\" "
                               "FROM sqlite_master m, pragma_table_info(m.name) p WHERE m.type = 'table'");
    lines << values_of(db, "SELECT 'index ' || lower(m.name) || ' on ' || lower(m.tbl_name) || ' unique ' || "
                               "l.\"unique\" || ' (' || (SELECT group_concat(lower(i.name), ',') FROM "
                               "pragma_index_info(m.name) i) || ')' FROM sqlite_master m, pragma_index_list(m.tbl_name) l "
                               "WHERE m.type = 'index' AND l.name = m.name");
    lines << values_of(db, "SELECT 'trigger ' || lower(name) FROM sqlite_master WHERE type = 'trigger'");
    lines.sort();
    return lines;
}

}  // namespace

void make_old_version_file(const QString& path, int version)
{
    QFile::remove(path);
    ASSERT_TRUE(QFile::copy(template_file(), path));
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    ASSERT_NE(db, nullptr);
    if (version < 13) {
        for (int step = 12; step >= std::max(version, 1); --step)
            take_away_step(*db, step);
        keep_only_system_query(*db);
        run(*db, "UPDATE Sys_tab SET s_Creation_Date = '2001-02-03 00:00:00', s_Backup_Date = '2001-02-04 00:00:00', "
                 "s_Backup_filename = 'old.bak'");
    }
    run(*db, QStringLiteral("UPDATE Sys_tab SET s_DB_Type = %1").arg(version));
    workspace.Close();
}

QStringList schema_outline(const QString& path)
{
    engine::Workspace workspace;
    engine::Database* db = workspace.OpenDatabase(path);
    EXPECT_NE(db, nullptr);
    QStringList lines = db ? outline_of(*db) : QStringList();
    workspace.Close();
    return lines;
}

}  // namespace upgrade_testing
