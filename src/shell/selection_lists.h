#pragma once
// The growing lists of chosen ids: the selections made for invoicing and
// reports, and the pupils whose registers changed. Each list always has at
// least one element and its last element is the free slot, so a list of one
// element holds nothing.

#include <QDate>
#include <QVector>

template <typename T>
class GrowingList {
public:
    GrowingList() { reset(); }
    void reset() { items_ = QVector<T>(1); }
    // Stores the value in the free slot and adds a new free slot.
    void append(const T& value)
    {
        items_.back() = value;
        items_.append(T());
    }
    bool contains(const T& value) const { return items_.mid(0, items_.size() - 1).contains(value); }
    // The chosen values, without the free slot.
    QVector<T> chosen() const { return items_.mid(0, items_.size() - 1); }
    bool is_empty() const { return items_.size() <= 1; }
    int upper_bound() const { return static_cast<int>(items_.size()) - 1; }

private:
    QVector<T> items_;
};

using IdList = GrowingList<qint32>;
using DateList = GrowingList<QDate>;

IdList& Sel_Terms();
IdList& Sel_Courses();
IdList& Sel_Activities();
IdList& Sel_Pupils();
DateList& Sel_Activity_Dates();
IdList& Changed_Pupils();
bool& Glob_Keep_Changed_List();

// Resets the changed-pupils list and the selection lists, at start-up and
// whenever a database is opened.
void Reset_Changed_Lists();

// Adds a pupil whose register changed, once, when the user keeps such a list.
void Glob_Add_Changed_Pupil(qint32 pupil_id);
