// The activity register as a secretary uses it: the first activity and the
// newest date shown at once, a pupil entered for a show on two dates, an
// exam refused on a second date, whole lists chosen by their headings, pupils
// chosen by course, and every change on the changed-pupils list.

#include "ui/activities/frm_exam_register.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/data_grid.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

const QDate spring(2027, 3, 13);
const QDate summer(2027, 7, 10);

class ExamRegisterScreen : public ScreenTest<frm_ExamRegister> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        show = school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show));
        grade_1 = school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")).at_level(2));
        school.title_date(spring, QStringLiteral("Spring Exams"));
        school.title_date(summer, QStringLiteral("Show Night"));
        const int ashdown = school.add_family(QStringLiteral("Ashdown"));
        amy = school.add_pupil(ashdown, QStringLiteral("Amy"));
        ben = school.add_pupil(ashdown, QStringLiteral("Ben"), 'M');
        cara = school.add_pupil(school.add_family(QStringLiteral("Brook")), QStringLiteral("Cara"));
        Glob_Keep_Changed_List() = true;
    }
    void click_heading(DataGrid* grid)
    {
        QHeaderView* header = grid->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header->sectionViewportPosition(0) + 4, header->height() / 2));
        settle();
    }
    // A click on the pupil whose name begins so.
    void click_pupil(const QString& first_and_family, bool add = false)
    {
        for (const QString& shown : entries(screen->dbg_Pupil))
            if (shown.startsWith(first_and_family))
                return click_row(screen->dbg_Pupil, shown, add);
        ADD_FAILURE() << "no pupil " << first_and_family.toStdString();
    }
    int entries_of(int pupil)
    {
        return school.scalar(QStringLiteral("SELECT count(*) FROM Exam_Results WHERE Results_Pupil_id = %1").arg(pupil)).toInt();
    }

    int show = 0, grade_1 = 0, amy = 0, ben = 0, cara = 0;
};

TEST_F(ExamRegisterScreen, APupilIsEnteredForAShowOnTwoDates)
{
    open();
    // The first activity and the newest date, at once.
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Ballet Grade 1 on 10 Jul 2027"));
    click_row(screen->dbg_Exam, QStringLiteral("Summer Show"));
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Summer Show on 10 Jul 2027"));
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("0"));
    click_pupil(QStringLiteral("Amy Ashdown"));
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupils successfully added to Register"));
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("1"));

    click_row(screen->DBG_Dates, QStringLiteral("Spring Exams"), false, 1);
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Summer Show on 13 Mar 2027"));
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupils successfully added to Register"));
    EXPECT_EQ(entries_of(amy), 2);
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>{amy});
}

TEST_F(ExamRegisterScreen, AnExamTakenOnAnotherDateIsRefusedWhileTheOthersAreEntered)
{
    school.enter(amy, grade_1, spring);
    open();
    click_row(screen->dbg_Exam, QStringLiteral("Ballet Grade 1"));
    click_heading(screen->dbg_Pupil);
    ScriptedBoxes()
        .expect(QStringLiteral("The pupil has already taken this exam"), Ok, 0)
        .during([&] { click(screen->cmd_Add); });
    EXPECT_TRUE(screen->txt_Status->text().startsWith(QStringLiteral("The following could NOT be added, Amy Ashdown")));
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("2"));
    EXPECT_EQ(entries_of(ben) + entries_of(cara), 2);

    // Both rows of the register chosen by the heading, and taken off.
    click_heading(screen->dbg_Register);
    ScriptedBoxes()
        .expect(QStringLiteral("Do you really want to remove the pupil(s) from the register?"), Yes, 36)
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupils successfully deleted from Register"));
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("0"));
    EXPECT_EQ(entries_of(amy), 1);
    EXPECT_EQ(Changed_Pupils().chosen().size(), 2);
}

TEST_F(ExamRegisterScreen, PupilsAreChosenByCourseAndAllActivitiesChosenGetThem)
{
    const int ballet = school.add_course(testing_support::NewCourse(QStringLiteral("Ballet 1")));
    school.put_on_course(ben, ballet);
    school.put_on_course(cara, ballet);
    open();
    click(screen->opt_Course);
    EXPECT_TRUE(screen->dbg_Course->isVisible());
    ScriptedBoxes()
        .expect(QStringLiteral("Please select a course"), Ok, 0)
        .during([&] { click_row(screen->DBG_Dates, QStringLiteral("Spring Exams"), false, 1); });
    click_row(screen->dbg_Course, QStringLiteral("Ballet 1"));
    EXPECT_EQ(screen->dbg_Pupil->model()->rowCount(), 2);

    click_row(screen->dbg_Exam, QStringLiteral("Summer Show"), true);
    click_heading(screen->dbg_Pupil);
    click(screen->cmd_Add);
    EXPECT_EQ(school.count(QStringLiteral("Exam_Results")), 4);
    // The last activity chosen is the one shown, of the course's pupils.
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Summer Show on 13 Mar 2027"));
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("2"));
}

}  // namespace
