// Scripts that drive the tool the way a school's own scripts do: runs that
// overlap on one file, queries given nulls. A file held elsewhere is the
// invoicing's own business (run_lock_test).

#include "support/cli_runner.h"
#include "support/test_folder.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace {

using testing_support::CliRun;
using testing_support::CliRunner;

class ScriptingRunsTest : public ::testing::Test {
protected:
    // The demo school: its autumn term invoiced, spring (2) and summer (3) not.
    QString demo(const QString& file)
    {
        const QString name = dir.file(file);
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

    testing_support::TestFolder dir;
    CliRunner cli{dir.file(QStringLiteral("config"))};
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

TEST_F(ScriptingRunsTest, EachScriptingCommandExitsZeroWhenDoneOneWhenRefusedTwoWhenMisused)
{
    const QString name = demo(QStringLiteral("commands.mdb"));
    const QString script = dir.write_file(QStringLiteral("holiday.sql"),
                                          "display Holiday added.\nINSERT INTO Holidays (Day_Off) VALUES (#03/03/2028#);\nSELECT 1;\n");
    struct Case {
        QStringList args;
        int status;
        QString out_contains;
    };
    const QString db = name;
    const QList<Case> cases = {
        // The unknown command in the script asks; --no abandons the file, --yes skips the statement.
        {{"run-script", db, script, "--no"}, 1, "Script file abandoned and all changes undone"},
        {{"run-script", db, script, "--yes"}, 0, "Holiday added. Script successfully applied"},
        {{"run-script", db}, 2, ""}, {{"holiday", "add", db, "2028-03-04"}, 0, ""},
        {{"holiday", "add", db, "04/03/2028"}, 2, ""},
        {{"term", "save", db, "--name", "Winter 2027", "--start", "2027-01-04", "--end", "2027-02-26"}, 0,
         "saved; lessons Sunday to Saturday:"},
        {{"term", "save", db, "--name", "Backwards", "--start", "2027-05-04", "--end", "2027-02-26"}, 1, ""},
        {{"invoice", "terms", db, "--term", "1", "--yes"}, 1, "Script file abandoned and all changes undone"},
        {{"invoice", "delete", db, "terms", "--term", "2", "--no"}, 1, "Deletion Cancelled"},
        {{"invoice", "delete", db, "terms", "--term", "2", "--yes"}, 0, "Nothing Deleted"},
        {{"invoice", "activities", db, "--yes"}, 1, ""}, {{"invoice", "frobnicate", db}, 2, ""},
        {{"query", db, "Qry_No_Such_Query"}, 1, ""},
        {{"sql", db, "SELECT count(*) AS n FROM Holidays WHERE Day_Off >= #03/03/2028#"}, 0, "n\n2\n"},
        {{"sql", db, "UPDATE Nowhere SET x = 1"}, 1, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(QLatin1Char(' ')).toStdString());
        const CliRun run = cli.run(c.args);
        EXPECT_EQ(run.status, c.status) << run.out.toStdString() << run.err.toStdString();
        EXPECT_TRUE(run.out.contains(c.out_contains)) << run.out.toStdString();
        if (c.status == 2) {
            EXPECT_TRUE(run.err.contains(QStringLiteral("usage:"))) << run.err.toStdString();
        }
    }
}

TEST_F(ScriptingRunsTest, RowsArePrintedAsCsvThatSpreadsheetsReadBack)
{
    const QString name = demo(QStringLiteral("csv.mdb"));
    const CliRun run = cli.run({QStringLiteral("sql"), name,
                                QStringLiteral("SELECT 'Smith, Jones' AS [Family, names], 'say \"hi\"' AS quoted, "
                                               "'first' || char(10) || 'second' AS lines, 'a' || char(13) AS cr, 'plain' AS p")});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, QStringLiteral("\"Family, names\",quoted,lines,cr,p\n"
                                      "\"Smith, Jones\",\"say \"\"hi\"\"\",\"first\nsecond\",\"a\r\",plain\n"));
}

TEST_F(ScriptingRunsTest, AReportRunsIntoAFileOfTheKindItsNameSays)
{
    const QString name = demo(QStringLiteral("reports.mdb"));
    dir.write_file(QStringLiteral("Heading.rpt"), R"xml(<report version="1"><tables><table name="Standard_Values"/></tables>
  <area kind="details"><section height="8"><field x="0" y="0" width="120" height="7" source="{Standard_Values.School_Name}"/>
  </section></area></report>)xml");
    dir.write_file(QStringLiteral("Families.rpt"), R"xml(<report version="1" title="Families">
  <tables><table name="Families"/></tables><sort field="{Families.Family_Name}"/>
  <area kind="pageHeader"><section height="12"><subreport x="0" y="0" width="120" height="10" file="Heading.rpt"/></section></area>
  <area kind="details"><section height="6"><field x="0" y="0" width="80" height="5" source="{Families.Family_Name}"/></section></area>
</report>)xml");
    const QString pdf = dir.file(QStringLiteral("families.pdf"));
    const CliRun run = cli.run({QStringLiteral("report"), dir.file(QStringLiteral("Families.rpt")), QStringLiteral("--database"),
                                name, QStringLiteral("--out"), pdf, QStringLiteral("--record"),
                                QStringLiteral("{Families.Family_Name} in ['Abbott', 'Ahmed']")});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    QProcess text;
    text.start(QStringLiteral("pdftotext"), {pdf, QStringLiteral("-")});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString words = QString::fromUtf8(text.readAllStandardOutput());
    EXPECT_TRUE(words.contains(QStringLiteral("Bellwood School of Dance"))) << words.toStdString();
    EXPECT_TRUE(words.contains(QStringLiteral("Abbott")));
    EXPECT_FALSE(words.contains(QStringLiteral("Jenkins")));

    const CliRun broken = cli.run({QStringLiteral("report"), dir.file(QStringLiteral("Families.rpt")), QStringLiteral("--database"),
                                   name, QStringLiteral("--out"), pdf, QStringLiteral("--record"), QStringLiteral("{Families.Nowhere} = 1")});
    EXPECT_EQ(broken.status, 1);
    EXPECT_TRUE(broken.err.contains(QStringLiteral("box: Unexpected error exporting report"))) << broken.err.toStdString();
}

}  // namespace
