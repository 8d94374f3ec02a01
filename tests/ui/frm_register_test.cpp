// The course register screen as a secretary uses it: courses and pupils
// chosen by going to them, one Add for them all, the refusals, taking pupils
// off a register, and the changed-pupils list of the main menu.

#include "ui/courses/frm_register.h"

#include "engine/msg_box.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "support/current_school.h"
#include "support/scripted_boxes.h"
#include "ui/courses/register_grid.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

class RegisterScreen : public ScreenTest<frm_Register> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        ballet = school.add_course(NewCourse(QStringLiteral("Ballet 1")));
        tap = school.add_course(NewCourse(QStringLiteral("Tap 2")));
        jazz = school.add_course(NewCourse(QStringLiteral("Jazz")));
        const int ashdown = school.add_family(QStringLiteral("Ashdown"));
        const int brook = school.add_family(QStringLiteral("Brook"));
        amy = school.add_pupil(ashdown, QStringLiteral("Amy"));
        ben = school.add_pupil(ashdown, QStringLiteral("Ben"), 'M');
        cara = school.add_pupil(brook, QStringLiteral("Cara"));
        school.add_pupil(brook, QStringLiteral("Hidden"), 'g');
    }

    // A click on the pupil whose name begins so.
    void click_pupil(const QString& first_and_family)
    {
        for (int row = 0; row < screen->dbg_Pupil->model()->rowCount(); ++row) {
            const QString shown = screen->dbg_Pupil->model()->index(row, 0).data().toString();
            if (shown.startsWith(first_and_family)) {
                click_row(screen->dbg_Pupil, shown);
                return;
            }
        }
        ADD_FAILURE() << "no pupil " << first_and_family.toStdString();
    }

    void click_heading(DataGrid* grid)
    {
        QHeaderView* header = grid->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(header->sectionViewportPosition(0) + 4, header->height() / 2));
        settle();
    }

    QStringList on_course(int course)
    {
        QStringList names;
        for (const auto& row : school.rows(QStringLiteral("Qry_Select_Pupil_on_Course"), {{QStringLiteral("par_Course_id"), course}}))
            names << row[QStringLiteral("FirstName")].toString();
        return names;
    }

    static QStringList column(DataGrid* grid, int column = 0)
    {
        QStringList texts;
        for (int row = 0; row < grid->model()->rowCount(); ++row)
            texts << grid->model()->index(row, column).data().toString();
        return texts;
    }

    int ballet = 0, tap = 0, jazz = 0, amy = 0, ben = 0, cara = 0;
};

TEST_F(RegisterScreen, OpensWithTheCoursesInTitleOrderThePupilsNotHiddenAndNoRegister)
{
    open();
    EXPECT_EQ(screen->objectName(), QStringLiteral("frm_Register"));
    EXPECT_EQ(screen->windowTitle(), QStringLiteral("Register of Pupils attending Courses"));
    EXPECT_EQ(column(screen->dbg_Course), (QStringList{QStringLiteral("Ballet 1"), QStringLiteral("Jazz"), QStringLiteral("Tap 2")}));
    EXPECT_EQ(column(screen->dbg_Pupil).size(), 3);
    EXPECT_EQ(screen->dbg_Register->model()->rowCount(), 0);
    EXPECT_EQ(screen->course_caption->text(), QStringLiteral("Course List"));
    EXPECT_EQ(screen->pupil_caption->text(), QStringLiteral("Pupil List"));
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register"));
    EXPECT_TRUE(screen->txt_Num_Records->text().isEmpty());
    EXPECT_TRUE(screen->txt_Status->text().isEmpty());
    // Taking the focus chooses nothing.
    EXPECT_TRUE(screen->dbg_Course->SelBookmarks().isEmpty());
}

TEST_F(RegisterScreen, ThreeCoursesClickedThenOneAddEnrolsThePupilsOnEachAndShowsTheLastRegister)
{
    open();
    click_row(screen->dbg_Course, QStringLiteral("Tap 2"));
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Tap 2"));
    click_row(screen->dbg_Course, QStringLiteral("Ballet 1"));
    click_row(screen->dbg_Course, QStringLiteral("Jazz"));
    EXPECT_EQ(screen->dbg_Course->SelBookmarks().size(), 3);
    click_pupil(QStringLiteral("Amy Ashdown"));
    click_pupil(QStringLiteral("Cara Brook"));
    click(screen->cmd_Add);

    for (int course : {ballet, tap, jazz})
        EXPECT_EQ(on_course(course), (QStringList{QStringLiteral("Amy"), QStringLiteral("Cara")})) << course;
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupils successfully added to Course Register"));
    // The courses are taken in the order they were chosen: Jazz was last.
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Jazz"));
    EXPECT_EQ(column(screen->dbg_Register), (QStringList{QStringLiteral("Amy"), QStringLiteral("Cara")}));
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("1"));  // the rows reached, not the rows
}

TEST_F(RegisterScreen, WalkingTheCourseListWithTheKeysChoosesEachCourseAndAHeadingChoosesEveryPupil)
{
    open();
    click_row(screen->dbg_Course, QStringLiteral("Ballet 1"));
    QTest::keyClick(screen->dbg_Course, Qt::Key_Down);
    QTest::keyClick(screen->dbg_Course, Qt::Key_Down);
    settle();
    EXPECT_EQ(screen->dbg_Course->SelBookmarks().size(), 3);
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Tap 2"));

    // A heading of the course list chooses nothing more; one of the pupils chooses them all.
    click_heading(screen->dbg_Course);
    EXPECT_EQ(screen->dbg_Course->SelBookmarks().size(), 3);
    click_heading(screen->dbg_Pupil);
    EXPECT_EQ(screen->dbg_Pupil->SelBookmarks().size(), 3);
    click(screen->cmd_Add);
    for (int course : {ballet, tap, jazz})
        EXPECT_EQ(on_course(course).size(), 3) << course;
}

TEST_F(RegisterScreen, AddAndDeleteRefuseWithoutTheRowsTheyNeed)
{
    open();
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Please select a course"), engine::answer::Ok, engine::mb::OkOnly);
        boxes.expect(QStringLiteral("Please select a pupil in the Register"), engine::answer::Ok, engine::mb::OkOnly);
        click(screen->cmd_Add);
        click(screen->cmd_Delete);
    }
    click_row(screen->dbg_Course, QStringLiteral("Jazz"));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Please select at least one pupil"), engine::answer::Ok, engine::mb::OkOnly);
        click(screen->cmd_Add);
    }
    EXPECT_TRUE(on_course(jazz).isEmpty());
    EXPECT_TRUE(screen->txt_Status->text().isEmpty());
}

TEST_F(RegisterScreen, DeletingAsksAndOnYesTakesTheChosenPupilsOffAndSaysSo)
{
    for (int pupil : {amy, ben, cara})
        school.put_on_course(pupil, ballet);
    open();
    click_row(screen->dbg_Course, QStringLiteral("Ballet 1"));
    ASSERT_EQ(screen->dbg_Register->model()->rowCount(), 3);
    click_row(screen->dbg_Register, QStringLiteral("Amy"));
    click_row(screen->dbg_Register, QStringLiteral("Cara"));

    const QString question = QStringLiteral("Do you really want to remove the pupil(s) from the register?");
    {
        ScriptedBoxes boxes;
        boxes.expect(question, No, engine::mb::YesNo);
        click(screen->cmd_Delete);
    }
    EXPECT_EQ(on_course(ballet).size(), 3);
    {
        ScriptedBoxes boxes;
        boxes.expect(question, Yes, engine::mb::YesNo);
        click(screen->cmd_Delete);
    }
    EXPECT_EQ(on_course(ballet), QStringList{QStringLiteral("Ben")});
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupils successfully deleted from the Register"));
    EXPECT_EQ(screen->register_caption->text(), QStringLiteral("Register for Ballet 1"));
    EXPECT_EQ(column(screen->dbg_Register), QStringList{QStringLiteral("Ben")});

    // A heading chooses the whole register.
    click_heading(screen->dbg_Register);
    {
        ScriptedBoxes boxes;
        boxes.expect(question, Yes, engine::mb::YesNo);
        click(screen->cmd_Delete);
    }
    EXPECT_TRUE(on_course(ballet).isEmpty());
    EXPECT_EQ(screen->txt_Num_Records->text(), QStringLiteral("0"));
}

TEST_F(RegisterScreen, APupilAlreadyOnTheCourseShownIsPassedOverInSilence)
{
    school.put_on_course(amy, tap);
    open();
    click_row(screen->dbg_Course, QStringLiteral("Tap 2"));
    click_pupil(QStringLiteral("Amy Ashdown"));
    {
        ScriptedBoxes no_boxes;
        click(screen->cmd_Add);
    }
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("No-one added"));

    click_pupil(QStringLiteral("Ben Ashdown"));
    {
        ScriptedBoxes no_boxes;
        click(screen->cmd_Add);
    }
    EXPECT_EQ(on_course(tap), (QStringList{QStringLiteral("Amy"), QStringLiteral("Ben")}));
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupils successfully added to Course Register"));
}

TEST_F(RegisterScreen, APupilOnTheSecondCourseChosenIsRefusedThereAndNamedInTheStatus)
{
    school.put_on_course(amy, tap);
    open();
    click_row(screen->dbg_Course, QStringLiteral("Ballet 1"));
    click_row(screen->dbg_Course, QStringLiteral("Tap 2"));
    click_pupil(QStringLiteral("Amy Ashdown"));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("is already on this register"), engine::answer::Ok, engine::mb::Critical);
        click(screen->cmd_Add);
    }
    EXPECT_EQ(on_course(ballet), QStringList{QStringLiteral("Amy")});
    EXPECT_TRUE(screen->txt_Status->text().startsWith(QStringLiteral("The following could NOT be addedAmy Ashdown")));
}

TEST_F(RegisterScreen, TheChangedPupilsListGetsAPupilOnceWhenTheMenuKeepsAList)
{
    Glob_Keep_Changed_List() = true;
    open();
    click_row(screen->dbg_Course, QStringLiteral("Ballet 1"));
    click_row(screen->dbg_Course, QStringLiteral("Jazz"));
    click_pupil(QStringLiteral("Ben Ashdown"));
    click(screen->cmd_Add);
    click_row(screen->dbg_Register, QStringLiteral("Ben"));
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Do you really want to remove"), Yes);
        click(screen->cmd_Delete);
    }
    EXPECT_EQ(on_course(ballet), QStringList{QStringLiteral("Ben")});
    EXPECT_TRUE(on_course(jazz).isEmpty());
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>{ben});

    // Without a list kept, nothing is noted. A second click drops Ben.
    Changed_Pupils().reset();
    Glob_Keep_Changed_List() = false;
    click_pupil(QStringLiteral("Ben Ashdown"));
    click_pupil(QStringLiteral("Cara Brook"));
    click(screen->cmd_Add);
    EXPECT_EQ(on_course(ballet), (QStringList{QStringLiteral("Ben"), QStringLiteral("Cara")}));
    EXPECT_EQ(on_course(jazz), QStringList{QStringLiteral("Cara")});
    EXPECT_TRUE(Changed_Pupils().is_empty());
}

TEST_F(RegisterScreen, ExitGoesBackToTheMenu)
{
    open();
    screen->mnu_Exit->trigger();
    settle();
    EXPECT_TRUE(screen.isNull());
    EXPECT_TRUE(menu.isVisible());
}

}  // namespace
