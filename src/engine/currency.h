#pragma once
// Money: a 64-bit count of ten-thousandths, like the platform's currency.

#include <QMetaType>
#include <QString>
#include <cmath>
#include <compare>
#include <cstdint>
#include <optional>

namespace engine {

class Currency {
public:
    static constexpr int64_t Scale = 10000;

    constexpr Currency() = default;
    static constexpr Currency from_units(int64_t units) { Currency c; c.units_ = units; return c; }
    // Rounds half to even at the fourth place, as the platform's currency does.
    // Nothing for a value no currency can hold (not a number, or beyond about
    // 922 trillion).
    static std::optional<Currency> try_from_double(double value);
    // The same for values known to fit; one that does not is held at the
    // nearest end of the range (and not a number at 0).
    static Currency from_double(double value);
    static constexpr Currency from_whole(int64_t whole) { return from_units(whole * Scale); }

    constexpr int64_t units() const { return units_; }
    double to_double() const { return static_cast<double>(units_) / Scale; }
    // Plain decimal text with up to four places and no trailing zeros: "12.5", "-3", "0.0001".
    QString to_string() const;

    constexpr Currency operator+(Currency o) const { return from_units(units_ + o.units_); }
    constexpr Currency operator-(Currency o) const { return from_units(units_ - o.units_); }
    constexpr Currency operator-() const { return from_units(-units_); }
    Currency& operator+=(Currency o) { units_ += o.units_; return *this; }
    Currency& operator-=(Currency o) { units_ -= o.units_; return *this; }
    constexpr auto operator<=>(const Currency&) const = default;

private:
    int64_t units_ = 0;
};

}  // namespace engine

Q_DECLARE_METATYPE(engine::Currency)
