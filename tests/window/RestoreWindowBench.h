#pragma once

#include "restore/forms/frmRestaureCD.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "support/FakeMainWindow.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What a user does to the password dialogs that come up, one entry each: a text is typed and accepted, none cancels.
struct RestoreDialogScript {
    std::vector<std::optional<std::wstring>> passwords;
    std::size_t seen = 0;
    std::function<void()> beforeAnswer; ///< may let messages run
    bool isAnswering = false;
};

/// The restore window on a stand-in workstation that has real messages, with somebody who answers its password dialogs.
class RestoreWindow : public testing::Test {
  protected:
    using Ids = std::vector<int>;
    using Lines = std::vector<std::wstring>;

    static constexpr const wchar_t* WorkFolder = L"C:\\Valcoreaux\\Backup\\zip";

    RestoreWindow();
    ~RestoreWindow() override;

    void AddBackup(const std::wstring& root, const std::string& list, const std::wstring& label = L"SAUVEGARDE") {
        machine.drives.Add(root, DriveType::Removable, label);
        machine.files.AddFile(root + L"_listFich.lst", list);
        machine.files.AddFile(root + L"OKRBACKUP.ZIP", "archive");
    }
    void AddTwoItems() { AddBackup(L"E:\\", "**UserProfile**\\a.txt,32,Zip0001\r\nC:\\Data\\*.*,-1,Zip0002\r\n"); }
    void Open() {
        form.Create();
        form.Show();
        ui::RunPendingMessages();
    }
    void SelectDrive(int line) {
        SendMessageW(At(IDC_lstDrive), LB_SETCURSEL, static_cast<WPARAM>(line), 0);
        SendMessageW(form.Handle(), WM_COMMAND, MAKEWPARAM(IDC_lstDrive, LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(At(IDC_lstDrive)));
    }
    void OpenFirstDrive() {
        Open();
        SelectDrive(0);
    }
    void SendDeviceChange() { SendMessageW(form.Handle(), WM_DEVICECHANGE, 0x8000, 0); }
    /// Handles messages until `isDone`, at most a second long.
    bool WaitFor(const std::function<bool()>& isDone) {
        const ULONGLONG end = GetTickCount64() + 1000;
        while (!isDone()) {
            if (GetTickCount64() > end) return false;
            ui::RunPendingMessages();
            Sleep(1);
        }
        return true;
    }
    void LetRefreshHappen() {
        const ULONGLONG end = GetTickCount64() + 300;
        WaitFor([&] { return GetTickCount64() > end; });
    }

    HWND At(int id) const { return GetDlgItem(form.Handle(), id); }
    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }
    void Click(int id) const { SendMessageW(At(id), BM_CLICK, 0, 0); }
    std::wstring Text(int id) const {
        wchar_t text[256] = {};
        GetWindowTextW(At(id), text, 256);
        return text;
    }
    Lines DriveLinesShown() const {
        Lines lines;
        const LRESULT count = SendMessageW(At(IDC_lstDrive), LB_GETCOUNT, 0, 0);
        for (LRESULT line = 0; line < count; ++line) {
            wchar_t text[256] = {};
            SendMessageW(At(IDC_lstDrive), LB_GETTEXT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text));
            lines.emplace_back(text);
        }
        return lines;
    }
    LRESULT SelectedDrive() const { return SendMessageW(At(IDC_lstDrive), LB_GETCURSEL, 0, 0); }
    int RowCount() const { return ListView_GetItemCount(At(IDC_lvFichiersRepertoires)); }
    std::wstring Cell(int row, int column) const {
        wchar_t text[300] = {};
        ListView_GetItemText(At(IDC_lvFichiersRepertoires), row, column, text, 300);
        return text;
    }
    bool IsTicked(int row) const { return ListView_GetCheckState(At(IDC_lvFichiersRepertoires), row) == 1; }
    void TickByKey(int row) {
        HWND list = At(IDC_lvFichiersRepertoires);
        LVITEMW item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
    }
    /// Whether a row's text is drawn bold, as the view is told when it asks.
    bool IsBold(int row) const {
        const HDC screen = GetDC(nullptr);
        const HGDIOBJ before = SelectObject(screen, GetStockObject(DEFAULT_GUI_FONT));
        NMLVCUSTOMDRAW draw{};
        draw.nmcd.hdr = {At(IDC_lvFichiersRepertoires), IDC_lvFichiersRepertoires, static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.hdc = screen;
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
        SendMessageW(form.Handle(), WM_NOTIFY, IDC_lvFichiersRepertoires, reinterpret_cast<LPARAM>(&draw));
        LOGFONTW font{};
        GetObjectW(SelectObject(screen, before), sizeof font, &font);
        ReleaseDC(nullptr, screen);
        return font.lfWeight >= FW_BOLD;
    }
    std::wstring RowTip(int row) const {
        wchar_t text[100] = {};
        NMLVGETINFOTIPW tip{};
        tip.hdr = {At(IDC_lvFichiersRepertoires), IDC_lvFichiersRepertoires, static_cast<UINT>(LVN_GETINFOTIPW)};
        tip.pszText = text;
        tip.cchTextMax = 100;
        tip.iItem = row;
        SendMessageW(form.Handle(), WM_NOTIFY, IDC_lvFichiersRepertoires, reinterpret_cast<LPARAM>(&tip));
        return text;
    }
    bool IsHooked() const { return ui::WindowProcedureHook::Of(form.Handle()) != nullptr; }
    WNDPROC Procedure() const { return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(form.Handle(), GWLP_WNDPROC)); }
    /// The extractions of single items that were run.
    Lines InnerExtractions() const {
        Lines lines;
        for (const std::wstring& line : machine.processes.commandLines) {
            if (line.find(L"OKRBACKUP.ZIP") == std::wstring::npos) lines.push_back(line);
        }
        return lines;
    }

    FormMessageLoop messages;
    FakeMachine machine{&messages};
    FakeMainWindow mainWindow;
    RestoreDialogScript dialogs;
    frmRestaureCD form{machine.app, mainWindow};

  private:
    UINT_PTR timer_ = 0;
};
