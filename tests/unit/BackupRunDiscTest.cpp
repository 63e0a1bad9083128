#include "core/ArchiveValues.h"
#include "core/WriterFlags.h"
#include "resources/TextId.h"
#include "support/BackupRunBench.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(BackupRunTest, ADiscGetsItsOptionsAndBothFilesThenTheWriteStarts) {
    UseCd();
    view.label = L"14 mars, 2026";
    view.speed = 4;
    run.Launch();
    EXPECT_THAT(Record().calls, ElementsAre(L"AddFile C:\\Valcoreaux\\Backup\\zip\\_listFich.lst",
                                            L"AddFile C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", L"StartWrite"));
    EXPECT_EQ(Record().label, L"14 mars, 2026");
    EXPECT_EQ(Record().speed, 4);
    EXPECT_THAT(view.runStatuses, ElementsAre(Text(TextId::BuildingList), L"Construction de la liste des fichiers.",
                                              Text(TextId::BuildingList)));
    EXPECT_TRUE(state.phase.IsOperationInProgress());
    EXPECT_EQ(Modes().back(), L"busy");
    EXPECT_EQ(machine.messageLoop.pointers.back(), Pointer::Default);
    EXPECT_EQ(view.holds, 1);
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
    machine.app.writerFlags->areFileMessagesHeld = true;
    discs.AjouterFichiers();
    EXPECT_EQ(machine.messageLoop.runs, runs);
    machine.app.writerFlags->areFileMessagesHeld = false;
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
    machine.app.archive->archiveSizeBytes = 0;
    steps.whileArchiving = [this] { Writer().InsertDisc({}); };
    run.Launch();
    ExpectOnlyBox(L"Veuillez insérer un disque dans le lecteur.", L"Backup", box::Ok);
    EXPECT_THAT(Record().calls, IsEmpty());
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_FALSE(state.phase.IsOperationInProgress());
}

TEST_F(BackupRunTest, ACdOfAnotherKindOrNotWritableIsOfUnknownFormat) {
    UseCd();
    auto& disc = machine.discWriters.cdDrives[0].disc;
    for (const MediaKind kind : {MediaKind::CdRom, MediaKind::DvdPlusR, MediaKind::CdR}) {
        disc = BlankDisc(kind, 700 * Megabyte);
        disc.isWritable = kind != MediaKind::CdR;
        machine.messageBoxes.shown.clear();
        EXPECT_FALSE(discs.IsDiscAccepted());
        ExpectOnlyBox(Text(TextId::UnknownDiscFormat), L"Backup", box::Ok);
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
    EXPECT_FALSE(state.phase.IsOperationInProgress());
    EXPECT_EQ(Modes().back(), L"busy");
    run.Stop();
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
}

TEST_F(BackupRunTest, ErrorCodes104And101ShowNothingButRaiseTheFlag) {
    UseCd();
    for (const std::int32_t code : {-104, -101}) {
        machine.app.writerFlags->hasWriterError = false;
        Writer().RaiseError(code, L"silent");
        EXPECT_TRUE(machine.app.writerFlags->hasWriterError);
    }
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    machine.app.writerFlags->hasWriterError = false;
    Writer().RaiseError(-102, L"Not silent");
    ExpectOnlyBox(L"Error: -102. Not silent", L"Backup", box::Ok);
    EXPECT_TRUE(machine.app.writerFlags->hasWriterError);
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
    EXPECT_THAT(view.writerStatuses,
                ElementsAre(Text(TextId::DiscErasing), Text(TextId::StagePreparation), Text(TextId::StageBuffer),
                            Text(TextId::StageTrack), Text(TextId::StageTrackEnd)));
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
    ExpectOnlyBox(Text(TextId::BackupDone), Text(TextId::BackupDoneTitle), box::Exclamation);
    EXPECT_FALSE(machine.files.FileExists(transferList));
    EXPECT_TRUE(view.hasEnded);
    EXPECT_EQ(view.calls.back(), L"end");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
    EXPECT_FALSE(state.phase.IsOperationInProgress());
    EXPECT_EQ(view.holds, 0);
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
    EXPECT_FALSE(state.phase.IsOperationInProgress());
    EXPECT_EQ(view.holds, 0);
    Writer().PlayToEnd();
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_FALSE(view.hasEnded);
}

TEST_F(BackupRunTest, TheCancelFlagMakesTheNextProgressStopTheWrite) {
    UseCd();
    run.Launch();
    machine.app.writerFlags->isCancelRequested = true;
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
    view.whileErasing = [this] { EXPECT_TRUE(state.phase.IsAt(RunPhase::Erasing)); };
    discs.EffacerDisque();
    EXPECT_FALSE(state.phase.IsAt(RunPhase::Erasing));
    EXPECT_THAT(view.calls, ElementsAre(L"disable", L"erase window", L"enable", L"panels", L"spaces", L"start button"));
}

TEST_F(BackupRunTest, AnEraseWindowThatFailsGivesTheControlsBack) {
    UseDisc(Medium::Cd, BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    view.whileErasing = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
    EXPECT_THROW(discs.EffacerDisque(), RuntimeError);
    EXPECT_FALSE(state.phase.IsAt(RunPhase::Erasing));
    EXPECT_EQ(view.calls.back(), L"enable");
}

TEST_F(BackupRunTest, AnEraseWhoseControlsCannotBeGivenBackIsAFailureLikeAnyOther) {
    UseDisc(Medium::Cd, BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    view.whenEnabled = [] { throw RuntimeError(ErrorNumber::OutOfMemory); };
    EXPECT_THROW(discs.EffacerDisque(), RuntimeError);
    EXPECT_FALSE(state.phase.IsAt(RunPhase::Erasing));
}

TEST_F(BackupRunTest, ADiscOfUnknownStatusIsNotErased) {
    FakeDisc disc = BlankDisc(MediaKind::CdRw, 600 * Megabyte);
    disc.status = DiscStatus::Unknown;
    UseDisc(Medium::Cd, disc);
    discs.EffacerDisque();
    ExpectOnlyBox(Text(TextId::DiscNotErasable), Text(TextId::DiscNotErasableTitle), box::Exclamation);
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

} // namespace
