#include "platform/discs/DiscReading.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>

namespace {

constexpr std::uint64_t LargestIsoFileBytes = (std::uint64_t{2} << 30) - 1;

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
    case Mastering::NoMedia:
        return DiscPresence::None;
    default:
        if (HasFailed(answers.mediaTypeResult)) return DiscPresence::NotAnswering;
    }
    if (answers.mediaType != Mastering::MediaUnknown) return DiscPresence::Ready;
    if (IsPassing(answers.mediaStateResult)) return DiscPresence::NotAnswering;
    // An empty drive answers with the unknown kind too; only a disc has a state.
    const bool hasState = !HasFailed(answers.mediaStateResult) && answers.mediaState != 0;
    return hasState || answers.mediaStateResult == Mastering::MediaIncompatible ? DiscPresence::Unrecognized
                                                                                : DiscPresence::None;
}

/// The drive calls the whole of an overwritable disc free; what is on it is kept all the same. A volume that cannot be
/// read takes no one knows how much: it shows that the disc is not blank.
void CountVolume(DiscState& disc, std::uint64_t volumeBytes) {
    disc.usedBytes =
        std::min<std::uint64_t>(std::max<std::uint64_t>(volumeBytes, Mastering::SectorBytes), disc.totalBytes);
    if (volumeBytes != 0) disc.freeBytes -= std::min(disc.freeBytes, disc.usedBytes);
}

} // namespace

bool IsPassing(std::uint32_t result) {
    switch (result) {
    case Mastering::MediaBecomingReady:
    case Mastering::MediaFormatInProgress:
    case Mastering::MediaBusy:
    case Mastering::CommandTimeout:
    case Mastering::RecorderLocked:
    case Mastering::EraseRecorderInUse:
    case Mastering::AccessDenied:
        return true;
    default:
        return false;
    }
}

bool IsSameDisc(const DiscState& disc, const DiscState& other) {
    return disc.presence == other.presence && disc.kind == other.kind;
}

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
    if (disc.presence == DiscPresence::None || disc.presence == DiscPresence::NotAnswering) return disc;
    disc.kind = disc.presence == DiscPresence::Ready ? KindOf(answers.mediaType) : MediaKind::Other;
    const std::int32_t state = HasFailed(answers.mediaStateResult) ? 0 : answers.mediaState;
    disc.status = StatusOf(state, answers.isHeuristicallyBlank);
    // A burn that broke off can leave a disc so; erasing makes it good again.
    if (disc.kind == MediaKind::CdRw && (state & Mastering::StateDamaged) && !(state & Mastering::StateUnsupported))
        disc.status = DiscStatus::Closed;
    disc.isWritable = disc.presence == DiscPresence::Ready && answers.isSupported && state != 0 &&
                      !(state & Mastering::StateUnwritable);
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
        CountVolume(disc, volumeBytes);
    else
        disc.usedBytes = disc.totalBytes - std::min(disc.totalBytes, disc.freeBytes);
    // What is added follows the file system that is there.
    const bool isWithoutUdf = answers.fileSystems != 0 && !(answers.fileSystems & Mastering::Udf);
    if (disc.status == DiscStatus::Open && isWithoutUdf) disc.freeBytes = std::min(disc.freeBytes, LargestIsoFileBytes);
    return disc;
}

bool NeedsUdf(std::uint64_t fileBytes) {
    return fileBytes > LargestIsoFileBytes;
}
