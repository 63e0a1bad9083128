#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

/// The bytes of a fuzzer as a row of choices; behind their end every choice is the first one.
class FuzzInput {
  public:
    FuzzInput(const std::uint8_t* data, std::size_t sizeBytes) : data_(data), left_(sizeBytes) {}

    bool IsAtEnd() const { return left_ == 0; }
    std::uint8_t Byte() {
        if (left_ == 0) return 0;
        --left_;
        return *data_++;
    }
    bool Bool() { return (Byte() & 1) != 0; }
    /// One of the numbers below `count`.
    std::size_t Below(std::size_t count) { return Byte() % count; }
    /// Any bits of the type.
    template<typename Value>
    Value Bits() {
        std::array<std::uint8_t, sizeof(Value)> bytes{};
        for (std::uint8_t& byte : bytes) byte = Byte();
        Value value{};
        std::memcpy(&value, bytes.data(), sizeof(Value));
        return value;
    }
    template<typename Value, std::size_t Count>
    const Value& OneOf(const Value (&values)[Count]) {
        return values[Below(Count)];
    }
    /// A short text of Latin-1 and a few characters beyond.
    std::wstring Text(std::size_t longest) {
        std::wstring text;
        for (std::size_t length = Below(longest + 1); length > 0; --length) {
            const std::uint8_t byte = Byte();
            text += byte == 0 ? L'\u0141' : static_cast<wchar_t>(byte);
        }
        return text;
    }

  private:
    const std::uint8_t* data_;
    std::size_t left_;
};
