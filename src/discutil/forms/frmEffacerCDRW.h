#pragma once

#include "discutil/DiscHost.h"
#include "discutil/forms/frmEffacerCDRWIds.h"
#include "shell/forms/ApplicationForm.h"

#include <cstdint>

/// Erases the disc in the backup window's current writer and waits for it.
class frmEffacerCDRW final : public ApplicationForm {
  public:
    explicit frmEffacerCDRW(Application& app);

    /// `frm` outlives the window.
    void SetParent(DiscHost& frm) { parent_ = &frm; }
    /// Shows how far the erase is, in percent; from 100 on the window can be closed.
    void SetEffacementProgress(std::int32_t percent);

  protected:
    void OnLoad() override;
    bool OnClosing() override;
    void OnUnload() override;
    bool KeepsDiscsFromOpening() const override { return true; }

  private:
    void InitCaptions();
    void cmdEffacerCD_Click();
    void cmdFermer_Click();
    bool IsFullEraseConfirmed();
    void Erase();
    void StartErase();
    void ReportWriterError();
    void WaitForEnd();
    void EnableButtons(bool isEnabled);

    ui::Option optEffacementRapide{*this, IDC_optEffacementRapide};
    ui::Option optEffacementComplet{*this, IDC_optEffacementComplet};
    ui::ProgressBarControl pgbEffacement{*this, IDC_pgbEffacement};
    ui::Button cmdEffacerCD{*this, IDC_cmdEffacerCD};
    ui::Button cmdFermer{*this, IDC_cmdFermer};

    DiscHost* parent_ = nullptr;
    bool isErasing_ = false;
    bool hasFailed_ = false;
};
