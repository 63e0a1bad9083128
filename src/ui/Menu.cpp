#include "ui/Menu.h"

#include "win32/UniqueHandle.h"

namespace ui {

namespace {

int InnerHeight(HWND window) {
    RECT inner{};
    GetClientRect(window, &inner);
    return inner.bottom;
}

void AttachBar(HWND window, UniqueMenu bar) {
    const int innerHeight = InnerHeight(window);
    // The window destroys its menu, and a menu those that it holds.
    if (SetMenu(window, bar.Get())) static_cast<void>(bar.Release());
    RECT outer{};
    GetWindowRect(window, &outer);
    SetWindowPos(window, nullptr, 0, 0, outer.right - outer.left,
                 outer.bottom - outer.top + innerHeight - InnerHeight(window),
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

void AddMenu(Form& form, const std::wstring& caption, const std::vector<MenuCommand>& commands) {
    UniqueMenu first(GetMenu(form.Handle()) == nullptr ? CreateMenu() : nullptr);
    UniqueMenu menu(CreatePopupMenu());
    for (const MenuCommand& command : commands)
        AppendMenuW(menu.Get(), MF_STRING, static_cast<UINT_PTR>(command.id), command.caption.c_str());
    HMENU bar = first ? first.Get() : GetMenu(form.Handle());
    if (AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu.Get()), caption.c_str()))
        static_cast<void>(menu.Release());
    if (first) {
        AttachBar(form.Handle(), std::move(first));
    } else {
        DrawMenuBar(form.Handle());
    }
}

} // namespace ui
