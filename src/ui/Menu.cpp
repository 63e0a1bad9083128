#include "ui/Menu.h"

namespace ui {

namespace {

int InnerHeight(HWND window) {
    RECT inner{};
    GetClientRect(window, &inner);
    return inner.bottom;
}

void AttachBar(HWND window, HMENU bar) {
    const int innerHeight = InnerHeight(window);
    SetMenu(window, bar);
    RECT outer{};
    GetWindowRect(window, &outer);
    SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left,
                 outer.bottom - outer.top + innerHeight - InnerHeight(window),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

void AddMenu(Form& form, const std::wstring& caption, const std::vector<MenuCommand>& commands) {
    HMENU bar = GetMenu(form.Handle());
    const bool isFirst = bar == nullptr;
    if (isFirst) bar = CreateMenu();
    HMENU menu = CreatePopupMenu();
    for (const MenuCommand& command : commands)
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(command.id), command.caption.c_str());
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), caption.c_str());
    if (isFirst)
        AttachBar(form.Handle(), bar);
    else
        DrawMenuBar(form.Handle());
}

} // namespace ui
