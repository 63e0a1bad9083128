#include "backup/BackupRun.h"

#include "backup/DriveEntries.h"
#include "platform/Drives.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "shell/ErrorReport.h"

#include <utility>

namespace {

constexpr std::int32_t WholeBar = 100;
constexpr std::int32_t HalfBar = 50;

} // namespace

BackupRun::BackupRun(Application& app, BackupState& state, BackupView& view, BackupSteps& steps, DiscSide& discs)
    : app_(app), state_(state), view_(view), steps_(steps), discs_(discs) {}

void BackupRun::Launch() {
    if (state_.isOperationInProgress || std::exchange(isRunning_, true)) return;
    isBurnStarted_ = false;
    isStartRefused_ = false;
    const bool isComplete = Guarded(app_, L"cmdLancer_Click, module frmBackupCD", [this] {
        if (IsDisc(state_.miTypeMedia)) {
            RunToDisc();
        } else {
            RunToDisk();
        }
        return true;
    });
    if (!isBurnStarted_) {
        state_.isOperationInProgress = false;
        state_.awake.reset();
    }
    // A run that broke off leaves nothing behind that would take the window out of its busy mode.
    if (!isComplete) ReturnToIdle();
    isRunning_ = false;
}

void BackupRun::RunToDisk() {
    const std::wstring drive = DrivePart(view_.SelectedDrive());
    if (!app_.machine.drives.Exists(drive)) {
        app_.ShowMessage(app_.Text(Describe(state_.miTypeMedia).labelId) + L" " + app_.Text(TextId::MediumUnavailable),
                         TextId::None, box::Ok);
    } else {
        const Preparation preparation = PreparerArchive();
        if (!preparation.isOk) return;
        if (steps_.SelectedCount() == 0) {
            app_.ShowMessage(TextId::NothingToBackUp, TextId::None, box::Ok);
        } else {
            CopyToDisk(preparation.hasFailed || preparation.wasStopped);
        }
    }
    discs_.RefreshDiscInfo();
}

void BackupRun::CopyToDisk(bool hasFailed) {
    view_.AfficherProgression(true);
    app_.machine.messageLoop.SetPointer(Pointer::Hourglass);
    view_.SetRunStatus(app_.Text(TextId::CopyingFiles));
    view_.StepProgress().SetRange(0, WholeBar);
    view_.TotalProgress().SetRange(0, WholeBar);
    view_.TotalProgress().SetValue(0);
    view_.HideStepProgress();
    view_.TotalProgress().SetValue(HalfBar);
    app_.machine.messageLoop.RunPending();
    state_.isOperationInProgress = true;
    // The copy goes to the drive that was handed over, whichever one the list shows for an external disk.
    if (!hasFailed) hasFailed = !steps_.CopierUSB(state_.mstrDrive);
    view_.TotalProgress().SetValue(WholeBar);
    app_.machine.messageLoop.SetPointer(Pointer::Default);
    app_.machine.messageLoop.RunPending();
    if (std::exchange(state_.isOperationInProgress, false)) {
        EndCopy(hasFailed);
    } else {
        view_.AfficherProgression(false);
    }
}

void BackupRun::EndCopy(bool hasFailed) {
    state_.awake.reset();
    if (hasFailed) {
        app_.ShowMessage(TextId::BackupFailed, TextId::ErrorTitle, box::Critical);
        view_.AfficherProgression(false);
        return;
    }
    app_.ShowMessage(TextId::BackupDone, TextId::BackupDoneTitle, box::Exclamation);
    view_.EndProgram();
}

void BackupRun::RunToDisc() {
    const Preparation preparation = PreparerArchive();
    // A failed archive still starts the writer; the user's stop must not cost a disc.
    if (!preparation.isOk || preparation.wasStopped) return;
    app_.machine.messageLoop.SetPointer(Pointer::Hourglass);
    app_.machine.messageLoop.RunPending();
    view_.AfficherProgression(true);
    if (!discs_.IsDiscAccepted()) {
        ReturnToIdle();
        return;
    }
    StartWriting(preparation.hasFailed);
}

void BackupRun::StartWriting(bool hasFailed) {
    if (!state_.awake) state_.awake = app_.machine.system.KeepAwake();
    discs_.SetWriteOptions();
    // An archive that failed is not written, but the writer is started all the same, on an empty image.
    if (!hasFailed) discs_.AjouterFichiers();
    view_.StepProgress().SetRange(0, WholeBar);
    view_.StepProgress().SetValue(0);
    // The archive has left the number of its items there.
    view_.TotalProgress().SetRange(0, WholeBar);
    view_.TotalProgress().SetValue(0);
    // From here on events may end the write, even inside the call that starts it.
    state_.isOperationInProgress = true;
    isBurnStarted_ = true;
    discs_.StartWrite();
    if (app_.hasWriterError) {
        state_.isOperationInProgress = false;
        isBurnStarted_ = false;
        isStartRefused_ = true;
        return;
    }
    app_.machine.messageLoop.SetPointer(Pointer::Default);
}

BackupRun::Preparation BackupRun::PreparerArchive() {
    Preparation result;
    const bool isComplete = Guarded(app_, L"PreparerArchive, module frmBackupCD", [&] {
        if (!steps_.ValidZipApp()) {
            ReportError(app_, L"PreparerArchive, module frmBackupCD",
                        static_cast<std::int32_t>(ErrorNumber::FileNotFound),
                        steps_.GetZipAppName() + L" : " + app_.Text(TextId::CompressionFailed));
            return true;
        }
        if (!steps_.DemanderMotPasse()) return true;
        state_.awake = app_.machine.system.KeepAwake();
        BuildArchive(result);
        if (FitsMedium(app_.archiveSizeBytes, app_.availableSpace)) {
            result.isOk = true;
        } else {
            app_.ShowMessage(TextId::MediumTooSmall, TextId::CapacityReachedTitle, box::Exclamation);
        }
        return true;
    });
    // A step that failed as a whole has left the window in its busy mode.
    if (!isComplete) ReturnToIdle();
    return result;
}

void BackupRun::BuildArchive(Preparation& result) {
    // Messages are handled between the items: only the stop button may be pressed meanwhile.
    view_.AfficherProgression(true);
    view_.SetRunStatus(app_.Text(TextId::BuildingList));
    steps_.EnregistrerListeFichiers();
    state_.isOperationInProgress = true;
    view_.Refresh();
    result.hasFailed = !steps_.CopierListeFichiers();
    // What was pressed during the last item counts for the window as it was then.
    app_.machine.messageLoop.RunPending();
    result.wasStopped = !state_.isOperationInProgress;
    ReturnToIdle();
}

void BackupRun::Stop() {
    if (!state_.isOperationInProgress) {
        if (std::exchange(isStartRefused_, false)) discs_.FinEcriture();
        return;
    }
    if (Describe(state_.miTypeMedia).doesStopReachWriter) discs_.ArreterEcriture();
    state_.isOperationInProgress = false;
}

void BackupRun::ReturnToIdle() {
    app_.machine.messageLoop.SetPointer(Pointer::Default);
    view_.AfficherProgression(false);
    view_.MajBoutonLancer();
}
