#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/workspace.h"
#include "shell/settings.h"
#include "support/database_file.h"
#include "support/school_fixture.h"
#include "support/scripted_boxes.h"

#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;
using testing_support::SchoolFixture;
using testing_support::TestFolder;
using testing_support::digest_of;
using testing_support::value_in;

// ---- A new database ----

TEST(NewDatabase, HoldsOneSystemRowOneStandardRowAndNothingElse)
{
    ScriptedBoxes boxes;
    SchoolFixture school;
    const auto standard = school.rows("SELECT * FROM Standard_Values");
    ASSERT_EQ(standard.size(), 1u);
    EXPECT_EQ(standard[0]["stndrd_id"].toInt(), code::Standard_Values_Row);

    const auto sys = school.rows("Qry_Select_Sys");
    ASSERT_EQ(sys.size(), 1u);
    EXPECT_EQ(sys[0]["s_DB_Type"].toInt(), code::Current_DB_Version);
    EXPECT_EQ(sys[0]["s_Style_Type"].toInt(), code::style_type::Locations_In_Settings);
    EXPECT_EQ(sys[0]["s_Backup_Date"].toDateTime(), engine::zero_datetime());  // never backed up
    EXPECT_LE(std::abs(sys[0]["s_Creation_Date"].toDateTime().secsTo(engine::now())), 60);

    for (const QString& table : school.db().TableDef_names()) {
        if (table != "Sys_tab" && table != "Standard_Values") {
            EXPECT_EQ(school.count(table), 0) << table.toStdString();
        }
    }
}

TEST(NewDatabase, IsLoggedAndLeftClosedWithTheStandardRowAndLocationsAsAsked)
{
    ScriptedBoxes boxes;
    TestFolder folder;
    const QString name = folder.file("copy.qdb");
    ASSERT_TRUE(DB_Create_Database(name, false));
    EXPECT_TRUE(Program_Workspace().Databases().empty());
    EXPECT_TRUE(folder.log_text().contains("globdbhand : The database " + name + " has been created. ."));
    EXPECT_EQ(value_in(name, "SELECT count(*) FROM Standard_Values"), "0");

    // Keeping locations in the database stores three of the four names.
    Settings().file_locations = code::style_type::Locations_In_Database;
    Settings().report_list = "  /school/repfmts/zrepfmt.lst ";
    Settings().term_script = "/school/scripts/InTerms.sql";
    Settings().activity_script = "/school/scripts/InActDts.sql";
    Settings().cost_script = "/school/scripts/CrsCosts.sql";
    const QString located = folder.file("located.qdb");
    ASSERT_TRUE(DB_Create_Database(located, true));
    // The locations query never stores the course costs file.
    EXPECT_EQ(value_in(located, "SELECT s_Style_Type || '|' || s_Filename_zrepfmt || '|' || s_Filename_InvTerm || '|' || "
                             "s_Filename_InvAct || '|' || ifnull(s_Filename_CrsCost, 'null') FROM Sys_tab"),
              QStringLiteral("%1|/school/repfmts/zrepfmt.lst|/school/scripts/InTerms.sql|/school/scripts/InActDts.sql|null")
                  .arg(code::style_type::Locations_In_Database));
}

// In a missing folder no file is left; over an existing file the file is kept as it was.
TEST(NewDatabase, WhereItCannotBeMadeIsReportedOnceAndNoFileIsMadeOrChanged)
{
    TestFolder folder;
    folder.write_file("precious.qdb", "the school's data");
    for (const QString& name : {folder.file("no such folder/school.qdb"), folder.file("precious.qdb")}) {
        SCOPED_TRACE(name.toStdString());
        const QByteArray before = QFileInfo::exists(name) ? digest_of(name) : QByteArray();
        ScriptedBoxes().expect("Cannot create database " + name)
            .during([&] { EXPECT_FALSE(DB_Create_Database(name, true)); });
        EXPECT_EQ(QFileInfo::exists(name) ? digest_of(name) : QByteArray(), before);
        EXPECT_TRUE(Program_Workspace().Databases().empty());
    }
}

TEST(InvoiceTables, AnExistingTableIsPassedOverTheNextFailureNamesItsStepAndMissingOnesAreMade)
{
    SchoolFixture school;
    ScriptedBoxes boxes;
    boxes.expect("Cannot create invoice tables ");
    // Invoices exists and is passed over; its index exists too, and that stops the routine.
    EXPECT_EQ(DB_Create_Invoice_Tables(school.db()), "Invoice table index");
    EXPECT_TRUE(school.log_text().contains("Invoice table index ."));

    // On a file without them they are all made.
    const QStringList tables = school.db().TableDef_names();
    for (const char* table : {"Tmp_CourseCosts", "Tmp_Invoices", "Tmp_Pupils", "Tmp_Activities", "Tmp_Courses",
                              "Tmp_Terms", "Receipts", "Invoice_Lines", "Invoices"})
        ASSERT_TRUE(school.db().execute_native(QStringLiteral("DROP TABLE %1").arg(table))) << table;
    EXPECT_EQ(DB_Create_Invoice_Tables(school.db()), "");
    EXPECT_EQ(school.db().TableDef_names(), tables);
}

// ---- The rules the engine enforces ----

// What the school's tables refuse, each with the number the screens report.
// The Smiths at 1 High Street have Anna, on Ballet, entered for Grade 1 on 14
// March; the autumn term is invoiced to them; Jane Doe is a teacher known as JD.
TEST(SchoolRules, TheTablesRefuseWhatWouldMakeTheSchoolInconsistent)
{
    SchoolFixture school;
    const int smiths = school.add_family("Smith", "1 High Street");
    const int anna = school.add_pupil(smiths, "Anna");
    const int ballet = school.add_course(NewCourse("Ballet"));
    school.put_on_course(anna, ballet);
    const int grade1 = school.add_activity(NewActivity("Grade 1 Ballet"));
    school.enter(anna, grade1, QDate(2026, 3, 14));
    const int autumn = school.add_term("Autumn 2026", QDate(2026, 9, 7), QDate(2026, 12, 18));
    school.add_invoice(smiths, "Invoice for Autumn 2026", autumn);
    school.exec("INSERT INTO Teachers (Teacher_Name, Teacher_SurName, Teacher_NickName) VALUES ('Jane', 'Doe', 'JD')");
    const int joneses = school.add_family("Jones");

    struct Case {
        QString sql;
        int refusal;  // 0: accepted
    };
    const QString entry = QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date) "
                                         "VALUES (%1, %2, '%3')").arg(anna).arg(grade1);
    const QString pupil = QStringLiteral("INSERT INTO Pupils (Pupil_Family_Id, Pupil_FirstName) VALUES (%1, '%2')");
    const QList<Case> cases = {
        // A family is known by name and first address line in any letter case.
        {"INSERT INTO Families (Family_Name, Family_Address) VALUES ('SMITH', '1 HIGH STREET')", engine::jet::DuplicateKey},
        {"INSERT INTO Families (Family_Name, Family_Address) VALUES ('Smith', '2 High Street')", 0},
        // A pupil's first name is unique within the family only.
        {pupil.arg(smiths).arg("anna"), engine::jet::DuplicateKey},
        {pupil.arg(joneses).arg("Anna"), 0},
        // A pupil is on a course once.
        {QStringLiteral("INSERT INTO Register_Courses (Pupil_id, Course_id) VALUES (%1, %2)").arg(anna).arg(ballet),
         engine::jet::DuplicateKey},
        // A pupil takes an activity once a date but on many dates; the date is part of an index that refuses nulls.
        {entry.arg("2026-03-14 00:00:00"), engine::jet::DuplicateKey},
        {entry.arg("2026-06-20 00:00:00"), 0},
        {QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id) VALUES (%1, %2)").arg(anna).arg(grade1),
         engine::jet::NullInIndex},
        // Terms have unique names and starts.
        {"INSERT INTO Term_Dates (Term_Name, Term_Start) VALUES ('autumn 2026', '2027-01-04 00:00:00')", engine::jet::DuplicateKey},
        {"INSERT INTO Term_Dates (Term_Name, Term_Start) VALUES ('Spring 2027', '2026-09-07 00:00:00')", engine::jet::DuplicateKey},
        // Teachers have unique names and nicknames.
        {"INSERT INTO Teachers (Teacher_Name, Teacher_SurName) VALUES ('Jane', 'Doe')", engine::jet::DuplicateKey},
        {"INSERT INTO Teachers (Teacher_Name, Teacher_SurName, Teacher_NickName) VALUES ('Janet', 'Doe', 'jd')",
         engine::jet::DuplicateKey},
        // Courses have unique titles and a weekday.
        {"INSERT INTO Courses (Course_Title, Day_of_Week) VALUES ('BALLET', 3)", engine::jet::DuplicateKey},
        {"INSERT INTO Courses (Course_Title) VALUES ('Tap')", engine::jet::NullInIndex},
        // A family is invoiced once a term for one reason.
        {QStringLiteral("INSERT INTO Invoices (Invoice_Family_Id, Invoice_Term_Id, Invoice_Reason) "
                        "VALUES (%1, %2, 'Invoice for Autumn 2026')").arg(smiths).arg(autumn),
         engine::jet::DuplicateKey},
        // References and lengths hold.
        {pupil.arg(999).arg("Zed"), engine::jet::RelatedRecordRequired},
        {QStringLiteral("DELETE FROM Families WHERE Family_id = %1").arg(smiths), engine::jet::RelatedRecordsExist},
        {QStringLiteral("UPDATE Pupils SET Pupil_Marker = '12345678901' WHERE Pupil_id = %1").arg(anna),
         engine::jet::FieldTooSmall},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.sql.toStdString());
        EXPECT_EQ(school.db().execute_native(c.sql) ? 0 : engine::Err().Number, c.refusal);
    }
}

}  // namespace
