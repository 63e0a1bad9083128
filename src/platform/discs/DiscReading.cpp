#include "platform/discs/DiscReading.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>

namespace {

bool HasFailed(std::uint32_t result) {
    return (result & 0x80000000u) != 0;
}

std::uint64_t SectorBytes(std::int32_t sectors) {
    return static_cast<std::uint64_t>(std::max(sectors, 0)) * Mastering::SectorBytes;
}

DiscPresence PresenceBehind(const DriveAnswers& answers) {
    switch (answers.mediaTypeResult) {
    case Mastering::MediaIncompatible:
    case Mastering::MediaUpsideDown:
        return DiscPresence::Unrecognized;
    default:
        if (HasFailed(answers.mediaTypeResult)) return DiscPresence::None;
    }
    if (answers.mediaType != Mastering::MediaUnknown) return DiscPresence::Ready;
    // An empty drive answers with the unknown kind too; only a disc has a state.
    const bool hasState = !HasFailed(answers.mediaStateResult) && answers.mediaState != 0;
    return hasState || answers.mediaStateResult == Mastering::MediaIncompatible ? DiscPresence::Unrecognized
                                                                                : DiscPresence::None;
}

} // namespace

MediaKind KindOf(std::int32_t mediaType) {
    switch (mediaType) {
    case Mastering::MediaCdRom:
        return MediaKind::CdRom;
    case Mastering::MediaCdR:
        return MediaKind::CdR;
    case Mastering::MediaCdRw:
        return MediaKind::CdRw;
    case Mastering::MediaDvdRom:
        return MediaKind::DvdRom;
    case Mastering::MediaDvdRam:
        return MediaKind::DvdRam;
    case Mastering::MediaDvdPlusR:
        return MediaKind::DvdPlusR;
    case Mastering::MediaDvdPlusRw:
        return MediaKind::DvdPlusRw;
    case Mastering::MediaDvdPlusRDl:
        return MediaKind::DvdPlusRDl;
    case Mastering::MediaDvdMinusR:
        return MediaKind::DvdMinusR;
    case Mastering::MediaDvdMinusRw:
        return MediaKind::DvdMinusRw;
    default:
        return MediaKind::Other;
    }
}

DiscStatus StatusOf(std::int32_t mediaState, bool isHeuristicallyBlank) {
    if (mediaState == 0 || (mediaState & (Mastering::StateUnsupported | Mastering::StateDamaged)))
        return DiscStatus::Unknown;
    if (mediaState & Mastering::StateUnwritable) return DiscStatus::Closed;
    if (mediaState & Mastering::StateBlank) return DiscStatus::Blank;
    if (mediaState & Mastering::StateOverwriteOnly) return isHeuristicallyBlank ? DiscStatus::Blank : DiscStatus::Open;
    return mediaState & Mastering::StateAppendable ? DiscStatus::Open : DiscStatus::Unknown;
}

DiscState DiscBehind(const DriveAnswers& answers, std::uint64_t volumeBytes) {
    DiscState disc;
    disc.presence = PresenceBehind(answers);
    if (disc.presence == DiscPresence::None) return disc;
    disc.kind = disc.presence == DiscPresence::Ready ? KindOf(answers.mediaType) : MediaKind::Other;
    const std::int32_t state = HasFailed(answers.mediaStateResult) ? 0 : answers.mediaState;
    disc.status = StatusOf(state, answers.isHeuristicallyBlank);
    disc.isWritable = disc.presence == DiscPresence::Ready && state != 0 && !(state & Mastering::StateUnwritable);
    disc.isDvdReady = disc.isWritable && disc.kind >= MediaKind::DvdRom && disc.kind <= MediaKind::DvdPlusRDl;

    if (HasFailed(answers.sizesResult)) {
        // The drive gives no sizes for a disc that it cannot write to.
        disc.totalBytes = disc.usedBytes = volumeBytes;
        return disc;
    }
    disc.totalBytes = SectorBytes(answers.totalSectors);
    disc.freeBytes = SectorBytes(answers.freeSectors);
    if (disc.status == DiscStatus::Blank)
        disc.usedBytes = 0;
    else if (state & Mastering::StateOverwriteOnly)
        disc.usedBytes = std::min(volumeBytes, disc.totalBytes); // free is always the whole of such a disc
    else
        disc.usedBytes = disc.totalBytes - std::min(disc.totalBytes, disc.freeBytes);
    return disc;
}

bool NeedsUdf(std::uint64_t fileBytes) {
    constexpr std::uint64_t twoGib = std::uint64_t{2} << 30;
    return fileBytes >= twoGib;
}
