#pragma once

#include "core/Application.h"
#include "core/StartUpValues.h"
#include "core/UserValues.h"
#include "support/FakeClock.h"
#include "support/FakeDiscWriters.h"
#include "support/FakeDrives.h"
#include "support/FakeEnvironment.h"
#include "support/FakeEventLog.h"
#include "support/FakeFiles.h"
#include "support/FakeLocale.h"
#include "support/FakeMessageBoxes.h"
#include "support/FakeMessageLoop.h"
#include "support/FakeOperatingSystem.h"
#include "support/FakePower.h"
#include "support/FakeProcesses.h"
#include "support/FakeSettingsFiles.h"
#include "support/FakeStringTable.h"
#include "support/FakeUsbDevices.h"
#include "support/FakeUserAccount.h"

/// A whole workstation of stand-ins and an Application on it, as it is after start-up: French, the program in
/// C:\Valcoreaux\Backup, the user "agent".
class FakeMachine {
  public:
    FakeStringTable strings;
    FakeDrives drives;
    FakeUsbDevices usb;
    FakeFiles files;
    FakeProcesses processes;
    FakeOperatingSystem operatingSystem;
    FakeEnvironment environment;
    FakeLocale locale;
    FakeSettingsFiles settings;
    FakeUserAccount account;
    FakeClock clock;
    FakePower power;
    FakeEventLog eventLog;
    FakeMessageBoxes messageBoxes;
    FakeMessageLoop messageLoop;
    FakeDiscWriters discWriters;

    Application app;

    /// `realMessages` takes the place of the stand-in's message loop where real windows are tested.
    explicit FakeMachine(MessageLoop* realMessages = nullptr,
                         const std::wstring& programFolder = L"C:\\Valcoreaux\\Backup")
        : app(PortsWith(realMessages, programFolder)) {
        app.startUp->strRepRacine = programFolder.substr(0, programFolder.rfind(L'\\'));
        app.user->strProfilUtilisateur = account.profileFolder;
        app.user->strNomUtilisateur = L"agent";
        app.user->accountName = account.name;
    }

    /// The ways to the stand-ins, of which a test may take some elsewhere before it makes an Application with them.
    Machine Ports() {
        return {strings,  drives,  usb,   files, processes, operatingSystem, environment, locale,
                settings, account, clock, power, eventLog,  messageBoxes,    messageLoop, discWriters};
    }

  private:
    Machine PortsWith(MessageLoop* realMessages, const std::wstring& programFolder) {
        environment.programFolder = programFolder;
        Machine ports = Ports();
        if (realMessages != nullptr) ports.messageLoop = *realMessages;
        return ports;
    }
};
