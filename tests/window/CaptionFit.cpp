#include "CaptionFit.h"

#include "WindowText.h"
#include "platform/Text.h"

#include <commctrl.h>

namespace {

SIZE Measured(HWND control, const std::wstring& text, UINT format, int width) {
    const HDC screen = GetDC(control);
    const HGDIOBJ previous = SelectObject(screen, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT place{0, 0, width, 0};
    DrawTextW(screen, text.c_str(), -1, &place, format | DT_CALCRECT);
    SelectObject(screen, previous);
    ReleaseDC(control, screen);
    return {place.right, place.bottom};
}

/// What a button's caption takes beside its text: the frame, or the mark before it.
int ButtonExtras(LONG_PTR style, int dotsPerInch) {
    int pixels = 0;
    switch (style & BS_TYPEMASK) {
    case BS_PUSHBUTTON:
    case BS_DEFPUSHBUTTON:
    case BS_GROUPBOX:
        pixels = 12;
        break;
    default:
        pixels = 13 + 4;
        break;
    }
    return MulDiv(pixels, dotsPerInch, 96);
}

int DotsPerInchOf(HWND window) {
    const HDC screen = GetDC(window);
    const int dots = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(window, screen);
    return dots;
}

struct Needs {
    SIZE size;
    bool isMeasured;
};

Needs NeedsOf(HWND control, const std::wstring& text, int width) {
    const LONG_PTR style = GetWindowLongPtrW(control, GWL_STYLE);
    const std::wstring className = ClassOf(control);
    if (className == L"Button") {
        const int extras = ButtonExtras(style, DotsPerInchOf(control));
        const bool wraps = (style & BS_MULTILINE) != 0;
        SIZE size = Measured(control, text, wraps ? DT_WORDBREAK : DT_SINGLELINE, width - extras);
        size.cx += extras;
        if ((style & BS_TYPEMASK) == BS_GROUPBOX) size.cy = 0;
        return {size, true};
    }
    if (className == L"Static") {
        const LONG_PTR type = style & SS_TYPEMASK;
        const bool isText = type <= SS_RIGHT || type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP;
        if (!isText || (style & SS_ELLIPSISMASK) != 0) return {{}, false};
        UINT format = type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP ? DT_SINGLELINE : DT_WORDBREAK;
        if (style & SS_NOPREFIX) format |= DT_NOPREFIX;
        return {Measured(control, text, format | DT_EXPANDTABS, width), true};
    }
    return {{}, false};
}

/// A label that lies under its field is never seen: it only names the field.
bool IsNameOnly(HWND control) {
    const HWND field = GetWindow(control, GW_HWNDNEXT);
    RECT label{}, place{}, common{};
    GetWindowRect(control, &label);
    GetWindowRect(field, &place);
    return field && ClassOf(control) == L"Static" && IntersectRect(&common, &label, &place) &&
           (GetWindowLongPtrW(control, GWL_STYLE) & WS_VISIBLE) == 0;
}

BOOL CALLBACK CheckCaption(HWND control, LPARAM parameter) {
    const std::wstring text = TextOf(control);
    if (text.empty() || IsNameOnly(control)) return TRUE;
    RECT inner{};
    GetClientRect(control, &inner);
    const Needs needs = NeedsOf(control, text, inner.right);
    if (needs.isMeasured && (needs.size.cx > inner.right || needs.size.cy > inner.bottom)) {
        reinterpret_cast<std::vector<std::string>*>(parameter)->push_back(
            std::to_string(GetDlgCtrlID(control)) + " \"" + ToAnsi(text) + "\" needs " + std::to_string(needs.size.cx) +
            " x " + std::to_string(needs.size.cy) + ", has " + std::to_string(inner.right) + " x " +
            std::to_string(inner.bottom));
    }
    return TRUE;
}

bool IsFrame(HWND control) {
    return ClassOf(control) == L"Button" && (GetWindowLongPtrW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
}

/// Whether a part of the control lies outside the window that holds it.
bool IsCut(HWND control, HWND parent) {
    RECT inside{}, place{}, common{};
    GetClientRect(parent, &inside);
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return !IntersectRect(&common, &inside, &place) || !EqualRect(&common, &place);
}

void NoteCommonPixels(HWND first, HWND second, std::vector<std::string>& found) {
    RECT one{}, other{}, common{};
    GetWindowRect(first, &one);
    GetWindowRect(second, &other);
    if (IntersectRect(&common, &one, &other))
        found.push_back(std::to_string(GetDlgCtrlID(first)) + " and " + std::to_string(GetDlgCtrlID(second)));
}

void CheckSiblings(HWND parent, std::vector<std::string>& found) {
    std::vector<HWND> controls;
    std::vector<HWND> frames;
    for (HWND control = GetWindow(parent, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control)) continue;
        if (GetWindowLongPtrW(control, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) CheckSiblings(control, found);
        if (IsCut(control, parent))
            found.push_back(std::to_string(GetDlgCtrlID(control)) + " and the end of its window");
        (IsFrame(control) ? frames : controls).push_back(control);
    }
    for (std::size_t first = 0; first < frames.size(); ++first) {
        for (std::size_t second = first + 1; second < frames.size(); ++second)
            NoteCommonPixels(frames[first], frames[second], found);
    }
    for (const HWND frame : frames) {
        for (const HWND control : controls) {
            RECT outer{}, inner{}, common{};
            GetWindowRect(frame, &outer);
            GetWindowRect(control, &inner);
            if (IntersectRect(&common, &outer, &inner) && !EqualRect(&common, &inner)) {
                found.push_back(std::to_string(GetDlgCtrlID(control)) + " and the edge of " +
                                std::to_string(GetDlgCtrlID(frame)));
            }
        }
    }
    for (std::size_t first = 0; first < controls.size(); ++first) {
        for (std::size_t second = first + 1; second < controls.size(); ++second)
            NoteCommonPixels(controls[first], controls[second], found);
    }
}

} // namespace

std::vector<std::string> ClippedCaptions(HWND form) {
    std::vector<std::string> clipped;
    EnumChildWindows(form, CheckCaption, reinterpret_cast<LPARAM>(&clipped));
    return clipped;
}

std::vector<std::string> OverlappingControls(HWND form) {
    std::vector<std::string> found;
    CheckSiblings(form, found);
    return found;
}
