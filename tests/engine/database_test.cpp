// The data engine as the program's routines rely on it: transactions, Jet's
// error numbers, the storage conventions, stored queries and direct SQL.

#include "engine/currency.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/recordset.h"
#include "engine/workspace.h"
#include "support/database_file.h"
#include "support/temp_database.h"

#include <gtest/gtest.h>

using engine::Err;
using testing_support::TempDatabase;

namespace {

class EngineTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        t.native(QStringLiteral(
            "CREATE TABLE Families (Family_id INTEGER PRIMARY KEY AUTOINCREMENT, Family_Name TEXT(50) COLLATE NOCASE,"
            " Family_Address TEXT(255) COLLATE NOCASE);"
            "CREATE UNIQUE INDEX Family_Uniq ON Families (Family_Name, Family_Address);"
            "CREATE TABLE Pupils (Pupil_id INTEGER PRIMARY KEY AUTOINCREMENT, Pupil_FirstName TEXT(255) COLLATE NOCASE,"
            " Pupil_Family_Id LONG REFERENCES Families (Family_id), Pupil_Birthdate DATETIME,"
            " Pupil_Marker TEXT(10) COLLATE NOCASE, Pupil_Level SHORT, Pupil_Hidden BIT);"
            "CREATE TABLE Invoice_Lines (Line_id INTEGER PRIMARY KEY AUTOINCREMENT, Line_Family_id LONG, Amount CURRENCY);"
            "CREATE TABLE Receipts (Receipt_id INTEGER PRIMARY KEY AUTOINCREMENT, Receipt_Family_id LONG, Receipt_Amount CURRENCY);"));
        for (const char* table : {"Families", "Pupils", "Invoice_Lines", "Receipts"})
            ASSERT_TRUE(t.db().apply_conventions(QLatin1String(table)));
    }

    engine::Database& db() { return t.db(); }
    bool exec(const QString& sql) { return db().Execute(sql, engine::dbopt::FailOnErrorConsistent); }
    int count(const QString& table) { return t.scalar(QStringLiteral("SELECT count(*) FROM ") + table).toInt(); }

    TempDatabase t;
};

// An inner commit is final only when the outer one commits; an inner
// rollback keeps the outer work.
TEST_F(EngineTest, TransactionsNestAsJetsDo)
{
    engine::Workspace& ws = t.workspace();
    const auto add = [this](const char* name) {
        ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name) VALUES ('%1')").arg(QLatin1String(name))));
    };
    ASSERT_TRUE(ws.BeginTrans());
    add("Outer");
    ASSERT_TRUE(ws.BeginTrans());
    add("Inner");
    ASSERT_TRUE(ws.CommitTrans());
    EXPECT_EQ(count(QStringLiteral("Families")), 2);
    ASSERT_TRUE(ws.Rollback());
    EXPECT_EQ(count(QStringLiteral("Families")), 0);

    ASSERT_TRUE(ws.BeginTrans());
    add("Outer");
    ASSERT_TRUE(ws.BeginTrans());
    add("Inner");
    ASSERT_TRUE(ws.Rollback());
    ASSERT_TRUE(ws.CommitTrans());
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT group_concat(Family_Name) FROM Families")).toString(), QStringLiteral("Outer"));
    EXPECT_EQ(ws.transaction_depth(), 0);
    EXPECT_FALSE(ws.CommitTrans());
    EXPECT_EQ(Err().Number, engine::jet::NoTransaction);
    // Jet's DELETE * says how many rows went.
    ASSERT_TRUE(exec(QStringLiteral("DELETE * FROM Families")));
    EXPECT_EQ(db().RecordsAffected(), 1);
}

TEST_F(EngineTest, AFailedStatementInsideATransactionLeavesNothingOfItself)
{
    engine::Workspace& ws = t.workspace();
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name, Family_Address) VALUES ('Smith', '1 High St')")));
    ASSERT_TRUE(ws.BeginTrans());
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name, Family_Address) VALUES ('Jones', '2 High St')")));
    // The second row of this statement collides; the first must not stay behind.
    EXPECT_FALSE(exec(QStringLiteral("INSERT INTO Families (Family_Name, Family_Address) SELECT 'Brown', 'x' UNION ALL SELECT 'SMITH', '1 HIGH ST'")));
    EXPECT_EQ(Err().Number, engine::jet::DuplicateKey);
    ASSERT_TRUE(ws.CommitTrans());
    EXPECT_EQ(count(QStringLiteral("Families")), 2);
}

// Each refusal with Jet's number, and nothing of the statement left behind.
// Smith at 1 High St is there, with Ann; so is Élodie at Rue.
TEST_F(EngineTest, WhatTheTablesRefuseCarriesJetsNumbers)
{
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name, Family_Address) VALUES ('Smith', '1 High St'), "
                                    "('Élodie', 'Rue')")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id) VALUES ('Ann', 1)")));
    const QString before = testing_support::dump_tables(db());
    struct Case {
        const char* sql;
        int number;
    };
    const Case cases[] = {
        // Unique keys ignore letter case in any alphabet.
        {"INSERT INTO Families (Family_Name, Family_Address) VALUES ('SMITH', '1 high st')", engine::jet::DuplicateKey},
        {"INSERT INTO Families (Family_Name, Family_Address) VALUES ('éLODIE', 'rue')", engine::jet::DuplicateKey},
        // Definitions.
        {"CREATE TABLE Families (x TEXT)", engine::jet::TableExists},
        {"ALTER TABLE Families ADD COLUMN Family_Name TEXT(50)", engine::jet::FieldExists},
        {"CREATE INDEX Family_Uniq ON Families (Family_Name)", engine::jet::IndexExists},
        {"SELECT No_Such_Column FROM Families", engine::jet::TooFewParameters},
        {"DELETE FROM No_Such_Table", engine::jet::InputTableNotFound},
        // Related rows are protected both ways.
        {"INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id) VALUES ('Bob', 99)", engine::jet::RelatedRecordRequired},
        {"DELETE * FROM Families", engine::jet::RelatedRecordsExist},
        // Values a column can't hold.
        {"INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Level) VALUES ('Cy', 1, 40000)", engine::jet::NumericOverflow},
        {"INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Marker) VALUES ('Cy', 1, 'ELEVEN CHAR')",
         engine::jet::FieldTooSmall},
        {"INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Birthdate) VALUES ('Cy', 1, 'not a date')",
         engine::jet::DataTypeMismatch},
        {"INSERT INTO Invoice_Lines (Line_Family_id, Amount) VALUES (1, 'ten')", engine::jet::DataTypeMismatch},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(exec(QString::fromUtf8(c.sql))) << c.sql;
        EXPECT_EQ(Err().Number, c.number) << c.sql;
        ASSERT_EQ(engine::DBEngine_Errors().size(), 1) << c.sql;
        EXPECT_EQ(engine::DBEngine_Errors().first().Number, c.number) << c.sql;
    }
    EXPECT_EQ(testing_support::dump_tables(db()), before);

    EXPECT_FALSE(db().DeleteQueryDef(QStringLiteral("Qry_Nothing")));
    EXPECT_EQ(Err().Number, engine::jet::ItemNotFound);
    EXPECT_EQ(db().QueryDefs(QStringLiteral("Qry_Nothing")), nullptr);
    EXPECT_EQ(Err().Number, engine::jet::ItemNotFound);
}

TEST_F(EngineTest, ValuesAreKeptInTheirOneStoredForm)
{
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name) VALUES ('Smith')")));
    // A date literal, a quoted US date as old upgrade steps write, and a serial number.
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Birthdate, Pupil_Level, Pupil_Hidden)"
                                    " VALUES (\"Ann\", 1, #01/05/2016#, 60.4, True)")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Birthdate, Pupil_Level, Pupil_Hidden)"
                                    " VALUES ('Bob', 1, '02/29/2016', 2.5, -1)")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Birthdate) VALUES ('Cy', 1, 0)")));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT group_concat(Pupil_Birthdate || '/' || ifnull(Pupil_Level, '-'), ' ') FROM Pupils"))
                  .toString(),
              QStringLiteral("2016-01-05 00:00:00/60 2016-02-29 00:00:00/2 1899-12-30 00:00:00/-"));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT sum(Pupil_Hidden) FROM Pupils")).toInt(), 2);
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT count(*) FROM Pupils WHERE Pupil_Birthdate = #01/05/2016#")).toInt(), 1);
}

TEST_F(EngineTest, MoneyIsExactToFourPlacesInSumsAndComparisons)
{
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Invoice_Lines (Line_Family_id, Amount) VALUES (1, 0.10)")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Invoice_Lines (Line_Family_id, Amount) VALUES (1, 0.20)")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Receipts (Receipt_Family_id, Receipt_Amount) VALUES (1, 0.30)")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Invoice_Lines (Line_Family_id, Amount) VALUES (2, 1.23456)")));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT count(*) FROM Invoice_Lines L WHERE Line_Family_id = 1 AND"
                                      " round((SELECT sum(Amount) FROM Invoice_Lines WHERE Line_Family_id = 1), 4) ="
                                      " round((SELECT sum(Receipt_Amount) FROM Receipts WHERE Receipt_Family_id = 1), 4)"))
                  .toInt(),
              2);
    auto rows = db().OpenRecordset(QStringLiteral("SELECT Amount FROM Invoice_Lines WHERE Line_Family_id = 2"));
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->Fields(QStringLiteral("Amount")).value<engine::Currency>(), engine::Currency::from_units(12346));

    // A half at the fifth place goes to the even neighbour, as the platform's
    // conversion to currency rounds, whoever writes the column (halves that a
    // double holds exactly: 1/32, 3/32, 5/32).
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Receipts (Receipt_Family_id, Receipt_Amount) VALUES "
                                    "(3, 0.03125), (4, 0.09375), (5, 0.15625), (6, -0.03125)")));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT group_concat(CAST(Receipt_Amount * 10000 AS INTEGER), ' ') FROM Receipts "
                                      "WHERE Receipt_Family_id > 2"))
                  .toString(),
              QStringLiteral("312 938 1562 -312"));
}

TEST_F(EngineTest, JetFunctionsAreThereForQueries)
{
    // 22 November 2026 is a Sunday: weekday 1.
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT weekday(#11/22/2026#)")).toInt(), 1);
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT weekday('2026-11-28 00:00:00')")).toInt(), 7);
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT DateAdd('d', 7, #01/31/2026#)")).toDateTime(), engine::make_datetime(QDate(2026, 2, 7)));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT format(#01/05/2026#, 'dd mmm yyyy')")).toString(), QStringLiteral("05 Jan 2026"));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT isnumeric('12.5') + isnumeric('abc')")).toInt(), 1);
    EXPECT_DOUBLE_EQ(t.scalar(QStringLiteral("SELECT CDbl('12.5') * 2")).toDouble(), 25.0);
    // A time is a fraction of a day: five minutes past midnight, and a day and a half.
    EXPECT_NEAR(t.scalar(QStringLiteral("SELECT CDbl(CDate(#12:05:00 AM#))")).toDouble(), 5.0 / 1440.0, 1e-9);
    EXPECT_DOUBLE_EQ(t.scalar(QStringLiteral("SELECT CDbl(CDate('1899-12-31 12:00:00'))")).toDouble(), 1.5);
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT CDate('2026-01-05')")).toDateTime(), engine::make_datetime(QDate(2026, 1, 5)));
}

TEST_F(EngineTest, StoredQueriesTakeTypedNamedParameters)
{
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name) VALUES ('Smith')")));
    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Insert_Pupil"),
                                    QStringLiteral("PARAMETERS p_Name Text(255), p_Family Long, p_Born DateTime;"
                                                   " INSERT INTO Pupils (Pupil_FirstName, Pupil_Family_Id, Pupil_Birthdate)"
                                                   " VALUES ([p_Name], p_Family, p_Born)")));
    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Select_Born_After"),
                                    QStringLiteral("PARAMETERS par_Date DateTime; SELECT Pupil_FirstName FROM Pupils"
                                                   " WHERE Pupil_Birthdate > par_Date ORDER BY Pupil_FirstName")));
    auto insert = db().QueryDefs(QStringLiteral("qry_insert_pupil"));
    ASSERT_TRUE(insert);
    ASSERT_EQ(insert->Parameters().size(), 3);
    EXPECT_EQ(insert->Parameters()[2].Type, engine::FieldType::Date);
    ASSERT_TRUE(insert->set_parameter(QStringLiteral("p_Name"), QStringLiteral("Ann")));
    ASSERT_TRUE(insert->set_parameter(QStringLiteral("p_Family"), 1));
    EXPECT_FALSE(insert->Execute());
    EXPECT_EQ(Err().Number, engine::jet::TooFewParameters);
    ASSERT_TRUE(insert->set_parameter(QStringLiteral("p_Born"), QDate(2016, 3, 1)));
    ASSERT_TRUE(insert->Execute());
    EXPECT_EQ(insert->RecordsAffected(), 1);

    auto after = db().QueryDefs(QStringLiteral("Qry_Select_Born_After"));
    ASSERT_TRUE(after->set_parameter(QStringLiteral("par_Date"), QDate(2016, 1, 1)));
    auto rows = after->OpenRecordset();
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->RecordCount(), 1);
    EXPECT_EQ(rows->Fields(QStringLiteral("Pupil_FirstName")).toString(), QStringLiteral("Ann"));
    EXPECT_FALSE(after->set_parameter(QStringLiteral("par_Other"), 1));
    EXPECT_EQ(Err().Number, engine::jet::ItemNotFound);
}

TEST_F(EngineTest, AQueryReachesTheQueriesItNames)
{
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Families (Family_Name) VALUES ('Smith'), ('Jones')")));
    ASSERT_TRUE(exec(QStringLiteral("INSERT INTO Invoice_Lines (Line_Family_id, Amount) VALUES (1, 10), (1, 5), (2, 7)")));
    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Family_Totals"),
                                    QStringLiteral("SELECT Line_Family_id, round(sum(Amount), 4) AS Total FROM Invoice_Lines GROUP BY Line_Family_id")));
    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Owing_Over"),
                                    QStringLiteral("PARAMETERS p_Limit Currency; SELECT F.Family_Name, T.Total FROM Families F"
                                                   " INNER JOIN Qry_Family_Totals T ON T.Line_Family_id = F.Family_id WHERE T.Total > p_Limit")));
    auto query = db().QueryDefs(QStringLiteral("Qry_Owing_Over"));
    ASSERT_TRUE(query->set_parameter(QStringLiteral("p_Limit"), 10));
    auto rows = query->OpenRecordset();
    ASSERT_TRUE(rows);
    ASSERT_EQ(rows->RecordCount(), 1);
    EXPECT_EQ(rows->Fields(QStringLiteral("Family_Name")).toString(), QStringLiteral("Smith"));
    // Direct SQL may name a query without parameters too.
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT count(*) FROM Qry_Family_Totals")).toInt(), 2);
}

TEST_F(EngineTest, AQueryNamingAMissingColumnIsStoredInTheFileAndFailsWhenRun)
{
    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Broken"), QStringLiteral("UPDATE Families SET No_Such_Column = 1")));
    EXPECT_FALSE(db().CreateQueryDef(QStringLiteral("QRY_BROKEN"), QStringLiteral("SELECT 1")));
    EXPECT_EQ(Err().Number, engine::jet::ObjectExists);
    auto query = db().QueryDefs(QStringLiteral("Qry_Broken"));
    ASSERT_TRUE(query);
    EXPECT_FALSE(query->Execute());
    EXPECT_EQ(Err().Number, engine::jet::TooFewParameters);
    ASSERT_TRUE(db().DeleteQueryDef(QStringLiteral("Qry_Broken")));
    EXPECT_FALSE(db().QueryDef_names().contains(QStringLiteral("Qry_Broken")));

    // Stored queries live in the file, their table out of sight.
    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Count"), QStringLiteral("SELECT count(*) AS n FROM Families")));
    engine::Workspace other;
    engine::Database* again = other.OpenDatabase(t.path());
    ASSERT_NE(again, nullptr);
    EXPECT_TRUE(again->QueryDef_names().contains(QStringLiteral("Qry_Count")));
    EXPECT_FALSE(again->TableDef_names().contains(QStringLiteral("Quillary_QueryDefs")));
    other.Close();
}

TEST(EngineFiles, OpeningNeedsAnExistingDatabaseFile)
{
    QTemporaryDir dir;
    engine::Workspace ws;
    EXPECT_EQ(ws.OpenDatabase(dir.filePath(QStringLiteral("missing.mdb"))), nullptr);
    EXPECT_EQ(Err().Number, engine::jet::FileNotFound);
    QFile text(dir.filePath(QStringLiteral("notes.mdb")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("This is not a database, just a letter to the parents of the school.\n");
    text.close();
    EXPECT_EQ(ws.OpenDatabase(text.fileName()), nullptr);
    EXPECT_EQ(Err().Number, engine::jet::UnrecognizedFormat);
    ASSERT_NE(ws.CreateDatabase(dir.filePath(QStringLiteral("new.mdb"))), nullptr);
    EXPECT_EQ(ws.CreateDatabase(dir.filePath(QStringLiteral("new.mdb"))), nullptr);
    EXPECT_EQ(Err().Number, engine::jet::DatabaseExists);
    ws.Close();
}

}  // namespace
