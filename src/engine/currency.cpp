#include "engine/currency.h"

namespace engine {

std::optional<Currency> Currency::try_from_double(double value)
{
    // nearbyint follows the current rounding mode, which is round-half-to-even.
    const double scaled = std::nearbyint(value * Scale);
    // 2^63 is the first value a 64-bit count cannot hold.
    if (!(scaled >= -9223372036854775808.0 && scaled < 9223372036854775808.0))
        return std::nullopt;
    return from_units(static_cast<int64_t>(scaled));
}

Currency Currency::from_double(double value)
{
    if (const auto money = try_from_double(value))
        return *money;
    if (std::isnan(value))
        return Currency();
    return from_units(value > 0 ? INT64_MAX : INT64_MIN);
}

QString Currency::to_string() const
{
    const bool negative = units_ < 0;
    const uint64_t magnitude = negative ? static_cast<uint64_t>(-units_) : static_cast<uint64_t>(units_);
    QString text = QString::number(magnitude / Scale);
    uint64_t fraction = magnitude % Scale;
    if (fraction != 0) {
        QString digits = QString::number(fraction).rightJustified(4, QLatin1Char('0'));
        while (digits.endsWith(QLatin1Char('0')))
            digits.chop(1);
        text += QLatin1Char('.') + digits;
    }
    return negative ? QLatin1Char('-') + text : text;
}

}  // namespace engine
