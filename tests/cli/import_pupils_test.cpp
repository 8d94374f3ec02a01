// quillary-cli import-pupils as a script uses it: a file read into a school,
// a refused line that leaves the school as it was, the options.

#include "support/cli_runner.h"
#include "support/database_file.h"
#include "support/template_database.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using testing_support::CliRun;

// A line of 27 fields: first name, family name, gender and the first address line given.
QString line(const QString& first, const QString& family, const QString& gender = QStringLiteral("F"))
{
    QStringList fields(27);
    fields[0] = first;
    fields[1] = family;
    fields[4] = gender;
    fields[17] = QStringLiteral("\"1 High Street, Leeds\"");
    return fields.join(QLatin1Char(','));
}

class ImportPupilsCli : public ::testing::Test {
protected:
    QString file(const QString& name, const QStringList& lines)
    {
        QFile out(dir.filePath(name));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write((lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toUtf8());
        return out.fileName();
    }
    QStringList pupils() const
    {
        return testing_support::values_in(school, QStringLiteral("SELECT Pupil_FirstName FROM Pupils ORDER BY Pupil_id"));
    }

    QTemporaryDir dir;
    const QString school = testing_support::copy_of_new_database(dir.filePath(QStringLiteral("school.mdb")), true);
    testing_support::CliRunner cli{dir.filePath(QStringLiteral("config"))};
};

TEST_F(ImportPupilsCli, AGoodFileIsImportedAndSaysHowMany)
{
    const QString path = file(QStringLiteral("good.csv"), {line(QStringLiteral("Amy"), QStringLiteral("O'Brien")),
                                                           line(QStringLiteral("Ben"), QStringLiteral("Brook"), QStringLiteral("M"))});
    const CliRun run = cli.run({QStringLiteral("import-pupils"), path, QStringLiteral("--database"), school});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("File ") + path + QStringLiteral(" processed\n2 pupils added, 0 brought up to date")))
        << run.out.toStdString();
    EXPECT_EQ(pupils(), QStringList({QStringLiteral("Amy"), QStringLiteral("Ben")}));
    EXPECT_EQ(testing_support::value_in(school, QStringLiteral("SELECT Family_Address FROM Families WHERE Family_Name = 'O''Brien'")),
              QStringLiteral("1 High Street, Leeds"));
}

TEST_F(ImportPupilsCli, ARefusedLineLeavesTheSchoolAsItWasUnlessPassedOver)
{
    const QString path = file(QStringLiteral("bad.csv"), {line(QStringLiteral("Amy"), QStringLiteral("Archer")),
                                                          line(QStringLiteral("Ben"), QStringLiteral("Brook"), QStringLiteral("m")),
                                                          line(QStringLiteral("Cara"), QStringLiteral("Cole"))});
    const QString refusal = QStringLiteral("Error detected in Import File ") + path + QStringLiteral(" at line 2\ninvalid gender\n");
    const QString before = testing_support::dump_of(school);

    const CliRun refused = cli.run({QStringLiteral("import-pupils"), path, QStringLiteral("--database"), school});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.contains(refusal + QStringLiteral("Import Cancelled\nNothing has been imported.")))
        << refused.err.toStdString();
    EXPECT_EQ(testing_support::dump_of(school), before);

    const CliRun passed_over = cli.run({QStringLiteral("import-pupils"), path, QStringLiteral("--database"), school,
                                        QStringLiteral("--skip-refused")});
    EXPECT_EQ(passed_over.status, 0) << passed_over.err.toStdString();
    EXPECT_TRUE(passed_over.err.contains(refusal));
    EXPECT_TRUE(passed_over.out.contains(QStringLiteral("2 pupils added, 0 brought up to date, 1 lines passed over")))
        << passed_over.out.toStdString();
    EXPECT_EQ(pupils(), QStringList({QStringLiteral("Amy"), QStringLiteral("Cara")}));
}

TEST_F(ImportPupilsCli, TheHeaderOptionPassesOverTheFirstLineAndWrongArgumentsShowTheUsage)
{
    const QString path = file(QStringLiteral("headed.csv"), {line(QStringLiteral("First Name"), QStringLiteral("Family Name"),
                                                                  QStringLiteral("Gender")),
                                                             line(QStringLiteral("Amy"), QStringLiteral("Archer"))});
    const CliRun headed = cli.run({QStringLiteral("import-pupils"), path, QStringLiteral("--database"), school,
                                   QStringLiteral("--header")});
    EXPECT_EQ(headed.status, 0) << headed.err.toStdString();
    EXPECT_EQ(pupils(), QStringList(QStringLiteral("Amy")));

    const CliRun missing = cli.run({QStringLiteral("import-pupils"), dir.filePath(QStringLiteral("none.csv")),
                                    QStringLiteral("--database"), school});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.contains(QStringLiteral("box: Cannot open file "))) << missing.err.toStdString();

    for (const QStringList& args : {QStringList{QStringLiteral("import-pupils")},
                                    QStringList{QStringLiteral("import-pupils"), path, path, QStringLiteral("--database"), school}}) {
        const CliRun wrong = cli.run(args);
        EXPECT_EQ(wrong.status, 2);
        EXPECT_TRUE(wrong.err.contains(QStringLiteral("quillary-cli import-pupils FILE"))) << wrong.err.toStdString();
    }
}

}  // namespace
