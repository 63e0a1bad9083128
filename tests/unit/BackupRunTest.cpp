#include "core/ArchiveValues.h"
#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "resources/TextId.h"
#include "support/BackupRunBench.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(BackupRunTest, ADiskGetsListArchiveAndCopyInThisOrder) {
    UseDisk(Medium::RemovableDisk);
    run.Launch();
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password", L"list", L"archive", L"copy E:\\"));
    EXPECT_THAT(view.runStatuses, ElementsAre(Text(TextId::BuildingList), Text(TextId::CopyingFiles)));
    EXPECT_THAT(Modes(), ElementsAre(L"busy", L"idle", L"busy", L"end"));
    EXPECT_EQ(view.total.Value(), 100);
    ExpectOnlyBox(Text(TextId::BackupDone), Text(TextId::BackupDoneTitle), box::Exclamation);
    EXPECT_FALSE(state.phase.IsOperationInProgress());
}

TEST_F(BackupRunTest, EndMessagesInEnglish) {
    machine.app.language->lngLangue = 10000;
    UseDisk(Medium::ExternalDisk);
    run.Launch();
    ExpectOnlyBox(L"The backup is successfully completed. Please label your backup and keep it in a safe place.",
                  L"Backup successfully completed", box::Exclamation);
}

TEST_F(BackupRunTest, TheComputerStaysAwakeDuringARunToADisk) {
    UseDisk(Medium::RemovableDisk);
    int holds = 0;
    steps.whileArchiving = [&] { holds += view.holds; };
    steps.whileCopying = [&] { holds += view.holds; };
    run.Launch();
    EXPECT_EQ(holds, 2);
    EXPECT_EQ(view.holds, 0);
}

TEST_F(BackupRunTest, AVanishedRemovableDiskIsSaidToBeUnavailableAndNothingIsCopied) {
    UseDisk(Medium::RemovableDisk);
    machine.drives.Remove(L"E:\\");
    run.Launch();
    ExpectOnlyBox(L"Disque amovible non disponible", L"Backup", box::Ok);
    EXPECT_THAT(steps.calls, IsEmpty());
    EXPECT_EQ(view.report[Panel::Status], L"non disponible");
}

TEST_F(BackupRunTest, AVanishedExternalDiskIsNamedByItsOwnLabel) {
    machine.app.language->lngLangue = 10000;
    UseDisk(Medium::ExternalDisk);
    machine.drives.Remove(L"E:\\");
    run.Launch();
    ExpectOnlyBox(L"External disk Disconnected", L"Backup", box::Ok);
}

TEST_F(BackupRunTest, AMissingArchiverIsReportedBeforeAnyQuestion) {
    UseDisk(Medium::RemovableDisk);
    steps.hasArchiver = false;
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L"(7Za.exe : Compression des données impossible.) dans la procédure PreparerArchive, module "
                          L"frmBackupCD à la ligne nº 0"));
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Critical);
    EXPECT_EQ(machine.eventLog.errors.size(), 1u);
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?"));
    EXPECT_THAT(view.calls, IsEmpty());
}

TEST_F(BackupRunTest, ARefusedPasswordEndsTheRunInSilence) {
    UseDisk(Medium::RemovableDisk);
    steps.givesPassword = false;
    run.Launch();
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password"));
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_THAT(view.calls, IsEmpty());
}

TEST_F(BackupRunTest, AnArchiveLargerThanTheMediumIsNotCopied) {
    UseDisk(Medium::RemovableDisk);
    machine.app.archive->archiveSizeBytes = 1000001;
    run.Launch();
    ExpectOnlyBox(Text(TextId::MediumTooSmall), Text(TextId::CapacityReachedTitle), box::Exclamation);
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password", L"list", L"archive"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(state.phase.IsOperationInProgress());
}

TEST_F(BackupRunTest, AnArchiveExactlyAsLargeAsTheMediumIsCopied) {
    UseDisk(Medium::RemovableDisk);
    machine.app.archive->archiveSizeBytes = 1000000;
    run.Launch();
    EXPECT_EQ(steps.calls.back(), L"copy E:\\");
}

TEST_F(BackupRunTest, NothingSelectedIsSaidOnlyAfterThePreparation) {
    UseDisk(Medium::ExternalDisk);
    steps.count = 0;
    run.Launch();
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password", L"list", L"archive"));
    ExpectOnlyBox(L"Aucun fichier à sauvegarder.", L"Backup", box::Ok);
    EXPECT_THAT(Modes(), ElementsAre(L"busy", L"idle"));
}

TEST_F(BackupRunTest, AnArchiveThatFailedIsNotCopiedAndSaidToHaveFailed) {
    UseDisk(Medium::RemovableDisk);
    steps.archives = false;
    run.Launch();
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password", L"list", L"archive"));
    ExpectOnlyBox(Text(TextId::BackupFailed), L"Error", box::Critical);
    EXPECT_FALSE(view.hasEnded);
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, ACopyThatFailedIsSaidToHaveFailed) {
    UseDisk(Medium::ExternalDisk);
    machine.app.language->lngLangue = 10000;
    steps.copies = false;
    run.Launch();
    ExpectOnlyBox(machine.strings.Load(10418), L"Error", box::Critical);
    EXPECT_FALSE(view.hasEnded);
}

TEST_F(BackupRunTest, AnExternalDiskIsCheckedByTheListButCopiedToTheDriveHandedOver) {
    UseDisk(Medium::ExternalDisk, L"F:\\");
    state.mstrDrive = L"E:\\";
    run.Launch();
    EXPECT_EQ(steps.calls.back(), L"copy E:\\");
}

TEST_F(BackupRunTest, StoppingTheCopyToARemovableDiskOnlySkipsTheEndMessage) {
    UseDisk(Medium::RemovableDisk);
    steps.whileCopying = [this] { run.Stop(); };
    run.Launch();
    EXPECT_EQ(steps.calls.back(), L"copy E:\\");
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_FALSE(view.hasEnded);
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, StoppingForAnExternalDiskFailsOnTheWriterThatIsNotThereAndStillStops) {
    UseDisk(Medium::ExternalDisk);
    steps.whileCopying = [this] { run.Stop(); };
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L"91 (Object variable or With block variable not set) dans la procédure ArreterEcriture, "
                          L"module frmBackupCD"));
    EXPECT_FALSE(view.hasEnded);
}

TEST_F(BackupRunTest, StoppingTheArchiveOfADiskEndsInTheFailureMessageWithoutACopy) {
    UseDisk(Medium::RemovableDisk);
    steps.whileArchiving = [this] {
        EXPECT_TRUE(state.phase.IsOperationInProgress());
        run.Stop();
        steps.archives = state.phase.IsOperationInProgress();
    };
    run.Launch();
    EXPECT_EQ(steps.calls.back(), L"archive");
    ExpectOnlyBox(Text(TextId::BackupFailed), L"Error", box::Critical);
}

TEST_F(BackupRunTest, AStopPressedDuringTheLastItemIsStillAStop) {
    UseDisk(Medium::RemovableDisk);
    steps.whileArchiving = [this] {
        machine.messageLoop.handler = [this] {
            EXPECT_EQ(Modes().back(), L"busy");
            machine.messageLoop.handler = nullptr;
            run.Stop();
        };
    };
    run.Launch();
    EXPECT_EQ(steps.calls.back(), L"archive");
    ExpectOnlyBox(Text(TextId::BackupFailed), L"Error", box::Critical);
}

TEST_F(BackupRunTest, AStopWhileTheArchiveIsBuiltStartsNoDisc) {
    UseCd();
    steps.whileArchiving = [this] {
        run.Stop();
        steps.archives = false;
    };
    run.Launch();
    EXPECT_EQ(std::count(Record().calls.begin(), Record().calls.end(), L"StartWrite"), 0);
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
    EXPECT_EQ(view.holds, 0);
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupRunTest, StopDoesNothingWhileNothingRuns) {
    UseCd();
    run.Stop();
    EXPECT_THAT(Record().calls, IsEmpty());
    EXPECT_THAT(view.calls, IsEmpty());
}

TEST_F(BackupRunTest, ASecondStartDuringARunIsIgnored) {
    UseDisk(Medium::RemovableDisk);
    steps.whileArchiving = [this] {
        EXPECT_TRUE(state.phase.IsRunning());
        run.Launch();
    };
    run.Launch();
    EXPECT_EQ(std::count(steps.calls.begin(), steps.calls.end(), L"archive"), 1);
    EXPECT_FALSE(state.phase.IsRunning());
}

TEST_F(BackupRunTest, ASecondStartDuringABurnIsIgnored) {
    UseCd();
    run.Launch();
    run.Launch();
    EXPECT_EQ(std::count(steps.calls.begin(), steps.calls.end(), L"archive"), 1);
    EXPECT_TRUE(state.phase.IsOperationInProgress());
}

TEST_F(BackupRunTest, ARunThatBreaksOffIsReportedAndLeavesTheBusyMode) {
    UseDisk(Medium::RemovableDisk);
    steps.whileCopying = [] { throw RuntimeError(ErrorNumber::DiskFull); };
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L"61 (Disk full) dans la procédure cmdLancer_Click, module frmBackupCD"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(state.phase.IsRunning());
    EXPECT_EQ(view.holds, 0);
}

TEST_F(BackupRunTest, AFailureThatCannotBeToldEndsTheRunWithTheWindowBackAtItsSettingsFirst) {
    UseDisk(Medium::RemovableDisk);
    steps.whileArchiving = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
    machine.messageBoxes.whileShown = [](const auto&) { throw RuntimeError(ErrorNumber::OutOfMemory); };
    bool isRunningWhileTurningBack = false;
    view.whenBusyChanges = [&](bool isBusy) {
        if (!isBusy) isRunningWhileTurningBack = state.phase.IsRunning();
    };
    EXPECT_THROW(run.Launch(), RuntimeError);
    EXPECT_TRUE(isRunningWhileTurningBack);
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.holds, 0);
    EXPECT_TRUE(state.phase.IsAt(RunPhase::Idle));
}

TEST_F(BackupRunTest, AStepThatFailsAsAWholeLeavesTheWindowIdle) {
    UseDisk(Medium::RemovableDisk);
    steps.whileArchiving = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"PreparerArchive, module frmBackupCD"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(state.phase.IsRunning());
}

TEST_F(BackupRunTest, ADriveWithoutAReadableVolumeIsReportedAndOffersNothing) {
    UseDisk(Medium::RemovableDisk);
    machine.drives.At(L"E:\\")->canRead = false;
    machine.drives.At(L"E:\\")->label.reset();
    discs.RefreshDiscInfo();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L"71 (Disk not ready) dans la procédure RefreshDiscInfo"));
    EXPECT_EQ(machine.app.space->availableSpace, Currency());
    EXPECT_EQ(view.calls.back(), L"start button");
}

} // namespace
