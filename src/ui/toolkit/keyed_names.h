#pragma once
// A combo box list filled from a query: one entry for each row with a name,
// carrying the row's key as its data.

#include <QString>

class QComboBox;

// Adds the rows of `sql` to the combo, after what it holds; rows whose name
// is Null are passed over. False when the rows can't be read.
bool add_keyed_names(QComboBox* combo, const QString& sql, const QString& name_field, const QString& key_field);
