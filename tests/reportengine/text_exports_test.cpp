// The exports written from the page model, each read back by a reader of its kind.

#include "reportengine/text_exports.h"

#include <QProcess>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

namespace {

using namespace reportengine;

PageItem text_at(double x, double y, const QString& text, Qt::Alignment align = Qt::AlignLeft, int area = 4)
{
    PageItem item;
    item.rect = QRectF(x, y, 40, 5);
    item.text = text;
    item.align = align;
    item.area = area;
    return item;
}

// Two pages: a heading and a ruled line, then lines of a name and an amount.
PageModel sample()
{
    PageModel model;
    model.paper = QSizeF(210, 297);
    model.pages.resize(2);
    model.pages[0].items = {text_at(0, 10, QStringLiteral("Money received"), Qt::AlignLeft, 2), text_at(0, 20, QStringLiteral("Ashby, J & K")),
                            text_at(60, 20, QStringLiteral("12.50"), Qt::AlignRight), text_at(0, 26, QStringLiteral("Müller \"Mo\"")),
                            text_at(60, 26, QStringLiteral("7.00"), Qt::AlignRight)};
    PageItem rule;
    rule.kind = PageItem::Kind::Line;
    rule.rect = QRectF(0, 16, 100, 0);
    model.pages[0].items.push_back(rule);
    model.pages[1].items = {text_at(0, 10, QStringLiteral("Money received"), Qt::AlignLeft, 2),
                            text_at(0, 20, QStringLiteral("Line one\nline two")), text_at(60, 20, QStringLiteral("1.00"), Qt::AlignRight)};
    model.rows = {{4, {QStringLiteral("Ashby, J & K"), QStringLiteral("12.50")}},
                  {4, {QStringLiteral("Müller \"Mo\""), QStringLiteral("7.00")}},
                  {4, {QStringLiteral("Line one\nline two"), QStringLiteral("1.00")}}};
    model.records_read = 3;
    return model;
}

QString python(const QString& code, const QByteArray& input)
{
    QProcess process;
    // Debian's own Python, where the packages that read these files are installed.
    process.start(QStringLiteral("/usr/bin/python3"), {QStringLiteral("-c"), code});
    process.write(input);
    process.closeWriteChannel();
    EXPECT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

TEST(TextExports, CsvIsReadBackCellForCellAndTextKeepsThePagesLinesAndColumns)
{
    const QString parsed = python(QStringLiteral("import csv, io, sys\n"
                                                 "for row in csv.reader(io.StringIO(sys.stdin.read(), newline='')):\n"
                                                 "    print('|'.join(c.replace('\\n', '/') for c in row))\n"),
                                  csv_export(sample()));
    EXPECT_EQ(parsed, QStringLiteral("Ashby, J & K|12.50\nMüller \"Mo\"|7.00\nLine one/line two|1.00\n"));

    // Text keeps the pages, lines and columns.
    const QString text = QString::fromUtf8(text_export(sample()));
    const QStringList pages = text.split(QLatin1Char('\f'));
    ASSERT_EQ(pages.size(), 2);
    const QStringList lines = pages[0].split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0], QStringLiteral("Money received"));
    // The amounts end at the right edge of their 40 mm box: column 50.
    EXPECT_TRUE(lines[1].startsWith(QStringLiteral("Ashby, J & K")));
    EXPECT_EQ(lines[1].indexOf(QStringLiteral("12.50")) + 5, 50) << lines[1].toStdString();
    EXPECT_EQ(lines[2].indexOf(QStringLiteral("7.00")) + 4, 50) << lines[2].toStdString();
}

TEST(TextExports, RichTextIsBalancedWithAPageBreakBetweenPages)
{
    const QByteArray rtf = rtf_export(sample(), QStringLiteral("Money {received}"));
    EXPECT_TRUE(rtf.startsWith("{\\rtf1\\ansi"));
    int depth = 0;
    for (int i = 0; i < rtf.size(); ++i) {
        if (rtf[i] == '\\') {
            ++i;
            continue;
        }
        depth += rtf[i] == '{' ? 1 : rtf[i] == '}' ? -1 : 0;
        ASSERT_GE(depth, 0);
    }
    EXPECT_EQ(depth, 0);
    EXPECT_EQ(rtf.count("\\page"), 1);
    EXPECT_TRUE(rtf.contains("M\\u252?ller"));
    EXPECT_TRUE(rtf.contains("Money \\{received\\}"));
}

TEST(TextExports, HtmlIsWellFormedWithEveryPageAndText)
{
    const QByteArray html = html_export(sample(), QStringLiteral("Money <received>"));
    QXmlStreamReader xml(html);
    int pages = 0;
    QStringList texts;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.attributes().value(QStringLiteral("class")) == QLatin1String("page"))
            ++pages;
        if (xml.isCharacters() && !xml.isWhitespace())
            texts << xml.text().toString();
    }
    ASSERT_FALSE(xml.hasError()) << xml.errorString().toStdString() << " at line " << xml.lineNumber();
    EXPECT_EQ(pages, 2);
    EXPECT_TRUE(texts.contains(QStringLiteral("Money <received>")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Müller \"Mo\"")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Ashby, J & K")));
}

}  // namespace
