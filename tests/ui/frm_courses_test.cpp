// The Courses screen as a secretary meets it: a course's day, time, length,
// price and teacher, the rules they must meet, and what deleting a course
// with pupils asks.

#include "ui/courses/frm_courses.h"

#include "engine/jet_date.h"
#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "shell/settings.h"
#include "support/fake_locale_source.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

class CoursesScreen : public ScreenTest<frm_Courses> {
protected:
    void starts_at(int course, int hour, int minute)
    {
        const QString stored = engine::date_to_storage(QDateTime(QDate(1899, 12, 30), QTime(hour, minute), Qt::UTC));
        school.exec(QStringLiteral("UPDATE Courses SET Course_Time = '%1' WHERE Course_id = %2").arg(stored).arg(course));
    }

    QVariant stored(const QString& column)
    {
        return school.scalar(QStringLiteral("SELECT %1 FROM Courses WHERE Course_Title = 'Ballet 1'").arg(column));
    }

    void choose_day(int weekday)
    {
        QListWidget* list = screen->lst_Day;
        list->setFocus(Qt::MouseFocusReason);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(weekday)).center());
        settle();
    }

    void choose_teacher(const QString& typed)
    {
        QLineEdit* edit = screen->cmb_Teachers->lineEdit();
        screen->cmb_Teachers->setFocus(Qt::MouseFocusReason);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, typed);
        tab_out(screen->cmb_Teachers);
    }
};

// ---- Showing a course ----

TEST_F(CoursesScreen, ShowsTheDayTeacherAndStartTimeOfTheCourse)
{
    school.add_teacher(QStringLiteral("Ada"));
    const int bea = school.add_teacher(QStringLiteral("Bea"));
    const int ballet = school.add_course(QStringLiteral("Ballet 1"), bea);
    starts_at(ballet, 18, 30);
    school.add_course(NewCourse(QStringLiteral("Tap 2")).on(code::weekday::Saturday));
    const testing_support::FakeLocaleSource french(QLocale(QLocale::French, QLocale::France));
    const testing_support::LocaleScope in_french(french);
    open();

    // A blank first, then the days in the machine's language, Sunday first.
    ASSERT_EQ(screen->lst_Day->count(), 8);
    EXPECT_EQ(screen->lst_Day->item(0)->text(), QString());
    EXPECT_EQ(screen->lst_Day->item(1)->text(), QStringLiteral("dimanche"));
    EXPECT_EQ(screen->lst_Day->item(7)->text(), QStringLiteral("samedi"));
    EXPECT_EQ(screen->cmb_Teachers->count(), 2);

    EXPECT_EQ(screen->txt_Course_Title->text(), QStringLiteral("Ballet 1"));
    EXPECT_EQ(screen->lst_Day->currentRow(), code::weekday::Monday);
    EXPECT_EQ(screen->txt_Start_Time->text(), QStringLiteral("18:30"));
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QStringLiteral("Bea"));
    EXPECT_EQ(screen->txt_Duration->text(), QStringLiteral("45"));

    // A course with no teacher shows an empty teacher list.
    click(screen->cmd_Next);
    EXPECT_EQ(screen->txt_Course_Title->text(), QStringLiteral("Tap 2"));
    EXPECT_EQ(screen->lst_Day->currentRow(), code::weekday::Saturday);
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QString());
    EXPECT_EQ(screen->cmb_Teachers->currentIndex(), -1);
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
}

TEST_F(CoursesScreen, TheCourseListFollowsTheChosenCourseOrder)
{
    school.add_course(NewCourse(QStringLiteral("A Tap")).on(code::weekday::Friday));
    school.add_course(NewCourse(QStringLiteral("Z Ballet")).on(code::weekday::Monday));
    Settings().course_query = QStringLiteral("Qry_Order_Courses_Day");
    open();
    EXPECT_EQ(screen->cmb_Names->itemText(0), QStringLiteral("Z Ballet"));
    EXPECT_EQ(screen->txt_Course_Title->text(), QStringLiteral("Z Ballet"));
    click(screen->cmd_Next);
    EXPECT_EQ(screen->txt_Course_Title->text(), QStringLiteral("A Tap"));
}

// ---- Adding and editing ----

TEST_F(CoursesScreen, AddingACourseStoresWhatTheBoxesShowWithItsClockTimes)
{
    school.add_teacher(QStringLiteral("Ada"));
    const int bea = school.add_teacher(QStringLiteral("Bea"));
    open();
    ASSERT_EQ(screen->EditMode(), engine::editmode::Add);

    type_into(screen->txt_Course_Title, QStringLiteral("Ballet 1"));
    type_into(screen->txt_Description, QStringLiteral("Beginners"));
    choose_day(code::weekday::Wednesday);
    EXPECT_EQ(field_colour(screen->lst_Day), colours::Highlight);
    type_into(screen->txt_Start_Time, QStringLiteral("6:05 pm"));
    tab_out(screen->txt_Start_Time);
    EXPECT_EQ(screen->txt_Start_Time->text(), QStringLiteral("18:05"));
    type_into(screen->txt_Duration, QStringLiteral("60.4"));
    choose_teacher(QStringLiteral("bea"));
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QStringLiteral("Bea"));
    EXPECT_EQ(field_colour(screen->cmb_Teachers), colours::Highlight);
    click(screen->chk_Suppressed);
    click(screen->cmd_Update);

    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Ballet 1 added successfully"));
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
    EXPECT_EQ(field_colour(screen->lst_Day), colours::At_Rest);
    EXPECT_EQ(field_colour(screen->cmb_Teachers), colours::At_Rest);
    EXPECT_EQ(stored(QStringLiteral("Description")).toString(), QStringLiteral("Beginners"));
    EXPECT_EQ(stored(QStringLiteral("Day_of_Week")).toInt(), code::weekday::Wednesday);
    EXPECT_EQ(stored(QStringLiteral("Course_Teacher_id")).toInt(), bea);
    EXPECT_EQ(stored(QStringLiteral("Course_Suppressed")).toInt(), 1);
    EXPECT_EQ(stored(QStringLiteral("Course_Start_txt")).toString(), QStringLiteral("18:05"));
    EXPECT_EQ(stored(QStringLiteral("Course_End_txt")).toString(), QStringLiteral("19:05"));
    EXPECT_EQ(screen->txt_Duration->text(), QStringLiteral("60"));
    EXPECT_EQ(screen->cmb_Names->currentText(), QStringLiteral("Ballet 1"));
}

// The price shows as money with two decimals; Add New then starts from a
// blank course, not from the boxes of the course shown.
TEST_F(CoursesScreen, ThePriceShowsAsMoneyAndAddNewStartsFromABlankCourse)
{
    const int ada = school.add_teacher(QStringLiteral("Ada"));
    const int ballet = school.add_course(QStringLiteral("Ballet 1"), ada);
    school.exec(QStringLiteral("UPDATE Courses SET Course_Suppressed = 1, Course_Cancelled = 1, Course_LessonPrice = 5.5 "
                               "WHERE Course_id = %1").arg(ballet));
    open();
    EXPECT_EQ(screen->txt_Price->text(), QStringLiteral("5.50"));
    retype(screen->txt_Price, QStringLiteral("7.5"));
    tab_out(screen->txt_Price);
    EXPECT_EQ(screen->txt_Price->text(), QStringLiteral("7.50"));
    click(screen->cmd_Update);
    EXPECT_DOUBLE_EQ(stored(QStringLiteral("Course_LessonPrice")).toDouble(), 7.5);
    ASSERT_TRUE(screen->chk_Suppressed->isChecked());
    ASSERT_TRUE(screen->chk_Cancelled->isChecked());

    click(screen->cmd_Add);
    EXPECT_EQ(screen->EditMode(), engine::editmode::Add);
    EXPECT_FALSE(screen->chk_Suppressed->isChecked());
    EXPECT_FALSE(screen->chk_Cancelled->isChecked());
    EXPECT_EQ(screen->txt_Course_Title->text(), QString());
    EXPECT_EQ(screen->txt_Price->text(), QString());
    EXPECT_EQ(screen->lst_Day->currentRow(), -1);
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QString());
}

TEST_F(CoursesScreen, ChoosingADayStartsAnEditAndCancelPutsTheRecordsDayBack)
{
    school.add_course(NewCourse(QStringLiteral("Ballet 1")).on(code::weekday::Tuesday));
    open();
    choose_day(code::weekday::Sunday);
    EXPECT_EQ(screen->EditMode(), engine::editmode::InProgress);
    EXPECT_EQ(field_colour(screen->lst_Day), colours::Highlight);
    click(screen->cmd_Cancel);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Change cancelled"));
    EXPECT_EQ(screen->lst_Day->currentRow(), code::weekday::Tuesday);
    EXPECT_EQ(field_colour(screen->lst_Day), colours::At_Rest);
}

TEST_F(CoursesScreen, ChoosingADayOnAnEmptyTableWithoutAddNewIsRefusedAndUndone)
{
    open();
    click(screen->cmd_Cancel);
    ScriptedBoxes()
        .expect(QStringLiteral("There is no record to edit. \nChoose a Course Title to edit, or press Add New"), Yes,
                engine::mb::OkOnly)
        .during([&] { choose_day(code::weekday::Monday); });
    EXPECT_EQ(screen->lst_Day->currentRow(), -1);
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
}

TEST_F(CoursesScreen, ATeacherAddedElsewhereIsInTheListOnReturn)
{
    school.add_course(NewCourse(QStringLiteral("Ballet 1")));
    open();
    EXPECT_EQ(screen->cmb_Teachers->count(), 0);
    screen->hide();
    school.add_teacher(QStringLiteral("Ada"));
    bring_to_front(screen);
    EXPECT_EQ(screen->cmb_Teachers->count(), 1);
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QString());
}

// ---- The course's own rules ----

// The rules and their words are course_entry_test's; here each refusal puts
// the focus on its own control and stores nothing.
TEST_F(CoursesScreen, ARefusedRuleGivesTheFocusToItsFieldAndStoresNothing)
{
    open();
    auto refused = [&](const QString& words, QWidget* field) {
        ScriptedBoxes().expect(words, Yes, engine::mb::OkOnly).during([&] { click(screen->cmd_Update); });
        EXPECT_EQ(QApplication::focusWidget(), field) << words.toStdString();
        EXPECT_EQ(screen->EditMode(), engine::editmode::Add);
    };
    // A title with quotes is refused as soon as the box is left.
    type_into(screen->txt_Course_Title, QStringLiteral("Ballet \"1\""));
    ScriptedBoxes().expect(QStringLiteral("The title cannot include quotes")).during([&] { tab_out(screen->txt_Course_Title); });
    retype(screen->txt_Course_Title, QStringLiteral("Ballet 1"));
    type_into(screen->txt_Price, QStringLiteral("ten"));
    refused(QStringLiteral("The price must be a decimal number"), screen->txt_Price);
    retype(screen->txt_Price, QString());
    refused(QStringLiteral("The duration must be a number"), screen->txt_Duration);
    retype(screen->txt_Duration, QStringLiteral("60"));
    refused(QStringLiteral("There must be a day"), screen->lst_Day);
    choose_day(code::weekday::Monday);
    retype(screen->txt_Start_Time, QStringLiteral("25:00"));
    tab_out(screen->txt_Start_Time);
    EXPECT_EQ(screen->txt_Start_Time->text(), QStringLiteral("25:00"));  // left as typed, to be put right
    refused(QStringLiteral("The start time must be a time of day, such as 9:30 or 21:30"), screen->txt_Start_Time);
    EXPECT_EQ(school.count(QStringLiteral("Courses")), 0);

    retype(screen->txt_Start_Time, QString());
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Ballet 1 added successfully"));
}

TEST_F(CoursesScreen, AnUnknownTeacherKeepsTheFocusAndAClearedTeacherIsStoredAsNone)
{
    const int ada = school.add_teacher(QStringLiteral("Ada"));
    school.add_course(QStringLiteral("Ballet 1"), ada);
    open();
    choose_teacher(QStringLiteral("Zed"));  // no box is scripted: none may appear
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Unknown Teacher"));
    EXPECT_EQ(QApplication::focusWidget(), screen->cmb_Teachers);
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);

    choose_teacher(QString());
    EXPECT_EQ(screen->EditMode(), engine::editmode::InProgress);
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Ballet 1 updated successfully"));
    EXPECT_TRUE(stored(QStringLiteral("Course_Teacher_id")).isNull());
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QString());
}

// ---- Deleting ----

TEST_F(CoursesScreen, DeletingACourseAsksAboutItsPupilsAndANoKeepsAll)
{
    // The questions' cases are course_exam_deletion_test's; here Delete asks them and a No keeps all.
    const int course = school.add_course(NewCourse(QStringLiteral("Ballet 1")));
    school.put_on_course(school.add_pupil(school.add_family(QStringLiteral("Archer")), QStringLiteral("Lily")), course);
    open();
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete Ballet 1"), Yes)
        .expect(QStringLiteral("There are 1 pupils left in the register."), No, engine::mb::YesNo | engine::mb::Question)
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion abandoned"));
    EXPECT_EQ(school.count(QStringLiteral("Register_Courses")), 1);
    EXPECT_EQ(school.count(QStringLiteral("Courses")), 1);
}

// ---- Moving through the fields ----

TEST_F(CoursesScreen, TabAndEnterWalkTheFieldsInScreenOrder)
{
    school.add_teacher(QStringLiteral("Ada"));
    school.add_course(NewCourse(QStringLiteral("Ballet 1")));
    open();
    screen->txt_Start_Time->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(screen->txt_Start_Time, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Duration);
    QTest::keyClick(screen->txt_Duration, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Price);
    QTest::keyClick(screen->txt_Price, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), screen->cmb_Teachers);
    QTest::keyClick(screen->cmb_Teachers, Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Altn_Costing);
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
}

}  // namespace
