#pragma once

#include "FormDriver.h"
#include "WaitFor.h"
#include "check/ZipBuilder.h"
#include "check/forms/CheckWindow.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "support/GatedFileStore.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The check window on a stand-in workstation with one medium, E:, of two items and an open gate before its archive.
class CheckWindowTest : public testing::Test, protected FormDriver {
  protected:
    using Texts = std::vector<std::wstring>;

    CheckWindowTest() {
        AddMedium(L"E:\\");
        files->gate.Open();
        ways.files = files;
        ways.driveLines = [this] { return drives; };
        ways.chooseBackup = [this](ui::Form&, const std::wstring&) { return chosenBackup; };
        ways.chooseTarget = [this](ui::Form&, const std::wstring&) { return chosenTarget; };
        ways.chooseReport = [this](ui::Form&, const std::wstring&) { return chosenReport; };
    }
    ~CheckWindowTest() override {
        files->gate.Open();
        if (form) form->Unload();
        WaitFor([this] { return !form || form->HasWorkEnded(); });
    }

    void AddMedium(const std::wstring& root) {
        files->Add(root + L"OKRBACKUP.ZIP",
                   BuildBackup({{{"a.txt", "premier"}}, {{"Docs/", ""}, {"Docs/b.bin", std::string(3000, 'b')}}},
                               "Valcoreaux1"));
        files->Add(root + L"_listFich.lst", "C:\\a.txt,32,Zip0001\r\nC:\\Docs\\*.*,-1,Zip0002\r\n");
    }
    /// Shows the window with its only drive chosen and its list read.
    void Open() {
        form.emplace(machine.app, ways);
        form->Create();
        form->Show();
        ASSERT_TRUE(WaitFor([this] { return IsIdle() && (drives.size() != 1 || List().Count() == 2); }));
    }
    bool IsIdle() const { return form->HasWorkEnded() && IsVisible(IDC_Close) && !Lines(IDC_Places).empty(); }
    void StartCheck(const std::wstring& password = L"Valcoreaux1") {
        Type(IDC_Password, password);
        Click(IDC_Check);
    }
    /// Checks, and closes the box at the end.
    void Check(const std::wstring& password = L"Valcoreaux1") {
        const std::size_t boxes = machine.messageBoxes.shown.size();
        StartCheck(password);
        ASSERT_TRUE(WaitFor([&] { return machine.messageBoxes.shown.size() > boxes; }));
    }
    void CloseGate() { files->gate.Close(); }

    HWND Window() const override { return form->Handle(); }
    ListViewDriver List() const { return ListAt(IDC_Items); }
    std::wstring Result(int row) const { return List().Cell(row, static_cast<int>(CheckColumn::Result)); }
    FakeMessageBoxes::Box LastBox() const { return machine.messageBoxes.shown.back(); }

    FormMessageLoop messages;
    FakeMachine machine{&messages};
    std::shared_ptr<GatedFileStore> files = std::make_shared<GatedFileStore>();
    std::vector<std::wstring> drives = {L"E:\\ Disque amovible  Volume : SAUVEGARDE"};
    std::optional<std::wstring> chosenBackup;
    std::optional<std::wstring> chosenTarget = L"D:\\Cible";
    std::optional<std::wstring> chosenReport = L"D:\\rapport.txt";
    CheckWays ways;
    std::optional<CheckWindow> form;
};
