#pragma once

#include "core/Application.h"
#include "support/FakeDiscWriters.h"
#include "support/FakeDrives.h"
#include "support/FakeEventLog.h"
#include "support/FakeFiles.h"
#include "support/FakeMessageBoxes.h"
#include "support/FakeMessageLoop.h"
#include "support/FakeProcesses.h"
#include "support/FakeStringTable.h"
#include "support/FakeSystem.h"
#include "support/FakeUsbDevices.h"

/// A whole workstation of stand-ins and an Application on it, as it is after start-up: French, the program in
/// C:\Valcoreaux\Backup, the user "agent".
class FakeMachine {
  public:
    FakeStringTable strings;
    FakeDrives drives;
    FakeUsbDevices usb;
    FakeFiles files;
    FakeProcesses processes;
    FakeSystem system;
    FakeEventLog eventLog;
    FakeMessageBoxes messageBoxes;
    FakeMessageLoop messageLoop;
    FakeDiscWriters discWriters;

    Application app;

    /// `realMessages` takes the place of the stand-in's message loop where real windows are tested.
    explicit FakeMachine(MessageLoop* realMessages = nullptr,
                         const std::wstring& programFolder = L"C:\\Valcoreaux\\Backup")
        : app(Ports(realMessages, programFolder)) {
        app.strRepRacine = programFolder.substr(0, programFolder.rfind(L'\\'));
        app.strProfilUtilisateur = system.profileFolder;
        app.strNomUtilisateur = L"agent";
        app.accountName = system.accountName;
    }

  private:
    Machine Ports(MessageLoop* realMessages, const std::wstring& programFolder) {
        system.programFolder = programFolder;
        return {strings,    drives,       usb,
                files,      processes,    system,
                eventLog,   messageBoxes, realMessages != nullptr ? *realMessages : messageLoop,
                discWriters};
    }
};
