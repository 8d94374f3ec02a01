// The Report Text screen: the tax options and the hidden VAT_Type they stand
// for, the single row added when a database has none, and the rate checks
// wired to the screen (their cases are standard_text_checks_test's).

#include "ui/reports/frm_standard_text.h"

#include "engine/msg_box.h"
#include "engine/recordset.h"
#include "screen_driver.h"
#include "support/scripted_boxes.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <gtest/gtest.h>

using namespace screen_driver;
using testing_support::ScriptedBoxes;

namespace {

using StandardTextScreen = ScreenTest<frm_Standard_Text>;

TEST_F(StandardTextScreen, AnOptionWritesItsVatTypeWhichUpdateStoresAndAnUnknownTypeShowsNoOption)
{
    school.set_standard(QStringLiteral("School_Name"), QStringLiteral("Bellwood"));
    school.set_standard(QStringLiteral("VAT_Type"), 0);
    open();
    EXPECT_EQ(screen->txt_School_Name->text(), QStringLiteral("Bellwood"));
    for (QRadioButton* option : {screen->Opt_VAT_None, screen->Opt_VAT_in_Total, screen->Opt_VAT_Script})
        EXPECT_FALSE(option->isChecked()) << option->objectName().toStdString();

    screen->SSTab1->setCurrentIndex(7);
    settle();
    click(screen->Opt_VAT_in_Total);
    EXPECT_EQ(screen->txt_VAT_Type->text(), QStringLiteral("2"));
    EXPECT_EQ(screen->EditMode(), engine::editmode::InProgress);
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Bellwood updated successfully"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT VAT_Type FROM Standard_Values")).toInt(), 2);
    EXPECT_EQ(screen->EditMode(), engine::editmode::None);

    // Coming back to the screen shows the stored option.
    screen->hide();
    bring_to_front(screen);
    EXPECT_TRUE(screen->Opt_VAT_in_Total->isChecked());
    EXPECT_FALSE(screen->Opt_VAT_None->isChecked());
}

TEST_F(StandardTextScreen, WithoutARowOneIsAddedAndABadRateIsRefusedWhileBlanksAreStoredAsZero)
{
    school.exec(QStringLiteral("DELETE FROM Standard_Values"));
    open();
    EXPECT_EQ(screen->EditMode(), engine::editmode::Add);
    type_into(screen->txt_School_Name, QStringLiteral("Bellwood"));
    screen->SSTab1->setCurrentIndex(0);
    type_into(screen->txt_Deflt_Course_Hourly_Rate, QStringLiteral("twelve"));
    screen->SSTab1->setCurrentIndex(6);  // the rate's tab is brought back to show it
    ScriptedBoxes().expect(QStringLiteral("The rate must be a decimal number"), engine::answer::Ok, engine::mb::OkOnly)
        .during([&] { click(screen->cmd_Update); });
    EXPECT_EQ(QApplication::focusWidget(), screen->txt_Deflt_Course_Hourly_Rate);
    EXPECT_EQ(screen->SSTab1->currentIndex(), 0);
    EXPECT_EQ(screen->txt_Deflt_Exam_Hourly_Rate->text(), QStringLiteral("0"));
    EXPECT_EQ(school.count(QStringLiteral("Standard_Values")), 0);

    retype(screen->txt_Deflt_Course_Hourly_Rate, QStringLiteral("12.5"));
    click(screen->cmd_Update);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Bellwood added successfully"));
    EXPECT_EQ(school.scalar(QStringLiteral("SELECT stndrd_id || '|' || Deflt_Course_Hourly_Rate || '|' || "
                                           "Deflt_Exam_Hourly_Rate || '|' || VAT_Percent6 FROM Standard_Values"))
                  .toString(),
              QStringLiteral("1|12.5|0|0"));
}

}  // namespace
