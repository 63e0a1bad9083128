#include "FormDriver.h"

#include "ui/MessagePump.h"

#include <commctrl.h>

namespace {

/// The messages of the two kinds of lists, which differ in their numbers only.
struct ListMessages {
    UINT count;
    UINT textLength;
    UINT text;
    UINT selected;
    UINT select;
    WORD selectionChanged;
};

constexpr ListMessages ListBoxMessages{LB_GETCOUNT,  LB_GETTEXTLEN, LB_GETTEXT,
                                       LB_GETCURSEL, LB_SETCURSEL,  LBN_SELCHANGE};
constexpr ListMessages DropDownMessages{CB_GETCOUNT,  CB_GETLBTEXTLEN, CB_GETLBTEXT,
                                        CB_GETCURSEL, CB_SETCURSEL,    CBN_SELCHANGE};

const ListMessages& MessagesOf(HWND list) {
    wchar_t name[16] = {};
    GetClassNameW(list, name, 16);
    return std::wstring(name) == L"ListBox" ? ListBoxMessages : DropDownMessages;
}

} // namespace

HWND FormDriver::HostedAt(int id) const {
    HWND hosted = nullptr;
    while ((hosted = FindWindowExW(Window(), hosted, L"#32770", nullptr)) != nullptr) {
        if (HWND control = GetDlgItem(hosted, id)) return control;
    }
    return nullptr;
}

std::wstring FormDriver::Text(int id) const {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(At(id))) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(At(id), text.data(), static_cast<int>(text.size()))));
    return text;
}

LRESULT FormDriver::Progress(int id) const {
    return SendMessageW(At(id), PBM_GETPOS, 0, 0);
}

std::vector<std::wstring> FormDriver::Lines(int id) const {
    HWND list = At(id);
    const ListMessages& messages = MessagesOf(list);
    std::vector<std::wstring> lines(static_cast<std::size_t>(SendMessageW(list, messages.count, 0, 0)));
    for (std::size_t line = 0; line < lines.size(); ++line) {
        lines[line].resize(static_cast<std::size_t>(SendMessageW(list, messages.textLength, line, 0)) + 1);
        SendMessageW(list, messages.text, line, reinterpret_cast<LPARAM>(lines[line].data()));
        lines[line].pop_back();
    }
    return lines;
}

int FormDriver::Selected(int id) const {
    return static_cast<int>(SendMessageW(At(id), MessagesOf(At(id)).selected, 0, 0));
}

void FormDriver::Press(int id, WPARAM key) const {
    SetFocus(At(id));
    Press(key);
}

void FormDriver::Press(WPARAM key) const {
    PostMessageW(GetFocus(), WM_KEYDOWN, key, 0);
    ui::RunPendingMessages();
}

void FormDriver::Choose(int id, int line) const {
    HWND list = At(id);
    const ListMessages& messages = MessagesOf(list);
    SendMessageW(list, messages.select, static_cast<WPARAM>(line), 0);
    SendMessageW(Window(), WM_COMMAND, MAKEWPARAM(id, messages.selectionChanged), reinterpret_cast<LPARAM>(list));
}
