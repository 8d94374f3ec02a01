#include "ui/toolkit/format_delegate.h"

#include "engine/vb_values.h"

FormatDelegate::FormatDelegate(QString picture, bool right_aligned, QObject* parent)
    : QStyledItemDelegate(parent), picture_(std::move(picture)), right_aligned_(right_aligned)
{
}

void FormatDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = vb::Format(index.data(Qt::EditRole), picture_);
    if (right_aligned_)
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
}
