// A laid-out report written as PDF and read back by a real PDF reader:
// its pages, its words, and a picture of its first page.

#include "reportengine/report_file.h"
#include "reportengine/report_layout.h"
#include "reportoutput/page_painter.h"
#include "support/school_fixture.h"

#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace reportengine;

// Text and fonts need an application object; the offscreen platform serves.
class GuiEnvironment : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        app_ = new QGuiApplication(argc_, argv_);
    }
    void TearDown() override { delete app_; }

private:
    int argc_ = 1;
    char name_[20] = "test_reportoutput";
    char* argv_[2] = {name_, nullptr};
    QGuiApplication* app_ = nullptr;
};
[[maybe_unused]] ::testing::Environment* const registered = ::testing::AddGlobalTestEnvironment(new GuiEnvironment);

QString run(const QString& program, const QStringList& args)
{
    QProcess process;
    process.start(program, args);
    EXPECT_TRUE(process.waitForFinished(30000)) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << ": " << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

TEST(PdfOutput, AReportsPagesAreWrittenAsAPdfThatReadersOpen)
{
    testing_support::SchoolFixture school;
    for (int i = 0; i < 60; ++i)
        school.add_family(QStringLiteral("Family %1").arg(i, 2, 10, QLatin1Char('0')));
    const QByteArray xml = R"xml(<report version="1" title="Families">
  <page paper="A4" orientation="portrait"/>
  <tables><table name="Families"/></tables>
  <sort field="{Families.Family_Name}"/>
  <area kind="pageHeader"><section height="15">
    <text x="0" y="0" width="180" height="8" fontSize="14" bold="true">Families of the school</text>
    <line x="0" y="12" width="180" height="0" lineWidth="0.3"/></section></area>
  <area kind="details"><section height="6">
    <field x="0" y="0" width="100" height="5" source="{Families.Family_Name}"/>
    <box x="120" y="0" width="4" height="4"/></section></area>
  <area kind="pageFooter"><section height="8">
    <field x="100" y="0" width="80" height="6" align="right"
           source="'Page ' &amp; ToText(PageNumber, 0) &amp; ' of ' &amp; ToText(TotalPageCount, 0)"/></section></area>
</report>)xml";
    ReportDefinition report;
    ReportFileError file_error;
    ASSERT_TRUE(read_report_text(xml, QStringLiteral("Families.rpt"), report, file_error)) << file_error.text().toStdString();
    ReportFormulas formulas;
    ReportData data;
    PageModel model;
    QString error;
    ASSERT_TRUE(formulas.parse(report, error) && read_report_data(school.db(), report, formulas, data, error)
                && lay_out_report(report, formulas, data, SubreportLoader(), LayoutSettings(), model, error))
        << error.toStdString();
    // 267 mm of body less the 15 mm header: 42 families of 6 mm to a page.
    ASSERT_EQ(model.pages.size(), 2u);

    QTemporaryDir dir;
    const QString pdf = dir.filePath(QStringLiteral("families.pdf"));
    ASSERT_TRUE(reportoutput::write_pdf(model, pdf, report.title, error)) << error.toStdString();
    const QString info = run(QStringLiteral("pdfinfo"), {pdf});
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+2\\n")))) << info.toStdString();
    EXPECT_TRUE(info.contains(QRegularExpression(QStringLiteral("Page size:\\s+595 x 842 pts \\(A4\\)")))) << info.toStdString();
    const QString words = run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    EXPECT_TRUE(words.contains(QStringLiteral("Families of the school")));
    EXPECT_TRUE(words.contains(QStringLiteral("Family 00")));
    EXPECT_TRUE(words.contains(QStringLiteral("Family 59")));
    EXPECT_TRUE(words.contains(QStringLiteral("Page 2 of 2")));

    run(QStringLiteral("pdftoppm"), {QStringLiteral("-png"), QStringLiteral("-r"), QStringLiteral("40"), QStringLiteral("-f"),
                                     QStringLiteral("1"), QStringLiteral("-l"), QStringLiteral("1"), pdf, dir.filePath(QStringLiteral("page"))});
    const QImage picture(dir.filePath(QStringLiteral("page-1.png")));
    ASSERT_FALSE(picture.isNull());
    // Something is drawn: not every pixel is white.
    int dark = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            dark += qGray(picture.pixel(x, y)) < 128;
    EXPECT_GT(dark, 200);
}

}  // namespace
