#pragma once
// The one stored form of dates and times: text "YYYY-MM-DD HH:MM:SS".
// A date alone is at 00:00:00; a time alone is on 1899-12-30, the zero date,
// which is also the date value 0. Date values are held as QDateTime in UTC
// so that no daylight-saving gap can make a valid date invalid.

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <optional>

namespace engine {

QDate zero_date();                 // 1899-12-30
QDateTime zero_datetime();         // 1899-12-30 00:00:00
QDateTime make_datetime(QDate date, QTime time = QTime(0, 0, 0));

QString date_to_storage(const QDateTime& value);
std::optional<QDateTime> storage_to_date(const QString& text);

// Day numbers since the zero date with the time as a fraction (the platform's date value).
double date_to_serial(const QDateTime& value);
// An invalid QDateTime for a number outside the platform's dates.
QDateTime serial_to_date(double serial);

// The stored form of any value a date column accepts: a QDate/QDateTime/QTime,
// a number (serial), the stored form itself, "mm/dd/yyyy[ hh:nn[:ss]]" (the form
// of date literals in SQL text), or an ISO date. Null stays null.
std::optional<QString> to_storage_date(const QVariant& value);

// The present moment, to the second.
QDateTime now();

}  // namespace engine
