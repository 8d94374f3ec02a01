// Rolling a school forward into a new file, and merging two files that grew
// from a common copy.

#include "database/code_values.h"
#include "database/copy_merge.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "support/database_file.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"
#include "support/template_database.h"

#include <QFile>
#include <gtest/gtest.h>

using testing_support::AdminSchool;
using testing_support::change_in;
using testing_support::dump_of;
using testing_support::values_in;
using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2026, 3, 14);
const QDate show_day(2026, 7, 4);

// Every table but Sys_tab, whose dates say when each file was made.
QString school_tables(const QString& path)
{
    QStringList sections = dump_of(path).split(QStringLiteral("== "), Qt::SkipEmptyParts);
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
        ballet = school.add_course(NewCourse(QStringLiteral("Ballet")).taught_by(teacher));
        tap = school.add_course(NewCourse(QStringLiteral("Tap")).on(code::weekday::Wednesday).taught_by(teacher));
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
        const QString made = testing_support::copy_of_new_database(school.file(name), false);
        EXPECT_TRUE(DB_Copy_DB_For_NewTerm(school.path(), made, copy_all));
        return made;
    }

    AdminSchool school;
    int smiths = 0, anna = 0, cara = 0, ballet = 0, tap = 0, term = 0;
};

// ---- copy ----

TEST_F(CopyMergeTest, TheSomeDataCopyKeepsTheIdsAndTheExamWithItsEntriesAndTitleAndLeavesTheRestBehind)
{
    const QString copy = copy_of_school(QStringLiteral("new.qdb"), false);
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(values_in(copy, "SELECT Exam_Title FROM Exams"), QStringList{"Grade 1"});
    EXPECT_EQ(values_in(copy, "SELECT count(*) FROM Exam_Results"), QStringList{"2"});
    // The exam day is also a show day: its title comes once.
    EXPECT_EQ(values_in(copy, "SELECT ActT_Title FROM Activity_Titles"), QStringList{"Exam Day"});
    for (const char* table : {"Term_Dates", "Number_Lessons", "Holidays", "Invoices", "Invoice_Lines", "Receipts"})
        EXPECT_EQ(values_in(copy, QStringLiteral("SELECT count(*) FROM %1").arg(table)), QStringList{"0"}) << table;
    EXPECT_EQ(values_in(copy, "SELECT count(*) FROM Standard_Values WHERE stndrd_id = 1"), QStringList{"1"});
    EXPECT_EQ(values_in(copy, "SELECT count(*) FROM Register_Courses"), QStringList{"3"});

    // The ids are kept, so that a pupil has the same courses.
    EXPECT_EQ(values_in(copy, "SELECT group_concat(Pupil_id) FROM Pupils"), values_in(school.path(), "SELECT group_concat(Pupil_id) FROM Pupils"));
    // Opened as the school's database, the copy answers the screens' query.
    ASSERT_TRUE(DB_Open(copy));
    QStringList titles;
    for (const auto& row : school.rows(QStringLiteral("Qry_Select_Pupil_Courses"), {{QStringLiteral("par_Pupil_id"), anna}}))
        titles << row["Course_Title"].toString();
    EXPECT_EQ(titles, (QStringList{"Ballet", "Tap"}));
}

TEST_F(CopyMergeTest, TheAllDataCopyHoldsEveryTableOfTheSchool)
{
    const QString copy = copy_of_school(QStringLiteral("new.qdb"), true);
    EXPECT_EQ(school_tables(copy), school_tables(school.path()));
}

TEST_F(CopyMergeTest, AFailedCopyReportsTheTableAndLeavesNoNewFile)
{
    const QString made = testing_support::copy_of_new_database(school.file(QStringLiteral("new.qdb")), false);
    change_in(made, QStringLiteral("INSERT INTO Families (Family_id, Family_Name) VALUES (%1, 'Already here')").arg(smiths));
    ScriptedBoxes().expect(QStringLiteral("Unexpected error copying database table Families"), engine::answer::Ok,
                           engine::mb::Critical)
        .during([&] { EXPECT_FALSE(DB_Copy_DB_For_NewTerm(school.path(), made, true)); });
    EXPECT_FALSE(QFile::exists(made));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("DB_Copy_DB_Pupils_and_Courses  SQL is :-INSERT INTO")));

    // A copy into a file that isn't there is refused without making it.
    const QString missing = school.file(QStringLiteral("missing.qdb"));
    ScriptedBoxes().expect(QStringLiteral("Unexpected error copying database table"))
        .during([&] { EXPECT_FALSE(DB_Copy_DB_For_NewTerm(school.path(), missing, false)); });
    EXPECT_FALSE(QFile::exists(missing));
}

// ---- merge ----

TEST_F(CopyMergeTest, AMergeAddsWhatTheTargetLacksAndKeepsWhatItHoldsUnderTheSameId)
{
    const QString target = copy_of_school(QStringLiteral("target.qdb"), true);
    // Both files grow apart: each gives the next family id to another family.
    change_in(school.path(), "INSERT INTO Families (Family_Name, Family_Address) VALUES ('Brown', '3 Mill Lane')");
    change_in(target, "INSERT INTO Families (Family_Name, Family_Address) VALUES ('Green', '4 Park Road')");
    // The source counts a weekday more in the common term, and has a new term.
    change_in(school.path(), QStringLiteral("INSERT INTO Number_Lessons (Term_Id, Day_Number, Num_Lessons) VALUES (%1, 4, 9)").arg(term));
    change_in(school.path(), "INSERT INTO Term_Dates (Term_Name, Term_Start, Term_End) VALUES "
                          "('Summer', '2026-04-20 00:00:00', '2026-07-17 00:00:00')");
    change_in(school.path(), "INSERT INTO Number_Lessons (Term_Id, Day_Number, Num_Lessons) "
                          "SELECT Term_Id, 2, 12 FROM Term_Dates WHERE Term_Name = 'Summer'");
    const QString source_before = dump_of(school.path());

    ASSERT_TRUE(DB_Merge_Databases(school.path(), target));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(values_in(target, "SELECT Family_Name FROM Families ORDER BY Family_id"),
              (QStringList{"Smith", "Jones", "Green"}));
    EXPECT_EQ(values_in(target, QStringLiteral("SELECT Day_Number || ':' || Num_Lessons FROM Number_Lessons WHERE Term_Id = %1").arg(term)),
              QStringList{"2:11"});
    EXPECT_EQ(values_in(target, "SELECT Term_Name || ' ' || group_concat(Num_Lessons) FROM Term_Dates T, Number_Lessons N "
                             "WHERE N.Term_Id = T.Term_Id AND Term_Name = 'Summer'"),
              QStringList{"Summer 12"});
    EXPECT_EQ(values_in(target, "SELECT count(*) FROM Exam_Results"), QStringList{"4"});
    EXPECT_EQ(dump_of(school.path()), source_before);
}

TEST_F(CopyMergeTest, AFamilyUnderANewIdWithTheSameNameAndAddressFailsTheMergeAndDeletesTheTarget)
{
    const QString target = copy_of_school(QStringLiteral("target.qdb"), false);
    change_in(target, "DELETE FROM Register_Courses; DELETE FROM Exam_Results; DELETE FROM Pupils WHERE Pupil_Family_Id = 2; "
                   "DELETE FROM Families WHERE Family_id = 2");
    change_in(target, "INSERT INTO Families (Family_id, Family_Name, Family_Address) VALUES (7, 'Jones', '2 Low Road')");
    ScriptedBoxes().expect(QStringLiteral("Unexpected error merging database table Families"), engine::answer::Ok,
                           engine::mb::Critical)
        .during([&] { EXPECT_FALSE(DB_Merge_Databases(school.path(), target)); });
    EXPECT_FALSE(QFile::exists(target));
    EXPECT_TRUE(QFile::exists(school.path()));
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("DB_Merge_ALL  SQL is :-INSERT INTO main.Families")));
}

TEST_F(CopyMergeTest, AFileMergedIntoItselfGainsNothingAndIsKept)
{
    const QString before = dump_of(school.path());
    EXPECT_TRUE(DB_Merge_Databases(school.path(), school.path()));
    EXPECT_EQ(dump_of(school.path()), before);
}

}  // namespace
