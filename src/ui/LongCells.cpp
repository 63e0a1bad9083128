#include "ui/LongCells.h"

namespace ui {

namespace {

constexpr std::size_t LongestDrawn = 259;
constexpr int MarginPixels = 2;

struct Colors {
    int text;
    int background;
};

Colors ColorsOf(HWND list, int row) {
    if (!IsWindowEnabled(list)) return {COLOR_GRAYTEXT, COLOR_3DFACE};
    if (SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) == 0)
        return {COLOR_WINDOWTEXT, COLOR_WINDOW};
    if (GetFocus() == list) return {COLOR_HIGHLIGHTTEXT, COLOR_HIGHLIGHT};
    return {COLOR_BTNTEXT, COLOR_3DFACE};
}

} // namespace

bool IsTooLongForListView(const std::wstring& text) {
    return text.size() > LongestDrawn;
}

std::wstring LongTextOf(const ListViewRows& rows, int row, int columnCount) {
    for (int column = 0; column < columnCount; ++column) {
        std::wstring text = rows.Cell(row, column);
        if (IsTooLongForListView(text)) return text;
    }
    return {};
}

void DrawLongCells(HWND list, const NMLVCUSTOMDRAW& painted, const ListViewRows& rows, int columnCount, HFONT font) {
    HDC context = painted.nmcd.hdc;
    const auto row = static_cast<int>(painted.nmcd.dwItemSpec);
    const Colors colors = ColorsOf(list, row);
    const COLORREF ownColor = rows.Style(row).color;
    const bool isPlain = colors.background == COLOR_WINDOW;
    const int saved = SaveDC(context);
    SelectObject(context, font);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, isPlain && ownColor != 0 ? ownColor : GetSysColor(colors.text));
    for (int column = 0; column < columnCount; ++column) {
        const std::wstring text = rows.Cell(row, column);
        RECT place{};
        place.top = column;
        place.left = LVIR_LABEL;
        if (!IsTooLongForListView(text) ||
            SendMessageW(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)) == 0)
            continue;
        FillRect(context, &place, GetSysColorBrush(colors.background));
        place.left += MarginPixels;
        place.right -= MarginPixels;
        DrawTextW(context, text.c_str(), static_cast<int>(text.size()), &place,
                  DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    }
    RestoreDC(context, saved);
}

} // namespace ui
