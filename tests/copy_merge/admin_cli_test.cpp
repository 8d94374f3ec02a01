// The administration commands of the command-line tool, run as scripts run
// them: the real program on real files.

#include "database/db_handling.h"
#include "support/database_file.h"
#include "support/school_made_current.h"
#include "support/cli_runner.h"

#include <QFile>
#include <gtest/gtest.h>

using testing_support::AdminSchool;
using testing_support::CliRun;
using testing_support::NewActivity;
using testing_support::values_in;

namespace {

class AdminCliTest : public ::testing::Test {
protected:
    AdminCliTest()
    {
        const int smiths = school.add_family(QStringLiteral("Smith"));
        const int anna = school.add_pupil(smiths, QStringLiteral("Anna"));
        const int exam = school.add_activity(NewActivity(QStringLiteral("Grade 1")));
        const int show = school.add_activity(NewActivity(QStringLiteral("Summer Show")).of_kind(code::exam_type::Show));
        school.enter(anna, exam, QDate(2026, 3, 14));
        school.enter(anna, show, QDate(2026, 7, 4));
        school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        DB_Close_All();
    }

    CliRun tool(const QStringList& args) { return cli.run(args); }

    AdminSchool school;
    testing_support::CliRunner cli{school.file(QStringLiteral("config"))};
};

TEST_F(AdminCliTest, CopyMakesTheNewFileWithoutTheBlankRowThenCopiesAsCopySelectionDoes)
{
    const QString some = school.file(QStringLiteral("some.qdb"));
    CliRun run = tool({QStringLiteral("copy"), school.path(), some});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("successfully copied\n"));
    EXPECT_EQ(values_in(some, "SELECT count(*) FROM Standard_Values"), QStringList{"1"});
    EXPECT_EQ(values_in(some, "SELECT Exam_Title FROM Exams"), QStringList{"Grade 1"});
    EXPECT_EQ(values_in(some, "SELECT count(*) FROM Term_Dates"), QStringList{"0"});

    const QString all = school.file(QStringLiteral("all.qdb"));
    run = tool({QStringLiteral("copy"), school.path(), all, QStringLiteral("--all")});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(values_in(all, "SELECT count(*) FROM Exams"), QStringList{"2"});
    EXPECT_EQ(values_in(all, "SELECT count(*) FROM Term_Dates"), QStringList{"1"});

    // A file that exists already is never a copy's target.
    const QByteArray before = testing_support::digest_of(all);
    run = tool({QStringLiteral("copy"), school.path(), all});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("This filename already exists.")));
    EXPECT_EQ(testing_support::digest_of(all), before);
}

TEST_F(AdminCliTest, BackupMakesTheCompressedCopyAndRecordsItInTheSource)
{
    const QString copy = school.file(QStringLiteral("backup.qdb"));
    const CliRun run = tool({QStringLiteral("backup"), school.path(), copy});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith(QStringLiteral("Successfully Copied. Please keep it in a safe place!")));
    EXPECT_EQ(values_in(copy, "SELECT count(*) FROM Exam_Results"), QStringList{"2"});
    EXPECT_EQ(values_in(school.path(), "SELECT s_Backup_filename FROM Sys_tab"), QStringList{copy});
}

TEST_F(AdminCliTest, MergeAndRepairSayHowTheyWent)
{
    const QString target = school.file(QStringLiteral("target.qdb"));
    CliRun run = tool({QStringLiteral("copy"), school.path(), target});
    run = tool({QStringLiteral("merge"), school.path(), target});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("Successfully merged\n"));
    EXPECT_EQ(values_in(target, "SELECT count(*) FROM Term_Dates"), QStringList{"1"});

    run = tool({QStringLiteral("merge"), school.path(), school.path()});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(QFile::exists(school.path()));

    run = tool({QStringLiteral("repair"), target});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("Successfully Repaired. \n"));
}

}  // namespace
