#pragma once
// Values as a school database holds them: the SQLite literal of a value a
// test writes straight into a table, and money read back.

#include <QString>
#include <QVariant>

namespace testing_support {

// NULL, 0 or 1, a number, a date as the database stores a date, or quoted text.
QString sql_literal(const QVariant& value);

// Money read back, whether a money field or a sum, as plain text: "150",
// "-42", "12.5", "155.8333"; "null" for none.
QString money_text(const QVariant& value);

}  // namespace testing_support
