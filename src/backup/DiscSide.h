#pragma once

#include "backup/BackupState.h"
#include "backup/BackupView.h"
#include "backup/WriteSpeeds.h"
#include "core/Application.h"
#include "discutil/DiscHost.h"
#include "platform/discs/DiscWriter.h"

#include <memory>
#include <string>
#include <vector>

/// What the backup window does with its medium: reads it, burns it, erases it. Of a USB disk it only reads the state.
/// Procedures report their own failures, unless told otherwise. Everything runs on the user-interface thread, and
/// wherever messages run the window may be closed.
class DiscSide final : public DiscHost, private DiscWriterEvents {
  public:
    DiscSide(Application& app, BackupState& state, BackupView& view);
    ~DiscSide() override;
    DiscSide(const DiscSide&) = delete;
    DiscSide& operator=(const DiscSide&) = delete;

    /// Makes the writer component of the medium. Throws 429 when it cannot be made; the medium then has no writer.
    void CreateWriter();
    /// Shuts the writer down and releases it.
    void ReleaseWriter();
    DiscWriter* Writer() override { return writer_.get(); }

    std::vector<std::wstring> WriterNames() const;
    /// The speeds that the current writer takes.
    std::vector<WriteSpeed> ProbeSpeeds();

    /// Reads the medium again: state, panels, available space and what depends on them.
    void RefreshDiscInfo() override;
    Medium MediaType() const override { return state_.miTypeMedia; }
    const std::wstring& Drive() const override { return state_.mstrDrive; }
    std::wstring RequiredSpaceText() const override { return view_.RequiredSpaceText(); }
    bool EffacementEnCour() const override { return state_.phase.IsAt(RunPhase::Erasing); }
    void SetEffacementEnCour(bool isErasing) override { state_.phase.SetErasing(isErasing); }
    /// The kind of the disc as it was read last.
    std::wstring DiscMediaTypeString() const override;
    /// Tells the user when the disc does not belong to the medium chosen. While he is being told, another disc waits.
    void CheckKind();
    /// Whether the drive has not ended its last operation yet, so that no other can be started.
    bool IsBusy() const { return writer_ && writer_->IsBusy(); }

    /// Shows the disc's label as it will be written.
    void SettleLabel();
    /// The check of the disc before a burn.
    bool IsDiscAccepted();
    /// Throws 91 without a writer, like `StartWrite`.
    void SetWriteOptions();
    void AjouterFichiers();
    void StartWrite();
    void AfficherOperationEnCours(std::int16_t percent);
    void ArreterEcriture();
    void FinEcriture();
    /// Lets its failures out.
    void EffacerDisque();

  private:
    void ErrorEx(std::int32_t errCode, const std::wstring& errDescr) override;
    void MediaChange() override;
    void DiscReadAgain() override;
    void WritersChange() override;
    void OperationProgress(std::int16_t percent) override;

    /// Throws 91 for a disk.
    DiscFamily Family() const;
    DiscWriter& RequiredWriter();
    bool DiscWritableCD();
    bool DiscWritableDVD();
    MediumReport Report() const;
    void ShowWriting(std::int16_t percent);
    void EndWriting();
    void EndFailedWriting();
    void TellWrongKind();
    void DeleteTransferList();
    const wchar_t* Label(const wchar_t* forCd, const wchar_t* forDvd) const;

    Application& app_;
    BackupState& state_;
    BackupView& view_;
    std::unique_ptr<DiscWriter> writer_;
    std::int32_t lastError_ = 0;
    bool areSpeedsOfDisc_ = true; ///< false while the speeds were probed without a disc
    bool isKindBoxOpen_ = false;
    bool isKindCheckDue_ = false;
};
