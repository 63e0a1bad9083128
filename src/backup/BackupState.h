#pragma once

#include "backup/StartCondition.h"
#include "platform/System.h"
#include "shell/MediumOffer.h"

#include <memory>
#include <string>

/// What one opened backup window remembers.
struct BackupState {
    Medium miTypeMedia = Medium::Cd;
    std::wstring mstrDrive;        ///< the drive that the copy goes to, such as "E:\"
    std::wstring mstrDrvPreSelect; ///< the drive to select when the list is filled
    DiscFacts disc;
    /// From the start of a run until it ends or is stopped.
    bool isOperationInProgress = false;
    /// While an erase that was started from this window runs.
    bool isErasing = false;
    /// Keeps the computer awake for as long as a run lasts.
    std::unique_ptr<Hold> awake;
};
