#include "ui/Controls.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace ui {

namespace {

// What changes more often looks the same.
constexpr DWORD FrameMilliseconds = 40;

LRESULT TakeEnter(const WindowMessage& message, Form& form, const std::function<void()>& handler) {
    if (message.wParam == VK_RETURN) {
        switch (message.id) {
        case WM_GETDLGCODE:
            return DLGC_WANTMESSAGE | message.PassOn();
        case WM_KEYDOWN:
            // Some versions press the default button here; the character of the key comes all the same.
            return 0;
        case WM_CHAR:
            // The handler may close the form, and this window with it. What it throws is the form's to report.
            form.RunGuarded(handler);
            return 0;
        default:
            break;
        }
    }
    return message.PassOn();
}

} // namespace

LRESULT Control::Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return SendMessageW(Handle(), message, wParam, lParam);
}

void Control::SetText(const std::wstring& text) {
    if (Text() != text) SetWindowTextW(Handle(), text.c_str());
}

std::wstring Control::Text() const {
    HWND window = Handle();
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void Control::FollowInTabOrder(const Control& other) {
    SetWindowPos(Handle(), other.Handle(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Control::SetFocus() {
    SendMessageW(form_.Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Handle()), TRUE);
}

bool Control::HasFocus() const {
    return GetFocus() == Handle() && Handle() != nullptr;
}

BoundsTwips Control::Bounds() const {
    return BoundsOf(Handle());
}

void Control::Move(const BoundsTwips& bounds) {
    MoveTo(Handle(), bounds);
}

void Control::SetWidth(int widthTwips) {
    BoundsTwips bounds = Bounds();
    bounds.width = widthTwips;
    Move(bounds);
}

void Control::Refresh() {
    RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void Option::Select(int firstId, int lastId) {
    CheckRadioButton(ParentForm().Handle(), firstId, lastId, Id());
}

void Option::Clear() {
    SetState(BST_UNCHECKED);
    // An option that is cleared is no tab stop, because the selected one is.
    SetWindowLongPtrW(Handle(), GWL_STYLE, GetWindowLongPtrW(Handle(), GWL_STYLE) | WS_TABSTOP);
}

void TextBox::OnEnter(std::function<void()> handler) {
    enterKey_.Attach(Handle(), [&form = ParentForm(), handler = std::move(handler)](const WindowMessage& message) {
        return TakeEnter(message, form, handler);
    });
}

void ComboBox::Add(const std::wstring& text) {
    Send(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring ComboBox::Item(int row) const {
    const LRESULT length = Send(CB_GETLBTEXTLEN, static_cast<WPARAM>(row));
    if (row < 0 || length == CB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    Send(CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void ListBox::Add(const std::wstring& text) {
    Send(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

void ListBox::SetItems(const std::vector<std::wstring>& items) {
    Send(WM_SETREDRAW, FALSE);
    Clear();
    Send(LB_INITSTORAGE, items.size(), static_cast<LPARAM>(items.size() * 64));
    // Looked up once: with many rows that takes longer than adding them.
    HWND window = Handle();
    for (const std::wstring& item : items)
        SendMessageW(window, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(window, nullptr, TRUE);
}

std::wstring ListBox::Item(int row) const {
    const LRESULT length = Send(LB_GETTEXTLEN, static_cast<WPARAM>(row));
    if (row < 0 || length == LB_ERR) return {};
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    Send(LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::vector<int> ListBox::SelectedRows() const {
    const LRESULT count = Send(LB_GETSELCOUNT);
    if (count <= 0) return {};
    std::vector<int> rows(static_cast<std::size_t>(count));
    Send(LB_GETSELITEMS, rows.size(), reinterpret_cast<LPARAM>(rows.data()));
    return rows;
}

void ProgressBarControl::SetRange(int min, int max) {
    const int value = std::clamp(Value(), min, std::max(min, max));
    Send(PBM_SETRANGE32, static_cast<WPARAM>(min), max);
    ShowValue(value);
}

int ProgressBarControl::Value() const {
    HWND window = Handle();
    return window != nullptr && window == window_ ? value_ : ShownValue();
}

void ProgressBarControl::SetValue(int value) {
    const int min = Min();
    const int max = Max();
    value = std::clamp(value, min, std::max(min, max));
    if (Handle() != window_ || IsWorthShowing(value, min, max)) {
        ShowValue(value);
    } else {
        value_ = value;
    }
}

bool ProgressBarControl::IsWorthShowing(int value, int min, int max) const {
    if (value == min || value == max) return true;
    const DWORD elapsedMilliseconds = GetTickCount() - shownAtMilliseconds_;
    if (elapsedMilliseconds >= 1000) return true;
    const std::int64_t parts = elapsedMilliseconds < FrameMilliseconds ? 10 : 50;
    return std::abs(std::int64_t{value} - ShownValue()) * parts >= std::int64_t{max} - min;
}

void ProgressBarControl::ShowValue(int value) {
    if (value > ShownValue()) {
        Jump(value);
    } else {
        Send(PBM_SETPOS, static_cast<WPARAM>(value));
    }
    window_ = Handle();
    value_ = value;
    shownAtMilliseconds_ = GetTickCount();
}

/// A themed bar glides towards a higher value while messages run, and a blocking call would keep it from arriving.
/// Downwards it goes at once.
void ProgressBarControl::Jump(int value) {
    const int min = Min();
    const int max = Max();
    const bool isAtEnd = value >= max;
    if (isAtEnd) Send(PBM_SETRANGE32, static_cast<WPARAM>(min), LPARAM{value} + 1);
    Send(PBM_SETPOS, static_cast<WPARAM>(value) + 1);
    Send(PBM_SETPOS, static_cast<WPARAM>(value));
    if (isAtEnd) Send(PBM_SETRANGE32, static_cast<WPARAM>(min), max);
}

void StatusBar::SetPanels(const std::vector<int>& widthsTwips) {
    std::vector<int> edges;
    int edge = 0;
    for (const int width : widthsTwips) edges.push_back(edge += PixelsFromTwips(width, Handle()));
    if (!edges.empty()) edges.back() = -1;
    Send(SB_SETPARTS, edges.size(), reinterpret_cast<LPARAM>(edges.data()));
}

void StatusBar::SetPanelText(int panel, const std::wstring& text) {
    Send(SB_SETTEXTW, static_cast<WPARAM>(panel), reinterpret_cast<LPARAM>(text.c_str()));
}

std::wstring StatusBar::PanelText(int panel) const {
    std::wstring text(static_cast<std::size_t>(LOWORD(Send(SB_GETTEXTLENGTHW, static_cast<WPARAM>(panel)))) + 1, L'\0');
    Send(SB_GETTEXTW, static_cast<WPARAM>(panel), reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

RECT StatusBar::PanelPlace(int panel) const {
    RECT place{};
    Send(SB_GETRECT, static_cast<WPARAM>(panel), reinterpret_cast<LPARAM>(&place));
    return place;
}

} // namespace ui
