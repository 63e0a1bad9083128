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
UniqueIcon FolderIcon(int resource) {
    UniqueIcon icon;
    ExtractIconExW(L"shell32.dll", resource, nullptr, icon.Receive(), 1);
    return icon;
}

} // namespace

FolderListBox::FolderListBox(Form& form, int id) : ListBox(form, id), keys_(form, id) {}

void FolderListBox::Attach() {
    if (!closedIcon_) closedIcon_ = FolderIcon(ClosedFolder);
    if (!openIcon_) openIcon_ = FolderIcon(OpenFolder);
    const int iconHeight = GetSystemMetrics(SM_CYSMICON);
    Send(LB_SETITEMHEIGHT, 0, std::max(iconHeight, static_cast<int>(Send(LB_GETITEMHEIGHT))));
    listSubclass_.Attach(Handle(), [this](const WindowMessage& message) { return HandleListMessage(message); });
    formSubclass_.Attach(ParentForm().Handle(),
                         [this](const WindowMessage& message) { return HandleFormMessage(message); });
}

void FolderListBox::SetLines(std::vector<FolderLine> lines, int selected) {
    std::vector<std::wstring> names;
    for (const FolderLine& line : lines) names.push_back(line.name);
    lines_ = std::move(lines);
    SetItems(names);
    Select(selected);
}

void FolderListBox::OnOpen(const std::function<void()>& handler) {
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
    DrawIconEx(item.hDC, place.left, (place.top + place.bottom - iconHeight) / 2,
               (line.isOpen ? openIcon_ : closedIcon_).Get(), iconWidth, iconHeight, 0, nullptr, DI_NORMAL);
    place.left += iconWidth + margin;
    SetBkMode(item.hDC, TRANSPARENT);
    const int enabledColor = isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT;
    SetTextColor(item.hDC, GetSysColor(isDisabled ? COLOR_GRAYTEXT : enabledColor));
    DrawTextW(item.hDC, line.name.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
    if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

LRESULT FolderListBox::HandleListMessage(const WindowMessage& message) {
    if (message.id != WM_KEYDOWN && message.id != WM_CHAR) return message.PassOn();
    // The list tells of a moved selection while it handles the key.
    isMovedByKey_ = true;
    const LRESULT result = message.PassOn();
    isMovedByKey_ = false;
    return result;
}

LRESULT FolderListBox::HandleFormMessage(const WindowMessage& message) const {
    if (message.id != WM_DRAWITEM || message.wParam != static_cast<WPARAM>(Id())) return message.PassOn();
    Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(message.lParam));
    return TRUE;
}

} // namespace ui
