#include "backup/DiscSide.h"

#include "archive/MediumPair.h"
#include "archive/clsListe.h"
#include "backup/DiscErrors.h"
#include "backup/DiscRules.h"
#include "core/SpaceValues.h"
#include "core/WriterFlags.h"
#include "platform/AtScopeEnd.h"
#include "platform/Files.h"
#include "platform/Locale.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "shell/ErrorReport.h"

#include <utility>

namespace {

constexpr const wchar_t* TransferListName = L"transfert.lst";

} // namespace

DiscSide::DiscSide(Application& app, BackupState& state, BackupView& view) : app_(app), state_(state), view_(view) {}

DiscSide::~DiscSide() {
    if (writer_) writer_->SetEvents(nullptr);
}

void DiscSide::CreateWriter() {
    app_.writerFlags->hasWriterError = false;
    writer_ = app_.machine.discWriters->Create(Family());
    writer_->SetEvents(this);
}

void DiscSide::ReleaseWriter() {
    // The shut-down lets messages run; nothing may find the writer any more.
    const std::unique_ptr<DiscWriter> writer = std::move(writer_);
    if (writer) writer->ShutDown();
}

std::vector<std::wstring> DiscSide::WriterNames() const {
    return writer_ ? writer_->WriterNames() : std::vector<std::wstring>();
}

std::vector<WriteSpeed> DiscSide::ProbeSpeeds() {
    if (!writer_) return {};
    areSpeedsOfDisc_ = writer_->Presence() == DiscPresence::Ready;
    switch (Family()) {
    case DiscFamily::Cd:
        return ProbeCdSpeeds(*writer_);
    case DiscFamily::Dvd:
        return ProbeDvdSpeeds(*writer_, app_.machine.locale->DecimalSeparator());
    }
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
}

MediumReport DiscSide::Report() const {
    return IsDisc(state_.miTypeMedia) ? ReportOnDisc(app_, Family(), writer_.get())
                                      : ReportOnDisk(app_, state_.miTypeMedia, state_.mstrDrive);
}

void DiscSide::RefreshDiscInfo() {
    app_.space->availableSpace = {};
    state_.disc = {};
    Guarded(app_, L"RefreshDiscInfo, module frmBackupCD", [this] {
        // What is left of a copy that was broken off takes room that the next one needs.
        if (!IsDisc(state_.miTypeMedia)) FinishExchangeIfPossible(app_, state_.mstrDrive);
        const MediumReport report = Report();
        app_.space->availableSpace = report.available;
        state_.disc = report.disc;
        view_.ShowPanels(report);
        view_.ShowEraseButton(IsDisc(state_.miTypeMedia), report.disc.flDiscErasable);
    });
    view_.AfficherEspaces();
    view_.MajBoutonLancer();
    // A drive that was asleep or empty when it was probed tells its speeds now.
    if (state_.disc.presence == DiscPresence::Ready && !std::exchange(areSpeedsOfDisc_, true)) view_.ProbeSpeedsAgain();
}

std::wstring DiscSide::DiscMediaTypeString() const {
    return KindName(app_, state_.disc.kind);
}

void DiscSide::CheckKind() {
    isKindCheckDue_ = true;
    if (isKindBoxOpen_) return;
    isKindBoxOpen_ = true;
    const AtScopeEnd close([this] { isKindBoxOpen_ = false; });
    while (std::exchange(isKindCheckDue_, false)) TellWrongKind();
}

void DiscSide::TellWrongKind() {
    if (!IsDisc(state_.miTypeMedia) || state_.disc.presence != DiscPresence::Ready) return;
    if (IsKindOfFamily(Family(), state_.disc.kind)) return;
    app_.ShowMessage(WrongKindText(app_, state_.miTypeMedia, state_.disc.kind), TextId::WrongDiscFormatTitle,
                     box::Exclamation);
}

bool DiscSide::IsDiscAccepted() {
    return (this->*ByFamily(Family(), &DiscSide::DiscWritableCD, &DiscSide::DiscWritableDVD))();
}

bool DiscSide::DiscWritableCD() {
    return Guarded(app_, L"DiscWritableCD, module frmBackupCD", [this] {
        const DiscFacts disc = Report().disc;
        const bool isAccepted = !disc.flNoDisc() && disc.flDiscWritable;
        // What a box tells of is over: the machine may sleep while it stays open.
        if (!isAccepted) state_.awake.reset();
        if (disc.flNoDisc()) {
            app_.ShowMessage(TextId::InsertDisc, TextId::None, box::Ok);
        } else if (!disc.flDiscWritable) {
            app_.ShowMessage(TextId::UnknownDiscFormat, TextId::None, box::Ok);
        }
        return isAccepted;
    });
}

bool DiscSide::DiscWritableDVD() {
    return Guarded(app_, L"DiscWritableDVD, module frmBackupCD", [this] {
        const DiscFacts disc = Report().disc;
        return !disc.flNoDisc() && IsKindOfFamily(DiscFamily::Dvd, disc.kind);
    });
}

void DiscSide::SetWriteOptions() {
    app_.writerFlags->hasWriterError = false;
    lastError_ = 0;
    RequiredWriter();
    SettleLabel();
    writer_->SetDiscLabel(view_.DiscLabel());
    if (const auto speed = view_.SelectedSpeed()) writer_->SetWriteSpeed(*speed);
}

void DiscSide::SettleLabel() {
    if (!writer_) return;
    const std::wstring typed = view_.DiscLabel();
    const std::wstring accepted = writer_->AcceptedDiscLabel(typed);
    if (accepted != typed) view_.ShowDiscLabel(accepted);
}

void DiscSide::StartWrite() {
    DiscWriter& writer = RequiredWriter();
    // The end of a write that was stopped before is no failure of this one.
    if (lastError_ == DiscErrorAborted) app_.writerFlags->hasWriterError = false;
    writer.StartWrite();
}

DiscFamily DiscSide::Family() const {
    const auto family = DiscFamilyOf(state_.miTypeMedia);
    if (!family) throw RuntimeError(ErrorNumber::ObjectNotSet);
    return *family;
}

DiscWriter& DiscSide::RequiredWriter() {
    if (!writer_) throw RuntimeError(ErrorNumber::ObjectNotSet);
    return *writer_;
}

void DiscSide::AjouterFichiers() {
    Guarded(app_, L"AjouterFichiers, module frmBackupCD", [this] {
        const std::wstring folder = app_.WorkFolder() + L"\\";
        const std::wstring files[] = {folder + ControlFileName, folder + ArchiveName};
        const std::wstring status = view_.Display().RunStatus();
        view_.Display().SetRunStatus(L"Construction de la liste des fichiers.");
        ProgressBar& progress = view_.Display().Step();
        progress.SetRange(0, static_cast<std::int32_t>(std::size(files)));
        progress.SetValue(0);
        for (const std::wstring& file : files) {
            if (!writer_ || state_.phase.IsAt(RunPhase::ArchiveStopped)) return;
            writer_->AddFile(file);
            progress.SetValue(progress.Value() + 1);
            if (!app_.writerFlags->areFileMessagesHeld) app_.machine.messageLoop->RunPending();
        }
        view_.Display().SetRunStatus(status);
    });
}

void DiscSide::AfficherOperationEnCours(std::int16_t percent) {
    Guarded(app_, L"AfficherOperationEnCours, module frmBackupCD", [&] {
        if (!state_.phase.IsOperationInProgress() || app_.writerFlags->isCancelRequested) {
            ArreterEcriture();
            // The window shows its settings again, whatever it was busy with.
            if (state_.phase.IsAt(RunPhase::Writing) || state_.phase.IsAt(RunPhase::StartRefused))
                state_.phase.Enter(RunPhase::Idle);
        } else if (writer_) {
            ShowWriting(percent);
        }
    });
}

void DiscSide::ShowWriting(std::int16_t percent) {
    constexpr TextId stageTexts[] = {TextId::StageBuffer, TextId::StageTrack, TextId::StageTrackEnd};
    switch (writer_->CurrentOperation()) {
    case DiscOperation::Erasing:
        view_.Display().SetWriterStatus(app_.Text(TextId::DiscErasing));
        break;
    case DiscOperation::Preparing:
        view_.Display().SetWriterStatus(app_.Text(TextId::StagePreparation));
        break;
    case DiscOperation::Writing:
        view_.Display().SetWriterStatus(app_.Text(stageTexts[static_cast<std::size_t>(writer_->CurrentStage())]));
        view_.Display().Total().SetValue(percent);
        break;
    case DiscOperation::Finished:
        EndWriting();
        break;
    case DiscOperation::None:
    case DiscOperation::EraseInProgress:
        break;
    }
}

void DiscSide::EndWriting() {
    state_.phase.Enter(RunPhase::Ending);
    const AtScopeEnd end([this] {
        if (state_.phase.IsAt(RunPhase::Ending)) state_.phase.Enter(RunPhase::Idle);
    });
    state_.awake.reset();
    view_.Display().Step().SetValue(view_.Display().Step().Max());
    app_.machine.messageLoop->SetPointer(Pointer::Default);
    app_.ShowMessage(TextId::BackupDone, TextId::BackupDoneTitle, box::Exclamation);
    DeleteTransferList();
    FinEcriture();
    view_.AfficherProgression(false);
    view_.EndProgram();
}

void DiscSide::EndFailedWriting() {
    state_.phase.Enter(RunPhase::Idle);
    FinEcriture();
}

/// A list that stays must not keep a finished backup from ending.
void DiscSide::DeleteTransferList() {
    Guarded(app_, L"AfficherOperationEnCours, module frmBackupCD", [this] {
        const std::wstring path = app_.ListFileFolder() + TransferListName;
        if (app_.machine.files->FileExists(path)) app_.machine.files->Delete(path);
    });
}

void DiscSide::ArreterEcriture() {
    Guarded(app_, L"ArreterEcriture, module frmBackupCD", [this] {
        // The external disk has no writer to stop: this fails, and the failure is reported.
        RequiredWriter().Abort();
        FinEcriture();
    });
}

void DiscSide::FinEcriture() {
    Guarded(app_, L"FinEcriture, module frmBackupCD", [this] {
        view_.Display().SetRunStatus(app_.Text(TextId::WriterIdle));
        view_.Display().Step().SetValue(view_.Display().Step().Min());
        view_.Display().Total().SetValue(view_.Display().Total().Min());
        state_.awake.reset();
        RefreshDiscInfo();
        view_.AfficherProgression(false);
        view_.ActiverControles(true);
        view_.MajBoutonLancer();
        app_.machine.messageLoop->SetPointer(Pointer::Default);
    });
}

void DiscSide::EffacerDisque() {
    if (state_.disc.status == DiscStatus::Unknown) {
        app_.ShowMessage(TextId::DiscNotErasable, TextId::DiscNotErasableTitle, box::Exclamation);
        return;
    }
    view_.ActiverControles(false);
    state_.phase.SetErasing(true);
    WithEnding([this] { view_.ShowEraseWindow(); },
               [this] {
                   state_.phase.SetErasing(false);
                   view_.ActiverControles(true);
               });
    RefreshDiscInfo();
}

void DiscSide::ErrorEx(std::int32_t errCode, const std::wstring& errDescr) {
    Guarded(app_, Label(L"objGraveurCD_ErrorEx, module frmBackupCD", L"objGraveurDVD_ErrorEx, module frmBackupCD"),
            [&] {
                app_.writerFlags->hasWriterError = true;
                lastError_ = errCode;
                if (errCode == DiscErrorAborted || errCode == DiscErrorNoDisc) return;
                // What runs now has failed: nothing else will take the window out of its busy mode.
                const bool isErasable = writer_ && IsKindErasable(Family(), writer_->Kind());
                if (state_.phase.IsAt(RunPhase::Writing)) EndFailedWriting();
                app_.ShowMessage(L"Error: " + std::to_wstring(errCode) + L". " +
                                     DiscErrorDescription(app_, errCode, errDescr, isErasable),
                                 TextId::None, box::Ok);
            });
}

void DiscSide::MediaChange() {
    Guarded(app_,
            Label(L"objGraveurCD_MediaChange, module frmBackupCD", L"objGraveurDVD_MediaChange, module frmBackupCD"),
            [this] {
                RefreshDiscInfo();
                CheckKind();
            });
}

void DiscSide::DiscReadAgain() {
    Guarded(app_,
            Label(L"objGraveurCD_MediaChange, module frmBackupCD", L"objGraveurDVD_MediaChange, module frmBackupCD"),
            [this] { RefreshDiscInfo(); });
}

void DiscSide::WritersChange() {
    Guarded(app_,
            Label(L"objGraveurCD_MediaChange, module frmBackupCD", L"objGraveurDVD_MediaChange, module frmBackupCD"),
            [this] {
                RefreshDiscInfo();
                view_.ShowWriters();
            });
}

void DiscSide::OperationProgress(std::int16_t percent) {
    Guarded(app_,
            Label(L"objGraveurCD_OperationProgress, module frmBackupCD",
                  L"objGraveurDVD_OperationProgress, module frmBackupCD"),
            [&] {
                if (!writer_) return;
                if (writer_->CurrentOperation() == DiscOperation::EraseInProgress) {
                    view_.ShowEraseProgress(percent);
                } else {
                    AfficherOperationEnCours(percent);
                }
                app_.machine.messageLoop->RunPending();
            });
}

const wchar_t* DiscSide::Label(const wchar_t* forCd, const wchar_t* forDvd) const {
    return ByFamily(Family(), forCd, forDvd);
}
