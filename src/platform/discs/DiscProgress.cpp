#include "platform/discs/DiscProgress.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>

namespace {

std::int16_t Percent(std::int64_t part, std::int64_t whole) {
    if (whole <= 0) return 0;
    return static_cast<std::int16_t>(std::clamp<std::int64_t>(part * 100 / whole, 0, 100));
}

} // namespace

std::optional<DiscProgress> WriteProgress(const WriteReport& report, const DiscProgress& previous) {
    const std::int64_t written = std::int64_t{report.lastWrittenSector} - report.startSector;
    switch (report.action) {
    case Mastering::ActionWriting:
        return DiscProgress{DiscOperation::Writing,
                            written > 0 ? WritingStage::WritingTrack : WritingStage::FillingBuffer,
                            Percent(written, report.sectorCount)};
    case Mastering::ActionFinalizing:
    case Mastering::ActionVerifying:
        return DiscProgress{DiscOperation::Writing, WritingStage::ClosingTrack, previous.percent};
    case Mastering::ActionCompleted:
        return std::nullopt;
    default:
        return DiscProgress{DiscOperation::Preparing, WritingStage::FillingBuffer, 0};
    }
}

DiscProgress EraseProgress(std::int32_t elapsedSeconds, std::int32_t estimatedSeconds) {
    DiscProgress progress{DiscOperation::EraseInProgress, WritingStage::FillingBuffer, 99};
    if (estimatedSeconds <= 0)
        progress.percent = 0;
    else if (elapsedSeconds < estimatedSeconds)
        progress.percent = std::min<std::int16_t>(Percent(elapsedSeconds, estimatedSeconds), 98);
    return progress;
}
