#pragma once
// The rows of a record set as a table model, for the grid view: one row per
// record in the record set's order, one column per field. Each row carries
// the record's bookmark, so that a selection of rows is a list of bookmarks.

#include "engine/recordset.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>
#include <memory>

class RecordsetModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit RecordsetModel(QObject* parent = nullptr);
    ~RecordsetModel() override;

    // Shows the records of `recordset` (not owned); null shows nothing.
    // Headers default to the field names.
    void set_recordset(engine::Recordset* recordset);
    // Reads the records again, after the record set changed.
    void refresh();
    // Shows only these fields, in this order, under these headers.
    void set_columns(const QStringList& fields, const QStringList& headers = {});

    engine::Bookmark bookmark_at(int row) const;  // -1 outside the rows
    int row_of(engine::Bookmark mark) const;      // -1 when not shown
    QString field_at(int column) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    engine::Recordset* recordset_ = nullptr;
    QStringList fields_;
    QStringList headers_;
    QVector<engine::Bookmark> marks_;
    QVector<QVector<QVariant>> values_;
};
