#include "toolkit/recordset_model.h"

#include "engine/err.h"
#include "engine/vb_values.h"

RecordsetModel::RecordsetModel(QObject* parent) : QAbstractTableModel(parent) {}

RecordsetModel::~RecordsetModel() = default;

void RecordsetModel::set_recordset(engine::Recordset* recordset)
{
    recordset_ = recordset;
    fields_.clear();
    headers_.clear();
    if (recordset_) {
        fields_ = recordset_->field_names();
        headers_ = fields_;
    }
    refresh();
}

void RecordsetModel::set_columns(const QStringList& fields, const QStringList& headers)
{
    fields_ = fields;
    headers_ = headers.size() == fields.size() ? headers : fields;
    refresh();
}

void RecordsetModel::refresh()
{
    beginResetModel();
    marks_.clear();
    values_.clear();
    // A clone walks the rows without moving the record set's own cursor.
    std::unique_ptr<engine::Recordset> walk = recordset_ ? recordset_->Clone() : nullptr;
    if (walk && walk->RecordCount() > 0 && walk->MoveFirst()) {
        while (!walk->at_eof()) {
            marks_ << walk->bookmark();
            QVector<QVariant> row;
            for (const QString& field : fields_)
                row << walk->Fields(field);
            values_ << row;
            if (!walk->MoveNext())
                break;
        }
    }
    engine::Err().Clear();
    endResetModel();
}

engine::Bookmark RecordsetModel::bookmark_at(int row) const
{
    return row >= 0 && row < marks_.size() ? marks_[row] : -1;
}

int RecordsetModel::row_of(engine::Bookmark mark) const
{
    return static_cast<int>(marks_.indexOf(mark));
}

QString RecordsetModel::field_at(int column) const
{
    return fields_.value(column);
}

int RecordsetModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(marks_.size());
}

int RecordsetModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(fields_.size());
}

QVariant RecordsetModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= values_.size() || index.column() >= fields_.size())
        return {};
    const QVariant& value = values_[index.row()][index.column()];
    if (role == Qt::DisplayRole)
        return vb::CStr(value);
    if (role == Qt::EditRole)
        return value;
    return {};
}

QVariant RecordsetModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    if (orientation == Qt::Horizontal)
        return headers_.value(section);
    return section + 1;
}
