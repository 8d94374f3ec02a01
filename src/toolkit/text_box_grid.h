#pragma once
// TextBoxGrid: the program's own editable grid. Any number of rows are held
// here; a fixed block of single-line cells (a row of headers over rows of
// elements) shows a view of them, with a vertical and a horizontal bar.
// Scrolling never moves a cell: it changes which data row and column each
// cell shows, and the whole block is painted again from the data.
//
// This side keeps the grid record (rows, columns, texts, colours, highlight,
// scrolling) and works out what every cell and bar shows; the widget side
// (ui/toolkit/text_box_grid_widget.h) only copies that onto its cells and
// passes on clicks, edits and scrolls. Rows and columns of the data count
// from 1, headers and elements from 0. Mistakes of the calling screen are
// reported under the module "gentxg" and the grid goes on.

#include "toolkit/gen_colours.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <functional>
#include <optional>

namespace txg {

inline constexpr colours::Rgb Default_Cell{255, 255, 192};
inline constexpr colours::Rgb Highlight{192, 192, 255};
inline constexpr colours::Rgb Header{0, 128, 0};

// col_type
inline constexpr short Locked = 0;
inline constexpr short Editable = 1;
inline constexpr short Invisible = 2;

// highlight type
inline constexpr short No_Highlight = 0;
inline constexpr short Whole_Row = 1;
inline constexpr short Single_Cell = 2;

}  // namespace txg

// One column as the screen defines it.
struct txg_column {
    QString title;
    short col_type = txg::Locked;
    short col_spare = 0;
    bool col_tooltip = false;
    std::optional<colours::Rgb> col_colour;  // none: the default cell colour
};

// Colours and cell highlight of one data row.
struct txg_row {
    QVector<colours::Rgb> colours;  // index 0 is column 1
    short highlight_col = 0;        // -1 none; 0 in a row that never had one
};

// What one element shows after a paint.
struct txg_cell {
    QString text;
    colours::Rgb background = txg::Default_Cell;
    bool locked = true;
    bool tab_stop = false;
    QString tooltip;
    bool visible = true;
};

struct txg_header {
    QString text;
    bool visible = true;
};

// A scroll bar's range and position.
struct txg_bar {
    short min = 1;
    short max = 1;
    short value = 1;
    short small_change = 1;
    short large_change = 1;
    bool visible = true;
};

// The grid record.
struct txg_grid {
    short last_row = -1;  // -1 when empty; the arrays then hold one blank row
    short col_count = 0;
    short vis_rows = 0;
    short vis_cols = 0;
    short first_row = 1;
    short first_col = 1;
    short current_row = -1;
    short current_col = -1;
    short highlight_type = txg::No_Highlight;
    short highlight_row = -1;
    bool vscroll_guard = false;
    bool hscroll_guard = false;
    bool element_guard = false;
    QVector<txg_row> rows;         // index 0 is row 1
    QVector<txg_column> columns;   // index 0 is column 1
    QVector<QStringList> data;     // data[row - 1][column - 1]
};

class TextBoxGrid {
public:
    // A block of `header_count` headers over `element_count` elements.
    TextBoxGrid(int header_count, int element_count);

    // ---- The routines a screen calls ----
    void txg_Initialise(short highlight_type, const QVector<txg_column>& definitions);
    void txg_clear();
    void txg_add_row(bool no_display, const QStringList& values);
    void txg_amend_row(short row, const QStringList& values);
    void txg_insert_row(short row, const QStringList& values);
    void txg_remove_row(short row);
    void txg_change_colour(short row, const colours::Rgb& colour, std::optional<short> column = std::nullopt);
    void txg_highlight(short row, std::optional<short> column = std::nullopt);
    void txg_remove_highlight(std::optional<short> row = std::nullopt);
    // False, with the out values untouched, for a cell outside the grid.
    bool txg_get_data(short row, short column, QString& text, colours::Rgb& colour, bool& highlighted);
    void txg_show();
    void txg_repaint();
    void txg_click(int element);
    // `typed` is what the element holds now; `old_text` gets what the data held.
    void txg_change(int element, const QString& typed, QString& old_text);
    // The bars were moved to `value` by the user.
    void txg_vscroll_change(short value);
    void txg_hscroll_change(short value);
    void txg_map_element(int element, short& row, short& column) const;

    // ---- Direct writes for a screen's own passes over the data, which
    // paint once at the end (txg_repaint); no bounds are reported. ----
    void put_text(short row, short column, const QString& text);
    void put_colour(short row, short column, const colours::Rgb& colour);
    void set_element_guard(bool on) { grid_.element_guard = on; }

    // ---- What the screen reads ----
    const txg_grid& record() const { return grid_; }
    short array_rows() const { return static_cast<short>(grid_.rows.size()); }
    // The row's texts, columns 1 to col_count; empty outside the array.
    QStringList row_texts(short row) const;

    // ---- What the cells show ----
    const QVector<txg_header>& headers() const { return headers_; }
    const QVector<txg_cell>& elements() const { return elements_; }
    const txg_bar& vscroll() const { return vscroll_; }
    const txg_bar& hscroll() const { return hscroll_; }
    // Called after every paint, so that the widget copies it onto its cells.
    void set_on_paint(std::function<void()> paint) { on_paint_ = std::move(paint); }

private:
    void txg_refresh();
    void txg_reset();
    void txg_row_defaults(short row);
    void store_values(short row, const QStringList& values, const QString& label);
    void grow_by_one_row();
    void copy_row(int from_index, int to_index);
    bool in_array(short row) const { return row >= 1 && row <= array_rows(); }
    bool in_columns(short column) const { return column >= 1 && column <= grid_.col_count; }
    short visible_column_count() const;
    void set_vmax(short max);
    void paint_element(int element);
    void paint_headers();

    txg_grid grid_;
    QVector<txg_header> headers_;
    QVector<txg_cell> elements_;
    txg_bar vscroll_;
    txg_bar hscroll_;
    std::function<void()> on_paint_;
};
