#pragma once
// What a report file holds, as the report runner works on it: its tables and
// links, selections, formulas, sorting and groups, the areas of the page with
// their sections and objects, paper, printer and alerts. The areas always
// stand complete and in their fixed order, numbered from 1: report header,
// page header, a header per group (outermost first), details, a footer per
// group (innermost first), page footer, report footer.

#include <QString>
#include <QStringList>
#include <qnamespace.h>
#include <vector>

namespace reportengine {

// The platform's paper and orientation numbers, as report files and printers use them.
namespace paper {
inline constexpr int Default = 0;
inline constexpr int A4 = 9;
inline constexpr int A5 = 11;
inline constexpr int DL_Envelope = 27;
}  // namespace paper
namespace orientation {
inline constexpr int Default = 0;
inline constexpr int Portrait = 1;
inline constexpr int Landscape = 2;
}  // namespace orientation

struct ReportTable {
    QString name;      // the table or stored query the report reads
    QString location;  // the database file; set anew at each run
};

struct ReportLink {
    QString from;  // "Table.Column"
    QString to;    // "Table.Column"
    bool left_outer = false;  // every row of `from`, whether or not `to` has one
};

struct ReportFormula {
    QString name;  // without braces or @
    QString text;
};

struct SortField {
    QString field;  // "{Table.Column}" or "{@Formula}"
    bool descending = false;
};

struct ReportGroup {
    QString field;
    bool descending = false;
    bool keep_together = false;  // start the group on a new page when it would not fit
};

struct ReportAlert {
    QString name;
    QString condition;  // a formula, tried on each row
    QString message;
};

// The kinds of object, numbered as the runner knows them.
enum class ObjectKind { Field = 1, Text = 2, Line = 3, Box = 4, Subreport = 5 };

// How a field shows its value.
struct FieldFormat {
    enum class Type { General, Text, Number, Currency, Date, Time, DateTime, Boolean };
    Type type = Type::General;
    int decimals = 2;
    int date_order = 1;            // 0 month first, 1 day first, 2 year first
    QString date_separator_1 = QStringLiteral("/");
    QString date_separator_2 = QStringLiteral("/");
    QString time_separator = QStringLiteral(":");
    bool month_in_letters = false;  // "14 Mar 2026" rather than "14/03/2026"
};

struct ReportObject {
    ObjectKind kind = ObjectKind::Text;
    QString name;
    double x = 0, y = 0, width = 0, height = 0;  // millimetres within the section
    QString source;    // a field: the formula it shows ("{Families.Family_Name}", "{@Owed}")
    QString text;      // a text object's words
    QString file;      // a subreport: its report file, beside this one
    FieldFormat format;
    QString font_family;  // empty: the report's font
    double font_size = 0; // 0: the report's size
    bool bold = false;
    bool italic = false;
    Qt::Alignment align = Qt::AlignLeft;
    double line_width = 0.2;
    QString suppress_if;  // a formula; the object is left out where it gives yes
    // A field whose text is longer than its width is broken into lines, and
    // its section grows to hold them; `height` is then the height of a line.
    bool can_grow = false;
};

struct ReportSection {
    double height = 0;  // millimetres
    QString suppress_if;
    bool new_page_after = false;
    // The page after this section is numbered 1 again, and the page count is
    // that of the pages up to the next reset: "Page 1 of 2" per family.
    bool reset_page_number_after = false;
    std::vector<ReportObject> objects;
};

enum class AreaKind { ReportHeader, PageHeader, GroupHeader, Details, GroupFooter, PageFooter, ReportFooter };

struct ReportArea {
    AreaKind kind = AreaKind::Details;
    int group = 0;  // group headers and footers: which group, 1 outermost
    bool suppress = false;
    std::vector<ReportSection> sections;
    // Details only: printed in this many columns across the page, left to
    // right and then down (a sheet of labels), each `column_width` mm apart.
    int columns = 1;
    double column_width = 0;
};

struct PageSetup {
    int paper_size = paper::Default;
    int orientation = orientation::Default;
    double margin_left = 15, margin_top = 15, margin_right = 15, margin_bottom = 15;
    QString font_family = QStringLiteral("DejaVu Sans");
    double font_size = 9;
    int fit_setting = 0;  // the runner offers to fit an A4 report onto A5 when this is 7
};

struct PrinterChoice {
    QString name;
    QString driver;
    QString port;
};

struct ReportDefinition {
    QString title;
    QString file;  // where it was read from
    PageSetup page;
    PrinterChoice printer;
    std::vector<ReportTable> tables;
    std::vector<ReportLink> links;
    QString record_selection;
    QString group_selection;
    std::vector<ReportFormula> formulas;
    std::vector<SortField> sorts;
    std::vector<ReportGroup> groups;
    std::vector<ReportAlert> alerts;
    std::vector<ReportArea> areas;  // complete, in order (see above)

    // Builds the full, ordered list of areas for the groups, keeping the
    // sections of any area already given.
    void complete_areas();
    // Areas.Item(n), 1-based; null past the end.
    ReportArea* area(int number);
    int area_count() const { return static_cast<int>(areas.size()); }
    ReportFormula* formula(const QString& name);
};

QString area_kind_name(AreaKind kind);

}  // namespace reportengine
