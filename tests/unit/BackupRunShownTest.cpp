// What a backup shows on its way: its bars, the pointer, and what comes before what.
#include "core/WriterFlags.h"
#include "resources/TextId.h"
#include "support/BackupRunBench.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Pair;

TEST_F(BackupRunTest, AnErrorFromBeforeTheWriterWasMadeIsForgotten) {
    machine.app.writerFlags->hasWriterError = true;
    UseCd();
    EXPECT_FALSE(machine.app.writerFlags->hasWriterError);
}

TEST_F(BackupRunTest, AnErrorFromBeforeABurnDoesNotCountAgainstIt) {
    UseCd();
    machine.app.writerFlags->hasWriterError = true;
    run.Launch();
    EXPECT_TRUE(state.phase.IsAt(RunPhase::Writing));
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
}

/// A burn that has ended in one of the ways that there are.
class EndedBurnTest : public BackupRunTest, public testing::WithParamInterface<int> {
  protected:
    void End() {
        switch (GetParam()) {
        case 0:
            return run.Stop();
        case 1:
            return Writer().FailOperation(-5, L"Write error.");
        default:
            return Writer().RaiseProgress(DiscOperation::Finished, 100);
        }
    }
};

TEST_P(EndedBurnTest, ReadsTheDiscAgain) {
    UseCd();
    run.Launch();
    machine.discWriters.cdDrives[0].disc.status = DiscStatus::Closed;
    view.calls.clear();
    End();
    EXPECT_THAT(view.calls, Contains(L"panels"));
    EXPECT_EQ(state.disc.status, DiscStatus::Closed);
}

TEST_P(EndedBurnTest, PutsBothBarsBackAndTheControlsOn) {
    UseCd();
    run.Launch();
    view.step.SetRange(3, 40);
    view.total.SetRange(4, 50);
    Writer().RaiseProgress(DiscOperation::Writing, 30);
    view.calls.clear();
    End();
    EXPECT_EQ(view.step.Value(), 3);
    EXPECT_EQ(view.total.Value(), 4);
    EXPECT_THAT(view.calls, Contains(L"enable"));
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
}

INSTANTIATE_TEST_SUITE_P(StoppedFailedFinished, EndedBurnTest, testing::Values(0, 1, 2));

TEST_F(BackupRunTest, TheStepBarCountsTheFilesThatAreAddedAndBothThenTheBurn) {
    UseCd();
    view.step.SetValue(7);
    view.total.SetValue(9);
    view.step.values.clear();
    view.total.values.clear();
    run.Launch();
    EXPECT_THAT(view.step.ranges, ElementsAre(Pair(0, 2), Pair(0, 100)));
    EXPECT_THAT(view.step.values, ElementsAre(0, 1, 2, 0));
    EXPECT_THAT(view.total.ranges, ElementsAre(Pair(0, 100)));
    EXPECT_THAT(view.total.values, ElementsAre(0));
}

TEST_F(BackupRunTest, AFinishedBurnFillsTheStepBarBeforeItIsTold) {
    UseCd();
    run.Launch();
    machine.messageLoop.pointers.push_back(Pointer::Hourglass);
    view.step.SetRange(3, 40);
    int shown = 0;
    machine.messageBoxes.whileShown = [&](const auto&) {
        ++shown;
        EXPECT_EQ(view.step.Value(), 40);
        EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
        EXPECT_EQ(Modes().back(), L"busy");
    };
    Writer().PlayToEnd();
    EXPECT_EQ(shown, 1);
}

TEST_F(BackupRunTest, ABurnIsPreparedUnderTheHourglass) {
    UseCd();
    int looks = 0;
    view.whenBusyChanges = [&](bool isBusy) {
        if (!isBusy || !state.phase.IsAt(RunPhase::Archived)) return;
        ++looks;
        EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Hourglass);
    };
    machine.messageLoop.handler = [&] {
        if (Record().calls.empty()) return;
        ++looks;
        EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Hourglass);
    };
    run.Launch();
    EXPECT_EQ(looks, 3);
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
}

TEST_F(BackupRunTest, ARefusedStartKeepsTheHourglassUntilStop) {
    UseCd();
    machine.discWriters.startError = FakeDiscError{5, L"No power."};
    run.Launch();
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Hourglass);
    run.Stop();
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
}

TEST_F(BackupRunTest, ACopyShowsTheHourglassAndHalfOfTheWholeWithoutSingleSteps) {
    UseDisk(Medium::RemovableDisk);
    view.total.SetValue(7);
    view.total.values.clear();
    std::vector<std::int32_t> painted;
    machine.messageLoop.handler = [&] {
        if (!view.total.values.empty()) painted.push_back(view.total.Value());
    };
    steps.whileCopying = [&] {
        EXPECT_EQ(view.calls.back(), L"hide step");
        EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Hourglass);
        EXPECT_THAT(painted, ElementsAre(50));
    };
    run.Launch();
    EXPECT_THAT(view.step.ranges, ElementsAre(Pair(0, 100)));
    EXPECT_THAT(view.total.ranges, ElementsAre(Pair(0, 100)));
    EXPECT_THAT(view.total.values, ElementsAre(0, 50, 100));
    EXPECT_THAT(painted, ElementsAre(50, 100));
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
}

TEST_F(BackupRunTest, ACopyIsToldUnderTheNormalPointer) {
    UseDisk(Medium::RemovableDisk);
    for (const bool copies : {true, false}) {
        steps.copies = copies;
        int shown = 0;
        machine.messageBoxes.whileShown = [&](const auto&) {
            ++shown;
            EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
        };
        run.Launch();
        EXPECT_EQ(shown, 1);
    }
}

TEST_F(BackupRunTest, AFailedCopyIsToldBeforeTheSettingsComeBack) {
    UseDisk(Medium::ExternalDisk);
    steps.copies = false;
    int shown = 0;
    machine.messageBoxes.whileShown = [&](const auto& box) {
        ++shown;
        EXPECT_EQ(box.text, Text(TextId::BackupFailed));
        EXPECT_EQ(Modes().back(), L"busy");
    };
    run.Launch();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, MessagesRunAfterEachStepThatIsTold) {
    UseCd();
    run.Launch();
    for (const DiscOperation operation :
         {DiscOperation::EraseInProgress, DiscOperation::Preparing, DiscOperation::Writing}) {
        const int runs = machine.messageLoop.runs;
        Writer().RaiseProgress(operation, 30);
        EXPECT_EQ(machine.messageLoop.runs, runs + 1) << static_cast<int>(operation);
    }
}

TEST_F(BackupRunTest, ADvdWriterThatSettlesOnNoSpeedOffersNone) {
    UseDisc(Medium::Dvd, {});
    machine.discWriters.dvdDrives[0].speeds = {8, 0};
    std::vector<std::wstring> texts;
    for (const WriteSpeed& speed : discs.ProbeSpeeds()) texts.push_back(speed.text);
    EXPECT_THAT(texts, ElementsAre(L"8,0"));
    machine.discWriters.dvdDrives.clear();
    EXPECT_TRUE(discs.ProbeSpeeds().empty());
}

} // namespace
