#include "backup/RunPhase.h"

#include "platform/RuntimeError.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <vector>

namespace {

using enum RunPhase;
using Phases = std::set<RunPhase>;

/// The picture of the steps, closing apart.
const std::map<RunPhase, Phases> Steps = {
    {Opening, {Idle}},
    {Idle, {Preparing, Erasing}},
    {Preparing, {Archiving, Idle}},
    {Archiving, {Archived, ArchiveFailed, ArchiveStopped, Idle}},
    {Archived, {ArchiveStopped, Copying, StartingWrite, Idle}},
    {ArchiveFailed, {ArchiveStopped, Copying, StartingWrite, Idle}},
    {ArchiveStopped, {Copying, Idle}},
    {Copying, {Ending, Idle}},
    {StartingWrite, {Writing, StartRefused, Ending, Idle}},
    {Writing, {Ending, Idle}},
    {StartRefused, {Preparing, Idle}},
    {Ending, {Idle}},
    {Erasing, {Idle}},
    {Closed, {}},
};

/// A phase reached from the start by allowed steps; the test fails when there is no way.
CurrentPhase At(RunPhase wanted) {
    std::map<RunPhase, CurrentPhase> reached{{Opening, {}}};
    std::vector<RunPhase> due{Opening};
    while (!due.empty()) {
        const RunPhase from = due.back();
        due.pop_back();
        for (const RunPhase to : AllRunPhases) {
            if (reached.contains(to) || !IsStepAllowed(from, to)) continue;
            CurrentPhase phase = reached.at(from);
            phase.Enter(to);
            reached[to] = phase;
            due.push_back(to);
        }
    }
    EXPECT_TRUE(reached.contains(wanted)) << static_cast<int>(wanted);
    return reached[wanted];
}

TEST(RunPhase, EveryPhaseIsReachedAndEveryPairOfPhasesIsAStepOrIsRefused) {
    for (const RunPhase from : AllRunPhases) {
        for (const RunPhase to : AllRunPhases) {
            CurrentPhase phase = At(from);
            ASSERT_EQ(phase.Now(), from);
            const bool isStep = to == Closed || Steps.at(from).contains(to);
            EXPECT_EQ(IsStepAllowed(from, to), isStep) << static_cast<int>(from) << " to " << static_cast<int>(to);
            if (from == Closed) continue;
            if (isStep) {
                phase.Enter(to);
                EXPECT_EQ(phase.Now(), to);
                continue;
            }
            try {
                phase.Enter(to);
                ADD_FAILURE() << static_cast<int>(from) << " to " << static_cast<int>(to);
            } catch (const RuntimeError& error) {
                EXPECT_EQ(error.Number(), 5);
            }
            EXPECT_EQ(phase.Now(), from);
        }
    }
}

TEST(RunPhase, AWindowThatIsGoneStaysGone) {
    for (const RunPhase next : AllRunPhases) {
        CurrentPhase phase = At(Closed);
        phase.Enter(next);
        phase.Stop();
        phase.SetErasing(true);
        EXPECT_EQ(phase.Now(), Closed);
    }
}

TEST(RunPhase, AnOperationIsInProgressFromTheArchiveUntilTheRunHasEndedOrWasStopped) {
    const Phases inProgress{Archiving, Archived, ArchiveFailed, Copying, StartingWrite, Writing};
    for (const RunPhase phase : AllRunPhases)
        EXPECT_EQ(IsOperationInProgress(phase), inProgress.contains(phase)) << static_cast<int>(phase);
}

TEST(RunPhase, TheRunHasStepsOfItsOwnUntilTheWriterIsAtWork) {
    const Phases running{Preparing, Archiving, Archived, ArchiveFailed, ArchiveStopped, Copying, StartingWrite, Ending};
    for (const RunPhase phase : AllRunPhases)
        EXPECT_EQ(IsRunning(phase), running.contains(phase)) << static_cast<int>(phase);
}

TEST(RunPhase, AStopEndsEveryPhaseWithAnOperationInItsOwnWayAndNoOther) {
    const std::map<RunPhase, RunPhase> stopped{{Archiving, ArchiveStopped},     {Archived, ArchiveStopped},
                                               {ArchiveFailed, ArchiveStopped}, {Copying, Ending},
                                               {StartingWrite, Idle},           {Writing, Idle}};
    for (const RunPhase from : AllRunPhases) {
        CurrentPhase phase = At(from);
        phase.Stop();
        EXPECT_EQ(phase.Now(), stopped.contains(from) ? stopped.at(from) : from) << static_cast<int>(from);
        EXPECT_FALSE(phase.IsOperationInProgress());
    }
}

TEST(RunPhase, AnEraseBelongsToTheIdleWindow) {
    CurrentPhase phase = At(Idle);
    phase.SetErasing(false);
    EXPECT_EQ(phase.Now(), Idle);
    phase.SetErasing(true);
    phase.SetErasing(true);
    EXPECT_EQ(phase.Now(), Erasing);
    phase.SetErasing(false);
    EXPECT_EQ(phase.Now(), Idle);
    CurrentPhase writing = At(Writing);
    writing.SetErasing(false);
    EXPECT_EQ(writing.Now(), Writing);
    EXPECT_THROW(writing.SetErasing(true), RuntimeError);
}

} // namespace
