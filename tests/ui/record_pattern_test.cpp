// The record-editing pattern as a secretary meets it on every screen built on
// it: each screen gives its words, a way to store one record and one field to
// type into; the cases are the same for all.

#include "ui/courses/frm_courses.h"
#include "ui/people/frm_family.h"
#include "ui/people/frm_teachers.h"

#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "support/new_course_and_activity.h"
#include "support/scripted_boxes.h"
#include "ui/toolkit/screen_kit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::CurrentSchool;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

struct Teachers {
    using Screen = frm_Teachers;
    static constexpr const char* noun = "Teacher";
    static constexpr const char* title_words = "Teaching Name";
    static constexpr const char* table = "Teachers";
    static constexpr const char* column = "Teacher_SurName";
    static constexpr const char* title_missing = "There must be a Teaching name";
    static constexpr const char* title_quotes = "The teaching name cannot include quotes";
    static constexpr const char* duplicate = "The Teaching Name must be unique";
    static constexpr bool says_when_empty = false;
    static void add(CurrentSchool& school, const QString& name) { school.add_teacher(name); }
    static QLineEdit* title(Screen* s) { return s->txt_Nickname; }
    static QLineEdit* first_field(Screen* s) { return s->txt_Name; }
    static QLineEdit* field(Screen* s) { return s->txt_Surname; }
};

struct Families {
    using Screen = frm_Family;
    static constexpr const char* noun = "Family";
    static constexpr const char* title_words = "Family Name";
    static constexpr const char* table = "Families";
    static constexpr const char* column = "Family_Phone_1";
    static constexpr const char* title_missing = "There must be a Family Name";
    static constexpr const char* title_quotes = "The name cannot include quotes";
    static constexpr const char* duplicate = "The Family Name and Address must be unique";
    static constexpr bool says_when_empty = true;  // "There are no more records" on opening
    static void add(CurrentSchool& school, const QString& name) { school.add_family(name); }
    static QLineEdit* title(Screen* s) { return s->txt_Family_Name; }
    static QLineEdit* first_field(Screen* s) { return s->txt_Family_Name; }
    static QLineEdit* field(Screen* s) { return s->txt_Phone_1; }
};

struct Courses {
    using Screen = frm_Courses;
    static constexpr const char* noun = "Course";
    static constexpr const char* title_words = "Course Title";
    static constexpr const char* table = "Courses";
    static constexpr const char* column = "Course_Location";
    static constexpr const char* title_missing = "There must be a Course Title";
    static constexpr const char* title_quotes = "The title cannot include quotes";
    static constexpr const char* duplicate = "The Course Title must be unique";
    static constexpr bool says_when_empty = false;
    static void add(CurrentSchool& school, const QString& name) { school.add_course(NewCourse(name)); }
    static QLineEdit* title(Screen* s) { return s->txt_Course_Title; }
    static QLineEdit* first_field(Screen* s) { return s->txt_Course_Title; }
    static QLineEdit* field(Screen* s) { return s->txt_Location; }
};

template <typename Kind>
class RecordPattern : public ScreenTest<typename Kind::Screen> {
protected:
    using Screen = typename Kind::Screen;
    using ScreenTest<Screen>::school;
    using ScreenTest<Screen>::screen;
    using ScreenTest<Screen>::menu;
    using ScreenTest<Screen>::open;

    Screen* open_empty()
    {
        ScriptedBoxes boxes;
        if (Kind::says_when_empty)
            boxes.expect(QStringLiteral("There are no more records"));
        return open();
    }
    // "Ada" and "Bea" stored, the screen open at Ada.
    void open_with_two()
    {
        Kind::add(school, QStringLiteral("Ada"));
        Kind::add(school, QStringLiteral("Bea"));
        open();
    }
    QString shown() const { return Kind::title(screen)->text(); }
    QLineEdit* field() const { return Kind::field(screen); }
    QString status() const { return screen->txt_Status->text(); }
    // The field as stored for Ada, the first record.
    QVariant stored_field()
    {
        return school.scalar(QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid LIMIT 1")
                                 .arg(QString::fromLatin1(Kind::column), QString::fromLatin1(Kind::table)));
    }
    int stored_count() { return school.count(QString::fromLatin1(Kind::table)); }
    void change_field()
    {
        type_into(field(), QStringLiteral("Ward"));
        tab_out(field());
    }
};

using PatternScreens = ::testing::Types<Teachers, Families, Courses>;
TYPED_TEST_SUITE(RecordPattern, PatternScreens);

TYPED_TEST(RecordPattern, AnEmptyTableOpensReadyToAddAndTypingWithoutAddNewIsRefusedAndUndone)
{
    this->open_empty();
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::Add);
    EXPECT_EQ(this->status(), QStringLiteral("Adding a new ") + QString::fromLatin1(TypeParam::noun));
    EXPECT_EQ(QApplication::focusWidget(), TypeParam::first_field(this->screen));

    // Typing once the addition is cancelled is refused and undone.
    click(this->screen->cmd_Cancel);
    EXPECT_EQ(this->status(), QStringLiteral("Addition cancelled"));
    ScriptedBoxes().expect(QStringLiteral("There is no record to edit. \nChoose a %1 to edit, or press Add New")
                           .arg(QString::fromLatin1(TypeParam::title_words)),
                           Yes, engine::mb::OkOnly)
        .during([&] { this->change_field(); });
    EXPECT_EQ(this->field()->text(), QString());
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::None);
    EXPECT_EQ(this->stored_count(), 0);
}

TYPED_TEST(RecordPattern, TheCommandsAndTheListMoveThroughTheRecordsAndANoToDeletingKeepsOne)
{
    this->open_with_two();
    EXPECT_EQ(this->screen->cmb_Names->count(), 2);
    click(this->screen->cmd_Last);
    EXPECT_EQ(this->shown(), QStringLiteral("Bea"));
    click(this->screen->cmd_Next);  // no box is scripted: none may appear
    EXPECT_EQ(this->status(), QStringLiteral("There are no more records"));
    EXPECT_EQ(this->shown(), QStringLiteral("Bea"));
    EXPECT_EQ(this->screen->cmb_Names->currentText(), QStringLiteral("Bea"));
    click(this->screen->cmd_First);
    EXPECT_EQ(this->status(), QString());
    click(this->screen->cmd_Prev);
    EXPECT_EQ(this->status(), QStringLiteral("There are no more records"));
    EXPECT_EQ(this->shown(), QStringLiteral("Ada"));

    // A No to the deletion question keeps the record.
    ScriptedBoxes()
        .expect(QStringLiteral("Do you really want to delete Ada"), No, engine::mb::YesNo | engine::mb::Question)
        .during([&] { click(this->screen->cmd_Delete); });
    EXPECT_EQ(this->status(), QStringLiteral("Deletion cancelled"));
    EXPECT_EQ(this->stored_count(), 2);
    EXPECT_EQ(this->shown(), QStringLiteral("Ada"));

    this->screen->cmb_Names->setFocus();
    QTest::keyClick(this->screen->cmb_Names, Qt::Key_Down);
    settle();
    EXPECT_EQ(this->shown(), QStringLiteral("Bea"));
}

TYPED_TEST(RecordPattern, LeavingAChangedFieldStartsAnEditInLightBlueAndUpdateStoresIt)
{
    this->open_with_two();
    type_into(this->field(), QStringLiteral("Ward"));
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::None);
    tab_out(this->field());
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::InProgress);
    EXPECT_EQ(field_colour(this->field()), colours::Highlight);
    EXPECT_EQ(field_colour(TypeParam::title(this->screen)), colours::At_Rest);

    click(this->screen->cmd_Update);
    EXPECT_EQ(this->status(), QStringLiteral("Ada updated successfully"));
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::None);
    EXPECT_EQ(field_colour(this->field()), colours::At_Rest);
    EXPECT_EQ(this->stored_field().toString(), QStringLiteral("Ward"));
}

TYPED_TEST(RecordPattern, WhileChangesAreOutstandingMovingAddingAndDeletingAreRefusedAndCancelPutsBackTheRecord)
{
    this->open_with_two();
    this->change_field();
    ScriptedBoxes().expect(QStringLiteral("There are changes outstanding - cannot move"))
        .expect(QStringLiteral("There are changes already in progress"))
        .expect(QStringLiteral("There are changes in progress - cannot delete"))
        .expect(QStringLiteral("There are outstanding changes."))
        .during([&] {
            click(this->screen->cmd_Next);
            click(this->screen->cmd_Add);
            click(this->screen->cmd_Delete);
            this->screen->cmb_Names->setFocus();
            QTest::keyClick(this->screen->cmb_Names, Qt::Key_Down);
            settle();
        });
    EXPECT_EQ(this->screen->cmb_Names->currentText(), QStringLiteral("Ada"));
    EXPECT_EQ(this->shown(), QStringLiteral("Ada"));
    EXPECT_EQ(this->field()->text(), QStringLiteral("Ward"));
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::InProgress);
    EXPECT_EQ(this->stored_count(), 2);

    // Cancel puts back what the record holds; then nothing changed is nothing to do.
    click(this->screen->cmd_Cancel);
    EXPECT_EQ(this->status(), QStringLiteral("Change cancelled"));
    EXPECT_EQ(this->field()->text(), QString());
    EXPECT_EQ(field_colour(this->field()), colours::At_Rest);
    EXPECT_TRUE(this->stored_field().isNull());
    click(this->screen->cmd_Cancel);
    EXPECT_EQ(this->status(), QStringLiteral("Nothing to cancel"));
    click(this->screen->cmd_Update);
    EXPECT_EQ(this->status(), QStringLiteral("No changes to update"));
}

TYPED_TEST(RecordPattern, AddNewStartsBlankAndUpdateAddsTheRecordToTheList)
{
    this->open_with_two();
    click(this->screen->cmd_Add);
    EXPECT_EQ(this->status(), QStringLiteral("Adding a new ") + QString::fromLatin1(TypeParam::noun));
    EXPECT_EQ(this->shown(), QString());
    type_into(TypeParam::title(this->screen), QStringLiteral("Cy"));
    tab_out(TypeParam::title(this->screen));
    EXPECT_EQ(field_colour(TypeParam::title(this->screen)), colours::Highlight);
    if constexpr (std::is_same_v<TypeParam, Courses>) {
        type_into(this->screen->txt_Duration, QStringLiteral("30"));
        QListWidget* days = this->screen->lst_Day;
        days->setFocus(Qt::MouseFocusReason);
        QTest::mouseClick(days->viewport(), Qt::LeftButton, Qt::NoModifier,
                          days->visualItemRect(days->item(code::weekday::Monday)).center());
        settle();
    }
    click(this->screen->cmd_Update);
    EXPECT_EQ(this->status(), QStringLiteral("Cy added successfully"));
    EXPECT_EQ(this->screen->cmb_Names->count(), 3);
    EXPECT_EQ(this->screen->cmb_Names->currentText(), QStringLiteral("Cy"));
    EXPECT_EQ(this->stored_count(), 3);
}

TYPED_TEST(RecordPattern, ATitleIsRequiredAndMayNotHoldQuotesAndNothingIsStored)
{
    this->open_with_two();
    const QString before = this->school.dump();
    click(this->screen->cmd_Add);
    type_into(this->field(), QStringLiteral("Ward"));
    ScriptedBoxes().expect(QString::fromLatin1(TypeParam::title_missing), Yes, engine::mb::OkOnly)
        .during([&] { click(this->screen->cmd_Update); });
    EXPECT_EQ(QApplication::focusWidget(), TypeParam::title(this->screen));
    TypeParam::title(this->screen)->setText(QStringLiteral("O\"Neil"));
    // Pressed by program: a click would leave the title and have it checked there first.
    ScriptedBoxes().expect(QString::fromLatin1(TypeParam::title_quotes), Yes, engine::mb::OkOnly)
        .during([&] { this->screen->cmd_Update_Click(); });
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::Add);
    EXPECT_EQ(this->school.dump().toStdString(), before.toStdString());
}

TYPED_TEST(RecordPattern, ADuplicateIsRefusedWithTheScreensWordsAndTheEditGoesOn)
{
    this->open_with_two();
    click(this->screen->cmd_Next);
    retype(TypeParam::title(this->screen), QStringLiteral("Ada"));
    tab_out(TypeParam::title(this->screen));
    ASSERT_EQ(this->screen->EditMode(), engine::editmode::InProgress);
    ScriptedBoxes().expect(QString::fromLatin1(TypeParam::duplicate), Yes, engine::mb::OkOnly)
        .during([&] { click(this->screen->cmd_Update); });
    EXPECT_EQ(this->screen->EditMode(), engine::editmode::InProgress);
    EXPECT_EQ(QApplication::focusWidget(), TypeParam::title(this->screen));
    EXPECT_EQ(field_colour(TypeParam::title(this->screen)), colours::Highlight);

    retype(TypeParam::title(this->screen), QStringLiteral("Beatrix"));
    click(this->screen->cmd_Update);
    EXPECT_EQ(this->status(), QStringLiteral("Beatrix updated successfully"));
    EXPECT_EQ(this->screen->cmb_Names->currentText(), QStringLiteral("Beatrix"));
}

// Exit and the window's close box ask about a change still in its field: Yes
// saves and stays, No drops it and goes back to the menu.
TYPED_TEST(RecordPattern, LeavingWithAChangeStillInItsFieldAsksFirst)
{
    this->open_with_two();
    type_into(this->field(), QStringLiteral("Ward"));
    ScriptedBoxes().expect(QStringLiteral("You have made changes that have not been stored in the database.\n"
                                          "Do you wish to save the changes?"),
                           Yes, engine::mb::YesNo | engine::mb::Question)
        .during([&] { this->screen->close(); settle(); });
    ASSERT_TRUE(this->screen);
    EXPECT_TRUE(this->screen->isVisible());
    EXPECT_EQ(this->status(), QStringLiteral("Ada updated successfully"));
    EXPECT_EQ(this->stored_field().toString(), QStringLiteral("Ward"));

    retype(this->field(), QStringLiteral("Smith"));
    ScriptedBoxes().expect(QStringLiteral("You have made changes"), No)
        .during([&] { this->screen->mnu_Exit->trigger(); settle(); });
    EXPECT_FALSE(this->screen);
    EXPECT_TRUE(this->menu.isVisible());
    EXPECT_EQ(this->stored_field().toString(), QStringLiteral("Ward"));
}

}  // namespace
