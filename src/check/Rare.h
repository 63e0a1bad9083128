#pragma once

#include <memory>
#include <utility>

/// A value that takes no room while nobody has set it.
template<typename Value>
class Rare {
  public:
    Rare() = default;
    Rare(const Rare& other) : value_(other.value_ ? std::make_unique<Value>(*other.value_) : nullptr) {}
    Rare(Rare&&) noexcept = default;
    Rare& operator=(Rare other) noexcept {
        value_ = std::move(other.value_);
        return *this;
    }
    ~Rare() = default;

    const Value& operator*() const {
        static const Value unset{};
        return value_ ? *value_ : unset;
    }
    const Value* operator->() const { return &**this; }
    /// The value, to be set.
    Value& Set() {
        if (!value_) value_ = std::make_unique<Value>();
        return *value_;
    }

  private:
    std::unique_ptr<Value> value_;
};
