#include "backup/RunPhase.h"

#include "platform/RuntimeError.h"

#include <cstdint>
#include <initializer_list>

namespace {

using enum RunPhase;

/// Some phases. Takes no memory: a run that has met the end of it must still find out of its phase.
class PhaseSet {
  public:
    constexpr PhaseSet(std::initializer_list<RunPhase> phases) {
        for (const RunPhase phase : phases) bits_ |= Bit(phase);
    }
    constexpr bool Has(RunPhase phase) const { return (bits_ & Bit(phase)) != 0; }

  private:
    static constexpr std::uint32_t Bit(RunPhase phase) { return std::uint32_t{1} << static_cast<unsigned>(phase); }

    std::uint32_t bits_ = 0;
};

/// What may follow a phase, closing apart.
PhaseSet NextOf(RunPhase phase) {
    switch (phase) {
    case Opening:
        return {Idle};
    case Idle:
        return {Preparing, Erasing};
    case Preparing:
        return {Archiving, Idle};
    case Archiving:
        return {Archived, ArchiveFailed, ArchiveStopped, Idle};
    case Archived:
    case ArchiveFailed:
        return {ArchiveStopped, Copying, StartingWrite, Idle};
    case ArchiveStopped:
        // A disk's run goes on to tell that there is no backup; a disc is not touched.
        return {Copying, Idle};
    case Copying:
        return {Ending, Idle};
    case StartingWrite:
        return {Writing, StartRefused, Ending, Idle};
    case Writing:
        return {Ending, Idle};
    case StartRefused:
        return {Preparing, Idle};
    case Ending:
    case Erasing:
        return {Idle};
    case Closed:
        return {};
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

} // namespace

bool IsStepAllowed(RunPhase from, RunPhase to) {
    if (to == Closed) return true;
    return NextOf(from).Has(to);
}

bool IsOperationInProgress(RunPhase phase) {
    switch (phase) {
    case Archiving:
    case Archived:
    case ArchiveFailed:
    case Copying:
    case StartingWrite:
    case Writing:
        return true;
    case Opening:
    case Idle:
    case Preparing:
    case ArchiveStopped:
    case StartRefused:
    case Ending:
    case Erasing:
    case Closed:
        return false;
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

bool IsRunning(RunPhase phase) {
    switch (phase) {
    case Preparing:
    case Archiving:
    case Archived:
    case ArchiveFailed:
    case ArchiveStopped:
    case Copying:
    case StartingWrite:
    case Ending:
        return true;
    case Opening:
    case Idle:
    case Writing:
    case StartRefused:
    case Erasing:
    case Closed:
        return false;
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

void CurrentPhase::Enter(RunPhase next) {
    if (now_ == Closed) return;
    if (!IsStepAllowed(now_, next)) throw RuntimeError(ErrorNumber::InvalidCall);
    now_ = next;
}

void CurrentPhase::Stop() {
    switch (now_) {
    case Archiving:
    case Archived:
    case ArchiveFailed:
        return Enter(ArchiveStopped);
    case Copying:
        // The copy itself is not interrupted; its end is passed over in silence.
        return Enter(Ending);
    case StartingWrite:
    case Writing:
        return Enter(Idle);
    case Opening:
    case Idle:
    case Preparing:
    case ArchiveStopped:
    case StartRefused:
    case Ending:
    case Erasing:
    case Closed:
        break;
    }
}

void CurrentPhase::SetErasing(bool isErasing) {
    if (isErasing == IsAt(Erasing)) return;
    Enter(isErasing ? Erasing : Idle);
}
