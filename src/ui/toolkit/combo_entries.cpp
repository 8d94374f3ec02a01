#include "ui/toolkit/combo_entries.h"

#include <QComboBox>
#include <QStandardItemModel>

void ComboEntries::add(const QString& text, int key)
{
    auto* item = new QStandardItem(text);
    item->setData(key, Qt::UserRole);
    item->setEditable(false);
    items_ << item;
}

void ComboEntries::hand_over()
{
    auto* model = new QStandardItemModel(combo_);
    if (!items_.isEmpty())
        model->insertColumn(0, items_);
    // The combo deletes the model it held, which is its own.
    combo_->setModel(model);
    combo_->setCurrentIndex(-1);
    items_.clear();
}
