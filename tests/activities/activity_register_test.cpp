// Pupils onto activities for a date and off again: an exam once in a life,
// a show on as many dates as it runs, the names that could and could not be
// entered, and the changed-pupils list that invoicing reads.

#include "activities/activity_register.h"

#include "engine/msg_box.h"
#include "shell/selection_lists.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <gtest/gtest.h>

using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

const QDateTime spring(QDate(2027, 3, 13), QTime(0, 0), Qt::UTC);
const QDateTime summer(QDate(2027, 7, 10), QTime(0, 0), Qt::UTC);

class ActivityRegister : public ::testing::Test {
protected:
    ActivityRegister()
    {
        const int ashdown = school.add_family(QStringLiteral("Ashdown"));
        amy = {school.add_pupil(ashdown, QStringLiteral("Amy")), QStringLiteral("Amy Ashdown")};
        ben = {school.add_pupil(ashdown, QStringLiteral("Ben"), 'M'), QStringLiteral("Ben Ashdown")};
        cara = {school.add_pupil(school.add_family(QStringLiteral("Brook")), QStringLiteral("Cara")), QStringLiteral("Cara Brook")};
        miss_kay = school.add_teacher(QStringLiteral("Miss Kay"));
        grade_1 = {school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")).taught_by(miss_kay)),
                   QStringLiteral("Ballet Grade 1")};
        show = {school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show)),
                QStringLiteral("Summer Show")};
        Glob_Keep_Changed_List() = true;
    }

    // "pupil@activity@date" for every entry, in a stable order.
    QStringList entries()
    {
        QStringList texts;
        for (const auto& row : school.rows(QStringLiteral(
                 "SELECT Results_Pupil_id, Results_Exam_id, Results_Date FROM Exam_Results "
                 "ORDER BY Results_Date, Results_Exam_id, Results_Pupil_id")))
            texts << QStringLiteral("%1@%2@%3").arg(row["Results_Pupil_id"].toInt()).arg(row["Results_Exam_id"].toInt())
                         .arg(row["Results_Date"].toDateTime().date().toString(Qt::ISODate));
        return texts;
    }
    static QString entry(const RegisterPupil& pupil, const ActivityChoice& activity, const QDateTime& date)
    {
        return QStringLiteral("%1@%2@%3").arg(pupil.pupil_id).arg(activity.exam_id).arg(date.date().toString(Qt::ISODate));
    }

    testing_support::SchoolMadeCurrent school;
    RegisterPupil amy, ben, cara;
    ActivityChoice grade_1, show;
    int miss_kay = 0;
};

TEST_F(ActivityRegister, TwoActivitiesAndThreePupilsMakeSixEntriesOnTheOneDate)
{
    EntryOutcome outcome;
    Add_Pupils_To_Activities({grade_1, show}, {amy, ben, cara}, spring, outcome);
    EXPECT_EQ(outcome.status, QStringLiteral("Pupils successfully added to Register"));
    EXPECT_EQ(entries().size(), 6);
    // The entry takes the activity's teacher; the pupils are on the changed list once each.
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT count(*) FROM Exam_Results WHERE Results_Teacher_id = %1").arg(miss_kay)).toInt(), 3);
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>({amy.pupil_id, ben.pupil_id, cara.pupil_id}));
}

TEST_F(ActivityRegister, AShowMayBeRepeatedOnAnotherDateButAnExamIsTakenOnce)
{
    school.enter(amy.pupil_id, show.exam_id, spring.date());
    school.enter(amy.pupil_id, grade_1.exam_id, spring.date());
    EntryOutcome outcome;
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The pupil has already taken this exam"), engine::answer::Ok, 0);
    Add_Pupils_To_Activities({grade_1, show}, {amy, ben}, summer, outcome);
    EXPECT_EQ(outcome.status, QStringLiteral("The following could NOT be added, Amy Ashdown"));
    EXPECT_EQ(outcome.done, QStringLiteral(", Ben Ashdown, Amy Ashdown, Ben Ashdown"));
    EXPECT_TRUE(entries().contains(entry(amy, show, summer)));
    EXPECT_FALSE(entries().contains(entry(amy, grade_1, summer)));
}

TEST_F(ActivityRegister, TheSamePupilActivityAndDateTwiceIsRefusedByTheStore)
{
    school.enter(amy.pupil_id, show.exam_id, spring.date());
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The pupil is already on this activity"), engine::answer::Ok, 0);
    EXPECT_FALSE(DB_Add_Pupil_To_Activity(show.exam_id, amy.pupil_id, spring));
    EntryOutcome outcome;
    Add_Pupils_To_Activities({show}, {}, spring, outcome);
    EXPECT_EQ(outcome.status, QStringLiteral("No-one added"));
}

TEST_F(ActivityRegister, RemovingTakesTheEntryWithItsResultAndMarksThePupil)
{
    school.enter(amy.pupil_id, grade_1.exam_id, spring.date());
    school.enter(amy.pupil_id, show.exam_id, summer.date());
    school.exec(QStringLiteral("UPDATE Exam_Results SET Results_Mark = 82, Results_Grade = 'Merit'"));
    EntryOutcome outcome;
    Remove_Pupils_From_Activities({{grade_1.exam_id, amy.pupil_id, spring, amy.name}}, outcome);
    EXPECT_EQ(outcome.status, QStringLiteral("Pupils successfully deleted from Register"));
    EXPECT_EQ(entries(), QStringList{entry(amy, show, summer)});
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>{amy.pupil_id});
}

TEST_F(ActivityRegister, TheRegisterOfAnActivityAndDateIsOfAllPupilsOrOfACoursesPupils)
{
    const int ballet = school.add_course(testing_support::NewCourse(QStringLiteral("Ballet 1")));
    school.put_on_course(cara.pupil_id, ballet);
    for (const RegisterPupil& pupil : {amy, cara})
        school.enter(pupil.pupil_id, show.exam_id, summer.date());
    school.enter(ben.pupil_id, show.exam_id, spring.date());

    std::unique_ptr<engine::Recordset> all = Open_Activity_Register(show.exam_id, summer, std::nullopt);
    ASSERT_TRUE(all);
    EXPECT_EQ(all->RecordCount(), 2);
    std::unique_ptr<engine::Recordset> course = Open_Activity_Register(show.exam_id, summer, ballet);
    ASSERT_TRUE(course);
    QVector<ActivityEntry> read;
    ASSERT_TRUE(Read_Activity_Entries(*course, {course->bookmark()}, read));
    ASSERT_EQ(read.size(), 1);
    EXPECT_EQ(read.front().pupil_id, cara.pupil_id);
    EXPECT_EQ(read.front().date, summer);
}

}  // namespace
