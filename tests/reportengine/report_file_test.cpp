// Report files: the documented example reads as documented, files are
// written back as they were read, and every kind of mistake is refused with
// its line and what was wrong.

#include "reportengine/formula.h"
#include "reportengine/report_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

using namespace reportengine;

// The worked example of the format's documentation, so that the page and the
// reader cannot drift apart.
QByteArray documented_example()
{
    QFile page(QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../../docs/report-format.md"));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    const auto match = QRegularExpression(QStringLiteral("```xml\\n(.*?)```"), QRegularExpression::DotMatchesEverythingOption).match(text);
    EXPECT_TRUE(match.hasMatch());
    return match.captured(1).toUtf8();
}

TEST(ReportFile, TheDocumentedExampleReadsAsTheDocumentationSays)
{
    ReportDefinition report;
    ReportFileError error;
    ASSERT_TRUE(read_report_text(documented_example(), QStringLiteral("ClassList.rpt"), report, error)) << error.text().toStdString();
    EXPECT_EQ(report.title, QStringLiteral("Class list"));
    EXPECT_EQ(report.page.paper_size, paper::A4);
    EXPECT_EQ(report.page.orientation, orientation::Portrait);
    ASSERT_EQ(report.tables.size(), 3u);
    ASSERT_EQ(report.links.size(), 2u);
    EXPECT_FALSE(report.links[0].left_outer);
    ASSERT_EQ(report.groups.size(), 1u);
    EXPECT_TRUE(report.groups[0].keep_together);

    // One group: seven areas in their fixed order, the empty ones included.
    ASSERT_EQ(report.area_count(), 7);
    const QList<AreaKind> order = {AreaKind::ReportHeader, AreaKind::PageHeader, AreaKind::GroupHeader, AreaKind::Details,
                                   AreaKind::GroupFooter,  AreaKind::PageFooter, AreaKind::ReportFooter};
    for (int n = 1; n <= 7; ++n)
        EXPECT_EQ(report.area(n)->kind, order[n - 1]) << n;
    EXPECT_TRUE(report.area(1)->sections.empty());
    EXPECT_EQ(report.area(2)->sections[0].objects[0].kind, ObjectKind::Subreport);
    EXPECT_EQ(report.area(2)->sections[0].objects[0].file, QStringLiteral("PrtHead.rpt"));
    const ReportObject& birthday = report.area(4)->sections[0].objects[1];
    EXPECT_EQ(birthday.format.type, FieldFormat::Type::Date);
    EXPECT_EQ(birthday.format.date_order, 1);
    EXPECT_TRUE(report.area(5)->sections[0].new_page_after);
    EXPECT_EQ(report.area(6)->sections[0].objects[0].align, Qt::AlignRight);

    // Every formula in it is one the language reads.
    QStringList formulas = {report.record_selection, report.formulas[0].text};
    for (const ReportArea& area : report.areas)
        for (const ReportSection& section : area.sections)
            for (const ReportObject& object : section.objects)
                if (object.kind == ObjectKind::Field)
                    formulas << object.source;
    for (const QString& text : formulas) {
        Formula formula;
        FormulaError formula_error;
        EXPECT_TRUE(formula.parse(text, formula_error)) << text.toStdString() << ": " << formula_error.message.toStdString();
    }
}

TEST(ReportFile, AReportIsWrittenBackAsItWasRead)
{
    ReportDefinition report;
    ReportFileError error;
    ASSERT_TRUE(read_report_text(documented_example(), QStringLiteral("ClassList.rpt"), report, error));
    report.page.paper_size = paper::A5;
    report.page.orientation = orientation::Landscape;
    report.record_selection += QStringLiteral(" and {Courses.Course_id} = 3");
    const QByteArray written = report_text(report);

    ReportDefinition again;
    ASSERT_TRUE(read_report_text(written, QStringLiteral("again.rpt"), again, error)) << error.text().toStdString();
    EXPECT_EQ(again.page.paper_size, paper::A5);
    EXPECT_EQ(again.page.orientation, orientation::Landscape);
    EXPECT_EQ(again.record_selection, report.record_selection);
    EXPECT_EQ(report_text(again), written);

    // The standard reports, with their growing fields, columns and page numbering, come back the same too.
    for (const QFileInfo& file : QDir(QStringLiteral(QUILLARY_BUILD_DIR "/repfmts")).entryInfoList({QStringLiteral("*.rpt")})) {
        ASSERT_TRUE(read_report_file(file.filePath(), report, error)) << error.text().toStdString();
        ASSERT_TRUE(read_report_text(report_text(report), file.fileName(), again, error)) << error.text().toStdString();
        EXPECT_EQ(report_text(again), report_text(report)) << file.fileName().toStdString();
    }
}

TEST(ReportFile, MistakesAreRefusedWithTheirLineAndWhatWasWrong)
{
    struct Case {
        const char* body;  // inside <report version="1">, which is line 1
        int line;
        const char* words;
    };
    const QList<Case> cases = {
        {"\n<tables/>\n<colour/>", 3, "<colour> is not an element the format knows here."},
        {"\n<page paper=\"Letter\"/>", 2, "'paper' of <page> must be one of A4, A5, DL, default, not 'Letter'."},
        {"\n<page marginLeft=\"wide\"/>", 2, "'marginLeft' of <page> must be a number"},
        {"\n<tables>\n<table/>\n</tables>", 3, "<table> needs the attribute 'name'."},
        {"\n<tables>\n<link from=\"A\" to=\"B.c\"/>\n</tables>", 3, "A link joins Table.Column to Table.Column, not 'A'."},
        {"\n<area kind=\"details\">\n<section height=\"5\">\n<field x=\"0\" source=\"1\" colour=\"red\"/>", 4,
         "<field> has no attribute 'colour'."},
        {"\n<area kind=\"details\">\n<section>\n<field x=\"0\"/>", 4, "<field> needs the attribute 'source'."},
        {"\n<area kind=\"groupHeader\" group=\"1\"/>", 2, "'group' of <area> must be a whole number from 1 to 0"},
        {"\n<area kind=\"details\"/>\n<area kind=\"details\"/>", 3, "The details area stands twice."},
        {"\n<area kind=\"details\" group=\"1\"/>", 2, "Only group headers and footers name a group."},
        {"\n<area kind=\"details\"/>\n<group field=\"{a.b}\"/>", 3, "<group> must stand before the areas"},
        {"\n<formula name=\"X\">1</formula>\n<formula name=\"x\">2</formula>", 3, "The formula x is defined twice."},
        {"\n<tables/>\n<tables/>", 3, "<tables> may stand only once in a report."},
        {"\n<sort field=\"{a.b}\" order=\"upwards\"/>", 2, "'order' must be ascending or descending"},
        {"\n<area kind=\"details\">\n<section height=\"5\">\n<text x=\"0\">a<b/></text>", 4, "Expected character data."},
        {"\n<area kind=\"pageHeader\" columns=\"3\" columnWidth=\"60\"/>", 2, "Only the details are printed in columns."},
        {"\n<area kind=\"details\" columns=\"3\"/>", 2, "Details in columns need both"},
        {"\n<tables>", 2, "Premature end of document."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.body);
        // A file cut short has no closing tag; the others are whole.
        QByteArray whole = QByteArray("<report version=\"1\">") + c.body;
        if (!QByteArray(c.words).startsWith("Premature"))
            whole += "</report>";
        ReportDefinition report;
        ReportFileError error;
        EXPECT_FALSE(read_report_text(whole, QStringLiteral("Mistake.rpt"), report, error));
        EXPECT_EQ(error.line, c.line) << error.text().toStdString();
        EXPECT_TRUE(error.message.contains(QLatin1String(c.words))) << error.text().toStdString();
        EXPECT_TRUE(error.text().startsWith(QStringLiteral("Mistake.rpt, line "))) << error.text().toStdString();
    }
    ReportDefinition report;
    ReportFileError error;
    EXPECT_FALSE(read_report_text("<report version=\"2\"/>", QStringLiteral("New.rpt"), report, error));
    EXPECT_TRUE(error.message.contains(QStringLiteral("Version 2 of the format is not known")));
    EXPECT_FALSE(read_report_text("<layout/>", QStringLiteral("Other.rpt"), report, error));
    EXPECT_TRUE(error.message.contains(QStringLiteral("begins with <report>")));
}

}  // namespace
