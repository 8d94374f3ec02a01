#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/school_fixture.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace {

using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;
using testing_support::SchoolFixture;
using testing_support::TestFolder;

const QStringList tables_in_order = {
    "Sys_tab",        "Families",       "Pupils",        "Teachers",        "Exams",
    "Courses",        "Register_Courses", "Exam_Results", "Activity_Titles", "Term_Dates",
    "Number_Lessons", "Holidays",       "Standard_Values", "Invoices",      "Invoice_Lines",
    "Receipts",       "Tmp_Terms",      "Tmp_Courses",   "Tmp_Activities",  "Tmp_Pupils",
    "Tmp_Invoices",   "Tmp_CourseCosts"};

// ---- A new database ----

TEST(NewDatabase, HoldsOneSystemRowOneStandardRowAndNothingElse)
{
    ScriptedBoxes boxes;
    SchoolFixture school;
    EXPECT_EQ(school.db().TableDef_names(), tables_in_order);

    const auto standard = school.rows("SELECT * FROM Standard_Values");
    ASSERT_EQ(standard.size(), 1u);
    EXPECT_EQ(standard[0]["stndrd_id"].toInt(), code::Standard_Values_Row);
    EXPECT_EQ(standard[0]["School_Name"].toString(), " ");
    EXPECT_EQ(standard[0]["VAT_Type"].toInt(), code::vat_type::None);

    const auto sys = school.rows("Qry_Select_Sys");
    ASSERT_EQ(sys.size(), 1u);
    EXPECT_EQ(sys[0]["s_DB_Type"].toInt(), code::Current_DB_Version);
    EXPECT_EQ(sys[0]["s_Style_Type"].toInt(), code::style_type::Locations_In_Settings);
    EXPECT_EQ(sys[0]["s_Backup_Date"].toDateTime(), engine::zero_datetime());
    EXPECT_EQ(sys[0]["s_Backup_filename"].toString(), "");
    EXPECT_LE(std::abs(sys[0]["s_Creation_Date"].toDateTime().secsTo(engine::now())), 60);
    EXPECT_TRUE(sys[0]["s_Filename_zrepfmt"].isNull());

    for (const QString& table : tables_in_order) {
        if (table != "Sys_tab" && table != "Standard_Values") {
            EXPECT_EQ(school.count(table), 0) << table.toStdString();
        }
    }
}

TEST(NewDatabase, IsLoggedAndLeftClosed)
{
    ScriptedBoxes boxes;
    TestFolder folder;
    const QString name = folder.file("new.qdb");
    ASSERT_TRUE(DB_Create_Database(name, true));
    EXPECT_TRUE(Program_Workspace().Databases().empty());
    EXPECT_TRUE(folder.log_text().contains("globdbhand : The database " + name + " has been created. ."));
}

TEST(NewDatabase, WithoutTheBlankRowHasNoStandardValues)
{
    ScriptedBoxes boxes;
    TestFolder folder;
    const QString name = folder.file("copy.qdb");
    ASSERT_TRUE(DB_Create_Database(name, false));
    engine::Database* db = Program_Workspace().OpenDatabase(name);
    ASSERT_NE(db, nullptr);
    auto rows = db->OpenRecordset("Standard_Values");
    EXPECT_EQ(rows->RecordCount(), 0);
    Program_Workspace().close_database(db);
}

TEST(NewDatabase, KeepingLocationsInTheDatabaseStoresThreeOfTheFourNames)
{
    ScriptedBoxes boxes;
    TestFolder folder;
    Settings().file_locations = code::style_type::Locations_In_Database;
    Settings().report_list = "  /school/repfmts/zrepfmt.lst ";
    Settings().term_script = "/school/scripts/InTerms.sql";
    Settings().activity_script = "/school/scripts/InActDts.sql";
    Settings().cost_script = "/school/scripts/CrsCosts.sql";
    const QString name = folder.file("located.qdb");
    ASSERT_TRUE(DB_Create_Database(name, true));

    engine::Database* db = Program_Workspace().OpenDatabase(name);
    ASSERT_NE(db, nullptr);
    auto sys = db->OpenRecordset("Sys_tab");
    EXPECT_EQ(sys->Fields("s_Style_Type").toInt(), code::style_type::Locations_In_Database);
    EXPECT_EQ(sys->Fields("s_Filename_zrepfmt").toString(), "/school/repfmts/zrepfmt.lst");
    EXPECT_EQ(sys->Fields("s_Filename_InvTerm").toString(), "/school/scripts/InTerms.sql");
    EXPECT_EQ(sys->Fields("s_Filename_InvAct").toString(), "/school/scripts/InActDts.sql");
    // The locations query never stores the course costs file.
    EXPECT_TRUE(sys->Fields("s_Filename_CrsCost").isNull());
    Program_Workspace().close_database(db);
}

TEST(NewDatabase, InAMissingFolderIsReportedOnceAndLeavesNoFile)
{
    TestFolder folder;
    const QString name = folder.file("no such folder/school.qdb");
    ScriptedBoxes boxes;
    boxes.expect("Cannot create database " + name);
    EXPECT_FALSE(DB_Create_Database(name, true));
    EXPECT_FALSE(QFileInfo::exists(name));
    EXPECT_TRUE(Program_Workspace().Databases().empty());
}

TEST(NewDatabase, OverAnExistingFileIsRefusedAndTheFileKept)
{
    TestFolder folder;
    const QString name = folder.file("precious.qdb");
    {
        QFile existing(name);
        ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
        existing.write("the school's data");
    }
    ScriptedBoxes boxes;
    boxes.expect("Cannot create database " + name);
    EXPECT_FALSE(DB_Create_Database(name, true));
    QFile kept(name);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "the school's data");
}

TEST(InvoiceTables, AnExistingTableIsPassedOverAndTheNextFailureNamesItsStep)
{
    SchoolFixture school;
    ScriptedBoxes boxes;
    boxes.expect("Cannot create invoice tables ");
    // Invoices exists and is passed over; its index exists too, and that stops the routine.
    EXPECT_EQ(DB_Create_Invoice_Tables(school.db()), "Invoice table index");
    EXPECT_TRUE(school.log_text().contains("Invoice table index ."));
}

TEST(InvoiceTables, OnAFileWithoutThemAreAllMade)
{
    SchoolFixture school;
    for (const char* table : {"Tmp_CourseCosts", "Tmp_Invoices", "Tmp_Pupils", "Tmp_Activities", "Tmp_Courses",
                              "Tmp_Terms", "Receipts", "Invoice_Lines", "Invoices"})
        ASSERT_TRUE(school.db().execute_native(QStringLiteral("DROP TABLE %1").arg(table))) << table;
    EXPECT_EQ(DB_Create_Invoice_Tables(school.db()), "");
    EXPECT_EQ(school.db().TableDef_names(), tables_in_order);
}

// ---- The rules the engine enforces ----

class SchoolRules : public ::testing::Test {
protected:
    // Runs SQLite text that the rules must refuse, and gives the engine's error.
    int refusal(const QString& sql)
    {
        if (school.db().execute_native(sql))
            return 0;
        return engine::Err().Number;
    }

    SchoolFixture school;
    int smiths = school.add_family("Smith", "1 High Street");
    int anna = school.add_pupil(smiths, "Anna");
};

TEST_F(SchoolRules, AFamilyIsKnownByNameAndFirstAddressLineInAnyLetterCase)
{
    EXPECT_EQ(refusal("INSERT INTO Families (Family_Name, Family_Address) VALUES ('SMITH', '1 HIGH STREET')"),
              engine::jet::DuplicateKey);
    EXPECT_EQ(refusal("INSERT INTO Families (Family_Name, Family_Address) VALUES ('Smith', '2 High Street')"), 0);
}

TEST_F(SchoolRules, APupilsFirstNameIsUniqueWithinTheFamilyOnly)
{
    EXPECT_EQ(refusal(QStringLiteral("INSERT INTO Pupils (Pupil_Family_Id, Pupil_FirstName) VALUES (%1, 'anna')").arg(smiths)),
              engine::jet::DuplicateKey);
    const int joneses = school.add_family("Jones");
    EXPECT_EQ(refusal(QStringLiteral("INSERT INTO Pupils (Pupil_Family_Id, Pupil_FirstName) VALUES (%1, 'Anna')").arg(joneses)), 0);
}

TEST_F(SchoolRules, APupilIsOnACourseOnce)
{
    const int ballet = school.add_course(NewCourse("Ballet"));
    school.put_on_course(anna, ballet);
    EXPECT_EQ(refusal(QStringLiteral("INSERT INTO Register_Courses (Pupil_id, Course_id) VALUES (%1, %2)").arg(anna).arg(ballet)),
              engine::jet::DuplicateKey);
}

TEST_F(SchoolRules, APupilTakesAnActivityOnceADateButOnManyDates)
{
    const int grade1 = school.add_activity(NewActivity("Grade 1 Ballet"));
    school.enter(anna, grade1, QDate(2026, 3, 14));
    const QString entry = QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date) "
                                         "VALUES (%1, %2, '%3')").arg(anna).arg(grade1);
    EXPECT_EQ(refusal(entry.arg("2026-03-14 00:00:00")), engine::jet::DuplicateKey);
    EXPECT_EQ(refusal(entry.arg("2026-06-20 00:00:00")), 0);
    // The date is part of the activity-dates index, which refuses nulls.
    EXPECT_EQ(refusal(QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id) VALUES (%1, %2)")
                          .arg(anna).arg(grade1)),
              engine::jet::NullInIndex);
}

TEST_F(SchoolRules, TermsHaveUniqueNamesAndStarts)
{
    school.add_term("Autumn 2026", QDate(2026, 9, 7), QDate(2026, 12, 18));
    EXPECT_EQ(refusal("INSERT INTO Term_Dates (Term_Name, Term_Start) VALUES ('autumn 2026', '2027-01-04 00:00:00')"),
              engine::jet::DuplicateKey);
    EXPECT_EQ(refusal("INSERT INTO Term_Dates (Term_Name, Term_Start) VALUES ('Spring 2027', '2026-09-07 00:00:00')"),
              engine::jet::DuplicateKey);
}

TEST_F(SchoolRules, TeachersHaveUniqueNamesAndNicknames)
{
    ASSERT_EQ(refusal("INSERT INTO Teachers (Teacher_Name, Teacher_SurName, Teacher_NickName) VALUES ('Jane', 'Doe', 'JD')"), 0);
    EXPECT_EQ(refusal("INSERT INTO Teachers (Teacher_Name, Teacher_SurName) VALUES ('Jane', 'Doe')"), engine::jet::DuplicateKey);
    EXPECT_EQ(refusal("INSERT INTO Teachers (Teacher_Name, Teacher_SurName, Teacher_NickName) VALUES ('Janet', 'Doe', 'jd')"),
              engine::jet::DuplicateKey);
}

TEST_F(SchoolRules, CoursesHaveUniqueTitlesAndAWeekday)
{
    school.add_course(NewCourse("Ballet"));
    EXPECT_EQ(refusal("INSERT INTO Courses (Course_Title, Day_of_Week) VALUES ('BALLET', 3)"), engine::jet::DuplicateKey);
    EXPECT_EQ(refusal("INSERT INTO Courses (Course_Title) VALUES ('Tap')"), engine::jet::NullInIndex);
}

TEST_F(SchoolRules, AFamilyIsInvoicedOnceATermForOneReason)
{
    const int autumn = school.add_term("Autumn 2026", QDate(2026, 9, 7), QDate(2026, 12, 18));
    school.add_invoice(smiths, "Invoice for Autumn 2026", autumn);
    EXPECT_EQ(refusal(QStringLiteral("INSERT INTO Invoices (Invoice_Family_Id, Invoice_Term_Id, Invoice_Reason) "
                                     "VALUES (%1, %2, 'Invoice for Autumn 2026')").arg(smiths).arg(autumn)),
              engine::jet::DuplicateKey);
}

TEST_F(SchoolRules, ReferencesAndLengthsHold)
{
    EXPECT_EQ(refusal("INSERT INTO Pupils (Pupil_Family_Id, Pupil_FirstName) VALUES (999, 'Zed')"),
              engine::jet::RelatedRecordRequired);
    EXPECT_EQ(refusal(QStringLiteral("DELETE FROM Families WHERE Family_id = %1").arg(smiths)), engine::jet::RelatedRecordsExist);
    EXPECT_EQ(refusal(QStringLiteral("UPDATE Pupils SET Pupil_Marker = '12345678901' WHERE Pupil_id = %1").arg(anna)),
              engine::jet::FieldTooSmall);
}

}  // namespace
