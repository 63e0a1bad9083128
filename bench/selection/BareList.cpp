#include "BareList.h"

#include "ui/MessagePump.h"

#include <algorithm>

namespace {

constexpr const wchar_t* ClassName = L"BareList";
constexpr int MarginPixels = 20;
constexpr int ButtonHeightPixels = 30;

SIZE SizeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

HWND Child(HWND parent, const wchar_t* kind, DWORD style, const RECT& place) {
    return CreateWindowExW(0, kind, L"", style, place.left, place.top, place.right, place.bottom, parent, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

} // namespace

void SelectInView(HWND list, int row) {
    // Wine goes through every row when the selection moves by itself.
    const int selected = ListView_GetNextItem(list, -1, LVNI_FOCUSED | LVNI_SELECTED);
    if (selected >= 0) ListView_SetItemState(list, selected, 0, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(list, row, FALSE);
    ui::RunPendingMessages();
}

BareList::BareList(HWND like, int rowCount) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = Procedure;
    kind.lpszClassName = ClassName;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
    RegisterClassW(&kind);
    const SIZE outer = SizeOf(GetAncestor(like, GA_ROOT));
    window_ = CreateWindowExW(0, ClassName, L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, outer.cx, outer.cy, nullptr,
                              nullptr, kind.hInstance, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    const SIZE size = SizeOf(like);
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(like, GWL_STYLE)) & ~DWORD{WS_VSCROLL | WS_HSCROLL};
    view_ = Child(window_, WC_LISTVIEWW, style, {MarginPixels, MarginPixels, size.cx, size.cy});
    button_ = Child(window_, WC_BUTTONW, WS_CHILD | WS_VISIBLE,
                    {MarginPixels, 2 * MarginPixels + size.cy, size.cx, ButtonHeightPixels});
    TakeLooksOf(like);
    ListView_SetItemCountEx(view_, rowCount, LVSICF_NOSCROLL);
    ui::RunPendingMessages();
}

BareList::~BareList() {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
    UnregisterClassW(ClassName, GetModuleHandleW(nullptr));
}

void BareList::TakeLooksOf(HWND like) const {
    ListView_SetExtendedListViewStyle(view_, ListView_GetExtendedListViewStyle(like));
    SendMessageW(view_, WM_SETFONT, static_cast<WPARAM>(SendMessageW(like, WM_GETFONT, 0, 0)), FALSE);
    const int columnCount = Header_GetItemCount(ListView_GetHeader(like));
    for (int index = 0; index < columnCount; ++index) {
        LVCOLUMNW column{};
        column.mask = LVCF_WIDTH;
        column.cx = ListView_GetColumnWidth(like, index);
        SendMessageW(view_, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
    }
}

/// What a view that holds no rows has to be told, and nothing else.
void BareList::RemoveSelected() const {
    const int row = ListView_GetNextItem(view_, -1, LVNI_SELECTED);
    const int left = RowCount() - 1;
    ListView_SetItemCountEx(view_, left, LVSICF_NOSCROLL);
    const int next = std::min(row, left - 1);
    if (next != row) ListView_SetItemState(view_, next, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    ListView_EnsureVisible(view_, next, FALSE);
}

LRESULT CALLBACK BareList::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* list = reinterpret_cast<const BareList*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (list != nullptr && message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED) list->RemoveSelected();
    return DefWindowProcW(window, message, wParam, lParam);
}
