#pragma once

#include "ui/ListViewRows.h"

#include <string>

namespace ui {

/// Whether a list view would cut the text wherever it shows it: it draws 259 characters and no more.
bool IsTooLongForListView(const std::wstring& text);

/// A row's text that is too long; empty when it has none.
std::wstring LongTextOf(const ListViewRows& rows, int row, int columnCount);

/// Draws a row's long texts whole over what the view has drawn of them. To be called once the view has painted the row,
/// with the context that it painted in and the row's own font.
void DrawLongCells(HWND list, const NMLVCUSTOMDRAW& painted, const ListViewRows& rows, int columnCount, HFONT font);

} // namespace ui
