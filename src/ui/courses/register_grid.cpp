#include "ui/courses/register_grid.h"

#include "toolkit/recordset_model.h"

#include <QFocusEvent>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <algorithm>

RegisterGrid::RegisterGrid(QWidget* parent) : DataGrid(parent)
{
    // A click toggles its row; moving with the keys leaves the choice to current_moved.
    setSelectionMode(QAbstractItemView::MultiSelection);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) { current_moved(current); });
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &RegisterGrid::selection_changed);
    // New rows come with nothing chosen.
    connect(model(), &QAbstractItemModel::modelReset, this, [this] { order_.clear(); });
}

void RegisterGrid::choose_all()
{
    selectAll();
}

void RegisterGrid::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex before = currentIndex();
    const QModelIndex pressed = indexAt(event->position().toPoint());
    pressing_ = true;
    DataGrid::mousePressEvent(event);
    pressing_ = false;
    // A click on the row already current moves nowhere, but is still the
    // secretary going to that row.
    if (pressed.isValid() && before.isValid() && pressed.row() == before.row() && event->button() == Qt::LeftButton)
        emit Row_Reached();
}

void RegisterGrid::mouseMoveEvent(QMouseEvent* event)
{
    pressing_ = event->buttons() != Qt::NoButton;
    DataGrid::mouseMoveEvent(event);
    pressing_ = false;
}

void RegisterGrid::focusInEvent(QFocusEvent* event)
{
    adopting_ = true;
    DataGrid::focusInEvent(event);
    adopting_ = false;
}

void RegisterGrid::current_moved(const QModelIndex& current)
{
    if (adopting_ || !current.isValid() || model_of_records()->bookmark_at(current.row()) < 0)
        return;
    // The row the click is on is chosen or dropped by the click itself.
    if (!pressing_)
        selectionModel()->select(current, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    emit Row_Reached();
}

void RegisterGrid::selection_changed(const QItemSelection& selected, const QItemSelection& deselected)
{
    for (const QModelIndex& index : deselected.indexes())
        if (index.column() == 0)
            order_.removeAll(model_of_records()->bookmark_at(index.row()));
    QList<int> rows;
    for (const QModelIndex& index : selected.indexes())
        if (index.column() == 0)
            rows << index.row();
    std::sort(rows.begin(), rows.end());
    for (const int row : rows) {
        const engine::Bookmark mark = model_of_records()->bookmark_at(row);
        if (mark >= 0 && !order_.contains(mark))
            order_ << mark;
    }
}
