#pragma once

#include <cstdint>

/// A progress bar as long work sees it.
class ProgressBar {
  public:
    virtual ~ProgressBar() = default;
    virtual std::int32_t Min() const = 0;
    virtual std::int32_t Max() const = 0;
    virtual void SetRange(std::int32_t min, std::int32_t max) = 0;
    virtual std::int32_t Value() const = 0;
    virtual void SetValue(std::int32_t value) = 0;
};
