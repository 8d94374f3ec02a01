#pragma once
// A grid column shown through a Format picture ("currency", a date picture),
// as the grid's column format does; the value itself is left as it is.

#include <QStyledItemDelegate>

class FormatDelegate : public QStyledItemDelegate {
public:
    FormatDelegate(QString picture, bool right_aligned, QObject* parent);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    QString picture_;
    bool right_aligned_;
};
