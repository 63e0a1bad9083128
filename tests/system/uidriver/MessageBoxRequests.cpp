#include "Remote.h"
#include "Requests.h"
#include "win32/PixelBitmap.h"

#include <windows.h>

#include <cstdlib>
#include <limits>
#include <vector>

namespace uidriver {

namespace {

constexpr int MessageTextId = 0xFFFF;

// A message box without an icon may keep an empty place for it, so "none" is a picture like the others.
struct IconKind {
    LPCWSTR resource;
    const wchar_t* name;
};

const IconKind Kinds[] = {{nullptr, L"none"},
                          {IDI_HAND, L"critical"},
                          {IDI_QUESTION, L"question"},
                          {IDI_EXCLAMATION, L"exclamation"},
                          {IDI_ASTERISK, L"information"}};

// An off-screen picture that is read pixel by pixel.
class Picture {
  public:
    explicit Picture(SIZE size) : size_(size), bitmap_(size), context_(bitmap_) {}

    HDC Context() const { return context_.Get(); }

    std::int64_t DifferenceFrom(const Picture& other) const {
        GdiFlush();
        std::int64_t difference = 0;
        for (LONG at = 0; at < size_.cx * size_.cy * 4; ++at) {
            if (at % 4 != 3) difference += std::abs(bitmap_.Bytes()[at] - other.bitmap_.Bytes()[at]);
        }
        return difference;
    }

  private:
    SIZE size_;
    PixelBitmap bitmap_;
    BitmapContext context_;
};

// A box is found as soon as it is there, which may be before it has painted itself.
void WaitUntilPainted(HWND control) {
    constexpr int looks = 200;
    constexpr DWORD lookMilliseconds = 10;
    constexpr DWORD screenMilliseconds = 60; // what is painted reaches the screen when the program next waits
    for (int look = 0; look < looks && GetUpdateRect(control, nullptr, FALSE); ++look) Sleep(lookMilliseconds);
    Sleep(screenMilliseconds);
}

std::wstring IconMostLike(HWND iconControl) {
    RECT rect{};
    GetWindowRect(iconControl, &rect);
    const SIZE size{rect.right - rect.left, rect.bottom - rect.top};
    Picture shown(size);
    const WindowContext screen(nullptr);
    BitBlt(shown.Context(), 0, 0, size.cx, size.cy, screen.Get(), rect.left, rect.top, SRCCOPY);

    std::wstring best = L"unknown";
    std::int64_t bestDifference = std::numeric_limits<std::int64_t>::max();
    for (const IconKind& kind : Kinds) {
        Picture expected(size);
        const RECT whole{0, 0, size.cx, size.cy};
        FillRect(expected.Context(), &whole, GetSysColorBrush(COLOR_BTNFACE));
        if (kind.resource != nullptr) {
            DrawIconEx(expected.Context(), 0, 0, LoadIconW(nullptr, kind.resource), size.cx, size.cy, 0, nullptr,
                       DI_NORMAL);
        }
        const std::int64_t difference = shown.DifferenceFrom(expected);
        if (difference < bestDifference) {
            bestDifference = difference;
            best = kind.name;
        }
    }
    // Two icons differ by far more than this; a picture that is further from all of them is none of them.
    constexpr std::int64_t meanDifferenceLimit = 12;
    return bestDifference > meanDifferenceLimit * 3 * size.cx * size.cy ? L"unknown" : best;
}

// An icon handle says nothing outside its process, so the icon is told by what the screen shows.
std::wstring IconShownBy(HWND iconControl) {
    // Without an icon the box's text may stand in its place.
    if (SendMessageW(iconControl, STM_GETICON, 0, 0) == 0) return L"none";
    // On a machine with much to do the icon itself may come later than its place.
    constexpr int looks = 20;
    std::wstring seen = L"none";
    for (int look = 0; look < looks && seen == L"none"; ++look) {
        WaitUntilPainted(iconControl);
        seen = IconMostLike(iconControl);
    }
    return seen;
}

// messagebox WINDOW: first its text, icon ("none" without one) and default button's id, then id and text of each
// button; no rows when the window is no message box
Rows MessageBoxParts(const Row& fields) {
    const HWND window = WindowAt(fields, 1);
    if (ClassOf(window) != L"#32770") return {};
    std::vector<HWND> children;
    EnumChildWindows(
        window,
        [](HWND child, LPARAM context) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(context)->push_back(child);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&children));
    bool hasText = false;
    std::wstring text;
    std::wstring icon = L"none";
    std::wstring defaultButton;
    Rows buttons;
    for (const HWND child : children) {
        const std::wstring className = ClassOf(child);
        const LONG style = GetWindowLongW(child, GWL_STYLE);
        if (className == L"Static" && (style & SS_TYPEMASK) == SS_ICON) {
            if ((style & WS_VISIBLE) != 0) icon = IconShownBy(child);
        } else if (className == L"Static" && (GetDlgCtrlID(child) & 0xFFFF) == MessageTextId) {
            text = TextOf(child);
            hasText = true;
        } else if (className == L"Button" && (style & WS_VISIBLE) != 0) {
            if ((style & BS_TYPEMASK) == BS_DEFPUSHBUTTON) defaultButton = Number(GetDlgCtrlID(child));
            buttons.push_back({Number(GetDlgCtrlID(child)), TextOf(child)});
        } else if (className != L"Static" && className != L"Button") {
            return {};
        }
    }
    if (!hasText || buttons.empty()) return {};
    Rows rows{{text, icon, defaultButton}};
    rows.insert(rows.end(), buttons.begin(), buttons.end());
    return rows;
}

} // namespace

void AddMessageBoxRequests(RequestTable& table) {
    table[L"messagebox"] = MessageBoxParts;
}

} // namespace uidriver
