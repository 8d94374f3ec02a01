// The Families screen: its own rules on top of the record-editing pattern,
// its members list and the removal of empty families.

#include "ui/people/frm_family.h"

#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace screen_driver;
using engine::answer::No;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

class FamiliesScreen : public ScreenTest<frm_Family> {
protected:
    frm_Family* open(const QString& xfer_id = QString())
    {
        screen = new frm_Family;
        screen->txt_Xfer_Id->setText(xfer_id);
        bring_to_front(screen);
        return screen;
    }
    QStringList members() const { return entries(screen->lst_Members); }
    QStringList families() const { return entries(screen->cmb_Names); }
};

TEST_F(FamiliesScreen, TheMembersListShowsThePupilsOrNone)
{
    const int archer = school.add_family(QStringLiteral("Archer"));
    school.add_pupil(archer, QStringLiteral("Lily"));
    school.add_pupil(archer, QStringLiteral("Tom"));
    school.add_family(QStringLiteral("Brown"));
    open();
    EXPECT_EQ(members(), (QStringList{QStringLiteral("Lily"), QStringLiteral("Tom")}));
    click(screen->cmd_Next);
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Brown"));
    EXPECT_EQ(members(), QStringList{QStringLiteral("(None)")});
    click(screen->cmd_Add);
    EXPECT_TRUE(members().isEmpty());
}

// The screen opens at the family whose key it was given; a post code typed
// in lower case is stored in capitals.
TEST_F(FamiliesScreen, OpensAtTheFamilyWhoseKeyItWasGivenAndStoresAPostCodeInCapitals)
{
    school.add_family(QStringLiteral("Archer"));
    const int brown = school.add_family(QStringLiteral("Brown"));
    open(QString::number(brown));
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Brown"));
    EXPECT_EQ(screen->cmb_Names->currentText(), QStringLiteral("Brown"));
    type_into(screen->txt_Post_Code, QStringLiteral("ba1 2cd"));
    tab_out(screen->txt_Post_Code);
    EXPECT_EQ(screen->txt_Post_Code->text(), QStringLiteral("BA1 2CD"));
    EXPECT_EQ(screen->EditMode(), engine::editmode::InProgress);
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Brown updated successfully"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT Family_PostCode FROM Families WHERE Family_id = %1").arg(brown)).toString(),
              QStringLiteral("BA1 2CD"));
}

// The refusal of the same name and address is the record pattern's.
TEST_F(FamiliesScreen, TheSameNameAtAnotherAddressIsAdded)
{
    school.add_family(QStringLiteral("Archer"), QStringLiteral("3 Elm Road"));
    open();
    click(screen->cmd_Add);
    type_into(screen->txt_Family_Name, QStringLiteral("Archer"));
    type_into(screen->txt_Address, QStringLiteral("8 Oak Way"));
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Archer added successfully"));
    EXPECT_EQ(school.count(QStringLiteral("Families")), 2);
    // The search by name lands on the first Archer: that is accepted.
    EXPECT_EQ(screen->txt_Address->text(), QStringLiteral("3 Elm Road"));
}

TEST_F(FamiliesScreen, DeletingAFamilyTakesItsPupilsAndLandsOnTheNextByName)
{
    school.add_family(QStringLiteral("Archer"));
    const int brown = school.add_family(QStringLiteral("Brown"));
    school.add_pupil(brown, QStringLiteral("Sam"));
    school.add_family(QStringLiteral("Carter"));
    open();
    click(screen->cmd_Next);
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete Brown"), Yes)
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Brown deleted"));
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Carter"));
    EXPECT_EQ(families(), (QStringList{QStringLiteral("Archer"), QStringLiteral("Carter")}));
    EXPECT_EQ(school.count(QStringLiteral("Pupils")), 0);
}

TEST_F(FamiliesScreen, AFamilyWithInvoicesIsNotDeleted)
{
    const int archer = school.add_family(QStringLiteral("Archer"));
    school.add_invoice(archer);
    open();
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete Archer"), Yes)
        .expect(QStringLiteral("There are 1 invoices that reference this Family."))
        .during([&] { click(screen->cmd_Delete); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Deletion Abandoned"));
    EXPECT_EQ(school.count(QStringLiteral("Families")), 1);
}

// Removing empty families asks first, then for each, and a No keeps that
// one; with none left empty, nothing is deleted.
TEST_F(FamiliesScreen, RemovingEmptyFamiliesAsksForEachAndANoKeepsThatOne)
{
    const int archer = school.add_family(QStringLiteral("Archer"));
    const int brown = school.add_family(QStringLiteral("Brown"));
    school.add_pupil(brown, QStringLiteral("Sam"));
    school.add_family(QStringLiteral("Carter"));
    school.add_family(QStringLiteral("Dale"));
    open();
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete all families"), No)
        .during([&] { click(screen->cmd_Remove); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Removal cancelled"));
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete all families where there are no pupils?"), Yes,
                           engine::mb::YesNo | engine::mb::Question)
        .expect(QStringLiteral("Do you really want to delete  Archer"), No)
        .expect(QStringLiteral("Do you really want to delete  Carter"), Yes)
        .expect(QStringLiteral("Do you really want to delete  Dale"), Yes)
        .during([&] { click(screen->cmd_Remove); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Carter, Dale,  deleted"));
    EXPECT_EQ(families(), (QStringList{QStringLiteral("Archer"), QStringLiteral("Brown")}));
    EXPECT_EQ(screen->txt_Family_Name->text(), QStringLiteral("Archer"));
    EXPECT_EQ(screen->cmb_Names->currentText(), QStringLiteral("Archer"));

    school.add_pupil(archer, QStringLiteral("Lily"));
    ScriptedBoxes().expect(QStringLiteral("Do you really want to delete all families"), Yes)
        .during([&] { click(screen->cmd_Remove); });
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral(" deleted"));
    EXPECT_EQ(school.count(QStringLiteral("Families")), 2);
}

}  // namespace
