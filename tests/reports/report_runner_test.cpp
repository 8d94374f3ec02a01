// The report runner on a school: the request's selections joined to the
// report's own, formulas set or passed over, exports with the areas each
// kind leaves out, alerts, and the words of every failure.

#include "reports/report_runner.h"
#include "support/school_made_current.h"
#include "support/scripted_boxes.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

using testing_support::ScriptedBoxes;

class ReportRunnerTest : public ::testing::Test {
protected:
    ReportRunnerTest()
    {
        for (const char* name : {"Ashby", "Brook", "Cole"})
            school.add_family(QLatin1String(name));
        GCR_Report_File() = school.write_file(QStringLiteral("Families.rpt"), QStringLiteral(R"xml(<report version="1" title="Families">
  <tables><table name="Families"/></tables>
  <recordSelection>{Families.Family_Name} &lt;&gt; 'Cole'</recordSelection>
  <formula name="Heading">"Families"</formula>
  <formula name="InvoiceType">0</formula>
  <sort field="{Families.Family_Name}"/>
  <alert name="Brook" condition="{Families.Family_Name} = 'Brook'" message="Brook is on the list."/>
  <area kind="pageHeader"><section height="10"><field x="0" y="0" width="80" height="5" source="{@Heading}"/></section></area>
  <area kind="details"><section height="6"><field x="0" y="0" width="80" height="5" source="{Families.Family_Name}"/>
    <field x="90" y="0" width="10" height="5" source="{@InvoiceType}" format="number" decimals="0"/></section></area>
  <area kind="pageFooter"><section height="6"><text x="0" y="0" width="20" height="5">End of page</text></section></area>
</report>)xml"));
        for (QString* global : {&GCR_Output_Type(), &GCR_Export_File(), &GCR_Invoice_Type_Value(), &GCR_Formula_Name(),
                                &GCR_Formula_Value(), &GCR_Group_Selection(), &GCR_Record_Selection()})
            global->clear();
    }
    ~ReportRunnerTest() override { GCR_End_Report(); }

    QString exported(const QString& type, const QString& file)
    {
        GCR_Output_Type() = type;
        GCR_Export_File() = school.file(file);
        ScriptedBoxes().expect(QStringLiteral("Brook is on the list."))
            .during([&] { EXPECT_TRUE(GCR_Run_Export()); });
        QFile out(GCR_Export_File());
        return out.open(QIODevice::ReadOnly) ? QString::fromUtf8(out.readAll()) : QString();
    }

    testing_support::SchoolForRuns school;
};

TEST_F(ReportRunnerTest, TheRequestsSelectionsFollowTheReportsOwnAndFormulasTakeTheirValues)
{
    GCR_Record_Selection() = QStringLiteral("({Families.Family_Name} = 'Ashby')");
    GCR_Group_Selection() = QStringLiteral("true");
    GCR_Formula_Name() = QStringLiteral("Heading");
    GCR_Formula_Value() = QStringLiteral("\"Our families\"");
    GCR_Invoice_Type_Value() = QStringLiteral("3");
    ASSERT_TRUE(Init_Report());
    const reportengine::ReportDefinition& report = GCR_Report()->definition;
    EXPECT_EQ(report.record_selection, QStringLiteral("{Families.Family_Name} <> 'Cole' and ({Families.Family_Name} = 'Ashby')"));
    EXPECT_EQ(report.group_selection, QStringLiteral("true"));
    EXPECT_EQ(report.formulas[0].text, QStringLiteral("\"Our families\""));
    EXPECT_EQ(report.formulas[1].text, QStringLiteral("3"));
    EXPECT_EQ(report.tables[0].location, school.path());

    // A formula the report lacks is passed over without a word.
    GCR_Formula_Name() = QStringLiteral("NoSuchFormula");
    ASSERT_TRUE(Init_Report());
}

TEST_F(ReportRunnerTest, ExportsLeaveOutWhatTheirKindLeavesOut)
{
    // Text keeps the page's header and footer; CSV keeps only the rows.
    const QString text = exported(QStringLiteral("5"), QStringLiteral("families.txt"));
    EXPECT_TRUE(text.startsWith(QStringLiteral("Families\n")));
    EXPECT_TRUE(text.contains(QStringLiteral("End of page")));
    EXPECT_EQ(exported(QStringLiteral("4"), QStringLiteral("families.csv")), QStringLiteral("Ashby,0\r\nBrook,0\r\n"));
    EXPECT_TRUE(exported(QStringLiteral("9"), QStringLiteral("families.htm")).startsWith(QStringLiteral("<!DOCTYPE html>")));
    // Type 7 has no format: nothing is written, and the run has done what was asked.
    EXPECT_EQ(exported(QStringLiteral("7"), QStringLiteral("nothing.out")), QString());
    EXPECT_FALSE(QFile::exists(school.file(QStringLiteral("nothing.out"))));
    EXPECT_EQ(GCR_Report(), nullptr);
}

TEST_F(ReportRunnerTest, FailuresAreReportedInTheRunnersWords)
{
    ScriptedBoxes boxes;
    GCR_Formula_Name() = QStringLiteral("Heading");
    GCR_Formula_Value() = QStringLiteral("\"unclosed");
    boxes.expect(QStringLiteral("Unable to set up the function {@Heading} with \"unclosed because position 0: "), engine::answer::Ok, 64);
    ASSERT_TRUE(Init_Report());
    EXPECT_EQ(GCR_Report()->definition.formulas[0].text, QStringLiteral("\"Families\""));

    GCR_Formula_Name().clear();
    GCR_Record_Selection() = QStringLiteral("{Families.Family_Name} = ");
    boxes.expect(QStringLiteral("Unexpected error in Criteria.  Try changing the criteria."), engine::answer::Ok, 64);
    EXPECT_FALSE(Init_Report());
    EXPECT_TRUE(school.log_text().contains(QStringLiteral("Init_Report - Record error in ") + GCR_Report_File()));

    GCR_Record_Selection().clear();
    GCR_Report_File() = school.write_file(QStringLiteral("Broken.rpt"), QStringLiteral("<report version=\"1\">\n<colour/>\n</report>"));
    boxes.expect(QStringLiteral("Unable to open the report ") + GCR_Report_File() + QStringLiteral("\n20525 : ")
                     + GCR_Report_File() + QStringLiteral(", line 2: <colour> is not an element the format knows here."),
                 engine::answer::Ok, 64);
    EXPECT_FALSE(Init_Report());
    EXPECT_EQ(GCR_Report(), nullptr);
}

TEST_F(ReportRunnerTest, TheReportsPageSetupIsReadInWords)
{
    qint16 size = -1;
    qint16 orientation = -1;
    QString text;
    GCR_Get_Report_Page_Setup(size, orientation, text, 9, 1);
    EXPECT_EQ(text, QStringLiteral("Default - Default"));
    EXPECT_EQ(size, 9);
    GCR_Report_File() = school.write_file(QStringLiteral("Label.rpt"),
                                          QStringLiteral("<report version=\"1\"><page paper=\"DL\" orientation=\"landscape\"/>"
                                                         "<tables><table name=\"Families\"/></tables></report>"));
    GCR_Get_Report_Page_Setup(size, orientation, text, 9, 1);
    EXPECT_EQ(text, QStringLiteral("DL Envelope - Landscape"));
    EXPECT_EQ(size, 27);
    EXPECT_EQ(orientation, 2);
}

}  // namespace
