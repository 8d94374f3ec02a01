// Rolling a school forward into a new file, and merging two files that grew
// from a common copy.

#include "database/code_values.h"
#include "database/copy_merge.h"
#include "database/db_handling.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/admin_school.h"
#include "support/scripted_boxes.h"

#include <QFile>
#include <gtest/gtest.h>

using testing_support::AdminSchool;
using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2026, 3, 14);
const QDate show_day(2026, 7, 4);

QStringList values(const QString& path, const QString& sql)
{
    return AdminSchool::values_in(path, sql);
}

// Every table but Sys_tab, whose dates say when each file was made.
QString school_tables(const QString& path)
{
    QStringList sections = AdminSchool::dump_of(path).split(QStringLiteral("== "), Qt::SkipEmptyParts);
    sections.removeIf([](const QString& section) { return section.startsWith(QStringLiteral("Sys_tab\n")); });
    return sections.join(QStringLiteral("== "));
}

class CopyMergeTest : public ::testing::Test {
protected:
    // Two families, a teacher's course with its register, an exam and a show
    // held partly on the same day, a term with its lessons, a holiday, and an
    // invoice with a line and a receipt.
    CopyMergeTest()
    {
        smiths = school.add_family(QStringLiteral("Smith"));
        const int jones = school.add_family(QStringLiteral("Jones"), QStringLiteral("2 Low Road"));
        anna = school.add_pupil(smiths, QStringLiteral("Anna"));
        const int gone = school.add_pupil(smiths, QStringLiteral("Gone"));
        cara = school.add_pupil(jones, QStringLiteral("Cara"));
        school.exec(QStringLiteral("DELETE FROM Pupils WHERE Pupil_id = %1").arg(gone));  // ids with a gap
        const int teacher = school.add_teacher(QStringLiteral("Miss Jones"));
        ballet = school.add_course(NewCourse(QStringLiteral("Ballet")));
        tap = school.add_course(NewCourse(QStringLiteral("Tap")).on(code::weekday::Wednesday));
        school.exec(QStringLiteral("UPDATE Courses SET Course_Teacher_id = %1").arg(teacher));
        school.put_on_course(anna, ballet);
        school.put_on_course(anna, tap);
        school.put_on_course(cara, tap);
        const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1")));
        const int show = school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show));
        school.enter(anna, exam, exam_day);
        school.enter(cara, exam, exam_day);
        school.enter(anna, show, exam_day);
        school.enter(cara, show, show_day);
        school.title_date(exam_day, QStringLiteral("Exam Day"));
        school.title_date(show_day, QStringLiteral("Show Night"));
        term = school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        school.set_lessons(term, code::weekday::Monday, 11);
        school.add_holiday(QDate(2026, 2, 16));
        const int invoice = school.add_invoice(smiths, QStringLiteral("Invoice for Spring"), term);
        school.add_line(invoice, {{"Inv_Line_Pupil_id", anna}, {"Inv_Line_Course_id", ballet}, {"Amount", 55.0}});
        school.add_receipt(invoice, 55.0);
        DB_Close_All();
    }

    QString copy_of_school(const QString& name, bool copy_all)
    {
        const QString made = school.new_database(name, false);
        EXPECT_TRUE(DB_Copy_DB_For_NewTerm(school.path(), made, copy_all));
        return made;
    }

    // SQLite text on a file that isn't the current one.
    static void change(const QString& path, const QString& sql)
    {
        engine::Workspace workspace;
        engine::Database* db = workspace.OpenDatabase(path);
        ASSERT_NE(db, nullptr);
        EXPECT_TRUE(db->execute_native(sql)) << sql.toStdString() << "\n" << engine::Err().Description.toStdString();
        workspace.Close();
    }

    AdminSchool school;
    int smiths = 0, anna = 0, cara = 0, ballet = 0, tap = 0, term = 0;
};

// ---- copy ----

TEST_F(CopyMergeTest, TheSomeDataCopyKeepsTheExamWithItsEntriesAndTitleAndLeavesTheRestBehind)
{
    const QString copy = copy_of_school(QStringLiteral("new.qdb"), false);
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(values(copy, "SELECT Exam_Title FROM Exams"), QStringList{"Grade 1"});
    EXPECT_EQ(values(copy, "SELECT count(*) FROM Exam_Results"), QStringList{"2"});
    // The exam day is also a show day: its title comes once.
    EXPECT_EQ(values(copy, "SELECT ActT_Title FROM Activity_Titles"), QStringList{"Exam Day"});
    for (const char* table : {"Term_Dates", "Number_Lessons", "Holidays", "Invoices", "Invoice_Lines", "Receipts"})
        EXPECT_EQ(values(copy, QStringLiteral("SELECT count(*) FROM %1").arg(table)), QStringList{"0"}) << table;
    EXPECT_EQ(values(copy, "SELECT count(*) FROM Standard_Values WHERE stndrd_id = 1"), QStringList{"1"});
    EXPECT_EQ(values(copy, "SELECT count(*) FROM Register_Courses"), QStringList{"3"});
}

TEST_F(CopyMergeTest, TheCopyKeepsTheIdsSoAPupilHasTheSameCourses)
{
    const QString copy = copy_of_school(QStringLiteral("new.qdb"), false);
    EXPECT_EQ(values(copy, "SELECT group_concat(Pupil_id) FROM Pupils"), values(school.path(), "SELECT group_concat(Pupil_id) FROM Pupils"));
    ASSERT_TRUE(DB_Open(copy));
    auto courses = Current_Db()->QueryDefs(QStringLiteral("Qry_Select_Pupil_Courses"));
    ASSERT_NE(courses, nullptr);
    ASSERT_TRUE(courses->set_parameter(QStringLiteral("par_Pupil_id"), anna));
    auto rows = courses->OpenRecordset();
    ASSERT_NE(rows, nullptr);
    QStringList titles;
    for (rows->MoveFirst(); !rows->at_eof(); rows->MoveNext())
        titles << rows->Fields(QStringLiteral("Course_Title")).toString();
    EXPECT_EQ(titles, (QStringList{"Ballet", "Tap"}));
}

TEST_F(CopyMergeTest, TheAllDataCopyHoldsEveryTableOfTheSchool)
{
    const QString copy = copy_of_school(QStringLiteral("new.qdb"), true);
    EXPECT_EQ(school_tables(copy), school_tables(school.path()));
}

TEST_F(CopyMergeTest, AFailedCopyReportsTheTableAndDeletesTheNewFile)
{
    const QString made = school.new_database(QStringLiteral("new.qdb"), false);
    change(made, QStringLiteral("INSERT INTO Families (Family_id, Family_Name) VALUES (%1, 'Already here')").arg(smiths));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Unexpected error copying database table Families"), engine::answer::Ok,
                     engine::mb::Critical);
        EXPECT_FALSE(DB_Copy_DB_For_NewTerm(school.path(), made, true));
    }
    EXPECT_FALSE(QFile::exists(made));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("DB_Copy_DB_Pupils_and_Courses  SQL is :-INSERT INTO")));
}

TEST_F(CopyMergeTest, ACopyIntoAFileThatIsntThereIsRefusedWithoutMakingIt)
{
    const QString missing = school.file(QStringLiteral("missing.qdb"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Unexpected error copying database table"));
    EXPECT_FALSE(DB_Copy_DB_For_NewTerm(school.path(), missing, false));
    EXPECT_FALSE(QFile::exists(missing));
}

// ---- merge ----

TEST_F(CopyMergeTest, AMergeAddsWhatTheTargetLacksAndKeepsWhatItHoldsUnderTheSameId)
{
    const QString target = copy_of_school(QStringLiteral("target.qdb"), true);
    // Both files grow apart: each gives the next family id to another family.
    change(school.path(), "INSERT INTO Families (Family_Name, Family_Address) VALUES ('Brown', '3 Mill Lane')");
    change(target, "INSERT INTO Families (Family_Name, Family_Address) VALUES ('Green', '4 Park Road')");
    // The source counts a weekday more in the common term, and has a new term.
    change(school.path(), QStringLiteral("INSERT INTO Number_Lessons (Term_Id, Day_Number, Num_Lessons) VALUES (%1, 4, 9)").arg(term));
    change(school.path(), "INSERT INTO Term_Dates (Term_Name, Term_Start, Term_End) VALUES "
                          "('Summer', '2026-04-20 00:00:00', '2026-07-17 00:00:00')");
    change(school.path(), "INSERT INTO Number_Lessons (Term_Id, Day_Number, Num_Lessons) "
                          "SELECT Term_Id, 2, 12 FROM Term_Dates WHERE Term_Name = 'Summer'");
    const QString source_before = AdminSchool::dump_of(school.path());

    ASSERT_TRUE(DB_Merge_Databases(school.path(), target));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(values(target, "SELECT Family_Name FROM Families ORDER BY Family_id"),
              (QStringList{"Smith", "Jones", "Green"}));
    EXPECT_EQ(values(target, QStringLiteral("SELECT Day_Number || ':' || Num_Lessons FROM Number_Lessons WHERE Term_Id = %1").arg(term)),
              QStringList{"2:11"});
    EXPECT_EQ(values(target, "SELECT Term_Name || ' ' || group_concat(Num_Lessons) FROM Term_Dates T, Number_Lessons N "
                             "WHERE N.Term_Id = T.Term_Id AND Term_Name = 'Summer'"),
              QStringList{"Summer 12"});
    EXPECT_EQ(values(target, "SELECT count(*) FROM Exam_Results"), QStringList{"4"});
    EXPECT_EQ(AdminSchool::dump_of(school.path()), source_before);
}

TEST_F(CopyMergeTest, AFamilyUnderANewIdWithTheSameNameAndAddressFailsTheMergeAndDeletesTheTarget)
{
    const QString target = copy_of_school(QStringLiteral("target.qdb"), false);
    change(target, "DELETE FROM Register_Courses; DELETE FROM Exam_Results; DELETE FROM Pupils WHERE Pupil_Family_Id = 2; "
                   "DELETE FROM Families WHERE Family_id = 2");
    change(target, "INSERT INTO Families (Family_id, Family_Name, Family_Address) VALUES (7, 'Jones', '2 Low Road')");
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Unexpected error merging database table Families"), engine::answer::Ok,
                     engine::mb::Critical);
        EXPECT_FALSE(DB_Merge_Databases(school.path(), target));
    }
    EXPECT_FALSE(QFile::exists(target));
    EXPECT_TRUE(QFile::exists(school.path()));
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("DB_Merge_ALL  SQL is :-INSERT INTO main.Families")));
}

TEST_F(CopyMergeTest, AFileMergedIntoItselfGainsNothingAndIsKept)
{
    const QString before = AdminSchool::dump_of(school.path());
    EXPECT_TRUE(DB_Merge_Databases(school.path(), school.path()));
    EXPECT_EQ(AdminSchool::dump_of(school.path()), before);
}

}  // namespace
