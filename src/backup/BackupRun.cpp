#include "backup/BackupRun.h"

#include "backup/DriveEntries.h"
#include "backup/SpaceFigures.h"
#include "core/ArchiveValues.h"
#include "core/SpaceValues.h"
#include "core/WriterFlags.h"
#include "platform/AtScopeEnd.h"
#include "platform/Clock.h"
#include "platform/Drives.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "shell/ErrorReport.h"

namespace {

constexpr std::int32_t WholeBar = 100;
constexpr std::int32_t HalfBar = 50;
/// How long a drive that does not answer is waited for before an archive is given up.
constexpr std::uint32_t PatienceMilliseconds = 20000;
constexpr std::uint32_t PauseMilliseconds = 50;

} // namespace

BackupRun::BackupRun(Application& app, BackupState& state, BackupView& view, BackupSteps& steps, DiscSide& discs)
    : app_(app), state_(state), view_(view), steps_(steps), discs_(discs) {}

void BackupRun::Launch() {
    if (!IsStepAllowed(state_.phase.Now(), RunPhase::Preparing) || discs_.IsBusy()) return;
    state_.phase.Enter(RunPhase::Preparing);
    // The window is back at its settings before the phase says that nothing runs.
    const AtScopeEnd leave([this] {
        if (state_.phase.IsRunning()) state_.phase.Enter(RunPhase::Idle);
    });
    try {
        const bool isComplete = Guarded(app_, L"cmdLancer_Click, module frmBackupCD", [this] {
            if (IsDisc(state_.miTypeMedia)) {
                RunToDisc();
            } else {
                RunToDisk();
            }
            return true;
        });
        EndHold();
        // A run that broke off leaves nothing behind that would take the window out of its busy mode.
        if (!isComplete) ReturnToIdle();
    } catch (...) {
        // Not even the report could be made. A window that stays busy could not be closed.
        EndHold();
        ReturnToIdle();
        throw;
    }
}

/// A burn that goes on keeps its hold on the machine.
void BackupRun::EndHold() {
    if (!state_.phase.IsAt(RunPhase::Writing)) state_.awake.reset();
}

/// A box may stay open overnight: what it tells of is over, and no longer keeps the machine awake.
void BackupRun::Tell(const Notice& notice) {
    state_.awake.reset();
    app_.ShowMessage(notice.text, notice.title, notice.style);
}

void BackupRun::RunToDisk() {
    const std::wstring drive = DrivePart(view_.SelectedDrive());
    if (!app_.machine.drives->Exists(drive)) {
        app_.ShowMessage(app_.Text(Describe(state_.miTypeMedia).labelId) + L" " + app_.Text(TextId::MediumUnavailable),
                         TextId::None, box::Ok);
    } else {
        if (!PreparerArchive()) return;
        if (steps_.SelectedCount() == 0) {
            Tell({TextId::NothingToBackUp, TextId::None, box::Ok});
        } else {
            CopyToDisk();
        }
    }
    discs_.RefreshDiscInfo();
}

void BackupRun::CopyToDisk() {
    view_.AfficherProgression(true);
    app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    view_.Display().SetRunStatus(app_.Text(TextId::CopyingFiles));
    view_.Display().Step().SetRange(0, WholeBar);
    view_.Display().Total().SetRange(0, WholeBar);
    view_.Display().Total().SetValue(0);
    view_.Display().HideStep();
    view_.Display().Total().SetValue(HalfBar);
    app_.machine.messageLoop->RunPending();
    bool isCopied = state_.phase.IsAt(RunPhase::Archived);
    state_.phase.Enter(RunPhase::Copying);
    // The copy goes to the drive that was handed over, whichever one the list shows for an external disk.
    if (isCopied) isCopied = steps_.CopierUSB(state_.mstrDrive);
    view_.Display().Total().SetValue(WholeBar);
    app_.machine.messageLoop->SetPointer(Pointer::Default);
    app_.machine.messageLoop->RunPending();
    if (!state_.phase.IsAt(RunPhase::Copying)) { // stopped
        view_.AfficherProgression(false);
        return;
    }
    state_.phase.Enter(RunPhase::Ending);
    EndCopy(isCopied);
}

void BackupRun::EndCopy(bool isCopied) {
    if (!isCopied) {
        Tell({TextId::BackupFailed, TextId::ErrorTitle, box::Critical});
        view_.AfficherProgression(false);
        return;
    }
    Tell({TextId::BackupDone, TextId::BackupDoneTitle, box::Exclamation});
    view_.EndProgram();
}

void BackupRun::RunToDisc() {
    if (!PreparerArchive()) return;
    app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    app_.machine.messageLoop->RunPending();
    if (state_.phase.IsAt(RunPhase::ArchiveStopped)) return;
    view_.AfficherProgression(true);
    AwaitDrive();
    if (state_.phase.IsAt(RunPhase::ArchiveStopped)) return;
    // Messages ran since the archive was held against the disc: another may be in.
    if (const std::optional<Notice> refusal = WhyNotToMedium()) {
        Tell(*refusal);
        ReturnToIdle();
        return;
    }
    if (!discs_.IsDiscAccepted()) {
        ReturnToIdle();
        return;
    }
    StartWriting();
}

void BackupRun::StartWriting() {
    if (!state_.awake) state_.awake = view_.HoldMachine();
    discs_.SetWriteOptions();
    // An archive that failed is not written, but the writer is started all the same, on an empty image.
    if (state_.phase.IsAt(RunPhase::Archived)) discs_.AjouterFichiers();
    if (state_.phase.IsAt(RunPhase::ArchiveStopped)) return;
    view_.Display().Step().SetRange(0, WholeBar);
    view_.Display().Step().SetValue(0);
    // The archive has left the number of its items there.
    view_.Display().Total().SetRange(0, WholeBar);
    view_.Display().Total().SetValue(0);
    // From here on events may end the write, even inside the call that starts it.
    state_.phase.Enter(RunPhase::StartingWrite);
    discs_.StartWrite();
    if (state_.phase.IsAt(RunPhase::StartingWrite))
        state_.phase.Enter(app_.writerFlags->hasWriterError ? RunPhase::StartRefused : RunPhase::Writing);
    if (!app_.writerFlags->hasWriterError) app_.machine.messageLoop->SetPointer(Pointer::Default);
}

bool BackupRun::PreparerArchive() {
    bool isOk = false;
    const bool isComplete = Guarded(app_, L"PreparerArchive, module frmBackupCD", [&] {
        if (!steps_.ValidZipApp()) {
            ReportError(app_, L"PreparerArchive, module frmBackupCD",
                        static_cast<std::int32_t>(ErrorNumber::FileNotFound),
                        steps_.GetZipAppName() + L" : " + app_.Text(TextId::CompressionFailed));
            return true;
        }
        if (!steps_.DemanderMotPasse()) return true;
        state_.awake = view_.HoldMachine();
        BuildArchive();
        AwaitDrive();
        // Found out before messages are let in, and told over the window's settings.
        const std::optional<Notice> refusal = WhyNotToMedium();
        ReturnToIdle();
        // A failed archive still starts the writer; the user's stop must not cost a disc.
        if (IsDiscStopped()) return true;
        isOk = !refusal;
        if (refusal) Tell(*refusal);
        return true;
    });
    // A step that failed as a whole has left the window in its busy mode.
    if (!isComplete) ReturnToIdle();
    return isOk;
}

std::optional<BackupRun::Notice> BackupRun::WhyNotToMedium() const {
    if (IsDriveSilent()) return Notice{TextId::WriterSilent, TextId::None, box::Ok};
    if (FitsMedium(app_.archive->archiveSizeBytes, app_.space->availableSpace)) return std::nullopt;
    if (IsDisc(state_.miTypeMedia) && state_.disc.flNoDisc()) return Notice{TextId::InsertDisc, TextId::None, box::Ok};
    return Notice{TextId::MediumTooSmall, TextId::CapacityReachedTitle, box::Exclamation};
}

bool BackupRun::IsDiscStopped() const {
    return IsDisc(state_.miTypeMedia) && state_.phase.IsAt(RunPhase::ArchiveStopped);
}

bool BackupRun::IsDriveSilent() const {
    return IsDisc(state_.miTypeMedia) && state_.disc.presence == DiscPresence::NotAnswering;
}

/// A disc that is being loaded at this moment, or a writer that another program holds, must not cost the archive.
void BackupRun::AwaitDrive() {
    // Of an archive that failed there is nothing to save.
    if (!IsDriveSilent() || !state_.phase.IsAt(RunPhase::Archived)) return;
    const std::wstring status = view_.Display().RunStatus();
    view_.Display().SetRunStatus(app_.Text(TextId::WriterBusy));
    for (std::uint32_t waited = 0; waited < PatienceMilliseconds; waited += PauseMilliseconds) {
        if (!IsDriveSilent() || !state_.phase.IsOperationInProgress()) break;
        app_.machine.clock->Sleep(PauseMilliseconds);
        app_.machine.messageLoop->RunPending();
    }
    if (state_.phase.IsOperationInProgress()) view_.Display().SetRunStatus(status);
}

void BackupRun::BuildArchive() {
    // Messages are handled between the items: only the stop button may be pressed meanwhile.
    view_.AfficherProgression(true);
    view_.Display().SetRunStatus(app_.Text(TextId::BuildingList));
    steps_.EnregistrerListeFichiers();
    state_.phase.Enter(RunPhase::Archiving);
    view_.RefreshWindow();
    const bool isComplete = steps_.CopierListeFichiers();
    // What was pressed during the last item counts for the window as it was then.
    app_.machine.messageLoop->RunPending();
    if (state_.phase.IsAt(RunPhase::Archiving)) {
        state_.phase.Enter(isComplete ? RunPhase::Archived : RunPhase::ArchiveFailed);
    } else if (IsDisc(state_.miTypeMedia)) {
        discs_.ArreterEcriture();
    }
}

void BackupRun::Stop() {
    if (state_.phase.IsAt(RunPhase::StartRefused)) {
        state_.phase.Enter(RunPhase::Idle);
        discs_.FinEcriture();
    }
    if (!state_.phase.IsOperationInProgress()) return;
    if (IsDisc(state_.miTypeMedia) && state_.phase.IsAt(RunPhase::Archiving)) {
        // The item in hand is finished first: the window shows that, and only then the settings.
        view_.Display().SetRunStatus(app_.Text(TextId::StoppingRun));
        view_.Display().DisableStop();
    } else if (Describe(state_.miTypeMedia).doesStopReachWriter) {
        discs_.ArreterEcriture();
    }
    state_.phase.Stop();
}

void BackupRun::ReturnToIdle() {
    app_.machine.messageLoop->SetPointer(Pointer::Default);
    view_.AfficherProgression(false);
    view_.MajBoutonLancer();
}
