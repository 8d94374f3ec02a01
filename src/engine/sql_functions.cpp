#include "engine/sql_functions.h"

#include "engine/currency.h"
#include "engine/jet_date.h"
#include "engine/sqlite_connection.h"
#include "engine/vb_values.h"

#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace engine {

namespace {

QVariant arg_value(sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER: return QVariant(static_cast<qlonglong>(sqlite3_value_int64(value)));
    case SQLITE_FLOAT: return QVariant(sqlite3_value_double(value));
    case SQLITE_TEXT:
        return QVariant(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)), sqlite3_value_bytes(value)));
    default: return QVariant();
    }
}

// A date argument: the stored form, a serial number, or text the locale reads as a date.
bool arg_date(sqlite3_value* value, QDateTime& out)
{
    const QVariant v = arg_value(value);
    if (v.isNull())
        return false;
    if (v.typeId() == QMetaType::QString) {
        if (auto stored = storage_to_date(v.toString())) {
            out = *stored;
            return true;
        }
    } else {
        out = serial_to_date(v.toDouble());
        return out.isValid();
    }
    return vb::CDate(v, out);
}

void result_text(sqlite3_context* context, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(context, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

void result_error(sqlite3_context* context, int number, const QString& description)
{
    const QByteArray utf8 = QStringLiteral("jet:%1:%2").arg(number).arg(description).toUtf8();
    sqlite3_result_error(context, utf8.constData(), static_cast<int>(utf8.size()));
}

void fn_jet_date(sqlite3_context* context, int, sqlite3_value** argv)
{
    const QVariant v = arg_value(argv[0]);
    if (v.isNull()) {
        sqlite3_result_null(context);
        return;
    }
    if (auto stored = to_storage_date(v)) {
        result_text(context, *stored);
        return;
    }
    QDateTime parsed;
    if (vb::CDate(v, parsed)) {
        result_text(context, date_to_storage(parsed));
        return;
    }
    result_error(context, 3464, QStringLiteral("Data type mismatch in criteria expression."));
}

void fn_jet_round(sqlite3_context* context, int, sqlite3_value** argv)
{
    const QVariant v = arg_value(argv[0]);
    if (v.isNull()) {
        sqlite3_result_null(context);
        return;
    }
    if (v.typeId() == QMetaType::LongLong) {
        sqlite3_result_int64(context, v.toLongLong());
        return;
    }
    bool ok = false;
    const double d = v.toDouble(&ok);
    if (!ok) {
        result_error(context, 3464, QStringLiteral("Data type mismatch in criteria expression."));
        return;
    }
    sqlite3_result_int64(context, static_cast<sqlite3_int64>(vb::round_half_even(d)));
}

// A value for a CURRENCY column: four places, a half to even.
void fn_jet_currency(sqlite3_context* context, int, sqlite3_value** argv)
{
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_NULL:
        sqlite3_result_null(context);
        return;
    case SQLITE_INTEGER:
        sqlite3_result_int64(context, sqlite3_value_int64(argv[0]));
        return;
    case SQLITE_FLOAT:
        if (const auto money = Currency::try_from_double(sqlite3_value_double(argv[0]))) {
            sqlite3_result_double(context, money->to_double());
            return;
        }
        result_error(context, 3349, QStringLiteral("Numeric field overflow."));
        return;
    default:
        result_error(context, 3464, QStringLiteral("Data type mismatch in criteria expression."));
        return;
    }
}

// A value for a SINGLE column: held to single precision, as the column's
// type holds it.
void fn_jet_single(sqlite3_context* context, int, sqlite3_value** argv)
{
    switch (sqlite3_value_type(argv[0])) {
    case SQLITE_NULL:
        sqlite3_result_null(context);
        return;
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: {
        const double number = sqlite3_value_double(argv[0]);
        if (std::isfinite(number) && std::fabs(number) > std::numeric_limits<float>::max()) {
            result_error(context, 3349, QStringLiteral("Numeric field overflow."));
            return;
        }
        sqlite3_result_double(context, static_cast<double>(static_cast<float>(number)));
        return;
    }
    default:
        result_error(context, 3464, QStringLiteral("Data type mismatch in criteria expression."));
        return;
    }
}

void fn_weekday(sqlite3_context* context, int argc, sqlite3_value** argv)
{
    QDateTime date;
    if (!arg_date(argv[0], date)) {
        sqlite3_result_null(context);
        return;
    }
    int day = vb::Weekday(date);
    if (argc > 1 && sqlite3_value_type(argv[1]) != SQLITE_NULL) {
        const int first = sqlite3_value_int(argv[1]);
        if (first >= 1 && first <= 7)
            day = (day - first + 7) % 7 + 1;
    }
    sqlite3_result_int(context, day);
}

void fn_isnumeric(sqlite3_context* context, int, sqlite3_value** argv)
{
    sqlite3_result_int(context, vb::IsNumeric(arg_value(argv[0])) ? 1 : 0);
}

void fn_cdate(sqlite3_context* context, int, sqlite3_value** argv)
{
    QDateTime date;
    if (!arg_date(argv[0], date)) {
        if (sqlite3_value_type(argv[0]) == SQLITE_NULL)
            result_error(context, 94, QStringLiteral("Invalid use of Null"));
        else
            result_error(context, 13, QStringLiteral("Type mismatch"));
        return;
    }
    result_text(context, date_to_storage(date));
}

void fn_cdbl(sqlite3_context* context, int, sqlite3_value** argv)
{
    // A date is its serial number, as the platform's CDbl of a date gives.
    if (sqlite3_value_type(argv[0]) == SQLITE_TEXT) {
        if (auto date = storage_to_date(arg_value(argv[0]).toString())) {
            sqlite3_result_double(context, date_to_serial(*date));
            return;
        }
    }
    double d = 0;
    if (!vb::CDbl(arg_value(argv[0]), d)) {
        result_error(context, 13, QStringLiteral("Type mismatch"));
        return;
    }
    sqlite3_result_double(context, d);
}

// CDbl of a date column that may be null: null stays null.
void fn_jet_date_serial(sqlite3_context* context, int, sqlite3_value** argv)
{
    QDateTime date;
    if (!arg_date(argv[0], date)) {
        sqlite3_result_null(context);
        return;
    }
    sqlite3_result_double(context, date_to_serial(date));
}

void fn_dateadd(sqlite3_context* context, int, sqlite3_value** argv)
{
    QDateTime date;
    if (sqlite3_value_type(argv[1]) == SQLITE_NULL || !arg_date(argv[2], date)) {
        sqlite3_result_null(context);
        return;
    }
    const QString interval = arg_value(argv[0]).toString();
    result_text(context, date_to_storage(vb::DateAdd(interval, sqlite3_value_double(argv[1]), date)));
}

void fn_format(sqlite3_context* context, int argc, sqlite3_value** argv)
{
    QVariant v = arg_value(argv[0]);
    if (v.isNull()) {
        sqlite3_result_null(context);
        return;
    }
    if (v.typeId() == QMetaType::QString)
        if (auto stored = storage_to_date(v.toString()))
            v = *stored;
    const QString picture = argc > 1 ? arg_value(argv[1]).toString() : QString();
    result_text(context, vb::Format(v, picture));
}

void fn_now(sqlite3_context* context, int, sqlite3_value**)
{
    result_text(context, date_to_storage(now()));
}

void fn_date(sqlite3_context* context, int, sqlite3_value**)
{
    result_text(context, date_to_storage(make_datetime(now().date())));
}

struct Function {
    const char* name;
    int argc;
    void (*call)(sqlite3_context*, int, sqlite3_value**);
    bool deterministic;
};

}  // namespace

void install_sql_functions(sqlite3* db)
{
    static const Function functions[] = {
        {"jet_date", 1, fn_jet_date, true},   {"jet_round", 1, fn_jet_round, true},
        {"weekday", 1, fn_weekday, true},     {"weekday", 2, fn_weekday, true},
        {"isnumeric", 1, fn_isnumeric, true}, {"CDate", 1, fn_cdate, true},
        {"CDbl", 1, fn_cdbl, true},           {"DateAdd", 3, fn_dateadd, true},
        {"format", 1, fn_format, true},       {"format", 2, fn_format, true},
        {"Now", 0, fn_now, false},            {"jet_today", 0, fn_date, false},
        {"jet_date_serial", 1, fn_jet_date_serial, true}, {"jet_single", 1, fn_jet_single, true},
        {"jet_currency", 1, fn_jet_currency, true},
    };
    for (const Function& f : functions) {
        const int flags = SQLITE_UTF8 | (f.deterministic ? SQLITE_DETERMINISTIC : 0);
        sqlite3_create_function_v2(db, f.name, f.argc, flags, nullptr, f.call, nullptr, nullptr, nullptr);
    }
}

}  // namespace engine
