#pragma once
// Values as a school database holds them: the SQLite literal of a value a
// test writes straight into a table, and an amount read back.

#include <QString>
#include <QVariant>

namespace testing_support {

// NULL, 0 or 1, a number, a date as the database stores a date, or quoted text.
QString sql_literal(const QVariant& value);

// An amount read back, whether a money field or a sum.
double money(const QVariant& value);

}  // namespace testing_support
