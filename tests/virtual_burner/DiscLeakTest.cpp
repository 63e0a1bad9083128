// A disc writer leaves nothing behind, however it ends.
#include "BurnerBench.h"
#include "support/DiscWriterContract.h"
#include "window/Footprint.h"

namespace {

/// One life of a writer: `turn` decides how far it comes before it ends.
void LiveOnce(BurnerBench& bench, const std::wstring& file, int turn) {
    RecordedDiscEvents events;
    const auto writer = bench.Writers().Create(turn % 2 ? DiscFamily::Dvd : DiscFamily::Cd);
    events.writer = writer.get();
    writer->SetEvents(&events);
    writer->SetDiscLabel(L"21 nov., 2026");
    const bool isErase = turn % 8 == 6;
    if (isErase) {
        writer->Erase(true);
    } else {
        writer->AddFile(file);
        writer->StartWrite();
    }
    switch (turn % 5) {
    case 0: // to its end
        bench.RunUntil([&] { return events.HasFinished() || isErase || !events.errors.empty(); });
        break;
    case 1: // stopped, and ended at once
        bench.RunUntil([&] { return events.HasReached(DiscOperation::Writing, 5) || isErase; });
        writer->Abort();
        break;
    case 2: // ended in the middle
        bench.RunUntil([&] { return events.HasReached(DiscOperation::Writing, 10) || isErase; });
        break;
    case 3: // stopped and waited for
        writer->Abort();
        bench.RunUntil([&] { return !events.errors.empty(); });
        break;
    default: // ended before anything was told
        break;
    }
    writer->ShutDown();
}

TEST(DiscLeaks, TwoHundredLivesLeaveNothingBehind) {
    BurnerBench bench;
    for (wchar_t letter : {L'G', L'K'})
        BurnerBench::SetDrive(
            letter, {{"write milliseconds", "30"}, {"quick erase milliseconds", "20"}, {"shows content", "no"}});
    const std::wstring file = bench.MakeFile(L"OKRBACKUP.ZIP", 400000);
    const auto renew = [&] {
        bench.Insert(DiscFamily::Cd, 0, MediaKind::CdRw);
        bench.Insert(DiscFamily::Dvd, 0, MediaKind::DvdMinusRw);
    };
    // The first lives make what the process keeps anyway.
    for (int turn = 0; turn < 40; ++turn) {
        renew();
        LiveOnce(bench, file, turn);
    }
    const Footprint before = FootprintNow();
    ASSERT_GT(before.handles, 0u);
    for (int turn = 0; turn < 200; ++turn) {
        renew();
        LiveOnce(bench, file, turn);
    }
    // The burner's last late events are still on their way.
    bench.RunUntil([&] { return LiveBurnerObjects() == 0 && FootprintNow() == before; });
    EXPECT_EQ(LiveBurnerObjects(), 0);
    EXPECT_EQ(FootprintNow(), before);
}

} // namespace
