#include "ui/toolkit/form_rows.h"

#include <QGridLayout>
#include <QLabel>

QLabel* label_for(QWidget* field, const QString& caption, QWidget* parent)
{
    auto* label = new QLabel(caption, parent);
    label->setBuddy(field);
    return label;
}

QLabel* bold_caption(const QString& text, QWidget* parent, QWidget* field)
{
    auto* caption = new QLabel(text, parent);
    QFont bold = caption->font();
    bold.setBold(true);
    caption->setFont(bold);
    if (field)
        caption->setBuddy(field);
    return caption;
}

QGridLayout* field_grid()
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(8);
    return grid;
}

void add_field_row(QGridLayout* grid, QWidget* field, const QString& caption, bool grows)
{
    const int row = grid->rowCount();
    QLabel* label = label_for(field, caption, field->parentWidget());
    grid->addWidget(label, row, 0, (grows ? Qt::AlignTop : Qt::AlignVCenter) | Qt::AlignRight);
    grid->addWidget(field, row, 1);
    if (grows)
        grid->setRowStretch(row, 1);
}

void keep_rows_at_top(QGridLayout* grid)
{
    for (int row = 0; row < grid->rowCount(); ++row)
        if (grid->rowStretch(row) > 0)
            return;
    grid->setRowStretch(grid->rowCount(), 1);
}
