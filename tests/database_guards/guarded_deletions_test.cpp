// The guards that stand before deleting a family, a pupil or a teacher.

#include "database/guarded_deletions.h"

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using engine::answer::Ok;
using testing_support::NewActivity;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

class GuardedDeletions : public ::testing::Test {
protected:
    int pupils_of(int family)
    {
        return school.scalar(QStringLiteral("SELECT count(*) FROM Pupils WHERE Pupil_Family_Id = %1").arg(family)).toInt();
    }
    int on_invoice(int family, int pupil, const QString& reason = QStringLiteral("Spring fees"))
    {
        return school.add_line(school.add_invoice(family, reason), {{"Inv_Line_Pupil_id", pupil}, {"Amount", 10}});
    }
    testing_support::SchoolMadeCurrent school;
};

// ---- Teachers ----

// Free, a teacher may go; on a course, an activity or in the results, the
// teacher stays, the courses counted before anything else.
TEST_F(GuardedDeletions, ATeacherIsRefusedWhileOnACourseAnActivityOrInTheResults)
{
    const int ada = school.add_teacher(QStringLiteral("Ada"));
    EXPECT_TRUE(Check_Teacher_Deletion(ada));
    EXPECT_EQ(school.count(QStringLiteral("Teachers")), 1);  // the guard deletes nothing
    const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1")).taught_by(ada));
    ScriptedBoxes().expect(QStringLiteral("This teacher is on 1 exams so cannot be deleted."))
        .during([&] { EXPECT_FALSE(Check_Teacher_Deletion(ada)); });
    school.add_course(NewCourse(QStringLiteral("Ballet 1")).taught_by(ada));
    school.add_course(NewCourse(QStringLiteral("Ballet 2")).taught_by(ada));
    ScriptedBoxes()
        .expect(QStringLiteral("This teacher is teaching 2 courses so cannot be deleted."), Ok, engine::mb::OkOnly)
        .during([&] { EXPECT_FALSE(Check_Teacher_Deletion(ada)); });
    const int bea = school.add_teacher(QStringLiteral("Bea"));
    const int lily = school.add_pupil(school.add_family(QStringLiteral("Archer")), QStringLiteral("Lily"));
    school.insert(QStringLiteral("Exam_Results"), {{"Results_Pupil_id", lily},
                                                   {"Results_Exam_id", exam},
                                                   {"Results_Teacher_id", bea},
                                                   {"Results_Date", QStringLiteral("2026-03-01 00:00:00")}});
    ScriptedBoxes().expect(QStringLiteral("This teacher is in the results for 1 exams so cannot be deleted."))
        .during([&] { EXPECT_FALSE(Check_Teacher_Deletion(bea)); });
}

// ---- Pupils ----

// A pupil goes with the registers; one on an invoice line stays.
TEST_F(GuardedDeletions, APupilGoesWithTheirRegistersUnlessOnAnInvoiceLine)
{
    const int family = school.add_family(QStringLiteral("Archer"));
    const int lily = school.add_pupil(family, QStringLiteral("Lily"));
    const int tom = school.add_pupil(family, QStringLiteral("Tom"));
    school.put_on_course(lily, school.add_course(NewCourse(QStringLiteral("Ballet 1"))));
    EXPECT_TRUE(DB_Delete_Pupil(lily));
    EXPECT_EQ(pupils_of(family), 1);
    EXPECT_EQ(school.count(QStringLiteral("Register_Courses")), 0);
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0);

    on_invoice(family, tom);
    on_invoice(family, tom, QStringLiteral("Summer fees"));
    ScriptedBoxes()
        .expect(QStringLiteral("There are 2 invoices that reference this pupil.\nPlease delete them manually. \n"
                               "Abandoning Deletion"),
                Ok, engine::mb::OkOnly)
        .during([&] { EXPECT_FALSE(DB_Delete_Pupil(tom)); });
    EXPECT_EQ(pupils_of(family), 1);
}

// ---- Families ----

TEST_F(GuardedDeletions, AFamilyWithInvoicesIsRefusedBeforeAnythingChangesAndOtherwiseLosesItsPupilsFirst)
{
    const int family = school.add_family(QStringLiteral("Archer"));
    school.add_pupil(family, QStringLiteral("Lily"));
    school.add_invoice(family, QStringLiteral("Spring fees"));
    ScriptedBoxes()
        .expect(QStringLiteral("There are 1 invoices that reference this Family.\nPlease delete these manually.\n"
                               "Note that deleting these Invoices will affect your full accounts - the totals Owed "
                               "and Received will change. \nUnable to Continue"),
                Ok, engine::mb::OkOnly)
        .during([&] { EXPECT_FALSE(Check_Family_Deletion(family)); });
    EXPECT_EQ(pupils_of(family), 1);
    EXPECT_EQ(Program_Workspace().transaction_depth(), 0);

    // Without invoices, a family's pupils go first and the family is left for the screen.
    school.exec(QStringLiteral("DELETE FROM Invoices"));
    school.add_pupil(family, QStringLiteral("Tom"));
    const int other = school.add_family(QStringLiteral("Brown"));
    school.add_pupil(other, QStringLiteral("Sam"));
    EXPECT_TRUE(Check_Family_Deletion(family));
    EXPECT_EQ(pupils_of(family), 0);
    EXPECT_EQ(pupils_of(other), 1);
    EXPECT_EQ(school.count(QStringLiteral("Families")), 2);
}

TEST_F(GuardedDeletions, APupilOnAnotherFamilysInvoiceStopsTheFamilyWithItsTransactionStillOpen)
{
    const int family = school.add_family(QStringLiteral("Archer"));
    school.add_pupil(family, QStringLiteral("Amy"));
    const int lily = school.add_pupil(family, QStringLiteral("Lily"));
    const int other = school.add_family(QStringLiteral("Brown"));
    on_invoice(other, lily);
    ScriptedBoxes().expect(QStringLiteral("There are 1 invoices that reference this pupil."))
        .during([&] { EXPECT_FALSE(Check_Family_Deletion(family)); });
    // Amy's deletion waits in the family's transaction, which nobody has ended.
    EXPECT_EQ(Program_Workspace().transaction_depth(), 1);
    EXPECT_EQ(pupils_of(family), 1);
    Program_Workspace().Rollback();
    EXPECT_EQ(pupils_of(family), 2);
}

}  // namespace
