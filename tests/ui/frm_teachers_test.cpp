// The teachers' own rules, words and fields; the record-editing pattern they
// share with the other screens is in record_pattern_test.cpp.

#include "ui/people/frm_teachers.h"

#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

class TeachersScreen : public ScreenTest<frm_Teachers> {
protected:
    QString shown_name() const { return screen->cmb_Names->currentText(); }
};

TEST_F(TeachersScreen, OpensAtTheFirstTeachingNameInOrderAndAddNewKeepsTheDescription)
{
    school.add_teacher(QStringLiteral("Miss Pru"), QStringLiteral("Prudence"), QStringLiteral("Hale"));
    school.add_teacher(QStringLiteral("Madame Ada"), QStringLiteral("Ada"), QStringLiteral("Ward"));
    school.exec(QStringLiteral("UPDATE Teachers SET Teacher_Description = 'Examiner', Teacher_Notes = 'Mornings'"));
    open();
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
    EXPECT_EQ(screen->cmb_Names->count(), 2);
    EXPECT_EQ(shown_name(), QStringLiteral("Madame Ada"));
    EXPECT_EQ(screen->txt_Nickname->text(), QStringLiteral("Madame Ada"));
    EXPECT_EQ(screen->txt_Surname->text(), QStringLiteral("Ward"));

    // Add New keeps the description and starts every other field blank.
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Description->text(), QStringLiteral("Examiner"));
    EXPECT_EQ(screen->txt_Name->text(), QString());
    EXPECT_EQ(screen->txt_Surname->text(), QString());
    EXPECT_EQ(screen->txt_Notes->toPlainText(), QString());
}

TEST_F(TeachersScreen, AnUnexpectedFailureOfUpdateLogsTheEnginesNumberAndText)
{
    school.add_teacher(QStringLiteral("Ada"));
    school.exec(QStringLiteral("CREATE TRIGGER Teachers_Busy BEFORE UPDATE ON Teachers BEGIN SELECT RAISE(ABORT, "
                               "'jet:3197:The data has been changed by another user.'); END"));
    open();
    retype(screen->txt_Surname, QStringLiteral("Ward"));
    tab_out(screen->txt_Surname);
    ScriptedBoxes().expect(QStringLiteral("Unexpected error "), engine::answer::Ok, engine::mb::Information)
        .during([&] { click(screen->cmd_Update); });
    EXPECT_EQ(screen->EditMode(), engine::editmode::InProgress);
    const QString entry = school.log_text();
    EXPECT_TRUE(entry.contains(QStringLiteral("fTeach     : Unexpected error"))) << entry.toStdString();
    EXPECT_TRUE(entry.contains(QStringLiteral("cmd_Update : 3197 : The data has been changed by another user."))
                && entry.contains(QStringLiteral("        cmd_Update")))
        << entry.toStdString();
}

// A box takes no more characters than its column holds; an exam number beyond
// the field's range is refused, and the addition goes on to store it put right.
TEST_F(TeachersScreen, BoxesTakeWhatTheirColumnsHoldAndABadExamNumberIsPutRightBeforeStoring)
{
    open();
    const QString long_name = QString(300, QLatin1Char('n'));
    type_into(screen->txt_Nickname, long_name);
    EXPECT_EQ(screen->txt_Nickname->text().size(), 255);
    // A box of several lines, typed into and then pasted into at the start.
    type_into(screen->txt_Address, QString(250, QLatin1Char('a')));
    screen->txt_Address->moveCursor(QTextCursor::Start);
    screen->txt_Address->insertPlainText(QStringLiteral("12 Long Street, "));
    // As a one-line box does, the paste is cut short and what was there stays.
    EXPECT_EQ(screen->txt_Address->toPlainText(), QStringLiteral("12 Lo") + QString(250, QLatin1Char('a')));
    type_into(screen->txt_Exam_Ref_No, QStringLiteral("40000"));
    ScriptedBoxes().expect(QStringLiteral("The latest exam reference number must be a number"), Yes, engine::mb::OkOnly)
        .during([&] { click(screen->cmd_Update); });
    EXPECT_EQ(screen->EditMode(), engine::editmode::Add);
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Exam_Ref_No);
    EXPECT_EQ(school.count(QStringLiteral("Teachers")), 0);
    retype(screen->txt_Exam_Ref_No, QStringLiteral("12"));
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), long_name.left(255) + QStringLiteral(" added successfully"));
    EXPECT_EQ(shown_name(), long_name.left(255));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT length(Teacher_Address) || '|' || Teacher_Exam_No FROM Teachers")).toString(),
              QStringLiteral("255|12"));
}

// ---- Deleting ----

TEST_F(TeachersScreen, DeletingFromTheMiddleLandsOnTheFirstTeacher)
{
    school.add_teacher(QStringLiteral("Ada"));
    school.add_teacher(QStringLiteral("Bea"));
    school.add_teacher(QStringLiteral("Cy"));
    open();
    click(screen->cmd_Next);
    ASSERT_EQ(screen->txt_Nickname->text(), QStringLiteral("Bea"));
    ScriptedBoxes()
        .expect(QStringLiteral("Do you really want to delete Bea"), Yes, engine::mb::YesNo | engine::mb::Question)
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Bea deleted"));
    EXPECT_EQ(screen->txt_Nickname->text(), QStringLiteral("Ada"));
    EXPECT_EQ(shown_name(), QStringLiteral("Ada"));
    EXPECT_EQ(screen->cmb_Names->count(), 2);
    EXPECT_EQ(school.count(QStringLiteral("Teachers")), 2);
}

TEST_F(TeachersScreen, DeletingTheLastTeacherSaysSoAndTheNextOpeningStartsAnAdd)
{
    school.add_teacher(QStringLiteral("Ada"));
    open();
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete Ada"), Yes)
        .expect(QStringLiteral("There are no more records"))
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Ada deleted"));
    EXPECT_EQ(school.count(QStringLiteral("Teachers")), 0);
    screen->hide();
    screen->show();
    settle();
    EXPECT_EQ(screen->EditMode(), engine::editmode::Add);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Teacher"));
}

}  // namespace
