#include "engine/settings_store.h"
#include "shell/app_globals.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

const QString title_query = QStringLiteral("Qry_Order_Courses_Title");

class SettingsTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        ini = dir.filePath(QStringLiteral("s.ini"));
        use_store(ini);
        folder = dir.filePath(QStringLiteral("F"));
        set_install_folder_for_tests(folder);
        Abort_Flag() = false;
        Settings() = SettingsRecord{};
        Current_Log_File().clear();
    }
    void TearDown() override
    {
        engine::set_settings_store(nullptr);
        set_install_folder_for_tests(QString());
        Abort_Flag() = false;
        Settings() = SettingsRecord{};
    }

    static void use_store(const QString& file)
    {
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(file));
    }

    void store(const char* key, const QString& value)
    {
        ASSERT_TRUE(engine::settings_store().SaveSetting(QStringLiteral("Startup"), QLatin1String(key), value));
    }

    QString stored(const char* key) const
    {
        return engine::settings_store().GetSetting(QStringLiteral("Startup"), QLatin1String(key),
                                                   QStringLiteral("<none>"));
    }

    int stored_key_count() const
    {
        QSettings written(ini, QSettings::IniFormat);
        written.beginGroup(QStringLiteral("Startup"));
        return static_cast<int>(written.childKeys().size());
    }

    // A store that cannot be written: its folder would have to be made inside a file.
    void use_unwritable_store()
    {
        const QString blocker = dir.filePath(QStringLiteral("blocker"));
        QFile file(blocker);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        use_store(blocker + QStringLiteral("/s.ini"));
    }

    static SettingsRecord defaults()
    {
        SettingsRecord record;
        Default_Settings(record);
        return record;
    }

    QTemporaryDir dir;
    QString ini;
    QString folder;
};

// ---- defaults -----------------------------------------------------------------

TEST_F(SettingsTest, DefaultsAreLaidOutUnderTheInstallFolder)
{
    set_install_folder_for_tests(QStringLiteral("/opt/quillary"));

    const SettingsRecord d = defaults();

    EXPECT_EQ(d.default_database, QStringLiteral("/opt/quillary/database/Demo.mdb"));
    EXPECT_EQ(d.log_file, QStringLiteral("/opt/quillary/quillary.log"));
    EXPECT_EQ(d.report_output_dir, QStringLiteral("/opt/quillary"));
    EXPECT_EQ(d.report_format_dir, QStringLiteral("/opt/quillary/repfmts"));
    EXPECT_EQ(d.report_list, QStringLiteral("/opt/quillary/repfmts/zrepfmt.lst"));
    EXPECT_EQ(d.script_dir, QStringLiteral("/opt/quillary/scripts"));
    EXPECT_EQ(d.term_script, QStringLiteral("/opt/quillary/scripts/InTerms.sql"));
    EXPECT_EQ(d.activity_script, QStringLiteral("/opt/quillary/scripts/InActDts.sql"));
    EXPECT_EQ(d.cost_script, QStringLiteral("/opt/quillary/scripts/CrsCosts.sql"));
    EXPECT_EQ(d.file_locations, 2);
    EXPECT_EQ(d.course_query, title_query);
}

TEST_F(SettingsTest, InstallFolderWithTrailingSlashGivesNoDoubleSlash)
{
    set_install_folder_for_tests(QStringLiteral("/opt/quillary/"));

    EXPECT_EQ(defaults().default_database, QStringLiteral("/opt/quillary/database/Demo.mdb"));
    EXPECT_EQ(defaults().report_list, QStringLiteral("/opt/quillary/repfmts/zrepfmt.lst"));
}

// ---- first run ----------------------------------------------------------------

TEST_F(SettingsTest, FirstRunAnsweredYesWritesElevenValuesAndCarriesOn)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the first time"), engine::answer::Yes, 36);
    boxes.expect(QStringLiteral("The default database has been changed to ") + folder +
                     QStringLiteral("/database/Demo.mdb"),
                 engine::answer::Ok, 64);

    Read_Settings();

    EXPECT_EQ(boxes.shown().value(0), QStringLiteral("Could not open the Registry, section for quillary\n"
                                                     "Is this the first time that you have run this program?"));
    EXPECT_EQ(boxes.titles().value(0), App_Title());
    EXPECT_FALSE(Abort_Flag());
    EXPECT_EQ(stored_key_count(), 11);
    EXPECT_EQ(stored(settings_key::CQ), QStringLiteral("1"));
    EXPECT_EQ(stored(settings_key::FL), QStringLiteral("2"));
    EXPECT_EQ(stored(settings_key::LF), folder + QStringLiteral("/quillary.log"));
    const SettingsRecord d = defaults();
    EXPECT_EQ(Settings().default_database, d.default_database);
    EXPECT_EQ(Settings().log_file, d.log_file);
    EXPECT_EQ(Settings().report_output_dir, d.report_output_dir);
    EXPECT_EQ(Settings().script_dir, d.script_dir);
    EXPECT_EQ(Settings().course_query, title_query);
}

TEST_F(SettingsTest, FirstRunAnsweredNoWritesNothingAndAborts)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the first time"), engine::answer::No, 36);

    Read_Settings();

    EXPECT_TRUE(Abort_Flag());
    EXPECT_EQ(stored_key_count(), 0);
}

TEST_F(SettingsTest, FirstRunThatCannotWriteAborts)
{
    use_unwritable_store();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the first time"), engine::answer::Yes);
    boxes.expect(QStringLiteral("Could NOT replace default values "), engine::answer::Ok, 16);

    Read_Settings();

    EXPECT_TRUE(Abort_Flag());
}

// ---- reading --------------------------------------------------------------------

TEST_F(SettingsTest, EmptyValuesStayEmptyExceptThoseWithDefaults)
{
    for (const char* key : {settings_key::GD, settings_key::XD, settings_key::RL, settings_key::UD, settings_key::DF,
                            settings_key::LF, settings_key::CT, settings_key::CA, settings_key::CC})
        store(key, QString());
    store(settings_key::FL, QStringLiteral("0"));
    store(settings_key::CQ, QString());
    ScriptedBoxes boxes;

    Read_Settings();

    const SettingsRecord d = defaults();
    EXPECT_TRUE(Settings().default_database.isEmpty());
    EXPECT_TRUE(Settings().log_file.isEmpty());
    EXPECT_TRUE(Settings().report_output_dir.isEmpty());
    EXPECT_TRUE(Settings().report_format_dir.isEmpty());
    EXPECT_TRUE(Settings().script_dir.isEmpty());
    EXPECT_EQ(Settings().file_locations, 2);
    EXPECT_EQ(Settings().term_script, d.term_script);
    EXPECT_EQ(Settings().activity_script, d.activity_script);
    EXPECT_EQ(Settings().cost_script, d.cost_script);
    EXPECT_EQ(Settings().report_list, d.report_list);
    EXPECT_EQ(Settings().course_query, title_query);
    EXPECT_FALSE(Abort_Flag());
}

TEST_F(SettingsTest, StoredValuesAreTakenAsTheyStand)
{
    store(settings_key::DF, QStringLiteral("/schools/north.mdb"));
    store(settings_key::LF, QStringLiteral("/var/log/north.log"));
    store(settings_key::CT, QStringLiteral("/schools/scripts/MyTerms.sql"));
    store(settings_key::FL, QStringLiteral("1"));
    store(settings_key::CQ, QStringLiteral("4"));
    ScriptedBoxes boxes;

    Read_Settings();

    EXPECT_EQ(Settings().default_database, QStringLiteral("/schools/north.mdb"));
    EXPECT_EQ(Settings().log_file, QStringLiteral("/var/log/north.log"));
    EXPECT_EQ(Settings().term_script, QStringLiteral("/schools/scripts/MyTerms.sql"));
    EXPECT_EQ(Settings().file_locations, 1);
    EXPECT_EQ(Settings().course_query, QStringLiteral("Qry_Order_Courses_Location_Day"));
}

TEST_F(SettingsTest, CourseQueryThatIsNoNumberGivesTheDefaultQuerySilently)
{
    store(settings_key::CQ, QStringLiteral("abc"));
    ScriptedBoxes boxes;

    Read_Settings();

    EXPECT_EQ(Settings().course_query, title_query);
}

TEST_F(SettingsTest, CourseQueryNumberOutOfRangeIsReportedAndGivesQueryOne)
{
    store(settings_key::CQ, QStringLiteral("7"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Invalid call to routine DB_Convert_Course_Qry"), engine::answer::Ok, 64);

    Read_Settings();

    EXPECT_EQ(Settings().course_query, title_query);
}

// ---- writing --------------------------------------------------------------------

TEST_F(SettingsTest, ReplaceWithoutEmptiesWritesOnlyTheGivenValues)
{
    Settings() = defaults();

    EXPECT_TRUE(Replace_Defaults(false, QString(), QString(), QString(), QString(), QString(), QString(), QString(),
                                 QString(), QStringLiteral("Qry_Order_Courses_Day"), 0, Settings()));

    EXPECT_EQ(stored_key_count(), 1);
    EXPECT_EQ(stored(settings_key::CQ), QStringLiteral("2"));
    EXPECT_EQ(Settings().course_query, QStringLiteral("Qry_Order_Courses_Day"));
    EXPECT_EQ(Settings().log_file, defaults().log_file);
    EXPECT_EQ(Settings().file_locations, 2);
}

TEST_F(SettingsTest, ReplaceWithEmptiesAllowedWritesEmptyValues)
{
    Settings() = defaults();

    EXPECT_TRUE(Replace_Defaults(true, QStringLiteral("/out"), QString(), QString(), QString(), QString(), QString(),
                                 QString(), QString(), QStringLiteral("Qry_Order_Courses_Location"), 1, Settings()));

    EXPECT_EQ(stored_key_count(), 10);
    EXPECT_EQ(stored(settings_key::LF), QString());
    EXPECT_EQ(stored(settings_key::FL), QStringLiteral("1"));
    EXPECT_EQ(stored(settings_key::CQ), QStringLiteral("3"));
    EXPECT_TRUE(Settings().log_file.isEmpty());
    EXPECT_EQ(Settings().report_output_dir, QStringLiteral("/out"));
}

TEST_F(SettingsTest, ReplaceThatCannotWriteReportsAndLeavesTheRecordAlone)
{
    Settings() = defaults();
    use_unwritable_store();
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Could NOT replace default values "), engine::answer::Ok, 16);

    EXPECT_FALSE(Replace_Defaults(true, QStringLiteral("/out"), QString(), QString(), QString(), QString(), QString(),
                                  QString(), QString(), QString(), 1, Settings()));

    EXPECT_EQ(Settings().report_output_dir, defaults().report_output_dir);
    EXPECT_EQ(Settings().file_locations, 2);
}

TEST_F(SettingsTest, SetDefaultDatabaseWritesAnnouncesAndLogs)
{
    Current_Log_File() = dir.filePath(QStringLiteral("quillary.log"));
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The default database has been changed to /schools/south.mdb"), engine::answer::Ok,
                 64);

    EXPECT_TRUE(Set_Default_Database(QStringLiteral("/schools/south.mdb")));

    EXPECT_EQ(stored(settings_key::DF), QStringLiteral("/schools/south.mdb"));
    EXPECT_EQ(Settings().default_database, QStringLiteral("/schools/south.mdb"));
    QFile log(Current_Log_File());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("globmain   : The default database has been changed to /schools/south.mdb ."));
    Current_Log_File().clear();
}

// ---- course order queries ---------------------------------------------------------

struct Conversion {
    QString name;
    short number;
};

Conversion convert(const QString& name, short number)
{
    Conversion c{name, number};
    DB_Convert_Course_Qry(c.name, c.number);
    return c;
}

TEST(CourseOrderQuery, NumbersGiveTheirNames)
{
    ScriptedBoxes boxes;
    EXPECT_EQ(convert(QString(), 2).name, QStringLiteral("Qry_Order_Courses_Day"));
    EXPECT_EQ(convert(QString(), 3).name, QStringLiteral("Qry_Order_Courses_Location"));
    EXPECT_EQ(convert(QString(), 4).name, QStringLiteral("Qry_Order_Courses_Location_Day"));
}

TEST(CourseOrderQuery, NamesGiveTheirNumbersAndAreLeftAsGiven)
{
    ScriptedBoxes boxes;
    const Conversion c = convert(QStringLiteral(" Qry_Order_Courses_Location "), 0);
    EXPECT_EQ(c.number, 3);
    EXPECT_EQ(c.name, QStringLiteral(" Qry_Order_Courses_Location "));
}

TEST(CourseOrderQuery, NothingGivenMeansQueryOne)
{
    ScriptedBoxes boxes;
    const Conversion c = convert(QString(), 0);
    EXPECT_EQ(c.number, 1);
    EXPECT_EQ(c.name, title_query);
}

TEST(CourseOrderQuery, UnknownNameKeepsNumberZeroWithoutReport)
{
    ScriptedBoxes boxes;
    for (const QString& name : {QStringLiteral("abc"), QStringLiteral("7")}) {
        const Conversion c = convert(name, 0);
        EXPECT_EQ(c.number, 0) << name.toStdString();
        EXPECT_EQ(c.name, name);
    }
}

TEST(CourseOrderQuery, NumberOutOfRangeIsReportedAndGivesQueryOne)
{
    for (short number : {short(7), short(5), short(-1)}) {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Invalid call to routine DB_Convert_Course_Qry"), engine::answer::Ok, 64);
        const Conversion c = convert(QString(), number);
        EXPECT_EQ(c.number, 1);
        EXPECT_EQ(c.name, title_query);
    }
}

TEST(CourseOrderQuery, NameAndNumberTogetherAreAnInvalidCall)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Invalid call to routine DB_Convert_Course_Qry"), engine::answer::Ok, 64);
    const Conversion c = convert(QStringLiteral("Qry_Order_Courses_Day"), 2);
    EXPECT_EQ(c.number, 1);
    EXPECT_EQ(c.name, title_query);
}

}  // namespace
