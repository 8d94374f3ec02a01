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

// Joined, the tokens give back the text; quoted values undo doubled quotes;
// a hash without a valid date is a symbol.
TEST(SqlCompatTokens, TokensKeepTheTextAndReadQuotedValues)
{
    const QString sql = QStringLiteral("SELECT [a b], 'it''s', \"x\"\"y\" -- note\nFROM t WHERE d = #1/5/2026# /* c */;");
    QString joined;
    for (const auto& token : engine::tokenize_jet_sql(sql))
        joined += token.text;
    EXPECT_EQ(joined, sql);

    const auto tokens = engine::tokenize_jet_sql(QStringLiteral("'it''s' \"say \"\"hi\"\"\" #13/45/2026#"));
    ASSERT_GE(tokens.size(), 5);
    EXPECT_EQ(engine::quoted_text_value(tokens[0]), QStringLiteral("it's"));
    EXPECT_EQ(engine::quoted_text_value(tokens[2]), QStringLiteral("say \"hi\""));
    EXPECT_EQ(tokens[4].kind, engine::JetTokenKind::Symbol);
}

// ---------------------------------------------------------------- date literals

TEST(SqlCompatDateLiteral, MonthFirstWithOrWithoutATimeAndTwoDigitYearsInTheWindow)
{
    struct Case {
        const char* body;
        QDateTime read;
    };
    const QList<Case> cases = {
        {"01/05/2026", QDateTime(QDate(2026, 1, 5), QTime(0, 0))},
        {"01/05/2026 14:30:15", QDateTime(QDate(2026, 1, 5), QTime(14, 30, 15))},
        {"01/05/2026 2:30 PM", QDateTime(QDate(2026, 1, 5), QTime(14, 30))},
        {"1/5/2026 12:10 am", QDateTime(QDate(2026, 1, 5), QTime(0, 10))},
        {"12 PM", QDateTime(QDate(1899, 12, 30), QTime(12, 0))},  // a time alone falls on the zero date
        {"10:30", QDateTime(QDate(1899, 12, 30), QTime(10, 30))}, {"1/5/29", QDateTime(QDate(2029, 1, 5), QTime(0, 0))},
        {"1/5/30", QDateTime(QDate(1930, 1, 5), QTime(0, 0))},
        {"2026-01-05", QDateTime(QDate(2026, 1, 5), QTime(0, 0))},
    };
    for (const Case& c : cases) {
        const auto value = engine::parse_jet_date_literal(QString::fromUtf8(c.body));
        ASSERT_TRUE(value) << c.body;
        EXPECT_EQ(value->date(), c.read.date()) << c.body;
        EXPECT_EQ(value->time(), c.read.time()) << c.body;
    }
}

TEST(SqlCompatDateLiteral, RefusesWhatIsNoDate)
{
    for (const char* body : {"13/05/2026", "02/30/2026", "hello", "", "10", "13:00 PM", "1/5/2026 25:00"})
        EXPECT_FALSE(engine::parse_jet_date_literal(QString::fromUtf8(body))) << body;
}

// ---------------------------------------------------------------- text rewriting

// Jet's text and what SQLite is given. Nothing changes inside strings, names
// and comments; "&" joins with a null as empty, looser than arithmetic and
// tighter than comparisons, its operands ending at brackets and commas.
TEST(SqlCompatRewrite, JetFormsBecomeTheirSqliteEquivalents)
{
    struct Case {
        const char* jet;
        const char* sqlite;  // nullptr: unchanged
    };
    const Case cases[] = {
        {"DELETE * FROM Holidays;", "DELETE FROM Holidays;"},
        {"Delete * from Invoices WHERE x = 1", "Delete from Invoices WHERE x = 1"},
        {"DELETE Holidays.* FROM Holidays", "DELETE FROM Holidays"}, {"DELETE*FROM t", "DELETE FROM t"},
        {"DELETE FROM t WHERE a * 2 > 3", nullptr},
        {"DELETE * from Holidays WHERE day_off < #01/05/2026#;", "DELETE from Holidays WHERE day_off < '2026-01-05 00:00:00';"},
        {"x = #01/05/2026 2:30 PM#", "x = '2026-01-05 14:30:00'"}, {"x = #10:30#", "x = '1899-12-30 10:30:00'"},
        {"x = #01/05/2026 #", "x = '2026-01-05 00:00:00'"},
        {"WHERE a = \"O'Brien\" AND b = \"say \"\"hi\"\"\"", "WHERE a = 'O''Brien' AND b = 'say \"hi\"'"},
        {"WHERE a <> \"\"", "WHERE a <> ''"},
        {"WHERE C.Course_Suppressed = False AND x = TRUE", "WHERE C.Course_Suppressed = 0 AND x = 1"},
        {"SELECT T.True, TrueValue, [True], 'True', :False FROM t", nullptr},
        {"SELECT 'a & b', [x & y], [DELETE * FROM], 'True' -- a & b \"q\" #1/5/2026#\nFROM t", nullptr},
        {"SELECT a & b & c FROM t", "SELECT (coalesce(a,'') || coalesce(b,'') || coalesce(c,'')) FROM t"},
        {"SELECT \"Total: \" & a + b AS T", "SELECT (coalesce('Total: ','') || coalesce(a + b,'')) AS T"},
        {"WHERE x = a & b AND y <> c&d",
         "WHERE x = (coalesce(a,'') || coalesce(b,'')) AND y <> (coalesce(c,'') || coalesce(d,''))"},
        {"WHERE a&b<=c&d", "WHERE (coalesce(a,'') || coalesce(b,''))<=(coalesce(c,'') || coalesce(d,''))"},
        {"SELECT f(a & b, c), (x & y) & z",
         "SELECT f((coalesce(a,'') || coalesce(b,'')), c), (coalesce(((coalesce(x,'') || coalesce(y,''))),'') || coalesce(z,''))"},
        {"SELECT Left(n, 1) & \".\" FROM a LEFT JOIN b ON a.i = b.i",
         "SELECT (coalesce(Left(n, 1),'') || coalesce('.','')) FROM a LEFT JOIN b ON a.i = b.i"},
        {"SELECT *,  P.Pupil_FirstName & \" \" & F.Family_Name &  \" \" & P.Pupil_Surname As DisplayName  FROM Families F",
         "SELECT *,  (coalesce(P.Pupil_FirstName,'') || coalesce(' ','') || coalesce(F.Family_Name,'') || "
         "coalesce(' ','') || coalesce(P.Pupil_Surname,'')) As DisplayName  FROM Families F"},
        // A comment between operands cannot swallow the rest.
        {"SELECT a -- first\n & b FROM t", "SELECT (coalesce(a,'') || coalesce(b,'')) FROM t"},
        // SQLite text passes unchanged.
        {"SELECT a || b, 'x' FROM t WHERE d >= '2026-01-05 00:00:00' AND f = 1;", nullptr},
        {"  select *\n  from   [Pupils]  where Name like 'Sm%'  ", nullptr},
        {"UPDATE t SET a = a * 2 WHERE b IN (1, 2, 3)", nullptr},
        // INSERT INTO t SELECT gets the columns its select list names...
        {"INSERT INTO Tmp_Activities SELECT Exam_id AS tmp_Activity_id FROM Exams",
         "INSERT INTO Tmp_Activities ([tmp_Activity_id]) SELECT Exam_id AS tmp_Activity_id FROM Exams"},
        {"INSERT INTO T SELECT DISTINCT E.Exam_id, count(*) AS [n], 'x' AS label FROM E",
         "INSERT INTO T ([Exam_id], [n], [label]) SELECT DISTINCT E.Exam_id, count(*) AS [n], 'x' AS label FROM E"},
        // ...unless there is nothing to go by: a star, an unnamed expression, or a list already given.
        {"INSERT INTO T SELECT * FROM E", nullptr}, {"INSERT INTO T SELECT a + 1 FROM E", nullptr},
        {"INSERT INTO T (a) SELECT b AS a FROM E", nullptr}, {"INSERT INTO T VALUES (1)", nullptr},
    };
    for (const Case& c : cases) {
        const QString once = rewritten(c.jet);
        EXPECT_EQ(once, QString::fromUtf8(c.sqlite ? c.sqlite : c.jet)) << c.jet;
        EXPECT_EQ(jet_to_sqlite(once), once) << "rewritten twice: " << c.jet;
    }
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

// Statements run by SQLite after the step, each with the rows a query gives
// afterwards, in order: the last deletes a row.
TEST_F(SqlCompatSqlite, JetTextRunsAsJetWouldRunIt)
{
    ASSERT_TRUE(run("CREATE TABLE Notes (flag INTEGER, note TEXT); CREATE TABLE [Day Notes] (flag INTEGER, note TEXT)"));
    struct Case {
        const char* jet;  // nullptr: nothing to run before the query
        const char* query;
        QStringList rows;
    };
    const QList<Case> cases = {
        {nullptr, "SELECT \"[\" & note & \"]\" & flag FROM Holidays ORDER BY day_off", {"[New]1", "[]0"}},
        {nullptr, "SELECT note FROM Holidays WHERE day_off = #01/05/2026#", {"New"}},
        {nullptr, "SELECT flag FROM Holidays WHERE note & \"!\" = \"New!\"", {"1"}},
        {nullptr, "SELECT \"n=\" & flag + 1 FROM Holidays ORDER BY flag", {"n=1", "n=2"}},
        {nullptr, "SELECT CASE WHEN flag = 1 THEN \"on \" & note ELSE \"off\" & note END FROM Holidays ORDER BY flag",
         {"off", "on New"}},
        {nullptr, "SELECT flag FROM Holidays WHERE note & \"\" IN (\"New\" & \"\", \"x\")", {"1"}},
        // INSERT INTO t SELECT fills the columns by name, as Jet does.
        {"INSERT INTO Notes SELECT note AS note, flag AS flag FROM Holidays WHERE flag = 1", "SELECT note FROM Notes", {"New"}},
        {"INSERT INTO [Day Notes] SELECT coalesce(note, \"a, b\") AS note, flag AS flag FROM Holidays WHERE flag = 0",
         "SELECT note FROM [Day Notes]", {"a, b"}},
        {"INSERT INTO [Day Notes] SELECT note AS note, 5 AS flag FROM Holidays WHERE flag = 1 "
         "UNION SELECT 'u' AS note, 6 AS flag FROM Holidays WHERE flag = 1",
         "SELECT note & flag FROM [Day Notes] WHERE flag > 4 ORDER BY flag", {"New5", "u6"}},
        {"DELETE * FROM Holidays WHERE day_off < #02/01/2026# AND flag = True;", "SELECT day_off FROM Holidays",
         {"2026-05-01 00:00:00"}},
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
