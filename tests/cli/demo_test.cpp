// The demo school: built by the real command, opened as the program opens
// it, and its money adding up family by family.

#include "database/db_handling.h"
#include "engine/currency.h"
#include "engine/database.h"
#include "engine/recordset.h"
#include "engine/settings_store.h"
#include "shell/app_globals.h"
#include "shell/settings.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using engine::Currency;

class DemoSchoolTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        dir = new QTemporaryDir;
        first = build(QStringLiteral("first.mdb"));
        second = build(QStringLiteral("second.mdb"));
    }
    static void TearDownTestSuite() { delete dir; }

    static QString build(const QString& file)
    {
        const QString path = dir->filePath(file);
        QProcess cli;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), dir->filePath(QStringLiteral("config")));
        cli.setProcessEnvironment(env);
        cli.start(QStringLiteral(QUILLARY_CLI_PATH), {QStringLiteral("demo"), path});
        EXPECT_TRUE(cli.waitForFinished(120000));
        EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();
        return path;
    }

    void SetUp() override
    {
        engine::set_settings_store(std::make_unique<engine::SettingsStore>(dir->filePath(QStringLiteral("s.ini"))));
        Current_Log_File().clear();
        Default_Settings(Settings());
        ASSERT_TRUE(DB_Open(first));
    }
    void TearDown() override
    {
        DB_Close_All();
        engine::set_settings_store(nullptr);
    }

    static int count(const QString& sql)
    {
        auto rows = Current_Db()->OpenRecordset(sql);
        EXPECT_TRUE(rows);
        return rows ? rows->Fields(rows->field(0).name).toInt() : -1;
    }

    static Currency money(const QString& query, int family, const QString& column)
    {
        auto definition = Current_Db()->QueryDefs(query);
        EXPECT_TRUE(definition && definition->set_parameter(QStringLiteral("par_Family_id"), family));
        auto rows = definition ? definition->OpenRecordset() : nullptr;
        if (!rows || rows->at_eof())
            return Currency();
        return Currency::from_double(rows->Fields(column).toDouble());
    }

    static QTemporaryDir* dir;
    static QString first;
    static QString second;
};

QTemporaryDir* DemoSchoolTest::dir = nullptr;
QString DemoSchoolTest::first;
QString DemoSchoolTest::second;

TEST_F(DemoSchoolTest, HasABelievableSchool)
{
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Families")), 40);
    EXPECT_GE(count(QStringLiteral("SELECT count(*) FROM Pupils")), 55);
    EXPECT_GE(count(QStringLiteral("SELECT count(*) FROM Pupils WHERE Pupil_Gender IN ('b', 'g')")), 2);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Teachers")), 6);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Courses")), 14);
    EXPECT_EQ(count(QStringLiteral("SELECT count(DISTINCT Course_Location) FROM Courses")), 2);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Term_Dates")), 3);
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Number_Lessons")), 21);
    EXPECT_GT(count(QStringLiteral("SELECT count(*) FROM Holidays")), 10);
    EXPECT_GT(count(QStringLiteral("SELECT count(*) FROM Exam_Results WHERE Results_Mark > 0")), 0);
    EXPECT_EQ(count(QStringLiteral("SELECT count(DISTINCT E.Exam_Type) FROM Exams E")), 3);
    // Every family with a pupil on a course has its autumn invoice.
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Invoices")),
              count(QStringLiteral("SELECT count(DISTINCT P.Pupil_Family_Id) FROM Pupils P"
                                   " INNER JOIN Register_Courses R ON R.Pupil_id = P.Pupil_id")));
    EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM Invoice_Lines WHERE Inv_Line_Type = 9")), 1);
}

TEST_F(DemoSchoolTest, EachFamilysFiguresAgreeWithTheAccountQueries)
{
    auto families = Current_Db()->OpenRecordset(QStringLiteral("SELECT Family_id FROM Families ORDER BY Family_id"));
    ASSERT_TRUE(families);
    int overpaid = 0, owing = 0, settled = 0;
    for (; !families->at_eof(); families->MoveNext()) {
        const int family = families->Fields(QStringLiteral("Family_id")).toInt();
        auto lines = Current_Db()->OpenRecordset(QStringLiteral(
            "SELECT L.Amount FROM Invoice_Lines L INNER JOIN Invoices I ON I.Invoice_id = L.Inv_Line_Inv_id WHERE I.Invoice_Family_id = %1").arg(family));
        auto receipts = Current_Db()->OpenRecordset(QStringLiteral(
            "SELECT R.Receipt_Amount FROM Receipts R INNER JOIN Invoices I ON I.Invoice_id = R.Receipt_Invoice_id WHERE I.Invoice_Family_id = %1").arg(family));
        Currency billed, paid;
        for (; !lines->at_eof(); lines->MoveNext())
            billed += lines->Fields(QStringLiteral("Amount")).value<Currency>();
        for (; !receipts->at_eof(); receipts->MoveNext())
            paid += receipts->Fields(QStringLiteral("Receipt_Amount")).value<Currency>();
        EXPECT_EQ(billed, money(QStringLiteral("Qry_Select_Family_Owes"), family, QStringLiteral("Owes"))) << family;
        EXPECT_EQ(paid, money(QStringLiteral("Qry_Select_Family_Paid"), family, QStringLiteral("Paid"))) << family;
        const Currency balance = billed - paid;
        balance < Currency() ? ++overpaid : balance > Currency() ? ++owing : ++settled;
    }
    EXPECT_EQ(overpaid, 1);
    EXPECT_GT(owing, 3);
    EXPECT_GT(settled, 10);
}

TEST_F(DemoSchoolTest, TheSameCommandGivesTheSameSchool)
{
    const QString rows = QStringLiteral(
        "SELECT group_concat(x, '|') AS t FROM (SELECT F.Family_Name || ':' || P.Pupil_FirstName || ':' || P.Pupil_Birthdate"
        " || ':' || ifnull(L.Description, '') || ':' || ifnull(L.Amount, '') AS x FROM Families F"
        " INNER JOIN Pupils P ON P.Pupil_Family_Id = F.Family_id LEFT JOIN Invoice_Lines L ON L.Inv_Line_Pupil_id = P.Pupil_id"
        " ORDER BY x)");
    auto mine = Current_Db()->OpenRecordset(rows);
    ASSERT_TRUE(mine);
    const QString first_text = mine->Fields(QStringLiteral("t")).toString();
    DB_Close_All();
    ASSERT_TRUE(DB_Open(second));
    auto theirs = Current_Db()->OpenRecordset(rows);
    ASSERT_TRUE(theirs);
    EXPECT_FALSE(first_text.isEmpty());
    EXPECT_EQ(first_text, theirs->Fields(QStringLiteral("t")).toString());
}

}  // namespace
