#pragma once

#include "core/ProgressBar.h"

#include <utility>
#include <vector>

/// A progress bar as plain data.
class FakeProgressBar : public ProgressBar {
  public:
    std::int32_t min = 0;
    std::int32_t max = 100;
    std::int32_t value = 0;
    std::vector<std::int32_t> values; ///< every value that was set, in order
    std::vector<std::pair<std::int32_t, std::int32_t>> ranges;

    std::int32_t Min() const override { return min; }
    std::int32_t Max() const override { return max; }
    void SetRange(std::int32_t newMin, std::int32_t newMax) override {
        min = newMin;
        max = newMax;
        ranges.emplace_back(min, max);
    }
    std::int32_t Value() const override { return value; }
    void SetValue(std::int32_t newValue) override { values.push_back(value = newValue); }
};
