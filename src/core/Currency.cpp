#include "core/Currency.h"

#include "platform/RuntimeError.h"

#include <cmath>

Currency Currency::FromDouble(double value) {
    // IEEE 754's default: a half goes to the even neighbour.
    const double units = std::nearbyint(value * 10000.0);
    // 2^63 is exact in a double; the largest amount lies just below it.
    if (!(units >= -9223372036854775808.0 && units < 9223372036854775808.0)) throw RuntimeError(ErrorNumber::Overflow);
    return Currency(static_cast<std::int64_t>(units));
}

Currency& Currency::operator+=(Currency other) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(units_, other.units_, &sum)) throw RuntimeError(ErrorNumber::Overflow);
    units_ = sum;
    return *this;
}

Currency& Currency::operator-=(Currency other) {
    std::int64_t difference = 0;
    if (__builtin_sub_overflow(units_, other.units_, &difference)) throw RuntimeError(ErrorNumber::Overflow);
    units_ = difference;
    return *this;
}
