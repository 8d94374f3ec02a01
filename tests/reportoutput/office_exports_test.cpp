// Spreadsheet and Word exports, opened by the readers office programs' files
// are checked with.

#include "reportoutput/office_exports.h"

#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using namespace reportengine;

PageModel sample()
{
    PageModel model;
    model.paper = QSizeF(210, 297);
    model.pages.resize(2);
    PageItem heading;
    heading.rect = QRectF(0, 10, 80, 6);
    heading.text = QStringLiteral("Money received");
    PageItem name = heading;
    name.rect = QRectF(0, 20, 40, 5);
    name.text = QStringLiteral("Müller & Sons");
    PageItem amount = name;
    amount.rect = QRectF(60, 20, 30, 5);
    amount.text = QStringLiteral("12.50");
    model.pages[0].items = {heading, name, amount};
    model.pages[1].items = {heading};
    model.rows = {{2, {QStringLiteral("Money received")}},
                  {4, {QStringLiteral("Müller & Sons"), QStringLiteral("12.50")}},
                  {4, {QStringLiteral("Ashby"), QStringLiteral("-3")}}};
    return model;
}

QString python(const QString& code, const QString& file)
{
    QProcess process;
    // Debian's own Python, where the packages that read these files are installed.
    process.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), code, file});
    EXPECT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

TEST(OfficeExports, TheSpreadsheetHoldsARowPerSectionWithNumbersAsNumbersAndTheDocumentThePagesLines)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("money.xlsx"));
    QString error;
    ASSERT_TRUE(reportoutput::write_xlsx(sample(), path, QStringLiteral("Money received"), error)) << error.toStdString();
    const QString cells = python(QStringLiteral("import openpyxl, sys\n"
                                                "sheet = openpyxl.load_workbook(sys.argv[1]).active\n"
                                                "print(sheet.title)\n"
                                                "for row in sheet.iter_rows(values_only=True):\n"
                                                "    print('|'.join(repr(v) for v in row))\n"),
                                 path);
    EXPECT_EQ(cells, QStringLiteral("Money received\n'Money received'|None\n'Müller & Sons'|12.5\n'Ashby'|-3\n"));

    // The Word document holds the pages' lines with a break between pages.
    const QString document = dir.filePath(QStringLiteral("money.docx"));
    ASSERT_TRUE(reportoutput::write_docx(sample(), document, QStringLiteral("Money received"), error)) << error.toStdString();
    const QString text = python(QStringLiteral("import docx, sys\n"
                                               "d = docx.Document(sys.argv[1])\n"
                                               "print(d.core_properties.title)\n"
                                               "for p in d.paragraphs:\n"
                                               "    print(repr(p.text))\n"
                                               "print(round(d.sections[0].page_width.mm), round(d.sections[0].page_height.mm))\n"),
                                document);
    // The page break is a paragraph of its own, which the reader shows as a line end.
    EXPECT_EQ(text, QStringLiteral("Money received\n'Money received'\n'Müller & Sons\\t12.50'\n'\\n'\n'Money received'\n210 297\n"));
}

}  // namespace
