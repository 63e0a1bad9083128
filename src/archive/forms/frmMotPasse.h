#pragma once

#include "archive/forms/frmMotPasseIds.h"
#include "shell/forms/ApplicationForm.h"

#include <cstdint>
#include <optional>
#include <string>

enum class PasswordMode : std::int16_t { Creation = 1, Entry = 2 };

/// Asks for the backup password: twice and by the policy when a backup is made, once and unchecked when one is
/// restored.
class frmMotPasse final : public ApplicationForm {
  public:
    frmMotPasse(Application& app, PasswordMode mode);
    ~frmMotPasse() override;

    /// The password that was accepted; nothing when none was. It is overwritten with the dialog.
    const std::optional<std::wstring>& Answer() const { return answer_; }

  protected:
    void OnLoad() override;
    void OnUnload() override;

  private:
    void Form_Load();
    void InitCaptionsMotPasse();
    void LayOutForCreation();
    void LayOutForEntry();
    bool IsCreation() const { return mode_ == PasswordMode::Creation; }

    void cmdOK_Click();
    /// Whether the two boxes hold a password for a backup; the user is told why not.
    bool IsNewPasswordAccepted();
    bool VerifierComplexiteMotPasse();
    bool IsConfirmed();
    void cmdCancel_Click();
    void txtMotPasse_KeyPress();
    void txtConfirmation_KeyPress();
    void cmdAideMax_Click();
    void cmdAideMin_Click();
    void ShowHelp(bool isShown, int topTwips);

    ui::Label lblNotaBene{*this, IDC_lblNotaBene};
    ui::Label lblTitre{*this, IDC_lblTitre};
    ui::TextBox txtMotPasse{*this, IDC_txtMotPasse};
    ui::Label lblConfirmation{*this, IDC_lblConfirmation};
    ui::TextBox txtConfirmation{*this, IDC_txtConfirmation};
    ui::Button cmdOK{*this, IDC_cmdOK};
    ui::Button cmdCancel{*this, IDC_cmdCancel};
    ui::Button cmdAideMax{*this, IDC_cmdAideMax};
    ui::Button cmdAideMin{*this, IDC_cmdAideMin};
    ui::Frame frameAide{*this, IDC_frameAide};
    ui::Label lblTitreLabel{*this, IDC_lblTitreLabel};
    ui::Label lblCritere{*this, IDC_lblCritere};
    ui::Label lblAlphaNum{*this, IDC_lblAlphaNum};

    const PasswordMode mode_;
    /// What the last check said. A click that is handled while messages run checks again, before the password is kept.
    bool isAccepted_ = false;
    std::optional<std::wstring> answer_;
};

namespace modGestionMotPasse {

/// Asks for the password in a modal dialog over `owner` and gives whether one was accepted; it is `backupPassword`
/// then, which is empty otherwise. Failures are reported and give false.
bool DemanderMotPasse(Application& app, ui::Form* owner, PasswordMode mode);

} // namespace modGestionMotPasse
