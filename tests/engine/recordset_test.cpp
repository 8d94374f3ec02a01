// Record sets as the screens use them: walking, finding, bookmarks, clones,
// and editing that writes back to the tables.

#include "engine/currency.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/recordset.h"
#include "support/temp_database.h"

#include <gtest/gtest.h>

using engine::Err;

namespace {

class RecordsetTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        t.native(QStringLiteral(
            "CREATE TABLE Families (Family_id INTEGER PRIMARY KEY AUTOINCREMENT, Family_Name TEXT(50) COLLATE NOCASE,"
            " Family_PostCode TEXT(10) COLLATE NOCASE);"
            "CREATE UNIQUE INDEX Family_Uniq ON Families (Family_Name);"
            "CREATE TABLE Holidays (day_off DATETIME NOT NULL, Note TEXT(50) COLLATE NOCASE);"
            "CREATE TABLE Invoices (Invoice_id INTEGER PRIMARY KEY AUTOINCREMENT, Invoice_Family_id LONG REFERENCES Families (Family_id),"
            " Invoice_Total CURRENCY, Invoice_Paid BIT);"
            "INSERT INTO Families (Family_Name, Family_PostCode) VALUES ('Adams', 'AB1'), ('brown', 'CD2'), ('Smith', 'EF3'), ('Taylor', NULL);"
            "INSERT INTO Holidays VALUES ('2026-01-05 00:00:00', 'Twelfth night'), ('2026-05-01 00:00:00', 'May day');"
            "INSERT INTO Invoices (Invoice_Family_id, Invoice_Total, Invoice_Paid) VALUES (3, 120.5, 0), (1, 80, 1);"));
        for (const char* table : {"Families", "Holidays", "Invoices"})
            ASSERT_TRUE(t.db().apply_conventions(QLatin1String(table)));
    }

    std::unique_ptr<engine::Recordset> open(const QString& source)
    {
        auto rows = t.db().OpenRecordset(source);
        EXPECT_TRUE(rows) << Err().Number << " " << Err().Description.toStdString();
        return rows;
    }

    QString name(engine::Recordset& rows) { return rows.Fields(QStringLiteral("Family_Name")).toString(); }

    testing_support::TempDatabase t;
};

TEST_F(RecordsetTest, WalkingPastEitherEndSetsTheFlagsAndThenFails)
{
    auto rows = open(QStringLiteral("SELECT * FROM Families ORDER BY Family_Name"));
    EXPECT_EQ(rows->RecordCount(), 4);
    EXPECT_EQ(name(*rows), QStringLiteral("Adams"));
    EXPECT_FALSE(rows->at_bof());
    ASSERT_TRUE(rows->MoveLast());
    EXPECT_EQ(name(*rows), QStringLiteral("Taylor"));
    ASSERT_TRUE(rows->MoveNext());
    EXPECT_TRUE(rows->at_eof());
    EXPECT_FALSE(rows->MoveNext());
    EXPECT_EQ(Err().Number, engine::jet::NoCurrentRecord);
    EXPECT_TRUE(rows->Fields(QStringLiteral("Family_Name")).isNull());
    EXPECT_EQ(Err().Number, engine::jet::NoCurrentRecord);
    ASSERT_TRUE(rows->MovePrevious());
    EXPECT_EQ(name(*rows), QStringLiteral("Taylor"));
    ASSERT_TRUE(rows->MoveFirst());
    ASSERT_TRUE(rows->MovePrevious());
    EXPECT_TRUE(rows->at_bof());

    auto none = open(QStringLiteral("SELECT * FROM Families WHERE Family_id > 100"));
    EXPECT_TRUE(none->at_bof());
    EXPECT_TRUE(none->at_eof());
    EXPECT_EQ(none->RecordCount(), 0);
}

TEST_F(RecordsetTest, FindFirstTakesJetCriteria)
{
    auto rows = open(QStringLiteral("SELECT * FROM Families ORDER BY Family_Name"));
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name > \"BROWN\"")));
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_EQ(name(*rows), QStringLiteral("Smith"));
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_id = 2")));
    EXPECT_EQ(name(*rows), QStringLiteral("brown"));
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Nobody'")));
    EXPECT_TRUE(rows->NoMatch());
    EXPECT_EQ(name(*rows), QStringLiteral("brown"));  // the cursor stays where it was
    ASSERT_TRUE(rows->FindNext(QStringLiteral("Family_PostCode Is Null")));
    EXPECT_EQ(name(*rows), QStringLiteral("Taylor"));
    EXPECT_FALSE(rows->FindFirst(QStringLiteral("No_Such_Field = 1")));
    EXPECT_EQ(Err().Number, engine::jet::InvalidFieldName);

    auto days = open(QStringLiteral("Holidays"));
    ASSERT_TRUE(days->FindFirst(QStringLiteral("day_off = #05/01/2026#")));
    EXPECT_FALSE(days->NoMatch());
    EXPECT_EQ(days->Fields(QStringLiteral("Note")).toString(), QStringLiteral("May day"));
    EXPECT_EQ(days->Fields(QStringLiteral("day_off")).toDateTime(), engine::make_datetime(QDate(2026, 5, 1)));
    ASSERT_TRUE(days->FindFirst(QStringLiteral("day_off = #01/06/2026#")));
    EXPECT_TRUE(days->NoMatch());
}

TEST_F(RecordsetTest, AddNewWritesTheRowAndReadsBackItsKeyAndADuplicateKeepsTheEditInProgress)
{
    auto rows = open(QStringLiteral("SELECT * FROM Families ORDER BY Family_Name"));
    ASSERT_TRUE(rows->AddNew());
    EXPECT_EQ(rows->EditMode(), engine::editmode::Add);
    ASSERT_TRUE(rows->set(QStringLiteral("Family_Name"), QStringLiteral("Zeta")));
    ASSERT_TRUE(rows->Update());
    EXPECT_EQ(rows->EditMode(), engine::editmode::None);
    EXPECT_EQ(rows->RecordCount(), 5);
    EXPECT_EQ(name(*rows), QStringLiteral("Adams"));  // AddNew leaves the cursor where it was
    ASSERT_TRUE(rows->set_bookmark(rows->LastModified()));
    EXPECT_EQ(name(*rows), QStringLiteral("Zeta"));
    EXPECT_EQ(rows->Fields(QStringLiteral("Family_id")).toInt(), 5);
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT count(*) FROM Families WHERE Family_Name = 'ZETA'")).toInt(), 1);

    // A duplicate keeps the edit in progress, the buffer holding what was typed.
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Taylor'")));
    ASSERT_TRUE(rows->Edit());
    ASSERT_TRUE(rows->set(QStringLiteral("Family_Name"), QStringLiteral("SMITH")));
    EXPECT_FALSE(rows->Update());
    EXPECT_EQ(Err().Number, engine::jet::DuplicateKey);
    EXPECT_EQ(rows->EditMode(), engine::editmode::InProgress);
    EXPECT_EQ(name(*rows), QStringLiteral("SMITH"));
    ASSERT_TRUE(rows->set(QStringLiteral("Family_Name"), QStringLiteral("Taylor-Smith")));
    ASSERT_TRUE(rows->Update());
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT Family_Name FROM Families WHERE Family_id = 4")).toString(), QStringLiteral("Taylor-Smith"));
}

TEST_F(RecordsetTest, FieldsRefuseValuesTheyCannotHold)
{
    auto rows = open(QStringLiteral("Families"));
    EXPECT_FALSE(rows->set(QStringLiteral("Family_Name"), QStringLiteral("x")));
    EXPECT_EQ(Err().Number, engine::jet::UpdateWithoutAddNewOrEdit);
    ASSERT_TRUE(rows->Edit());
    EXPECT_FALSE(rows->set(QStringLiteral("Family_PostCode"), QStringLiteral("TOO LONG CODE")));
    EXPECT_EQ(Err().Number, engine::jet::FieldTooSmall);
    EXPECT_FALSE(rows->set(QStringLiteral("Nothing"), 1));
    EXPECT_EQ(Err().Number, engine::jet::ItemNotFound);
    ASSERT_TRUE(rows->CancelUpdate());

    auto invoices = open(QStringLiteral("Invoices"));
    ASSERT_TRUE(invoices->Edit());
    EXPECT_FALSE(invoices->set(QStringLiteral("Invoice_Total"), QStringLiteral("lots")));
    EXPECT_EQ(Err().Number, 3421);
    ASSERT_TRUE(invoices->set(QStringLiteral("Invoice_Total"), QStringLiteral("99.99")));
    ASSERT_TRUE(invoices->set(QStringLiteral("Invoice_Paid"), true));
    ASSERT_TRUE(invoices->Update());
    EXPECT_EQ(invoices->Fields(QStringLiteral("Invoice_Total")).value<engine::Currency>(), engine::Currency::from_units(999900));
    EXPECT_EQ(invoices->Fields(QStringLiteral("Invoice_Paid")).toBool(), true);
}

TEST_F(RecordsetTest, DeletingLeavesNoCurrentRecordUntilTheCursorMoves)
{
    auto rows = open(QStringLiteral("SELECT * FROM Families ORDER BY Family_Name"));
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Taylor'")));
    ASSERT_TRUE(rows->Delete());
    EXPECT_TRUE(rows->Fields(QStringLiteral("Family_Name")).isNull());
    EXPECT_EQ(Err().Number, engine::jet::RecordIsDeleted);
    EXPECT_EQ(rows->RecordCount(), 3);
    ASSERT_TRUE(rows->MoveFirst());
    EXPECT_EQ(name(*rows), QStringLiteral("Adams"));
    // Smith has an invoice: the engine keeps the family.
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Smith'")));
    EXPECT_FALSE(rows->Delete());
    EXPECT_EQ(Err().Number, engine::jet::RelatedRecordsExist);
    EXPECT_EQ(rows->RecordCount(), 3);
}

// A clone shares the rows and their bookmarks: a row it deletes can be
// neither read nor edited through the original, whose cursor moves on past it.
TEST_F(RecordsetTest, ClonesShareRowsAndBookmarks)
{
    auto rows = open(QStringLiteral("SELECT * FROM Families ORDER BY Family_Name"));
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Smith'")));
    const engine::Bookmark smith = rows->bookmark();
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Taylor'")));
    auto clone = rows->Clone();
    ASSERT_TRUE(clone);
    ASSERT_TRUE(clone->FindFirst(QStringLiteral("Family_Name = 'Taylor'")));
    ASSERT_TRUE(clone->Delete());
    EXPECT_EQ(rows->RecordCount(), 3);
    ASSERT_TRUE(clone->set_bookmark(smith));
    EXPECT_EQ(name(*clone), QStringLiteral("Smith"));

    EXPECT_TRUE(rows->Fields(QStringLiteral("Family_Name")).isNull());
    EXPECT_EQ(Err().Number, engine::jet::RecordIsDeleted);
    EXPECT_FALSE(rows->Edit());
    EXPECT_EQ(Err().Number, engine::jet::RecordIsDeleted);
    EXPECT_EQ(rows->EditMode(), engine::editmode::None);
    ASSERT_TRUE(rows->MovePrevious());
    EXPECT_EQ(name(*rows), QStringLiteral("Smith"));
    ASSERT_TRUE(rows->MoveNext());
    EXPECT_TRUE(rows->at_eof());
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT count(*) FROM Families WHERE Family_Name = 'Taylor'")).toInt(), 0);
}

// Requery sees what was changed elsewhere; a bookmark from before it is no
// longer valid, and the cursor stays where it was.
TEST_F(RecordsetTest, RequerySeesChangesMadeElsewhereAndEndsTheOldBookmarks)
{
    auto rows = open(QStringLiteral("SELECT * FROM Families ORDER BY Family_Name"));
    ASSERT_TRUE(rows->FindFirst(QStringLiteral("Family_Name = 'Smith'")));
    const engine::Bookmark smith = rows->bookmark();
    ASSERT_TRUE(t.db().Execute(QStringLiteral("INSERT INTO Families (Family_Name) VALUES (\"Young\")")));
    EXPECT_EQ(rows->RecordCount(), 4);
    ASSERT_TRUE(rows->Requery());
    EXPECT_EQ(rows->RecordCount(), 5);
    EXPECT_EQ(name(*rows), QStringLiteral("Adams"));
    ASSERT_TRUE(rows->MoveLast());
    EXPECT_FALSE(rows->set_bookmark(smith));
    EXPECT_NE(Err().Number, 0);
    EXPECT_EQ(name(*rows), QStringLiteral("Young"));
}

TEST_F(RecordsetTest, RowsOfAJoinWriteBackToTheirOwnTable)
{
    auto rows = open(QStringLiteral("SELECT I.Invoice_id, I.Invoice_Total, F.Family_id, F.Family_Name FROM Invoices I"
                                    " INNER JOIN Families F ON F.Family_id = I.Invoice_Family_id ORDER BY I.Invoice_id"));
    ASSERT_TRUE(rows->Edit());
    ASSERT_TRUE(rows->set(QStringLiteral("Invoice_Total"), 121));
    ASSERT_TRUE(rows->set(QStringLiteral("Family_Name"), QStringLiteral("Smythe")));
    ASSERT_TRUE(rows->Update());
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT Invoice_Total FROM Invoices WHERE Invoice_id = 1")).value<engine::Currency>(),
              engine::Currency::from_whole(121));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT Family_Name FROM Families WHERE Family_id = 3")).toString(), QStringLiteral("Smythe"));

    auto totals = open(QStringLiteral("SELECT count(*) AS n FROM Invoices"));
    EXPECT_FALSE(totals->updatable());
    EXPECT_FALSE(totals->Edit());
    EXPECT_EQ(Err().Number, engine::jet::NotUpdatable);
}

TEST_F(RecordsetTest, ATableWithoutAKeyIsEditedThroughItsHiddenRowKey)
{
    auto days = open(QStringLiteral("Holidays"));
    EXPECT_EQ(days->field_count(), 2);
    ASSERT_TRUE(days->Edit());
    ASSERT_TRUE(days->set(QStringLiteral("day_off"), QDate(2026, 1, 6)));
    ASSERT_TRUE(days->Update());
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT count(*) FROM Holidays WHERE day_off = '2026-01-06 00:00:00'")).toInt(), 1);
}

}  // namespace
