// The upgrade of old database files: which steps run, what each leaves in
// the file, and where a failure leaves it.

#include "database/code_values.h"
#include "database/db_handling.h"
#include "database/upgrade.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/workspace.h"
#include "support/old_version_file.h"
#include "shell/app_globals.h"
#include "support/cli_runner.h"
#include "support/database_file.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

using testing_support::ScriptedBoxes;
using testing_support::change_in;
using testing_support::digest_of;
using testing_support::value_in;
using testing_support::values_in;
using namespace upgrade_testing;

namespace {

const QString old_version_question = QStringLiteral("This database is an old version.");

class UpgradeTest : public ::testing::Test {
protected:
    UpgradeTest() { Sys_Record() = SystemRecord{}; }
    ~UpgradeTest() override { DB_Close_All(); }

    QString old_file(int version, const QString& change = QString())
    {
        const QString path = folder.file(QStringLiteral("v%1.qdb").arg(version));
        make_old_version_file(path, version);
        return change.isEmpty() ? path : change_in(path, change);
    }

    // Opened as the upgrade command opens it: raw, with its system row read.
    static bool upgrade(const QString& path)
    {
        const bool opened = DB_Open_Raw(path) && DB_Read_Sys(Sys_Record());
        EXPECT_TRUE(opened);
        const bool upgraded = opened && DB_Upgrade_Database(path, Sys_Record());
        DB_Close_All();
        return upgraded;
    }

    static QStringList query_names(const QString& path)
    {
        engine::Workspace workspace;
        engine::Database* db = workspace.OpenDatabase(path);
        QStringList names = db ? db->QueryDef_names() : QStringList();
        workspace.Close();
        names.sort(Qt::CaseInsensitive);
        return names;
    }

    static QStringList columns(const QString& path, const QString& table)
    {
        return values_in(path, QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table));
    }

    // The steps that finished, as "from to to", in order.
    QStringList steps_run() const
    {
        QStringList steps;
        static const QRegularExpression finished(QStringLiteral("Upgraded the database from (\\d+ to \\d+)"));
        for (auto it = finished.globalMatch(folder.log_text()); it.hasNext();)
            steps << it.next().captured(1);
        return steps;
    }

    testing_support::TestFolder folder{testing_support::TestFolder::StartingSettings::ProgramDefaults};
};

// ---- the chain ----

TEST_F(UpgradeTest, AVersionOneFileTakesElevenStepsAndGetsTheQueriesAndSchemaOfANewFile)
{
    // A column that is there already is passed over.
    const QString path = old_file(1, QStringLiteral("ALTER TABLE Pupils ADD COLUMN Pupil_Marker TEXT(10)"));
    const QString current = folder.file(QStringLiteral("current.qdb"));
    make_old_version_file(current, 13);
    {
        ScriptedBoxes boxes;
        boxes.expect(old_version_question, engine::answer::Yes, engine::mb::YesNo + engine::mb::Question);
        // An upgraded file keeps its file locations itself, the settings don't.
        boxes.expect(QStringLiteral("This database is out of sync with the registry."));
        ASSERT_TRUE(DB_Open(path));
    }
    EXPECT_EQ(Sys_Record().version, 13);
    EXPECT_EQ(Current_Db_Name(), path);
    DB_Close_All();

    EXPECT_EQ(steps_run(), (QStringList{"1 to 2", "2 to 3", "3 to 4", "4 to 5", "5 to 6", "6 to 7", "7 to 8", "8 to 9",
                                        "9 to 10", "10 to 12", "12 to 13"}));
    EXPECT_EQ(values_in(path, "SELECT s_DB_Type FROM Sys_tab"), QStringList{"13"});
    EXPECT_EQ(schema_outline(path), schema_outline(current));
    EXPECT_EQ(query_names(path), query_names(current));
    // The school's rows came through.
    EXPECT_EQ(value_in(path, "SELECT count(*) FROM Exam_Results"), "4");
    EXPECT_EQ(value_in(path, "SELECT group_concat(Pupil_FirstName) FROM Pupils"), "Anna,Ben,Cara");
}

TEST_F(UpgradeTest, VersionsTenAndElevenShareAStepTwelveTakesOnlyTheLastAndZeroIsRefused)
{
    ASSERT_TRUE(upgrade(old_file(11)));
    EXPECT_EQ(steps_run(), (QStringList{"10 to 12", "12 to 13"}));
    EXPECT_EQ(Sys_Record().version, 13);

    QFile::remove(Current_Log_File());
    ASSERT_TRUE(upgrade(old_file(12)));
    EXPECT_EQ(steps_run(), QStringList{"12 to 13"});

    // Version 0 is refused, and the file stays as it was.
    QFile::remove(Current_Log_File());
    const QString path = old_file(0);
    const QByteArray before = digest_of(path);
    ScriptedBoxes().expect(QStringLiteral("Could not upgrade the database"), engine::answer::Ok, engine::mb::Critical)
        .during([&] { EXPECT_FALSE(upgrade(path)); });
    EXPECT_TRUE(steps_run().isEmpty());
    EXPECT_TRUE(folder.log_text().contains(QStringLiteral("DB_Upgrade_Database")));
    EXPECT_EQ(digest_of(path), before);
}

// ---- what the steps leave ----

// Files of 7 already have the index Activity_Dates, which the step 7 to 8
// makes again: from that step on, an existing index is passed over.
// From 7, each old free-text teacher becomes one teacher, each date with
// entries a title, and a pupil may take an activity on several dates.
TEST_F(UpgradeTest, FromSevenOldTeachersBecomeTeachersDatesGetTitlesAndAnActivityMayBeTakenOnSeveralDates)
{
    const QString another_day =
        QStringLiteral("INSERT INTO Exam_Results (Results_Pupil_id, Results_Exam_id, Results_Date) VALUES (1, 1, '%1')");
    const QString path = old_file(7);
    const auto refusal = [&](const QString& day) {
        engine::Workspace workspace;
        engine::Database* db = workspace.OpenDatabase(path);
        const int refused = db && db->execute_native(another_day.arg(day)) ? 0 : engine::Err().Number;
        workspace.Close();
        return refused;
    };
    EXPECT_EQ(refusal("2026-05-01"), engine::jet::DuplicateKey);
    ASSERT_TRUE(upgrade(path));
    // Two courses share "Miss Jones"; the empty text gives one teacher; the null none.
    EXPECT_EQ(values_in(path, "SELECT Teacher_NickName FROM Teachers ORDER BY Teacher_NickName"),
              (QStringList{"", "Miss Jones", "Mr Brown"}));
    EXPECT_EQ(value_in(path, "SELECT count(*) FROM Teachers WHERE Teacher_Name IS NULL AND Teacher_SurName IS NULL"), "3");
    // The links are left for the user to make, and the old text stays.
    EXPECT_EQ(value_in(path, "SELECT count(*) FROM Courses WHERE Course_Teacher_id IS NOT NULL"), "0");
    EXPECT_EQ(value_in(path, "SELECT count(*) FROM Courses WHERE Course_Teacher = 'Miss Jones'"), "2");
    EXPECT_EQ(values_in(path, "SELECT ActT_Date || ' ' || ActT_Title FROM Activity_Titles ORDER BY ActT_Date"),
              (QStringList{"2026-03-14 00:00:00 Activity", "2026-03-21 00:00:00 Activity",
                           "2026-07-04 00:00:00 Activity"}));
    EXPECT_EQ(refusal("2026-05-01"), 0);
    EXPECT_EQ(refusal("2026-03-14"), engine::jet::DuplicateKey);
}

TEST_F(UpgradeTest, AnUpgradedFileCountsAsNewAndNotBackedUp)
{
    const QString path = old_file(9);
    ASSERT_TRUE(upgrade(path));
    const QString today = QDate::currentDate().toString(Qt::ISODate) + QStringLiteral(" 00:00:00");
    EXPECT_EQ(values_in(path, "SELECT s_Creation_Date || '|' || s_Backup_Date || '|' || s_Backup_filename || '|' || "
                           "s_Style_Type FROM Sys_tab"),
              QStringList{today + "|" + today + "| |1"});
    EXPECT_EQ(value_in(path, "SELECT VAT_Type FROM Standard_Values"), "1");
    EXPECT_EQ(Sys_Record().backup_filename, QStringLiteral(" "));
    EXPECT_EQ(Sys_Record().style, code::style_type::Locations_In_Database);
}

// ---- failures ----

TEST_F(UpgradeTest, AFailedStepLeavesTheLastFinishedVersionAndTheNextOpenAsksAgain)
{
    // A file without Results_Uniq can't have it dropped by the step 7 to 8.
    const QString path = old_file(5, QStringLiteral("DROP INDEX Results_Uniq"));
    ScriptedBoxes().expect(old_version_question, engine::answer::Yes)
        .expect(QStringLiteral("Could not upgrade the database from 7 to 8"), engine::answer::Ok, engine::mb::OkOnly)
        .during([&] { EXPECT_FALSE(DB_Open(path)); });
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(steps_run(), (QStringList{"5 to 6", "6 to 7"}));
    EXPECT_TRUE(folder.log_text().contains(QStringLiteral("Results Uniquein DB_Upgrade_7_to_8")));
    EXPECT_EQ(value_in(path, "SELECT s_DB_Type FROM Sys_tab"), "7");
    EXPECT_TRUE(columns(path, "Families").contains(QStringLiteral("Family_Address4")));
    EXPECT_FALSE(columns(path, "Exams").contains(QStringLiteral("Exam_Faculty")));
    EXPECT_TRUE(values_in(path, "SELECT name FROM sqlite_master WHERE name = 'Teachers'").isEmpty());

    ScriptedBoxes().expect(old_version_question, engine::answer::No)
        .during([&] { EXPECT_FALSE(DB_Open(path)); });
}

// The failed step goes back whole, its label on the log ("in" after a blank
// only in the first step), and the file keeps the version it had.
TEST_F(UpgradeTest, AStepThatFailsIsUndoneWholeAndNamesItsLabel)
{
    struct Case {
        int version;
        QString change;
        QStringList boxes;
        QString logged;
        QString gone;  // SQLite text that finds nothing afterwards, if any
    };
    const QList<Case> cases = {
        {1, "DROP TABLE Standard_Values", {"Could not upgrade the database from 1 to 2"},
         "Competition_Payment_Details in DB_Upgrade_1_to_2",
         "SELECT name FROM pragma_table_info('Pupils') WHERE name = 'Pupil_Marker'"},
        {3, "CREATE INDEX Invoices_Act_Date ON Pupils (Pupil_FirstName)",
         {"Cannot create invoice tables", "Could not upgrade the database from 3 to 4"}, "Invoice table indexin DB_Upgrade_3_to_4",
         "SELECT name FROM sqlite_master WHERE name = 'Invoices'"},
        // An existing index is passed over only from the step 7 to 8 on.
        {5, "CREATE INDEX Activity_Dates ON Exam_Results (Results_Date)", {"Could not upgrade the database from 5 to 6"},
         "Results Indexin DB_Upgrade_5_to_6", QString()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.version);
        const QString path = old_file(c.version, c.change);
        {
            ScriptedBoxes boxes;
            for (const QString& box : c.boxes)
                boxes.expect(box);
            EXPECT_FALSE(upgrade(path));
        }
        EXPECT_TRUE(folder.log_text().contains(c.logged));
        EXPECT_EQ(value_in(path, "SELECT s_DB_Type FROM Sys_tab"), QString::number(c.version));
        EXPECT_TRUE(c.gone.isEmpty() || values_in(path, c.gone).isEmpty());
    }
}

// ---- the command-line tool ----

TEST_F(UpgradeTest, TheToolUpgradesAFileAnsweringYes)
{
    const QString path = old_file(4);
    const testing_support::CliRun run =
        testing_support::CliRunner(folder.file(QStringLiteral("config"))).run({QStringLiteral("upgrade"), path});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("The database has been upgraded.")));
    EXPECT_EQ(value_in(path, "SELECT s_DB_Type FROM Sys_tab"), "13");
}

}  // namespace
