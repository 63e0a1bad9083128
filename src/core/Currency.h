#pragma once

#include <compare>
#include <cstdint>

/// An amount with four decimals in 64 bits, as the space figures are counted.
class Currency {
  public:
    constexpr Currency() = default;

    /// The amount nearest to `value`; halves of the last decimal go to the even one. Throws 6 (overflow) out of range.
    static Currency FromDouble(double value);
    static constexpr Currency FromTenThousandths(std::int64_t units) { return Currency(units); }

    constexpr std::int64_t TenThousandths() const { return units_; }
    double ToDouble() const { return static_cast<double>(units_) / 10000.0; }

    /// Sum and difference throw 6 (overflow) out of range and leave the amount as it was.
    Currency& operator+=(Currency other);
    Currency& operator-=(Currency other);

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 takes the 0 of a comparison for a null pointer
    constexpr auto operator<=>(const Currency&) const = default;

  private:
    constexpr explicit Currency(std::int64_t units) : units_(units) {}
    std::int64_t units_ = 0;
};
