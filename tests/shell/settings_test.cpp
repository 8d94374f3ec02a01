#include "engine/settings_store.h"
#include "shell/app_globals.h"
#include "shell/install_folder.h"
#include "shell/settings.h"
#include "support/scripted_boxes.h"
#include "support/test_folder.h"

#include <QSettings>

#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

const QString title_query = QStringLiteral("Qry_Order_Courses_Title");

class SettingsTest : public ::testing::Test {
protected:
    SettingsTest()
    {
        set_install_folder_for_tests(install);
        Abort_Flag() = false;
    }
    ~SettingsTest() override
    {
        set_install_folder_for_tests(QString());
        Abort_Flag() = false;
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
        QSettings written(folder.file(QStringLiteral("s.ini")), QSettings::IniFormat);
        written.beginGroup(QStringLiteral("Startup"));
        return static_cast<int>(written.childKeys().size());
    }

    // A store that cannot be written: its folder would have to be made inside a file.
    void use_unwritable_store()
    {
        const QString blocker = folder.write_file(QStringLiteral("blocker"), QString());
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(blocker + QStringLiteral("/s.ini")));
    }

    static SettingsRecord defaults()
    {
        SettingsRecord record;
        Default_Settings(record);
        return record;
    }

    testing_support::TestFolder folder;
    const QString install = folder.file(QStringLiteral("F"));
};

// ---- defaults -----------------------------------------------------------------

TEST_F(SettingsTest, TheDemoSchoolAndTheLogAreLookedForInTheInstallFolder)
{
    for (const QString& install_folder : {QStringLiteral("/opt/quillary"), QStringLiteral("/opt/quillary/")}) {
        SCOPED_TRACE(install_folder.toStdString());
        set_install_folder_for_tests(install_folder);
        EXPECT_EQ(defaults().default_database, QStringLiteral("/opt/quillary/database/Demo.mdb"));
        EXPECT_EQ(defaults().log_file, QStringLiteral("/opt/quillary/quillary.log"));
    }
}

// ---- first run ----------------------------------------------------------------

TEST_F(SettingsTest, FirstRunAnsweredYesWritesEveryValueAndCarriesOn)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("Is this the first time"), engine::answer::Yes, 36);
    boxes.expect(QStringLiteral("The default database has been changed to ") + install +
                     QStringLiteral("/database/Demo.mdb"),
                 engine::answer::Ok, 64);

    Read_Settings();

    EXPECT_EQ(boxes.shown().value(0), QStringLiteral("Could not open the Registry, section for quillary\n"
                                                     "Is this the first time that you have run this program?"));
    EXPECT_EQ(boxes.titles().value(0), App_Title());
    EXPECT_FALSE(Abort_Flag());
    EXPECT_EQ(stored_key_count(), 11);
    EXPECT_EQ(stored(settings_key::CQ), QStringLiteral("1"));
    EXPECT_EQ(stored(settings_key::LF), install + QStringLiteral("/quillary.log"));
    EXPECT_EQ(Settings().default_database, defaults().default_database);
    EXPECT_EQ(Settings().log_file, defaults().log_file);
    EXPECT_EQ(Settings().course_query, title_query);
}

TEST_F(SettingsTest, FirstRunAnsweredNoOrUnableToWriteWritesNothingAndAborts)
{
    {
        ScriptedBoxes boxes;
        boxes.expect(QStringLiteral("Is this the first time"), engine::answer::No, 36);
        Read_Settings();
        EXPECT_TRUE(Abort_Flag());
        EXPECT_EQ(stored_key_count(), 0);
    }
    Abort_Flag() = false;
    use_unwritable_store();
    ScriptedBoxes().expect(QStringLiteral("Is this the first time"), engine::answer::Yes)
        .expect(QStringLiteral("Could NOT replace default values "), engine::answer::Ok, 16)
        .during([&] { Read_Settings(); });
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

    const SettingsRecord& r = Settings();
    const SettingsRecord d = defaults();
    EXPECT_EQ(QStringList({r.default_database, r.log_file, r.report_output_dir, r.report_format_dir, r.script_dir}),
              QStringList(5, QString()));
    EXPECT_EQ(QStringList({r.term_script, r.activity_script, r.cost_script, r.report_list, r.course_query}),
              QStringList({d.term_script, d.activity_script, d.cost_script, d.report_list, title_query}));
    EXPECT_EQ(r.file_locations, 2);
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

// ---- writing --------------------------------------------------------------------

TEST_F(SettingsTest, ReplaceWritesTheGivenValuesAndTheEmptyOnesOnlyWhenAllowed)
{
    Settings() = defaults();

    EXPECT_TRUE(Replace_Defaults(false, QString(), QString(), QString(), QString(), QString(), QString(), QString(),
                                 QString(), QStringLiteral("Qry_Order_Courses_Day"), 0, Settings()));

    EXPECT_EQ(stored_key_count(), 1);
    EXPECT_EQ(stored(settings_key::CQ), QStringLiteral("2"));
    EXPECT_EQ(Settings().course_query, QStringLiteral("Qry_Order_Courses_Day"));
    EXPECT_EQ(Settings().log_file, defaults().log_file);
    EXPECT_EQ(Settings().file_locations, 2);

    // With empties allowed, the empty values are written too.
    EXPECT_TRUE(Replace_Defaults(true, QStringLiteral("/out"), QString(), QString(), QString(), QString(), QString(),
                                 QString(), QString(), QStringLiteral("Qry_Order_Courses_Location"), 1, Settings()));

    EXPECT_EQ(stored_key_count(), 10);
    EXPECT_EQ(stored(settings_key::LF), QString());
    EXPECT_EQ(stored(settings_key::FL), QStringLiteral("1"));
    EXPECT_EQ(stored(settings_key::CQ), QStringLiteral("3"));
    EXPECT_TRUE(Settings().log_file.isEmpty());
    EXPECT_EQ(Settings().report_output_dir, QStringLiteral("/out"));

    // A store that can't be written is reported and the record left alone.
    use_unwritable_store();
    ScriptedBoxes().expect(QStringLiteral("Could NOT replace default values "), engine::answer::Ok, 16).during([] {
        EXPECT_FALSE(Replace_Defaults(true, QStringLiteral("/elsewhere"), QString(), QString(), QString(), QString(),
                                      QString(), QString(), QString(), QString(), 2, Settings()));
    });
    EXPECT_EQ(Settings().report_output_dir, QStringLiteral("/out"));
    EXPECT_EQ(Settings().file_locations, 1);
}

TEST_F(SettingsTest, SetDefaultDatabaseWritesAnnouncesAndLogs)
{
    ScriptedBoxes boxes;
    boxes.expect(QStringLiteral("The default database has been changed to /schools/south.mdb"), engine::answer::Ok,
                 64);

    EXPECT_TRUE(Set_Default_Database(QStringLiteral("/schools/south.mdb")));

    EXPECT_EQ(stored(settings_key::DF), QStringLiteral("/schools/south.mdb"));
    EXPECT_EQ(Settings().default_database, QStringLiteral("/schools/south.mdb"));
    EXPECT_TRUE(folder.log_text().contains("globmain   : The default database has been changed to /schools/south.mdb ."));
}

// ---- course order queries ---------------------------------------------------------

// A number gives its name, a name its number; a name given is only searched
// for, so an unknown one comes back with number 0 and no report.
TEST(CourseOrderQuery, NamesAndNumbersConvertAndAnInvalidCallIsReportedAsQueryOne)
{
    struct Case {
        QString name;
        short number;
        QString name_after;
        short number_after;
        bool reported;
    };
    const QString location = QStringLiteral(" Qry_Order_Courses_Location ");
    const QList<Case> cases = {
        {QString(), 2, "Qry_Order_Courses_Day", 2, false}, {QString(), 3, "Qry_Order_Courses_Location", 3, false},
        {QString(), 4, "Qry_Order_Courses_Location_Day", 4, false}, {location, 0, location, 3, false},
        {QString(), 0, title_query, 1, false}, {"abc", 0, "abc", 0, false}, {"7", 0, "7", 0, false},
        {QString(), 7, title_query, 1, true}, {QString(), 5, title_query, 1, true},
        {QString(), -1, title_query, 1, true}, {"Qry_Order_Courses_Day", 2, title_query, 1, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name.toStdString() + " " + std::to_string(c.number));
        ScriptedBoxes boxes;
        if (c.reported)
            boxes.expect(QStringLiteral("Invalid call to routine DB_Convert_Course_Qry"), engine::answer::Ok, 64);
        QString name = c.name;
        short number = c.number;
        DB_Convert_Course_Qry(name, number);
        EXPECT_EQ(name, c.name_after);
        EXPECT_EQ(number, c.number_after);
    }
}

}  // namespace
