#pragma once

#include <cstdint>
#include <string>

/// Message-box styles and answers, by Windows' own values.
namespace box {
constexpr std::uint32_t Ok = 0;
constexpr std::uint32_t YesNo = 4;
constexpr std::uint32_t Critical = 16;
constexpr std::uint32_t Question = 32;
constexpr std::uint32_t Exclamation = 48;
constexpr std::uint32_t Information = 64;
constexpr std::uint32_t DefaultButton2 = 256;

constexpr int AnswerYes = 6;
constexpr int AnswerNo = 7;
} // namespace box

/// Modal message boxes.
class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;
    /// Shows a box over the active window and returns the button pressed.
    virtual int Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) = 0;
};
