// The Pupil Details screen: a pupil and a family added and found again, the
// refusal of a second pupil of one name in a family, hidden pupils, moving a
// pupil to another family, registers changed from the Courses page, the
// question on leaving, and the hand-over to the Invoices screen and back.
// What the writes and checks do in detail is tested in tests/people.

#include "ui/people/frm_pupil.h"

#include "engine/msg_box.h"
#include "people/pupil_gender.h"
#include "screen_driver.h"
#include "shell/selection_lists.h"
#include "shell/transfer_ids.h"
#include "support/new_course_and_activity.h"
#include "support/scripted_boxes.h"
#include "ui/billing/frm_invoices.h"
#include "ui/shell/screen_catalogue.h"
#include "ui/toolkit/data_grid.h"
#include "ui/toolkit/screen_kit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Ok;
using engine::answer::Yes;
using testing_support::NewCourse;
using testing_support::ScriptedBoxes;

namespace {

const int family_page = 0;
const int pupil_page = 1;
const int courses_page = 2;
const int accounts_page = 5;

class PupilScreen : public ScreenTest<frm_Pupil> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        Glob_Xfer_Pupil_id() = -1;
        Glob_Xfer_Family_id() = -1;
        Glob_Xfer_Invoice_id() = -1;
    }
    void TearDown() override
    {
        if (QWidget* invoices = Loaded_Screen(QStringLiteral("frm_Invoices")))
            Unload(invoices);
        Glob_Xfer_Pupil_id() = -1;
        Glob_Xfer_Family_id() = -1;
        Glob_Xfer_Invoice_id() = -1;
        Glob_Keep_Changed_List() = false;
        Changed_Pupils().reset();
        ScreenTest::TearDown();
    }

    void show_page(int page)
    {
        screen->SSTab1->setCurrentIndex(page);
        settle();
    }

    // A family chosen from the list of families, as a click on an entry does.
    void choose_family(const QString& name)
    {
        const int index = screen->cmb_Family_Names->findText(name);
        ASSERT_GE(index, 0) << name.toStdString();
        screen->cmb_Family_Names->setCurrentIndex(index);
        emit screen->cmb_Family_Names->activated(index);
        settle();
    }

    void choose_pupil(const QString& name)
    {
        const int index = screen->cmb_Navigation->findText(name);
        ASSERT_GE(index, 0) << name.toStdString();
        screen->cmb_Navigation->setCurrentIndex(index);
        emit screen->cmb_Navigation->activated(index);
        settle();
    }

    QStringList pupils_listed() const
    {
        QStringList names;
        for (int i = 0; i < screen->cmb_Navigation->count(); ++i)
            names << screen->cmb_Navigation->itemText(i);
        return names;
    }

    int on_register(int pupil, int course)
    {
        return school
            .scalar(QStringLiteral("SELECT count(*) FROM Register_Courses WHERE Pupil_id = %1 AND Course_id = %2")
                        .arg(pupil)
                        .arg(course))
            .toInt();
    }

    int archer = school.add_family(QStringLiteral("Archer"));
    int lily = school.add_pupil(archer, QStringLiteral("Lily"));
};

TEST_F(PupilScreen, ANewPupilWithANewFamilyIsSavedAndFoundInTheList)
{
    open();
    EXPECT_EQ(screen->cmb_Navigation->currentText(), QStringLiteral("ARCHER Lily"));
    click(screen->cmd_Add);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Pupil"));
    // The family's fields wait for a family.
    EXPECT_TRUE(screen->family_locked());
    type_into(screen->txt_First_Name, QStringLiteral("Sam"));
    tab_out(screen->txt_First_Name);
    type_into(screen->txt_Family_Name, QStringLiteral("Baker"));
    QTest::keyClick(screen->txt_Family_Name, Qt::Key_Return);
    settle();
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Adding a new Family"));
    EXPECT_FALSE(screen->family_locked());
    EXPECT_EQ(screen->SSTab1->currentIndex(), family_page);
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Address);
    QTest::keyClicks(screen->txt_Address, QStringLiteral("1 Mill Lane"));
    tab_out(screen->txt_Address);
    EXPECT_EQ(field_colour(screen->txt_Address), colours::Highlight);
    show_page(pupil_page);
    click(screen->Opt_Male);
    EXPECT_EQ(screen->txt_Gender->text(), QStringLiteral("M"));
    EXPECT_TRUE(screen->Family_Changed);
    EXPECT_TRUE(screen->Pupil_Changed);

    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupil updated successfully"));
    EXPECT_FALSE(screen->Family_Changed);
    EXPECT_FALSE(screen->Pupil_Changed);
    const int baker = school.scalar(QStringLiteral("SELECT Family_id FROM Families WHERE Family_Name = 'Baker'")).toInt();
    ASSERT_GT(baker, 0);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Family_Address FROM Families WHERE Family_id = %1").arg(baker)).toString(),
              QStringLiteral("1 Mill Lane"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Pupil_Gender FROM Pupils WHERE Pupil_FirstName = 'Sam' AND Pupil_Family_id = %1")
                                .arg(baker))
                  .toString(),
              QStringLiteral("M"));
    EXPECT_EQ(pupils_listed(), (QStringList{QStringLiteral("ARCHER Lily"), QStringLiteral("BAKER Sam")}));
    EXPECT_EQ(screen->cmb_Navigation->currentText(), QStringLiteral("BAKER Sam"));
    EXPECT_EQ(screen->txt_Family_id->text().toInt(), baker);
    EXPECT_EQ(field_colour(screen->txt_Address), colours::At_Rest);
    EXPECT_GE(screen->cmb_Family_Names->findText(QStringLiteral("Baker")), 0);
}

TEST_F(PupilScreen, ASecondPupilOfTheSameFirstNameInAFamilyIsRefused)
{
    open();
    click(screen->cmd_Add);
    type_into(screen->txt_First_Name, QStringLiteral("Lily"));
    tab_out(screen->txt_First_Name);
    // A family name typed in another case is the family already there.
    type_into(screen->txt_Family_Name, QStringLiteral("archer"));
    QTest::keyClick(screen->txt_Family_Name, Qt::Key_Return);
    settle();
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Archer"));
    EXPECT_EQ(screen->txt_Family_id->text().toInt(), archer);
    EXPECT_FALSE(screen->Family_Changed);

    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This pupil already exists"), Ok);
    click(screen->cmd_Update);
    EXPECT_TRUE(boxes.all_shown());
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Error updating pupil"));
    EXPECT_TRUE(screen->Pupil_Changed);
    EXPECT_EQ(school.count(QStringLiteral("Pupils")), 1);

    // The add can be given up, and the pupil shown before comes back.
    click(screen->cmd_Cancel);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Add Pupil cancelled"));
    EXPECT_EQ(screen->txt_Pupil_id->text().toInt(), lily);
}

TEST_F(PupilScreen, AHiddenPupilIsListedHereAndShownAsHidden)
{
    const int tom = school.add_pupil(archer, QStringLiteral("Tom"), code::gender::Hidden_Male);
    open();
    EXPECT_EQ(pupils_listed(), (QStringList{QStringLiteral("ARCHER Lily"), QStringLiteral("ARCHER Tom")}));
    EXPECT_EQ(screen->Shape_Gender->colour(), gender_colour::Female);
    EXPECT_FALSE(screen->Shape_Gender->cross_hatched());
    click(screen->cmd_Next);
    EXPECT_EQ(screen->txt_Pupil_id->text().toInt(), tom);
    EXPECT_TRUE(screen->Opt_Male->isChecked());
    EXPECT_TRUE(screen->Chk_Hidden->isChecked());
    EXPECT_EQ(screen->Shape_Gender->colour(), gender_colour::Male);
    EXPECT_TRUE(screen->Shape_Gender->cross_hatched());
    EXPECT_FALSE(screen->Pupil_Changed);

    // Taking the tick off brings him back onto the lists.
    show_page(pupil_page);
    click(screen->Chk_Hidden);
    EXPECT_EQ(screen->txt_Gender->text(), QStringLiteral("M"));
    EXPECT_FALSE(screen->Shape_Gender->cross_hatched());
    EXPECT_TRUE(screen->Pupil_Changed);
    click(screen->cmd_Update);
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Pupil_Gender FROM Pupils WHERE Pupil_id = %1").arg(tom)).toString(),
              QStringLiteral("M"));
    EXPECT_EQ(screen->txt_Pupil_id->text().toInt(), tom);
}

TEST_F(PupilScreen, APupilMovedToAnotherFamilyKeepsItsRegisters)
{
    const int brown = school.add_family(QStringLiteral("Brown"));
    const int ballet = school.add_course(NewCourse(QStringLiteral("Ballet")));
    school.put_on_course(lily, ballet);
    open();
    choose_family(QStringLiteral("Brown"));
    EXPECT_EQ(screen->txt_Family_id->text().toInt(), brown);
    EXPECT_EQ(field_colour(screen->txt_Family_Name), colours::Highlight);
    EXPECT_TRUE(screen->Pupil_Changed);
    EXPECT_FALSE(screen->Family_Changed);

    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupil updated successfully"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Pupil_Family_id FROM Pupils WHERE Pupil_id = %1").arg(lily)).toInt(), brown);
    EXPECT_EQ(on_register(lily, ballet), 1);
    EXPECT_EQ(screen->cmb_Navigation->currentText(), QStringLiteral("BROWN Lily"));
    EXPECT_EQ(row_showing(screen->DBGrid_Courses_Taken, QStringLiteral("Ballet")), 0);
    EXPECT_EQ(field_colour(screen->txt_Family_Name), colours::At_Rest);
}

TEST_F(PupilScreen, ACourseAddedAndRemovedPutsThePupilOnceInTheChangedList)
{
    const int ballet = school.add_course(NewCourse(QStringLiteral("Ballet")));
    school.add_course(NewCourse(QStringLiteral("Tap")));
    Glob_Keep_Changed_List() = true;
    Changed_Pupils().reset();
    open();
    show_page(courses_page);
    click_row(screen->lst_Courses_Added, QStringLiteral("Ballet"));
    click(screen->cmd_Update);
    EXPECT_EQ(on_register(lily, ballet), 1);
    EXPECT_TRUE(screen->lst_Courses_Added->selectedItems().isEmpty());
    ASSERT_EQ(row_showing(screen->DBGrid_Courses_Taken, QStringLiteral("Ballet")), 0);

    show_page(courses_page);
    click_row(screen->DBGrid_Courses_Taken, QStringLiteral("Ballet"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to remove the pupil from the Register(s)?"), Yes, engine::mb::YesNo);
    click(screen->cmd_Reg_Delete);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Pupil successfully deleted from the Register"));
    EXPECT_EQ(on_register(lily, ballet), 0);
    EXPECT_EQ(screen->DBGrid_Courses_Taken->model()->rowCount(), 0);
    EXPECT_EQ(Changed_Pupils().chosen(), QVector<qint32>{lily});
}

TEST_F(PupilScreen, ACourseChosenCountsAsAChangeSoExitAsks)
{
    const int ballet = school.add_course(NewCourse(QStringLiteral("Ballet")));
    open();
    show_page(courses_page);
    click_row(screen->lst_Courses_Added, QStringLiteral("Ballet"));
    {
        // Yes saves, and the screen stays to show how that went.
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("You have made changes that have not been stored in the database."), Yes, 36);
        screen->mnu_Exit->trigger();
        settle();
        EXPECT_TRUE(boxes.all_shown());
    }
    ASSERT_TRUE(screen);
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(on_register(lily, ballet), 1);

    show_page(courses_page);
    click_row(screen->lst_Courses_Added, QStringLiteral("Ballet"));
    {
        // No leaves without saving.
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Do you wish to save the changes?"), No, 36);
        screen->mnu_Exit->trigger();
        settle();
        EXPECT_TRUE(boxes.all_shown());
    }
    EXPECT_TRUE(!screen || !screen->isVisible());
    EXPECT_EQ(on_register(lily, ballet), 1);
}

TEST_F(PupilScreen, DeletingTheOnlyPupilKeepsTheFamilyAndEmptiesTheList)
{
    open();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Do you really want to delete Lily Archer"), Yes, 36);
    click(screen->cmd_Delete);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Lily Archer deleted but the Family still exists"));
    EXPECT_EQ(school.count(QStringLiteral("Pupils")), 0);
    EXPECT_EQ(school.count(QStringLiteral("Families")), 1);
    EXPECT_EQ(screen->cmb_Navigation->count(), 0);
    EXPECT_TRUE(screen->txt_First_Name->text().isEmpty());
}

TEST_F(PupilScreen, ViewInvoiceHandsOverToTheInvoicesScreenAndComesBackToThePupil)
{
    const int brown = school.add_family(QStringLiteral("Brown"));
    const int sam = school.add_pupil(brown, QStringLiteral("Sam"));
    const int spring = school.add_invoice(brown, QStringLiteral("Spring fees"));
    school.add_line(spring, 40);
    const int summer = school.add_invoice(brown, QStringLiteral("Summer fees"));
    school.add_line(summer, 55);
    open();
    Glob_Return_Form() = screen;  // as the menu leaves it when it opens the screen
    choose_pupil(QStringLiteral("BROWN Sam"));
    show_page(accounts_page);
    ASSERT_EQ(screen->DBGrid_Accounts->model()->rowCount(), 2);

    // Nothing chosen yet: the screen says so.
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Please select an invoice"));
        click(screen->cmd_Invoice_Receipt[1]);
    }
    click_row(screen->DBGrid_Accounts, QStringLiteral("Summer fees"), false, 1);
    click(screen->cmd_Invoice_Receipt[1]);
    QTest::qWait(50);
    settle();
    EXPECT_EQ(Glob_Xfer_Invoice_id(), summer);
    EXPECT_EQ(Glob_Xfer_Family_id(), brown);
    EXPECT_EQ(Glob_Xfer_Pupil_id(), sam);
    auto* invoices = qobject_cast<frm_Invoices*>(Loaded_Screen(QStringLiteral("frm_Invoices")));
    ASSERT_NE(invoices, nullptr);
    EXPECT_TRUE(invoices->isVisible());
    EXPECT_FALSE(screen->isVisible());
    EXPECT_EQ(invoices->txt_Family_Name->text(), QStringLiteral("Brown"));
    EXPECT_EQ(invoices->chosen_invoice_id(), summer);

    // Back on this screen, the same pupil is shown.
    invoices->mnu_Exit->trigger();
    settle();
    QTest::qWait(50);
    settle();
    ASSERT_TRUE(screen->isVisible());
    EXPECT_EQ(screen->txt_Pupil_id->text().toInt(), sam);
    EXPECT_EQ(screen->cmb_Navigation->currentText(), QStringLiteral("BROWN Sam"));
}

}  // namespace
