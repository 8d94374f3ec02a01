// Laying a report onto pages: headers and footers where they belong, groups
// with their summaries and running sums, page numbers and the page count
// (also counted per family), groups kept together, growing fields, details
// in columns, suppression, the group selection and alerts.

#include "reportengine/report_file.h"
#include "reportengine/report_layout.h"
#include "reportengine/text_measure.h"
#include "support/school_fixture.h"

#include <gtest/gtest.h>

namespace {

using namespace reportengine;

class ReportLayoutTest : public ::testing::Test {
protected:
    ReportLayoutTest()
    {
        // Ashby has five invoices of 10 to 50, Brook one of 7, Cole two of 1 and 2.
        const int ashby = school.add_family(QStringLiteral("Ashby"));
        for (int i = 1; i <= 5; ++i)
            school.add_line(school.add_invoice(ashby, QStringLiteral("Ashby %1").arg(i)), 10.0 * i);
        school.add_line(school.add_invoice(school.add_family(QStringLiteral("Brook")), QStringLiteral("Brook 1")), 7);
        const int cole = school.add_family(QStringLiteral("Cole"));
        school.add_line(school.add_invoice(cole, QStringLiteral("Cole 1")), 1);
        school.add_line(school.add_invoice(cole, QStringLiteral("Cole 2")), 2);
    }

    // Invoice lines grouped by family on A5 paper: 210 mm high, 10 mm margins,
    // a 20 mm page header and a 10 mm page footer leave 160 mm of body; group
    // headers and footers are 10 mm, details 40 mm. `extra` goes inside
    // <report>, `group` on <group>, `details_extra` into the details.
    PageModel lay_out(const QString& extra = QString(), const QString& group = QString(), const QString& details_extra = QString())
    {
        const QByteArray xml = QStringLiteral(R"xml(<report version="1" title="Lines">
  <page paper="A5" orientation="portrait" marginLeft="10" marginTop="10" marginRight="10" marginBottom="10"/>
  <tables>
    <table name="Invoice_Lines"/><table name="Invoices"/><table name="Families"/>
    <link from="Invoice_Lines.Inv_Line_Inv_id" to="Invoices.Invoice_id"/>
    <link from="Invoices.Invoice_Family_id" to="Families.Family_id"/>
  </tables>
  <sort field="{Invoices.Invoice_Reason}"/>
  <group field="{Families.Family_Name}" %2/>
  %1
  <area kind="pageHeader"><section height="20"><text x="0" y="0" width="100" height="8">Lines</text></section></area>
  <area kind="groupHeader" group="1"><section height="10">
    <field x="0" y="0" width="60" height="8" source="{Families.Family_Name}"/></section></area>
  <area kind="details"><section height="40">
    <field x="10" y="0" width="60" height="8" source="{Invoices.Invoice_Reason}"/>
    <field x="80" y="0" width="30" height="8" source="{Invoice_Lines.Amount}" format="number" decimals="2" align="right"/>
    %3</section></area>
  <area kind="groupFooter" group="1"><section height="10">
    <field x="0" y="0" width="60" height="8" source="'Total ' &amp; ToText(Sum({Invoice_Lines.Amount}, {Families.Family_Name}), 2)"/>
  </section></area>
  <area kind="pageFooter"><section height="10">
    <field x="80" y="0" width="40" height="8" source="'Page ' &amp; ToText(PageNumber, 0) &amp; ' of ' &amp; ToText(TotalPageCount, 0)"/>
  </section></area>
</report>)xml").arg(extra, group, details_extra).toUtf8();
        return laid_out(xml);
    }

    // The invoice lines, grouped by family on A5 paper, with the areas given.
    PageModel lines_by_family(const QString& areas)
    {
        return laid_out(QStringLiteral(R"xml(<report version="1" title="Lines">
  <page paper="A5" orientation="portrait" marginLeft="10" marginTop="10" marginRight="10" marginBottom="10"/>
  <tables>
    <table name="Invoice_Lines"/><table name="Invoices"/><table name="Families"/>
    <link from="Invoice_Lines.Inv_Line_Inv_id" to="Invoices.Invoice_id"/>
    <link from="Invoices.Invoice_Family_id" to="Families.Family_id"/>
  </tables>
  <formula name="Double">{Invoice_Lines.Amount} * 2</formula>
  <sort field="{Invoices.Invoice_Reason}"/>
  <group field="{Families.Family_Name}"/>
  %1
</report>)xml").arg(areas).toUtf8());
    }

    PageModel laid_out(const QByteArray& xml)
    {
        ReportDefinition report;
        ReportFileError file_error;
        EXPECT_TRUE(read_report_text(xml, QStringLiteral("Lines.rpt"), report, file_error)) << file_error.text().toStdString();
        ReportFormulas formulas;
        ReportData data;
        QString error;
        EXPECT_TRUE(formulas.parse(report, error) && read_report_data(school.db(), report, formulas, data, error)) << error.toStdString();
        PageModel model;
        EXPECT_TRUE(lay_out_report(report, formulas, data, SubreportLoader(), LayoutSettings(), model, error)) << error.toStdString();
        return model;
    }

    // The texts of a page, top to bottom.
    static QStringList texts(const Page& page)
    {
        QStringList out;
        for (const PageItem& item : page.items)
            if (item.kind == PageItem::Kind::Text)
                out << item.text;
        return out;
    }

    testing_support::SchoolFixture school;
};

TEST_F(ReportLayoutTest, GroupsDetailsAndPageBandsLandWhereTheyBelong)
{
    // Three of Ashby's lines fill page one; Cole's header is the last thing
    // that fits on page two.
    const PageModel model = lay_out();
    EXPECT_EQ(model.paper, QSizeF(148, 210));
    ASSERT_EQ(model.pages.size(), 3u);
    EXPECT_EQ(texts(model.pages[0]),
              QStringList({"Lines", "Ashby", "Ashby 1", "10.00", "Ashby 2", "20.00", "Ashby 3", "30.00", "Page 1 of 3"}));
    EXPECT_EQ(texts(model.pages[1]), QStringList({"Lines", "Ashby 4", "40.00", "Ashby 5", "50.00", "Total 150.00", "Brook",
                                                  "Brook 1", "7.00", "Total 7.00", "Cole", "Page 2 of 3"}));
    EXPECT_EQ(texts(model.pages[2]), QStringList({"Lines", "Cole 1", "1.00", "Cole 2", "2.00", "Total 3.00", "Page 3 of 3"}));
    // The page footer stands at the foot of the paper, whatever the body held.
    const PageItem& footer = model.pages[2].items.back();
    EXPECT_DOUBLE_EQ(footer.rect.top(), 210 - 10 - 10);
    EXPECT_EQ(model.records_read, 8);
    EXPECT_EQ(model.groups_counted, 3);
}

TEST_F(ReportLayoutTest, AGroupKeptTogetherStartsANewPageWhenItWouldNotFit)
{
    // Cole's 100 mm fit on a page but not under Brook: no header left alone
    // at the foot of page two. Ashby's 220 mm fit nowhere and run on as before.
    const PageModel model = lay_out(QString(), QStringLiteral("keepTogether=\"true\""));
    ASSERT_EQ(model.pages.size(), 3u);
    EXPECT_EQ(texts(model.pages[0]).size(), 9);
    EXPECT_EQ(texts(model.pages[1]).mid(9), QStringList({"Total 7.00", "Page 2 of 3"}));
    EXPECT_EQ(texts(model.pages[2]).mid(0, 3), QStringList({"Lines", "Cole", "Cole 1"}));
}

TEST_F(ReportLayoutTest, TheGroupSelectionAndSuppressionLeaveOutWhatTheySay)
{
    const PageModel model = lay_out(QStringLiteral("<groupSelection>Sum({Invoice_Lines.Amount}, {Families.Family_Name}) &lt; 10"
                                                   "</groupSelection>"),
                                    QString(), QStringLiteral("<text x=\"0\" y=\"10\" width=\"5\" height=\"5\" suppressIf=\"{Invoice_Lines.Amount} &gt; 1\">small</text>"));
    ASSERT_EQ(model.pages.size(), 1u);
    EXPECT_EQ(texts(model.pages[0]), QStringList({"Lines", "Brook", "Brook 1", "7.00", "Total 7.00", "Cole", "Cole 1", "1.00",
                                                  "small", "Cole 2", "2.00", "Total 3.00", "Page 1 of 1"}));
    // Each printed section is a row for the tabular exports, with its area.
    ASSERT_GE(model.rows.size(), 3u);
    EXPECT_EQ(model.rows[1].area, 3);
    EXPECT_EQ(model.rows[1].cells, QStringList{QStringLiteral("Brook")});
    EXPECT_EQ(model.rows[2].area, 4);
    EXPECT_EQ(model.rows[2].cells, QStringList({QStringLiteral("Brook 1"), QStringLiteral("7.00")}));
}

TEST_F(ReportLayoutTest, AnAlertSpeaksWhenItsConditionHoldsForAnyRow)
{
    const PageModel model = lay_out(QStringLiteral("<alert name=\"Large\" condition=\"{Invoice_Lines.Amount} &gt; 45\" "
                                                   "message=\"An invoice line is over 45.\"/>"
                                                   "<alert name=\"Huge\" condition=\"{Invoice_Lines.Amount} &gt; 450\" "
                                                   "message=\"Never.\"/>"));
    EXPECT_EQ(model.alert_messages, QStringList{QStringLiteral("An invoice line is over 45.")});
}

TEST_F(ReportLayoutTest, RunningSumsAndPageNumbersStartAgainForEachFamily)
{
    // Ashby's five 40 mm lines take two pages; each family starts a page numbered 1.
    const PageModel model = lines_by_family(QStringLiteral(R"xml(
  <area kind="details"><section height="40">
    <field x="0" y="0" width="60" height="8" source="ToText(RunningSum({@Double}, {Families.Family_Name}), 0) &amp; ' after ' &amp; ToText(Previous({Invoice_Lines.Amount}), 0)"/>
  </section></area>
  <area kind="groupFooter" group="1"><section height="10" newPageAfter="true" resetPageNumberAfter="true">
    <field x="0" y="0" width="60" height="8" source="'Total ' &amp; ToText(Sum({@Double}, {Families.Family_Name}), 0)"/>
  </section></area>
  <area kind="pageFooter"><section height="10">
    <field x="0" y="0" width="60" height="8" source="{Families.Family_Name} &amp; ' ' &amp; ToText(PageNumber, 0) &amp; '/' &amp; ToText(TotalPageCount, 0)"/>
  </section></area>)xml"));
    ASSERT_EQ(model.pages.size(), 4u);
    EXPECT_EQ(texts(model.pages[0]), QStringList({"20 after ", "60 after 10", "120 after 20", "200 after 30", "Ashby 1/2"}));
    EXPECT_EQ(texts(model.pages[1]), QStringList({"300 after 40", "Total 300", "Ashby 2/2"}));
    EXPECT_EQ(texts(model.pages[2]), QStringList({"14 after 50", "Total 14", "Brook 1/1"}));
    EXPECT_EQ(texts(model.pages[3]), QStringList({"2 after 7", "6 after 1", "Total 6", "Cole 1/1"}));
}

TEST_F(ReportLayoutTest, DetailsInColumnsGoAcrossThenDownAndAGrowingFieldTakesTheLinesItNeeds)
{
    // One millimetre a letter: "Ashby 1 is due" needs two lines of 10 mm, broken where a word ends.
    install_text_measure([](const QString& text, const TextFont&) { return static_cast<double>(text.size()); });
    const PageModel model = lines_by_family(QStringLiteral(R"xml(
  <area kind="groupHeader" group="1"><section height="10">
    <field x="0" y="0" width="60" height="8" source="{Families.Family_Name}"/></section></area>
  <area kind="details" columns="3" columnWidth="40"><section height="10">
    <field x="0" y="0" width="10" height="5" source="{Invoices.Invoice_Reason} &amp; ' is due'" canGrow="true"/>
  </section></area>)xml"));
    install_text_measure(TextMeasure());
    ASSERT_EQ(model.pages.size(), 1u);
    QStringList placed;
    for (const PageItem& item : model.pages[0].items)
        placed << QStringLiteral("%1 %2,%3").arg(item.text).arg(item.rect.left(), 0, 'f', 1).arg(item.rect.top(), 0, 'f', 1);
    // Ashby's five across three columns and down two rows; Brook's header below them, Cole's line in column one.
    EXPECT_EQ(placed, QStringList({"Ashby 10.0,10.0", "Ashby 1 10.0,20.0", "is due 10.0,25.0", "Ashby 2 50.0,20.0",
                                   "is due 50.0,25.0", "Ashby 3 90.0,20.0", "is due 90.0,25.0", "Ashby 4 10.0,30.0",
                                   "is due 10.0,35.0", "Ashby 5 50.0,30.0", "is due 50.0,35.0", "Brook 10.0,40.0",
                                   "Brook 1 10.0,50.0", "is due 10.0,55.0", "Cole 10.0,60.0", "Cole 1 is 10.0,70.0",
                                   "due 10.0,75.0", "Cole 2 is 50.0,70.0", "due 50.0,75.0"}));
}

TEST(TextMeasure, LinesBreakBetweenWordsAndInsideOnlyAWordTooLong)
{
    install_text_measure([](const QString& text, const TextFont&) { return static_cast<double>(text.size()); });
    const TextFont font;
    EXPECT_EQ(wrapped_lines(QStringLiteral("the quick brown fox"), 10, font), QStringList({"the quick", "brown fox"}));
    EXPECT_EQ(wrapped_lines(QStringLiteral("abcdefghijklmnop qr"), 10, font), QStringList({"abcdefghij", "klmnop qr"}));
    EXPECT_EQ(wrapped_lines(QStringLiteral("one\r\n\ntwo\n"), 10, font), QStringList({"one", "", "two"}));
    EXPECT_EQ(wrapped_lines(QStringLiteral("  "), 10, font), QStringList());
    install_text_measure(TextMeasure());
}

TEST(FieldFormats, ValuesShowAsTheirFormatSays)
{
    const QLocale british(QLocale::English, QLocale::UnitedKingdom);
    const Value day = Value::date(QDateTime(QDate(2026, 3, 4), QTime(9, 5)));
    FieldFormat f;
    f.type = FieldFormat::Type::Date;
    f.date_order = 1;
    f.date_separator_1 = f.date_separator_2 = QStringLiteral(" ");
    EXPECT_EQ(formatted(day, f, british), QStringLiteral("04 03 2026"));
    f.month_in_letters = true;
    EXPECT_EQ(formatted(day, f, british), QStringLiteral("04 Mar 2026"));
    f.month_in_letters = false;
    f.date_order = 0;
    f.date_separator_1 = f.date_separator_2 = QStringLiteral("/");
    EXPECT_EQ(formatted(day, f, british), QStringLiteral("03/04/2026"));
    f.type = FieldFormat::Type::Time;
    f.time_separator = QStringLiteral(".");
    EXPECT_EQ(formatted(day, f, british), QStringLiteral("09.05"));
    f.type = FieldFormat::Type::Currency;
    EXPECT_EQ(formatted(Value::number(1234.5), f, british), QStringLiteral("£1,234.50"));
    f.type = FieldFormat::Type::Number;
    f.decimals = 0;
    EXPECT_EQ(formatted(Value::number(41.6), f, british), QStringLiteral("42"));
    EXPECT_EQ(formatted(Value(), f, british), QString());
    // A difference of money that rounds to nothing is no debt.
    f.type = FieldFormat::Type::Currency;
    f.decimals = 2;
    EXPECT_EQ(formatted(Value::number(0.1 + 0.2 - 0.3), f, british), QStringLiteral("£0.00"));
}

}  // namespace
