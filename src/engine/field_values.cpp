#include "engine/currency.h"
#include "engine/database_core.h"
#include "engine/err.h"
#include "engine/jet_date.h"
#include "engine/vb_values.h"

#include <charconv>

namespace engine {

namespace {

// A single-precision value read back as the decimal that was typed: 17.99
// is held as 17.9899997711…, and shows and sums as 17.99 again.
double single_as_typed(double stored)
{
    const float single = static_cast<float>(stored);
    char digits[32];
    const auto written = std::to_chars(digits, digits + sizeof digits, single);
    double typed = stored;
    std::from_chars(digits, written.ptr, typed);
    return typed;
}

}  // namespace

QVariant present_value(const QVariant& stored, FieldType type)
{
    if (!stored.isValid() || stored.isNull())
        return QVariant();
    switch (type) {
    case FieldType::Date: {
        if (stored.typeId() == QMetaType::QString) {
            if (auto date = storage_to_date(stored.toString()))
                return *date;
            return stored;
        }
        return serial_to_date(stored.toDouble());
    }
    case FieldType::Currency:
        return QVariant::fromValue(Currency::from_double(stored.toDouble()));
    case FieldType::Boolean:
        return stored.toLongLong() != 0;
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
        if (stored.typeId() == QMetaType::LongLong)
            return static_cast<int>(stored.toLongLong());
        return stored;
    case FieldType::Single:
        return single_as_typed(stored.toDouble());
    case FieldType::Double:
        return stored.toDouble();
    case FieldType::Text:
    case FieldType::Memo:
        return stored.toString();
    case FieldType::Unknown:
        if (stored.typeId() == QMetaType::LongLong && stored.toLongLong() >= INT_MIN && stored.toLongLong() <= INT_MAX)
            return static_cast<int>(stored.toLongLong());
        return stored;
    }
    return stored;
}

namespace {

bool conversion_error()
{
    raise_engine_error(3421, QStringLiteral("Data type conversion error."));
    return false;
}

bool store_whole(const QVariant& value, long long low, long long high, QVariant& stored)
{
    if (value.typeId() == QMetaType::Bool) {
        stored = value.toBool() ? -1LL : 0LL;  // the platform's True
        return stored.toLongLong() >= low || conversion_error();
    }
    double number = 0;
    if (!vb::CDbl(value, number))
        return conversion_error();
    const double rounded = vb::round_half_even(number);
    if (rounded < low || rounded > high) {
        raise_engine_error(jet::NumericOverflow, QStringLiteral("Numeric field overflow."));
        return false;
    }
    stored = static_cast<long long>(rounded);
    return true;
}

}  // namespace

bool store_value(const QVariant& value, const FieldInfo& field, QVariant& stored)
{
    Err().Clear();
    if (!value.isValid() || value.isNull()) {
        stored = QVariant();
        return true;
    }
    switch (field.type) {
    case FieldType::Date: {
        if (auto text = to_storage_date(value)) {
            stored = *text;
            return true;
        }
        QDateTime parsed;
        if (!vb::CDate(value, parsed))
            return conversion_error();
        stored = date_to_storage(parsed);
        return true;
    }
    case FieldType::Currency: {
        Currency money;
        if (value.userType() == qMetaTypeId<Currency>())
            money = value.value<Currency>();
        else if (!vb::CCur(value, money))
            return conversion_error();
        stored = money.to_double();
        return true;
    }
    case FieldType::Boolean: {
        bool flag = false;
        if (!vb::CBool(value, flag))
            return conversion_error();
        stored = flag ? 1LL : 0LL;
        return true;
    }
    case FieldType::Byte: return store_whole(value, 0, 255, stored);
    case FieldType::Integer: return store_whole(value, -32768, 32767, stored);
    case FieldType::Long: return store_whole(value, INT32_MIN, INT32_MAX, stored);
    case FieldType::Single:
    case FieldType::Double: {
        double number = 0;
        if (!vb::CDbl(value, number))
            return conversion_error();
        stored = field.type == FieldType::Single ? static_cast<double>(static_cast<float>(number)) : number;
        return true;
    }
    case FieldType::Text:
    case FieldType::Memo: {
        const QString text = value.userType() == qMetaTypeId<Currency>() ? value.value<Currency>().to_string() : vb::CStr(value);
        if (field.text_length > 0 && text.size() > field.text_length) {
            raise_engine_error(jet::FieldTooSmall,
                               QStringLiteral("The field is too small to accept the amount of data you attempted to add. (%1)").arg(field.name));
            return false;
        }
        stored = text;
        return true;
    }
    case FieldType::Unknown:
        stored = value;
        return true;
    }
    stored = value;
    return true;
}

}  // namespace engine
