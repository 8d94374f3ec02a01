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

// ---------------------------------------------------------------- matching

// A criterion and a row it is tried on (name, term, day, cancelled, price,
// notes, pid, pupil id; see row()), and whether the row matches.
TEST(Criteria, RowsMatchAsTheEngineWouldMatchThem)
{
    struct Case {
        const char* criterion;
        QVector<QVariant> values;
        bool matches;
    };
    const auto x = row(QStringLiteral("x"));
    const auto named = [](const char* name) { return row(QString::fromUtf8(name)); };
    const auto term = [](const QVariant& t) { return row(QStringLiteral("x"), t); };
    const auto day = [](const QVariant& d) { return row(QStringLiteral("x"), 5, d); };
    const auto cancelled = [](const QVariant& c) { return row(QStringLiteral("x"), 5, QVariant(), c); };
    const auto pid = [](const QVariant& p) { return row(QStringLiteral("x"), 5, QVariant(), 0, QVariant(), QVariant(), p); };
    const QVariant monday = engine::make_datetime(QDate(2026, 1, 5));
    const auto nulls = row(QVariant(), QVariant());
    const auto no_name = row(QVariant(), 5);
    const Case cases[] = {
        // Text compares ignoring case, beyond ASCII too, with doubled quotes inside literals.
        {"Family_Name > \"Smith\"", named("taylor"), true}, {"Family_Name > \"Smith\"", named("SMITH"), false},
        {"Family_Name > \"smith\"", named("Adams"), false}, {"Family_Name = 'SMITH'", named("Smith"), true},
        {"Family_Name = \"ÖZTÜRK\"", named("öztürk"), true}, {"Family_Name = 'O''Brien'", named("O'Brien"), true},
        {"Family_Name = \"The \"\"Best\"\"\"", named("The \"Best\""), true},
        // LIKE uses the engine's wildcards.
        {"Family_Name LIKE \"Sm*\"", named("smith"), true}, {"Family_Name LIKE \"Sm*\"", named("Jones"), false},
        {"Family_Name NOT LIKE \"Sm*\"", named("Jones"), true}, {"Family_Name like \"*on?s\"", named("Jones"), true},
        // Numbers; the text of a number compares as a number; money after rounding to four places.
        {"Term_id = 5", term(5), true}, {"Term_id = 5", term(6), false}, {"Term_id >= -2.5", term(-2), true},
        {"Term_id = 5", term(QStringLiteral("5")), true}, {"Term_id < 10", term(QStringLiteral("9")), true},
        {"pid = 12", pid(QStringLiteral("12")), true}, {"Term_id = \"5\"", x, true},
        {"Price = 0.3", row(QStringLiteral("x"), 5, QVariant(), 0, 0.1 + 0.2), true}, {"Price = 10", x, true},
        {"Price > 9.9999", x, true},
        {"pid = 1.2345", pid(QVariant::fromValue(engine::Currency::from_units(12345))), true},
        // Field to field.
        {"pid = [Pupil id]", x, true}, {"Term_id < pid", x, true}, {"3 < Term_id", x, true},
        // Date literals are month first; a value may come as a date and time; quoted date text compares as a date.
        {"day_off = #01/05/2026#", x, true}, {"day_off = #05/01/2026#", x, false}, {"day_off = #01/05/2026 #", x, true},
        {"day_off = #1/5/2026#", day(monday), true}, {"day_off < #1/5/2026 10:00#", day(monday), true},
        {"day_off = \"01/05/2026\"", x, true}, {"day_off > '2025-12-31'", x, true},
        {"day_off > \"9/1/2025\"", x, true},  // as text "2026-01-05 ..." would sort first
        {"day_off BETWEEN #1/1/2026# AND #1/31/2026#", x, true},
        {"day_off BETWEEN #2/1/2026# AND #2/28/2026#", x, false},
        {"day_off NOT BETWEEN #2/1/2026# AND #2/28/2026#", x, true},
        // Yes/no: True matches 1 and -1; a field alone is a condition.
        {"Cancelled = True", cancelled(1), true}, {"Cancelled = True", cancelled(-1), true},
        {"Cancelled = False", cancelled(0), true}, {"Cancelled = True", cancelled(0), false},
        {"Cancelled <> False", cancelled(true), true}, {"Cancelled", cancelled(1), true},
        {"NOT Cancelled", cancelled(0), true},
        // No comparison with Null matches; IS NULL does; unknown is carried through AND, OR and NOT.
        {"Family_Name = \"\"", nulls, false}, {"Family_Name <> \"Smith\"", nulls, false},
        {"NOT Family_Name = \"Smith\"", nulls, false}, {"Term_id = Null", nulls, false},
        {"Family_Name LIKE \"*\"", nulls, false}, {"Term_id IN (1, 5)", nulls, false}, {"Notes IS NULL", x, true},
        {"Notes IS NOT NULL", x, false},
        {"Notes is not null", row(QStringLiteral("x"), 5, QVariant(), 0, QVariant(), QStringLiteral("")), true},
        {"Family_Name = \"x\" OR Term_id = 5", no_name, true}, {"Family_Name = \"x\" AND Term_id = 5", no_name, false},
        {"NOT (Family_Name = \"x\" AND Term_id = 5)", no_name, false},
        {"NOT (Family_Name = \"x\" AND Term_id = 6)", no_name, true},
        {"pid IS NULL", {QStringLiteral("x"), 5}, true},  // values missing at the end are null
        // AND binds tighter than OR, NOT tighter than AND.
        {"Term_id = 5 OR Term_id = 6 AND Family_Name = \"none\"", x, true},
        {"(Term_id = 5 OR Term_id = 6) AND Family_Name = \"none\"", x, false},
        {"NOT Term_id = 6 AND Family_Name = \"x\"", x, true}, {"NOT (Term_id = 5 AND Family_Name = \"x\")", x, false},
        {"pid = 7 AND Term_id = 5", x, true},  // two keys, as the register search gives them
        {"pid = 7 AND Term_id = 4", x, false}, {"Term_id IN (1, 5, 9)", x, true}, {"Term_id IN (1, 9)", x, false},
        {"Term_id NOT IN (1, 9)", x, true}, {"Family_Name IN ('a', \"SMITH\")", named("Smith"), true},
        {"(Term_id) = 5", x, true},
        // Bracketed, qualified and differently cased names.
        {"[Term_id] = 5", x, true}, {"Families.Family_Name = \"x\"", x, true}, {"[P].[Pupil id] = 7", x, true},
        {"TERM_ID = 5", x, true},
    };
    for (const Case& c : cases)
        EXPECT_EQ(matches(c.criterion, c.values), c.matches) << c.criterion;
}

// ---------------------------------------------------------------- names

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

TEST(CriteriaErrors, AnUnknownFieldIs3070BadSyntax3077ImpossibleText3464AndNothingMatches)
{
    EXPECT_EQ(parse_error("Surname = \"x\""), 3070);
    EXPECT_EQ(engine::Err().Description,
              QStringLiteral("The Microsoft Jet database engine does not recognize 'Surname' as a valid field name "
                             "or expression."));
    EXPECT_EQ(engine::DBEngine_Errors().size(), 1);
    EXPECT_EQ(parse_error("Teacher_Nickname LIKE [*Ann*]"), 3070);

    // Syntax is checked before names (3077), and text a number or date field
    // can never be is 3464.
    for (const char* text : {"Term_id =", "Term_id = 5 AND", "(Term_id = 5", "Term_id = 5)", "Term_id 5", "= 5",
                             "Term_id = #13/45/2026#", "Term_id BETWEEN 1 OR 2", "Term_id IN 1, 2", "", "Notes IS 5",
                             "Term_id == 5", "Term_id NOT = 5", "Surname = "}) {
        EXPECT_EQ(parse_error(text), 3077) << text;
        EXPECT_EQ(engine::Err().Description, QStringLiteral("Syntax error in expression."));
    }
    EXPECT_EQ(parse_error("Term_id = \"abc\""), 3464);
    EXPECT_EQ(parse_error("day_off = 'soon'"), 3464);

    // Criteria not parsed match nothing.
    Criteria criteria;
    EXPECT_FALSE(criteria.matches(row(QStringLiteral("x"))));
    EXPECT_FALSE(criteria.parse(QStringLiteral("Term_id ="), fields));
    EXPECT_FALSE(criteria.is_parsed());
    EXPECT_FALSE(criteria.matches(row(QStringLiteral("x"))));
}
