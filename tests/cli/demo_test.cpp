// The demo school: built by the real command, opened as the program opens
// it, its money adding up family by family, and the same every time.

#include "database/db_handling.h"
#include "engine/currency.h"
#include "engine/database.h"
#include "engine/recordset.h"
#include "support/cli_runner.h"
#include "support/database_file.h"
#include "support/test_folder.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using engine::Currency;
using testing_support::value_in;

class DemoSchoolTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        dir = new QTemporaryDir;
        const testing_support::CliRunner cli(dir->filePath(QStringLiteral("config")));
        for (QString* made : {&first, &second}) {
            *made = dir->filePath(made == &first ? QStringLiteral("first.mdb") : QStringLiteral("second.mdb"));
            const testing_support::CliRun run = cli.run({QStringLiteral("demo"), *made});
            EXPECT_EQ(run.status, 0) << run.err.toStdString();
        }
    }
    static void TearDownTestSuite() { delete dir; }

    DemoSchoolTest() { EXPECT_TRUE(DB_Open(first)); }
    ~DemoSchoolTest() override { DB_Close_All(); }

    // A family's figure as an account query gives it.
    static Currency account(const QString& query, int family, const QString& column)
    {
        auto definition = Current_Db()->QueryDefs(query);
        EXPECT_TRUE(definition && definition->set_parameter(QStringLiteral("par_Family_id"), family));
        auto rows = definition ? definition->OpenRecordset() : nullptr;
        return rows && !rows->at_eof() ? Currency::from_double(rows->Fields(column).toDouble()) : Currency();
    }

    testing_support::TestFolder folder{testing_support::TestFolder::StartingSettings::ProgramDefaults};
    static QTemporaryDir* dir;
    static QString first;
    static QString second;
};

QTemporaryDir* DemoSchoolTest::dir = nullptr;
QString DemoSchoolTest::first;
QString DemoSchoolTest::second;

TEST_F(DemoSchoolTest, EveryTermHasItsLessonsAndEveryFamilyOnACourseItsInvoice)
{
    EXPECT_NE(value_in(first, "SELECT count(*) FROM Term_Dates"), "0");
    EXPECT_EQ(value_in(first, "SELECT count(*) FROM Term_Dates T WHERE NOT EXISTS "
                              "(SELECT 1 FROM Number_Lessons N WHERE N.Term_Id = T.Term_id AND N.Num_Lessons > 0)"),
              "0");
    EXPECT_EQ(value_in(first, "SELECT count(*) FROM Invoices"),
              value_in(first, "SELECT count(DISTINCT P.Pupil_Family_Id) FROM Pupils P"
                              " INNER JOIN Register_Courses R ON R.Pupil_id = P.Pupil_id"));
    // Hidden pupils, last year's marks and a written-off debt are there to be shown.
    for (const char* shown : {"SELECT count(*) FROM Pupils WHERE Pupil_Gender IN ('b', 'g')",
                              "SELECT count(*) FROM Exam_Results WHERE Results_Mark > 0",
                              "SELECT count(*) FROM Invoice_Lines WHERE Inv_Line_Type = 9"})
        EXPECT_NE(value_in(first, shown), "0") << shown;
}

// What the account queries add up is balances_test's; here the demo school
// shows a family in each state of account.
TEST_F(DemoSchoolTest, EveryStateOfAccountIsThere)
{
    int overpaid = 0, owing = 0, settled = 0;
    for (const QString& id : testing_support::values_in(first, "SELECT Family_id FROM Families")) {
        const Currency balance = account(QStringLiteral("Qry_Select_Family_Owes"), id.toInt(), QStringLiteral("Owes"))
                                 - account(QStringLiteral("Qry_Select_Family_Paid"), id.toInt(), QStringLiteral("Paid"));
        balance < Currency() ? ++overpaid : balance > Currency() ? ++owing : ++settled;
    }
    EXPECT_GT(overpaid, 0);
    EXPECT_GT(owing, 0);
    EXPECT_GT(settled, 0);
}

TEST_F(DemoSchoolTest, TheSameCommandGivesTheSameSchool)
{
    const QString rows = QStringLiteral(
        "SELECT group_concat(x, '|') AS t FROM (SELECT F.Family_Name || ':' || P.Pupil_FirstName || ':' || P.Pupil_Birthdate"
        " || ':' || ifnull(L.Description, '') || ':' || ifnull(L.Amount, '') AS x FROM Families F"
        " INNER JOIN Pupils P ON P.Pupil_Family_Id = F.Family_id LEFT JOIN Invoice_Lines L ON L.Inv_Line_Pupil_id = P.Pupil_id"
        " ORDER BY x)");
    EXPECT_FALSE(value_in(first, rows).isEmpty());
    EXPECT_EQ(value_in(first, rows), value_in(second, rows));
}

}  // namespace
