#include "ui/WindowProcedureHook.h"
#include "restore/forms/frmRestaureCD.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace {

TEST(WindowProcedureHook, MayGoAfterItsWindow) {
    ui::WindowProcedureHook hook;
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    hook.Install(window, modFonctionsCommunes::MyWindowProcRestaureCD);
    EXPECT_EQ(ui::WindowProcedureHook::Of(window), &hook);
    DestroyWindow(window);
    hook.Remove();
    EXPECT_FALSE(hook.IsInstalled());
}

TEST(WindowProcedureHook, MayGoBeforeItsWindow) {
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    const LONG_PTR own = GetWindowLongPtrW(window, GWLP_WNDPROC);
    {
        ui::WindowProcedureHook hook;
        hook.Install(window, modFonctionsCommunes::MyWindowProcRestaureCD);
        EXPECT_NE(GetWindowLongPtrW(window, GWLP_WNDPROC), own);
    }
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), own);
    EXPECT_EQ(ui::WindowProcedureHook::Of(window), nullptr);
    DestroyWindow(window);
}

} // namespace
