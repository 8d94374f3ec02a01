// Putting pupils on a register and taking them off, as a batch from the
// pupil and register screens does it.

#include "database/pupil_course_changes.h"
#include "engine/msg_box.h"
#include "shell/selection_lists.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::AdminSchool;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

class RegisterChangeTest : public ::testing::Test {
protected:
    RegisterChangeTest()
    {
        const int smiths = school.add_family(QStringLiteral("Smith"));
        anna = school.add_pupil(smiths, QStringLiteral("Anna"));
        ben = school.add_pupil(smiths, QStringLiteral("Ben"));
        ballet = school.add_course(NewCourse(QStringLiteral("Ballet")));
        Glob_Keep_Changed_List() = true;
    }

    int on_ballet() { return school.scalar(QStringLiteral("SELECT count(*) FROM Register_Courses WHERE Course_id = %1").arg(ballet)).toInt(); }

    AdminSchool school;
    int anna = 0, ben = 0, ballet = 0;
};

TEST_F(RegisterChangeTest, APupilAlreadyOnTheRegisterOrNotThereGetsOneBoxAndTheRestOfTheBatchGoesOn)
{
    ScriptedBoxes boxes;
    EXPECT_TRUE(DB_Add_Pupil_To_Course(ballet, anna, QStringLiteral("Anna Smith")));
    boxes.expect(QStringLiteral("Pupil Anna Smith is already on this register"), engine::answer::Ok, engine::mb::Critical);
    EXPECT_FALSE(DB_Add_Pupil_To_Course(ballet, anna, QStringLiteral("Anna Smith")));
    EXPECT_TRUE(DB_Add_Pupil_To_Course(ballet, ben, QStringLiteral("Ben Smith")));

    EXPECT_EQ(on_ballet(), 2);
    EXPECT_EQ(Changed_Pupils().chosen(), (QVector<qint32>{anna, ben}));
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("pupil_id = %1 Course_id = %2").arg(anna).arg(ballet)));

    // A pupil that doesn't exist is an unexpected failure.
    boxes.expect(QStringLiteral("Unexpected error inserting into register"), engine::answer::Ok, engine::mb::Critical);
    EXPECT_FALSE(DB_Add_Pupil_To_Course(ballet, 999, QStringLiteral("Nobody")));
    EXPECT_EQ(on_ballet(), 2);
    EXPECT_EQ(Changed_Pupils().chosen(), (QVector<qint32>{anna, ben}));
}

TEST_F(RegisterChangeTest, TakingAPupilOffLeavesTheOthersAndCountsAsAChange)
{
    school.put_on_course(anna, ballet);
    school.put_on_course(ben, ballet);
    EXPECT_TRUE(DB_Delete_Pupil_From_Course(ballet, anna));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Pupil_id FROM Register_Courses")).toInt(), ben);
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>{anna});
}

}  // namespace
