// The backup window's disc side when drives, discs and users do what they do.
#include "backup/DiscErrors.h"
#include "backup/StartCondition.h"
#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "core/WriterFlags.h"
#include "platform/discs/MasteringCodes.h"
#include "support/BackupRunBench.h"

#include <algorithm>
#include <utility>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

FakeDisc NotAnswering() {
    FakeDisc disc;
    disc.presence = DiscPresence::NotAnswering;
    return disc;
}

TEST_F(BackupRunTest, AStartIsRefusedBeforeThePasswordUntilTheDriveHasEndedWhatWasStopped) {
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Writing, 30);
    run.Stop();
    EXPECT_TRUE(state.disc.isBusy);
    EXPECT_EQ(view.report[Panel::Status], L"Graveur occupé");
    EXPECT_FALSE(CanStartBackup(Medium::Cd, state.disc, {Currency::FromDouble(1), Currency::FromDouble(2), 2}));
    steps.calls.clear();
    run.Launch();
    EXPECT_THAT(steps.calls, IsEmpty());
    Writer().PlayToEnd();
    EXPECT_FALSE(state.disc.isBusy);
    EXPECT_EQ(view.report[Panel::Status], L"Vierge");
    run.Launch();
    EXPECT_THAT(steps.calls, Contains(L"password"));
    EXPECT_TRUE(state.phase.IsOperationInProgress());
}

TEST_F(BackupRunTest, NothingCanBeErasedWhileTheDriveEndsWhatWasStopped) {
    UseDisc(Medium::Cd, BlankDisc(MediaKind::CdRw, 600 * Megabyte));
    run.Launch();
    run.Stop();
    EXPECT_FALSE(view.isEraseEnabled);
    Writer().PlayToEnd();
    EXPECT_TRUE(view.isEraseEnabled);
}

TEST_F(BackupRunTest, AWriteThatFailsOnItsWayReturnsToIdleAndLetsTheComputerSleep) {
    UseCd();
    run.Launch();
    Writer().RaiseProgress(DiscOperation::Writing, 50);
    Writer().FailOperation(-5, L"Write error.");
    ExpectOnlyBox(L"Error: -5. Write error.", L"Backup", box::Ok);
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
    EXPECT_EQ(view.total.Value(), 0);
    EXPECT_FALSE(state.phase.IsOperationInProgress());
    EXPECT_EQ(view.holds, 0);
    EXPECT_FALSE(view.hasEnded);
}

TEST_F(BackupRunTest, TheEndOfAStoppedWriteToldBeforeTheNextStartIsNoFailureOfThatOne) {
    UseCd();
    discs.SetWriteOptions();
    Writer().RaiseError(DiscErrorAborted, L"");
    EXPECT_TRUE(machine.app.writerFlags->hasWriterError);
    discs.StartWrite();
    EXPECT_FALSE(machine.app.writerFlags->hasWriterError);
}

TEST_F(BackupRunTest, AnotherErrorBetweenTheOptionsAndTheStartStaysUp) {
    UseCd();
    discs.SetWriteOptions();
    Writer().RaiseError(7, L"");
    discs.StartWrite();
    EXPECT_TRUE(machine.app.writerFlags->hasWriterError);
}

TEST_F(BackupRunTest, AStopWhileTheArchiveIsBuiltShowsTheProgressUntilTheRunHasEnded) {
    UseCd();
    std::vector<std::wstring> modesAtStop;
    steps.whileArchiving = [&] {
        run.Stop();
        modesAtStop = Modes();
        EXPECT_EQ(view.runStatuses.back(), L"Arrêt en cours...");
        EXPECT_EQ(view.calls.back(), L"no stop");
        steps.archives = false;
    };
    run.Launch();
    EXPECT_THAT(modesAtStop, ElementsAre(L"busy"));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_EQ(view.runStatuses.back(), L"Disponible");
    EXPECT_THAT(Record().calls, Not(Contains(L"StartWrite")));
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupRunTest, ADiscTakenOutWhileTheArchiveIsBuiltIsMissedNotTooSmall) {
    UseCd();
    steps.whileArchiving = [this] { Writer().InsertDisc({}); };
    run.Launch();
    ExpectOnlyBox(L"Veuillez insérer un disque dans le lecteur.", L"Backup", box::Ok);
    EXPECT_EQ(Modes().back(), L"idle");
}

TEST_F(BackupRunTest, ADiscThatIsBeingLoadedWhenTheArchiveIsReadyIsWaitedFor) {
    UseCd();
    int left = 3;
    steps.whileArchiving = [&] {
        Writer().InsertDisc(NotAnswering());
        machine.messageLoop.handler = [&] {
            if (state.phase.IsAt(RunPhase::Archived) && --left == 0)
                Writer().InsertDisc(BlankDisc(MediaKind::CdR, 600 * Megabyte));
        };
    };
    run.Launch();
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_THAT(view.runStatuses, Contains(L"Graveur occupé"));
    EXPECT_EQ(Record().filesWritten.size(), 2u);
}

TEST_F(BackupRunTest, ADriveThatNeverAnswersIsNamedAndNotCalledTooSmall) {
    UseCd();
    steps.whileArchiving = [this] { Writer().InsertDisc(NotAnswering()); };
    run.Launch();
    ExpectOnlyBox(L"Le graveur n'a pas répondu à temps.", L"Backup", box::Ok);
    EXPECT_EQ(machine.clock.sleeps, 400);
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_THAT(Record().calls, Not(Contains(L"StartWrite")));
}

TEST_F(BackupRunTest, WaitingForADriveAfterTheArchiveCanBeStopped) {
    UseCd();
    steps.whileArchiving = [this] {
        Writer().InsertDisc(NotAnswering());
        machine.messageLoop.handler = [this] {
            if (state.phase.IsAt(RunPhase::Archived)) run.Stop();
        };
    };
    run.Launch();
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_LE(machine.clock.sleeps, 2);
    EXPECT_TRUE(state.phase.IsAt(RunPhase::Idle));
}

TEST_F(BackupRunTest, AFailedArchiveWaitsForNoDriveAndASilentOneIsNamedForEitherFamily) {
    for (const Medium medium : {Medium::Cd, Medium::Dvd}) {
        UseDisc(medium, BlankDisc(medium == Medium::Cd ? MediaKind::CdR : MediaKind::DvdPlusR, 600 * Megabyte));
        machine.app.archive->archiveSizeBytes = 0;
        machine.messageBoxes.shown.clear();
        steps.archives = false;
        steps.whileArchiving = [this] { Writer().InsertDisc(NotAnswering()); };
        run.Launch();
        ExpectOnlyBox(L"Le graveur n'a pas répondu à temps.", L"Backup", box::Ok);
        EXPECT_EQ(machine.clock.sleeps, 0);
        EXPECT_EQ(Modes().back(), L"idle");
        EXPECT_TRUE(state.phase.IsAt(RunPhase::Idle));
    }
}

TEST_F(BackupRunTest, ADriveThatFallsSilentBeforeTheWriteIsWaitedForAgain) {
    UseCd();
    int left = 3;
    view.whenBusyChanges = [&](bool isBusy) {
        if (isBusy && state.phase.IsAt(RunPhase::Archived)) Writer().InsertDisc(NotAnswering());
    };
    machine.messageLoop.handler = [&] {
        if (state.disc.presence == DiscPresence::NotAnswering && --left == 0)
            Writer().InsertDisc(BlankDisc(MediaKind::CdR, 600 * Megabyte));
    };
    run.Launch();
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_EQ(machine.clock.sleeps, 3);
    EXPECT_EQ(Record().filesWritten.size(), 2u);
    EXPECT_NE(view.runStatuses.back(), L"Graveur occupé");
}

TEST_F(BackupRunTest, ADriveThatFallsSilentBeforeTheWriteForGoodIsNamed) {
    UseCd();
    view.whenBusyChanges = [&](bool isBusy) {
        if (isBusy && state.phase.IsAt(RunPhase::Archived)) Writer().InsertDisc(NotAnswering());
    };
    run.Launch();
    ExpectOnlyBox(L"Le graveur n'a pas répondu à temps.", L"Backup", box::Ok);
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_THAT(Record().calls, Not(Contains(L"StartWrite")));
}

TEST_F(BackupRunTest, ADiscThatTheArchiveDoesNotFitAndThatCameBeforeTheWriteIsNotWritten) {
    UseCd();
    machine.app.archive->archiveSizeBytes = 500 * Megabyte;
    view.whenBusyChanges = [&](bool isBusy) {
        if (isBusy && state.phase.IsAt(RunPhase::Archived)) Writer().InsertDisc(NotAnswering());
    };
    machine.messageLoop.handler = [&] {
        if (state.disc.presence == DiscPresence::NotAnswering)
            Writer().InsertDisc(BlankDisc(MediaKind::CdR, 200 * Megabyte));
    };
    run.Launch();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, Text(TextId::MediumTooSmall));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_THAT(Record().filesWritten, IsEmpty());
}

TEST_F(BackupRunTest, AStopWhileTheDriveIsWaitedForAgainStartsNoWrite) {
    UseCd();
    view.whenBusyChanges = [&](bool isBusy) {
        if (isBusy && state.phase.IsAt(RunPhase::Archived)) Writer().InsertDisc(NotAnswering());
    };
    machine.messageLoop.handler = [&] {
        if (state.disc.presence != DiscPresence::NotAnswering) return;
        Writer().InsertDisc(BlankDisc(MediaKind::CdR, 600 * Megabyte));
        run.Stop();
    };
    run.Launch();
    EXPECT_TRUE(state.phase.IsAt(RunPhase::Idle));
    EXPECT_EQ(Modes().back(), L"idle");
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_THAT(Record().calls, Not(Contains(L"StartWrite")));
}

TEST_F(BackupRunTest, TheComputerMaySleepWhileABoxTellsWhyNothingIsWritten) {
    std::vector<int> holdsWhileShown;
    machine.messageBoxes.whileShown = [&](const auto&) { holdsWhileShown.push_back(view.holds); };
    UseCd();
    machine.app.archive->archiveSizeBytes = 701 * Megabyte;
    run.Launch();
    machine.app.archive->archiveSizeBytes = 100;
    steps.whileArchiving = [this] { Writer().InsertDisc(NotAnswering()); };
    run.Launch();
    steps.whileArchiving = [this] { Writer().InsertDisc({}); };
    run.Launch();
    // The same disc is missed, or not writable, after the archive has been found to fit.
    for (const FakeDisc& disc : {FakeDisc{}, BlankDisc(MediaKind::DvdPlusR, 600 * Megabyte)}) {
        steps.whileArchiving = {};
        Writer().InsertDisc(BlankDisc(MediaKind::CdR, 600 * Megabyte));
        view.whenBusyChanges = [&](bool isBusy) {
            if (isBusy && state.phase.IsAt(RunPhase::Archived)) machine.discWriters.cdDrives[0].disc = disc;
        };
        run.Launch();
    }
    std::vector<std::wstring> texts;
    for (const auto& box : machine.messageBoxes.shown) texts.push_back(box.text);
    EXPECT_THAT(texts, ElementsAre(Text(TextId::MediumTooSmall), Text(TextId::WriterSilent), Text(TextId::InsertDisc),
                                   Text(TextId::InsertDisc), Text(TextId::UnknownDiscFormat)));
    EXPECT_THAT(holdsWhileShown, ElementsAre(0, 0, 0, 0, 0));
}

TEST_F(BackupRunTest, WhyAnArchiveDoesNotGoToTheMediumIsToldOverTheSettings) {
    std::vector<std::wstring> modesWhileShown;
    machine.messageBoxes.whileShown = [&](const auto&) { modesWhileShown.push_back(Modes().back()); };
    UseCd();
    machine.app.archive->archiveSizeBytes = 701 * Megabyte;
    run.Launch();
    steps.whileArchiving = [this] { Writer().InsertDisc(NotAnswering()); };
    run.Launch();
    EXPECT_THAT(modesWhileShown, ElementsAre(L"idle", L"idle"));
}

TEST_F(BackupRunTest, TheComputerMaySleepWhileABoxTellsThatThereIsNothingToCopy) {
    UseDisk(Medium::RemovableDisk);
    steps.count = 0;
    int holdsWhileShown = -1;
    machine.messageBoxes.whileShown = [&](const auto&) { holdsWhileShown = view.holds; };
    run.Launch();
    EXPECT_EQ(holdsWhileShown, 0);
}

TEST_F(BackupRunTest, OneBoxAtATimeTellsOfTheDiscThatIsIn) {
    UseCd();
    int open = 0;
    int most = 0;
    std::vector<FakeDisc> next = {BlankDisc(MediaKind::DvdMinusR, 1000), BlankDisc(MediaKind::DvdPlusRw, 1000)};
    machine.messageBoxes.whileShown = [&](const auto&) {
        most = std::max(most, ++open);
        if (!next.empty()) {
            const std::vector<FakeDisc> inserted = std::exchange(next, {});
            for (const FakeDisc& disc : inserted) Writer().InsertDisc(disc);
        }
        --open;
    };
    Writer().InsertDisc(BlankDisc(MediaKind::DvdPlusR, 1000));
    EXPECT_EQ(most, 1);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"est un DVD+R."));
    EXPECT_THAT(machine.messageBoxes.shown[1].text, HasSubstr(L"est un DVD+RW."));
}

TEST_F(BackupRunTest, ADiscThatWasPutRightWhileTheBoxWasOpenBringsNoOther) {
    UseCd();
    bool isFirst = true;
    machine.messageBoxes.whileShown = [&](const auto&) {
        if (std::exchange(isFirst, false)) Writer().InsertDisc(BlankDisc(MediaKind::CdR, 1000));
    };
    Writer().InsertDisc(BlankDisc(MediaKind::DvdPlusR, 1000));
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(BackupRunTest, TheSameDiscReadAgainIsShownWithoutABox) {
    UseCd();
    Writer().InsertDisc(BlankDisc(MediaKind::DvdPlusR, 4000 * Megabyte));
    machine.messageBoxes.shown.clear();
    machine.discWriters.cdDrives[0].disc.status = DiscStatus::Closed;
    Writer().RaiseDiscReadAgain();
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_EQ(view.report[Panel::Status], L"Fermé");
}

TEST_F(BackupRunTest, ADriveThatDoesNotAnswerIsNotSaidToBeEmpty) {
    UseCd();
    Writer().InsertDisc(NotAnswering());
    EXPECT_EQ(view.report[Panel::Type], L"Graveur occupé");
    EXPECT_EQ(view.report[Panel::Status], L"Inconnu");
    EXPECT_EQ(machine.app.space->availableSpace, Currency());
    EXPECT_EQ(discs.DiscMediaTypeString(), L"");
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupRunTest, AnEmptyDriveHoldsNoKindOfDisc) {
    UseCd();
    Writer().InsertDisc({});
    EXPECT_EQ(discs.DiscMediaTypeString(), L"");
    EXPECT_EQ(state.disc.status, DiscStatus::Unknown);
}

TEST_F(BackupRunTest, WritersThatComeOrGoAreListedAnew) {
    UseCd();
    Writer().RaiseWritersChange();
    EXPECT_THAT(view.calls, Contains(L"panels"));
    EXPECT_EQ(view.calls.back(), L"writers");
}

TEST_F(BackupRunTest, ADriveThatWasEmptyWhenItWasProbedIsProbedAgainOnce) {
    UseDisc(Medium::Cd, {});
    discs.ProbeSpeeds();
    Writer().InsertDisc(BlankDisc(MediaKind::CdR, 600 * Megabyte));
    EXPECT_EQ(std::count(view.calls.begin(), view.calls.end(), L"speeds"), 1);
    discs.ProbeSpeeds();
    Writer().RaiseDiscReadAgain();
    EXPECT_EQ(std::count(view.calls.begin(), view.calls.end(), L"speeds"), 1);
}

TEST_F(BackupRunTest, ALabelThatTheSystemRefusesIsShownAsItIsWritten) {
    UseCd();
    view.label = L"été 2026";
    machine.discWriters.acceptedLabel = L"ete_2026";
    run.Launch();
    EXPECT_EQ(view.label, L"ete_2026");
    EXPECT_EQ(Record().label, L"ete_2026");
}

TEST_F(BackupRunTest, TheSystemsTextOfAnErrorIsShownAndOursWhereItHasNone) {
    UseCd();
    Writer().RaiseError(static_cast<std::int32_t>(Mastering::CommandTimeout), L"Du système.");
    Writer().RaiseError(static_cast<std::int32_t>(Mastering::CommandTimeout), L"");
    machine.app.language->lngLangue = 10000;
    Writer().RaiseError(static_cast<std::int32_t>(Mastering::CommandTimeout), L"");
    ExpectBox(0, L"Error: -1062600179. Du système.", L"Backup", box::Ok);
    ExpectBox(1, L"Error: -1062600179. Le graveur n'a pas répondu à temps.", L"Backup", box::Ok);
    ExpectBox(2, L"Error: -1062600179. The writer did not answer in time.", L"Backup", box::Ok);
}

TEST_F(BackupRunTest, WhatCannotBeAddedToIsToBeErasedWhereThatCanBeDone) {
    UseDisc(Medium::Dvd, BlankDisc(MediaKind::DvdPlusRw, 4000 * Megabyte));
    run.Launch();
    Writer().FailOperation(static_cast<std::int32_t>(Mastering::ImageNoFileSystem), L"");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"« Effacer le disque... »"));
    EXPECT_EQ(Modes().back(), L"idle");
    const std::wstring final = DiscErrorDescription(
        machine.app, static_cast<std::int32_t>(Mastering::ImageNoFileSystem), L"Du système.", false);
    EXPECT_EQ(final, L"Du système. Insérez un disque vierge.");
}

TEST(DiscErrors, EveryFailureThatAPersonCanMeetHasATextOfItsOwn) {
    FakeMachine machine;
    for (const std::uint32_t code :
         {Mastering::NoMedia, Mastering::MediaNotSupported, Mastering::MediaBusy, Mastering::RecorderLocked,
          Mastering::LossOfStreaming, Mastering::UnexpectedResponse, Mastering::StreamTooLarge,
          Mastering::EraseNotErasable, Mastering::ImageSizeLimit, Mastering::ImageReadFailure, Mastering::DeviceGone})
        EXPECT_NE(DiscErrorDescription(machine.app, static_cast<std::int32_t>(code), L"", false),
                  machine.app.Text(TextId::WriterFailed))
            << std::hex << code;
    EXPECT_EQ(DiscErrorDescription(machine.app, -5, L"", false), machine.app.Text(TextId::WriterFailed));
}

} // namespace
