#pragma once

#include "win32/UniqueHandle.h"

#include <string>

/// Keeps two running copies of one installation apart, whoever started them: they would work in the same folder and
/// wipe each other's archives. Copies in different folders do not meet.
class SingleInstance {
  public:
    explicit SingleInstance(const std::wstring& programFolder);

    bool IsFirst() const { return isFirst_; }
    /// Marks the window that a later copy brings to the front.
    void Mark(HWND window) const;
    /// Brings the first copy to the front, once it has marked its window. When it marks none for some seconds, because
    /// it belongs to another user's session or is about to end, says in the system's words that it runs. Keeps no copy
    /// out that is started meanwhile.
    void ShowFirst();

  private:
    std::wstring name_;
    UniqueObject mutex_;
    bool isFirst_ = false;
};
