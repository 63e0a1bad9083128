#include "discutil/forms/frmEffacerCDRW.h"

#include "core/WriterFlags.h"
#include "discutil/EraseWatchdog.h"
#include "platform/Clock.h"
#include "platform/MessageBoxes.h"
#include "platform/MessageLoop.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "ui/SessionEndHold.h"

#include <array>

namespace {

constexpr std::array Captions = {
    Caption{IDC_cmdFermer, TextId::CloseCaption},
    Caption{IDC_cmdEffacerCD, TextId::EraseCaption},
    Caption{IDC_optEffacementComplet, TextId::FullEraseChoice},
    Caption{IDC_optEffacementRapide, TextId::QuickEraseChoice},
};
constexpr std::array Names = {Caption{IDC_eraseName, TextId::DiscErasing}};
constexpr std::int32_t WholeBar = 100;
constexpr std::uint32_t PauseMilliseconds = 10;

} // namespace

frmEffacerCDRW::frmEffacerCDRW(Application& app) : ApplicationForm(app, IDD_frmEffacerCDRW, L"frmEffacerCDRW") {}

void frmEffacerCDRW::OnLoad() {
    SetCancelButton(IDC_cmdFermer);
    cmdEffacerCD.OnClick([this] { cmdEffacerCD_Click(); });
    cmdFermer.OnClick([this] { cmdFermer_Click(); });
    pgbEffacement.SetRange(0, WholeBar);
    optEffacementRapide.Select(IDC_optEffacementRapide, IDC_optEffacementComplet);
    Guarded(L"Form_Load, module frmEffacerCDRW", [this] { InitCaptions(); });
}

bool frmEffacerCDRW::OnClosing() {
    // An erase that has failed may never come to its end: only then can the wait for it be left.
    return !isErasing_ || hasFailed_;
}

void frmEffacerCDRW::OnUnload() {
    Guarded(L"Form_Unload, module frmEffacerCDRW", [this] {
        // The erase that is being waited for still has to tell the backup window of its end.
        if (!isErasing_) parent_ = nullptr;
    });
}

void frmEffacerCDRW::InitCaptions() {
    Guarded(L"InitCaptions, module frmEffacerCDRW", [this] {
        SetTitle(Text(TextId::EraseTitle));
        SetCaptions(Captions);
        SetNames(Names);
    });
}

void frmEffacerCDRW::SetEffacementProgress(std::int32_t percent) {
    pgbEffacement.SetValue(percent < WholeBar ? percent : WholeBar);
    if (percent >= WholeBar) cmdFermer.Enable(true);
}

void frmEffacerCDRW::cmdFermer_Click() {
    Guarded(L"cmdFermer_Click, module frmEffacerCDRW", [this] {
        // During an erase its own end closes the window; one that has failed may never come to its end.
        if (!isErasing_ || hasFailed_) Unload();
    });
}

void frmEffacerCDRW::cmdEffacerCD_Click() {
    Guarded(L"cmdEffacerCD_Click, module frmEffacerCDRW", [this] {
        EnableButtons(false);
        parent_->SetEffacementEnCour(true);
        if (!IsFullEraseConfirmed()) {
            EnableButtons(true);
            parent_->SetEffacementEnCour(false);
            return;
        }
        isErasing_ = true;
        hasFailed_ = false;
        Erase();
        if (IsLoaded()) app_.ShowMessage(TextId::EraseDone, TextId::DiscErasing, box::Exclamation);
        EnableButtons(true);
        parent_->SetEffacementEnCour(false);
        parent_->RefreshDiscInfo();
    });
    const bool hasErased = isErasing_;
    isErasing_ = false;
    if (hasErased) Unload();
}

void frmEffacerCDRW::Erase() {
    const ui::SessionEndHold hold(*this, Text(TextId::EraseRuns));
    StartErase();
    ReportWriterError();
    WaitForEnd();
}

bool frmEffacerCDRW::IsFullEraseConfirmed() {
    return optEffacementRapide.IsChecked() || app_.ShowMessage(TextId::FullEraseQuestion, TextId::FullEraseTitle,
                                                               box::YesNo | box::Question) == box::AnswerYes;
}

void frmEffacerCDRW::StartErase() {
    DiscWriter* writer = parent_->Writer();
    if (writer == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet);
    app_.machine.messageLoop->SetPointer(Pointer::Hourglass);
    // An error that was shown before does not count against the erase.
    app_.writerFlags->hasWriterError = false;
    writer->Erase(optEffacementRapide.IsChecked());
    app_.machine.messageLoop->SetPointer(Pointer::Default);
}

void frmEffacerCDRW::ReportWriterError() {
    if (!app_.writerFlags->hasWriterError) return;
    app_.writerFlags->hasWriterError = false;
    hasFailed_ = true;
    app_.ShowMessage(TextId::EraseFailed, TextId::DiscErasing, box::Critical);
    if (IsLoaded()) cmdFermer.Enable(true);
}

/// Waits for the whole bar, or until the window is closed after a failure.
void frmEffacerCDRW::WaitForEnd() {
    EraseWatchdog watchdog;
    while (IsLoaded() && pgbEffacement.Value() < WholeBar) {
        app_.machine.messageLoop->RunPending();
        ReportWriterError();
        if (watchdog.IsStalled(pgbEffacement.Value(), app_.machine.clock->Now())) pgbEffacement.SetValue(WholeBar);
        app_.machine.clock->Sleep(PauseMilliseconds);
    }
}

void frmEffacerCDRW::EnableButtons(bool isEnabled) {
    cmdEffacerCD.Enable(isEnabled);
    cmdFermer.Enable(isEnabled);
}
