// The guards before a course or an activity goes: what they ask, what they
// change, and that a No or a surprise leaves the school as it was.

#include "database/course_exam_deletion.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "database/code_values.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::AdminSchool;
using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

const QDate exam_day(2026, 3, 14);

class CourseDeletionTest : public ::testing::Test {
protected:
    CourseDeletionTest()
    {
        const int smiths = school.add_family(QStringLiteral("Smith"));
        anna = school.add_pupil(smiths, QStringLiteral("Anna"));
        ben = school.add_pupil(smiths, QStringLiteral("Ben"));
        ballet = school.add_course(NewCourse(QStringLiteral("Ballet")));
        tap = school.add_course(NewCourse(QStringLiteral("Tap")));
        term = school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        invoice = school.add_invoice(smiths, QStringLiteral("Invoice for Spring"), term);
    }

    void on_register(int course, std::initializer_list<int> pupils)
    {
        for (int pupil : pupils)
            school.put_on_course(pupil, course);
    }

    void cost(int course, double amount)
    {
        school.insert(QStringLiteral("Tmp_CourseCosts"),
                      {{"Tmp_Course_id", course}, {"Tmp_Term_id", term}, {"Tmp_Cost", amount}});
    }

    int line_for_course(int course, double amount)
    {
        return school.add_line(invoice, {{"Inv_Line_Pupil_id", anna}, {"Inv_Line_Course_id", course}, {"Amount", amount},
                                         {"Inv_Line_Type", code::inv_line_type::Course}, {"Description", "Ballet, Spring"}});
    }

    // A stored query of the school changed behind the guard's back.
    void replace_query(const QString& name, const QString& sql)
    {
        ASSERT_TRUE(school.db().DeleteQueryDef(name));
        ASSERT_TRUE(school.db().CreateQueryDef(name, sql)) << engine::Err().Description.toStdString();
    }

    AdminSchool school;
    int anna = 0, ben = 0, ballet = 0, tap = 0, term = 0, invoice = 0;
};

TEST_F(CourseDeletionTest, ACourseThatNothingNamesMayGoWithoutAQuestionAndLosesItsWorkingCosts)
{
    cost(ballet, 40);
    cost(tap, 30);
    ScriptedBoxes boxes;
    EXPECT_TRUE(Check_Course_Deletion(ballet));
    EXPECT_EQ(school.scalar("SELECT group_concat(Tmp_Course_id) FROM Tmp_CourseCosts").toInt(), tap);
}

TEST_F(CourseDeletionTest, YesToBothQuestionsEmptiesTheRegisterAndKeepsTheLinesMoney)
{
    on_register(ballet, {anna, ben});
    on_register(tap, {anna});
    const int line = line_for_course(ballet, 45.5);
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("There are 2 pupils left in the register.\nAbout to delete them.\nContinue ?"),
                     engine::answer::Yes, engine::mb::YesNo + engine::mb::Question);
        boxes.expect(QStringLiteral("There are 1 invoices that reference this course.\nAbout to re-name them."),
                     engine::answer::Yes, engine::mb::YesNo + engine::mb::Question);
        ASSERT_TRUE(Check_Course_Deletion(ballet));
    }
    EXPECT_EQ(school.count(QStringLiteral("Register_Courses")), 1);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Inv_Line_Type || '|' || ifnull(Inv_Line_Course_id, 'null') || '|' || "
                                           "Description || '|' || Amount FROM Invoice_Lines WHERE Invoice_Line_id = %1").arg(line)),
              QStringLiteral("7|null|Ballet, Spring|45.5"));
    // Nothing names the course any more: the screen can delete it.
    EXPECT_TRUE(school.db().Execute(QStringLiteral("DELETE FROM Courses WHERE Course_id = %1").arg(ballet)));
}

TEST_F(CourseDeletionTest, YesToThePupilsAndNoToTheInvoicesLeavesEverythingAsItWas)
{
    on_register(ballet, {anna, ben});
    line_for_course(ballet, 45.5);
    cost(ballet, 40);
    const QString before = school.dump();
    ScriptedBoxes().expect(QStringLiteral("There are 2 pupils left in the register."), engine::answer::Yes)
        .expect(QStringLiteral("There are 1 invoices that reference this course."), engine::answer::No)
        .during([&] { EXPECT_FALSE(Check_Course_Deletion(ballet)); });
    EXPECT_EQ(school.dump(), before);
    // A No is no error: nothing is logged.
    EXPECT_FALSE(school.log_text().contains(QStringLiteral("Check_Course_Deletion")));
}

TEST_F(CourseDeletionTest, ARemovalThatChangesOtherThanTheCountRefusesAndLeavesEverythingInPlace)
{
    on_register(ballet, {anna, ben});
    cost(ballet, 40);
    replace_query(QStringLiteral("Qry_Delete_All_Pupils_from_Course"),
                  QStringLiteral("PARAMETERS p_Course_id long; DELETE FROM Register_Courses "
                                 "WHERE Course_id = p_Course_id AND Pupil_id = %1;").arg(anna));
    const QString before = school.dump();
    ScriptedBoxes().expect(QStringLiteral("There are 2 pupils left in the register."), engine::answer::Yes)
        .expect(QStringLiteral("Unexpected error deleting pupils from Course"), engine::answer::Ok,
                engine::mb::Critical)
        .during([&] { EXPECT_FALSE(Check_Course_Deletion(ballet)); });
    EXPECT_EQ(school.dump(), before);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Check_Course_Deletion pupil count = 2 records affected = 1")));
}

// An activity on invoices can't be retyped: the stored retyping query names a
// column the lines don't have, so it fails when it runs and the guard reports
// and rolls back. Without invoices, its entries go with their results on Yes.
TEST_F(CourseDeletionTest, AnActivityOnInvoicesStaysWithItsEntriesAndOtherwiseTheyGoOnYes)
{
    const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1")));
    const int show = school.add_activity(NewActivity(QStringLiteral("Show")).of_kind(code::exam_type::Show));
    school.enter(anna, exam, exam_day);
    school.enter(ben, exam, exam_day.addDays(7));
    school.enter(anna, show, exam_day);
    const int line =
        school.add_line(invoice, {{"Inv_Line_Exam_id", exam}, {"Inv_Line_Type", code::inv_line_type::Activity}, {"Amount", 20}});
    const QString before = school.dump();
    ScriptedBoxes().expect(QStringLiteral("There are 2 pupils left in the register or results."), engine::answer::Yes)
        .expect(QStringLiteral("There are 1 invoices that reference this activity.\nAbout to re-name them. The "
                               "detail of the activity will no-longer be available on the invoices.\nContinue ?"),
                engine::answer::Yes)
        .expect(QStringLiteral("Unexpected error deleting activity"), engine::answer::Ok, engine::mb::Critical)
        .during([&] { EXPECT_FALSE(Check_Exam_Deletion(exam)); });
    EXPECT_EQ(school.dump(), before);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Check_Exam_Deletion about to begin transaction")));

    school.exec(QStringLiteral("DELETE FROM Invoice_Lines WHERE Invoice_Line_id = %1").arg(line));
    ScriptedBoxes()
        .expect(QStringLiteral("There are 2 pupils left in the register or results.\nAbout to delete them."), engine::answer::Yes)
        .during([&] { EXPECT_TRUE(Check_Exam_Deletion(exam)); });
    EXPECT_EQ(school.scalar("SELECT group_concat(Results_Exam_id) FROM Exam_Results").toInt(), show);
    EXPECT_TRUE(school.db().Execute(QStringLiteral("DELETE FROM Exams WHERE Exam_id = %1").arg(exam)));
}

}  // namespace
