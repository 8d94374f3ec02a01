// Start-up from the first run to an open default database, and the refusal
// of a second copy of the program.

#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/msg_box.h"
#include "shell/app_globals.h"
#include "shell/install_folder.h"
#include "shell/settings.h"
#include "shell/single_instance.h"
#include "shell/startup.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using testing_support::ScriptedBoxes;

namespace {

class StartupTest : public ::testing::Test {
protected:
    StartupTest()
    {
        QDir().mkpath(install + QStringLiteral("/database"));
        set_install_folder_for_tests(install);
        Current_Log_File().clear();
    }
    ~StartupTest() override
    {
        Main_End_Prog_Close();
        set_install_folder_for_tests(QString());
    }

    int stored_keys() const { return QSettings(folder.file(QStringLiteral("s.ini")), QSettings::IniFormat).allKeys().size(); }

    testing_support::TestFolder folder;
    const QString install = folder.file(QStringLiteral("install"));
    const QString demo = install + QStringLiteral("/database/Demo.mdb");
    const QString first_run_question = QStringLiteral("Is this the first time that you have run this program?");
    QTemporaryDir locks;
};

TEST_F(StartupTest, AFirstRunAnsweredNoEndsWithNothingWritten)
{
    SingleInstance instance(locks.path());
    ScriptedBoxes().expect(first_run_question, engine::answer::No, engine::mb::YesNo + engine::mb::Question)
        .during([&] { EXPECT_FALSE(Main_Start(instance)); });
    EXPECT_TRUE(Abort_Flag());
    EXPECT_EQ(stored_keys(), 0);
    EXPECT_EQ(Current_Db(), nullptr);
}

TEST_F(StartupTest, AFirstRunAnsweredYesWritesTheDefaultsAndOpensTheDemoSchool)
{
    ASSERT_TRUE(DB_Create_Database(demo, true));
    SingleInstance instance(locks.path());
    ScriptedBoxes boxes;
    boxes.expect(first_run_question, engine::answer::Yes);
    boxes.expect(QStringLiteral("The default database has been changed to ") + demo, engine::answer::Ok,
                 engine::mb::Information);
    ASSERT_TRUE(Main_Start(instance));
    EXPECT_FALSE(Abort_Flag());
    EXPECT_EQ(Current_Db_Name(), demo);
    EXPECT_EQ(Current_Log_File(), install + QStringLiteral("/quillary.log"));
}

TEST_F(StartupTest, AMissingDefaultDatabaseLeavesTheProgramRunningWithoutOne)
{
    SingleInstance instance(locks.path());
    ScriptedBoxes boxes;
    boxes.expect(first_run_question, engine::answer::Yes);
    boxes.expect(QStringLiteral("The default database has been changed to "));
    ASSERT_TRUE(Main_Start(instance));
    EXPECT_TRUE(Current_Db_Name().isEmpty());
    EXPECT_EQ(Current_Db(), nullptr);
}

TEST_F(StartupTest, ASecondCopyIsRefusedAndTouchesNoDatabase)
{
    ASSERT_TRUE(DB_Create_Database(demo, true));
    SingleInstance first(locks.path());
    ASSERT_TRUE(first.acquire());
    SingleInstance second(locks.path());
    ScriptedBoxes().expect(QStringLiteral("Cannot run more than one instance of this program. \nEnding this instance."),
                           engine::answer::Ok, engine::mb::Critical)
        .during([&] { EXPECT_FALSE(Main_Start(second)); });
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(stored_keys(), 0);
}

}  // namespace
