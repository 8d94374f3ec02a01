// Opening the current database: the version gate, the system table and the
// reconciliation of file locations between the database and the settings;
// and the file routines around it: delete, compact, recycle, repair.

#include "database/code_values.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "engine/workspace.h"
#include "shell/settings.h"
#include "support/database_file.h"
#include "support/scripted_boxes.h"
#include "support/template_database.h"
#include "support/test_folder.h"

#include <QFile>
#include <gtest/gtest.h>
#include <functional>

using testing_support::ScriptedBoxes;
using testing_support::change_in;
using testing_support::copy_of_new_database;
using testing_support::digest_of;

namespace {

class DbOpenTest : public ::testing::Test {
protected:
    DbOpenTest()
    {
        Settings().script_dir = QStringLiteral("/school/scripts");
        Settings().report_format_dir = QStringLiteral("/school/repfmts");
        Settings().term_script = QStringLiteral("/settings/InTerms.sql");
        Settings().activity_script = QStringLiteral("/settings/InActDts.sql");
        Settings().cost_script = QStringLiteral("/settings/CrsCosts.sql");
        Settings().report_list = QStringLiteral("/settings/zrepfmt.lst");
    }
    ~DbOpenTest() override { DB_Close_All(); }

    // A new school database, its system row changed by SQLite text.
    QString school(const QString& file, const QString& change = QString())
    {
        const QString name = copy_of_new_database(folder.file(file), true);
        return change.isEmpty() ? name : change_in(name, change);
    }

    testing_support::TestFolder folder{testing_support::TestFolder::StartingSettings::ProgramDefaults};
};

TEST_F(DbOpenTest, ACurrentDatabaseOpensAndBecomesCurrentAndASecondIsRefusedWhileItIsOpen)
{
    const QString name = school(QStringLiteral("school.mdb"));
    ASSERT_TRUE(DB_Open(name));
    EXPECT_EQ(Current_Db_Name(), name);
    EXPECT_EQ(Sys_Record().version, code::Current_DB_Version);
    EXPECT_NE(Current_Db(), nullptr);
    // The same file named in other letters is already open: nothing reruns.
    EXPECT_TRUE(DB_Open(name.left(name.size() - 3) + QStringLiteral("MDB")));
    DB_Close_All();
    EXPECT_TRUE(Current_Db_Name().isEmpty());
    EXPECT_EQ(Current_Db(), nullptr);

    // A second database is refused while one is open.
    const QString second = school(QStringLiteral("second.mdb"));
    ASSERT_TRUE(DB_Open(name));
    ScriptedBoxes()
        .expect(QStringLiteral("There is already a database open - ") + name + QStringLiteral("\nCouldn't open ") + second,
                engine::answer::Ok, engine::mb::Critical)
        .during([&] { EXPECT_FALSE(DB_Open(second)); });
    EXPECT_EQ(Current_Db_Name(), name);
}

// Files that can't be used as they are: each is refused with words that say
// what the file is, and left closed and exactly as it was.
TEST_F(DbOpenTest, FilesThatAreNoUsableQuillaryDatabaseAreRefusedWithWordsThatSayWhatTheyAre)
{
    struct Case {
        const char* file;
        std::function<void(const QString&)> make;
        QString box;     // the start of the box; <name> stands for the file's path
        QString detail;  // words further on in the box
        int style = -1;
        int answer = engine::answer::Ok;
    };
    const auto plain_sqlite = [](const QString& name) {
        engine::Workspace ws;
        engine::Database* db = ws.CreateDatabase(name);
        ASSERT_TRUE(db && db->execute_native(QStringLiteral("CREATE TABLE Expenses (Item TEXT, Cost REAL)")));
        ws.Close();
    };
    const auto school_where = [](const QString& sql) {
        return [sql](const QString& name) { change_in(copy_of_new_database(name, true), sql); };
    };
    const auto damaged_school = [](const QString& name) {
        QFile file(copy_of_new_database(name, true));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.resize(file.size() / 3));
    };
    const QString reading_sys = QStringLiteral("Unexpected error reading Sys table.");
    const QList<Case> cases = {
        {"newer.mdb", school_where(QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 14")),
         QStringLiteral("This program cannot use this database version. \nPlease contact your Supplier for a more  recent "
                        "version of the software.\nCouldn't open <name>"),
         QString(), engine::mb::Critical},
        {"old.mdb", school_where(QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 7")),
         QStringLiteral("This database is an old version. \n\nIt can be upgraded, but you should take a backup of it "
                        "first, just in case!\nDo you want it upgraded?"),
         QString(), engine::mb::YesNo + engine::mb::Question, engine::answer::No},
        {"nosys.mdb", school_where(QStringLiteral("DELETE FROM Sys_tab")),
         QStringLiteral("The System Table has been deleted, so this database cannot be used. "), QString(),
         engine::mb::Critical},
        {"empty.mdb", [&](const QString&) { folder.write_file("empty.mdb", QString()); }, reading_sys,
         QStringLiteral("The file is empty: it is not a Quillary database.")},
        {"letter.mdb",
         [&](const QString&) { folder.write_file("letter.mdb", QString("Dear parents, the show is on Saturday.\n").repeated(200)); },
         QStringLiteral("Could not open the database"), QStringLiteral("the file is not a Quillary database, or it is damaged")},
        {"expenses.mdb", plain_sqlite, reading_sys, QStringLiteral("not a Quillary database: it has no system table")},
        {"noqueries.mdb", school_where(QStringLiteral("DELETE FROM Quillary_QueryDefs")), reading_sys,
         QStringLiteral("3078 : The database has lost its stored queries (Qry_Select_Sys is missing).")},
        {"textversion.mdb",
         school_where(QStringLiteral("DROP TRIGGER IF EXISTS \"qy_Sys_tab_check_update\"; "
                                     "UPDATE Sys_tab SET s_DB_Type = 'thirteen'")),
         reading_sys, QStringLiteral("The database version in the system table is 'thirteen', which is not a version number")},
        {"truncated.mdb", damaged_school, QStringLiteral("damaged"), QString()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        const QString name = folder.file(QLatin1String(c.file));
        c.make(name);
        const QByteArray before = digest_of(name);
        ScriptedBoxes boxes;
        boxes.expect(QString(c.box).replace(QStringLiteral("<name>"), name), c.answer, c.style);
        EXPECT_FALSE(DB_Open(name));
        ASSERT_EQ(boxes.shown().size(), 1);
        EXPECT_TRUE(boxes.shown().first().contains(c.detail)) << boxes.shown().first().toStdString();
        EXPECT_EQ(Current_Db(), nullptr);
        EXPECT_TRUE(Current_Db_Name().isEmpty());
        EXPECT_TRUE(Program_Workspace().Databases().empty());
        EXPECT_EQ(digest_of(name), before);
    }
}

// A database keeping the locations overrides the settings, in memory; settings
// keeping them in the database meet a database without.
TEST_F(DbOpenTest, TheLocationsOfTheSettingsAndOfTheDatabaseAreReconciledInMemory)
{
    const QString keeping = school(QStringLiteral("style1.mdb"),
                                   QStringLiteral("UPDATE Sys_tab SET s_Style_Type = 1, s_Filename_InvTerm = '/db/InTerms.sql',"
                                                  " s_Filename_InvAct = '/db/InActDts.sql', s_Filename_CrsCost = '',"
                                                  " s_Filename_zrepfmt = '/db/zrepfmt.lst'"));
    Settings().file_locations = 2;
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("This database is out of sync with the registry. "), engine::answer::Ok, engine::mb::OkOnly);
    ASSERT_TRUE(DB_Open(keeping));
    EXPECT_EQ(Settings().file_locations, 1);
    EXPECT_EQ(Settings().term_script, QStringLiteral("/db/InTerms.sql"));
    EXPECT_EQ(Settings().activity_script, QStringLiteral("/db/InActDts.sql"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/db/zrepfmt.lst"));
    // An empty name in the database leaves the setting as it was.
    EXPECT_EQ(Settings().cost_script, QStringLiteral("/settings/CrsCosts.sql"));
    DB_Close_All();

    const QString without = school(QStringLiteral("style2.mdb"));
    boxes.expect(QStringLiteral("This database is out of sync with the registry. \nYou should check the values in Change Defaults."),
                 engine::answer::Ok, engine::mb::OkOnly);
    ASSERT_TRUE(DB_Open(without));
    EXPECT_EQ(Settings().file_locations, 1);
    EXPECT_EQ(Settings().term_script, QStringLiteral("/school/scripts/InTerms.sql"));
    EXPECT_EQ(Settings().activity_script, QStringLiteral("/school/scripts/InActDts.sql"));
    EXPECT_EQ(Settings().cost_script, QStringLiteral("/school/scripts/CrsCosts.sql"));
    EXPECT_EQ(Settings().report_list, QStringLiteral("/school/repfmts/zrepfmt.lst"));
    // The settings store itself isn't written.
    EXPECT_TRUE(engine::settings_store().section_is_empty(QStringLiteral("Startup")));
}

TEST_F(DbOpenTest, DeletingADatabaseRemovesItsSideFiles)
{
    const QString name = school(QStringLiteral("gone.mdb"));
    EXPECT_EQ(lock_file_name(name), folder.file(QStringLiteral("gone.ldb")));
    folder.write_file(QStringLiteral("gone.ldb"), QString());
    EXPECT_TRUE(DB_Delete_Files(name));
    EXPECT_FALSE(QFile::exists(name));
    EXPECT_FALSE(QFile::exists(lock_file_name(name)));
}

TEST_F(DbOpenTest, CompactingIntoAnExistingNameDestroysNothingButTheNewName)
{
    const QString name = school(QStringLiteral("live.mdb"));
    const QString taken = school(QStringLiteral("taken.mdb"));
    ScriptedBoxes()
        .expect(QStringLiteral("Error compacting database.\nThe new version will be destroyed."), engine::answer::Ok,
                engine::mb::Information)
        .during([&] { EXPECT_FALSE(DB_Compact_Database(name, taken)); });
    EXPECT_TRUE(QFile::exists(name));
    EXPECT_FALSE(QFile::exists(taken));

    const QString copy = folder.file(QStringLiteral("copy.mdb"));
    ASSERT_TRUE(DB_Compact_Database(name, copy));
    ASSERT_TRUE(DB_Open(copy));
    EXPECT_EQ(Sys_Record().version, code::Current_DB_Version);
}

TEST_F(DbOpenTest, RecyclingMovesTheFileWhereItCanBeRecovered)
{
    const QString name = school(QStringLiteral("recycled.mdb"));
    const QString trash = folder.file(QStringLiteral("xdg"));
    const QByteArray previous = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", trash.toUtf8());
    EXPECT_TRUE(DB_Recycle_Files(name));
    qputenv("XDG_DATA_HOME", previous);
    EXPECT_FALSE(QFile::exists(name));
    EXPECT_TRUE(QFile::exists(trash + QStringLiteral("/Trash/files/recycled.mdb")));
    EXPECT_TRUE(QFile::exists(trash + QStringLiteral("/Trash/info/recycled.mdb.trashinfo")));
}

TEST_F(DbOpenTest, RepairingKeepsAHealthyFileUsableAndFailsOnWhatIsNoDatabase)
{
    const QString name = school(QStringLiteral("healthy.mdb"));
    EXPECT_TRUE(DB_Repair(name));
    ASSERT_TRUE(DB_Open(name));
    EXPECT_EQ(Sys_Record().version, code::Current_DB_Version);

    const QString letter = folder.write_file(QStringLiteral("letter.mdb"), QString(8192, QLatin1Char('x')));
    ScriptedBoxes().expect(QStringLiteral("Could not repair this database."), engine::answer::Ok, engine::mb::Critical)
        .during([&] { EXPECT_FALSE(DB_Repair(letter)); });
}

}  // namespace
