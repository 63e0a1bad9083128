#pragma once

#include "core/Application.h"
#include "platform/windows/WindowsDrives.h"
#include "platform/windows/WindowsEventLog.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsMessageBoxes.h"
#include "platform/windows/WindowsProcesses.h"
#include "platform/windows/WindowsStringTable.h"
#include "platform/windows/WindowsSystem.h"
#include "platform/windows/WindowsUsbDevices.h"
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
    WindowsSystem system;
    WindowsEventLog eventLog;
    WindowsMessageBoxes messageBoxes;
    ImapiDiscWriters discWriters{messageLoop};

    Machine Ports() {
        return {strings, drives, usb, files, processes, system, eventLog, messageBoxes, messageLoop, discWriters};
    }
};
