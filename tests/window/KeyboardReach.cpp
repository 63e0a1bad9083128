#include "KeyboardReach.h"

#include "WindowText.h"
#include "platform/Text.h"

#include <algorithm>
#include <map>

namespace {

bool HasStyle(HWND window, LONG_PTR style) {
    return (GetWindowLongPtrW(window, GWL_STYLE) & style) != 0;
}

LONG_PTR ButtonType(HWND window) {
    return GetWindowLongPtrW(window, GWL_STYLE) & BS_TYPEMASK;
}

bool IsOption(HWND control) {
    return ClassOf(control) == L"Button" &&
           (ButtonType(control) == BS_AUTORADIOBUTTON || ButtonType(control) == BS_RADIOBUTTON);
}

bool IsField(HWND control) {
    const std::wstring name = ClassOf(control);
    return name == L"Edit" || name == L"ComboBox" || name == L"ListBox" || name == L"SysListView32";
}

bool IsUsed(HWND control) {
    return IsField(control) || (ClassOf(control) == L"Button" && ButtonType(control) != BS_GROUPBOX);
}

/// Controls in the order in which the dialog keeps them, those of hosted dialogs where their host stands.
void Collect(HWND parent, std::vector<HWND>& controls) {
    for (HWND control = GetWindow(parent, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control)) continue;
        if (GetWindowLongPtrW(control, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) {
            Collect(control, controls);
        } else {
            controls.push_back(control);
        }
    }
}

std::vector<HWND> ControlsOf(HWND form) {
    std::vector<HWND> controls;
    Collect(form, controls);
    return controls;
}

bool IsGroupReached(HWND form, HWND option) {
    HWND member = option;
    do {
        if (HasStyle(member, WS_TABSTOP)) return true;
        member = GetNextDlgGroupItem(form, member, FALSE);
    } while (member && member != option);
    return false;
}

wchar_t AccessKey(const std::wstring& text) {
    for (std::size_t at = 0; at + 1 < text.size(); ++at) {
        if (text[at] != L'&') continue;
        if (text[at + 1] != L'&') return UpperCase(text.substr(at + 1, 1))[0];
        ++at;
    }
    return 0;
}

} // namespace

std::vector<int> TabOrder(HWND form) {
    std::vector<int> order;
    const HWND first = GetNextDlgTabItem(form, nullptr, FALSE);
    for (HWND control = first; control;) {
        order.push_back(GetDlgCtrlID(control));
        control = GetNextDlgTabItem(form, control, FALSE);
        if (control == first) break;
    }
    return order;
}

std::vector<int> UnreachableControls(HWND form) {
    std::vector<int> unreachable;
    for (const HWND control : ControlsOf(form)) {
        if (!IsUsed(control) || HasStyle(control, WS_TABSTOP)) continue;
        if (IsOption(control) && IsGroupReached(GetParent(control), control)) continue;
        unreachable.push_back(GetDlgCtrlID(control));
    }
    return unreachable;
}

std::wstring AccessKeyClashes(HWND form) {
    std::map<wchar_t, int> claims;
    for (const HWND control : ControlsOf(form)) {
        const bool isCaptioned =
            ClassOf(control) == L"Button" || (ClassOf(control) == L"Static" && !HasStyle(control, SS_NOPREFIX));
        if (!isCaptioned) continue;
        if (const wchar_t key = AccessKey(TextOf(control))) ++claims[key];
    }
    std::wstring clashes;
    for (const auto& [key, count] : claims) {
        if (count > 1) clashes += key;
    }
    return clashes;
}

std::wstring LabelOf(HWND control) {
    const HWND before = GetWindow(control, GW_HWNDPREV);
    const bool isLabel =
        before && (ClassOf(before) == L"Static" || (ClassOf(before) == L"Button" && ButtonType(before) == BS_GROUPBOX));
    return isLabel ? TextOf(before) : std::wstring();
}

std::vector<int> UnlabelledFields(HWND form) {
    std::vector<int> unlabelled;
    for (const HWND control : ControlsOf(form)) {
        if (IsField(control) && LabelOf(control).empty()) unlabelled.push_back(GetDlgCtrlID(control));
    }
    return unlabelled;
}
