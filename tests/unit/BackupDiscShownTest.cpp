// What the backup window shows while a disc is prepared, and what is left of it afterwards.
#include "support/BackupRunBench.h"

namespace {

using testing::ElementsAre;

TEST_F(BackupRunTest, TheSpeedsOfTheCurrentCdWriterAreProbed) {
    UseCd();
    std::vector<std::wstring> texts;
    for (const WriteSpeed& speed : discs.ProbeSpeeds()) texts.push_back(speed.text);
    EXPECT_THAT(texts, ElementsAre(L"8", L"4", L"2", L"1"));
}

TEST_F(BackupRunTest, TheBarTakesAStepForEachFileOfTheImage) {
    UseCd();
    std::vector<std::int32_t> values;
    machine.messageLoop.handler = [&] {
        if (view.RunStatus() == L"Construction de la liste des fichiers.") values.push_back(view.step.Value());
    };
    discs.AjouterFichiers();
    EXPECT_THAT(values, ElementsAre(1, 2));
    EXPECT_EQ(view.step.Max(), 2);
}

TEST_F(BackupRunTest, AWriteThatWasStoppedLeavesBothBarsEmpty) {
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Writing, 40);
    view.step.SetValue(30);
    EXPECT_EQ(view.total.Value(), 40);
    run.Stop();
    EXPECT_EQ(view.step.Value(), 0);
    EXPECT_EQ(view.total.Value(), 0);
}

TEST_F(BackupRunTest, AStopBetweenTheArchiveAndTheDiscLeavesTheWindowIdle) {
    UseCd();
    bool isArchived = false;
    steps.whileArchiving = [&] { isArchived = true; };
    machine.messageLoop.handler = [&] {
        if (isArchived && state.phase.IsAt(RunPhase::Archived)) run.Stop();
    };
    run.Launch();
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_TRUE(state.phase.IsAt(RunPhase::Idle));
    EXPECT_THAT(Record().calls, ElementsAre(L"Abort"));
}

} // namespace
