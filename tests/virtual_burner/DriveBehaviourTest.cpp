// The disc writer on drives that do what real ones do.
#include "Drives.h"
#include "WriterBench.h"

#include "platform/discs/MasteringCodes.h"

#include <fstream>

namespace {

using testing::ElementsAre;

using DriveBehaviour = WriterBench;

void PutOnDisc(wchar_t letter, const std::wstring& name, const std::string& content) {
    std::ofstream(BurnerBench::DriveFolder(letter) / "disc" / "volume" / name, std::ios::binary) << content;
}

TEST_F(DriveBehaviour, WriterOfAStoppedWriteIsBusyUntilTheDriveHasEnded) {
    BurnerBench::SetDrive(L'G', {{"write milliseconds", "3000"}, {"stop milliseconds", "1000"}});
    DiscWriter& writer = Open();
    StartWrite();
    bench_.RunUntil([&] { return events_.HasReached(DiscOperation::Writing, 10); });
    writer.Abort();
    EXPECT_TRUE(writer.IsBusy());
    writer.StartWrite();
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(DiscErrorBusy));
    RunUntilRead();
    EXPECT_FALSE(writer.IsBusy());
}

TEST_F(DriveBehaviour, OverwritableDiscKeepsItsFiles) {
    for (const MediaKind kind : {MediaKind::DvdPlusRw, MediaKind::DvdRam}) {
        SCOPED_TRACE(static_cast<int>(kind));
        bench_.Insert(DiscFamily::Dvd, 0, kind);
        events_ = {};
        Open(DiscFamily::Dvd);
        EXPECT_EQ(writer_->Status(), DiscStatus::Blank);
        const std::wstring photo = bench_.MakeFile(L"photo.jpg", 1500000);
        writer_->AddFile(photo);
        writer_->StartWrite();
        RunToEnd();
        ASSERT_TRUE(events_.HasFinished());
        ASSERT_TRUE(bench_.WaitForContent(L'K'));
        EXPECT_EQ(writer_->Status(), DiscStatus::Open);
        EXPECT_GT(writer_->UsedBytes(), 0u);
        // What is added goes into a file system that holds no file of 2 GiB.
        EXPECT_EQ(writer_->FreeBytes(), 0x7FFFFFFFu);
        events_.progress.clear();
        Write(1000000);
        ASSERT_TRUE(events_.HasFinished()) << (events_.errors.empty() ? 0 : events_.errors[0].first);
        ASSERT_TRUE(bench_.WaitForContent(L'K'));
        const auto volume = BurnerBench::DriveFolder(L'K') / "disc" / "volume";
        EXPECT_TRUE(Content(volume / "photo.jpg") == Content(photo));
        EXPECT_TRUE(Content(volume / "OKRBACKUP.ZIP") == Content(archive_));
        writer_.reset();
    }
}

TEST_F(DriveBehaviour, OverwritableDiscThatCannotBeAddedToIsNotTouched) {
    bench_.Insert(DiscFamily::Dvd, 0, MediaKind::DvdPlusRw);
    Open(DiscFamily::Dvd);
    Write(1000000);
    ASSERT_TRUE(bench_.WaitForContent(L'K'));
    const auto image = BurnerBench::DriveFolder(L'K') / "disc" / "disc.iso";
    const std::string before = Content(image);
    BurnerBench::SetDrive(L'K', {{"random write", "no"}});
    events_.progress.clear();
    Write(2000000);
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::ImageImportNotAllowed)));
    EXPECT_TRUE(Content(image) == before);
}

TEST_F(DriveBehaviour, OverwritableDiscWithoutAReadableVolumeIsNeitherBlankNorTouched) {
    bench_.Insert(DiscFamily::Dvd, 0, MediaKind::DvdPlusRw);
    const auto image = BurnerBench::DriveFolder(L'K') / "disc" / "disc.iso";
    std::ofstream(image, std::ios::binary) << std::string(3000000, 'x');
    DiscWriter& writer = Open(DiscFamily::Dvd);
    EXPECT_EQ(writer.Status(), DiscStatus::Open);
    EXPECT_GT(writer.UsedBytes(), 0u);
    Write(1000000);
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(static_cast<std::int32_t>(Mastering::ImageNoFileSystem)));
    EXPECT_EQ(Content(image).size(), 3000000u);
}

TEST_F(DriveBehaviour, OverwritableDiscStaysOverwritableAfterAFailedWrite) {
    bench_.Insert(DiscFamily::Dvd, 0, MediaKind::DvdPlusRw);
    BurnerBench::SetDrive(L'K', {{"fail at", "50"}});
    DiscWriter& writer = Open(DiscFamily::Dvd);
    Write();
    EXPECT_EQ(writer.Status(), DiscStatus::Open);
    EXPECT_TRUE(writer.IsWritable());
    BurnerBench::SetDrive(L'K', {{"fail at", "-1"}});
    events_ = {};
    events_.writer = &writer;
    EraseToEnd(true);
    EXPECT_EQ(writer.Status(), DiscStatus::Blank);
    Write();
    EXPECT_TRUE(events_.HasFinished());
    ExpectContent(L'K');
}

TEST_F(DriveBehaviour, InsertedDiscIsToldWhenItHasBecomeReady) {
    bench_.TakeOut(DiscFamily::Cd, 0);
    DiscWriter& writer = Open();
    BurnerBench::SetDrive(L'G', {{"ready milliseconds", "2500"}});
    BurnerBench::InsertDisc(L'G', {{"kind", "CD-R"}, {"state", "blank"}, {"capacity", "736962560"}, {"settled", "no"}});
    bench_.RunUntil([&] { return writer.Presence() == DiscPresence::NotAnswering; });
    EXPECT_EQ(writer.Presence(), DiscPresence::NotAnswering);
    EXPECT_EQ(events_.mediaChanges, 0);
    bench_.RunUntil([&] { return events_.mediaChanges == 1; });
    EXPECT_EQ(writer.Kind(), MediaKind::CdR);
}

TEST_F(DriveBehaviour, DiscThatIsPutInWhileTheDriveEndsItsWriteIsLeftAlone) {
    SettingsFile writtenDisc((BurnerBench::DriveFolder(L'G') / "disc" / "disc.ini").wstring());
    bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdRw);
    writtenDisc.Set("state", "incomplete");
    EXPECT_EQ(BurnerBench::DiscSetting(L'G', "state"), "blank");
}

TEST_F(DriveBehaviour, DiscExchangedForAnotherOfItsKindBetweenTwoLooksIsReadAnew) {
    DiscWriter& writer = Open();
    BurnerBench::InsertDisc(
        L'G', {{"kind", "CD-RW"}, {"state", "blank"}, {"capacity", "204800000"}, {"speeds", "4"}, {"settled", "no"}});
    bench_.RunUntil([&] { return writer.FreeBytes() == 204800000; });
    EXPECT_EQ(writer.FreeBytes(), 204800000u);
    EXPECT_EQ(writer.WriteSpeed(), 4);
}

TEST_F(DriveBehaviour, DriveThatIsTakenWhileItIsAskedIsAskedAgain) {
    BurnerBench::SetDrive(L'G', {{"sizes code", "0xC0AA0210"}});
    DiscWriter& writer = Open();
    EXPECT_EQ(writer.Presence(), DiscPresence::NotAnswering);
    BurnerBench::SetDrive(L'G', {{"sizes code", ""}});
    bench_.RunUntil([&] { return writer.FreeBytes() == 736962560; });
    EXPECT_EQ(writer.FreeBytes(), 736962560u);
}

TEST_F(DriveBehaviour, DiscWhoseSizesAreNeverToldIsShownAllTheSame) {
    BurnerBench::SetDrive(L'G', {{"sizes code", "0xC0AA0210"}});
    DiscWriter& writer = Open();
    bench_.RunUntil([&] { return writer.Presence() == DiscPresence::Ready; });
    EXPECT_EQ(writer.Kind(), MediaKind::CdRw);
}

TEST_F(DriveBehaviour, DriveThatCannotBeOpenedIsTriedAgain) {
    BurnerBench::SetDrive(L'H', {{"busy", "yes"}});
    BurnerBench::InsertDisc(L'H', {{"kind", "CD-R"}, {"state", "blank"}, {"capacity", "736962560"}});
    DiscWriter& writer = Open();
    EXPECT_THAT(writer.WriterNames(), ElementsAre(L"VIRTUAL CD WRITER (G:)"));
    BurnerBench::SetDrive(L'H', {{"busy", "no"}});
    bench_.RunUntil([&] { return events_.writersChanges == 1; });
    ASSERT_EQ(writer.WriterNames().size(), 2u);
    EXPECT_EQ(writer.CurrentWriter(), 0);
    BurnerBench::SetDrive(L'H', {{"busy", "yes"}});
    writer.SelectWriter(1);
    EXPECT_EQ(writer.Presence(), DiscPresence::NotAnswering);
    BurnerBench::SetDrive(L'H', {{"busy", "no"}});
    bench_.RunUntil([&] { return writer.Presence() == DiscPresence::Ready; });
    EXPECT_EQ(writer.Kind(), MediaKind::CdR);
}

TEST_F(DriveBehaviour, DriveThatIsSilentWhileTheWritersAreListedIsNotWaitedFor) {
    BurnerBench::SetDrive(L'G', {{"silent", "yes"}});
    DiscWriter& writer = Open();
    EXPECT_THAT(writer.WriterNames(), ElementsAre());
    BurnerBench::SetDrive(L'G', {{"silent", "no"}});
    bench_.RunUntil([&] { return events_.writersChanges == 1; });
    ASSERT_EQ(writer.WriterNames().size(), 2u);
    writer.SelectWriter(0);
    EXPECT_EQ(writer.Kind(), MediaKind::CdRw);
}

TEST_F(DriveBehaviour, CurrentWriterThatGoesLeavesNoneAndComesBack) {
    DiscWriter& writer = Open();
    const auto folder = BurnerBench::DriveFolder(L'G');
    const auto outside = folder.parent_path().parent_path() / "unplugged";
    std::error_code ignored;
    std::filesystem::remove_all(outside, ignored);
    std::filesystem::rename(folder, outside);
    bench_.RunUntil([&] { return events_.writersChanges == 1; });
    EXPECT_THAT(writer.WriterNames(), ElementsAre(L"VIRTUAL CD WRITER (H:)"));
    EXPECT_EQ(writer.CurrentWriter(), -1);
    EXPECT_EQ(writer.Presence(), DiscPresence::None);
    writer.StartWrite();
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(DiscErrorNoDisc));
    std::filesystem::rename(outside, folder);
    bench_.RunUntil([&] { return events_.writersChanges == 2; });
    EXPECT_EQ(writer.WriterNames().size(), 2u);
}

TEST_F(DriveBehaviour, DriveThatIsHeldWhenTheWriteStartsIsWaitedFor) {
    Open();
    BurnerBench::SetDrive(L'G', {{"busy", "yes"}});
    StartWrite();
    bench_.RunAWhile();
    EXPECT_TRUE(events_.errors.empty());
    EXPECT_FALSE(BurnerBench::HasImage(L'G'));
    BurnerBench::SetDrive(L'G', {{"busy", "no"}});
    RunToEnd();
    EXPECT_TRUE(events_.HasFinished());
    ExpectContent(L'G');
}

TEST_F(DriveBehaviour, WaitingForAHeldDriveCanBeStopped) {
    DiscWriter& writer = Open();
    BurnerBench::SetDrive(L'G', {{"busy", "yes"}});
    StartWrite();
    bench_.RunAWhile();
    writer.Abort();
    bench_.RunUntil([&] { return !events_.errors.empty(); });
    EXPECT_THAT(events_.ErrorCodes(), ElementsAre(DiscErrorAborted));
    BurnerBench::SetDrive(L'G', {{"busy", "no"}});
    RunUntilRead();
    EXPECT_EQ(writer.Status(), DiscStatus::Blank);
}

TEST_F(DriveBehaviour, OpenFileOnTheDiscIsWaitedFor) {
    Open();
    PutOnDisc(L'G', L"old.txt", "old");
    HANDLE held = CreateFileW((BurnerBench::DriveFolder(L'G') / "disc" / "volume" / "old.txt").c_str(), GENERIC_READ,
                              FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    StartWrite();
    bench_.RunAWhile();
    EXPECT_FALSE(BurnerBench::HasImage(L'G'));
    CloseHandle(held);
    RunToEnd();
    EXPECT_TRUE(events_.HasFinished());
}

TEST_F(DriveBehaviour, OutcomeIsToldBeforeTheDriveIsReadyAgain) {
    BurnerBench::SetDrive(L'G', {{"ready milliseconds", "3000"}});
    DiscWriter& writer = Open();
    StartWrite();
    bench_.RunUntil([&] { return events_.HasFinished(); });
    EXPECT_TRUE(writer.IsBusy());
    RunUntilRead();
    EXPECT_EQ(writer.Status(), DiscStatus::Open);
}

TEST_F(DriveBehaviour, DiscWithoutAReadableVolumeIsNotAskedEverythingForEver) {
    bench_.Insert(DiscFamily::Dvd, 0, MediaKind::DvdPlusRw);
    std::ofstream(BurnerBench::DriveFolder(L'K') / "disc" / "disc.iso", std::ios::binary) << std::string(3000000, 'x');
    BurnerBench::SetDrive(L'K', {{"blank test milliseconds", "400"}, {"counts questions", "yes"}});
    Open(DiscFamily::Dvd);
    const auto questions = BurnerBench::DriveFolder(L'K') / "questions";
    const std::size_t first = Content(questions).size();
    bench_.RunAWhile();
    bench_.RunAWhile();
    // Two quick questions a second, and nothing else.
    EXPECT_LE(Content(questions).size() - first, 8u);
}

TEST_F(DriveBehaviour, FinalSessionProtectionAndRequiredEraseAreTold) {
    struct Expected {
        const char* state;
        DiscStatus status;
        bool isWritable;
    };
    for (const Expected& expected :
         {Expected{"final session", DiscStatus::Open, true}, Expected{"protected", DiscStatus::Closed, false},
          Expected{"erase required", DiscStatus::Closed, false}}) {
        SCOPED_TRACE(expected.state);
        BurnerBench::SetDisc(L'G', {{"state", expected.state}, {"used", "2048000"}});
        DiscWriter& writer = Open();
        EXPECT_EQ(writer.Status(), expected.status);
        EXPECT_EQ(writer.IsWritable(), expected.isWritable);
        writer_.reset();
    }
}

TEST_F(DriveBehaviour, DriveThatTellsNoSpeedsIsGivenTheCustomaryOnes) {
    BurnerBench::SetDisc(L'G', {{"speeds", ""}});
    DiscWriter& writer = Open();
    writer.SetWriteSpeed(52);
    EXPECT_EQ(writer.WriteSpeed(), 52);
    Write();
    EXPECT_TRUE(events_.HasFinished());
}

TEST_F(DriveBehaviour, DamagedCdRwIsErasedAndGoodAgain) {
    BurnerBench::SetDisc(L'G', {{"state", "damaged"}});
    DiscWriter& writer = Open();
    EXPECT_EQ(writer.Status(), DiscStatus::Closed);
    EraseToEnd(true);
    EXPECT_EQ(writer.Status(), DiscStatus::Blank);
}

TEST_F(DriveBehaviour, LabelIsToldAsItWillBeWritten) {
    DiscWriter& writer = Open();
    EXPECT_EQ(writer.AcceptedDiscLabel(L"21 nov., 2026"), L"21_nov._2026");
    EXPECT_EQ(writer.AcceptedDiscLabel(L"SAUVEGARDE_1"), L"SAUVEGARDE_1");
}

} // namespace
