// Chosen pupils onto chosen courses and off a register in one action: which
// pupils are passed over, which are refused, which register is on view
// afterwards, the count beside it, and the words of the status line.

#include "courses/register_changes.h"

#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "shell/selection_lists.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::NewCourse;
using testing_support::SchoolMadeCurrent;
using testing_support::ScriptedBoxes;

namespace {

class RegisterChanges : public ::testing::Test {
protected:
    RegisterChanges()
    {
        const int ashdown = school.add_family(QStringLiteral("Ashdown"));
        const int brook = school.add_family(QStringLiteral("Brook"));
        amy = {school.add_pupil(ashdown, QStringLiteral("Amy")), QStringLiteral("Amy Ashdown")};
        ben = {school.add_pupil(ashdown, QStringLiteral("Ben"), 'M'), QStringLiteral("Ben Ashdown")};
        cara = {school.add_pupil(brook, QStringLiteral("Cara")), QStringLiteral("Cara Brook")};
        ballet = {school.add_course(NewCourse(QStringLiteral("Ballet 1"))), QStringLiteral("Ballet 1")};
        tap = {school.add_course(NewCourse(QStringLiteral("Tap 2"))), QStringLiteral("Tap 2")};
        jazz = {school.add_course(NewCourse(QStringLiteral("Jazz"))), QStringLiteral("Jazz")};
    }

    // The screen's Display_Register as far as the loop sees it: the register
    // of the course comes on view, and the call is remembered.
    ShowRegister show()
    {
        return [this](const RegisterCourse& course) {
            shown_titles << course.title;
            EXPECT_TRUE(shown.Open(course.course_id));
        };
    }

    QStringList on_course(const RegisterCourse& course)
    {
        QStringList names;
        for (const auto& row : school.rows(QStringLiteral("Qry_Select_Pupil_on_Course"), {{QStringLiteral("par_Course_id"), course.course_id}}))
            names << row[QStringLiteral("FirstName")].toString();
        return names;
    }

    SchoolMadeCurrent school;
    RegisterPupil amy, ben, cara;
    RegisterCourse ballet, tap, jazz;
    ShownRegister shown;
    QStringList shown_titles;
};

TEST_F(RegisterChanges, EveryChosenPupilGoesOnEveryChosenCourseAndTheLastCourseIsOnViewAfter)
{
    Glob_Keep_Changed_List() = true;
    ASSERT_TRUE(shown.Open(jazz.course_id));
    RegisterOutcome outcome;
    EXPECT_TRUE(Add_Pupils_To_Courses({ballet, tap, jazz}, {amy, cara}, shown, show(), outcome));

    for (const RegisterCourse& course : {ballet, tap, jazz})
        EXPECT_EQ(on_course(course), (QStringList{QStringLiteral("Amy"), QStringLiteral("Cara")})) << course.title.toStdString();
    // The register is shown again after each pupil put on a course.
    EXPECT_EQ(shown_titles, (QStringList{QStringLiteral("Ballet 1"), QStringLiteral("Ballet 1"), QStringLiteral("Tap 2"),
                                         QStringLiteral("Tap 2"), QStringLiteral("Jazz"), QStringLiteral("Jazz")}));
    EXPECT_EQ(outcome.done, QStringLiteral("Amy Ashdown, Cara Brook, Amy Ashdown, Cara Brook, Amy Ashdown, Cara Brook, "));
    EXPECT_TRUE(outcome.failed.isEmpty());
    EXPECT_EQ(outcome.status, QStringLiteral("Pupils successfully added to Course Register"));
    // Each pupil is one change, however many courses it went on.
    EXPECT_EQ(Changed_Pupils().chosen(), (QVector<qint32>{amy.pupil_id, cara.pupil_id}));
}

TEST_F(RegisterChanges, APupilTheRegisterOnViewListsAlreadyIsPassedOverInSilence)
{
    school.put_on_course(amy.pupil_id, ballet.course_id);
    school.put_on_course(ben.pupil_id, ballet.course_id);
    ASSERT_TRUE(shown.Open(ballet.course_id));
    RegisterOutcome outcome;
    {
        ScriptedBoxes no_boxes;
        EXPECT_TRUE(Add_Pupils_To_Courses({ballet}, {amy, ben}, shown, show(), outcome));
    }
    EXPECT_TRUE(shown_titles.isEmpty());  // nothing changed, so nothing is shown again
    EXPECT_EQ(outcome.status, QStringLiteral("No-one added"));

    // With one newcomer among them, only the newcomer counts.
    EXPECT_TRUE(Add_Pupils_To_Courses({ballet}, {amy, cara, ben}, shown, show(), outcome));
    EXPECT_EQ(outcome.done, QStringLiteral("Cara Brook, "));
    EXPECT_EQ(outcome.status, QStringLiteral("Pupils successfully added to Course Register"));
    EXPECT_EQ(on_course(ballet).size(), 3);
}

// The search runs on the register on view, which is still the first course's
// when the second course's first pupil is looked for.
TEST_F(RegisterChanges, APupilOnTheSecondCourseButNotTheFirstIsRefusedOnTheSecondAndCountsAsFailed)
{
    school.put_on_course(amy.pupil_id, tap.course_id);
    ASSERT_TRUE(shown.Open(ballet.course_id));
    RegisterOutcome outcome;
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Pupil Amy Ashdown is already on this register"), engine::answer::Ok, engine::mb::Critical);
        EXPECT_TRUE(Add_Pupils_To_Courses({ballet, tap}, {amy}, shown, show(), outcome));
    }
    EXPECT_EQ(on_course(ballet), QStringList{QStringLiteral("Amy")});
    EXPECT_EQ(on_course(tap), QStringList{QStringLiteral("Amy")});
    EXPECT_EQ(outcome.done, QStringLiteral("Amy Ashdown, "));
    EXPECT_EQ(outcome.failed, QStringLiteral("Amy Ashdown, "));
    // The words run straight on into the names.
    EXPECT_EQ(outcome.status, QStringLiteral("The following could NOT be addedAmy Ashdown, "));
    EXPECT_EQ(shown_titles, (QStringList{QStringLiteral("Ballet 1"), QStringLiteral("Tap 2")}));

    // Once that course is on view, its later pupils are looked for in it.
    school.put_on_course(ben.pupil_id, tap.course_id);
    ASSERT_TRUE(shown.Open(ballet.course_id));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Pupil Amy Ashdown is already on this register"));
        EXPECT_TRUE(Add_Pupils_To_Courses({tap}, {amy, ben, cara}, shown, show(), outcome));
    }
    EXPECT_EQ(outcome.failed, QStringLiteral("Amy Ashdown, "));
    EXPECT_EQ(outcome.done, QStringLiteral("Cara Brook, "));
}

TEST_F(RegisterChanges, ASearchOfTheRegisterOfNoOneFailsAndStopsTheLoops)
{
    ASSERT_TRUE(shown.Open_Empty());
    EXPECT_EQ(shown.Count_Shown(), 0);
    RegisterOutcome outcome;
    EXPECT_FALSE(Add_Pupils_To_Courses({ballet, tap}, {amy, ben}, shown, show(), outcome));
    EXPECT_NE(engine::Err().Number, 0);
    EXPECT_TRUE(on_course(ballet).isEmpty());
    EXPECT_TRUE(shown_titles.isEmpty());
}

TEST_F(RegisterChanges, TheCountShownIsOneForAnyRegisterWithSomeoneOnItAndNoughtForAnEmptyOne)
{
    for (const RegisterPupil& pupil : {amy, ben, cara})
        school.put_on_course(pupil.pupil_id, ballet.course_id);
    school.put_on_course(cara.pupil_id, tap.course_id);

    const struct {
        RegisterCourse course;
        int rows;
    } registers[] = {{ballet, 3}, {tap, 1}, {jazz, 0}};
    for (const auto& each : registers) {
        ASSERT_TRUE(shown.Open(each.course.course_id));
        EXPECT_EQ(shown.rows()->RecordCount(), each.rows) << each.course.title.toStdString();
        EXPECT_EQ(shown.Count_Shown(), each.rows > 0 ? 1 : 0) << each.course.title.toStdString();
    }
}

TEST_F(RegisterChanges, TakingPupilsOffSaysSoAndNamesThoseThatCouldNotBeTaken)
{
    Glob_Keep_Changed_List() = true;
    school.put_on_course(amy.pupil_id, ballet.course_id);
    school.put_on_course(ben.pupil_id, ballet.course_id);
    school.put_on_course(ben.pupil_id, tap.course_id);
    RegisterOutcome outcome;
    Remove_Pupils_From_Register({{ballet.course_id, amy.pupil_id, QStringLiteral("Amy")},
                                 {ballet.course_id, ben.pupil_id, QStringLiteral("Ben")}},
                                outcome);
    EXPECT_TRUE(on_course(ballet).isEmpty());
    EXPECT_EQ(on_course(tap), QStringList{QStringLiteral("Ben")});
    EXPECT_EQ(outcome.done, QStringLiteral("Amy, Ben, "));
    EXPECT_EQ(outcome.status, QStringLiteral("Pupils successfully deleted from the Register"));
    EXPECT_EQ(Changed_Pupils().chosen(), (QVector<qint32>{amy.pupil_id, ben.pupil_id}));

    // Without the query that takes a pupil off, each one fails and is named.
    ASSERT_TRUE(school.db().DeleteQueryDef(QStringLiteral("Qry_Delete_Pupil_on_Course")));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Unexpected error deleting from register"), engine::answer::Ok, engine::mb::Critical);
        boxes.expect(QStringLiteral("Unexpected error deleting from register"), engine::answer::Ok, engine::mb::Critical);
        Remove_Pupils_From_Register({{tap.course_id, ben.pupil_id, QStringLiteral("Ben")},
                                     {tap.course_id, cara.pupil_id, QStringLiteral("Cara")}},
                                    outcome);
    }
    EXPECT_EQ(outcome.status, QStringLiteral("The following could NOT be deletedBen, Cara, "));
    EXPECT_EQ(on_course(tap), QStringList{QStringLiteral("Ben")});
}

TEST_F(RegisterChanges, ChosenRowsAreReadInTheOrderGivenAndAnUnreadableRowFails)
{
    school.put_on_course(amy.pupil_id, tap.course_id);
    school.put_on_course(cara.pupil_id, tap.course_id);
    ASSERT_TRUE(shown.Open(tap.course_id));
    engine::Recordset& rows = *shown.rows();
    ASSERT_TRUE(rows.MoveFirst());
    const engine::Bookmark first = rows.bookmark();  // Amy Ashdown
    ASSERT_TRUE(rows.MoveNext());
    const engine::Bookmark second = rows.bookmark();  // Cara Brook

    QVector<RegisterEntry> entries;
    ASSERT_TRUE(Read_Register_Entries(rows, {second, first}, entries));
    ASSERT_EQ(entries.size(), 2);
    EXPECT_EQ(entries[0].first_name, QStringLiteral("Cara"));
    EXPECT_EQ(entries[0].pupil_id, cara.pupil_id);
    EXPECT_EQ(entries[0].course_id, tap.course_id);
    EXPECT_EQ(entries[1].first_name, QStringLiteral("Amy"));

    QVector<RegisterPupil> pupils;
    ASSERT_TRUE(Read_Pupils(rows, {first}, pupils));  // the register has Pid and DisplayName too
    EXPECT_EQ(pupils.front().pupil_id, amy.pupil_id);
    EXPECT_EQ(pupils.front().name, QStringLiteral("Amy Ashdown "));

    QVector<RegisterCourse> courses;
    EXPECT_FALSE(Read_Courses(rows, {first}, courses));  // no course_id in a register
    EXPECT_FALSE(Read_Register_Entries(rows, {-1}, entries));
}

}  // namespace
