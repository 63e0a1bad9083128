#pragma once

#include "backup/DiscFacts.h"
#include "backup/RunPhase.h"
#include "core/Medium.h"
#include "platform/Power.h"

#include <memory>
#include <string>

/// What one opened backup window remembers.
struct BackupState {
    Medium miTypeMedia = Medium::Cd;
    std::wstring mstrDrive;        ///< the drive that the copy goes to, such as "E:\"
    std::wstring mstrDrvPreSelect; ///< the drive to select when the list is filled
    DiscFacts disc;
    CurrentPhase phase;
    /// Keeps the computer awake and the session going for as long as a run lasts.
    std::unique_ptr<Hold> awake;
};
