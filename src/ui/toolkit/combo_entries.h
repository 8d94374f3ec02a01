#pragma once
// A list of many entries, each carrying its key, made away from the combo
// and handed over in one piece: a combo filled entry by entry is slow.

#include <QList>
#include <QString>

class QComboBox;
class QStandardItem;

class ComboEntries {
public:
    explicit ComboEntries(QComboBox* combo) : combo_(combo) {}
    void add(const QString& text, int key);
    // The combo shows the entries, none chosen.
    void hand_over();

private:
    QComboBox* combo_;
    QList<QStandardItem*> items_;
};
