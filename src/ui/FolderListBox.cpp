#include "ui/FolderListBox.h"

#include <shellapi.h>

#include <algorithm>
#include <utility>

namespace ui {

namespace {

constexpr int MarginTwips = 30;
constexpr int IndentTwips = 150;

// The resources of the shell's library that hold them; a number below zero names one.
constexpr int ClosedFolder = -4;
constexpr int OpenFolder = -5;

/// From the library itself: asked for one icon, the shell loads lists of icons that take two megabytes.
HICON FolderIcon(int resource) {
    HICON icon = nullptr;
    ExtractIconExW(L"shell32.dll", resource, nullptr, &icon, 1);
    return icon;
}

} // namespace

FolderListBox::FolderListBox(Form& form, int id) : ListBox(form, id), keys_(form, id) {}

FolderListBox::~FolderListBox() {
    if (HWND window = Handle(); window != nullptr) {
        RemoveWindowSubclass(window, ListProcedure, 0);
        RemoveWindowSubclass(Owner().Handle(), FormProcedure, static_cast<UINT_PTR>(Id()));
    }
    if (closedIcon_ != nullptr) DestroyIcon(closedIcon_);
    if (openIcon_ != nullptr) DestroyIcon(openIcon_);
}

void FolderListBox::Attach() {
    if (closedIcon_ == nullptr) closedIcon_ = FolderIcon(ClosedFolder);
    if (openIcon_ == nullptr) openIcon_ = FolderIcon(OpenFolder);
    const int iconHeight = GetSystemMetrics(SM_CYSMICON);
    Send(LB_SETITEMHEIGHT, 0, std::max(iconHeight, static_cast<int>(Send(LB_GETITEMHEIGHT))));
    const auto reference = reinterpret_cast<DWORD_PTR>(this);
    SetWindowSubclass(Handle(), ListProcedure, 0, reference);
    SetWindowSubclass(Owner().Handle(), FormProcedure, static_cast<UINT_PTR>(Id()), reference);
}

void FolderListBox::SetLines(std::vector<FolderLine> lines, int selected) {
    std::vector<std::wstring> names;
    for (const FolderLine& line : lines) names.push_back(line.name);
    lines_ = std::move(lines);
    SetItems(names);
    Select(selected);
}

void FolderListBox::OnOpen(std::function<void()> handler) {
    OnSelect([this, handler] {
        if (!isMovedByKey_) handler();
    });
    keys_.On(VK_RETURN, handler);
    keys_.On(VK_SPACE, handler);
}

void FolderListBox::Draw(const DRAWITEMSTRUCT& item) const {
    const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
    const bool isDisabled = (item.itemState & ODS_DISABLED) != 0;
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(isSelected && !isDisabled ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (item.itemID >= lines_.size()) return;
    const FolderLine& line = lines_[item.itemID];
    const int iconWidth = GetSystemMetrics(SM_CXSMICON);
    const int iconHeight = GetSystemMetrics(SM_CYSMICON);
    const int margin = PixelsFromTwips(MarginTwips, item.hwndItem);
    RECT place = item.rcItem;
    place.left += margin + line.level * PixelsFromTwips(IndentTwips, item.hwndItem);
    DrawIconEx(item.hDC, place.left, (place.top + place.bottom - iconHeight) / 2, line.isOpen ? openIcon_ : closedIcon_,
               iconWidth, iconHeight, 0, nullptr, DI_NORMAL);
    place.left += iconWidth + margin;
    SetBkMode(item.hDC, TRANSPARENT);
    const int enabledColor = isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
    SetTextColor(item.hDC, GetSysColor(isDisabled ? COLOR_GRAYTEXT : enabledColor));
    DrawTextW(item.hDC, line.name.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

LRESULT CALLBACK FolderListBox::ListProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                              DWORD_PTR reference) {
    auto* list = reinterpret_cast<FolderListBox*>(reference);
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, ListProcedure, 0);
    if (message != WM_KEYDOWN && message != WM_CHAR) return DefSubclassProc(window, message, wParam, lParam);
    // The list tells of a moved selection while it handles the key.
    list->isMovedByKey_ = true;
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    list->isMovedByKey_ = false;
    return result;
}

LRESULT CALLBACK FolderListBox::FormProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                              DWORD_PTR reference) {
    if (message == WM_DRAWITEM && wParam == id) {
        reinterpret_cast<const FolderListBox*>(reference)->Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    }
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, FormProcedure, id);
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace ui
