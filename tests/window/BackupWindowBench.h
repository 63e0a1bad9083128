#pragma once

#include "FormDriver.h"
#include "backup/forms/frmBackup.h"
#include "core/ArchiveValues.h"
#include "core/LanguageValues.h"
#include "core/StartUpValues.h"
#include "core/UsbAnswer.h"
#include "resources/TextId.h"
#include "selection/forms/ctlSelectionFichiersIds.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/BoxReader.h"
#include "support/FakeMachine.h"
#include "support/FakeMainWindow.h"
#include "ui/MessagePump.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

/// The backup window on a stand-in workstation that has real messages.
class BackupWindowTest : public testing::Test, protected FormDriver, protected BoxReader {
  protected:
    static constexpr std::uint64_t Megabyte = 1048576;

    BackupWindowTest() : machine(&messages) {
        machine.app.startUp->dblEspaceDisponible = 5e9;
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"", {5e9, 9e9});
        machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\7Za.exe", "x");
        machine.files.AddSizedFile(L"C:\\Data\\a.txt", 1000000);
        machine.files.AddSizedFile(L"C:\\Data\\b.txt", 2000000);
        machine.files.AddFolder(L"C:\\Temp");
        machine.environment.Set(L"Temp", L"C:\\Temp");
        machine.processes.effect = [this](const std::wstring& commandLine) { Archive(commandLine); };
    }
    ~BackupWindowTest() override { EXPECT_EQ(machine.power.awakeHolds, 0); }

    /// What the archiver leaves behind.
    void Archive(const std::wstring& commandLine) {
        if (commandLine.find(L"OKRBACKUP.ZIP") != std::wstring::npos) {
            machine.files.AddSizedFile(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", archiveSizeBytes);
        } else {
            machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip", "inner");
            machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\Zip0002.zip", "inner");
        }
        if (whileArchiving) whileArchiving();
    }

    void SpeakEnglish() {
        machine.app.language->lngLangue = 10000;
        machine.locale.decimalSeparator = L".";
    }
    void AddRemovable(const std::wstring& root) { machine.drives.Add(root, DriveType::Removable, L"", {1e9, 2e9}); }
    void AddExternal(const std::wstring& root) {
        machine.drives.Add(root, DriveType::Fixed, L"", {1e9, 2e9});
        machine.usb.busTypes[root.substr(0, 2)] = 7;
        machine.usb.serviceNames = {L"USBSTOR"};
        machine.app.usbAnswer->blnQuestionUSB = 1;
        machine.app.usbAnswer->intReponseUSB = box::AnswerYes;
    }
    void AddCdWriter(const FakeDisc& disc) { machine.discWriters.cdDrives.push_back({L"CD (G:)", disc}); }
    void AddDvdWriter(const FakeDisc& disc) { machine.discWriters.dvdDrives.push_back({L"DVD (H:)", disc}); }

    void Open(Medium medium, const std::wstring& drive = {}) {
        form = std::make_unique<frmBackup>(machine.app, [this](ui::Form&) {
            ++questions;
            machine.app.archive->backupPassword = L"Secret-1";
            return givesPassword;
        });
        form->SetMedia(medium);
        form->SetParent(mainWindow);
        if (!drive.empty()) form->SetDrive(drive);
        form->Create();
        form->Show();
    }
    void OpenRemovable() {
        AddRemovable(L"E:\\");
        Open(Medium::RemovableDisk, L"E:\\");
    }
    void OpenCd(const FakeDisc& disc = BlankDisc(MediaKind::CdR, 700 * Megabyte)) {
        AddCdWriter(disc);
        Open(Medium::Cd);
    }
    FakeDiscWriter& Cd() { return *machine.discWriters.Latest(DiscFamily::Cd); }
    FakeDiscRecord& CdRecord() { return machine.discWriters.Record(DiscFamily::Cd); }

    HWND Window() const override { return form->Handle(); }
    std::wstring PanelText(int panel) const {
        wchar_t text[256] = {};
        SendMessageW(At(IDC_stBarDataWriter), SB_GETTEXTW, static_cast<WPARAM>(panel), reinterpret_cast<LPARAM>(text));
        return text;
    }
    COLORREF ColorOf(int id) const { return form->TextColor(id); }
    /// Drops the two files on the list.
    void AddItems() {
        ListViewDriver(HostedAt(IDC_lvFichRep)).Drop({L"C:\\Data\\a.txt", L"C:\\Data\\b.txt"});
        ui::RunPendingMessages();
    }
    std::wstring Resource(TextId id) const { return machine.app.Text(id); }
    const FakeMessageBoxes& Boxes() const override { return machine.messageBoxes; }

    FormMessageLoop messages;
    FakeMachine machine;
    FakeMainWindow mainWindow;
    std::unique_ptr<frmBackup> form;
    std::uint64_t archiveSizeBytes = 3000000;
    std::function<void()> whileArchiving;
    bool givesPassword = true;
    int questions = 0;
};
