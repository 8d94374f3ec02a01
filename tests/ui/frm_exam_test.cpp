// The Activities screen: a catalogue entry's kind, style, teacher and
// charges, the store's uniqueness rules in the screen's words, and the
// deletion of an activity that pupils are entered for.

#include "ui/activities/frm_exam.h"

#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::NewActivity;
using testing_support::ScriptedBoxes;

namespace {

class ExamScreen : public ScreenTest<frm_Exam> {
protected:
    void choose_type(int code)
    {
        QListWidget* list = screen->lst_Exam_Types;
        list->setFocus(Qt::MouseFocusReason);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualItemRect(list->item(code)).center());
        settle();
    }
    void choose_teacher(const QString& name)
    {
        screen->cmb_Teachers->setFocus(Qt::MouseFocusReason);
        screen->cmb_Teachers->setCurrentIndex(screen->cmb_Teachers->findText(name));
        tab_out(screen->cmb_Teachers);
    }
    void type_field(QLineEdit* field, const QString& text)
    {
        retype(field, text);
        tab_out(field);
    }
    QVariant stored(const QString& column, const QString& title)
    {
        return school.scalar(QStringLiteral("SELECT %1 FROM Exams WHERE Exam_Title = '%2'").arg(column, title));
    }
};

TEST_F(ExamScreen, AShowAddedWithoutAStyleStoresOneBlankWithItsTeacherAndCharges)
{
    school.add_teacher(QStringLiteral("Miss Kay"));
    open();
    // An empty catalogue waits for Add New.
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
    EXPECT_TRUE(screen->cmd_Add->hasFocus());
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Activity"));
    type_field(screen->txt_Exam_Title, QStringLiteral("Summer Show"));
    choose_type(code::exam_type::Show);
    EXPECT_EQ(field_colour(screen->lst_Exam_Types), colours::Highlight);
    type_field(screen->txt_Price, QStringLiteral("12.5"));
    EXPECT_EQ(screen->txt_Price->text(), QStringLiteral("12.50"));
    type_field(screen->txt_Expenses, QStringLiteral("3"));
    choose_teacher(QStringLiteral("Miss Kay"));
    click(screen->cmd_Update);

    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Summer Show added successfully"));
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);
    EXPECT_EQ(stored(QStringLiteral("Exam_Dance"), QStringLiteral("Summer Show")).toString(), QStringLiteral(" "));
    EXPECT_EQ(stored(QStringLiteral("Exam_Type"), QStringLiteral("Summer Show")).toInt(), code::exam_type::Show);
    EXPECT_EQ(stored(QStringLiteral("Exam_Duration"), QStringLiteral("Summer Show")).toInt(), 0);
    EXPECT_DOUBLE_EQ(stored(QStringLiteral("Exam_Price"), QStringLiteral("Summer Show")).toDouble(), 12.5);
    EXPECT_FALSE(stored(QStringLiteral("Exam_Teacher"), QStringLiteral("Summer Show")).isNull());
    // The blank is now a style in use, and the record is shown with its kind and teacher.
    EXPECT_NE(screen->cmb_Style->findText(QStringLiteral(" ")), -1);
    EXPECT_EQ(screen->lst_Exam_Types->currentRow(), code::exam_type::Show);
    EXPECT_EQ(screen->cmb_Teachers->currentText(), QStringLiteral("Miss Kay"));
    EXPECT_EQ(field_colour(screen->lst_Exam_Types), colours::At_Rest);
}

TEST_F(ExamScreen, TheStoresUniqueRulesAndTheKindAreRefusedInTheScreensWords)
{
    school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")));
    open();
    EXPECT_EQ(screen->txt_Exam_Title->text(), QStringLiteral("Ballet Grade 1"));
    EXPECT_EQ(screen->lst_Exam_Types->currentRow(), code::exam_type::Exam);
    click(screen->cmd_Add);
    type_field(screen->txt_Exam_Title, QStringLiteral("Grade One Ballet"));
    type_into(screen->cmb_Style, QStringLiteral("Ballet"));
    tab_out(screen->cmb_Style);
    EXPECT_EQ(field_colour(screen->cmb_Style->lineEdit()), colours::Highlight);
    type_field(screen->txt_Level, QStringLiteral("1"));
    type_field(screen->txt_Price, QStringLiteral("30"));

    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("There must be a type"), Ok, 0);
    choose_type(code::exam_type::Unknown);
    click(screen->cmd_Update);
    boxes.expect(QStringLiteral("The Title must be unique, as must the combination of Dance and Level"), Ok, 0);
    choose_type(code::exam_type::Exam);
    click(screen->cmd_Update);
    EXPECT_EQ(screen->EditMode(), engine::editmode::Add);
    EXPECT_TRUE(screen->txt_Exam_Title->hasFocus());
    EXPECT_EQ(school.count(QStringLiteral("Exams")), 1);

    // A title is checked as soon as it is left.
    boxes.expect(QStringLiteral("The title cannot include quotes"), Ok, 0);
    type_field(screen->txt_Exam_Title, QStringLiteral("Grade \"One\""));
    boxes.expect(QStringLiteral("There must be a Title"), Ok, 0);
    type_field(screen->txt_Exam_Title, QString());
}

TEST_F(ExamScreen, AnActivityWithEntriesIsDeletedOnlyWithThemAfterTheCountIsAccepted)
{
    const int grade_1 = school.add_activity(NewActivity(QStringLiteral("Ballet Grade 1")));
    school.add_activity(NewActivity(QStringLiteral("Ballet Grade 2")).at_level(2));
    const int family = school.add_family(QStringLiteral("Ashdown"));
    school.enter(school.add_pupil(family, QStringLiteral("Amy")), grade_1, QDate(2027, 3, 13));
    school.enter(school.add_pupil(family, QStringLiteral("Ben")), grade_1, QDate(2027, 3, 13));
    open();
    const QString count = QStringLiteral("There are 2 pupils left in the register or results.\nAbout to delete them.\nContinue ?");
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to delete Ballet Grade 1"), Yes, 36).expect(count, No, 36);
    click(screen->cmd_Delete);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion abandoned"));
    EXPECT_EQ(school.count(QStringLiteral("Exam_Results")), 2);

    boxes.expect(QStringLiteral("Do you really want to delete Ballet Grade 1"), Yes, 36).expect(count, Yes, 36);
    click(screen->cmd_Delete);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Ballet Grade 1 deleted"));
    EXPECT_EQ(school.count(QStringLiteral("Exam_Results")), 0);
    EXPECT_EQ(screen->txt_Exam_Title->text(), QStringLiteral("Ballet Grade 2"));
    EXPECT_EQ(screen->cmb_Names->count(), 1);
}

}  // namespace
