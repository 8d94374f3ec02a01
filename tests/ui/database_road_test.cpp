// The road of a school's database, driven from the screens: the program
// started on a fresh home, a new database created and chosen, a family and a
// pupil on a course added, a term invoiced, a backup taken and then chosen as the
// database to work on, with the family and the invoice in it.

#include "billing/invoicing_school.h"
#include "database/db_handling.h"
#include "road_steps.h"
#include "shell/app_globals.h"
#include "shell/install_folder.h"
#include "shell/single_instance.h"
#include "shell/startup.h"
#include "support/database_file.h"
#include "support/fake_locale_source.h"
#include "support/test_folder.h"
#include "ui/admin/frm_dbchange.h"
#include "ui/admin/frm_dbcontrol.h"
#include "ui/courses/frm_courses.h"
#include "ui/people/frm_family.h"
#include "ui/people/frm_pupil.h"
#include "ui/shell/frm_main_menu.h"
#include "ui/toolkit/frm_select_file.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

using namespace road_steps;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;

namespace {

class DatabaseRoad : public ::testing::Test {
protected:
    DatabaseRoad()
    {
        // A fresh home: no settings, and an install folder with the default scripts and no demo school.
        for (const char* folder : {"database", "repfmts", "scripts"})
            QDir().mkpath(install + QLatin1Char('/') + QLatin1String(folder));
        const QDir scripts(testing_support::install_scripts_folder());
        for (const QString& script : scripts.entryList({QStringLiteral("*.sql")}, QDir::Files))
            QFile::copy(scripts.filePath(script), install + QStringLiteral("/scripts/") + script);
        set_install_folder_for_tests(install);
    }
    ~DatabaseRoad() override
    {
        if (menu)
            Main_End_Prog(menu);
        settle();
        Glob_Return_Form() = nullptr;
        set_install_folder_for_tests(QString());
    }

    // A database chosen on Change Database with Display Files, and used.
    void choose_database(const QString& path)
    {
        auto* change = from_menu<frm_DBChange>(menu, "frm_DBChange");
        ASSERT_NE(change, nullptr);
        QTimer::singleShot(0, [path] {
            auto* selector = qobject_cast<frm_Select_File*>(QApplication::activeModalWidget());
            ASSERT_NE(selector, nullptr);
            selector->selectFile(path);
            selector->cmd_Select_Click();
        });
        click(change->cmd_Select);
        ScriptedBoxes().expect(QStringLiteral("The default database has been changed to ") + path).during([&] {
            click(change->cmd_Use_New);
        });
        EXPECT_TRUE(showing<frm_Main_Menu>("frm_Main_Menu"));
    }
    testing_support::TestFolder home;
    // The program's own regional settings, whatever the machine's.
    const testing_support::FakeLocaleSource regional;
    const testing_support::LocaleScope regional_scope{regional};
    const QString install = home.file(QStringLiteral("install"));
    QTemporaryDir locks;
    QPointer<frm_Main_Menu> menu;
};

TEST_F(DatabaseRoad, FromAFreshHomeToABackupChosenAsTheSchool)
{
    // The first run writes the settings and comes up without a database.
    SingleInstance instance(locks.path());
    ScriptedBoxes()
        .expect(QStringLiteral("Is this the first time that you have run this program?"), Yes)
        .expect(QStringLiteral("The default database has been changed to ") + install + QStringLiteral("/database/Demo.mdb"))
        .during([&] { ASSERT_TRUE(Main_Start(instance)); });
    menu = new frm_Main_Menu;
    bring_to_front(menu);
    EXPECT_TRUE(menu->lbl_Current_DB_Name->text().isEmpty());

    // Change Database, reached by Enter: a new school created, then used.
    QTest::keyClick(menu, Qt::Key_Return);
    auto* change = showing<frm_DBChange>("frm_DBChange");
    ASSERT_NE(change, nullptr);
    bring_to_front(change);
    const QString school = home.file(QStringLiteral("Bellevue.mdb"));
    type_into(change->txt_New_DB_Name, home.file(QStringLiteral("Bellevue")));
    click(change->cmd_CreateDB);
    EXPECT_EQ(change->txt_Status->text(), QStringLiteral("New database created"));
    ScriptedBoxes().expect(QStringLiteral("The default database has been changed to ") + school).during([&] {
        click(change->cmd_Use_New);
    });
    ASSERT_EQ(showing<frm_Main_Menu>("frm_Main_Menu"), menu);
    EXPECT_EQ(menu->lbl_Current_DB_Name->text(), QStringLiteral("Bellevue"));

    // Courses, Families and Pupils, each starting on a new record: Amy Ashby on Ballet 1 on Mondays.
    click(menu->cmd_Courses);
    auto* courses = showing<frm_Courses>("frm_Courses");
    ASSERT_NE(courses, nullptr);
    bring_to_front(courses);
    type_into(courses->txt_Course_Title, QStringLiteral("Ballet 1"));
    courses->lst_Day->setFocus(Qt::MouseFocusReason);
    QTest::mouseClick(courses->lst_Day->viewport(), Qt::LeftButton, Qt::NoModifier,
                      courses->lst_Day->visualItemRect(courses->lst_Day->item(code::weekday::Monday)).center());
    type_into(courses->txt_Duration, QStringLiteral("45"));
    type_into(courses->txt_Price, QStringLiteral("10"));
    click(courses->cmd_Update);
    EXPECT_EQ(courses->txt_Status->text(), QStringLiteral("Ballet 1 added successfully"));
    courses->mnu_Exit->trigger();
    settle();

    ScriptedBoxes().expect(QStringLiteral("There are no more records")).during([&] {
        click(menu->cmd_Families);
        if (auto* opened = showing<frm_Family>("frm_Family"))
            bring_to_front(opened);
    });
    auto* families = showing<frm_Family>("frm_Family");
    ASSERT_NE(families, nullptr);
    type_into(families->txt_Family_Name, QStringLiteral("Ashby"));
    type_into(families->txt_Address, QStringLiteral("1 High Street"));
    click(families->cmd_Update);
    EXPECT_EQ(families->txt_Status->text(), QStringLiteral("Ashby added successfully"));
    families->mnu_Exit->trigger();
    settle();

    click(menu->cmd_Pupils);
    auto* pupils = showing<frm_Pupil>("frm_Pupil");
    ASSERT_NE(pupils, nullptr);
    bring_to_front(pupils);
    type_into(pupils->txt_First_Name, QStringLiteral("Amy"));
    tab_out(pupils->txt_First_Name);
    const int ashby = pupils->cmb_Family_Names->findText(QStringLiteral("Ashby"));
    ASSERT_GE(ashby, 0);
    pupils->cmb_Family_Names->setCurrentIndex(ashby);
    emit pupils->cmb_Family_Names->activated(ashby);
    settle();
    click(pupils->cmd_Update);
    EXPECT_EQ(pupils->txt_Status->text(), QStringLiteral("Pupil updated successfully"));
    pupils->SSTab1->setCurrentIndex(2);
    settle();
    click_row(pupils->lst_Courses_Added, QStringLiteral("Ballet 1"));
    click(pupils->cmd_Update);
    pupils->mnu_Exit->trigger();
    settle();

    // The spring term, invoiced.
    ASSERT_GT(save_term(menu, QStringLiteral("Spring 2027"), QStringLiteral("04 Jan 2027"), QStringLiteral("26 Mar 2027")), 0);
    EXPECT_EQ(invoice_term(menu, QStringLiteral("Spring 2027")), QStringLiteral("Term invoices raised. Script successfully applied"));

    // Backup Database, from the Options menu.
    menu->mnu_Backup_db->trigger();
    auto* control = showing<frm_DBControl>("frm_DBControl");
    ASSERT_NE(control, nullptr);
    bring_to_front(control);
    const QString backup = home.file(QStringLiteral("Bellevue backup.mdb"));
    type_into(control->txt_New_DB_Name, backup);
    click(control->cmd_copy);
    EXPECT_EQ(control->txt_Status->text(), QStringLiteral("Successfully Copied. Please keep it in a safe place!"));
    control->mnu_Exit->trigger();
    settle();

    // The backup chosen as the school: the family and its invoice are there.
    choose_database(backup);
    EXPECT_EQ(Current_Db_Name(), backup);
    EXPECT_EQ(menu->lbl_Current_DB_Name->text(), QStringLiteral("Bellevue backup"));
    EXPECT_EQ(testing_support::value_in(backup, QStringLiteral("SELECT count(*) FROM Pupils P INNER JOIN Families F ON F.Family_id = P.Pupil_Family_Id "
                                    "WHERE F.Family_Name = 'Ashby' AND P.Pupil_FirstName = 'Amy'")),
              QStringLiteral("1"));
    EXPECT_EQ(testing_support::value_in(backup, QStringLiteral("SELECT L.Description FROM Invoices I "
                                                               "INNER JOIN Term_Dates T ON T.Term_id = I.Invoice_Term_id "
                                                               "INNER JOIN Invoice_Lines L ON L.Inv_Line_Inv_id = I.Invoice_id "
                                                               "WHERE T.Term_Name = 'Spring 2027'")),
              QStringLiteral("Amy's Ballet 1"));
}

}  // namespace
