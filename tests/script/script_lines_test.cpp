#include "engine/currency.h"
#include "script/query_call.h"
#include "script/script_lines.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace {

TEST(ScriptLineTest, KeywordsMatchTheFirstCharactersInAnyCaseAndTextsFollowThem)
{
    EXPECT_EQ(classify_script_line(QString()).kind, ScriptLineKind::Empty);
    EXPECT_EQ(classify_script_line(QStringLiteral("COMMENT this file raises invoices")).kind, ScriptLineKind::Comment);
    EXPECT_EQ(classify_script_line(QStringLiteral("commentary")).kind, ScriptLineKind::Comment);
    EXPECT_EQ(classify_script_line(QStringLiteral("On Error Continue")).kind, ScriptLineKind::OnErrorContinue);
    EXPECT_EQ(classify_script_line(QStringLiteral("on error cont")).kind, ScriptLineKind::OnErrorContinue);
    EXPECT_EQ(classify_script_line(QStringLiteral("ON ERROR END")).kind, ScriptLineKind::OnErrorEnd);
    EXPECT_EQ(classify_script_line(QStringLiteral("on error resume")).kind, ScriptLineKind::Statement);
    EXPECT_EQ(classify_script_line(QStringLiteral("DELETE * FROM Tmp_CourseCosts;")).kind, ScriptLineKind::Statement);
    EXPECT_EQ(classify_script_line(QStringLiteral("Qry_Setup_Course_Costs;")).kind, ScriptLineKind::Statement);

    // Display and question texts start after the keyword and one character.
    const ScriptLine display = classify_script_line(QStringLiteral("Display Term invoices raised."));
    EXPECT_EQ(display.kind, ScriptLineKind::Display);
    EXPECT_EQ(display.text, QStringLiteral("Term invoices raised."));
    EXPECT_EQ(classify_script_line(QStringLiteral("display:Done")).text, QStringLiteral("Done"));
    EXPECT_EQ(classify_script_line(QStringLiteral("display")).text, QString());

    const ScriptLine question = classify_script_line(QStringLiteral("QUESTION Add the sibling discount?"));
    EXPECT_EQ(question.kind, ScriptLineKind::Question);
    EXPECT_EQ(question.text, QStringLiteral("Add the sibling discount?"));
}

TEST(StatementCollectorTest, LinesJoinWithOneBlankUntilTheFirstSemicolon)
{
    StatementCollector collector;
    EXPECT_FALSE(collector.add(QStringLiteral("DELETE *")));
    EXPECT_FALSE(collector.add(QStringLiteral("FROM Tmp_Terms")));
    const auto statement = collector.add(QStringLiteral("WHERE Tmp_Term_id = 3;"));
    ASSERT_TRUE(statement);
    EXPECT_EQ(*statement, QStringLiteral("DELETE * FROM Tmp_Terms WHERE Tmp_Term_id = 3"));
    EXPECT_EQ(collector.pending(), QString());

    // The first ";" ends the statement and the rest starts the next as it stands.
    const auto first = collector.add(QStringLiteral("Qry_A p \"x\"; Qry_B;"));
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, QStringLiteral("Qry_A p \"x\""));
    // Not searched again: the second statement keeps its ";" and waits.
    EXPECT_EQ(collector.pending(), QStringLiteral(" Qry_B;"));
    const auto second = collector.add(QStringLiteral("Qry_C;"));
    ASSERT_TRUE(second);
    EXPECT_EQ(*second, QStringLiteral(" Qry_B;Qry_C"));
}

TEST(QueryCallTest, NameAloneOrFollowedByQuotedPairs)
{
    EXPECT_EQ(parse_query_call(QStringLiteral("Qry_Setup_Course_Costs")).name, QStringLiteral("Qry_Setup_Course_Costs"));
    EXPECT_TRUE(parse_query_call(QStringLiteral("Qry_Setup_Course_Costs")).parameters.empty());

    const QueryCall call = parse_query_call(
        QStringLiteral("Qry_Add_Term  par_Name \"Spring Term\"   par_Start_date \"2026-01-05\" par_End_date \"\"  "));
    EXPECT_EQ(call.name, QStringLiteral("Qry_Add_Term"));
    ASSERT_EQ(call.parameters.size(), 3u);
    EXPECT_EQ(call.parameters[0].name, QStringLiteral("par_Name"));
    EXPECT_EQ(call.parameters[0].value, QStringLiteral("Spring Term"));
    EXPECT_EQ(call.parameters[1].value, QStringLiteral("2026-01-05"));
    EXPECT_EQ(call.parameters[2].name, QStringLiteral("par_End_date"));
    EXPECT_EQ(call.parameters[2].value, QString());
}

TEST(QueryCallTest, AMissingQuoteEndsTheScanLeavingTheRestUnset)
{
    const QueryCall unclosed = parse_query_call(QStringLiteral("Qry_X par_a \"1\" par_b \"2 par_c \"3"));
    ASSERT_EQ(unclosed.parameters.size(), 2u);
    EXPECT_EQ(unclosed.parameters[1].name, QStringLiteral("par_b"));
    EXPECT_EQ(unclosed.parameters[1].value, QStringLiteral("2 par_c "));

    const QueryCall unopened = parse_query_call(QStringLiteral("Qry_X par_a \"1\" Qry_Y"));
    ASSERT_EQ(unopened.parameters.size(), 1u);
    EXPECT_EQ(unopened.parameters[0].name, QStringLiteral("par_a"));
}

TEST(QueryCallTest, ValuesConvertToTheParameterType)
{
    QVariant value;
    ASSERT_TRUE(parameter_value_from_text(QStringLiteral("42"), engine::FieldType::Long, value));
    EXPECT_EQ(value.toInt(), 42);
    ASSERT_TRUE(parameter_value_from_text(QStringLiteral("2.5"), engine::FieldType::Integer, value));
    EXPECT_EQ(value.toInt(), 2);  // banker's rounding
    ASSERT_TRUE(parameter_value_from_text(QStringLiteral("12.34565"), engine::FieldType::Currency, value));
    EXPECT_EQ(value.value<engine::Currency>(), engine::Currency::from_units(123456));
    ASSERT_TRUE(parameter_value_from_text(QStringLiteral("2026-03-14"), engine::FieldType::Date, value));
    EXPECT_EQ(value.toDateTime().date(), QDate(2026, 3, 14));
    ASSERT_TRUE(parameter_value_from_text(QStringLiteral(" as it stands "), engine::FieldType::Text, value));
    EXPECT_EQ(value.toString(), QStringLiteral(" as it stands "));

    EXPECT_FALSE(parameter_value_from_text(QStringLiteral("abc"), engine::FieldType::Long, value));
    EXPECT_FALSE(parameter_value_from_text(QStringLiteral("300"), engine::FieldType::Byte, value));
}

}  // namespace
