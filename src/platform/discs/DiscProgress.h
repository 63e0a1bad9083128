#pragma once

#include "platform/discs/DiscWriter.h"

#include <cstdint>
#include <optional>

/// What the windows are told of an operation under way.
struct DiscProgress {
    DiscOperation operation = DiscOperation::None;
    WritingStage stage = WritingStage::FillingBuffer;
    std::int16_t percent = 0;

    bool operator==(const DiscProgress&) const = default;
};

/// What the system says of a write, in its own numbers.
struct WriteReport {
    std::int32_t action = 0;
    std::int32_t startSector = 0;
    std::int32_t sectorCount = 0;
    std::int32_t lastWrittenSector = 0;
};

/// The progress behind a report; `previous` is what was told last. Nothing for the action "completed": the write has
/// ended only when the system's call returns.
std::optional<DiscProgress> WriteProgress(const WriteReport& report, const DiscProgress& previous);

/// The progress of an erase that has taken `elapsedSeconds` of an estimated total. It stays below 99 while the estimate
/// holds and below 100 always: the window takes a long stay at 99 for the end.
DiscProgress EraseProgress(std::int32_t elapsedSeconds, std::int32_t estimatedSeconds);
