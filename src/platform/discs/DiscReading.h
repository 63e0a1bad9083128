#pragma once

#include "platform/discs/DiscWriter.h"

#include <cstdint>

/// What a drive answers about its disc, in the system's own numbers (MasteringCodes.h).
struct DriveAnswers {
    std::uint32_t mediaTypeResult = 0; ///< result of asking for the kind of disc; the other answers need success
    std::int32_t mediaType = 0;
    std::uint32_t mediaStateResult = 0;
    std::int32_t mediaState = 0;
    bool isHeuristicallyBlank = false; ///< counts for discs that can only be overwritten
    std::uint32_t sizesResult = 0;
    std::int32_t totalSectors = 0;
    std::int32_t freeSectors = 0;
    bool isSupported = true;      ///< whether the system writes to such a disc at all
    std::int32_t fileSystems = 0; ///< found on a disc that can be added to; 0 when not asked for or not known

    bool operator==(const DriveAnswers&) const = default;
};

/// A disc as the windows see it.
struct DiscState {
    DiscPresence presence = DiscPresence::None;
    MediaKind kind = MediaKind::Other;
    DiscStatus status = DiscStatus::Unknown;
    bool isWritable = false;
    bool isDvdReady = false;
    std::uint64_t usedBytes = 0;
    std::uint64_t totalBytes = 0;
    std::uint64_t freeBytes = 0;

    bool operator==(const DiscState&) const = default;
};

MediaKind KindOf(std::int32_t mediaType);

/// Whether a drive that answers with this result may answer otherwise in a moment: it is held, loading or at work.
bool IsPassing(std::uint32_t result);

/// Whether both are readings of the same disc, as far as can be told.
bool IsSameDisc(const DiscState& disc, const DiscState& other);

/// Blank, open, closed or unknown, by the bits of the disc's state.
DiscStatus StatusOf(std::int32_t mediaState, bool isHeuristicallyBlank);

/// The disc behind a drive's answers. `volumeBytes` is the size of the volume mounted from it, 0 when there is none:
/// it stands in where the drive gives no figure for what is used.
DiscState DiscBehind(const DriveAnswers& answers, std::uint64_t volumeBytes);

/// Whether a file of this size needs UDF: the system's ISO 9660, and Joliet with it, holds files below 2 GiB.
bool NeedsUdf(std::uint64_t fileBytes);
