#include "toolkit/text_box_grid.h"

#include "engine/msg_box.h"
#include "shell/error_log.h"

namespace {

const QString module = QStringLiteral("gentxg");

// The numbers of the grid's reports: a wrong definition or call, and an
// index outside the grid.
constexpr int wrong_call = 300001;
constexpr int wrong_index = report::GridProgramming;

// A mistake of the calling screen: shown as critical, and the grid goes on.
void programming_error(int number, const QString& text, const QString& label)
{
    Report_Error(number, text, engine::mb::Critical, module, label);
}

void invalid_row(const QString& label, int number = wrong_index)
{
    programming_error(number, QStringLiteral("Programming Error - invalid row number"), label);
}

void invalid_column(const QString& label, int number = wrong_index)
{
    programming_error(number, QStringLiteral("Programming Error - invalid column number"), label);
}

}  // namespace

TextBoxGrid::TextBoxGrid(int header_count, int element_count)
    : headers_(header_count), elements_(element_count)
{
    grid_.vis_cols = static_cast<short>(header_count);
    txg_reset();
}

// ---- Building ----

void TextBoxGrid::txg_Initialise(short highlight_type, const QVector<txg_column>& definitions)
{
    grid_.vscroll_guard = grid_.hscroll_guard = grid_.element_guard = true;
    if (highlight_type < txg::No_Highlight || highlight_type > txg::Single_Cell) {
        programming_error(wrong_call, QStringLiteral("Programming Error - invalid highlight type"),
                          QStringLiteral("txg_Initialise"));
        grid_.highlight_type = txg::No_Highlight;
    } else {
        grid_.highlight_type = highlight_type;
    }
    grid_.vis_cols = static_cast<short>(headers_.size());

    grid_.columns.clear();
    int invisible = 0;
    for (int i = 0; i < definitions.size(); ++i) {
        txg_column column = definitions[i];
        column.title = column.title.trimmed();
        grid_.columns << column;
        if (column.col_type < txg::Locked || column.col_type > txg::Invisible)
            programming_error(wrong_call, QStringLiteral("Programming Error - invalid col_type at ") + QString::number(i),
                              QStringLiteral("txg_initialise 2"));
        if (column.col_type == txg::Invisible)
            ++invisible;
        else if (invisible > 0)
            programming_error(wrong_call,
                              QStringLiteral("Programming Error - cannot have a visible column after an invisible one!"),
                              QStringLiteral("txg_initialise 3"));
    }
    if (grid_.columns.isEmpty()) {
        programming_error(wrong_call, QStringLiteral("Programming Error - less than one column"),
                          QStringLiteral("txg_initialise 4"));
        grid_.columns << txg_column{};
    }
    grid_.col_count = static_cast<short>(grid_.columns.size());
    txg_reset();

    for (int i = 0; i < headers_.size(); ++i)
        headers_[i] = txg_header{i < grid_.col_count ? grid_.columns[i].title : QString(), true};

    grid_.vis_rows = grid_.vis_cols > 0 ? static_cast<short>(elements_.size() / grid_.vis_cols) : 0;
    if (grid_.vis_rows * grid_.vis_cols < elements_.size())
        programming_error(wrong_call,
                          QStringLiteral("Programming Error - wrong number of txg_elements for number of txg_hdrs"),
                          QStringLiteral("txg_initialise 5"));
    for (txg_cell& element : elements_)
        element = txg_cell{};

    vscroll_.small_change = 1;
    vscroll_.large_change = grid_.vis_rows;
    hscroll_.min = 1;
    hscroll_.max = visible_column_count();
    hscroll_.small_change = 1;
    hscroll_.large_change = grid_.vis_cols;

    // With every column in view the bar isn't needed, and the cells of the
    // invisible columns go out of sight; otherwise those columns simply lie
    // past the bar's end.
    hscroll_.visible = grid_.vis_cols < visible_column_count();
    if (!hscroll_.visible) {
        for (int i = 0; i < headers_.size() && i < grid_.col_count; ++i) {
            if (grid_.columns[i].col_type != txg::Invisible)
                continue;
            headers_[i].visible = false;
            for (int e = i; e < elements_.size(); e += grid_.vis_cols)
                elements_[e].visible = false;
        }
    }
    grid_.vscroll_guard = grid_.hscroll_guard = grid_.element_guard = false;
    if (on_paint_)
        on_paint_();
}

void TextBoxGrid::txg_reset()
{
    grid_.rows = {txg_row{}};
    grid_.data = {QStringList()};
    grid_.last_row = -1;
    grid_.first_row = grid_.first_col = 1;
    grid_.current_row = grid_.current_col = -1;
    grid_.highlight_row = -1;
    vscroll_.min = vscroll_.max = vscroll_.value = 1;
    hscroll_.value = 1;
}

void TextBoxGrid::txg_row_defaults(short row)
{
    txg_row& target = grid_.rows[row - 1];
    target.colours.resize(grid_.col_count);
    for (int c = 0; c < grid_.col_count; ++c)
        target.colours[c] = grid_.columns[c].col_colour.value_or(txg::Default_Cell);
}

short TextBoxGrid::visible_column_count() const
{
    short count = 0;
    for (const txg_column& column : grid_.columns)
        if (column.col_type != txg::Invisible)
            ++count;
    return count;
}

// A bar whose end comes below its value takes the end as its value; the
// screen's first row is not read again from it (the change is guarded).
void TextBoxGrid::set_vmax(short max)
{
    vscroll_.max = max;
    if (vscroll_.value > max)
        vscroll_.value = max;
}

// ---- Rows ----

void TextBoxGrid::txg_clear()
{
    grid_.vscroll_guard = grid_.hscroll_guard = grid_.element_guard = true;
    txg_reset();
    txg_refresh();
    grid_.vscroll_guard = grid_.hscroll_guard = grid_.element_guard = false;
}

void TextBoxGrid::store_values(short row, const QStringList& values, const QString& label)
{
    QStringList& texts = grid_.data[row - 1];
    while (texts.size() < grid_.col_count)
        texts << QString();
    for (int n = 0; n < values.size(); ++n) {
        if (n >= grid_.col_count) {
            programming_error(wrong_call, QStringLiteral("Programming Error - too much or too little data for a row"),
                              label);
            continue;
        }
        texts[n] = values[n];
    }
}

void TextBoxGrid::grow_by_one_row()
{
    grid_.rows << txg_row{};
    grid_.data << QStringList();
}

void TextBoxGrid::txg_add_row(bool no_display, const QStringList& values)
{
    grid_.element_guard = grid_.vscroll_guard = true;
    short row = 1;
    if (grid_.last_row != -1) {
        grow_by_one_row();
        row = array_rows();
        set_vmax(row);
    }
    grid_.last_row = row;
    txg_row_defaults(row);
    store_values(row, values, QStringLiteral("txg_add_row"));
    grid_.current_row = row;
    grid_.current_col = grid_.col_count;
    if (!no_display)
        txg_refresh();
    grid_.element_guard = grid_.vscroll_guard = false;
}

void TextBoxGrid::txg_amend_row(short row, const QStringList& values)
{
    // A row outside the grid is passed over in silence.
    if (!in_array(row))
        return;
    grid_.element_guard = true;
    store_values(row, values, QStringLiteral("txg_amend_row"));
    grid_.current_row = row;
    grid_.current_col = grid_.col_count;
    txg_refresh();
    grid_.element_guard = false;
}

void TextBoxGrid::copy_row(int from_index, int to_index)
{
    grid_.data[to_index] = grid_.data[from_index];
    grid_.rows[to_index].colours = grid_.rows[from_index].colours;
    grid_.rows[to_index].highlight_col = grid_.rows[from_index].highlight_col;
}

void TextBoxGrid::txg_insert_row(short row, const QStringList& values)
{
    grid_.current_row = grid_.current_col = -1;
    if (grid_.last_row == -1 || row < 1 || row > grid_.last_row) {
        invalid_row(QStringLiteral("txg_insert_row"));
        return;
    }
    grid_.element_guard = grid_.vscroll_guard = true;
    const short old_last = array_rows();
    grow_by_one_row();
    txg_row_defaults(array_rows());
    ++grid_.last_row;
    set_vmax(static_cast<short>(vscroll_.max + 1));
    for (int r = old_last; r >= row; --r)
        copy_row(r - 1, r);
    // A highlight on the insertion row stays on the row number, and so passes
    // to the new row.
    if (grid_.highlight_row > row)
        ++grid_.highlight_row;
    store_values(row, values, QStringLiteral("txg_insert_row"));
    txg_row_defaults(row);
    txg_refresh();
    grid_.element_guard = grid_.vscroll_guard = false;
}

void TextBoxGrid::txg_remove_row(short row)
{
    grid_.current_row = grid_.current_col = -1;
    if (!in_array(row)) {
        invalid_row(QStringLiteral("txg_remove_row"));
        return;
    }
    grid_.element_guard = grid_.vscroll_guard = true;
    for (int r = row; r < array_rows(); ++r)
        copy_row(r, r - 1);
    if (array_rows() == 1) {
        for (QString& text : grid_.data[0])
            text.clear();
        grid_.last_row = -1;
        set_vmax(vscroll_.min);
    } else {
        grid_.rows.removeLast();
        grid_.data.removeLast();
        grid_.last_row = array_rows();
        set_vmax(static_cast<short>(vscroll_.max - 1));
    }
    if (grid_.highlight_row == row)
        grid_.highlight_row = -1;
    else if (grid_.highlight_row > row)
        --grid_.highlight_row;
    txg_refresh();
    grid_.element_guard = grid_.vscroll_guard = false;
}

// ---- Colours and highlight ----

void TextBoxGrid::txg_change_colour(short row, const colours::Rgb& colour, std::optional<short> column)
{
    grid_.element_guard = true;
    if (!in_array(row)) {
        invalid_row(QStringLiteral("txg_change_colour"), wrong_call);
        grid_.element_guard = false;
        return;
    }
    QVector<colours::Rgb>& colours = grid_.rows[row - 1].colours;
    if (!column) {
        colours.fill(colour);
    } else if (!in_columns(*column)) {
        invalid_column(QStringLiteral("txg_change_colour 2"), wrong_call);
        grid_.element_guard = false;
        return;
    } else {
        colours[*column - 1] = colour;
    }
    txg_refresh();
    grid_.element_guard = false;
}

void TextBoxGrid::txg_highlight(short row, std::optional<short> column)
{
    grid_.element_guard = true;
    if (row < 1 || row > array_rows()) {
        grid_.current_row = -1;
        grid_.element_guard = false;
        return;
    }
    if (column) {
        if (!in_columns(*column)) {
            invalid_column(QStringLiteral("txg_highlight"));
            grid_.current_col = -1;
        } else if (grid_.highlight_type == txg::Single_Cell) {
            grid_.rows[row - 1].highlight_col = *column;
            grid_.current_row = row;
            grid_.current_col = *column;
            txg_refresh();
        }
        grid_.element_guard = false;
        return;
    }
    if (grid_.highlight_type == txg::Whole_Row) {
        grid_.highlight_row = row;
        grid_.current_row = row;
        grid_.current_col = 1;
    }
    txg_refresh();
    grid_.element_guard = false;
}

void TextBoxGrid::txg_remove_highlight(std::optional<short> row)
{
    grid_.current_row = grid_.current_col = -1;
    grid_.highlight_row = -1;
    if (row) {
        if (!in_array(*row)) {
            invalid_row(QStringLiteral("txg_remove_highlight"));
            return;
        }
        grid_.rows[*row - 1].highlight_col = -1;
    }
    txg_repaint();
}

// ---- Reading ----

bool TextBoxGrid::txg_get_data(short row, short column, QString& text, colours::Rgb& colour, bool& highlighted)
{
    if (!in_array(row)) {
        invalid_row(QStringLiteral("txg_get_data"));
        grid_.current_row = -1;
        return false;
    }
    if (!in_columns(column)) {
        invalid_column(QStringLiteral("txg_get_data 2"));
        grid_.current_col = -1;
        return false;
    }
    const txg_row& source = grid_.rows[row - 1];
    text = grid_.data[row - 1].value(column - 1);
    colour = source.colours.value(column - 1, txg::Default_Cell);
    highlighted = source.highlight_col == column || grid_.highlight_row == row;
    grid_.current_row = row;
    grid_.current_col = column;
    return true;
}

QStringList TextBoxGrid::row_texts(short row) const
{
    if (!in_array(row))
        return {};
    QStringList texts = grid_.data[row - 1];
    while (texts.size() < grid_.col_count)
        texts << QString();
    return texts;
}

void TextBoxGrid::put_text(short row, short column, const QString& text)
{
    if (!in_array(row) || !in_columns(column))
        return;
    QStringList& texts = grid_.data[row - 1];
    while (texts.size() < grid_.col_count)
        texts << QString();
    texts[column - 1] = text;
}

void TextBoxGrid::put_colour(short row, short column, const colours::Rgb& colour)
{
    if (!in_array(row) || !in_columns(column))
        return;
    QVector<colours::Rgb>& colours = grid_.rows[row - 1].colours;
    if (colours.size() < grid_.col_count)
        colours.resize(grid_.col_count);
    colours[column - 1] = colour;
}

// ---- Painting ----

void TextBoxGrid::txg_show()
{
    grid_.element_guard = grid_.vscroll_guard = true;
    txg_refresh();
    grid_.element_guard = grid_.vscroll_guard = false;
}

void TextBoxGrid::txg_repaint()
{
    grid_.element_guard = true;
    txg_refresh();
    grid_.element_guard = false;
}

void TextBoxGrid::txg_map_element(int element, short& row, short& column) const
{
    row = column = -1;
    if (grid_.last_row == -1 || grid_.vis_cols <= 0)
        return;
    const int r = element / grid_.vis_cols;
    const int data_row = grid_.first_row + r;
    if (data_row > grid_.data.size())
        return;
    row = static_cast<short>(data_row);
    const int data_column = grid_.first_col + (element - grid_.vis_cols * r);
    column = data_column > grid_.col_count ? short(-1) : static_cast<short>(data_column);
}

void TextBoxGrid::paint_headers()
{
    for (int i = 0; i < headers_.size(); ++i) {
        const int column = grid_.first_col + i;
        const bool shown = column <= grid_.col_count && grid_.columns[column - 1].col_type != txg::Invisible;
        headers_[i].text = shown ? grid_.columns[column - 1].title : QString();
    }
}

void TextBoxGrid::paint_element(int element)
{
    txg_cell& cell = elements_[element];
    const bool visible = cell.visible;
    cell = txg_cell{};
    cell.visible = visible;
    short row = -1;
    short column = -1;
    txg_map_element(element, row, column);
    if (row != -1 && column != -1 && grid_.columns[column - 1].col_type != txg::Invisible) {
        const txg_column& definition = grid_.columns[column - 1];
        const txg_row& source = grid_.rows[row - 1];
        cell.text = grid_.data[row - 1].value(column - 1);
        cell.background = source.colours.value(column - 1, txg::Default_Cell);
        if (grid_.highlight_type == txg::Single_Cell && source.highlight_col == column)
            cell.background = txg::Highlight;
        if (definition.col_type == txg::Editable) {
            cell.locked = false;
            cell.tab_stop = true;
        }
        if (definition.col_tooltip)
            cell.tooltip = cell.text;
    }
    // A highlighted row covers the blank cells of invisible columns too.
    if (grid_.highlight_type == txg::Whole_Row && row != -1 && row == grid_.highlight_row)
        cell.background = txg::Highlight;
}

void TextBoxGrid::txg_refresh()
{
    paint_headers();
    for (int i = 0; i < elements_.size(); ++i)
        paint_element(i);
    if (on_paint_)
        on_paint_();
}

// ---- Events from the cells and bars ----

void TextBoxGrid::txg_click(int element)
{
    if (grid_.element_guard)
        return;
    short row = -1;
    short column = -1;
    txg_map_element(element, row, column);
    if (row == -1)
        return;
    grid_.current_row = row;
    grid_.current_col = column;
    if (grid_.highlight_type == txg::Whole_Row) {
        grid_.highlight_row = grid_.highlight_row == row ? short(-1) : row;
    } else if (grid_.highlight_type == txg::Single_Cell) {
        short& highlighted = grid_.rows[row - 1].highlight_col;
        highlighted = highlighted == column ? short(-1) : column;
    }
    txg_repaint();
}

void TextBoxGrid::txg_change(int element, const QString& typed, QString& old_text)
{
    if (grid_.element_guard)
        return;
    short row = -1;
    short column = -1;
    txg_map_element(element, row, column);
    if (row == -1 || column == -1) {
        // Typing in a cell that shows no data is wiped at once.
        elements_[element].text.clear();
        old_text.clear();
        if (on_paint_)
            on_paint_();
        return;
    }
    grid_.current_row = row;
    grid_.current_col = column;
    old_text = grid_.data[row - 1].value(column - 1);
    put_text(row, column, typed);
    elements_[element].text = typed;
}

void TextBoxGrid::txg_vscroll_change(short value)
{
    vscroll_.value = value;
    if (grid_.vscroll_guard || grid_.last_row == -1)
        return;
    grid_.first_row = value;
    txg_repaint();
}

void TextBoxGrid::txg_hscroll_change(short value)
{
    hscroll_.value = value;
    if (grid_.hscroll_guard)
        return;
    grid_.first_col = value;
    txg_repaint();
}
