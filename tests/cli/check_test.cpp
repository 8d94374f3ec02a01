// The command-line tool as scripts use it: real program, real files.

#include "support/cli_runner.h"
#include "support/database_file.h"
#include "support/template_database.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

namespace {

using testing_support::CliRun;

// The exit status (0 done, 1 failed, 2 misused) and what the tool printed;
// its message boxes go to standard error, and a question is answered No.
TEST(CliTest, CheckPrintsTheSystemRowOfAFileItCanOpenAndSaysWhyItCannot)
{
    testing_support::TestFolder folder;
    const QString school = testing_support::copy_of_new_database(folder.file(QStringLiteral("school.mdb")), true);
    const QString old = testing_support::change_in(
        testing_support::copy_of_new_database(folder.file(QStringLiteral("old.mdb")), true),
        QStringLiteral("UPDATE Sys_tab SET s_DB_Type = 7"));
    struct Case {
        QStringList args;
        int status;
        QString out, err;  // what each contains; out empty: nothing printed, err empty: no box shown
    };
    const QList<Case> cases = {
        {{"--version"}, 0, "quillary-cli ", ""}, {{"check", school}, 0, "version: 13\nstyle: 2\n", ""},
        {{"check", old}, 1, "", "box: This database is an old version. \nbox: \nbox: It can be upgraded"},
        {{"check", folder.file(QStringLiteral("missing.mdb"))}, 1, "", "box: Could not open the database"},
        {{"frobnicate"}, 2, "", "usage:"},
    };
    const testing_support::CliRunner cli(folder.file(QStringLiteral("config")));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.join(QLatin1Char(' ')).toStdString());
        const CliRun run = cli.run(c.args);
        EXPECT_EQ(run.status, c.status) << run.err.toStdString();
        EXPECT_TRUE(c.out.isEmpty() ? run.out.isEmpty() : run.out.contains(c.out)) << run.out.toStdString();
        EXPECT_TRUE(c.err.isEmpty() ? !run.err.contains(QStringLiteral("box:")) : run.err.contains(c.err)) << run.err.toStdString();
    }
}

}  // namespace
