#pragma once

#include "FormDriver.h"
#include "HostForm.h"
#include "selection/forms/ctlSelectionFichiers.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "support/SelectionHost.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

/// The selection control in a host window, on a stand-in workstation that has real messages.
class SelectionControlTest : public testing::Test, protected FormDriver {
  protected:
    using Texts = std::vector<std::wstring>;
    using Ids = std::vector<int>;

    SelectionControlTest() : machine(&messages), host(machine.app) {
        machine.drives.Add(L"A:\\", DriveType::Removable, L"FLOPPY");
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"Système");
        machine.drives.Add(L"D:\\", DriveType::Fixed, L"Données");
        machine.drives.Add(L"F:\\", DriveType::CdRom, std::nullopt);
        machine.files.FailWith(L"F:\\", ErrorNumber::DiskNotReady);
        machine.environment.Set(L"UserProfile", L"C:\\Users\\agent");
        machine.environment.Set(L"Windir", L"C:\\windows");
        for (const wchar_t* name : {L"c.txt", L"a.txt", L"b.txt"})
            machine.files.AddSizedFile(std::wstring(L"C:\\Users\\agent\\Documents\\") + name, 100);
        machine.files.AddFolder(L"C:\\Users\\agent\\Documents\\Ventes");
        machine.files.AddSizedFile(L"D:\\Data\\x.dat", 1000);
        machine.files.AddSizedFile(L"D:\\Data\\y.dat", 2000);
        machine.files.AddSizedFile(L"D:\\Data\\z.dat", 3000);
        host.spaceOf = [this](const std::wstring& path) { return control->SpaceOf(path); };
    }

    void AddListFile(const std::wstring& name, const std::string& content) {
        machine.files.AddFile(machine.app.ListFileFolder() + name, content);
    }

    void Open() {
        control = std::make_unique<ctlSelectionFichiers>(machine.app, host);
        parent.Create();
        SetWindowPos(parent.Handle(), nullptr, 0, 0, 820, 460, SWP_NOMOVE);
        for (HWND child = GetWindow(parent.Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            ShowWindow(child, SW_HIDE);
        control->CreateChild(parent, {5, 4, 523, 242});
        parent.Show();
        ui::RunPendingMessages();
    }

    HWND Window() const override { return control->Handle(); }
    void Click(int id) {
        FormDriver::Click(id);
        ui::RunPendingMessages();
    }
    void ClickLine(int id, int row) {
        RECT place{};
        SendMessageW(At(id), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        const LPARAM point = MAKELPARAM(place.left + 20, (place.top + place.bottom) / 2);
        PostMessageW(At(id), WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(At(id), WM_LBUTTONUP, 0, point);
        ui::RunPendingMessages();
    }
    void SelectLines(const std::vector<int>& rows) {
        for (const int row : rows) SendMessageW(At(IDC_flbSelectFichier), LB_SETSEL, TRUE, row);
    }
    void ChooseDrive(int row) {
        Choose(IDC_dlbSelectLecteur, row);
        ui::RunPendingMessages();
    }
    std::wstring Drive() const { return Text(IDC_dlbSelectLecteur); }
    ListViewDriver List() const { return ListAt(IDC_lvFichRep); }
    void Drop(const Texts& paths) {
        List().Drop(paths);
        ui::RunPendingMessages();
    }
    int RowCount() const { return List().Count(); }
    std::wstring Row(int row) const { return List().Row(row); }
    Texts Rows() const { return List().Rows(); }

    FormMessageLoop messages;
    FakeMachine machine;
    SelectionHost host;
    HostForm parent;
    std::unique_ptr<ctlSelectionFichiers> control;
};
