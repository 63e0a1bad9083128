#pragma once

#include "FormDriver.h"
#include "shell/forms/FormMessageLoop.h"
#include "shell/forms/frmMain.h"
#include "support/FakeMachine.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The main window on a stand-in workstation that has real messages.
class MainWindowTest : public testing::Test, protected FormDriver {
  protected:
    using Ids = std::vector<int>;
    using Words = std::vector<std::wstring>;

    struct Opening {
        Medium medium;
        std::optional<std::wstring> drive;
    };

    MainWindowTest()
        : machine(&messages), form(machine.app, {[this](frmMain& parent, Medium medium, const auto& drive) {
                                                     openings.push_back({medium, drive});
                                                     if (whenOpened) whenOpened(parent);
                                                 },
                                                 [this](frmMain& parent) {
                                                     ++restores;
                                                     if (whenOpened) whenOpened(parent);
                                                 }}) {
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"", {12345678, 2e9});
        machine.usb.busTypes[L"C:"] = 11;
        machine.clock.speed = 200;
    }

    void Start() {
        form.Create();
        form.Show();
    }
    void StartInEnglish() {
        machine.locale.languageName = L"English";
        Start();
    }
    void AddRemovable(const wchar_t* root) { machine.drives.Add(root, DriveType::Removable); }
    void AddExternal(const wchar_t* drive) {
        machine.drives.Add(std::wstring(drive) + L"\\", DriveType::Fixed);
        machine.usb.busTypes[drive] = 7;
        machine.usb.serviceNames = {L"USBSTOR"};
    }
    void AddCdWriter() { machine.discWriters.cdDrives.push_back({L"CD (G:)", {}}); }
    void AddDvdWriter() {
        machine.discWriters.dvdDrives.push_back({L"DVD (H:)", {}});
        machine.settings.Set(L"c:\\Valcoreaux\\Backup\\Backup.ini", L"DVD", L"Disponible", L"oui");
    }
    void AddEverything() {
        AddCdWriter();
        AddDvdWriter();
        AddRemovable(L"E:\\");
        AddRemovable(L"I:\\");
        AddExternal(L"J:");
    }

    HWND Window() const override { return form.Handle(); }
    std::wstring Chosen(int comboId) const {
        const int line = Selected(comboId);
        return line < 0 ? std::wstring() : Lines(comboId)[static_cast<std::size_t>(line)];
    }
    std::size_t Count(int comboId) const { return Lines(comboId).size(); }
    int WidthTwips(int id) const { return ui::BoundsOf(At(id)).width; }
    Ids EnabledMedia() const {
        Ids enabled;
        for (const int id : {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}) {
            if (IsEnabled(id)) enabled.push_back(id);
        }
        return enabled;
    }
    Ids CheckedMedia() const {
        Ids checked;
        for (const int id : {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}) {
            if (IsChecked(id)) checked.push_back(id);
        }
        return checked;
    }
    std::vector<std::wstring> DetectionLabels() const {
        return {Text(IDC_lblDetCD), Text(IDC_lblDetDVD), Text(IDC_lblDetRemDisk), Text(IDC_lblDetExtDisk)};
    }
    FormMessageLoop messages;
    FakeMachine machine;
    std::vector<Opening> openings;
    int restores = 0;
    std::function<void(frmMain&)> whenOpened;
    frmMain form;
};
