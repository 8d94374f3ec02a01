// Opening the current database: the version gate, the system table and the
// reconciliation of file locations between the database and the settings.

#include "database/db_handling.h"
#include "database/schema.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "engine/workspace.h"
#include "shell/app_globals.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <functional>

using testing_support::ScriptedBoxes;

namespace {

class DbOpenTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(dir.filePath(QStringLiteral("settings.ini"))));
        Current_Log_File().clear();
        Default_Settings(Settings());
        Settings().script_dir = QStringLiteral("/school/scripts");
        Settings().report_format_dir = QStringLiteral("/school/repfmts");
        Settings().term_script = QStringLiteral("/settings/InTerms.sql");
        Settings().activity_script = QStringLiteral("/settings/InActDts.sql");
        Settings().cost_script = QStringLiteral("/settings/CrsCosts.sql");
        Settings().report_list = QStringLiteral("/settings/zrepfmt.lst");
    }

    void TearDown() override
    {
        DB_Close_All();
        engine::set_settings_store(nullptr);
    }

    // A new database file, then its system row changed by SQL.
    QString school(const QString& file, const QString& change = QString())
    {
        const QString name = dir.filePath(file);
        EXPECT_TRUE(DB_Create_Database(name, true));
        if (!change.isEmpty()) {
            engine::Workspace ws;
            engine::Database* db = ws.OpenDatabase(name);
            EXPECT_NE(db, nullptr);
            EXPECT_TRUE(db && db->Execute(change)) << engine::Err().Description.toStdString();
            ws.Close();
        }
        return name;
    }

    static QByteArray digest(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha256);
    }

    QTemporaryDir dir;
};

TEST_F(DbOpenTest, ACurrentDatabaseOpensAndBecomesCurrent)
{
    const QString name = school(QStringLiteral("school.mdb"));
    ASSERT_TRUE(DB_Open(name));
    EXPECT_EQ(Current_Db_Name(), name);
    EXPECT_EQ(Sys_Record().version, 13);
    EXPECT_NE(Current_Db(), nullptr);
    // The same file named in other letters is already open: nothing reruns.
    EXPECT_TRUE(DB_Open(name.toUpper() == name ? name : name.toUpper().replace(dir.path().toUpper(), dir.path())));
    DB_Close_All();
    EXPECT_TRUE(Current_Db_Name().isEmpty());
    EXPECT_EQ(Current_Db(), nullptr);
}

TEST_F(DbOpenTest, ASecondDatabaseIsRefusedWhileOneIsOpen)
{
    const QString first = school(QStringLiteral("first.mdb"));
    const QString second = school(QStringLiteral("second.mdb"));
    ASSERT_TRUE(DB_Open(first));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("There is already a database open - ") + first + QStringLiteral("\nCouldn't open ") + second,
                 engine::answer::Ok, engine::mb::Critical);
    EXPECT_FALSE(DB_Open(second));
    EXPECT_EQ(Current_Db_Name(), first);
}

TEST_F(DbOpenTest, ANewerVersionIsRefusedAndLeftClosed)
{
    const QString name = school(QStringLiteral("newer.mdb"), QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 14"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This program cannot use this database version. \n"
                                "Please contact your Supplier for a more  recent version of the software.\nCouldn't open ")
                     + name,
                 engine::answer::Ok, engine::mb::Critical);
    EXPECT_FALSE(DB_Open(name));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_TRUE(Current_Db_Name().isEmpty());
    EXPECT_TRUE(Program_Workspace().Databases().empty());
}

TEST_F(DbOpenTest, AnOldVersionWithNoIsClosedAndUntouched)
{
    const QString name = school(QStringLiteral("old.mdb"), QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 7"));
    const QByteArray before = digest(name);
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This database is an old version. \n\nIt can be upgraded, but you should take a backup of it "
                                "first, just in case!\nDo you want it upgraded?"),
                 engine::answer::No, engine::mb::YesNo + engine::mb::Question);
    EXPECT_FALSE(DB_Open(name));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_TRUE(Program_Workspace().Databases().empty());
    EXPECT_EQ(digest(name), before);
}

TEST_F(DbOpenTest, AnEmptySystemTableIsRefused)
{
    const QString name = school(QStringLiteral("nosys.mdb"), QStringLiteral("DELETE * FROM Sys_tab"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The System Table has been deleted, so this database cannot be used. "), engine::answer::Ok,
                 engine::mb::Critical);
    EXPECT_FALSE(DB_Open(name));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_TRUE(Current_Db_Name().isEmpty());
}

// Files that are no usable Quillary database: each is refused under the
// usual headline with words that say what the file is, and left as it was.
TEST_F(DbOpenTest, FilesThatAreNoQuillaryDatabaseSayWhatTheyAre)
{
    struct Case {
        const char* file;
        std::function<void(const QString&)> make;
        QString headline;
        QString detail;
    };
    const auto write = [](const QString& name, const QByteArray& bytes) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    };
    const auto plain_sqlite = [](const QString& name) {
        engine::Workspace ws;
        engine::Database* db = ws.CreateDatabase(name);
        ASSERT_TRUE(db && db->execute_native(QStringLiteral("CREATE TABLE Expenses (Item TEXT, Cost REAL)")));
        ws.Close();
    };
    const auto changed_school = [this](const QString& sql) {
        return [this, sql](const QString& name) {
            QFile::copy(school(QStringLiteral("template-") + QFileInfo(name).fileName()), name);
            engine::Workspace ws;
            engine::Database* db = ws.OpenDatabase(name);
            ASSERT_TRUE(db && db->execute_native(sql)) << engine::Err().Description.toStdString();
            ws.Close();
        };
    };
    const auto damaged_school = [this](const QString& name) {
        QFile::copy(school(QStringLiteral("template-damaged.mdb")), name);
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        const qint64 size = file.size();
        ASSERT_TRUE(file.resize(size / 3));
    };
    const QString reading_sys = QStringLiteral("Unexpected error reading Sys table.");
    const QString opening = QStringLiteral("Could not open the database");
    const QList<Case> cases = {
        {"empty.mdb", [&](const QString& n) { write(n, QByteArray()); }, reading_sys,
         QStringLiteral("The file is empty: it is not a Quillary database.")},
        {"letter.mdb", [&](const QString& n) { write(n, QByteArray("Dear parents, the summer show is on Saturday.\n").repeated(200)); },
         opening, QStringLiteral("the file is not a Quillary database, or it is damaged")},
        {"expenses.mdb", plain_sqlite, reading_sys, QStringLiteral("not a Quillary database: it has no system table")},
        {"noqueries.mdb", changed_school(QStringLiteral("DELETE FROM Quillary_QueryDefs")), reading_sys,
         QStringLiteral("3078 : The database has lost its stored queries (Qry_Select_Sys is missing).")},
        {"textversion.mdb",
         changed_school(QStringLiteral("DROP TRIGGER IF EXISTS \"qy_Sys_tab_check_update\"; "
                                       "UPDATE Sys_tab SET s_DB_Type = 'thirteen'")),
         reading_sys, QStringLiteral("The database version in the system table is 'thirteen', which is not a version number")},
        {"truncated.mdb", damaged_school, QString(), QStringLiteral("damaged")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const QString name = dir.filePath(QLatin1String(c.file));
        c.make(name);
        const QByteArray before = digest(name);
        ScriptedBoxes boxes;
        boxes.expect(c.headline.isEmpty() ? c.detail : c.headline, engine::answer::Ok);
        EXPECT_FALSE(DB_Open(name));
        ASSERT_EQ(boxes.shown().size(), 1);
        EXPECT_TRUE(boxes.shown().first().contains(c.detail)) << boxes.shown().first().toStdString();
        EXPECT_EQ(Current_Db(), nullptr);
        EXPECT_TRUE(Program_Workspace().Databases().empty());
        EXPECT_EQ(digest(name), before);
    }
}

TEST_F(DbOpenTest, SettingsKeepingLocationsInTheDatabaseMeetADatabaseWithout)
{
    const QString name = school(QStringLiteral("style2.mdb"));
    Settings().file_locations = 1;
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This database is out of sync with the registry. \nYou should check the values in Change Defaults."),
                 engine::answer::Ok, engine::mb::OkOnly);
    ASSERT_TRUE(DB_Open(name));
    EXPECT_EQ(Settings().file_locations, 1);
    EXPECT_EQ(Settings().term_script, QStringLiteral("/school/scripts/InTerms.sql"));
    EXPECT_EQ(Settings().activity_script, QStringLiteral("/school/scripts/InActDts.sql"));
    EXPECT_EQ(Settings().cost_script, QStringLiteral("/school/scripts/CrsCosts.sql"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/school/repfmts/zrepfmt.lst"));
    // The settings store itself isn't written.
    EXPECT_TRUE(engine::settings_store().section_is_empty(QStringLiteral("Startup")));
}

TEST_F(DbOpenTest, ADatabaseKeepingLocationsOverridesTheSettingsInMemory)
{
    const QString name = school(QStringLiteral("style1.mdb"),
                                QStringLiteral("UPDATE Sys_tab SET s_Style_Type = 1, s_Filename_InvTerm = '/db/InTerms.sql',"
                                               " s_Filename_InvAct = '/db/InActDts.sql', s_Filename_CrsCost = '',"
                                               " s_Filename_zrepfmt = '/db/zrepfmt.lst'"));
    Settings().file_locations = 2;
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This database is out of sync with the registry. "), engine::answer::Ok, engine::mb::OkOnly);
    ASSERT_TRUE(DB_Open(name));
    EXPECT_EQ(Settings().file_locations, 1);
    EXPECT_EQ(Settings().term_script, QStringLiteral("/db/InTerms.sql"));
    EXPECT_EQ(Settings().activity_script, QStringLiteral("/db/InActDts.sql"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/db/zrepfmt.lst"));
    // An empty name in the database leaves the setting as it was.
    EXPECT_EQ(Settings().cost_script, QStringLiteral("/settings/CrsCosts.sql"));
}

TEST_F(DbOpenTest, DeletingADatabaseRemovesItsSideFiles)
{
    const QString name = school(QStringLiteral("gone.mdb"));
    QFile lock(lock_file_name(name));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.close();
    EXPECT_TRUE(DB_Delete_Files(name));
    EXPECT_FALSE(QFile::exists(name));
    EXPECT_FALSE(QFile::exists(lock_file_name(name)));
    EXPECT_EQ(lock_file_name(name), dir.filePath(QStringLiteral("gone.ldb")));
}

TEST_F(DbOpenTest, CompactingIntoAnExistingNameDestroysNothingButTheNewName)
{
    const QString name = school(QStringLiteral("live.mdb"));
    const QString taken = school(QStringLiteral("taken.mdb"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Error compacting database.\nThe new version will be destroyed."), engine::answer::Ok,
                 engine::mb::Information);
    EXPECT_FALSE(DB_Compact_Database(name, taken));
    EXPECT_TRUE(QFile::exists(name));
    EXPECT_FALSE(QFile::exists(taken));

    const QString copy = dir.filePath(QStringLiteral("copy.mdb"));
    ASSERT_TRUE(DB_Compact_Database(name, copy));
    ASSERT_TRUE(DB_Open(copy));
    EXPECT_EQ(Sys_Record().version, 13);
}

}  // namespace

namespace {

TEST_F(DbOpenTest, RecyclingMovesTheFileWhereItCanBeRecovered)
{
    const QString name = school(QStringLiteral("recycled.mdb"));
    const QString trash = dir.filePath(QStringLiteral("xdg"));
    const QByteArray previous = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", trash.toUtf8());
    EXPECT_TRUE(DB_Recycle_Files(name));
    qputenv("XDG_DATA_HOME", previous);
    EXPECT_FALSE(QFile::exists(name));
    EXPECT_TRUE(QFile::exists(trash + QStringLiteral("/Trash/files/recycled.mdb")));
    EXPECT_TRUE(QFile::exists(trash + QStringLiteral("/Trash/info/recycled.mdb.trashinfo")));
}

TEST_F(DbOpenTest, RepairingAHealthyFileKeepsItUsable)
{
    const QString name = school(QStringLiteral("healthy.mdb"));
    EXPECT_TRUE(DB_Repair(name));
    ASSERT_TRUE(DB_Open(name));
    EXPECT_EQ(Sys_Record().version, 13);
}

TEST_F(DbOpenTest, RepairingSomethingThatIsNoDatabaseFails)
{
    const QString name = dir.filePath(QStringLiteral("letter.mdb"));
    QFile letter(name);
    ASSERT_TRUE(letter.open(QIODevice::WriteOnly));
    letter.write(QByteArray(8192, 'x'));
    letter.close();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Could not repair this database."), engine::answer::Ok, engine::mb::Critical);
    EXPECT_FALSE(DB_Repair(name));
}

}  // namespace
