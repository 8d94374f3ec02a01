// The command-line tool as scripts use it: real program, real files.

#include "database/schema.h"
#include "engine/database.h"
#include "engine/settings_store.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/settings.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct CliRun {
    int status = -1;
    QString out;
    QString err;
};

class CliTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(dir.filePath(QStringLiteral("s.ini"))));
        Current_Log_File().clear();
        Default_Settings(Settings());
    }
    void TearDown() override { engine::set_settings_store(nullptr); }

    CliRun cli(const QStringList& args)
    {
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(QUILLARY_CLI_PATH), args);
        EXPECT_TRUE(process.waitForFinished(60000));
        return CliRun{process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                   QString::fromUtf8(process.readAllStandardError())};
    }

    QString school(const QString& file, const QString& change = QString())
    {
        const QString name = dir.filePath(file);
        EXPECT_TRUE(DB_Create_Database(name, true));
        if (!change.isEmpty()) {
            engine::Workspace ws;
            engine::Database* db = ws.OpenDatabase(name);
            EXPECT_TRUE(db && db->Execute(change));
            ws.Close();
        }
        return name;
    }

    QTemporaryDir dir;
    QProcessEnvironment env;
};

TEST_F(CliTest, VersionIsPrinted)
{
    const CliRun run = cli({QStringLiteral("--version")});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("quillary-cli ")));
}

TEST_F(CliTest, CheckOpensACurrentDatabaseAndPrintsItsSystemRow)
{
    const QString name = school(QStringLiteral("school.mdb"));
    const CliRun run = cli({QStringLiteral("check"), name});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("version: 13\n")));
    EXPECT_TRUE(run.out.contains(QStringLiteral("style: 2\n")));
    EXPECT_TRUE(run.err.isEmpty()) << run.err.toStdString();
}

TEST_F(CliTest, CheckAnswersNoToAnUpgradeAndFails)
{
    const QString name = school(QStringLiteral("old.mdb"), QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 7"));
    const CliRun run = cli({QStringLiteral("check"), name});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("box: This database is an old version. \nbox: \nbox: It can be upgraded")))
        << run.err.toStdString();
    EXPECT_TRUE(run.out.isEmpty());
}

TEST_F(CliTest, CheckOfAMissingFileFails)
{
    const CliRun run = cli({QStringLiteral("check"), dir.filePath(QStringLiteral("missing.mdb"))});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("box: Could not open the database"))) << run.err.toStdString();
}

TEST_F(CliTest, AnUnknownCommandShowsUsage)
{
    const CliRun run = cli({QStringLiteral("frobnicate")});
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.err.contains(QStringLiteral("usage:")));
}

}  // namespace
