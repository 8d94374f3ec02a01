// Input that no school writes on purpose but that files and typing produce:
// a NUL byte, brackets nested thousands deep, a name that is no table. The
// engine refuses each with a clear error and never hangs or crashes.

#include "engine/criteria.h"
#include "engine/jet_date.h"
#include "engine/currency.h"
#include "engine/database.h"
#include "engine/err.h"
#include "engine/recordset.h"
#include "engine/sql_compat.h"
#include "support/temp_database.h"

#include <cmath>
#include <gtest/gtest.h>

using engine::Err;
using testing_support::TempDatabase;

namespace {

QString nested(int depth, const QString& inner)
{
    return QString(depth, QLatin1Char('(')) + inner + QString(depth, QLatin1Char(')'));
}

class HostileInputTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        t.native(QStringLiteral("CREATE TABLE Holidays (Holiday_id INTEGER PRIMARY KEY, Day_Off DATETIME);"
                                "CREATE TABLE Exams (Exam_id INTEGER PRIMARY KEY, Exam_Price SINGLE);"));
        ASSERT_TRUE(t.db().apply_conventions(QStringLiteral("Holidays")));
        ASSERT_TRUE(t.db().apply_conventions(QStringLiteral("Exams")));
    }
    engine::Database& db() { return t.db(); }
    TempDatabase t;
};

TEST_F(HostileInputTest, ANulByteInAStatementIsRefusedNotRunInPart)
{
    const QString statement = QStringLiteral("DELETE FROM Holidays") + QChar(0) + QStringLiteral(" WHERE 1 = 1");
    EXPECT_FALSE(db().Execute(statement));
    EXPECT_EQ(Err().Number, engine::jet::SyntaxError);
    EXPECT_TRUE(Err().Description.contains(QStringLiteral("NUL")));
    EXPECT_EQ(db().OpenRecordset(QStringLiteral("SELECT 1") + QChar(0) + QStringLiteral(" + 1")), nullptr);
    EXPECT_EQ(Err().Number, engine::jet::SyntaxError);
}

TEST_F(HostileInputTest, DeepBracketsAreRefusedAsTooDeeplyNested)
{
    const QString deep = QStringLiteral("SELECT ") + nested(20000, QStringLiteral("1 & 2"));
    EXPECT_FALSE(db().Execute(QStringLiteral("UPDATE Holidays SET Day_Off = ") + nested(20000, QStringLiteral("0"))));
    EXPECT_EQ(Err().Number, engine::jet::SyntaxError);
    EXPECT_TRUE(Err().Description.contains(QStringLiteral("too deeply nested")));
    EXPECT_EQ(db().OpenRecordset(deep), nullptr);
    EXPECT_TRUE(Err().Description.contains(QStringLiteral("too deeply nested")));
    // Within the limit, brackets are as good as ever.
    auto rows = db().OpenRecordset(QStringLiteral("SELECT ") + nested(engine::max_bracket_depth, QStringLiteral("'a' & 'b'"))
                                   + QStringLiteral(" AS v"));
    ASSERT_TRUE(rows) << Err().Description.toStdString();
    EXPECT_EQ(rows->Fields(QStringLiteral("v")).toString(), QStringLiteral("ab"));
}

TEST(HostileCriteria, DeepBracketsAndNotsAreASyntaxErrorNotACrash)
{
    const QList<engine::CriteriaField> fields = {{QStringLiteral("Term_id"), engine::FieldType::Long}};
    engine::Criteria criteria;
    EXPECT_FALSE(criteria.parse(nested(20000, QStringLiteral("Term_id = 5")), fields));
    EXPECT_EQ(Err().Number, 3077);
    EXPECT_TRUE(Err().Description.contains(QStringLiteral("too deeply nested")));
    QString nots;
    for (int i = 0; i < 20000; ++i)
        nots += QStringLiteral("NOT ");
    EXPECT_FALSE(criteria.parse(nots + QStringLiteral("Term_id = 5"), fields));
    EXPECT_EQ(Err().Number, 3077);
    ASSERT_TRUE(criteria.parse(nested(50, QStringLiteral("NOT Term_id = 5")), fields));
    EXPECT_TRUE(criteria.matches({4}));
}

TEST(HostileMoney, NumbersNoCurrencyCanHoldAreRefusedNotWrappedAround)
{
    TempDatabase t;
    t.native(QStringLiteral("CREATE TABLE Receipts (Receipt_id INTEGER PRIMARY KEY, Receipt_Amount CURRENCY)"));
    ASSERT_TRUE(t.db().apply_conventions(QStringLiteral("Receipts")));
    EXPECT_FALSE(t.db().Execute(QStringLiteral("INSERT INTO Receipts (Receipt_Amount) VALUES (1e300)")));
    EXPECT_EQ(Err().Number, engine::jet::NumericOverflow);

    // FindFirst compares money with a number beyond money's range and with
    // text that reads as no number, and finds nothing.
    const QList<engine::CriteriaField> fields = {{QStringLiteral("Price"), engine::FieldType::Currency}};
    for (const char* criteria : {"Price = 1e300", "Price = 'nan'"}) {
        engine::Criteria parsed;
        if (parsed.parse(QLatin1String(criteria), fields))
            EXPECT_FALSE(parsed.matches({QVariant::fromValue(engine::Currency::from_units(50000))})) << criteria;
    }
    EXPECT_EQ(engine::Currency::from_double(1e300).units(), INT64_MAX);
    EXPECT_FALSE(engine::Currency::try_from_double(std::nan("")));
}

// A date compared with a number beyond the platform's dates matches nothing.
TEST(HostileDates, NumbersBeyondTheDatesAreNoDate)
{
    EXPECT_FALSE(engine::serial_to_date(1e79).isValid());
    EXPECT_FALSE(engine::serial_to_date(std::nan("")).isValid());
    EXPECT_FALSE(engine::to_storage_date(QVariant(1e79)).has_value());
    const QList<engine::CriteriaField> fields = {{QStringLiteral("day_off"), engine::FieldType::Date}};
    engine::Criteria parsed;
    if (parsed.parse(QStringLiteral("day_off >= '%1'").arg(QString(60, QLatin1Char('9'))), fields))
        EXPECT_FALSE(parsed.matches({QDateTime(QDate(2026, 5, 1), QTime(0, 0))}));
}

// A name that is no table or query, and missing parameters, are named.
TEST_F(HostileInputTest, WhatIsMissingIsNamed)
{
    EXPECT_EQ(db().OpenRecordset(QStringLiteral("Qry_Select_Sys")), nullptr);
    EXPECT_EQ(Err().Number, engine::jet::InputTableNotFound);
    EXPECT_TRUE(Err().Description.contains(QStringLiteral("'Qry_Select_Sys'")));

    ASSERT_TRUE(db().CreateQueryDef(QStringLiteral("Qry_Add_Holiday"),
                                    QStringLiteral("PARAMETERS par_Day DateTime, par_Id Long; "
                                                   "INSERT INTO Holidays (Holiday_id, Day_Off) VALUES (par_Id, par_Day)")));
    auto query = db().QueryDefs(QStringLiteral("Qry_Add_Holiday"));
    ASSERT_TRUE(query);
    EXPECT_FALSE(query->Execute());
    EXPECT_EQ(Err().Number, engine::jet::TooFewParameters);
    EXPECT_EQ(Err().Description, QStringLiteral("Too few parameters. Expected 2. (No value for par_Day, par_Id.)"));
    // A null is a value: the key is then made by the engine.
    ASSERT_TRUE(query->set_parameter(QStringLiteral("par_Id"), QVariant()));
    ASSERT_TRUE(query->set_parameter(QStringLiteral("par_Day"), QDate(2026, 1, 5)));
    EXPECT_TRUE(query->Execute()) << Err().Description.toStdString();
}

TEST_F(HostileInputTest, SingleColumnsHoldSinglePrecisionWhoeverWritesThem)
{
    // 16777217 needs 25 bits; a single keeps 24.
    ASSERT_TRUE(db().Execute(QStringLiteral("INSERT INTO Exams (Exam_id, Exam_Price) VALUES (1, 16777217)")));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT Exam_Price FROM Exams WHERE Exam_id = 1")).toDouble(), 16777216.0);
    ASSERT_TRUE(db().Execute(QStringLiteral("INSERT INTO Exams (Exam_id, Exam_Price) VALUES (2, 17.99)")));
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT printf('%.10f', Exam_Price) FROM Exams WHERE Exam_id = 2")).toString(),
              QStringLiteral("17.9899997711"));
    // Read back through a record set, it is the number that was typed.
    auto rows = db().OpenRecordset(QStringLiteral("SELECT Exam_Price FROM Exams WHERE Exam_id = 2"));
    ASSERT_TRUE(rows);
    EXPECT_EQ(rows->Fields(QStringLiteral("Exam_Price")).toDouble(), 17.99);
    EXPECT_FALSE(db().Execute(QStringLiteral("UPDATE Exams SET Exam_Price = 1e300 WHERE Exam_id = 1")));
    EXPECT_EQ(Err().Number, engine::jet::NumericOverflow);
    EXPECT_FALSE(db().Execute(QStringLiteral("UPDATE Exams SET Exam_Price = 'ten' WHERE Exam_id = 1")));
    EXPECT_EQ(Err().Number, engine::jet::DataTypeMismatch);
}

TEST_F(HostileInputTest, DateNumbersAreExactFractionsOfADay)
{
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT jet_date_serial('1899-12-30 00:05:00')")).toDouble(), 5.0 / 1440.0);
    EXPECT_EQ(t.scalar(QStringLiteral("SELECT jet_date_serial('1899-12-30 10:45:00')")).toDouble(), 645.0 / 1440.0);
    EXPECT_TRUE(t.scalar(QStringLiteral("SELECT jet_date_serial(NULL)")).isNull());
}

}  // namespace
