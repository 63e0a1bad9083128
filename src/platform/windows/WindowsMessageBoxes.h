#pragma once

#include "platform/MessageBoxes.h"

class WindowsMessageBoxes : public MessageBoxes {
  public:
    int Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) override;
};
