// Change Defaults without its screen: the check of each new value as its box
// is left, and the applying of all of them in one step, shared by all
// schools in the settings or kept per school in the database.

#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "engine/settings_store.h"
#include "shell/change_defaults.h"
#include "shell/settings.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace change_defaults;
using testing_support::ScriptedBoxes;

namespace {

class ChangeDefaults : public ::testing::Test {
protected:
    ChangeDefaults()
    {
        QDir().mkpath(folder());
        script = school.write_file(QStringLiteral("Spring.sql"), QStringLiteral("display Spring."));
        in_force = In_Force();
    }
    QString folder() const { return school.file(QStringLiteral("scripts")); }
    QString stored(const char* key) const
    {
        return engine::settings_store().GetSetting(QStringLiteral("Startup"), QLatin1String(key), QStringLiteral("<none>"));
    }
    QString sys(const char* column) { return school.scalar(QStringLiteral("SELECT %1 FROM Sys_tab").arg(QLatin1String(column))).toString(); }

    testing_support::SchoolMadeCurrent school;
    QString script;
    Locations in_force;
};

TEST_F(ChangeDefaults, EachChangedValueIsCheckedAsItsBoxIsLeft)
{
    const QString existing = school.write_file(QStringLiteral("old.log"), QStringLiteral("x"));
    struct Case {
        Row row;
        QString text;
        bool accepted;
        QString refusal;  // empty: nothing shown
    };
    const QList<Case> cases = {
        {Repfmt_dir, school.file(QStringLiteral("no such folder")), false, QStringLiteral("This is not a valid directory.")},
        {Report_dir, folder(), true, QString()},
        {CrTermInv_File, school.file(QStringLiteral("missing.sql")), false, QString()},
        {RepLst_File, script, true, QString()},
        {logfile, existing, false, QStringLiteral("This file already exists.")},
        {logfile, school.file(QStringLiteral("gone/new.log")), false, QStringLiteral("This file cannot be opened.")},
        {logfile, school.file(QStringLiteral("new.log")), true, QString()},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        ScriptedBoxes boxes;
        if (!c.refusal.isEmpty())
            boxes.expect(c.refusal);
        boxes.during([&] { EXPECT_EQ(Check_New_Value(c.row, c.text, QStringLiteral("in force")), c.accepted); });
    }
    // A log file is only tried, not left behind; a value in force is never refused.
    EXPECT_FALSE(QFile::exists(school.file(QStringLiteral("new.log"))));
    EXPECT_TRUE(Check_New_Value(Repfmt_dir, QStringLiteral("/no/such/folder"), QStringLiteral("/no/such/folder")));
}

TEST_F(ChangeDefaults, NothingChangedWritesAndLogsNothing)
{
    EXPECT_TRUE(Apply_New_Values(in_force, in_force));
    EXPECT_EQ(stored("$FL"), QStringLiteral("<none>"));
    EXPECT_FALSE(school.log_text().contains(QStringLiteral("Default values replaced")));
}

TEST_F(ChangeDefaults, ValuesForAllSchoolsGoToTheSettingsAndNotToTheDatabase)
{
    Locations wanted = in_force;
    wanted.values[CrTermInv_File] = script;
    wanted.values[user_dir] = folder();
    wanted.store = 2;
    EXPECT_TRUE(Apply_New_Values(in_force, wanted));
    EXPECT_EQ(stored("$CT"), script);
    EXPECT_EQ(stored("$UD"), folder());
    EXPECT_EQ(Settings().term_script, script);
    EXPECT_EQ(sys("s_Filename_InvTerm"), QString());
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Default values replaced")));
    EXPECT_FALSE(school.log_text().contains(QStringLiteral("Logfile changed to")));
}

// The database never keeps the course costs file: the query that stores the
// locations leaves that column as it was.
TEST_F(ChangeDefaults, ValuesForEachSchoolGoIntoTheOpenDatabaseSaveTheCourseCostsFile)
{
    Locations wanted = in_force;
    wanted.values[CrTermInv_File] = script;
    wanted.values[CrCosts_File] = script;
    wanted.values[logfile] = school.file(QStringLiteral("new.log"));
    wanted.store = 1;
    EXPECT_TRUE(Apply_New_Values(in_force, wanted));
    EXPECT_EQ(sys("s_Style_Type"), QStringLiteral("1"));
    EXPECT_EQ(sys("s_Filename_InvTerm"), script);
    EXPECT_EQ(sys("s_Filename_CrsCost"), QString());
    EXPECT_EQ(stored("$FL"), QStringLiteral("1"));
    EXPECT_EQ(stored("$LF"), school.file(QStringLiteral("new.log")));
    EXPECT_EQ(stored("$CT"), QStringLiteral("<none>"));
    EXPECT_EQ(Settings().term_script, script);
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Logfile changed to ") + school.file(QStringLiteral("new.log"))));

    DB_Close_All();
    wanted.values[CrTermInv_File] = in_force.values[CrTermInv_File];
    ScriptedBoxes().expect(QStringLiteral("Could not set up sys table")).during([&] { EXPECT_FALSE(Apply_New_Values(in_force, wanted)); });
}

}  // namespace
