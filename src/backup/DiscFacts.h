#pragma once

#include "platform/discs/DiscWriter.h"

/// What the backup window knows of the disc, as it read it last.
struct DiscFacts {
    DiscPresence presence = DiscPresence::None;
    MediaKind kind = MediaKind::Other;
    DiscStatus status = DiscStatus::Unknown;
    bool isDvdReady = false;
    bool isBusy = false; ///< the drive has not ended its last operation yet
    bool flDiscWritable = false;
    bool flDiscErasable = false;

    bool flNoDisc() const { return presence == DiscPresence::None; }
    bool flMediaUnrecognized() const { return presence == DiscPresence::Unrecognized; }
};
