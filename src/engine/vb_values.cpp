#include "engine/vb_values.h"

#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/locale_source.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace vb {

namespace {

using engine::Currency;
using engine::Err;
namespace vberr = engine::vberr;

// The date serials the platform accepts: 1 Jan 100 to 31 Dec 9999.
constexpr double MinDateSerial = -657434.0;
constexpr double MaxDateSerial = 2958465.999988426;

bool is_null(const QVariant& value)
{
    return !value.isValid() || value.isNull();
}

bool fail(int number)
{
    switch (number) {
    case vberr::Overflow: Err().Raise(number, QStringLiteral("Overflow")); break;
    case vberr::TypeMismatch: Err().Raise(number, QStringLiteral("Type mismatch")); break;
    case vberr::InvalidUseOfNull: Err().Raise(number, QStringLiteral("Invalid use of Null")); break;
    default: Err().Raise(number, QStringLiteral("Invalid procedure call or argument")); break;
    }
    return false;
}

bool is_ascii_digit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool is_currency(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<Currency>();
}

bool is_date_type(const QVariant& value)
{
    const int type = value.typeId();
    return type == QMetaType::QDateTime || type == QMetaType::QDate || type == QMetaType::QTime;
}

bool is_number_type(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
    case QMetaType::Short: case QMetaType::UShort: case QMetaType::Long: case QMetaType::ULong:
    case QMetaType::Char: case QMetaType::SChar: case QMetaType::UChar:
    case QMetaType::Double: case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

QLocale current_locale()
{
    return engine::locale_source().locale();
}

// One value of the locale source, without any closing zero; empty when it can't be read.
QString locale_info(int type)
{
    QString value;
    int error = 0;
    if (!engine::locale_source().get_info(type, value, error))
        return QString();
    while (value.endsWith(QChar(0)))
        value.chop(1);
    return value;
}

// 0 month first, 1 day first, 2 year first.
int short_date_order()
{
    bool ok = false;
    const int order = locale_info(engine::lctype::IDATE).trimmed().toInt(&ok);
    if (ok && order >= 0 && order <= 2)
        return order;
    return engine::QtLocaleSource::date_order_of(current_locale().dateFormat(QLocale::ShortFormat));
}

// ---------------------------------------------------------------------------
// Numbers in text

// A number read from text, exactly: sign, digits and a power of ten.
struct Decimal {
    bool negative = false;
    QString digits;   // no leading or trailing zeros; empty for zero
    int int_len = 0;  // how many of the digits stand before the decimal point (may be <= 0 or > size)

    bool is_zero() const { return digits.isEmpty(); }

    void normalise()
    {
        qsizetype lead = 0;
        while (lead < digits.size() && digits[lead] == QLatin1Char('0'))
            ++lead;
        digits.remove(0, lead);
        int_len -= static_cast<int>(lead);
        while (digits.endsWith(QLatin1Char('0')))
            digits.chop(1);
        if (digits.isEmpty()) {
            int_len = 0;
            negative = false;
        }
    }

    double to_double() const
    {
        if (is_zero())
            return 0.0;
        const QString text = QStringLiteral("0.%1e%2").arg(digits).arg(int_len);
        const double value = text.toDouble();
        return negative ? -value : value;
    }

    // Rounds to `places` decimals, halves away from zero when `half_even` is
    // false, to the even digit when it is true.
    void round_to(int places, bool half_even)
    {
        const qsizetype keep = int_len + places;
        if (keep >= digits.size())
            return;
        bool up = false;
        if (keep >= 0) {
            const QChar first = digits[keep];
            if (first > QLatin1Char('5')) {
                up = true;
            } else if (first == QLatin1Char('5')) {
                const bool more = keep + 1 < digits.size();  // digits never end in 0
                const bool odd = keep > 0 && (digits[keep - 1].digitValue() % 2) == 1;
                up = !half_even || more || odd;
            }
            digits.truncate(keep);
        } else {
            digits.clear();  // the first dropped digit is a leading zero: round down
        }
        if (up) {
            qsizetype i = digits.size() - 1;
            while (i >= 0 && digits[i] == QLatin1Char('9')) {
                digits[i] = QLatin1Char('0');
                --i;
            }
            if (i >= 0) {
                digits[i] = QChar(digits[i].unicode() + 1);
            } else {
                digits.prepend(QLatin1Char('1'));
                ++int_len;
            }
        }
        const bool sign = negative;
        normalise();
        if (!is_zero())
            negative = sign;
    }

    // The whole part and `places` decimals, as digit strings.
    QString whole_digits() const
    {
        if (int_len <= 0)
            return QString();
        return digits.left(int_len).leftJustified(int_len, QLatin1Char('0'));
    }
    QString fraction_digits(int places) const
    {
        QString fraction;
        for (int i = 0; i < places; ++i) {
            const qsizetype at = int_len + i;
            fraction += (at >= 0 && at < digits.size()) ? digits[at] : QLatin1Char('0');
        }
        return fraction;
    }

    static Decimal from_double(double value)
    {
        Decimal d;
        if (value == 0.0 || !std::isfinite(value))
            return d;
        d.negative = value < 0;
        // Fifteen significant digits, as the platform shows a double.
        const QString text = QString::number(std::fabs(value), 'e', 14);
        const qsizetype e = text.indexOf(QLatin1Char('e'));
        d.digits = text.left(e).remove(QLatin1Char('.'));
        d.int_len = text.mid(e + 1).toInt() + 1;
        d.normalise();
        return d;
    }

    static Decimal from_currency(Currency value)
    {
        Decimal d;
        const int64_t units = value.units();
        d.negative = units < 0;
        const uint64_t magnitude = units < 0 ? 0 - static_cast<uint64_t>(units) : static_cast<uint64_t>(units);
        d.digits = QString::number(magnitude);
        d.int_len = static_cast<int>(d.digits.size()) - 4;
        d.normalise();
        return d;
    }
};

// Reads text as the platform reads a number: blanks around, a sign before or
// after, parentheses, the currency symbol before or after, group separators
// in the whole part, the locale's decimal separator, an exponent, &H and &O.
std::optional<Decimal> read_number(const QString& text)
{
    const QLocale locale = current_locale();
    const QString decimal = locale.decimalPoint();
    const QString group = locale.groupSeparator();
    const QString symbol = locale.currencySymbol(QLocale::CurrencySymbol);
    const bool group_is_blank = group.size() == 1 && group[0].isSpace();

    const qsizetype end = text.size();
    qsizetype i = 0;
    const auto at = [&](const QString& s) {
        return !s.isEmpty() && QStringView(text).mid(i).startsWith(s, Qt::CaseInsensitive);
    };
    const auto skip_blanks = [&] {
        while (i < end && text[i].isSpace())
            ++i;
    };

    Decimal number;
    bool sign_seen = false;
    bool symbol_seen = false;
    bool paren_open = false;
    bool paren_closed = false;
    // A sign and the currency symbol may stand once each, before or after the digits.
    const auto take_sign_or_symbol = [&](QChar c) {
        if (!sign_seen && (c == QLatin1Char('+') || c == QLatin1Char('-'))) {
            sign_seen = true;
            number.negative = c == QLatin1Char('-');
            ++i;
            return true;
        }
        if (!symbol_seen && at(symbol)) {
            symbol_seen = true;
            i += symbol.size();
            return true;
        }
        return false;
    };

    // Before the digits: '(' first, then a sign and the currency symbol in any order.
    skip_blanks();
    if (i < end && text[i] == QLatin1Char('(')) {
        paren_open = true;
        ++i;
    }
    for (;;) {
        skip_blanks();
        if (i >= end)
            return std::nullopt;
        if (!take_sign_or_symbol(text[i]))
            break;
    }

    if (text[i] == QLatin1Char('&') && i + 1 < end) {
        // &H hexadecimal, &O octal.
        const QChar kind = text[i + 1].toUpper();
        const int base = kind == QLatin1Char('H') ? 16 : kind == QLatin1Char('O') ? 8 : 0;
        if (base == 0)
            return std::nullopt;
        i += 2;
        const qsizetype start = i;
        while (i < end && text[i].isLetterOrNumber())
            ++i;
        bool ok = false;
        const qulonglong value = text.mid(start, i - start).toULongLong(&ok, base);
        if (!ok || i == start)
            return std::nullopt;
        number.digits = QString::number(value);
        number.int_len = static_cast<int>(number.digits.size());
    } else {
        QString whole;
        QString fraction;
        while (i < end) {
            if (is_ascii_digit(text[i])) {
                whole += text[i];
                ++i;
                continue;
            }
            // A group separator counts between digits only.
            const qsizetype skip = at(group) && group != decimal ? group.size()
                                   : group_is_blank && text[i].isSpace() ? 1
                                                                         : 0;
            if (skip > 0 && !whole.isEmpty() && i + skip < end && is_ascii_digit(text[i + skip])) {
                i += skip;
                continue;
            }
            break;
        }
        if (at(decimal)) {
            i += decimal.size();
            while (i < end && is_ascii_digit(text[i])) {
                fraction += text[i];
                ++i;
            }
        }
        if (whole.isEmpty() && fraction.isEmpty())
            return std::nullopt;
        int exponent = 0;
        if (i < end && QStringLiteral("eEdD").contains(text[i])) {
            qsizetype j = i + 1;
            bool exponent_negative = false;
            if (j < end && (text[j] == QLatin1Char('+') || text[j] == QLatin1Char('-'))) {
                exponent_negative = text[j] == QLatin1Char('-');
                ++j;
            }
            const qsizetype start = j;
            while (j < end && is_ascii_digit(text[j])) {
                if (exponent < 100000)
                    exponent = exponent * 10 + text[j].digitValue();
                ++j;
            }
            if (j == start)
                return std::nullopt;
            if (exponent_negative)
                exponent = -exponent;
            i = j;
        }
        number.digits = whole + fraction;
        number.int_len = static_cast<int>(whole.size()) + exponent;
    }

    // After the digits: a sign, the currency symbol, the closing parenthesis.
    for (;;) {
        skip_blanks();
        if (i >= end)
            break;
        const QChar c = text[i];
        if (take_sign_or_symbol(c))
            continue;
        if (paren_open && !paren_closed && c == QLatin1Char(')')) {
            paren_closed = true;
            ++i;
        } else {
            return std::nullopt;
        }
    }
    if (paren_open) {
        if (!paren_closed || sign_seen)
            return std::nullopt;
        number.negative = true;
    }
    number.normalise();
    return number;
}

// ---------------------------------------------------------------------------
// Dates in text

int full_year(int value, int digits)
{
    if (digits <= 2)
        return value < 30 ? 2000 + value : 1900 + value;
    return value;
}

QDate valid_date(int year, int month, int day)
{
    if (year < 100 || year > 9999)
        return QDate();
    const QDate date(year, month, day);
    return date.isValid() ? date : QDate();
}

bool same_word(const QString& word, const QString& name)
{
    QString plain = name.toLower();
    while (plain.endsWith(QLatin1Char('.')))
        plain.chop(1);
    return !plain.isEmpty() && word == plain;
}

// 1-12 for a month's name or abbreviation, in English or in the locale's language; 0 otherwise.
int month_of_word(const QString& word, const QLocale& locale)
{
    const QLocale english = QLocale::c();
    for (int m = 1; m <= 12; ++m) {
        if (same_word(word, english.monthName(m, QLocale::LongFormat))
            || same_word(word, english.monthName(m, QLocale::ShortFormat))
            || same_word(word, locale.monthName(m, QLocale::LongFormat))
            || same_word(word, locale.monthName(m, QLocale::ShortFormat))
            || same_word(word, locale.standaloneMonthName(m, QLocale::LongFormat))
            || same_word(word, locale.standaloneMonthName(m, QLocale::ShortFormat)))
            return m;
    }
    return word == QLatin1String("sept") ? 9 : 0;
}

bool is_day_word(const QString& word, const QLocale& locale)
{
    const QLocale english = QLocale::c();
    for (int d = 1; d <= 7; ++d) {
        if (same_word(word, english.dayName(d, QLocale::LongFormat))
            || same_word(word, english.dayName(d, QLocale::ShortFormat))
            || same_word(word, locale.dayName(d, QLocale::LongFormat))
            || same_word(word, locale.dayName(d, QLocale::ShortFormat)))
            return true;
    }
    return false;
}

struct DateToken {
    enum Kind { Number, Month, Am, Pm, TimeSep, Sep } kind;
    int value = 0;   // the number, or the month
    int digits = 0;  // how many digits the number was written with
    QChar sep;       // the separator character
};

std::optional<QDateTime> read_date(const QString& raw)
{
    const QString text = raw.trimmed();
    if (text.isEmpty())
        return std::nullopt;
    const QLocale locale = current_locale();
    const QString date_sep = locale_info(engine::lctype::SDATE);
    const QString time_sep = locale_info(engine::lctype::STIME).trimmed();
    // The locale's time separator marks a time unless it also separates dates.
    const QChar extra_time_sep = time_sep.size() == 1 && time_sep != date_sep ? time_sep[0] : QChar();
    const QString am_text = locale.amText().toLower();
    const QString pm_text = locale.pmText().toLower();

    QList<DateToken> tokens;
    for (qsizetype i = 0; i < text.size();) {
        const QChar c = text[i];
        if (is_ascii_digit(c)) {
            qsizetype j = i;
            while (j < text.size() && is_ascii_digit(text[j]))
                ++j;
            if (j - i > 9)
                return std::nullopt;
            tokens.append({DateToken::Number, text.mid(i, j - i).toInt(), static_cast<int>(j - i), QChar()});
            i = j;
        } else if (c.isLetter()) {
            qsizetype j = i;
            while (j < text.size() && text[j].isLetter())
                ++j;
            const QString word = text.mid(i, j - i).toLower();
            i = j;
            if (const int month = month_of_word(word, locale))
                tokens.append({DateToken::Month, month, 0, QChar()});
            else if (word == QLatin1String("am") || word == QLatin1String("a") || same_word(word, am_text))
                tokens.append({DateToken::Am, 0, 0, QChar()});
            else if (word == QLatin1String("pm") || word == QLatin1String("p") || same_word(word, pm_text))
                tokens.append({DateToken::Pm, 0, 0, QChar()});
            else if (!is_day_word(word, locale))
                return std::nullopt;
        } else if (c == QLatin1Char(':') || (!extra_time_sep.isNull() && c == extra_time_sep)) {
            tokens.append({DateToken::TimeSep, 0, 0, c});
            ++i;
        } else if (c.isSpace() || QStringLiteral("/-.,").contains(c) || date_sep.contains(c)) {
            tokens.append({DateToken::Sep, 0, 0, c});
            ++i;
        } else {
            return std::nullopt;
        }
    }
    if (tokens.isEmpty() || !text[0].isLetterOrNumber())
        return std::nullopt;

    // The locale's time separator when it is also the date separator: a text of
    // two numbers only, the second of two digits, is a time ("10.30").
    if (!time_sep.isEmpty() && extra_time_sep.isNull()) {
        QList<DateToken> core;
        for (const DateToken& t : tokens)
            if (!(t.kind == DateToken::Sep && t.sep.isSpace()))
                core.append(t);
        if (core.size() >= 3 && core.size() <= 4 && core[0].kind == DateToken::Number
            && core[1].kind == DateToken::Sep && core[1].sep == time_sep[0] && core[2].kind == DateToken::Number
            && core[2].digits == 2 && (core.size() == 3 || core[3].kind == DateToken::Am || core[3].kind == DateToken::Pm)) {
            for (DateToken& t : tokens)
                if (t.kind == DateToken::Sep && t.sep == time_sep[0])
                    t.kind = DateToken::TimeSep;
        }
    }

    // The time: hours, minutes and seconds joined by time separators, and the am/pm marker.
    std::vector<bool> used(tokens.size(), false);
    int hour = -1;
    int minute = 0;
    int second = 0;
    qsizetype last_time_token = -1;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != DateToken::TimeSep)
            continue;
        if (hour >= 0 || i == 0 || tokens[i - 1].kind != DateToken::Number || i + 1 >= tokens.size()
            || tokens[i + 1].kind != DateToken::Number)
            return std::nullopt;
        hour = tokens[i - 1].value;
        minute = tokens[i + 1].value;
        used[i - 1] = used[i] = used[i + 1] = true;
        last_time_token = i + 1;
        if (i + 3 < tokens.size() && tokens[i + 2].kind == DateToken::TimeSep && tokens[i + 3].kind == DateToken::Number) {
            second = tokens[i + 3].value;
            used[i + 2] = used[i + 3] = true;
            last_time_token = i + 3;
        }
        break;
    }
    int half = 0;  // 1 am, 2 pm
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != DateToken::Am && tokens[i].kind != DateToken::Pm)
            continue;
        if (half != 0)
            return std::nullopt;
        half = tokens[i].kind == DateToken::Am ? 1 : 2;
        used[i] = true;
        // The marker follows the time, or a lone hour ("10 am").
        qsizetype before = i - 1;
        while (before >= 0 && tokens[before].kind == DateToken::Sep && tokens[before].sep.isSpace())
            --before;
        if (hour >= 0) {
            if (before != last_time_token)
                return std::nullopt;
        } else {
            if (before < 0 || tokens[before].kind != DateToken::Number)
                return std::nullopt;
            hour = tokens[before].value;
            used[before] = true;
        }
    }
    for (qsizetype i = 0; i < tokens.size(); ++i)
        if (!used[i] && tokens[i].kind == DateToken::TimeSep)
            return std::nullopt;

    QTime time(0, 0, 0);
    const bool has_time = hour >= 0;
    if (has_time) {
        if (half != 0) {
            if (hour > 12)
                return std::nullopt;
            if (half == 1 && hour == 12)
                hour = 0;
            else if (half == 2 && hour < 12)
                hour += 12;
        }
        time = QTime(hour, minute, second);
        if (!time.isValid())
            return std::nullopt;
    }

    // The date: what is left, numbers and at most one month name.
    QList<DateToken> numbers;
    int month_name = 0;
    for (qsizetype i = 0; i < tokens.size(); ++i) {
        if (used[i])
            continue;
        if (tokens[i].kind == DateToken::Number) {
            numbers.append(tokens[i]);
        } else if (tokens[i].kind == DateToken::Month) {
            if (month_name != 0)
                return std::nullopt;
            month_name = tokens[i].value;
        }
    }
    const auto year_like = [](const DateToken& t) { return t.digits >= 3 || t.value > 31; };
    const auto year_of = [](const DateToken& t) { return full_year(t.value, t.digits); };
    const int this_year = engine::now().date().year();
    const int order = short_date_order();

    QDate date;
    if (month_name != 0) {
        if (numbers.size() == 2) {
            const DateToken& a = numbers[0];
            const DateToken& b = numbers[1];
            if (year_like(a) && !year_like(b))
                date = valid_date(year_of(a), month_name, b.value);
            else
                date = valid_date(year_of(b), month_name, a.value);
        } else if (numbers.size() == 1) {
            date = year_like(numbers[0]) ? valid_date(year_of(numbers[0]), month_name, 1)
                                         : valid_date(this_year, month_name, numbers[0].value);
        }
        if (!date.isValid())
            return std::nullopt;
    } else if (numbers.size() == 3) {
        const DateToken& a = numbers[0];
        const DateToken& b = numbers[1];
        const DateToken& c = numbers[2];
        const QDate ymd = valid_date(year_of(a), b.value, c.value);
        const QDate mdy = valid_date(year_of(c), a.value, b.value);
        const QDate dmy = valid_date(year_of(c), b.value, a.value);
        QList<QDate> candidates;
        if (year_like(a))
            candidates = {ymd, valid_date(year_of(a), c.value, b.value)};
        else if (order == 0)
            candidates = {mdy, dmy, ymd};
        else if (order == 2)
            candidates = {ymd, mdy, dmy};
        else
            candidates = {dmy, mdy, ymd};
        for (const QDate& candidate : candidates) {
            if (candidate.isValid()) {
                date = candidate;
                break;
            }
        }
        if (!date.isValid())
            return std::nullopt;
    } else if (numbers.size() == 2) {
        const DateToken& a = numbers[0];
        const DateToken& b = numbers[1];
        if (year_like(b))
            date = valid_date(year_of(b), a.value, 1);
        else if (year_like(a))
            date = valid_date(year_of(a), b.value, 1);
        else if (order == 1)
            date = valid_date(this_year, b.value, a.value).isValid() ? valid_date(this_year, b.value, a.value)
                                                                     : valid_date(this_year, a.value, b.value);
        else
            date = valid_date(this_year, a.value, b.value).isValid() ? valid_date(this_year, a.value, b.value)
                                                                     : valid_date(this_year, b.value, a.value);
        if (!date.isValid())
            return std::nullopt;
    } else if (numbers.isEmpty() && has_time) {
        date = engine::zero_date();
    } else {
        return std::nullopt;
    }
    return engine::make_datetime(date, time);
}

// ---------------------------------------------------------------------------
// Values

// The wall-clock date and time of a value, as a UTC QDateTime.
QDateTime plain(const QDateTime& value)
{
    return engine::make_datetime(value.date(), value.time());
}

std::optional<QDateTime> date_of_serial(double serial)
{
    if (!std::isfinite(serial) || serial < MinDateSerial || serial > MaxDateSerial)
        return std::nullopt;
    return engine::serial_to_date(serial);
}

QDateTime date_of_date_type(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::QDate: return engine::make_datetime(value.toDate());
    case QMetaType::QTime: return engine::make_datetime(engine::zero_date(), value.toTime());
    default: return plain(value.toDateTime());
    }
}

// The number a value stands for, exactly where it can be: numbers, booleans
// (True is -1), currency, dates (their serial) and numeric text. Sets error to
// 94 for null and 13 for anything else that isn't a number.
std::optional<Decimal> number_of(const QVariant& value, int& error)
{
    error = 0;
    if (is_null(value)) {
        error = vberr::InvalidUseOfNull;
        return std::nullopt;
    }
    if (is_currency(value))
        return Decimal::from_currency(value.value<Currency>());
    if (value.typeId() == QMetaType::Bool)
        return Decimal::from_double(value.toBool() ? -1.0 : 0.0);
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int) {
        Decimal d;
        const qlonglong n = value.toLongLong();
        d.negative = n < 0;
        d.digits = QString::number(n).remove(QLatin1Char('-'));
        d.int_len = static_cast<int>(d.digits.size());
        d.normalise();
        return d;
    }
    if (is_number_type(value))
        return Decimal::from_double(value.toDouble());
    if (is_date_type(value))
        return Decimal::from_double(engine::date_to_serial(date_of_date_type(value)));
    if (auto number = read_number(value.toString()))
        return number;
    error = vberr::TypeMismatch;
    return std::nullopt;
}

// The number a value stands for, as a double; false with Err set when it has none or it overflows.
bool double_of(const QVariant& value, double& result)
{
    if (is_number_type(value)) {
        result = value.toDouble();
        return true;
    }
    int error = 0;
    const std::optional<Decimal> number = number_of(value, error);
    if (!number)
        return fail(error);
    const double d = number->to_double();
    if (!std::isfinite(d))
        return fail(vberr::Overflow);
    result = d;
    return true;
}

template <typename T>
bool whole_number(const QVariant& value, T& result)
{
    double d = 0;
    if (!double_of(value, d))
        return false;
    const double rounded = round_half_even(d);
    if (!(rounded >= static_cast<double>(std::numeric_limits<T>::min())
          && rounded <= static_cast<double>(std::numeric_limits<T>::max())))
        return fail(vberr::Overflow);
    result = static_cast<T>(rounded);
    return true;
}

std::optional<QDateTime> date_of(const QVariant& value, int& error)
{
    error = 0;
    if (is_null(value)) {
        error = vberr::InvalidUseOfNull;
        return std::nullopt;
    }
    if (is_date_type(value))
        return date_of_date_type(value);
    if (is_number_type(value) || is_currency(value) || value.typeId() == QMetaType::Bool) {
        const double serial = is_currency(value)                      ? value.value<Currency>().to_double()
                              : value.typeId() == QMetaType::Bool ? (value.toBool() ? -1.0 : 0.0)
                                                                  : value.toDouble();
        if (auto date = date_of_serial(serial))
            return date;
        error = vberr::Overflow;
        return std::nullopt;
    }
    const QString text = value.toString();
    if (auto date = read_date(text))
        return date;
    if (auto number = read_number(text)) {
        if (auto date = date_of_serial(number->to_double()))
            return date;
        error = vberr::Overflow;
        return std::nullopt;
    }
    error = vberr::TypeMismatch;
    return std::nullopt;
}

// The locale's short date, numbers only, with a four-digit year.
QString short_date_text(const QDate& date)
{
    QString sep = locale_info(engine::lctype::SDATE);
    if (sep.isEmpty())
        sep = QStringLiteral("/");
    const QString d = QString::number(date.day()).rightJustified(2, QLatin1Char('0'));
    const QString m = QString::number(date.month()).rightJustified(2, QLatin1Char('0'));
    const QString y = QString::number(date.year()).rightJustified(4, QLatin1Char('0'));
    switch (short_date_order()) {
    case 0: return m + sep + d + sep + y;
    case 2: return y + sep + m + sep + d;
    default: return d + sep + m + sep + y;
    }
}

QString date_text(const QDateTime& value)
{
    const QString time = value.time().toString(QStringLiteral("HH:mm:ss"));
    if (value.date() == engine::zero_date())
        return time;
    if (value.time() == QTime(0, 0, 0))
        return short_date_text(value.date());
    return short_date_text(value.date()) + QLatin1Char(' ') + time;
}

// ---------------------------------------------------------------------------
// Format: dates

struct DateField {
    enum Kind {
        Literal, Day, Day2, DayAbbr, DayName, Month, Month2, MonthAbbr, MonthName, Year2, Year4, DayOfYear,
        Hour, Hour2, Minute, Minute2, Second, Second2, WeekdayNumber, WeekOfYear, Quarter, AmPm
    } kind;
    QString text;  // literal text, or the am/pm marker as written
};

// Splits a picture into date fields; `has_fields` tells whether any field is a date or time one.
QList<DateField> date_fields(const QString& picture, bool& has_fields)
{
    QList<DateField> fields;
    has_fields = false;
    const auto literal = [&](const QString& text) {
        if (!fields.isEmpty() && fields.back().kind == DateField::Literal)
            fields.back().text += text;
        else
            fields.append({DateField::Literal, text});
    };
    const auto run_of = [&](qsizetype i, QChar letter) {
        qsizetype j = i;
        while (j < picture.size() && picture[j].toLower() == letter)
            ++j;
        return j - i;
    };
    for (qsizetype i = 0; i < picture.size();) {
        const QChar c = picture[i];
        const QChar lower = c.toLower();
        const QStringView rest = QStringView(picture).mid(i);
        if (c == QLatin1Char('\\')) {
            if (i + 1 < picture.size())
                literal(picture.mid(i + 1, 1));
            i += 2;
            continue;
        }
        if (c == QLatin1Char('"')) {
            const qsizetype close = picture.indexOf(QLatin1Char('"'), i + 1);
            const qsizetype stop = close < 0 ? picture.size() : close;
            literal(picture.mid(i + 1, stop - i - 1));
            i = stop + 1;
            continue;
        }
        bool marker = false;
        for (const char* word : {"am/pm", "ampm", "a/p"}) {
            const QLatin1String w(word);
            if (rest.startsWith(w, Qt::CaseInsensitive)) {
                fields.append({DateField::AmPm, rest.left(w.size()).toString()});
                i += w.size();
                marker = true;
                break;
            }
        }
        if (marker) {
            has_fields = true;
            continue;
        }
        const qsizetype run = run_of(i, lower);
        qsizetype take = 0;
        DateField::Kind kind = DateField::Literal;
        if (lower == QLatin1Char('d')) {
            take = std::min<qsizetype>(run, 4);
            kind = take == 1 ? DateField::Day : take == 2 ? DateField::Day2 : take == 3 ? DateField::DayAbbr : DateField::DayName;
        } else if (lower == QLatin1Char('m')) {
            take = std::min<qsizetype>(run, 4);
            kind = take == 1 ? DateField::Month : take == 2 ? DateField::Month2 : take == 3 ? DateField::MonthAbbr : DateField::MonthName;
        } else if (lower == QLatin1Char('y')) {
            take = run >= 4 ? 4 : run >= 2 ? 2 : 1;
            kind = take == 4 ? DateField::Year4 : take == 2 ? DateField::Year2 : DateField::DayOfYear;
        } else if (lower == QLatin1Char('h')) {
            take = std::min<qsizetype>(run, 2);
            kind = take == 1 ? DateField::Hour : DateField::Hour2;
        } else if (lower == QLatin1Char('n')) {
            take = std::min<qsizetype>(run, 2);
            kind = take == 1 ? DateField::Minute : DateField::Minute2;
        } else if (lower == QLatin1Char('s')) {
            take = std::min<qsizetype>(run, 2);
            kind = take == 1 ? DateField::Second : DateField::Second2;
        } else if (lower == QLatin1Char('w')) {
            take = std::min<qsizetype>(run, 2);
            kind = take == 1 ? DateField::WeekdayNumber : DateField::WeekOfYear;
        } else if (lower == QLatin1Char('q')) {
            take = 1;
            kind = DateField::Quarter;
        }
        if (kind == DateField::Literal) {
            literal(QString(c));
            ++i;
            continue;
        }
        fields.append({kind, QString()});
        has_fields = true;
        i += take;
    }
    // "m" and "mm" right after an hour are minutes.
    DateField::Kind previous = DateField::Literal;
    for (DateField& field : fields) {
        if (field.kind == DateField::Literal)
            continue;
        if ((previous == DateField::Hour || previous == DateField::Hour2)
            && (field.kind == DateField::Month || field.kind == DateField::Month2))
            field.kind = field.kind == DateField::Month ? DateField::Minute : DateField::Minute2;
        previous = field.kind;
    }
    return fields;
}

QString two(int n)
{
    return QString::number(n).rightJustified(2, QLatin1Char('0'));
}

QString format_date(const QDateTime& value, const QList<DateField>& fields)
{
    const QLocale english = QLocale::c();
    const QDate date = value.date();
    const QTime time = value.time();
    bool twelve_hour = false;
    for (const DateField& field : fields)
        twelve_hour = twelve_hour || field.kind == DateField::AmPm;
    const int hour = twelve_hour ? (time.hour() % 12 == 0 ? 12 : time.hour() % 12) : time.hour();
    const bool pm = time.hour() >= 12;

    QString out;
    for (const DateField& field : fields) {
        switch (field.kind) {
        case DateField::Literal: out += field.text; break;
        case DateField::Day: out += QString::number(date.day()); break;
        case DateField::Day2: out += two(date.day()); break;
        case DateField::DayAbbr: out += english.dayName(date.dayOfWeek(), QLocale::ShortFormat); break;
        case DateField::DayName: out += english.dayName(date.dayOfWeek(), QLocale::LongFormat); break;
        case DateField::Month: out += QString::number(date.month()); break;
        case DateField::Month2: out += two(date.month()); break;
        case DateField::MonthAbbr: out += english.monthName(date.month(), QLocale::ShortFormat); break;
        case DateField::MonthName: out += english.monthName(date.month(), QLocale::LongFormat); break;
        case DateField::Year2: out += two(date.year() % 100); break;
        case DateField::Year4: out += QString::number(date.year()).rightJustified(4, QLatin1Char('0')); break;
        case DateField::DayOfYear: out += QString::number(date.dayOfYear()); break;
        case DateField::Hour: out += QString::number(hour); break;
        case DateField::Hour2: out += two(hour); break;
        case DateField::Minute: out += QString::number(time.minute()); break;
        case DateField::Minute2: out += two(time.minute()); break;
        case DateField::Second: out += QString::number(time.second()); break;
        case DateField::Second2: out += two(time.second()); break;
        case DateField::WeekdayNumber: out += QString::number(Weekday(value)); break;
        case DateField::WeekOfYear: {
            // Week 1 holds 1 January; weeks begin on Sunday.
            const int first = Weekday(engine::make_datetime(QDate(date.year(), 1, 1)));
            out += QString::number((date.dayOfYear() - 1 + first - 1) / 7 + 1);
            break;
        }
        case DateField::Quarter: out += QString::number((date.month() - 1) / 3 + 1); break;
        case DateField::AmPm: {
            const QString& marker = field.text;
            if (marker.compare(QLatin1String("ampm"), Qt::CaseInsensitive) == 0) {
                const QString word = pm ? QStringLiteral("pm") : QStringLiteral("am");
                out += marker == QLatin1String("ampm") ? word : word.toUpper();
            } else {
                // "AM/PM", "am/pm", "A/P", "a/p": the half as written, in the case written.
                const qsizetype slash = marker.indexOf(QLatin1Char('/'));
                out += pm ? marker.mid(slash + 1) : marker.left(slash);
            }
            break;
        }
        }
    }
    return out;
}

// ---------------------------------------------------------------------------
// Format: numbers

struct NumberPicture {
    QString prefix;
    QString suffix;
    bool has_placeholders = false;
    bool grouped = false;
    bool has_point = false;
    bool percent = false;
    int whole_zeros = 0;     // '0' before the point: the least number of whole digits
    int fraction_zeros = 0;  // '0' after the point: always shown
    int fraction_hashes = 0; // '#' after the point: shown when not zero
};

NumberPicture number_picture(const QString& section)
{
    NumberPicture picture;
    bool in_number = false;
    bool after_number = false;
    bool after_point = false;
    QString* literal = &picture.prefix;
    for (qsizetype i = 0; i < section.size(); ++i) {
        const QChar c = section[i];
        if (c == QLatin1Char('\\')) {
            if (++i < section.size())
                *literal += section[i];
            continue;
        }
        if (c == QLatin1Char('"')) {
            const qsizetype close = section.indexOf(QLatin1Char('"'), i + 1);
            const qsizetype stop = close < 0 ? section.size() : close;
            *literal += section.mid(i + 1, stop - i - 1);
            i = stop;
            continue;
        }
        const bool placeholder = c == QLatin1Char('0') || c == QLatin1Char('#');
        if (!after_number && (placeholder || c == QLatin1Char('.') || (in_number && c == QLatin1Char(',')))) {
            in_number = true;
            picture.has_placeholders = picture.has_placeholders || placeholder;
            if (c == QLatin1Char('.')) {
                picture.has_point = true;
                after_point = true;
            } else if (c == QLatin1Char(',')) {
                picture.grouped = true;
            } else if (after_point) {
                (c == QLatin1Char('0') ? picture.fraction_zeros : picture.fraction_hashes)++;
            } else if (c == QLatin1Char('0')) {
                ++picture.whole_zeros;
            }
            continue;
        }
        if (in_number) {
            in_number = false;
            after_number = true;
            literal = &picture.suffix;
        }
        if (c == QLatin1Char('%'))
            picture.percent = true;
        *literal += c;
    }
    return picture;
}

QString format_number(Decimal number, const QString& picture_text)
{
    QStringList sections;
    {
        QString current;
        bool quoted = false;
        for (qsizetype i = 0; i < picture_text.size(); ++i) {
            const QChar c = picture_text[i];
            if (c == QLatin1Char('"'))
                quoted = !quoted;
            if (c == QLatin1Char('\\') && i + 1 < picture_text.size()) {
                current += c;
                current += picture_text[++i];
                continue;
            }
            if (c == QLatin1Char(';') && !quoted) {
                sections.append(current);
                current.clear();
                continue;
            }
            current += c;
        }
        sections.append(current);
    }

    const bool negative = number.negative;
    QString section = sections[0];
    bool sign_in_picture = false;
    if (negative && sections.size() > 1 && !sections[1].isEmpty()) {
        section = sections[1];
        sign_in_picture = true;
    }
    NumberPicture picture = number_picture(section);
    if (picture.percent)
        number.int_len += 2;
    number.round_to(picture.fraction_zeros + picture.fraction_hashes, false);
    if (number.is_zero() && sections.size() > 2 && !sections[2].isEmpty()) {
        picture = number_picture(sections[2]);
        sign_in_picture = true;
    }
    if (!picture.has_placeholders && !picture.has_point)
        return picture.prefix + picture.suffix;

    const QLocale locale = current_locale();
    QString whole = number.whole_digits();
    if (whole.size() < picture.whole_zeros)
        whole = whole.rightJustified(picture.whole_zeros, QLatin1Char('0'));
    if (picture.grouped) {
        const QString group = locale.groupSeparator();
        for (qsizetype at = whole.size() - 3; at > 0; at -= 3)
            whole.insert(at, group);
    }
    QString fraction = number.fraction_digits(picture.fraction_zeros + picture.fraction_hashes);
    while (fraction.size() > picture.fraction_zeros && fraction.endsWith(QLatin1Char('0')))
        fraction.chop(1);
    QString text = whole;
    if (picture.has_point)
        text += locale.decimalPoint() + fraction;
    const bool minus = negative && !number.is_zero() && !sign_in_picture;
    return (minus ? QStringLiteral("-") : QString()) + picture.prefix + text + picture.suffix;
}

QString format_currency(Decimal number)
{
    number.round_to(2, false);
    return current_locale().toCurrencyString(number.is_zero() ? 0.0 : number.to_double(), QString(), 2);
}

}  // namespace

// ---------------------------------------------------------------------------

double round_half_even(double value)
{
    const double rounded = std::round(value);  // halves away from zero
    if (std::fabs(value - std::trunc(value)) == 0.5)
        return 2.0 * std::round(value / 2.0);
    return rounded;
}

bool IsNumeric(const QVariant& value)
{
    if (is_null(value) || is_date_type(value))
        return false;
    if (is_number_type(value) || is_currency(value) || value.typeId() == QMetaType::Bool)
        return true;
    return read_number(value.toString()).has_value();
}

bool IsDate(const QVariant& value)
{
    if (is_null(value))
        return false;
    if (is_date_type(value))
        return date_of_date_type(value).isValid();
    if (is_number_type(value) || is_currency(value) || value.typeId() == QMetaType::Bool)
        return false;
    return read_date(value.toString()).has_value();
}

bool CBool(const QVariant& value, bool& result)
{
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString().trimmed();
        if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) {
            result = true;
            return true;
        }
        if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) {
            result = false;
            return true;
        }
    }
    if (value.typeId() == QMetaType::Bool) {
        result = value.toBool();
        return true;
    }
    double d = 0;
    if (!double_of(value, d))
        return false;
    result = d != 0.0;
    return true;
}

bool CByte(const QVariant& value, uint8_t& result)
{
    return whole_number(value, result);
}

bool CInt(const QVariant& value, int16_t& result)
{
    return whole_number(value, result);
}

bool CLng(const QVariant& value, int32_t& result)
{
    return whole_number(value, result);
}

bool CCur(const QVariant& value, Currency& result)
{
    int error = 0;
    std::optional<Decimal> number = number_of(value, error);
    if (!number)
        return fail(error);
    number->round_to(4, true);
    // At most 19 digits of ten-thousandths fit in 64 bits.
    const int places = number->int_len + 4;
    if (places > 19)
        return fail(vberr::Overflow);
    bool ok = false;
    const QString digits = number->is_zero() ? QStringLiteral("0") : number->whole_digits() + number->fraction_digits(4);
    const qulonglong magnitude = digits.toULongLong(&ok);
    const qulonglong limit = static_cast<qulonglong>(std::numeric_limits<int64_t>::max()) + (number->negative ? 1 : 0);
    if (!ok || magnitude > limit)
        return fail(vberr::Overflow);
    result = Currency::from_units(number->negative ? static_cast<int64_t>(0 - magnitude) : static_cast<int64_t>(magnitude));
    return true;
}

bool CSng(const QVariant& value, float& result)
{
    double d = 0;
    if (!double_of(value, d))
        return false;
    if (std::fabs(d) > std::numeric_limits<float>::max())
        return fail(vberr::Overflow);
    result = static_cast<float>(d);
    return true;
}

bool CDbl(const QVariant& value, double& result)
{
    return double_of(value, result);
}

bool CDate(const QVariant& value, QDateTime& result)
{
    int error = 0;
    const std::optional<QDateTime> date = date_of(value, error);
    if (!date)
        return fail(error);
    result = *date;
    return true;
}

QString CStr(const QVariant& value)
{
    if (is_null(value))
        return QString();
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    if (is_date_type(value))
        return date_text(date_of_date_type(value));
    if (value.typeId() == QMetaType::LongLong || value.typeId() == QMetaType::Int)
        return QString::number(value.toLongLong());
    if (is_currency(value) || is_number_type(value)) {
        const double d = is_currency(value) ? value.value<Currency>().to_double() : value.toDouble();
        QString text = QString::number(d, 'g', 15).toUpper();
        return text.replace(QLatin1Char('.'), current_locale().decimalPoint());
    }
    return value.toString();
}

QString Format(const QVariant& value, const QString& picture)
{
    if (is_null(value))
        return QString();
    if (picture.isEmpty())
        return CStr(value);

    const QString named = picture.trimmed().toLower();
    QString number_pattern;
    if (named == QLatin1String("fixed"))
        number_pattern = QStringLiteral("0.00");
    else if (named == QLatin1String("standard"))
        number_pattern = QStringLiteral("#,##0.00");
    else if (named == QLatin1String("percent"))
        number_pattern = QStringLiteral("0.00%");

    const bool numeric_named = named == QLatin1String("currency") || named == QLatin1String("general number")
                               || !number_pattern.isEmpty();
    bool date_picture = false;
    const QList<DateField> fields = numeric_named ? QList<DateField>() : date_fields(picture, date_picture);

    if (date_picture) {
        int error = 0;
        const std::optional<QDateTime> date = date_of(value, error);
        if (!date)
            return CStr(value);
        return format_date(*date, fields);
    }

    int error = 0;
    const std::optional<Decimal> number = number_of(value, error);
    if (!number)
        return CStr(value);
    if (named == QLatin1String("currency"))
        return format_currency(*number);
    if (named == QLatin1String("general number"))
        return CStr(number->to_double());
    return format_number(*number, number_pattern.isEmpty() ? picture : number_pattern);
}

QDateTime DateAdd(const QString& interval, double number, const QDateTime& date)
{
    const QString unit = interval.trimmed().toLower();
    const double whole = std::trunc(number);
    if (!date.isValid() || !std::isfinite(whole) || std::fabs(whole) > 1e9) {
        fail(vberr::InvalidProcedureCall);
        return QDateTime();
    }
    const qint64 n = static_cast<qint64>(whole);
    const QDate day = date.date();
    const QTime time = date.time();
    QDateTime result;
    if (unit == QLatin1String("yyyy"))
        result = engine::make_datetime(day.addMonths(static_cast<int>(std::clamp<qint64>(n, -120000, 120000) * 12)), time);
    else if (unit == QLatin1String("q"))
        result = engine::make_datetime(day.addMonths(static_cast<int>(std::clamp<qint64>(n, -40000, 40000) * 3)), time);
    else if (unit == QLatin1String("m"))
        result = engine::make_datetime(day.addMonths(static_cast<int>(std::clamp<qint64>(n, -120000, 120000))), time);
    else if (unit == QLatin1String("y") || unit == QLatin1String("d") || unit == QLatin1String("w"))
        result = engine::make_datetime(day.addDays(n), time);
    else if (unit == QLatin1String("ww"))
        result = engine::make_datetime(day.addDays(n * 7), time);
    else if (unit == QLatin1String("h"))
        result = plain(date).addSecs(n * 3600);
    else if (unit == QLatin1String("n"))
        result = plain(date).addSecs(n * 60);
    else if (unit == QLatin1String("s"))
        result = plain(date).addSecs(n);
    if (!result.isValid() || result.date().year() < 100 || result.date().year() > 9999) {
        fail(vberr::InvalidProcedureCall);
        return QDateTime();
    }
    return result;
}

int Weekday(const QDateTime& date)
{
    return date.date().dayOfWeek() % 7 + 1;
}

qint64 DateDiff(const QString& interval, const QDateTime& a, const QDateTime& b)
{
    const QString unit = interval.trimmed().toLower();
    const QDate da = a.date();
    const QDate db = b.date();
    const auto floor_div = [](qint64 n, qint64 d) { return n >= 0 ? n / d : -((-n + d - 1) / d); };
    const auto seconds = [](const QDateTime& value) { return plain(value).toSecsSinceEpoch(); };
    if (unit == QLatin1String("yyyy"))
        return db.year() - da.year();
    if (unit == QLatin1String("q"))
        return (db.year() * 4 + (db.month() - 1) / 3) - (da.year() * 4 + (da.month() - 1) / 3);
    if (unit == QLatin1String("m"))
        return (db.year() * 12 + db.month()) - (da.year() * 12 + da.month());
    if (unit == QLatin1String("y") || unit == QLatin1String("d"))
        return da.daysTo(db);
    if (unit == QLatin1String("w"))
        return da.daysTo(db) / 7;
    if (unit == QLatin1String("ww")) {
        const QDate sunday_a = da.addDays(-(Weekday(a) - 1));
        const QDate sunday_b = db.addDays(-(Weekday(b) - 1));
        return sunday_a.daysTo(sunday_b) / 7;
    }
    if (unit == QLatin1String("h"))
        return floor_div(seconds(b), 3600) - floor_div(seconds(a), 3600);
    if (unit == QLatin1String("n"))
        return floor_div(seconds(b), 60) - floor_div(seconds(a), 60);
    if (unit == QLatin1String("s"))
        return seconds(b) - seconds(a);
    fail(vberr::InvalidProcedureCall);
    return 0;
}

}  // namespace vb
