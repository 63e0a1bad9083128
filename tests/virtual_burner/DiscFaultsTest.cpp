// The disc writer when drives and discs misbehave.
#include "WriterBench.h"

#include "platform/RuntimeError.h"
#include "platform/discs/MasteringCodes.h"

#include <sstream>

namespace {

using testing::ElementsAre;

using DiscFaults = WriterBench;

TEST_F(DiscFaults, EveryWritableKindTakesABackupAndShowsIt) {
    for (MediaKind kind : {MediaKind::CdR, MediaKind::CdRw, MediaKind::DvdPlusR, MediaKind::DvdPlusRw,
                           MediaKind::DvdMinusR, MediaKind::DvdMinusRw}) {
        SCOPED_TRACE(static_cast<int>(kind));
        const DiscFamily family = kind <= MediaKind::CdRw ? DiscFamily::Cd : DiscFamily::Dvd;
        bench_.Insert(family, 0, kind);
        events_.progress.clear();
        Open(family);
        EXPECT_EQ(writer_->Kind(), kind);
        Write();
        EXPECT_TRUE(events_.HasFinished());
        ExpectContent(family == DiscFamily::Cd ? L'G' : L'K');
        writer_.reset();
    }
}

TEST_F(DiscFaults, LabelThatTheSystemRefusesIsMadeAcceptable) {
    Open().SetDiscLabel(L"21 nov., 2026");
    Write();
    EXPECT_TRUE(events_.errors.empty());
    ASSERT_TRUE(bench_.WaitForContent(L'G'));
    EXPECT_EQ(ReadDiscVolume((BurnerBench::DriveFolder(L'G') / "disc" / "disc.iso").wstring())->label, L"21_nov._2026");
}

TEST_F(DiscFaults, AcceptableLabelIsKept) {
    Open().SetDiscLabel(L"SAUVEGARDE_1");
    Write();
    EXPECT_EQ(ReadDiscVolume((BurnerBench::DriveFolder(L'G') / "disc" / "disc.iso").wstring())->label, L"SAUVEGARDE_1");
}

TEST_F(DiscFaults, ChosenSpeedReachesTheDrive) {
    Open().SetWriteSpeed(16);
    Write();
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "speed"), "1200");
}

TEST_F(DiscFaults, SpeedChosenWithoutADiscIsTheDiscsNearest) {
    bench_.TakeOut(DiscFamily::Cd, 0);
    DiscWriter& writer = Open();
    writer.SetWriteSpeed(52);
    EXPECT_EQ(writer.WriteSpeed(), 52);
    bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdR);
    bench_.RunUntil([&] { return events_.mediaChanges == 1; });
    EXPECT_EQ(writer.WriteSpeed(), 48);
    Write();
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "speed"), "3600");
}

TEST_F(DiscFaults, ADriveThatTakesEverySpeedSettlesOnAllSixtyFour) {
    std::ostringstream all;
    for (int speed = 1; speed <= 64; ++speed) all << speed << ' ';
    BurnerBench::SetDisc(L'G', {{"speeds", all.str()}});
    DiscWriter& writer = Open();
    for (int speed = 64; speed >= 1; --speed) {
        writer.SetWriteSpeed(speed);
        EXPECT_EQ(writer.WriteSpeed(), speed);
    }
}

TEST_F(DiscFaults, ProbingEverySpeedCostsNoTime) {
    DiscWriter& writer = Open(DiscFamily::Dvd);
    const ULONGLONG start = GetTickCount64();
    for (int turn = 0; turn < 200; ++turn) {
        writer.SetWriteSpeed(20.0 - turn * 0.1);
        EXPECT_GT(writer.WriteSpeed(), 0);
    }
    EXPECT_LT(GetTickCount64() - start, 50u);
}

TEST_F(DiscFaults, WriteThatFailsHalfWayTellsTheSystemsCode) {
    BurnerBench::SetDrive(L'G', {{"fail at", "50"}, {"fail code", "0xC0AA0301"}});
    Open();
    Write();
    ASSERT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::UnexpectedResponse)));
    EXPECT_TRUE(events_.HasReached(DiscOperation::Writing, 49));
    EXPECT_FALSE(events_.HasFinished());
    EXPECT_EQ(writer_->CurrentOperation(), DiscOperation::None);
    EXPECT_EQ(writer_->Status(), DiscStatus::Closed);
}

TEST_F(DiscFaults, DiscPulledOutOfAWriteIsAnErrorThatIsShown) {
    BurnerBench::SetDrive(L'G', {{"eject at", "30"}});
    Open();
    Write();
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::NoMedia)));
    EXPECT_EQ(events_.mediaChanges, 1);
    EXPECT_EQ(writer_->Presence(), DiscPresence::None);
}

TEST_F(DiscFaults, ClosedDiscIsRefusedByTheWrite) {
    BurnerBench::SetDisc(L'G', {{"state", "closed"}});
    DiscWriter& writer = Open();
    EXPECT_EQ(writer.Status(), DiscStatus::Closed);
    EXPECT_FALSE(writer.IsWritable());
    EXPECT_EQ(writer.FreeBytes(), 0u);
    Write();
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::MediaNotSupported)));
}

TEST_F(DiscFaults, FilesThatDoNotFitAreRefusedBeforeTheDiscIsTouched) {
    BurnerBench::SetDisc(L'G', {{"capacity", "2048000"}});
    Open();
    Write();
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::ImageSizeLimit)));
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "state"), "blank");
    EXPECT_FALSE(std::filesystem::exists(BurnerBench::DriveFolder(L'G') / "disc" / "disc.iso"));
}

TEST_F(DiscFaults, ReportedFreeSpaceIsWhatTheDriveSays) {
    BurnerBench::SetDisc(L'G', {{"free", "838860800"}});
    EXPECT_EQ(Open().FreeBytes(), 838860800u);
}

TEST_F(DiscFaults, FileThatIsNotThereEndsTheWriteWithItsError) {
    DiscWriter& writer = Open();
    writer.AddFile(L"C:\\no such file.zip");
    writer.StartWrite();
    RunToEnd();
    ASSERT_EQ(events_.errors.size(), 1u);
    EXPECT_EQ(events_.errors[0].first, HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_FALSE(events_.errors[0].second.empty());
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "state"), "blank");
}

TEST_F(DiscFaults, DiscThatTheDriveCannotNameIsUnrecognized) {
    BurnerBench::SetDisc(L'G', {{"kind", "unrecognized"}});
    DiscWriter& writer = Open();
    EXPECT_EQ(writer.Presence(), DiscPresence::Unrecognized);
    EXPECT_EQ(writer.Kind(), MediaKind::Other);
    EXPECT_FALSE(writer.IsWritable());
}

TEST_F(DiscFaults, DiscThatIsStillLoadingIsToldWhenItIsReady) {
    BurnerBench::SetDrive(L'G', {{"query code", "0xC0AA0205"}});
    DiscWriter& writer = Open();
    EXPECT_EQ(writer.Presence(), DiscPresence::NotAnswering);
    BurnerBench::SetDrive(L'G', {{"query code", "0"}});
    bench_.RunUntil([&] { return events_.mediaChanges == 1; });
    EXPECT_EQ(writer.Presence(), DiscPresence::Ready);
}

TEST_F(DiscFaults, OpenDiscTakesAnotherSessionInPlaceOfTheFirst) {
    bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdR);
    Open();
    Write(1000000);
    ASSERT_TRUE(events_.HasFinished());
    const std::uint64_t usedBefore = writer_->UsedBytes();
    events_.progress.clear();
    Write(2000000);
    ASSERT_TRUE(events_.HasFinished()) << (events_.errors.empty() ? 0 : events_.errors[0].first);
    EXPECT_GT(writer_->UsedBytes(), usedBefore + 2000000);
    ExpectContent(L'G');
}

TEST_F(DiscFaults, StoppedWriteEndsInTheDrivesOwnTime) {
    BurnerBench::SetDrive(L'G', {{"write milliseconds", "3000"}, {"stop milliseconds", "1500"}});
    DiscWriter& writer = Open();
    StartWrite();
    bench_.RunUntil([&] { return events_.HasReached(DiscOperation::Writing, 30); });
    const ULONGLONG stopped = GetTickCount64();
    writer.Abort();
    EXPECT_LT(GetTickCount64() - stopped, 20u);
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
    const auto told = events_.progress.size();
    bench_.RunUntil([&] { return !events_.errors.empty(); });
    EXPECT_GE(GetTickCount64() - stopped, 1400u);
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(DiscErrorAborted));
    EXPECT_EQ(events_.progress.size(), told);
    RunUntilRead();
    EXPECT_EQ(events_.mediaChanges, 0);
    EXPECT_EQ(events_.readings, 1);
    EXPECT_EQ(writer.Status(), DiscStatus::Closed);
}

TEST_F(DiscFaults, ShutDownWaitsForTheDriveWhileMessagesAreHandled) {
    BurnerBench::SetDrive(L'G', {{"write milliseconds", "3000"}, {"stop milliseconds", "1000"}});
    DiscWriter& writer = Open();
    StartWrite();
    bench_.RunUntil([&] { return events_.HasReached(DiscOperation::Writing, 10); });
    const int runsBefore = bench_.Loop().runs;
    const ULONGLONG start = GetTickCount64();
    writer.ShutDown();
    EXPECT_GE(GetTickCount64() - start, 900u);
    EXPECT_GE(bench_.Loop().runs - runsBefore, 20);
    EXPECT_TRUE(events_.errors.empty());
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "state"), "incomplete");
}

TEST_F(DiscFaults, WriterSelectedWhileAnotherStillEndsAnswersLater) {
    BurnerBench::SetDrive(L'G', {{"write milliseconds", "3000"}, {"stop milliseconds", "800"}});
    BurnerBench::InsertDisc(L'H', {{"kind", "CD-R"}, {"state", "blank"}, {"capacity", "736962560"}});
    DiscWriter& writer = Open();
    StartWrite();
    writer.Abort();
    const ULONGLONG start = GetTickCount64();
    writer.SelectWriter(1);
    EXPECT_LT(GetTickCount64() - start, 100u);
    EXPECT_EQ(writer.Presence(), DiscPresence::NotAnswering);
    bench_.RunUntil([&] { return events_.mediaChanges == 1; });
    EXPECT_EQ(writer.Kind(), MediaKind::CdR);
}

TEST_F(DiscFaults, EraseThatStallsStaysAtNinetyNine) {
    BurnerBench::SetDrive(L'G', {{"stall at", "98"}, {"stall milliseconds", "1500"}});
    DiscWriter& writer = Open();
    writer.Erase(true);
    bench_.RunUntil([&] { return events_.HasReached(DiscOperation::EraseInProgress, 99); });
    EXPECT_EQ(events_.progress.back().percent, 99);
    bench_.RunUntil([&] { return events_.HasReached(DiscOperation::EraseInProgress, 100); });
    EXPECT_EQ(events_.progress.back().percent, 100);
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "erased"), "quickly");
}

TEST_F(DiscFaults, FullEraseIsAskedOfTheDriveAsOne) {
    Open().Erase(false);
    bench_.RunUntil([&] { return events_.HasReached(DiscOperation::EraseInProgress, 100); });
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "erased"), "fully");
}

TEST_F(DiscFaults, DiscThatCannotBeErasedIsAnError) {
    bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdR);
    Open().Erase(true);
    bench_.RunUntil([&] { return !events_.errors.empty(); });
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::EraseNotErasable)));
}

TEST_F(DiscFaults, EraseThatTheDriveRefusesIsAnError) {
    BurnerBench::SetDrive(L'G', {{"erase code", "0x80AA0905"}});
    Open().Erase(true);
    bench_.RunUntil([&] { return !events_.errors.empty(); });
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::EraseDriveFailed)));
}

TEST_F(DiscFaults, IncompleteDiscCanBeErasedAndWrittenAgain) {
    BurnerBench::SetDrive(L'G', {{"fail at", "50"}});
    Open();
    Write();
    BurnerBench::SetDrive(L'G', {{"fail at", "-1"}});
    EraseToEnd(true);
    events_.errors.clear();
    Write();
    EXPECT_TRUE(events_.HasFinished());
    ExpectContent(L'G');
}

TEST_F(DiscFaults, WindowThatWasBusyIsToldOfEachStageOnce) {
    Open();
    StartWrite();
    ASSERT_TRUE(BurnerBench::WaitBusy([] { return !BurnerBench::DiscSetting(L'G', "writes").empty(); }));
    RunToEnd();
    ASSERT_TRUE(events_.HasFinished());
    // Preparing, filling, writing, closing, finished.
    EXPECT_LE(events_.progress.size(), 6u);
    EXPECT_TRUE(events_.HasReached(DiscOperation::Writing, 100));
}

TEST_F(DiscFaults, MachineWithoutDrivesHasNoWriters) {
    std::filesystem::remove_all(BurnerBench::DriveFolder(L'G').parent_path());
    DiscWriter& writer = Open();
    EXPECT_TRUE(writer.WriterNames().empty());
    EXPECT_EQ(writer.WriteSpeed(), 0);
    writer.StartWrite();
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(DiscErrorNoDisc));
}

TEST_F(DiscFaults, ReaderOnlyDrivesAreNotListed) {
    BurnerBench::SetDrive(L'G', {{"writes", ""}});
    EXPECT_THAT(Open().WriterNames(), ElementsAre(L"VIRTUAL CD WRITER (H:)"));
}

} // namespace
