#pragma once

#include "core/Application.h"
#include "platform/windows/WindowsClock.h"
#include "platform/windows/WindowsDrives.h"
#include "platform/windows/WindowsEnvironment.h"
#include "platform/windows/WindowsEventLog.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsLocale.h"
#include "platform/windows/WindowsMessageBoxes.h"
#include "platform/windows/WindowsOperatingSystem.h"
#include "platform/windows/WindowsPower.h"
#include "platform/windows/WindowsProcesses.h"
#include "platform/windows/WindowsSettingsFiles.h"
#include "platform/windows/WindowsStringTable.h"
#include "platform/windows/WindowsUsbDevices.h"
#include "platform/windows/WindowsUserAccount.h"
#include "platform/windows/discs/ImapiDiscWriter.h"
#include "shell/forms/FormMessageLoop.h"

/// The workstation as it is.
struct Workstation {
    FormMessageLoop messageLoop;
    WindowsStringTable strings;
    WindowsDrives drives;
    WindowsUsbDevices usb;
    WindowsFiles files;
    WindowsProcesses processes;
    WindowsOperatingSystem operatingSystem;
    WindowsEnvironment environment;
    WindowsLocale locale;
    WindowsSettingsFiles settings;
    WindowsUserAccount account;
    WindowsClock clock;
    WindowsPower power;
    WindowsEventLog eventLog;
    WindowsMessageBoxes messageBoxes;
    ImapiDiscWriters discWriters{messageLoop};

    Machine Ports() {
        return {strings,  drives,  usb,   files, processes, operatingSystem, environment, locale,
                settings, account, clock, power, eventLog,  messageBoxes,    messageLoop, discWriters};
    }
};
