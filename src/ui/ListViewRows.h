#pragma once

#include "ui/Windows.h"

#include <string>

namespace ui {

struct RowStyle {
    COLORREF color = 0;
    bool isBold = false;
};

/// What a list view shows; asked row by row, only for what is on the screen. Rows and columns count from 0.
class ListViewRows {
  public:
    virtual ~ListViewRows() = default;
    virtual int Count() const = 0;
    virtual std::wstring Cell(int row, int column) const = 0;
    virtual RowStyle Style(int) const { return {}; }
    virtual bool IsTicked(int) const { return false; }
    /// The icon at the beginning of the row; -1: none.
    virtual int Icon(int) const { return -1; }
    virtual std::wstring ToolTip(int) const { return {}; }
};

} // namespace ui
