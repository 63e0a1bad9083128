#pragma once

#include "platform/windows/MemoryEnd.h"
#include "platform/windows/QuietErrors.h"
#include "platform/windows/SystemLibrary.h"

#include <windows.h>

#include <commctrl.h>
#include <objbase.h>

/// What Windows has to know before the first window.
class ProcessSetUp {
  public:
    ProcessSetUp() {
        PrepareToThrowWithoutMemory();
        LoadLibrariesFromSystemOnly();
        // The window does not repaint while an archive is built; it is at work all the same.
        DisableProcessWindowsGhosting();
        SuppressDiskBoxes();
        INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES};
        InitCommonControlsEx(&classes);
        // The shell opens documents, and lets the user choose folders, through COM.
        hasCom_ = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
    }
    ~ProcessSetUp() {
        if (hasCom_) CoUninitialize();
    }
    ProcessSetUp(const ProcessSetUp&) = delete;
    ProcessSetUp& operator=(const ProcessSetUp&) = delete;

  private:
    bool hasCom_ = false;
};
