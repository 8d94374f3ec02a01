#pragma once
// Rows of a record set as comma-separated text with a header line.

#include <QString>
#include <QTextStream>
#include <QVariant>

namespace engine {
class Recordset;
}

namespace cli {
// A value as the tool prints it: dates as YYYY-MM-DD (with the time when it
// isn't midnight), money with up to four places, booleans as True/False.
QString printable(const QVariant& value);
void print_csv(engine::Recordset& rows, QTextStream& stream);
}  // namespace cli
