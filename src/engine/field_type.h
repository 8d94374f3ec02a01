#pragma once
// The value types of fields, as the database's column types declare them.

#include <QString>

namespace engine {

enum class FieldType { Unknown, Boolean, Byte, Integer, Long, Currency, Single, Double, Date, Text, Memo };

// The type a declared column type stands for: "COUNTER", "LONG", "SHORT",
// "BYTE", "BIT", "CURRENCY", "SINGLE", "DOUBLE", "DATE"/"DATETIME"/"TIME",
// "TEXT"/"TEXT(n)", "MEMO", and SQLite's own "INTEGER", "REAL".
FieldType field_type_of_declared(const QString& declared);

// The n of "TEXT(n)"; 255 for a plain TEXT; 0 when no limit applies.
int text_length_of_declared(const QString& declared);

}  // namespace engine
