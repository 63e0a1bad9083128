#pragma once

#include "platform/MessageBoxes.h"

#include <deque>
#include <functional>
#include <vector>

/// Records every box and answers it from a script.
class FakeMessageBoxes : public MessageBoxes {
  public:
    struct Box {
        std::wstring text;
        std::wstring title;
        std::uint32_t style;
    };

    std::vector<Box> shown;
    /// Answers of the next boxes; then 1 (OK), or 6 (yes) where the box asks.
    std::deque<int> answers;
    /// Called while a box is open.
    std::function<void(const Box&)> whileShown;

    int Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) override;
};
