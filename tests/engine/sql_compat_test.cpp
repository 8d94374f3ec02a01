#include "engine/sql_compat.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QStringList>

using engine::jet_to_sqlite;

namespace {

QString rewritten(const char* sql)
{
    return jet_to_sqlite(QString::fromUtf8(sql));
}

}  // namespace

// ---------------------------------------------------------------- tokens

TEST(SqlCompatTokens, JoinedTokensGiveBackTheText)
{
    const QString sql = QStringLiteral("SELECT [a b], 'it''s', \"x\"\"y\" -- note\nFROM t WHERE d = #1/5/2026# /* c */;");
    QString joined;
    for (const auto& token : engine::tokenize_jet_sql(sql))
        joined += token.text;
    EXPECT_EQ(joined, sql);
}

TEST(SqlCompatTokens, QuotedValuesUndoDoubledQuotes)
{
    const auto tokens = engine::tokenize_jet_sql(QStringLiteral("'it''s' \"say \"\"hi\"\"\""));
    ASSERT_EQ(tokens.size(), 3);
    EXPECT_EQ(engine::quoted_text_value(tokens[0]), QStringLiteral("it's"));
    EXPECT_EQ(engine::quoted_text_value(tokens[2]), QStringLiteral("say \"hi\""));
}

TEST(SqlCompatTokens, HashWithoutValidDateIsASymbol)
{
    const auto tokens = engine::tokenize_jet_sql(QStringLiteral("#13/45/2026#"));
    EXPECT_EQ(tokens.front().kind, engine::JetTokenKind::Symbol);
}

// ---------------------------------------------------------------- date literals

TEST(SqlCompatDateLiteral, MonthComesFirst)
{
    const auto value = engine::parse_jet_date_literal(QStringLiteral("01/05/2026"));
    ASSERT_TRUE(value);
    EXPECT_EQ(value->date(), QDate(2026, 1, 5));
}

TEST(SqlCompatDateLiteral, ReadsTimesWithAndWithoutMeridiem)
{
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("01/05/2026 14:30:15"))->time(), QTime(14, 30, 15));
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("01/05/2026 2:30 PM"))->time(), QTime(14, 30));
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("1/5/2026 12:10 am"))->time(), QTime(0, 10));
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("12 PM"))->time(), QTime(12, 0));
}

TEST(SqlCompatDateLiteral, TimeAloneFallsOnTheZeroDate)
{
    const auto value = engine::parse_jet_date_literal(QStringLiteral("10:30"));
    ASSERT_TRUE(value);
    EXPECT_EQ(value->date(), QDate(1899, 12, 30));
}

TEST(SqlCompatDateLiteral, TwoDigitYearsAndIsoForm)
{
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("1/5/29"))->date(), QDate(2029, 1, 5));
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("1/5/30"))->date(), QDate(1930, 1, 5));
    EXPECT_EQ(engine::parse_jet_date_literal(QStringLiteral("2026-01-05"))->date(), QDate(2026, 1, 5));
}

TEST(SqlCompatDateLiteral, RefusesWhatIsNoDate)
{
    for (const char* body : {"13/05/2026", "02/30/2026", "hello", "", "10", "13:00 PM", "1/5/2026 25:00"})
        EXPECT_FALSE(engine::parse_jet_date_literal(QString::fromUtf8(body))) << body;
}

// ---------------------------------------------------------------- text rewriting

TEST(SqlCompatRewrite, DeleteStarLosesTheStar)
{
    EXPECT_EQ(rewritten("DELETE * FROM Holidays;"), QStringLiteral("DELETE FROM Holidays;"));
    EXPECT_EQ(rewritten("Delete * from Invoices WHERE x = 1"), QStringLiteral("Delete from Invoices WHERE x = 1"));
    EXPECT_EQ(rewritten("DELETE Holidays.* FROM Holidays"), QStringLiteral("DELETE FROM Holidays"));
    EXPECT_EQ(rewritten("DELETE*FROM t"), QStringLiteral("DELETE FROM t"));
}

TEST(SqlCompatRewrite, MultiplicationAfterDeleteIsKept)
{
    const char* sql = "DELETE FROM t WHERE a * 2 > 3";
    EXPECT_EQ(rewritten(sql), QString::fromUtf8(sql));
}

TEST(SqlCompatRewrite, DateLiteralsBecomeStoredText)
{
    EXPECT_EQ(rewritten("DELETE * from Holidays WHERE day_off < #01/05/2026#;"),
              QStringLiteral("DELETE from Holidays WHERE day_off < '2026-01-05 00:00:00';"));
    EXPECT_EQ(rewritten("x = #01/05/2026 2:30 PM#"), QStringLiteral("x = '2026-01-05 14:30:00'"));
    EXPECT_EQ(rewritten("x = #10:30#"), QStringLiteral("x = '1899-12-30 10:30:00'"));
    EXPECT_EQ(rewritten("x = #01/05/2026 #"), QStringLiteral("x = '2026-01-05 00:00:00'"));
}

TEST(SqlCompatRewrite, DoubleQuotedStringsBecomeSingleQuoted)
{
    EXPECT_EQ(rewritten("WHERE a = \"O'Brien\" AND b = \"say \"\"hi\"\"\""),
              QStringLiteral("WHERE a = 'O''Brien' AND b = 'say \"hi\"'"));
    EXPECT_EQ(rewritten("WHERE a <> \"\""), QStringLiteral("WHERE a <> ''"));
}

TEST(SqlCompatRewrite, BooleanWordsBecomeNumbers)
{
    EXPECT_EQ(rewritten("WHERE C.Course_Suppressed = False AND x = TRUE"),
              QStringLiteral("WHERE C.Course_Suppressed = 0 AND x = 1"));
    EXPECT_EQ(rewritten("SELECT T.True, TrueValue, [True], 'True', :False FROM t"),
              QStringLiteral("SELECT T.True, TrueValue, [True], 'True', :False FROM t"));
}

TEST(SqlCompatRewrite, NothingChangesInsideStringsNamesAndComments)
{
    const char* sql = "SELECT 'a & b', [x & y], [DELETE * FROM], 'True' -- a & b \"q\" #1/5/2026#\nFROM t";
    EXPECT_EQ(rewritten(sql), QString::fromUtf8(sql));
}

TEST(SqlCompatRewrite, AmpersandJoinsWithNullAsEmpty)
{
    EXPECT_EQ(rewritten("SELECT a & b & c FROM t"),
              QStringLiteral("SELECT (coalesce(a,'') || coalesce(b,'') || coalesce(c,'')) FROM t"));
}

TEST(SqlCompatRewrite, AmpersandBindsLooserThanArithmetic)
{
    EXPECT_EQ(rewritten("SELECT \"Total: \" & a + b AS T"),
              QStringLiteral("SELECT (coalesce('Total: ','') || coalesce(a + b,'')) AS T"));
}

TEST(SqlCompatRewrite, AmpersandBindsTighterThanComparisons)
{
    EXPECT_EQ(rewritten("WHERE x = a & b AND y <> c&d"),
              QStringLiteral("WHERE x = (coalesce(a,'') || coalesce(b,'')) AND y <> (coalesce(c,'') || coalesce(d,''))"));
    EXPECT_EQ(rewritten("WHERE a&b<=c&d"),
              QStringLiteral("WHERE (coalesce(a,'') || coalesce(b,''))<=(coalesce(c,'') || coalesce(d,''))"));
}

TEST(SqlCompatRewrite, AmpersandOperandsStopAtBracketsAndCommas)
{
    EXPECT_EQ(rewritten("SELECT f(a & b, c), (x & y) & z"),
              QStringLiteral("SELECT f((coalesce(a,'') || coalesce(b,'')), c), "
                             "(coalesce(((coalesce(x,'') || coalesce(y,''))),'') || coalesce(z,''))"));
}

TEST(SqlCompatRewrite, LeftAndRightAsFunctionsArePartOfTheOperand)
{
    EXPECT_EQ(rewritten("SELECT Left(n, 1) & \".\" FROM a LEFT JOIN b ON a.i = b.i"),
              QStringLiteral("SELECT (coalesce(Left(n, 1),'') || coalesce('.','')) FROM a LEFT JOIN b ON a.i = b.i"));
}

TEST(SqlCompatRewrite, DisplayNameExpressionKeepsItsSurroundings)
{
    EXPECT_EQ(rewritten("SELECT *,  P.Pupil_FirstName & \" \" & F.Family_Name &  \" \" & P.Pupil_Surname As DisplayName  FROM Families F"),
              QStringLiteral("SELECT *,  (coalesce(P.Pupil_FirstName,'') || coalesce(' ','') || coalesce(F.Family_Name,'') || "
                             "coalesce(' ','') || coalesce(P.Pupil_Surname,'')) As DisplayName  FROM Families F"));
}

TEST(SqlCompatRewrite, CommentBetweenOperandsCannotSwallowTheRest)
{
    EXPECT_EQ(rewritten("SELECT a -- first\n & b FROM t"), QStringLiteral("SELECT (coalesce(a,'') || coalesce(b,'')) FROM t"));
}

TEST(SqlCompatRewrite, SqliteTextPassesUnchangedAndRewritingIsIdempotent)
{
    const QStringList samples = {
        QStringLiteral("SELECT a || b, 'x' FROM t WHERE d >= '2026-01-05 00:00:00' AND f = 1;"),
        QStringLiteral("  select *\n  from   [Pupils]  where Name like 'Sm%'  "),
        QStringLiteral("UPDATE t SET a = a * 2 WHERE b IN (1, 2, 3)"),
    };
    for (const QString& sql : samples)
        EXPECT_EQ(jet_to_sqlite(sql), sql);
    const QString once = rewritten("DELETE * FROM t WHERE n = \"a\" & b AND d = #1/5/2026# AND f = True");
    EXPECT_EQ(jet_to_sqlite(once), once);
}

// ---------------------------------------------------------------- through SQLite

namespace {

class SqlCompatSqlite : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(sqlite3_open(":memory:", &db_), SQLITE_OK);
        run("CREATE TABLE Holidays (day_off TEXT, note TEXT, flag INTEGER);"
            "INSERT INTO Holidays VALUES ('2026-01-05 00:00:00', 'New', 1);"
            "INSERT INTO Holidays VALUES ('2026-05-01 00:00:00', NULL, 0);");
    }
    void TearDown() override { sqlite3_close(db_); }

    // Runs Jet text after the compatibility step; false when SQLite refuses it.
    bool run(const char* jet_sql)
    {
        const QByteArray sql = jet_to_sqlite(QString::fromUtf8(jet_sql)).toUtf8();
        char* message = nullptr;
        const int rc = sqlite3_exec(db_, sql.constData(), nullptr, nullptr, &message);
        if (rc != SQLITE_OK)
            ADD_FAILURE() << message << " in: " << sql.constData();
        sqlite3_free(message);
        return rc == SQLITE_OK;
    }

    // The first column of each row, null as "<null>".
    QStringList column(const char* jet_sql)
    {
        const QByteArray sql = jet_to_sqlite(QString::fromUtf8(jet_sql)).toUtf8();
        sqlite3_stmt* statement = nullptr;
        QStringList values;
        if (sqlite3_prepare_v2(db_, sql.constData(), -1, &statement, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db_) << " in: " << sql.constData();
            return values;
        }
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const auto* text = sqlite3_column_text(statement, 0);
            values.append(text ? QString::fromUtf8(reinterpret_cast<const char*>(text)) : QStringLiteral("<null>"));
        }
        sqlite3_finalize(statement);
        return values;
    }

    sqlite3* db_ = nullptr;
};

}  // namespace

TEST_F(SqlCompatSqlite, NullJoinsAsEmpty)
{
    EXPECT_EQ(column("SELECT \"[\" & note & \"]\" & flag FROM Holidays ORDER BY day_off"),
              (QStringList{QStringLiteral("[New]1"), QStringLiteral("[]0")}));
}

TEST_F(SqlCompatSqlite, DateLiteralEqualsStoredText)
{
    EXPECT_EQ(column("SELECT note FROM Holidays WHERE day_off = #01/05/2026#"), QStringList{QStringLiteral("New")});
}

TEST_F(SqlCompatSqlite, DeleteStarWithDateAndBoolean)
{
    ASSERT_TRUE(run("DELETE * FROM Holidays WHERE day_off < #02/01/2026# AND flag = True;"));
    EXPECT_EQ(column("SELECT day_off FROM Holidays"), QStringList{QStringLiteral("2026-05-01 00:00:00")});
}

TEST_F(SqlCompatSqlite, JoinedTextComparesAfterJoining)
{
    EXPECT_EQ(column("SELECT flag FROM Holidays WHERE note & \"!\" = \"New!\""), QStringList{QStringLiteral("1")});
    EXPECT_EQ(column("SELECT \"n=\" & flag + 1 FROM Holidays ORDER BY flag"),
              (QStringList{QStringLiteral("n=1"), QStringLiteral("n=2")}));
}

TEST(SqlCompatRewrite, InsertSelectGetsTheColumnsItsSelectListNames)
{
    EXPECT_EQ(rewritten("INSERT INTO Tmp_Activities SELECT Exam_id AS tmp_Activity_id FROM Exams"),
              QStringLiteral("INSERT INTO Tmp_Activities ([tmp_Activity_id]) SELECT Exam_id AS tmp_Activity_id FROM Exams"));
    EXPECT_EQ(rewritten("INSERT INTO T SELECT DISTINCT E.Exam_id, count(*) AS [n], 'x' AS label FROM E"),
              QStringLiteral("INSERT INTO T ([Exam_id], [n], [label]) SELECT DISTINCT E.Exam_id, count(*) AS [n], 'x' AS label FROM E"));
    // Nothing to go by: a star, an unnamed expression, or a list already given.
    for (const char* sql : {"INSERT INTO T SELECT * FROM E", "INSERT INTO T SELECT a + 1 FROM E",
                            "INSERT INTO T (a) SELECT b AS a FROM E", "INSERT INTO T VALUES (1)"})
        EXPECT_EQ(rewritten(sql), QString::fromUtf8(sql));
}

TEST_F(SqlCompatSqlite, InsertSelectFillsColumnsByNameAsJetDoes)
{
    ASSERT_TRUE(run("CREATE TABLE Notes (flag INTEGER, note TEXT)"));
    ASSERT_TRUE(run("INSERT INTO Notes SELECT note AS note, flag AS flag FROM Holidays WHERE flag = 1"));
    EXPECT_EQ(column("SELECT note FROM Notes"), QStringList{QStringLiteral("New")});
}

// The forms a school's script meets less often, each run by SQLite after the
// step, with the rows it gives.
TEST_F(SqlCompatSqlite, LessCommonFormsRunAsJetWouldRunThem)
{
    ASSERT_TRUE(run("CREATE TABLE [Day Notes] (flag INTEGER, note TEXT)"));
    struct Case {
        const char* jet;
        const char* query;
        QStringList rows;
    };
    const QList<Case> cases = {
        {nullptr, "SELECT CASE WHEN flag = 1 THEN \"on \" & note ELSE \"off\" & note END FROM Holidays ORDER BY flag",
         {QStringLiteral("off"), QStringLiteral("on New")}},
        {nullptr, "SELECT flag FROM Holidays WHERE note & \"\" IN (\"New\" & \"\", \"x\")", {QStringLiteral("1")}},
        {"INSERT INTO [Day Notes] SELECT coalesce(note, \"a, b\") AS note, flag AS flag FROM Holidays WHERE flag = 0",
         "SELECT note FROM [Day Notes]", {QStringLiteral("a, b")}},
        {"INSERT INTO [Day Notes] SELECT note AS note, 5 AS flag FROM Holidays WHERE flag = 1 "
         "UNION SELECT 'u' AS note, 6 AS flag FROM Holidays WHERE flag = 1",
         "SELECT note & flag FROM [Day Notes] WHERE flag > 4 ORDER BY flag", {QStringLiteral("New5"), QStringLiteral("u6")}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.query);
        if (c.jet)
            ASSERT_TRUE(run(c.jet));
        EXPECT_EQ(column(c.query), c.rows);
    }
}

TEST(SqlCompatRewrite, UnterminatedQuotesAndBracketsRunToTheEndForSqliteToRefuse)
{
    for (const char* sql : {"SELECT \"open", "SELECT 'open", "SELECT [open", "SELECT (1 & 2", "SELECT 1 & 2)"}) {
        SCOPED_TRACE(sql);
        QString converted;
        EXPECT_TRUE(engine::jet_to_sqlite(QString::fromUtf8(sql), converted));
        sqlite3* db = nullptr;
        ASSERT_EQ(sqlite3_open(":memory:", &db), SQLITE_OK);
        sqlite3_stmt* statement = nullptr;
        EXPECT_NE(sqlite3_prepare_v2(db, converted.toUtf8().constData(), -1, &statement, nullptr), SQLITE_OK);
        sqlite3_finalize(statement);
        sqlite3_close(db);
    }
}
