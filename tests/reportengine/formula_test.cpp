// The formula language on its own, and selections giving the same rows
// whether the database or the evaluator applies them.

#include "reportengine/formula.h"
#include "reportengine/formula_sql.h"
#include "support/school_fixture.h"

#include <QHash>
#include <gtest/gtest.h>

namespace {

using reportengine::FieldName;
using reportengine::Formula;
using reportengine::FormulaError;
using reportengine::Value;

// A row of named fields, and a few formulas of the report.
class Row : public reportengine::FormulaContext {
public:
    Row& set(const QString& field, const Value& value)
    {
        values_.insert(field.toLower(), value);
        return *this;
    }
    Row& formula_value(const QString& name, const Value& value)
    {
        formulas_.insert(name.toLower(), value);
        return *this;
    }
    std::optional<Value> field(const FieldName& name) const override
    {
        const auto it = values_.constFind((name.table + QLatin1Char('.') + name.column).toLower());
        return it == values_.constEnd() ? std::nullopt : std::optional<Value>(*it);
    }
    std::optional<Value> formula(const QString& name) const override
    {
        const auto it = formulas_.constFind(name.toLower());
        return it == formulas_.constEnd() ? std::nullopt : std::optional<Value>(*it);
    }
    int page_number() const override { return 3; }
    int total_page_count() const override { return 7; }

private:
    QHash<QString, Value> values_;
    QHash<QString, Value> formulas_;
};

Row sample_row()
{
    Row row;
    row.set(QStringLiteral("Invoices.Invoice_Term_id"), Value::number(7))
        .set(QStringLiteral("Families.Family_Name"), Value::text(QStringLiteral("O'Brien")))
        .set(QStringLiteral("Pupils.Pupil_Birthdate"), Value::date(QDateTime(QDate(2016, 3, 14), QTime(0, 0))))
        .set(QStringLiteral("Pupils.Pupil_Notes"), Value())
        .set(QStringLiteral("Courses.Course_Cancelled"), Value::boolean(false))
        .formula_value(QStringLiteral("Owed"), Value::number(42.5));
    return row;
}

// The result as text, its kind first: "number 7", "text a", "yes", "no", "null".
QString result_of(const QString& text, const Row& row = sample_row())
{
    Formula formula;
    FormulaError error;
    if (!formula.parse(text, error))
        return QStringLiteral("parse error at %1").arg(error.position);
    Value value;
    QString failure;
    if (!formula.evaluate(row, value, failure))
        return QStringLiteral("error: ") + failure;
    switch (value.kind()) {
    case Value::Kind::Null: return QStringLiteral("null");
    case Value::Kind::Boolean: return value.as_boolean() ? QStringLiteral("yes") : QStringLiteral("no");
    case Value::Kind::Number: return QStringLiteral("number ") + QString::number(value.as_number());
    case Value::Kind::Text: return QStringLiteral("text ") + value.as_text();
    case Value::Kind::Date: return QStringLiteral("date ") + value.as_date().toString(Qt::ISODate);
    }
    return QString();
}

TEST(FormulaLanguage, ValuesOperatorsAndTheirPrecedence)
{
    const QList<std::pair<const char*, const char*>> cases = {
        {"1 + 2 * 3", "number 7"}, {"(1 + 2) * 3", "number 9"}, {"10 - 4 - 3", "number 3"}, {"-2 * -3", "number 6"},
        {"7 / 2", "number 3.5"}, {"\"a\" & 1 + 2 & \"b\"", "text a3.00b"},
        {"\"x\" & {Pupils.Pupil_Notes} & 'y'", "text xy"}, {"'it''s'", "text it's"}, {"1 + 1 = 2 and not 3 < 2", "yes"},
        {"false or 2 >= 2 and 1 <> 1", "no"}, {"{Invoices.Invoice_Term_id} in [5, 7, 9]", "yes"},
        {"{Invoices.Invoice_Term_id} in [5]", "no"}, {"{Families.Family_Name} = \"o'brien\"", "yes"},
        {"({invoices.invoice_term_id} = 7)", "yes"}, {"{Pupils.Pupil_Birthdate} = Date(2016,3,14)", "yes"},
        {"{Pupils.Pupil_Birthdate} + 1 > Date(2016,3,14)", "yes"},
        {"Date(2016,3,20) - {Pupils.Pupil_Birthdate}", "number 6"},
        {"Year({Pupils.Pupil_Birthdate}) * 100 + Month({Pupils.Pupil_Birthdate})", "number 201603"},
        {"if {@Owed} > 0 then \"Please pay \" & ToText({@Owed}, 2) else \"Thank you\"", "text Please pay 42.50"},
        {"if IsNull({Pupils.Pupil_Notes}) then 'none'", "text none"},
        {"IF {Courses.Course_Cancelled} THEN 1 ELSE 2", "number 2"},
        {"ToText({Pupils.Pupil_Birthdate}, 'dd/MM/yyyy')", "text 14/03/2016"},
        {"UpperCase(Trim('  tap  ')) & Length('abc')", "text TAP3.00"},
        {"PageNumber & ' of ' & TotalPageCount", "text 3.00 of 7.00"},
        {"ToText(PageNumber, 0) & ' of ' & ToText(TotalPageCount, 0)", "text 3 of 7"},
        {"Round(2.345, 2)", "number 2.35"},
        {"// the term\n{Invoices.Invoice_Term_id}", "number 7"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(result_of(QString::fromUtf8(text)), QLatin1String(expected)) << text;
}

TEST(FormulaLanguage, TextAndTimeFunctions)
{
    const QList<std::pair<const char*, const char*>> cases = {
        {"InStr('26 Oct, 02 Nov', '02 nov')", "number 9"}, {"InStr('abc', 'z')", "number 0"},
        {"Replace('26-Oct, 02-Nov', '-', ' ')", "text 26 Oct, 02 Nov"},
        {"ToText(DateAdd('n', 20, Time('11.50')), 'HH:mm')", "text 12:10"},
        {"DateDiff('n', Time('10:00'), Time('11:15'))", "number 75"},
        {"DateDiff('d', Date(2026,9,7), Date(2026,12,12))", "number 96"},
        {"ToText(DateAdd('ww', 2, Date(2026,9,7)), 'dd/MM')", "text 21/09"},
        {"DateDiff('m', Date(2026,1,31), Date(2026,3,1))", "number 2"},
        {"Time({Pupils.Pupil_Notes})", "null"}, {"InStr({Pupils.Pupil_Notes}, 'a')", "null"},
        {"Time('noon')", "error: At position 0: Time takes a time of day such as \"09:30\", not noon."},
        {"DateAdd('q', 1, Date(2026,1,1))", "error: At position 0: The interval must be \"n\", \"h\", \"d\", \"ww\", \"m\" or \"yyyy\", not q."},
        {"Previous({Pupils.Pupil_Notes})", "error: At position 0: the report has no field {Pupils.Pupil_Notes}."},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(result_of(QString::fromUtf8(text)), QLatin1String(expected)) << text;
}

TEST(FormulaLanguage, NullsFollowTheDatabasesThreeValuedRules)
{
    const QList<std::pair<const char*, const char*>> cases = {
        {"{Pupils.Pupil_Notes} = 'x'", "null"}, {"not ({Pupils.Pupil_Notes} = 'x')", "null"},
        {"{Pupils.Pupil_Notes} = 'x' or true", "yes"}, {"{Pupils.Pupil_Notes} = 'x' and false", "no"},
        {"{Pupils.Pupil_Notes} = 'x' and true", "null"}, {"{Pupils.Pupil_Notes} in ['a', 'b']", "null"},
        {"5 in [1, {Pupils.Pupil_Notes}]", "null"}, {"{Pupils.Pupil_Notes} + 'x'", "null"},
        {"IsNull({Pupils.Pupil_Notes})", "yes"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(result_of(QString::fromUtf8(text)), QLatin1String(expected)) << text;

    Formula selection;
    FormulaError error;
    ASSERT_TRUE(selection.parse(QStringLiteral("{Pupils.Pupil_Notes} = 'x'"), error));
    bool selected = true;
    QString failure;
    ASSERT_TRUE(selection.selects(sample_row(), selected, failure));
    EXPECT_FALSE(selected);
    ASSERT_TRUE(selection.parse(QString(), error));
    ASSERT_TRUE(selection.selects(sample_row(), selected, failure));
    EXPECT_TRUE(selected);
}

TEST(FormulaLanguage, ABadFormulaSaysWhereAndWhat)
{
    struct Case {
        const char* text;
        int position;
        const char* words;
    };
    const QList<Case> cases = {
        {"{Invoices.Invoice_Term_id} = ", 29, "The formula ends too soon."}, {"(1 + 2", 6, "')' is missing here."},
        {"\"open", 0, "has no closing quote"}, {"{Families.Family_Name = 'x'", 0, "has no closing brace"},
        {"1 2", 2, "The formula should end here."}, {"Frobnicate(1)", 0, "'Frobnicate' is not a function"},
        {"if 1 = 1 2 else 3", 9, "'then' is missing here."}, {"3 in 4", 5, "A list in [ ] should follow 'in'."},
        {"1 ? 2", 2, "The character '?' has no meaning here."},
        {"Trim('a', 'b')", 0, "Trim takes 1 argument(s), not 2."},
    };
    for (const Case& c : cases) {
        Formula formula;
        FormulaError error;
        EXPECT_FALSE(formula.parse(QString::fromUtf8(c.text), error)) << c.text;
        EXPECT_EQ(error.position, c.position) << c.text;
        EXPECT_TRUE(error.message.contains(QLatin1String(c.words))) << c.text << ": " << error.message.toStdString();
    }
    // Evaluation errors name their place too.
    EXPECT_EQ(result_of(QStringLiteral("1 + 'a'")), QStringLiteral("error: At position 4: a number and text cannot be worked together so."));
    EXPECT_EQ(result_of(QStringLiteral("{Nowhere.Nothing}")), QStringLiteral("error: At position 0: the report has no field {Nowhere.Nothing}."));
    EXPECT_EQ(result_of(QStringLiteral("1 / (2 - 2)")), QStringLiteral("error: At position 5: division by zero."));
    EXPECT_EQ(result_of(QStringLiteral("Date(2005, 2, 30)")).left(30), QStringLiteral("error: At position 0: Date(200"));
}

TEST(FormulaLanguage, DeepNestingIsRefusedAndLongFormulasAreNot)
{
    const int deep = 20000;
    EXPECT_EQ(result_of(QString(deep, QLatin1Char('(')) + QStringLiteral("1") + QString(deep, QLatin1Char(')'))),
              QStringLiteral("parse error at 65"));
    QString nots;
    for (int i = 0; i < deep; ++i)
        nots += QStringLiteral("not ");
    EXPECT_TRUE(result_of(nots + QStringLiteral("true")).startsWith(QStringLiteral("parse error")));
    // A long run of one operator is wide, not deep.
    QStringList ones(deep, QStringLiteral("1"));
    EXPECT_EQ(result_of(ones.join(QStringLiteral(" + "))), QStringLiteral("number 20000"));
}

TEST(FormulaLanguage, AFormulaListsTheFieldsAndFormulasItNames)
{
    Formula formula;
    FormulaError error;
    ASSERT_TRUE(formula.parse(QStringLiteral("{@Due} + Sum({Invoice_Lines.Amount}, {Invoices.Invoice_id}) + {@due}"), error));
    ASSERT_EQ(formula.fields().size(), 2);
    EXPECT_EQ(formula.fields()[0].written(), QStringLiteral("{Invoice_Lines.Amount}"));
    EXPECT_EQ(formula.formulas(), QStringList{QStringLiteral("Due")});
}

// ---- the same rows through SQL and row by row

class SelectionRows : public ::testing::Test {
protected:
    SelectionRows()
    {
        const int ashby = school.add_family(QStringLiteral("Ashby"));
        const int brook = school.add_family(QStringLiteral("brook"));
        const int cole = school.add_family(QStringLiteral("Çole"));
        const int spring = school.add_term(QStringLiteral("Spring"), QDate(2026, 1, 5), QDate(2026, 3, 27));
        const int summer = school.add_term(QStringLiteral("Summer"), QDate(2026, 4, 20), QDate(2026, 7, 17));
        school.add_invoice(ashby, QStringLiteral("Invoice for Spring"), spring);
        school.add_invoice(brook, QStringLiteral("Invoice for Summer"), summer);
        school.add_invoice(cole, QStringLiteral("Invoice for Spring"), spring);
        school.add_invoice(brook, QStringLiteral("Show costume"));
    }

    static constexpr const char* from =
        "FROM Invoices INNER JOIN Families ON Families.Family_id = Invoices.Invoice_Family_id ";

    static std::optional<reportengine::SqlField> lookup(const FieldName& name)
    {
        static const QHash<QString, Value::Kind> kinds = {
            {QStringLiteral("invoices.invoice_id"), Value::Kind::Number},
            {QStringLiteral("invoices.invoice_term_id"), Value::Kind::Number},
            {QStringLiteral("invoices.invoice_date"), Value::Kind::Date},
            {QStringLiteral("invoices.invoice_reason"), Value::Kind::Text},
            {QStringLiteral("families.family_name"), Value::Kind::Text},
        };
        const QString key = (name.table + QLatin1Char('.') + name.column).toLower();
        if (!kinds.contains(key))
            return std::nullopt;
        return reportengine::SqlField{QStringLiteral("\"%1\".\"%2\"").arg(name.table, name.column), kinds.value(key)};
    }

    QList<int> by_sql(const QString& where)
    {
        QList<int> ids;
        for (const auto& row : school.rows(QStringLiteral("SELECT Invoice_id ") + QLatin1String(from) + QStringLiteral("WHERE ")
                                           + where + QStringLiteral(" ORDER BY Invoice_id")))
            ids << row["Invoice_id"].toInt();
        return ids;
    }

    QList<int> row_by_row(const Formula& selection)
    {
        QList<int> ids;
        for (const auto& row : school.rows(QStringLiteral("SELECT Invoices.Invoice_id, Invoice_Term_id, Invoice_Date, "
                                                          "Invoice_Reason, Family_Name ")
                                           + QLatin1String(from) + QStringLiteral("ORDER BY Invoice_id"))) {
            Row context;
            context.set(QStringLiteral("Invoices.Invoice_id"), Value::from_variant(row["Invoice_id"]))
                .set(QStringLiteral("Invoices.Invoice_Term_id"), Value::from_variant(row["Invoice_Term_id"]))
                .set(QStringLiteral("Invoices.Invoice_Date"), Value::from_variant(row["Invoice_Date"]))
                .set(QStringLiteral("Invoices.Invoice_Reason"), Value::from_variant(row["Invoice_Reason"]))
                .set(QStringLiteral("Families.Family_Name"), Value::from_variant(row["Family_Name"]));
            bool selected = false;
            QString error;
            EXPECT_TRUE(selection.selects(context, selected, error)) << error.toStdString();
            if (selected)
                ids << row["Invoice_id"].toInt();
        }
        return ids;
    }

    testing_support::SchoolFixture school;
};

TEST_F(SelectionRows, ASelectionGivesTheSameRowsThroughSqlAndRowByRow)
{
    struct Case {
        const char* selection;
        bool through_sql;
    };
    const QList<Case> cases = {
        {"({Invoices.Invoice_Term_id} = 1)", true},
        {"({Invoices.Invoice_Term_id} = 1 OR {Invoices.Invoice_Term_id} = 2)", true},
        {"not ({Invoices.Invoice_Term_id} = 1)", true},
        {"IsNull({Invoices.Invoice_Term_id}) or {Families.Family_Name} = 'BROOK'", true},
        {"{Families.Family_Name} in ['ashby', 'çOLE']", true},
        {"{Families.Family_Name} & ' - ' & {Invoices.Invoice_Reason} = 'Brook - Show costume'", true},
        {"{Invoices.Invoice_Term_id} * 10 / 4 > 2", true},
        {"{Invoices.Invoice_Date} >= Date(2000,1,1) and Year({Invoices.Invoice_Date}) > 1999", true},
        {"-{Invoices.Invoice_Term_id} < -1", true},
        {"{Invoices.Invoice_Term_id} / ({Invoices.Invoice_id} - 1) > 0.4", false},
        {"if {Invoices.Invoice_Term_id} = 2 then true else {Families.Family_Name} = 'Ashby'", false},
        {"UpperCase({Families.Family_Name}) = 'ASHBY'", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.selection);
        Formula selection;
        FormulaError error;
        ASSERT_TRUE(selection.parse(QString::fromUtf8(c.selection), error)) << error.message.toStdString();
        const auto where = reportengine::selection_to_sql(selection, &SelectionRows::lookup);
        EXPECT_EQ(where.has_value(), c.through_sql);
        if (!c.through_sql)
            continue;
        const QList<int> rows = row_by_row(selection);
        EXPECT_EQ(by_sql(*where), rows) << where->toStdString();
    }
}

}  // namespace
