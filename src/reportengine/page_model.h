#pragma once
// A report laid out once onto pages: positioned text, lines and boxes in
// millimetres from the paper's top left corner. Every output draws from it:
// the viewer, the printer, PDF and the text-like exports. The tabular
// exports take its rows: one for each printed section of the details and
// group areas, with the area's number so that headers and footers can be
// left out.

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <qnamespace.h>
#include <vector>

namespace reportengine {

struct PageItem {
    enum class Kind { Text, Line, Box };
    Kind kind = Kind::Text;
    QRectF rect;  // mm; a line runs from the top left to the bottom right corner
    QString text;
    QString font_family;
    double font_size = 9;  // points
    bool bold = false;
    bool italic = false;
    Qt::Alignment align = Qt::AlignLeft;
    double line_width = 0.2;  // mm
    int area = 0;             // the area it was printed from, numbered from 1
};

struct Page {
    std::vector<PageItem> items;
};

// One printed section, as a row of values for the tabular exports.
struct TableRow {
    int area = 0;
    QStringList cells;  // the texts of its fields and texts, left to right
};

struct PageModel {
    QSizeF paper;  // mm
    std::vector<Page> pages;
    std::vector<TableRow> rows;
    QStringList alert_messages;  // alerts whose condition held for some row
    int records_read = 0;
    int groups_counted = 0;

    bool is_empty() const { return records_read == 0; }
};

// The size of the paper a report asks for, in millimetres; the default
// paper is A4 portrait.
QSizeF paper_size_mm(int paper_size, int orientation);

}  // namespace reportengine
