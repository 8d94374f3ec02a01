// The database administration commands as the screens run them: refusals in
// their words, the questions whose answers keep or delete, copies, merges,
// backups and the commands that end with the default database open again.

#include "database/database_change.h"
#include "database/database_control.h"
#include "database/database_facts.h"
#include "database/db_handling.h"
#include "engine/msg_box.h"
#include "shell/file_checks.h"
#include "shell/settings.h"
#include "support/database_file.h"
#include "support/old_version_file.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"
#include "support/template_database.h"

#include <QFile>
#include <QFileInfo>
#include <functional>

#include <gtest/gtest.h>

using engine::answer::No;
using engine::answer::Yes;
using testing_support::ScriptedBoxes;
using testing_support::value_in;

namespace {

struct NameBox : TextBoxLike {
    QString value;
    explicit NameBox(QString text = QString()) : value(std::move(text)) {}
    QString text() const override { return value; }
    void setText(const QString& text) override { value = text; }
    void setFocus() override {}
};

class DatabaseAdmin : public ::testing::Test {
protected:
    DatabaseAdmin()
    {
        Settings().default_database = school.path();
        change.show_current();
    }
    QString file(const char* name) const { return school.file(QString::fromLatin1(name)); }
    QString count_in(const QString& path, const char* table)
    {
        return value_in(path, QStringLiteral("SELECT count(*) FROM %1").arg(QString::fromLatin1(table)));
    }

    testing_support::SchoolMadeCurrent school;
    DatabaseChange change;
    DatabaseControl control;
};

TEST_F(DatabaseAdmin, RefusalsSayWhyAndLeaveTheDatabaseOpen)
{
    QFile(file("taken.mdb")).open(QIODevice::WriteOnly);
    struct Case {
        const char* story;
        QString typed;
        std::function<void(NameBox&)> command;
        QString words;
    };
    const QList<Case> cases = {
        {"delete new, blank", QString(), [&](NameBox& b) { change.delete_new(b); },
         QStringLiteral("Enter a new database name and try again.")},
        {"delete new, the current one", school.path(), [&](NameBox& b) { change.delete_new(b); },
         QStringLiteral("This is the current database.Use the Delete Current button to try again.")},
        {"merge, blank", QStringLiteral("  "), [&](NameBox& b) { change.merge(b); },
         QStringLiteral("Enter a new database name and try again.")},
        {"merge into itself", school.path(), [&](NameBox& b) { change.merge(b); },
         QStringLiteral("The New database is the current database.Enter a different database and try again.")},
        {"create over a file", file("taken"), [&](NameBox& b) { change.create_empty(b); },
         QStringLiteral("This filename already exists.\nEnter a new filename and try again.")},
        {"backup over a file", file("taken.mdb"),
         [&](NameBox& b) { control.run(DatabaseControl::Command::Backup, b, school.path()); },
         QStringLiteral("This filename already exists.")},
        {"upgrade of no name", QString(), [&](NameBox& b) { control.run(DatabaseControl::Command::Upgrade, b, QString()); },
         QStringLiteral("Enter a New database name and try again.")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.story);
        NameBox box(c.typed);
        ScriptedBoxes().expect(c.words).during([&] { c.command(box); });
        EXPECT_TRUE(change.status.isEmpty());
        EXPECT_EQ(Current_Db_Name(), school.path());
    }
    // Without a current database there is nothing to delete, compress or copy.
    change.current_name.clear();
    NameBox box(file("copy.mdb"));
    ScriptedBoxes()
        .expect(QStringLiteral("Enter a Current database name and try again."))
        .expect(QStringLiteral("There is no current database to compress."))
        .expect(QStringLiteral("There is no current database to copy."))
        .during([&] {
            change.delete_current();
            change.copy_all(box);
            change.copy_selection(box, true);
        });
    EXPECT_FALSE(QFile::exists(file("copy.mdb")));
}

TEST_F(DatabaseAdmin, ANewEmptyDatabaseTakesTheDefaultExtensionAndIsNotOpened)
{
    NameBox box(file("spring"));
    change.create_empty(box);
    EXPECT_EQ(change.status, QStringLiteral("New database created"));
    EXPECT_EQ(box.value, file("spring"));
    EXPECT_EQ(value_in(file("spring.mdb"), QStringLiteral("SELECT count(*) FROM Standard_Values")), QStringLiteral("1"));
    EXPECT_EQ(Current_Db_Name(), school.path());
}

TEST_F(DatabaseAdmin, DeletingTheCurrentDatabaseTakesTheAnswerNo)
{
    const QString question = QStringLiteral("THINK !! \nDo you need the information in ") + school.path();
    ScriptedBoxes().expect(question, Yes, engine::mb::YesNo | engine::mb::Question).during([&] { change.delete_current(); });
    EXPECT_EQ(change.status, QStringLiteral("Deletion cancelled"));
    EXPECT_TRUE(QFile::exists(school.path()));

    ScriptedBoxes().expect(question, No).during([&] { change.delete_current(); });
    EXPECT_EQ(change.status, QStringLiteral("database deleted"));
    EXPECT_FALSE(QFile::exists(school.path()));
    EXPECT_TRUE(change.current_name.isEmpty());
    EXPECT_EQ(Current_Db(), nullptr);
}

// The roll-forward copy keeps the people and leaves terms and invoices
// behind; the current database stays closed until the way out reopens it.
TEST_F(DatabaseAdmin, ASelectionCopyOfPeopleOnlyAndTheWayBackToTheCurrentDatabase)
{
    const int ashby = school.add_family(QStringLiteral("Ashby"));
    school.add_pupil(ashby, QStringLiteral("Amy"));
    school.add_invoice(ashby, QStringLiteral("Spring"), school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 28)));
    NameBox box(file("autumn.mdb"));
    change.copy_selection(box, false);
    EXPECT_EQ(change.status, QStringLiteral("successfully copied"));
    EXPECT_EQ(Current_Db(), nullptr);
    EXPECT_EQ(count_in(file("autumn.mdb"), "Pupils"), QStringLiteral("1"));
    EXPECT_EQ(count_in(file("autumn.mdb"), "Term_Dates"), QStringLiteral("0"));
    EXPECT_EQ(count_in(file("autumn.mdb"), "Invoices"), QStringLiteral("0"));

    EXPECT_TRUE(change.exit_current());
    EXPECT_EQ(Current_Db_Name(), school.path());
}

TEST_F(DatabaseAdmin, AMergeAnsweredNoIsAbandonedAndAnsweredOtherwiseAddsWhatTheTargetLacks)
{
    school.add_family(QStringLiteral("Ashby"));
    NameBox copy(file("copy.mdb"));
    change.copy_all(copy);
    ASSERT_EQ(change.status, QStringLiteral("Successfully completed the copy and compress"));
    ASSERT_TRUE(change.exit_current());
    school.add_family(QStringLiteral("Brook"));

    const QString question = QStringLiteral("THINK !! \nHave you taken to take a copy of ") + file("copy.mdb")
                             + QStringLiteral(" before merging?\nIf the merge fails, this file will be deleted.");
    ScriptedBoxes().expect(question, No).during([&] { change.merge(copy); });
    EXPECT_EQ(change.status, QStringLiteral("Merge abandoned"));
    EXPECT_EQ(count_in(file("copy.mdb"), "Families"), QStringLiteral("1"));
    ScriptedBoxes().expect(question, Yes).during([&] { change.merge(copy); });
    EXPECT_EQ(change.status, QStringLiteral("Successfully merged"));
    EXPECT_EQ(count_in(file("copy.mdb"), "Families"), QStringLiteral("2"));
}

TEST_F(DatabaseAdmin, UsingAnotherDatabaseMakesItTheDefaultAndATooNewOneIsRefused)
{
    const QString newer = testing_support::change_in(testing_support::copy_of_new_database(file("newer.mdb"), true),
                                                     QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 14"));
    NameBox box(newer);
    ScriptedBoxes()
        .expect(QStringLiteral("This program cannot use this database version. "))
        .expect(QStringLiteral("Couldn't open this file as a database."))
        .during([&] { EXPECT_FALSE(change.use_new(box)); });
    EXPECT_EQ(Current_Db(), nullptr);

    box.value = testing_support::copy_of_new_database(file("other.mdb"), true);
    ScriptedBoxes().expect(QStringLiteral("The default database has been changed to ") + file("other.mdb"))
        .during([&] { EXPECT_TRUE(change.use_new(box)); });
    EXPECT_EQ(Current_Db_Name(), file("other.mdb"));
    EXPECT_EQ(Settings().default_database, file("other.mdb"));
}

TEST_F(DatabaseAdmin, ABackupIsANewCompressedCopyRecordedInTheDefaultDatabase)
{
    EXPECT_TRUE(Gather_Database_Facts().backup_date.isEmpty());
    NameBox box(file("backup"));
    control.run(DatabaseControl::Command::Backup, box, school.path());
    EXPECT_EQ(control.status, QStringLiteral("Successfully Copied. Please keep it in a safe place!"));
    EXPECT_EQ(Current_Db_Name(), school.path());
    EXPECT_EQ(value_in(file("backup.mdb"), QStringLiteral("SELECT s_DB_Type FROM Sys_tab")), QStringLiteral("13"));
    const DatabaseFacts facts = Gather_Database_Facts();
    EXPECT_EQ(facts.backup_file, file("backup.mdb"));
    EXPECT_FALSE(facts.backup_date.isEmpty());
    EXPECT_EQ(facts.file_name, school.path());
    EXPECT_EQ(facts.size.toLongLong(), QFileInfo(school.path()).size());
}

TEST_F(DatabaseAdmin, RefreshRepairAndUpgradeEndWithTheDefaultDatabaseOpen)
{
    upgrade_testing::make_old_version_file(file("old.mdb"), 7);
    struct Case {
        DatabaseControl::Command command;
        QString name;
        QString box;  // the report shown; empty for none
        QString status;
    };
    const QList<Case> cases = {
        {DatabaseControl::Command::Refresh, school.path(),
         QStringLiteral("The Queries on database ") + school.path() + QStringLiteral(" have been refreshed."),
         QStringLiteral("The Queries have been refreshed.")},
        {DatabaseControl::Command::Repair, file("old.mdb"), QString(), QStringLiteral("Successfully Repaired. ")},
        {DatabaseControl::Command::Upgrade, file("old"), QStringLiteral("The database has been upgraded."),
         QStringLiteral("The database has been upgraded.")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.status.toStdString());
        NameBox box(c.name);
        ScriptedBoxes boxes;
        if (!c.box.isEmpty())
            boxes.expect(c.box);
        boxes.during([&] { control.run(c.command, box, school.path()); });
        EXPECT_EQ(control.status, c.status);
        EXPECT_EQ(Current_Db_Name(), school.path());
    }
    EXPECT_EQ(value_in(file("old.mdb"), QStringLiteral("SELECT s_DB_Type FROM Sys_tab")), QStringLiteral("13"));
}

}  // namespace
