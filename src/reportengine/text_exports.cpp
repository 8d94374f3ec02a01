#include "reportengine/text_exports.h"

#include <QStringList>
#include <algorithm>
#include <cmath>
#include <map>

namespace reportengine {

namespace {


// About two millimetres to a character of a nine-point font.
constexpr double mm_per_column = 2.0;

// The page's margin stays on the paper: text starts at the leftmost text of the report.
double leftmost_text(const PageModel& model)
{
    double left = model.paper.width();
    for (const Page& page : model.pages)
        for (const PageItem& item : page.items)
            if (item.kind == PageItem::Kind::Text && !item.text.isEmpty())
                left = std::min(left, item.rect.left());
    return left;
}

QString text_line(const std::vector<const PageItem*>& items, double origin)
{
    QString line;
    for (const PageItem* item : items) {
        int column = static_cast<int>(std::lround((item->rect.left() - origin) / mm_per_column));
        const int width = static_cast<int>(std::lround(item->rect.width() / mm_per_column));
        QString text = item->text;
        if (item->align & Qt::AlignRight)
            column += std::max(0, width - static_cast<int>(text.size()));
        if (!line.isEmpty() && column <= line.size())
            column = static_cast<int>(line.size()) + 1;
        line = line.leftJustified(column, QLatin1Char(' ')) + text;
    }
    return line;
}

QString rtf_escaped(const QString& text)
{
    QString out;
    for (const QChar c : text) {
        if (c == QLatin1Char('\\') || c == QLatin1Char('{') || c == QLatin1Char('}'))
            out += QLatin1Char('\\') + c;
        else if (c.unicode() > 127)
            out += QStringLiteral("\\u%1?").arg(static_cast<short>(c.unicode()));
        else
            out += c;
    }
    return out;
}

QString mm(double value)
{
    return QString::number(value, 'f', 2) + QStringLiteral("mm");
}

}  // namespace

QString csv_quoted(const QString& text)
{
    static const QString special = QStringLiteral(",\"\n\r");
    if (std::none_of(text.begin(), text.end(), [](QChar c) { return special.contains(c); }))
        return text;
    return QLatin1Char('"') + QString(text).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

std::vector<std::vector<const PageItem*>> lines_of(const Page& page)
{
    std::map<long, std::vector<const PageItem*>> by_top;
    for (const PageItem& item : page.items)
        if (item.kind == PageItem::Kind::Text && !item.text.isEmpty())
            by_top[std::lround(item.rect.top() * 2)].push_back(&item);
    std::vector<std::vector<const PageItem*>> lines;
    for (auto& [top, items] : by_top) {
        std::stable_sort(items.begin(), items.end(), [](const PageItem* a, const PageItem* b) { return a->rect.left() < b->rect.left(); });
        lines.push_back(items);
    }
    return lines;
}

QByteArray csv_export(const PageModel& model)
{
    QString out;
    for (const TableRow& row : model.rows) {
        QStringList cells;
        for (const QString& cell : row.cells)
            cells << csv_quoted(cell);
        out += cells.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    }
    return out.toUtf8();
}

QByteArray text_export(const PageModel& model)
{
    QStringList pages;
    const double origin = leftmost_text(model);
    for (const Page& page : model.pages) {
        QStringList lines;
        for (const auto& items : lines_of(page))
            lines << text_line(items, origin);
        pages << lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    }
    return pages.join(QLatin1Char('\f')).toUtf8();
}

QByteArray rtf_export(const PageModel& model, const QString& title)
{
    QString out = QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss DejaVu Sans;}}{\\info{\\title %1}}\\fs18\n")
                      .arg(rtf_escaped(title));
    for (size_t p = 0; p < model.pages.size(); ++p) {
        if (p > 0)
            out += QStringLiteral("\\page\n");
        for (const auto& items : lines_of(model.pages[p])) {
            QStringList cells;
            for (const PageItem* item : items)
                cells << (item->bold ? QStringLiteral("{\\b %1}").arg(rtf_escaped(item->text)) : rtf_escaped(item->text));
            out += cells.join(QStringLiteral("\\tab ")) + QStringLiteral("\\par\n");
        }
    }
    out += QLatin1Char('}');
    return out.toLatin1();
}

QByteArray html_export(const PageModel& model, const QString& title)
{
    QString out = QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n<title>%1</title>\n"
                                 "<style>\n.page { position: relative; margin: 0 auto 8mm auto; background: white; "
                                 "box-shadow: 0 0 2mm #999; overflow: hidden; }\n"
                                 ".page div { position: absolute; white-space: nowrap; overflow: hidden; }\n"
                                 "body { background: #ddd; font-family: sans-serif; }\n</style>\n</head>\n<body>\n")
                      .arg(title.toHtmlEscaped());
    for (const Page& page : model.pages) {
        out += QStringLiteral("<div class=\"page\" style=\"width: %1; height: %2;\">\n").arg(mm(model.paper.width()), mm(model.paper.height()));
        for (const PageItem& item : page.items) {
            const QString place = QStringLiteral("left: %1; top: %2; width: %3; height: %4;")
                                      .arg(mm(item.rect.left()), mm(item.rect.top()), mm(item.rect.width()), mm(item.rect.height()));
            switch (item.kind) {
            case PageItem::Kind::Text: {
                const QString align = item.align & Qt::AlignRight ? QStringLiteral("right")
                                      : item.align & Qt::AlignHCenter ? QStringLiteral("center") : QStringLiteral("left");
                out += QStringLiteral("<div style=\"%1 font-size: %2pt; text-align: %3;%4%5\">%6</div>\n")
                           .arg(place, QString::number(item.font_size), align,
                                item.bold ? QStringLiteral(" font-weight: bold;") : QString(),
                                item.italic ? QStringLiteral(" font-style: italic;") : QString(), item.text.toHtmlEscaped());
                break;
            }
            case PageItem::Kind::Line:
                // Ruled lines run across or down the page; a page holds no others.
                out += QStringLiteral("<div style=\"%1 border-%2: %3 solid black;\"></div>\n")
                           .arg(place, item.rect.width() == 0 ? QStringLiteral("left") : QStringLiteral("top"), mm(item.line_width));
                break;
            case PageItem::Kind::Box:
                out += QStringLiteral("<div style=\"%1 border: %2 solid black;\"></div>\n").arg(place, mm(item.line_width));
                break;
            }
        }
        out += QStringLiteral("</div>\n");
    }
    out += QStringLiteral("</body>\n</html>\n");
    return out.toUtf8();
}

}  // namespace reportengine
