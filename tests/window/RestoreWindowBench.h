#pragma once

#include "FormDriver.h"
#include "WaitFor.h"
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
class RestoreWindow : public testing::Test, protected FormDriver {
  protected:
    using Ids = std::vector<int>;
    using Texts = std::vector<std::wstring>;

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
    void SelectDrive(int line) { Choose(IDC_lstDrive, line); }
    void OpenFirstDrive() {
        Open();
        SelectDrive(0);
    }
    void SendDeviceChange() { SendMessageW(form.Handle(), WM_DEVICECHANGE, 0x8000, 0); }
    /// Waits until a refresh that was asked for has come, for tests in which none or any number may: a timer that
    /// starts later and takes longer is through later, however long the machine stood still.
    void LetRefreshHappen();

    HWND Window() const override { return form.Handle(); }
    Texts DriveLinesShown() const { return Lines(IDC_lstDrive); }
    int SelectedDrive() const { return Selected(IDC_lstDrive); }
    ListViewDriver List() const { return ListAt(IDC_lvFichiersRepertoires); }
    int RowCount() const { return List().Count(); }
    std::wstring Cell(int row, int column) const { return List().Cell(row, column); }
    bool IsTicked(int row) const { return List().IsTicked(row); }
    void TickByKey(int row) const { List().TickByKey(row); }
    bool IsHooked() const { return ui::WindowProcedureHook::Of(form.Handle()) != nullptr; }
    WNDPROC Procedure() const { return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(form.Handle(), GWLP_WNDPROC)); }
    /// The extractions of single items that were run.
    Texts InnerExtractions() const {
        Texts lines;
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
