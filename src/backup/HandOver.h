#pragma once

#include "core/Medium.h"
#include "shell/MainWindow.h"

#include <optional>
#include <string>

/// Gives a new backup window what it is to know before it is shown, in this order: the medium, the window that it goes
/// back to, and for a disk the drive root that was chosen.
template<typename BackupWindow>
void HandOver(BackupWindow& window, Medium medium, MainWindow& parent, const std::optional<std::wstring>& drive) {
    window.SetMedia(medium);
    window.SetParent(parent);
    if (drive) window.SetDrive(*drive);
}
