#include "engine/currency.h"

namespace engine {

Currency Currency::from_double(double value)
{
    const double scaled = value * Scale;
    // nearbyint follows the current rounding mode, which is round-half-to-even.
    return from_units(static_cast<int64_t>(std::nearbyint(scaled)));
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
