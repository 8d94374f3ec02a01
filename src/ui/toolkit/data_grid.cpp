#include "ui/toolkit/data_grid.h"

#include "toolkit/recordset_model.h"
#include "ui/toolkit/format_delegate.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <algorithm>

DataGrid::DataGrid(QWidget* parent) : QTableView(parent), model_(new RecordsetModel(this))
{
    setModel(model_);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &DataGrid::HeadClick);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { emit RowColChange(); });
}

void DataGrid::set_recordset(engine::Recordset* recordset)
{
    model_->set_recordset(recordset);
    resizeColumnsToContents();
}

void DataGrid::Refresh()
{
    model_->refresh();
}

void DataGrid::set_columns(const QStringList& fields, const QStringList& headers)
{
    model_->set_columns(fields, headers);
    resizeColumnsToContents();
}

void DataGrid::set_column_picture(int column, const QString& picture)
{
    delete itemDelegateForColumn(column);
    setItemDelegateForColumn(column, new FormatDelegate(picture, false, this));
    resizeColumnToContents(column);
}

QList<engine::Bookmark> DataGrid::SelBookmarks() const
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
    QList<engine::Bookmark> marks;
    for (const QModelIndex& row : rows)
        marks << model_->bookmark_at(row.row());
    return marks;
}

engine::Bookmark DataGrid::Bookmark() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() ? model_->bookmark_at(current.row()) : -1;
}

bool DataGrid::set_Bookmark(engine::Bookmark mark)
{
    const int row = model_->row_of(mark);
    if (row < 0)
        return false;
    // Explicitly, whatever keys happen to be held down.
    selectionModel()->setCurrentIndex(model_->index(row, 0),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    return true;
}
