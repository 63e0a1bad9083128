#include "backup/BackupRun.h"
#include "support/FakeBackupView.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint64_t Megabyte = 1048576;

class FakeBackupSteps : public BackupSteps {
  public:
    std::vector<std::wstring> calls;
    bool hasArchiver = true;
    bool givesPassword = true;
    bool archives = true;
    bool copies = true;
    std::int32_t count = 1;
    std::function<void()> whileArchiving;
    std::function<void()> whileCopying;

    bool ValidZipApp() override {
        calls.push_back(L"archiver?");
        return hasArchiver;
    }
    std::wstring GetZipAppName() override { return L"7Za.exe"; }
    bool DemanderMotPasse() override {
        calls.push_back(L"password");
        return givesPassword;
    }
    std::int32_t SelectedCount() const override { return count; }
    void EnregistrerListeFichiers() override { calls.push_back(L"list"); }
    bool CopierListeFichiers() override {
        calls.push_back(L"archive");
        if (whileArchiving) whileArchiving();
        return archives;
    }
    bool CopierUSB(const std::wstring& root) override {
        calls.push_back(L"copy " + root);
        if (whileCopying) whileCopying();
        return copies;
    }
};

class BackupRunTest : public testing::Test {
  protected:
    void SetUp() override { machine.app.archiveSizeBytes = 100; }

    void UseDisk(Medium medium, const std::wstring& root = L"E:\\") {
        state.miTypeMedia = medium;
        state.mstrDrive = root;
        view.drive = L"(" + root + L") x";
        machine.drives.Add(root, DriveType::Removable, L"", {1e6, 2e6});
        discs.RefreshDiscInfo();
        view.calls.clear();
    }
    void UseDisc(Medium medium, const FakeDisc& disc) {
        state.miTypeMedia = medium;
        machine.discWriters.Drives(Family(medium)).push_back({L"WRITER (G:)", disc});
        discs.CreateWriter();
        discs.RefreshDiscInfo();
        view.calls.clear();
    }
    void UseCd() { UseDisc(Medium::Cd, BlankDisc(MediaKind::CdR, 700 * Megabyte)); }
    static DiscFamily Family(Medium medium) { return medium == Medium::Cd ? DiscFamily::Cd : DiscFamily::Dvd; }
    FakeDiscWriter& Writer() { return *machine.discWriters.Latest(Family(state.miTypeMedia)); }
    FakeDiscRecord& Record() { return machine.discWriters.Record(Family(state.miTypeMedia)); }
    std::wstring Text(int id) const { return machine.app.Text(id); }
    void ExpectBox(std::size_t at, const std::wstring& text, const std::wstring& title, std::uint32_t style) {
        ASSERT_LT(at, machine.messageBoxes.shown.size());
        EXPECT_EQ(machine.messageBoxes.shown[at].text, text);
        EXPECT_EQ(machine.messageBoxes.shown[at].title, title);
        EXPECT_EQ(machine.messageBoxes.shown[at].style, style);
    }
    void ExpectOnlyBox(const std::wstring& text, const std::wstring& title, std::uint32_t style) {
        EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
        ExpectBox(0, text, title, style);
    }
    /// The window's way into and out of its busy mode.
    std::vector<std::wstring> Modes() const {
        std::vector<std::wstring> modes;
        for (const std::wstring& call : view.calls) {
            if (call == L"busy" || call == L"idle" || call == L"end") modes.push_back(call);
        }
        return modes;
    }

    FakeMachine machine;
    BackupState state;
    FakeBackupView view;
    FakeBackupSteps steps;
    DiscSide discs{machine.app, state, view};
    BackupRun run{machine.app, state, view, steps, discs};
};

TEST_F(BackupRunTest, ADiskGetsListArchiveAndCopyInThisOrder) {
    UseDisk(Medium::RemovableDisk);
    run.Launch();
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password", L"list", L"archive", L"copy E:\\"));
    EXPECT_THAT(view.runStatuses, ElementsAre(Text(142), Text(143)));
    EXPECT_THAT(Modes(), ElementsAre(L"busy", L"idle", L"busy", L"end"));
    EXPECT_EQ(view.total.Value(), 100);
    ExpectOnlyBox(Text(263), Text(264), box::Exclamation);
    EXPECT_FALSE(state.isOperationInProgress);
}

TEST_F(BackupRunTest, EndMessagesInEnglish) {
    machine.app.lngLangue = 10000;
    UseDisk(Medium::ExternalDisk);
    run.Launch();
    ExpectOnlyBox(L"The backup is successfully completed. Please label your backup and keep it in a safe place.",
                  L"Backup successfully completed", box::Exclamation);
}

TEST_F(BackupRunTest, TheComputerStaysAwakeDuringARunToADisk) {
    UseDisk(Medium::RemovableDisk);
    int holds = 0;
    steps.whileArchiving = [&] { holds += machine.system.awakeHolds; };
    steps.whileCopying = [&] { holds += machine.system.awakeHolds; };
    run.Launch();
    EXPECT_EQ(holds, 2);
    EXPECT_EQ(machine.system.awakeHolds, 0);
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
    machine.app.lngLangue = 10000;
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
    machine.app.archiveSizeBytes = 1000001;
    run.Launch();
    ExpectOnlyBox(Text(147), Text(146), box::Exclamation);
    EXPECT_THAT(steps.calls, ElementsAre(L"archiver?", L"password", L"list", L"archive"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(state.isOperationInProgress);
}

TEST_F(BackupRunTest, AnArchiveExactlyAsLargeAsTheMediumIsCopied) {
    UseDisk(Medium::RemovableDisk);
    machine.app.archiveSizeBytes = 1000000;
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
    ExpectOnlyBox(Text(418), L"Error", box::Critical);
    EXPECT_FALSE(view.hasEnded);
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, ACopyThatFailedIsSaidToHaveFailed) {
    UseDisk(Medium::ExternalDisk);
    machine.app.lngLangue = 10000;
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
        EXPECT_TRUE(state.isOperationInProgress);
        run.Stop();
        steps.archives = state.isOperationInProgress;
    };
    run.Launch();
    EXPECT_EQ(steps.calls.back(), L"archive");
    ExpectOnlyBox(Text(418), L"Error", box::Critical);
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
    ExpectOnlyBox(Text(418), L"Error", box::Critical);
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
    EXPECT_EQ(machine.system.awakeHolds, 0);
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
        EXPECT_TRUE(run.IsRunning());
        run.Launch();
    };
    run.Launch();
    EXPECT_EQ(std::count(steps.calls.begin(), steps.calls.end(), L"archive"), 1);
    EXPECT_FALSE(run.IsRunning());
}

TEST_F(BackupRunTest, ASecondStartDuringABurnIsIgnored) {
    UseCd();
    run.Launch();
    run.Launch();
    EXPECT_EQ(std::count(steps.calls.begin(), steps.calls.end(), L"archive"), 1);
    EXPECT_TRUE(state.isOperationInProgress);
}

TEST_F(BackupRunTest, ARunThatBreaksOffIsReportedAndLeavesTheBusyMode) {
    UseDisk(Medium::RemovableDisk);
    steps.whileCopying = [] { throw RuntimeError(ErrorNumber::DiskFull); };
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L"61 (Disk full) dans la procédure cmdLancer_Click, module frmBackupCD"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(run.IsRunning());
    EXPECT_EQ(machine.system.awakeHolds, 0);
}

TEST_F(BackupRunTest, ADiscGetsItsOptionsAndBothFilesThenTheWriteStarts) {
    UseCd();
    view.label = L"14 mars, 2026";
    view.speed = 4;
    run.Launch();
    EXPECT_THAT(Record().calls, ElementsAre(L"AddFile C:\\Valcoreaux\\Backup\\zip\\_listFich.lst",
                                            L"AddFile C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", L"StartWrite"));
    EXPECT_EQ(Record().label, L"14 mars, 2026");
    EXPECT_EQ(Record().speed, 4);
    EXPECT_THAT(view.runStatuses, ElementsAre(Text(142), L"Construction de la liste des fichiers.", Text(142)));
    EXPECT_TRUE(state.isOperationInProgress);
    EXPECT_EQ(Modes().back(), L"busy");
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
    EXPECT_EQ(machine.system.awakeHolds, 1);
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupRunTest, WithoutASpeedInTheListTheWritersOwnIsKept) {
    UseCd();
    run.Launch();
    EXPECT_EQ(Record().speed, 0);
}

TEST_F(BackupRunTest, MessagesRunAfterEachFileUnlessTheyAreHeld) {
    UseCd();
    run.Launch();
    const int runs = machine.messageLoop.runs;
    machine.app.areFileMessagesHeld = true;
    discs.AjouterFichiers();
    EXPECT_EQ(machine.messageLoop.runs, runs);
    machine.app.areFileMessagesHeld = false;
    discs.AjouterFichiers();
    EXPECT_EQ(machine.messageLoop.runs, runs + 2);
}

TEST_F(BackupRunTest, AnArchiveThatFailedStartsTheWriterOnAnEmptyImage) {
    UseCd();
    steps.archives = false;
    run.Launch();
    EXPECT_THAT(Record().calls, ElementsAre(L"StartWrite"));
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupRunTest, WithoutACdTheUserIsAskedForOne) {
    UseCd();
    machine.app.archiveSizeBytes = 0;
    steps.whileArchiving = [this] { Writer().InsertDisc({}); };
    run.Launch();
    ExpectOnlyBox(L"Veuillez insérer un disque dans le lecteur.", L"Backup", box::Ok);
    EXPECT_THAT(Record().calls, IsEmpty());
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(state.isOperationInProgress);
}

TEST_F(BackupRunTest, ACdOfAnotherKindOrNotWritableIsOfUnknownFormat) {
    UseCd();
    auto& disc = machine.discWriters.cdDrives[0].disc;
    for (const MediaKind kind : {MediaKind::CdRom, MediaKind::DvdPlusR, MediaKind::CdR}) {
        disc = BlankDisc(kind, 700 * Megabyte);
        disc.isWritable = kind != MediaKind::CdR;
        machine.messageBoxes.shown.clear();
        EXPECT_FALSE(discs.IsDiscAccepted());
        ExpectOnlyBox(Text(267), L"Backup", box::Ok);
    }
    disc = BlankDisc(MediaKind::CdRw, 700 * Megabyte);
    EXPECT_TRUE(discs.IsDiscAccepted());
}

TEST_F(BackupRunTest, ADvdOfCodeFourToNineIsAcceptedAndOthersRefusedInSilence) {
    UseDisc(Medium::Dvd, {});
    for (int code = 0; code <= 10; ++code) {
        machine.discWriters.dvdDrives[0].disc = BlankDisc(static_cast<MediaKind>(code), 4000 * Megabyte);
        EXPECT_EQ(discs.IsDiscAccepted(), code >= 4 && code <= 9) << code;
    }
    machine.discWriters.dvdDrives[0].disc = {};
    EXPECT_FALSE(discs.IsDiscAccepted());
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupRunTest, AWriteRefusedAtItsStartLeavesTheWindowBusyUntilStop) {
    UseCd();
    machine.discWriters.startError = FakeDiscError{5, L"No power."};
    run.Launch();
    ExpectOnlyBox(L"Error: 5. No power.", L"Backup", box::Ok);
    EXPECT_FALSE(state.isOperationInProgress);
    EXPECT_EQ(Modes().back(), L"busy");
    run.Stop();
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
}

TEST_F(BackupRunTest, ErrorCodes104And101ShowNothingButRaiseTheFlag) {
    UseCd();
    for (const std::int32_t code : {-104, -101}) {
        machine.app.hasWriterError = false;
        Writer().RaiseError(code, L"silent");
        EXPECT_TRUE(machine.app.hasWriterError);
    }
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    machine.app.hasWriterError = false;
    Writer().RaiseError(-102, L"Not silent");
    ExpectOnlyBox(L"Error: -102. Not silent", L"Backup", box::Ok);
    EXPECT_TRUE(machine.app.hasWriterError);
}

TEST_F(BackupRunTest, ProgressIsShownByOperationCode) {
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Erasing, 3);
    Writer().RaiseProgress(DiscOperation::Preparing, 4);
    EXPECT_EQ(view.total.Value(), 0);
    Writer().RaiseProgress(DiscOperation::Writing, 5, WritingStage::FillingBuffer);
    EXPECT_EQ(view.total.Value(), 5);
    Writer().RaiseProgress(DiscOperation::Writing, 60, WritingStage::WritingTrack);
    EXPECT_EQ(view.total.Value(), 60);
    Writer().RaiseProgress(DiscOperation::Writing, 99, WritingStage::ClosingTrack);
    EXPECT_EQ(view.total.Value(), 99);
    EXPECT_THAT(view.writerStatuses, ElementsAre(Text(709), Text(269), Text(283), Text(284), Text(285)));
    EXPECT_THAT(Record().calls, testing::Not(testing::Contains(L"Abort")));
}

TEST_F(BackupRunTest, CodesWithoutADisplayChangeNothing) {
    UseCd();
    run.Launch();
    view.calls.clear();
    for (const int code : {0, 3, 9, 13}) Writer().RaiseProgress(static_cast<DiscOperation>(code), 50);
    EXPECT_THAT(view.writerStatuses, IsEmpty());
    EXPECT_THAT(view.calls, IsEmpty());
    EXPECT_EQ(view.total.Value(), 0);
}

TEST_F(BackupRunTest, AFinishedDiscEndsTheProgramAndDeletesTheTransferList) {
    const std::wstring transferList = machine.app.ListFileFolder() + L"transfert.lst";
    machine.files.AddFile(transferList, "x");
    UseCd();
    run.Launch();
    Writer().PlayToEnd();
    ExpectOnlyBox(Text(263), Text(264), box::Exclamation);
    EXPECT_FALSE(machine.files.FileExists(transferList));
    EXPECT_TRUE(view.hasEnded);
    EXPECT_EQ(view.calls.back(), L"end");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
    EXPECT_FALSE(state.isOperationInProgress);
    EXPECT_EQ(machine.system.awakeHolds, 0);
}

TEST_F(BackupRunTest, ATransferListThatCannotBeDeletedIsReportedAndTheProgramEnds) {
    const std::wstring transferList = machine.app.ListFileFolder() + L"transfert.lst";
    machine.files.AddFile(transferList, "x");
    machine.files.Deny(transferList);
    UseCd();
    run.Launch();
    Writer().PlayToEnd();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_THAT(machine.messageBoxes.shown[1].text, HasSubstr(L"AfficherOperationEnCours, module frmBackupCD"));
    EXPECT_TRUE(view.hasEnded);
    EXPECT_EQ(Modes().back(), L"end");
}

TEST_F(BackupRunTest, TheTransferListStaysUntilTheDiscIsFinished) {
    const std::wstring transferList = machine.app.ListFileFolder() + L"transfert.lst";
    machine.files.AddFile(transferList, "x");
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Writing, 100);
    EXPECT_TRUE(machine.files.FileExists(transferList));
}

TEST_F(BackupRunTest, AStopReturnsToIdleAtOnceWithoutAQuestion) {
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Writing, 30);
    run.Stop();
    EXPECT_EQ(Record().calls.back(), L"Abort");
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
    EXPECT_EQ(view.total.Value(), 0);
    EXPECT_FALSE(state.isOperationInProgress);
    EXPECT_EQ(machine.system.awakeHolds, 0);
    Writer().PlayToEnd();
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_FALSE(view.hasEnded);
}

TEST_F(BackupRunTest, TheCancelFlagMakesTheNextProgressStopTheWrite) {
    UseCd();
    run.Launch();
    machine.app.isCancelRequested = true;
    Writer().RaiseProgress(DiscOperation::Writing, 30);
    EXPECT_EQ(Record().calls.back(), L"Abort");
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, AFailureDuringTheWriteIsShownAndStopBringsTheWindowBack) {
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Writing, 50);
    Writer().FailOperation(-5, L"Write error.");
    ExpectOnlyBox(L"Error: -5. Write error.", L"Backup", box::Ok);
    EXPECT_FALSE(view.hasEnded);
    run.Stop();
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, EraseProgressGoesToTheEraseWindowNeverToTheBackup) {
    UseCd();
    run.Launch();
    view.calls.clear();
    Writer().RaiseProgress(DiscOperation::EraseInProgress, 42);
    EXPECT_THAT(view.erasePercents, ElementsAre(42));
    EXPECT_THAT(view.calls, IsEmpty());
    EXPECT_THAT(view.writerStatuses, IsEmpty());
    EXPECT_EQ(view.total.Value(), 0);
}

TEST_F(BackupRunTest, AnotherDiscIsReadAndItsWrongKindIsSaid) {
    UseCd();
    Writer().InsertDisc(BlankDisc(MediaKind::DvdPlusR, 4000 * Megabyte));
    EXPECT_EQ(view.report[Panel::Type], L"DVD+R");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Erreur format de disque");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Exclamation);
    Writer().InsertDisc(BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    Writer().InsertDisc({});
    FakeDisc unknown;
    unknown.presence = DiscPresence::Unrecognized;
    Writer().InsertDisc(unknown);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(view.report[Panel::Type], L"Disque non reconnu");
    EXPECT_TRUE(state.disc.flMediaUnrecognized());
}

TEST_F(BackupRunTest, TheEraseButtonIsThereForDiscsAndLiveForRewritableOnes) {
    UseCd();
    EXPECT_TRUE(view.isEraseVisible);
    EXPECT_FALSE(view.isEraseEnabled);
    Writer().InsertDisc(BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    EXPECT_TRUE(view.isEraseEnabled);
    EXPECT_TRUE(state.disc.flDiscErasable);
    EXPECT_EQ(discs.DiscMediaTypeString(), L"CD-RW");
    Writer().InsertDisc({});
    EXPECT_TRUE(view.isEraseVisible);
    EXPECT_FALSE(view.isEraseEnabled);
    EXPECT_TRUE(state.disc.flNoDisc());
    UseDisk(Medium::RemovableDisk);
    EXPECT_FALSE(view.isEraseVisible);
}

TEST_F(BackupRunTest, ErasingKeepsTheControlsQuietAndReadsTheDiscAgain) {
    UseDisc(Medium::Cd, BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    view.whileErasing = [this] { EXPECT_TRUE(state.isErasing); };
    discs.EffacerDisque();
    EXPECT_FALSE(state.isErasing);
    EXPECT_THAT(view.calls, ElementsAre(L"disable", L"erase window", L"enable", L"panels", L"spaces", L"start button"));
}

TEST_F(BackupRunTest, AnEraseWindowThatFailsGivesTheControlsBack) {
    UseDisc(Medium::Cd, BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    view.whileErasing = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
    EXPECT_THROW(discs.EffacerDisque(), RuntimeError);
    EXPECT_FALSE(state.isErasing);
    EXPECT_EQ(view.calls.back(), L"enable");
}

TEST_F(BackupRunTest, AStepThatFailsAsAWholeLeavesTheWindowIdle) {
    UseDisk(Medium::RemovableDisk);
    steps.whileArchiving = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"PreparerArchive, module frmBackupCD"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(run.IsRunning());
}

TEST_F(BackupRunTest, ADiscOfUnknownStatusIsNotErased) {
    FakeDisc disc = BlankDisc(MediaKind::CdRw, 600 * Megabyte);
    disc.status = DiscStatus::Unknown;
    UseDisc(Medium::Cd, disc);
    discs.EffacerDisque();
    ExpectOnlyBox(Text(259), Text(260), box::Exclamation);
    EXPECT_THAT(view.calls, IsEmpty());
}

TEST_F(BackupRunTest, AComponentThatCannotBeMadeLeavesTheMediumWithoutAWriter) {
    machine.discWriters.createFailure = RuntimeError(ErrorNumber::CannotCreateObject);
    EXPECT_THROW(discs.CreateWriter(), RuntimeError);
    discs.RefreshDiscInfo();
    EXPECT_EQ(view.report[Panel::Type], L"Aucun disque");
    EXPECT_THAT(discs.WriterNames(), IsEmpty());
    EXPECT_THAT(discs.ProbeSpeeds(), IsEmpty());
    discs.ReleaseWriter();
}

TEST_F(BackupRunTest, ReleasingTheWriterShutsItDownAndSilencesIt) {
    UseCd();
    run.Launch();
    discs.ReleaseWriter();
    EXPECT_EQ(Record().shutDown, 1);
    EXPECT_EQ(Record().alive, 0);
    EXPECT_EQ(discs.Writer(), nullptr);
}

TEST_F(BackupRunTest, ADriveWithoutAReadableVolumeIsReportedAndOffersNothing) {
    UseDisk(Medium::RemovableDisk);
    machine.drives.At(L"E:\\")->canRead = false;
    machine.drives.At(L"E:\\")->label.reset();
    discs.RefreshDiscInfo();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L"71 (Disk not ready) dans la procédure RefreshDiscInfo"));
    EXPECT_EQ(machine.app.availableSpace, Currency());
    EXPECT_EQ(view.calls.back(), L"start button");
}

} // namespace
