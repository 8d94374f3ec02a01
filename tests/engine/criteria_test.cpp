#include "engine/criteria.h"

#include "engine/currency.h"
#include "engine/err.h"
#include "engine/jet_date.h"

#include <gtest/gtest.h>

using engine::Criteria;
using engine::CriteriaField;
using engine::FieldType;

namespace {

// A row of a holidays-and-families sort of table, enough to try every kind.
const QList<CriteriaField> fields = {
    {QStringLiteral("Family_Name"), FieldType::Text},  // 0
    {QStringLiteral("Term_id"), FieldType::Long},      // 1
    {QStringLiteral("day_off"), FieldType::Date},      // 2
    {QStringLiteral("Cancelled"), FieldType::Boolean}, // 3
    {QStringLiteral("Price"), FieldType::Currency},    // 4
    {QStringLiteral("Notes"), FieldType::Memo},        // 5
    {QStringLiteral("pid"), FieldType::Unknown},       // 6
    {QStringLiteral("Pupil id"), FieldType::Long},     // 7
};

QVector<QVariant> row(const QVariant& name, const QVariant& term = 5,
                      const QVariant& day = QStringLiteral("2026-01-05 00:00:00"), const QVariant& cancelled = 0,
                      const QVariant& price = QVariant::fromValue(engine::Currency::from_whole(10)),
                      const QVariant& notes = QVariant(), const QVariant& pid = 7, const QVariant& pupil = 7)
{
    return {name, term, day, cancelled, price, notes, pid, pupil};
}

// Parses (the test fails if that fails) and tries one row.
bool matches(const char* criterion, const QVector<QVariant>& values)
{
    Criteria criteria;
    const bool parsed = criteria.parse(QString::fromUtf8(criterion), fields);
    EXPECT_TRUE(parsed) << criterion << ": " << engine::Err().Description.toStdString();
    return parsed && criteria.matches(values);
}

int parse_error(const char* criterion)
{
    engine::Err().Clear();
    Criteria criteria;
    EXPECT_FALSE(criteria.parse(QString::fromUtf8(criterion), fields)) << criterion;
    return engine::Err().Number;
}

}  // namespace

// ---------------------------------------------------------------- text

TEST(CriteriaText, ComparesIgnoringCase)
{
    EXPECT_TRUE(matches("Family_Name > \"Smith\"", row(QStringLiteral("taylor"))));
    EXPECT_FALSE(matches("Family_Name > \"Smith\"", row(QStringLiteral("SMITH"))));
    EXPECT_FALSE(matches("Family_Name > \"smith\"", row(QStringLiteral("Adams"))));
    EXPECT_TRUE(matches("Family_Name = 'SMITH'", row(QStringLiteral("Smith"))));
}

TEST(CriteriaText, IgnoresCaseBeyondAscii)
{
    EXPECT_TRUE(matches("Family_Name = \"ÖZTÜRK\"", row(QStringLiteral("öztürk"))));
}

TEST(CriteriaText, DoubledQuotesInsideLiterals)
{
    EXPECT_TRUE(matches("Family_Name = 'O''Brien'", row(QStringLiteral("O'Brien"))));
    EXPECT_TRUE(matches("Family_Name = \"The \"\"Best\"\"\"", row(QStringLiteral("The \"Best\""))));
}

TEST(CriteriaText, LikeUsesTheEngineWildcards)
{
    EXPECT_TRUE(matches("Family_Name LIKE \"Sm*\"", row(QStringLiteral("smith"))));
    EXPECT_FALSE(matches("Family_Name LIKE \"Sm*\"", row(QStringLiteral("Jones"))));
    EXPECT_TRUE(matches("Family_Name NOT LIKE \"Sm*\"", row(QStringLiteral("Jones"))));
    EXPECT_TRUE(matches("Family_Name like \"*on?s\"", row(QStringLiteral("Jones"))));
}

TEST(CriteriaLike, WildcardsSetsAndDigits)
{
    EXPECT_TRUE(engine::jet_like(QStringLiteral("Room 12"), QStringLiteral("Room ##")));
    EXPECT_FALSE(engine::jet_like(QStringLiteral("Room 1a"), QStringLiteral("Room ##")));
    EXPECT_TRUE(engine::jet_like(QStringLiteral("bat"), QStringLiteral("[bc]at")));
    EXPECT_FALSE(engine::jet_like(QStringLiteral("rat"), QStringLiteral("[bc]at")));
    EXPECT_TRUE(engine::jet_like(QStringLiteral("rat"), QStringLiteral("[!bc]at")));
    EXPECT_TRUE(engine::jet_like(QStringLiteral("Mat"), QStringLiteral("[a-m]at")));
    EXPECT_TRUE(engine::jet_like(QStringLiteral("5*"), QStringLiteral("#[*]")));
    EXPECT_FALSE(engine::jet_like(QStringLiteral("55"), QStringLiteral("#[*]")));
    EXPECT_TRUE(engine::jet_like(QStringLiteral("a[b"), QStringLiteral("a[b")));
    EXPECT_TRUE(engine::jet_like(QString(), QStringLiteral("*")));
    EXPECT_FALSE(engine::jet_like(QStringLiteral("abc"), QStringLiteral("ab")));
    EXPECT_TRUE(engine::jet_like(QStringLiteral("ab"), QStringLiteral("*a*b*")));
}

// ---------------------------------------------------------------- numbers

TEST(CriteriaNumbers, WholeNumbersMatchAndMiss)
{
    EXPECT_TRUE(matches("Term_id = 5", row(QStringLiteral("x"), 5)));
    EXPECT_FALSE(matches("Term_id = 5", row(QStringLiteral("x"), 6)));
    EXPECT_TRUE(matches("Term_id >= -2.5", row(QStringLiteral("x"), -2)));
}

TEST(CriteriaNumbers, TextOfANumberComparesAsANumber)
{
    EXPECT_TRUE(matches("Term_id = 5", row(QStringLiteral("x"), QStringLiteral("5"))));
    EXPECT_TRUE(matches("Term_id < 10", row(QStringLiteral("x"), QStringLiteral("9"))));
    EXPECT_TRUE(matches("pid = 12", row(QStringLiteral("x"), 5, QVariant(), 0, QVariant(), QVariant(), QStringLiteral("12"))));
    EXPECT_TRUE(matches("Term_id = \"5\"", row(QStringLiteral("x"), 5)));
}

TEST(CriteriaNumbers, MoneyComparesAfterRoundingToFourPlaces)
{
    EXPECT_TRUE(matches("Price = 0.3", row(QStringLiteral("x"), 5, QVariant(), 0, 0.1 + 0.2)));
    EXPECT_TRUE(matches("Price = 10", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("Price > 9.9999", row(QStringLiteral("x"))));
    const QVariant money = QVariant::fromValue(engine::Currency::from_units(12345));
    EXPECT_TRUE(matches("pid = 1.2345", row(QStringLiteral("x"), 5, QVariant(), 0, QVariant(), QVariant(), money)));
}

TEST(CriteriaNumbers, FieldToField)
{
    EXPECT_TRUE(matches("pid = [Pupil id]", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("Term_id < pid", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("3 < Term_id", row(QStringLiteral("x"))));
}

// ---------------------------------------------------------------- dates

TEST(CriteriaDates, LiteralIsReadMonthFirst)
{
    EXPECT_TRUE(matches("day_off = #01/05/2026#", row(QStringLiteral("x"))));
    EXPECT_FALSE(matches("day_off = #05/01/2026#", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("day_off = #01/05/2026 #", row(QStringLiteral("x"))));
}

TEST(CriteriaDates, ValueMayArriveAsDateTime)
{
    const QVariant day = engine::make_datetime(QDate(2026, 1, 5));
    EXPECT_TRUE(matches("day_off = #1/5/2026#", row(QStringLiteral("x"), 5, day)));
    EXPECT_TRUE(matches("day_off < #1/5/2026 10:00#", row(QStringLiteral("x"), 5, day)));
}

TEST(CriteriaDates, QuotedDateTextComparesAsDate)
{
    EXPECT_TRUE(matches("day_off = \"01/05/2026\"", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("day_off > '2025-12-31'", row(QStringLiteral("x"))));
    // As text "2026-01-05 ..." would sort before "9/1/2025"; as dates it is later.
    EXPECT_TRUE(matches("day_off > \"9/1/2025\"", row(QStringLiteral("x"))));
}

TEST(CriteriaDates, BetweenDates)
{
    EXPECT_TRUE(matches("day_off BETWEEN #1/1/2026# AND #1/31/2026#", row(QStringLiteral("x"))));
    EXPECT_FALSE(matches("day_off BETWEEN #2/1/2026# AND #2/28/2026#", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("day_off NOT BETWEEN #2/1/2026# AND #2/28/2026#", row(QStringLiteral("x"))));
}

// ---------------------------------------------------------------- yes/no

TEST(CriteriaBoolean, TrueMatchesOneAndMinusOne)
{
    EXPECT_TRUE(matches("Cancelled = True", row(QStringLiteral("x"), 5, QVariant(), 1)));
    EXPECT_TRUE(matches("Cancelled = True", row(QStringLiteral("x"), 5, QVariant(), -1)));
    EXPECT_TRUE(matches("Cancelled = False", row(QStringLiteral("x"), 5, QVariant(), 0)));
    EXPECT_FALSE(matches("Cancelled = True", row(QStringLiteral("x"), 5, QVariant(), 0)));
    EXPECT_TRUE(matches("Cancelled <> False", row(QStringLiteral("x"), 5, QVariant(), true)));
}

TEST(CriteriaBoolean, FieldAloneIsACondition)
{
    EXPECT_TRUE(matches("Cancelled", row(QStringLiteral("x"), 5, QVariant(), 1)));
    EXPECT_TRUE(matches("NOT Cancelled", row(QStringLiteral("x"), 5, QVariant(), 0)));
}

// ---------------------------------------------------------------- Null

TEST(CriteriaNull, NoComparisonWithNullMatches)
{
    const auto values = row(QVariant(), QVariant());
    EXPECT_FALSE(matches("Family_Name = \"\"", values));
    EXPECT_FALSE(matches("Family_Name <> \"Smith\"", values));
    EXPECT_FALSE(matches("NOT Family_Name = \"Smith\"", values));
    EXPECT_FALSE(matches("Term_id = Null", values));
    EXPECT_FALSE(matches("Family_Name LIKE \"*\"", values));
    EXPECT_FALSE(matches("Term_id IN (1, 5)", values));
}

TEST(CriteriaNull, IsNullAndIsNotNull)
{
    EXPECT_TRUE(matches("Notes IS NULL", row(QStringLiteral("x"))));
    EXPECT_FALSE(matches("Notes IS NOT NULL", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("Notes is not null", row(QStringLiteral("x"), 5, QVariant(), 0, QVariant(), QStringLiteral(""))));
}

TEST(CriteriaNull, UnknownIsCarriedThroughAndOr)
{
    const auto values = row(QVariant(), 5);
    EXPECT_TRUE(matches("Family_Name = \"x\" OR Term_id = 5", values));
    EXPECT_FALSE(matches("Family_Name = \"x\" AND Term_id = 5", values));
    EXPECT_FALSE(matches("NOT (Family_Name = \"x\" AND Term_id = 5)", values));
    EXPECT_TRUE(matches("NOT (Family_Name = \"x\" AND Term_id = 6)", values));
}

TEST(CriteriaNull, MissingValuesAtTheEndAreNull)
{
    EXPECT_TRUE(matches("pid IS NULL", {QStringLiteral("x"), 5}));
}

// ---------------------------------------------------------------- logic

TEST(CriteriaLogic, AndBindsTighterThanOr)
{
    // a OR (b AND c): true through a alone.
    EXPECT_TRUE(matches("Term_id = 5 OR Term_id = 6 AND Family_Name = \"none\"", row(QStringLiteral("x"), 5)));
    // (a OR b) AND c: false because of c.
    EXPECT_FALSE(matches("(Term_id = 5 OR Term_id = 6) AND Family_Name = \"none\"", row(QStringLiteral("x"), 5)));
}

TEST(CriteriaLogic, NotBindsTighterThanAnd)
{
    EXPECT_TRUE(matches("NOT Term_id = 6 AND Family_Name = \"x\"", row(QStringLiteral("x"), 5)));
    EXPECT_FALSE(matches("NOT (Term_id = 5 AND Family_Name = \"x\")", row(QStringLiteral("x"), 5)));
}

TEST(CriteriaLogic, TwoKeysLikeTheRegisterSearch)
{
    EXPECT_TRUE(matches("pid = 7 AND Term_id = 5", row(QStringLiteral("x"))));
    EXPECT_FALSE(matches("pid = 7 AND Term_id = 4", row(QStringLiteral("x"))));
}

TEST(CriteriaLogic, InList)
{
    EXPECT_TRUE(matches("Term_id IN (1, 5, 9)", row(QStringLiteral("x"))));
    EXPECT_FALSE(matches("Term_id IN (1, 9)", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("Term_id NOT IN (1, 9)", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("Family_Name IN ('a', \"SMITH\")", row(QStringLiteral("Smith"))));
}

TEST(CriteriaLogic, BracketedOperand)
{
    EXPECT_TRUE(matches("(Term_id) = 5", row(QStringLiteral("x"))));
}

// ---------------------------------------------------------------- names

TEST(CriteriaNames, BracketedAndQualifiedNames)
{
    EXPECT_TRUE(matches("[Term_id] = 5", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("Families.Family_Name = \"x\"", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("[P].[Pupil id] = 7", row(QStringLiteral("x"))));
    EXPECT_TRUE(matches("TERM_ID = 5", row(QStringLiteral("x"))));
}

TEST(CriteriaNames, FullDottedNameWinsOverItsLastPart)
{
    const QList<CriteriaField> joined = {{QStringLiteral("id"), FieldType::Long},
                                         {QStringLiteral("F.id"), FieldType::Long}};
    Criteria criteria;
    ASSERT_TRUE(criteria.parse(QStringLiteral("F.id = 2"), joined));
    EXPECT_TRUE(criteria.matches({1, 2}));
    ASSERT_TRUE(criteria.parse(QStringLiteral("G.id = 1"), joined));
    EXPECT_TRUE(criteria.matches({1, 2}));
}

// ---------------------------------------------------------------- errors

TEST(CriteriaErrors, UnknownFieldIs3070)
{
    EXPECT_EQ(parse_error("Surname = \"x\""), 3070);
    EXPECT_EQ(engine::Err().Description,
              QStringLiteral("The Microsoft Jet database engine does not recognize 'Surname' as a valid field name "
                             "or expression."));
    EXPECT_EQ(engine::DBEngine_Errors().size(), 1);
    EXPECT_EQ(parse_error("Teacher_Nickname LIKE [*Ann*]"), 3070);
}

TEST(CriteriaErrors, BadSyntaxIs3077)
{
    for (const char* text : {"Term_id =", "Term_id = 5 AND", "(Term_id = 5", "Term_id = 5)", "Term_id 5", "= 5",
                             "Term_id = #13/45/2026#", "Term_id BETWEEN 1 OR 2", "Term_id IN 1, 2", "", "Notes IS 5",
                             "Term_id == 5", "Term_id NOT = 5"}) {
        EXPECT_EQ(parse_error(text), 3077) << text;
        EXPECT_EQ(engine::Err().Description, QStringLiteral("Syntax error in expression."));
    }
}

TEST(CriteriaErrors, SyntaxIsCheckedBeforeNames)
{
    EXPECT_EQ(parse_error("Surname = "), 3077);
}

TEST(CriteriaErrors, TextThatANumberOrDateFieldCanNeverBeIs3464)
{
    EXPECT_EQ(parse_error("Term_id = \"abc\""), 3464);
    EXPECT_EQ(parse_error("day_off = 'soon'"), 3464);
}

TEST(CriteriaErrors, UnparsedCriteriaMatchNothing)
{
    Criteria criteria;
    EXPECT_FALSE(criteria.matches(row(QStringLiteral("x"))));
    EXPECT_FALSE(criteria.parse(QStringLiteral("Term_id ="), fields));
    EXPECT_FALSE(criteria.is_parsed());
    EXPECT_FALSE(criteria.matches(row(QStringLiteral("x"))));
}
