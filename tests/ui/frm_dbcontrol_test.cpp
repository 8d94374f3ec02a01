// The Database Control screen offers the one command its option names, as
// the main menu sets it; a backup taken there is a database the command-line
// tool accepts, and the Database information screen shows it as the last.

#include "ui/admin/frm_db_stats.h"
#include "ui/admin/frm_dbcontrol.h"

#include "database/db_handling.h"
#include "screen_driver.h"
#include "shell/settings.h"
#include "support/cli_runner.h"
#include "ui/shell/screen_catalogue.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <gtest/gtest.h>

using namespace screen_driver;

namespace {

class DBControlScreen : public ScreenTest<frm_DBControl> {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        Settings().default_database = school.path();
    }
    // Opened as the main menu opens it, with the option set first.
    frm_DBControl* open_with(const QString& option)
    {
        screen = qobject_cast<frm_DBControl*>(Go_To_Screen(&menu, QStringLiteral("frm_DBControl"), [&](QWidget* loaded) {
            loaded->findChild<QRadioButton*>(option)->setChecked(true);
        }));
        if (screen)
            bring_to_front(screen);
        return screen;
    }
};

TEST_F(DBControlScreen, EachOptionOffersOnlyItsCommand)
{
    const std::pair<const char*, const char*> offers[] = {
        {"opt_refresh", "cmd_Refresh"}, {"opt_repair", "cmd_Repair_DB"}, {"opt_backup", "cmd_copy"}, {"opt_Upgrade", "cmd_upgrade"}};
    for (const auto& [option, command] : offers) {
        SCOPED_TRACE(option);
        ASSERT_NE(open_with(QString::fromLatin1(option)), nullptr);
        QStringList shown;
        for (QPushButton* button : {screen->cmd_Refresh, screen->cmd_Repair_DB, screen->cmd_copy, screen->cmd_upgrade})
            if (button->isVisible())
                shown << button->objectName();
        EXPECT_EQ(shown, QStringList{QString::fromLatin1(command)});
        EXPECT_EQ(screen->lbl_backup->isVisible(), QLatin1String(option) == QLatin1String("opt_backup"));
        EXPECT_NE(screen->lbl_working->isVisible(), screen->lbl_backup->isVisible());
        screen->mnu_Exit->trigger();
        settle();
    }
}

TEST_F(DBControlScreen, ABackupOfTheOpenDatabaseIsADatabaseTheToolAcceptsAndIsShownAsTheLast)
{
    ASSERT_NE(open_with(QStringLiteral("opt_backup")), nullptr);
    EXPECT_EQ(screen->lbl_Current_DB_Name->text(), school.path());
    const QString backup = school.file(QStringLiteral("backup.mdb"));
    type_into(screen->txt_New_DB_Name, school.file(QStringLiteral("backup")));
    click(screen->cmd_copy);
    EXPECT_EQ(screen->txt_Status->text(), QStringLiteral("Successfully Copied. Please keep it in a safe place!"));
    EXPECT_EQ(Current_Db_Name(), school.path());

    const testing_support::CliRun check =
        testing_support::CliRunner(school.file(QStringLiteral("config"))).run({QStringLiteral("check"), backup});
    EXPECT_EQ(check.status, 0) << check.err.toStdString();
    EXPECT_TRUE(check.out.contains(QStringLiteral("version: 13"))) << check.out.toStdString();

    screen->mnu_Exit->trigger();
    settle();
    auto* facts = qobject_cast<frm_db_stats*>(Go_To_Screen(&menu, QStringLiteral("frm_db_stats")));
    ASSERT_NE(facts, nullptr);
    bring_to_front(facts);
    EXPECT_EQ(facts->lbl_dbfilename->text(), school.path());
    EXPECT_EQ(facts->lbl_BU_file->text(), backup);
    EXPECT_FALSE(facts->lbl_BU_date->text().isEmpty());
    EXPECT_FALSE(facts->lbl_Created->text().isEmpty());
    facts->mnu_exit->trigger();
    settle();
}

}  // namespace
