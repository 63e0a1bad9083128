#include "core/WriterFlags.h"
#include "support/BackupRunBench.h"

#include <algorithm>

namespace {

using testing::ElementsAre;
using enum RunPhase;

/// Notes the phase wherever somebody else has a turn during a run.
class BackupRunPhaseTest : public BackupRunTest {
  protected:
    void SetUp() override {
        BackupRunTest::SetUp();
        steps.whileArchiving = [this] { Note(); };
        steps.whileCopying = [this] { Note(); };
        machine.messageBoxes.whileShown = [this](const auto&) { Note(); };
        view.whenBusyChanges = [this](bool) {
            Note();
            if (state.phase.IsAt(stopAt) && view.calls.back() == L"busy") run.Stop();
        };
    }
    void Note() {
        if (phases.empty() || phases.back() != state.phase.Now()) phases.push_back(state.phase.Now());
    }
    std::vector<RunPhase> Launch() {
        run.Launch();
        Note();
        return phases;
    }
    bool HasStartedWriting() {
        const auto& calls = Record().calls;
        return std::find(calls.begin(), calls.end(), L"StartWrite") != calls.end();
    }

    std::vector<RunPhase> phases;
    /// The phase in which the user stops as soon as the progress is shown.
    RunPhase stopAt = Closed;
};

TEST_F(BackupRunPhaseTest, ABackupToADisk) {
    UseDisk(Medium::RemovableDisk);
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, Archived, Copying, Ending, Idle));
}

TEST_F(BackupRunPhaseTest, AFailedArchiveOnADiskIsToldAtTheEnd) {
    UseDisk(Medium::ExternalDisk);
    steps.archives = false;
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, ArchiveFailed, Ending, Idle));
}

TEST_F(BackupRunPhaseTest, AStoppedCopyEndsInSilence) {
    UseDisk(Medium::RemovableDisk);
    steps.whileCopying = [this] {
        Note();
        run.Stop();
    };
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, Archived, Copying, Ending, Idle));
    EXPECT_THAT(machine.messageBoxes.shown, testing::IsEmpty());
}

TEST_F(BackupRunPhaseTest, ABurnGoesOnUnderTheWritersEvents) {
    UseCd();
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, Archived, Writing));
    Writer().PlayToEnd();
    Note();
    EXPECT_THAT(phases, ElementsAre(Preparing, Archiving, Archived, Writing, Ending, Idle));
}

TEST_F(BackupRunPhaseTest, AStopDuringTheBurnIsIdleAtOnce) {
    UseCd();
    Launch();
    run.Stop();
    EXPECT_EQ(state.phase.Now(), Idle);
}

TEST_F(BackupRunPhaseTest, ACancelledBurnCanBeStartedAgain) {
    UseCd();
    Launch();
    machine.app.writerFlags->isCancelRequested = true;
    Writer().RaiseProgress(DiscOperation::Writing, 30);
    EXPECT_EQ(state.phase.Now(), Idle);
}

TEST_F(BackupRunPhaseTest, ARefusedStartStaysUntilStop) {
    UseCd();
    machine.discWriters.startError = FakeDiscError{5, L"No power."};
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, Archived, StartingWrite, StartRefused));
    run.Stop();
    EXPECT_EQ(state.phase.Now(), Idle);
}

TEST_F(BackupRunPhaseTest, AStopBetweenTheArchiveAndTheDiscCostsNoDisc) {
    UseCd();
    view.label = L"14 mars, 2026";
    stopAt = Archived;
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, Archived, Idle));
    EXPECT_EQ(Record().label, L"");
    EXPECT_FALSE(HasStartedWriting());
    EXPECT_THAT(machine.messageBoxes.shown, testing::IsEmpty());
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.holds, 0);
}

TEST_F(BackupRunPhaseTest, AStopWhileTheFilesAreAddedLeavesNothingForTheNextDisc) {
    UseCd();
    machine.messageLoop.handler = [this] {
        const auto& calls = Record().calls;
        if (!calls.empty() && calls.back().starts_with(L"AddFile") && state.phase.IsAt(Archived)) run.Stop();
    };
    Launch();
    EXPECT_FALSE(HasStartedWriting());
    EXPECT_THAT(machine.messageBoxes.shown, testing::IsEmpty());
    EXPECT_EQ(state.phase.Now(), Idle);
    machine.messageLoop.handler = nullptr;
    Launch();
    EXPECT_EQ(Record().filesWritten.size(), 2u);
}

TEST_F(BackupRunPhaseTest, AStopBetweenTheArchiveAndTheCopyCopiesNothing) {
    UseDisk(Medium::RemovableDisk);
    stopAt = Archived;
    EXPECT_THAT(Launch(), ElementsAre(Preparing, Archiving, Archived, Ending, Idle));
    EXPECT_EQ(steps.calls.back(), L"archive");
    ExpectOnlyBox(Text(TextId::BackupFailed), L"Error", box::Critical);
}

TEST_F(BackupRunPhaseTest, ARunThatBreaksOffIsIdleWhereverItWas) {
    for (const Medium medium : {Medium::RemovableDisk, Medium::ExternalDisk}) {
        UseDisk(medium);
        steps.whileArchiving = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
        EXPECT_EQ(Launch().back(), Idle);
        steps.whileArchiving = nullptr;
        steps.whileCopying = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
        EXPECT_EQ(Launch().back(), Idle);
    }
}

} // namespace
