// How a field shows its value: numbers, money, dates and times.

#include "reportengine/report_layout.h"

#include <cmath>

namespace reportengine {

namespace {

QString two_digits(int n)
{
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

QString date_text(const QDate& d, const FieldFormat& f)
{
    static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const QString day = two_digits(d.day());
    const QString month = f.month_in_letters ? QLatin1String(months[d.month() - 1]) : two_digits(d.month());
    const QString year = QString::number(d.year());
    const QString& s1 = f.date_separator_1;
    const QString& s2 = f.date_separator_2;
    switch (f.date_order) {
    case 0: return month + s1 + day + s2 + year;
    case 2: return year + s1 + month + s2 + day;
    default: return day + s1 + month + s2 + year;
    }
}

// A difference of money that is nothing to the places shown prints as 0,
// never as "-0.00".
double shown_number(double n, int decimals)
{
    return std::abs(n) < 0.5 * std::pow(10.0, -decimals) ? 0.0 : n;
}

}  // namespace

QString formatted(const Value& value, const FieldFormat& format, const QLocale& locale)
{
    using T = FieldFormat::Type;
    if (value.is_null())
        return QString();
    switch (format.type) {
    case T::Number:
        if (value.kind() == Value::Kind::Number)
            return QString::number(shown_number(value.as_number(), format.decimals), 'f', format.decimals);
        break;
    case T::Currency:
        if (value.kind() == Value::Kind::Number)
            return locale.toCurrencyString(shown_number(value.as_number(), format.decimals), locale.currencySymbol(), format.decimals);
        break;
    case T::Date:
    case T::DateTime:
    case T::Time:
        if (value.kind() == Value::Kind::Date) {
            const QDateTime& dt = value.as_date();
            const QString time = two_digits(dt.time().hour()) + format.time_separator + two_digits(dt.time().minute());
            if (format.type == T::Time)
                return time;
            const QString date = date_text(dt.date(), format);
            return format.type == T::Date ? date : date + QLatin1Char(' ') + time;
        }
        break;
    case T::General:
    case T::Text:
    case T::Boolean:
        break;
    }
    if (value.kind() == Value::Kind::Date)
        return date_text(value.as_date().date(), format);
    return value.to_display_text();
}

}  // namespace reportengine
