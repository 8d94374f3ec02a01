// Scripts that drive the tool the way a school's own scripts do: runs that
// overlap on one file, a file held by another program, queries given nulls.

#include "support/cli_runner.h"

#include <QLockFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sqlite3.h>

namespace {

using testing_support::CliRun;
using testing_support::CliRunner;

class ScriptingRunsTest : public ::testing::Test {
protected:
    // The demo school: its autumn term invoiced, spring (2) and summer (3) not.
    QString demo(const QString& file)
    {
        const QString name = dir.filePath(file);
        const CliRun made = cli.run({QStringLiteral("demo"), name});
        EXPECT_EQ(made.status, 0) << made.err.toStdString();
        return name;
    }
    int invoices_of_term(const QString& name, int term)
    {
        const CliRun counted = cli.run({QStringLiteral("sql"), name,
                                        QStringLiteral("SELECT count(*) AS n FROM Invoices WHERE Invoice_Term_id = %1").arg(term)});
        EXPECT_EQ(counted.status, 0) << counted.err.toStdString();
        return counted.out.split(QLatin1Char('\n')).value(1).toInt();
    }
    QStringList term_run(const QString& name, int term) const
    {
        return {QStringLiteral("invoice"), QStringLiteral("terms"), name, QStringLiteral("--term"), QString::number(term),
                QStringLiteral("--yes")};
    }

    QTemporaryDir dir;
    CliRunner cli{dir.filePath(QStringLiteral("config"))};
};

TEST_F(ScriptingRunsTest, TwoTermRunsStartedTogetherBothRaiseTheirInvoices)
{
    for (int round = 0; round < 5; ++round) {
        SCOPED_TRACE(round);
        const QString name = demo(QStringLiteral("overlap%1.mdb").arg(round));
        auto spring = cli.start(term_run(name, 2));
        auto summer = cli.start(term_run(name, 3));
        const CliRun spring_run = CliRunner::finish(*spring);
        const CliRun summer_run = CliRunner::finish(*summer);
        EXPECT_EQ(spring_run.status, 0) << spring_run.err.toStdString();
        EXPECT_EQ(summer_run.status, 0) << summer_run.err.toStdString();
        EXPECT_GT(invoices_of_term(name, 2), 0);
        EXPECT_EQ(invoices_of_term(name, 2), invoices_of_term(name, 3));
    }
}

TEST_F(ScriptingRunsTest, ARunWhileAnotherHoldsTheTablesWaitsThenRefusesNamingTheDatabase)
{
    const QString name = demo(QStringLiteral("held.mdb"));
    QLockFile other_run(name + QStringLiteral(".run-lock"));
    ASSERT_TRUE(other_run.tryLock());
    const CliRun refused = cli.run(term_run(name, 2));
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("box: Another invoicing or report run is using the database ") + name))
        << refused.err.toStdString();
    EXPECT_EQ(invoices_of_term(name, 2), 0);
}

TEST_F(ScriptingRunsTest, ARunOnAFileAnotherProgramIsWritingStopsAndSaysNothingWasRaised)
{
    const QString name = demo(QStringLiteral("busy.mdb"));
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open_v2(name.toUtf8().constData(), &other, SQLITE_OPEN_READWRITE, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    const CliRun run = cli.run(term_run(name, 2));
    sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close_v2(other);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("file already in use"))) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(QStringLiteral("successfully"))) << run.out.toStdString();
    EXPECT_EQ(invoices_of_term(name, 2), 0);
}

TEST_F(ScriptingRunsTest, AQueryTakesNullsAndNamesWhatIsMissing)
{
    const QString name = demo(QStringLiteral("writeoff.mdb"));
    // A write-off line as the receipts screen makes it: no pupil, course or activity.
    const QStringList write_off = {QStringLiteral("query"), name, QStringLiteral("Qry_Insert_Invoice_Line"),
                                   QStringLiteral("par_Invoice_id=1"), QStringLiteral("--null"), QStringLiteral("par_Pupil_id"),
                                   QStringLiteral("--null"), QStringLiteral("par_Course_id"), QStringLiteral("--null"),
                                   QStringLiteral("par_Activity_id"), QStringLiteral("par_Type=9"),
                                   QStringLiteral("par_Amount=-2.5")};
    const CliRun missing = cli.run(write_off);
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.contains(QStringLiteral("error 3061: Too few parameters. Expected 1. (No value for par_Description.)")))
        << missing.err.toStdString();

    const CliRun written = cli.run(write_off + QStringList{QStringLiteral("par_Description=Written off")});
    EXPECT_EQ(written.status, 0) << written.err.toStdString();
    EXPECT_EQ(written.out, QStringLiteral("records affected: 1\n"));
    const CliRun line = cli.run({QStringLiteral("sql"), name,
                                 QStringLiteral("SELECT Inv_Line_Pupil_id IS NULL AS no_pupil, Amount FROM Invoice_Lines "
                                                "WHERE Inv_Line_Type = 9 AND Description = 'Written off'")});
    EXPECT_EQ(line.out, QStringLiteral("no_pupil,Amount\n1,-2.5\n")) << line.out.toStdString();
}

}  // namespace
