#pragma once
// The run-time value rules that the program's validations rely on: what counts
// as a number or a date, the conversions with their overflow and mismatch
// failures, the date functions and the Format pictures the screens use.
//
// Values are QVariants; a null or invalid QVariant is the platform's Null.
// Text is read with the locale of engine::locale_source(): its decimal and
// group separators, its currency symbol, and its short date order (IDATE) for
// dates written with numbers only. Date values are QDateTime in UTC
// (engine::make_datetime); only their wall-clock date and time count.
//
// Conversions never throw. On failure they leave the output untouched, set
// engine::Err() and return false:
//   6  "Overflow"             the value does not fit the target type,
//   13 "Type mismatch"        the text is not a number (or a date, for CDate),
//   94 "Invalid use of Null"  the value is null.

#include "engine/currency.h"

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <cstdint>

namespace vb {

// Rounds to the nearest whole number, halves to the even one: 2.5 -> 2, 3.5 -> 4.
double round_half_even(double value);

// True for numbers, booleans, currency and text that reads as a number:
// surrounding blanks, a sign before or after, parentheses for a negative,
// the locale's currency symbol before or after, group separators in the
// whole part, the locale's decimal separator, an exponent ("1e3", "1d3"),
// and &H / &O prefixed hexadecimal and octal. Null, "" and dates are not numeric.
bool IsNumeric(const QVariant& value);

// True for date and time values and for text that CDate reads as a date or
// time. Plain numbers (and numeric text) are not dates.
bool IsDate(const QVariant& value);

bool CBool(const QVariant& value, bool& result);
bool CByte(const QVariant& value, uint8_t& result);
bool CInt(const QVariant& value, int16_t& result);   // banker's rounding
bool CLng(const QVariant& value, int32_t& result);   // banker's rounding
bool CCur(const QVariant& value, engine::Currency& result);  // four places, banker's rounding
bool CSng(const QVariant& value, float& result);
bool CDbl(const QVariant& value, double& result);

// Dates and times. Text is read as the platform reads typed dates:
//  - numbers only ("05/01/2026", "5.1.26", "05-01"): in the locale's short date
//    order, falling back to the other order when that gives no valid date; a
//    first number of three or four digits is the year ("2026-01-05");
//  - with a month name or its first three letters, in English or in the
//    locale's language: "5 Jan 2026", "05-Jan-2026", "Jan 5 2026",
//    "2026 January 5", "5 Jan" (this year), "Jan 2026" (its first day);
//  - two-digit years: 00-29 are 2000-2029, 30-99 are 1930-1999;
//  - times "10:30", "10:30:15", "2:30 pm", "10 am", alone (on the zero date,
//    1899-12-30) or after the date. ':' always separates a time; so does the
//    locale's time separator when it isn't also its date separator, and, when
//    it is, a text of just two numbers such as "10.30".
//  - day names ("Monday") and commas are passed over.
// Numbers are date serials (days since 1899-12-30, the time as a fraction);
// numeric text that is no date is read as a serial too.
bool CDate(const QVariant& value, QDateTime& result);

// The value's plain text, as the platform shows a value with no picture:
// numbers with up to 15 significant digits and the locale's decimal separator,
// "True"/"False", dates as numbers in the locale's short date order with a
// four-digit year (plus " hh:nn:ss" when there is a time; the time alone on
// the zero date). Null gives "".
QString CStr(const QVariant& value);

// Format with a picture. Supported:
//  - date and time pictures, tokens case-insensitive: d dd ddd dddd, m mm mmm
//    mmmm (m/mm right after an hour token are minutes, as in "hh:mm"), yy yyyy,
//    y (day of the year), h hh, n nn, s ss, w (weekday 1-7), ww (week of the
//    year), q, and the am/pm markers "ampm" (lower case am/pm), "AMPM",
//    "AM/PM", "am/pm", "A/P", "a/p", which put the hours on a 12-hour clock.
//    Any other character stands for itself, "/" and ":" included; "\x" and
//    "quoted text" are literal. Month and day names are English.
//  - "currency": the locale's currency format with two decimals;
//    "fixed" ("0.00"), "standard" ("#,##0.00"), "percent" ("0.00%"),
//    "general number" (the plain text);
//  - number pictures of 0, #, one decimal point, group commas and %, with
//    literal text around them, and up to three ';' sections (positive,
//    negative, zero). Halves round away from zero, as Format does. The
//    decimal and group separators are the locale's.
// A null value gives "". An empty picture gives CStr(value). Text that is not
// a date under a date picture, or not a number under a number picture, comes
// back unchanged.
QString Format(const QVariant& value, const QString& picture);

// Adds whole intervals ("yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s";
// the number's fraction is dropped). Adding months keeps the day where the
// month has it and otherwise takes the month's last day: 31 Jan + 1 month is
// 28 or 29 Feb. An unknown interval or a result outside years 100-9999 gives
// an invalid QDateTime and Err 5.
QDateTime DateAdd(const QString& interval, double number, const QDateTime& date);

// 1 Sunday ... 7 Saturday.
int Weekday(const QDateTime& date);

// The number of interval boundaries between a and b (b later gives a positive
// count): "yyyy", "q", "m", "y"/"d" (midnights), "w" (whole weeks), "ww"
// (Sundays), "h", "n", "s". An unknown interval gives 0 and Err 5.
qint64 DateDiff(const QString& interval, const QDateTime& a, const QDateTime& b);

}  // namespace vb
