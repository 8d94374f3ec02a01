#pragma once
// Fields and their captions laid out in two columns, the caption on the
// left and tied to its field, so that the field is found by its caption
// (by a mnemonic and by assistive technology).

#include <QString>

class QGridLayout;
class QLabel;
class QWidget;

// A caption tied to its field.
QLabel* label_for(QWidget* field, const QString& caption, QWidget* parent);

// A caption in bold, standing over a list or grid; tied to it when given.
QLabel* bold_caption(const QString& text, QWidget* parent, QWidget* field = nullptr);

// A grid of caption and field, the fields taking the width.
QGridLayout* field_grid();

// A field and its caption on the next row of the grid. A growing field
// (a notes box) takes the spare height, its caption at its top.
void add_field_row(QGridLayout* grid, QWidget* field, const QString& caption, bool grows = false);

// Unless a row grows, the rows stay at the top and the space goes below them.
void keep_rows_at_top(QGridLayout* grid);
