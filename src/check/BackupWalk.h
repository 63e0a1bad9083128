#pragma once

#include "check/MediumSource.h"
#include "check/WalkListener.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

/// What the outer archive as such has come to.
struct WalkOutcome {
    bool hasDirectory = false; ///< the directory of the outer archive could be followed to its end
    bool doesDirectoryAgree = false;
    std::uint64_t unreadableBytes = 0; ///< of the medium
    std::string reason;
};

/// Walks through both levels of a backup's archive, once and without any other place to keep things: each inner archive
/// is read from the outer one's data as it comes. `onBytes` is called with the bytes of each piece that was read; it
/// may throw `Stopped`. Throws `MediumLost`, and what the listener throws.
WalkOutcome WalkBackup(InputFile& archive, const std::optional<std::string>& passphrase, WalkListener& listener,
                       const std::function<void(std::size_t)>& onBytes);
