#include "Remote.h"
#include "Requests.h"

#include <windows.h>

#include <shlobj.h>

#include <vector>

namespace uidriver {

namespace {

void AppendRect(Row& row, HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    row.push_back(Number(rect.left));
    row.push_back(Number(rect.top));
    row.push_back(Number(rect.right - rect.left));
    row.push_back(Number(rect.bottom - rect.top));
}

// windows PID: handle, class, title, is enabled, owner, left, top, width, height, inner width, inner height, can be
// resized, has a menu of each visible top-level window
Rows ListWindows(const Row& fields) {
    struct Search {
        DWORD processId;
        std::vector<HWND> found;
    } search{static_cast<DWORD>(NumberAt(fields, 1)), {}};
    EnumWindows(
        [](HWND window, LPARAM context) -> BOOL {
            auto& current = *reinterpret_cast<Search*>(context);
            DWORD processId = 0;
            GetWindowThreadProcessId(window, &processId);
            if (processId == current.processId && IsWindowVisible(window)) current.found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    Rows rows;
    for (const HWND window : search.found) {
        // The title is kept by the system, so that a window that is busy still shows up.
        wchar_t title[512] = {};
        GetWindowTextW(window, title, 512);
        if (title[0] == L'\0') InternalGetWindowText(window, title, 512);
        Row row{Handle(window), ClassOf(window), title, Number(IsWindowEnabled(window)),
                Handle(GetWindow(window, GW_OWNER))};
        AppendRect(row, window);
        RECT inner{};
        GetClientRect(window, &inner);
        row.push_back(Number(inner.right));
        row.push_back(Number(inner.bottom));
        row.push_back(Number((GetWindowLongW(window, GWL_STYLE) & WS_THICKFRAME) != 0));
        row.push_back(Number(GetMenu(window) != nullptr));
        rows.push_back(row);
    }
    return rows;
}

bool IsButton(HWND window) {
    return lstrcmpiW(ClassOf(window).c_str(), L"Button") == 0;
}

// controls WINDOW: handle, id, class, text, is enabled, is visible, left, top, width, height, style, check state,
// parent
Rows ListControls(const Row& fields) {
    std::vector<HWND> children;
    EnumChildWindows(
        WindowAt(fields, 1),
        [](HWND window, LPARAM context) -> BOOL {
            reinterpret_cast<std::vector<HWND>*>(context)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&children));
    Rows rows;
    for (const HWND child : children) {
        Row row{Handle(child), Number(GetDlgCtrlID(child)),    ClassOf(child),
                TextOf(child), Number(IsWindowEnabled(child)), Number(IsWindowVisible(child))};
        AppendRect(row, child);
        row.push_back(Number(GetWindowLongW(child, GWL_STYLE)));
        row.push_back(Number(IsButton(child) ? Send(child, BM_GETCHECK) : 0));
        row.push_back(Handle(GetParent(child)));
        rows.push_back(row);
    }
    return rows;
}

// glance WINDOW ID: text, is enabled, is visible of a control as the system keeps them; the program is not asked, so
// that it may be busy and is not held up
Rows Glance(const Row& fields) {
    const HWND control = GetDlgItem(WindowAt(fields, 1), static_cast<int>(NumberAt(fields, 2)));
    if (control == nullptr) throw RequestError("no such control");
    wchar_t text[512] = {};
    InternalGetWindowText(control, text, 512);
    return {{text, Number(IsWindowEnabled(control)), Number(IsWindowVisible(control))}};
}

Rows Text(const Row& fields) {
    return {{TextOf(WindowAt(fields, 1))}};
}

Rows SetText(const Row& fields) {
    Send(WindowAt(fields, 1), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(fields.at(2).c_str()));
    return {};
}

// type CONTROL TEXT: one character message for each character
Rows Type(const Row& fields) {
    const HWND control = WindowAt(fields, 1);
    for (const wchar_t character : fields.at(2)) Post(control, WM_CHAR, character, 1);
    return {};
}

// key CONTROL VIRTUALKEY: a key goes down and up again
Rows Key(const Row& fields) {
    const HWND control = WindowAt(fields, 1);
    const auto key = static_cast<WPARAM>(NumberAt(fields, 2));
    const LPARAM scanCode = static_cast<LPARAM>(MapVirtualKeyW(static_cast<UINT>(key), MAPVK_VK_TO_VSC)) << 16;
    Post(control, WM_KEYDOWN, key, scanCode | 1);
    // A key that closes its window is let go elsewhere.
    PostMessageW(control, WM_KEYUP, key, scanCode | 0xC0000001);
    return {};
}

Rows Click(const Row& fields) {
    Post(WindowAt(fields, 1), BM_CLICK);
    return {};
}

// mouse CONTROL X Y COUNT: one or two clicks at a point of the control
Rows Mouse(const Row& fields) {
    const POINT point{static_cast<LONG>(NumberAt(fields, 2)), static_cast<LONG>(NumberAt(fields, 3))};
    PostClick(WindowAt(fields, 1), point, NumberAt(fields, 4) == 2);
    return {};
}

Rows PostPlain(const Row& fields) {
    Post(WindowAt(fields, 1), static_cast<UINT>(NumberAt(fields, 2)), static_cast<WPARAM>(NumberAt(fields, 3)),
         static_cast<LPARAM>(NumberAt(fields, 4)));
    return {};
}

Rows SendPlain(const Row& fields) {
    return {{Number(Send(WindowAt(fields, 1), static_cast<UINT>(NumberAt(fields, 2)),
                         static_cast<WPARAM>(NumberAt(fields, 3)), static_cast<LPARAM>(NumberAt(fields, 4))))}};
}

// focus WINDOW: the control that has the keyboard in the window's thread
Rows Focus(const Row& fields) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(WindowAt(fields, 1), nullptr), &info);
    return {{Handle(info.hwndFocus)}};
}

// drop CONTROL PATH...: the paths arrive as files dropped from the desktop
Rows Drop(const Row& fields) {
    const HWND control = WindowAt(fields, 1);
    std::wstring paths;
    for (std::size_t index = 2; index < fields.size(); ++index) paths += fields[index] + L'\0';
    paths += L'\0';
    DROPFILES header{};
    header.pFiles = sizeof header;
    header.fWide = TRUE;
    RemoteBlock block(control, sizeof header + paths.size() * sizeof(wchar_t));
    block.Write(0, &header, sizeof header);
    block.Write(sizeof header, paths.data(), paths.size() * sizeof(wchar_t));
    Post(control, WM_DROPFILES, static_cast<WPARAM>(block.Address()));
    // The window that takes the drop gives the block back.
    block.Release();
    return {};
}

// browse WINDOW PATH: the system's dialog for folders goes to a path, as when a person opens one folder after another
Rows BrowseTo(const Row& fields) {
    const HWND dialog = WindowAt(fields, 1);
    const std::wstring path = fields.at(2) + L'\0';
    RemoteBlock block(dialog, path.size() * sizeof(wchar_t));
    block.Write(0, path.data(), path.size() * sizeof(wchar_t));
    Send(dialog, BFFM_SETSELECTIONW, TRUE, block.Address());
    return {};
}

} // namespace

void AddWindowRequests(RequestTable& table) {
    table[L"windows"] = ListWindows;
    table[L"glance"] = Glance;
    table[L"controls"] = ListControls;
    table[L"text"] = Text;
    table[L"settext"] = SetText;
    table[L"type"] = Type;
    table[L"key"] = Key;
    table[L"click"] = Click;
    table[L"mouse"] = Mouse;
    table[L"post"] = PostPlain;
    table[L"send"] = SendPlain;
    table[L"focus"] = Focus;
    table[L"drop"] = Drop;
    table[L"browse"] = BrowseTo;
}

} // namespace uidriver
