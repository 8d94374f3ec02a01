#pragma once
// The grid over a record set: one row per record, rows chosen with the mouse
// and keyboard as in any table, and the choice read back as bookmarks.

#include "engine/recordset.h"

#include <QList>
#include <QTableView>

class RecordsetModel;

class DataGrid : public QTableView {
    Q_OBJECT
public:
    explicit DataGrid(QWidget* parent = nullptr);

    // Shows the records of `recordset` (not owned); Refresh reads them again.
    void set_recordset(engine::Recordset* recordset);
    void Refresh();
    // Shows only these fields, in this order, under these headers.
    void set_columns(const QStringList& fields, const QStringList& headers = {});
    // Shows a column's values through a Format picture ("dd mmm yyyy", "currency").
    void set_column_picture(int column, const QString& picture);
    RecordsetModel* model_of_records() const { return model_; }

    // The bookmarks of the chosen rows, in row order.
    QList<engine::Bookmark> SelBookmarks() const;
    // The bookmark of the current row; -1 when there is none.
    engine::Bookmark Bookmark() const;
    // Makes the row of this record current (and the only one chosen).
    bool set_Bookmark(engine::Bookmark mark);

signals:
    // A click on a column's heading.
    void HeadClick(int column);
    // The current row or column changed.
    void RowColChange();

private:
    RecordsetModel* model_;
};
