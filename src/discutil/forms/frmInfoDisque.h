#pragma once

#include "discutil/DiscHost.h"
#include "discutil/DiscInformation.h"
#include "discutil/forms/frmInfoDisqueIds.h"
#include "shell/forms/ApplicationForm.h"

/// Shows the medium of the backup window: its kind, its state and its space. Changes nothing.
class frmInfoDisque final : public ApplicationForm {
  public:
    explicit frmInfoDisque(Application& app);

    /// `frm` outlives the window.
    void SetParent(DiscHost& frm) { parent_ = &frm; }

  protected:
    void OnLoad() override;
    void OnUnload() override;
    bool KeepsDiscsFromOpening() const override { return parent_ != nullptr && IsDisc(parent_->MediaType()); }

  private:
    void InitCaptions();
    void Rafraichir();
    void ShowInformation(const DiscInformation& information);
    void cmdRafraichir_Click();
    void cmdOk_Click();

    ui::Label lblTypeCD{*this, IDC_lblTypeCD};
    ui::Label lblStatutCD{*this, IDC_lblStatutCD};
    ui::Label lblEspaceUtilise{*this, IDC_lblEspaceUtilise};
    ui::Label lblEstimEspaceUtilise{*this, IDC_lblEstimEspaceUtilise};
    ui::Button cmdRafraichir{*this, IDC_cmdRafraichir};
    ui::Button cmdOK{*this, IDC_cmdOK};

    DiscHost* parent_ = nullptr;
};
