#pragma once

#include "platform/discs/DiscFamily.h"
#include "shell/MainWindow.h"
#include "shell/MediumOffer.h"
#include "shell/forms/ApplicationForm.h"
#include "shell/forms/frmMainIds.h"
#include "ui/ToolTips.h"

#include <functional>
#include <optional>
#include <string>

/// The first window: the user chooses to back up, and on what, or to restore.
class frmMain final : public ApplicationForm, public MainWindow {
  public:
    /// The windows that this one opens. Each call returns when the window that it showed has closed.
    struct Openers {
        /// Shows a backup window for a medium; the drive root comes with disks only.
        std::function<void(frmMain& parent, Medium medium, const std::optional<std::wstring>& drive)> showBackup;
        std::function<void(frmMain& parent)> showRestore;
    };

    frmMain(Application& app, Openers openers);

    bool FullExit() const override { return fullExit_; }
    void SetFullExit(bool vbExit) override { fullExit_ = vbExit; }

  protected:
    void OnLoad() override;
    void OnActivate() override;
    bool OnClosing() override;
    void OnUnload() override;

  private:
    void Form_Load();
    bool LoadStepByStep();
    void InitLangue();
    void InitCaptions();
    void Detect(Medium medium);
    void InitGraveur(Medium medium, DiscFamily family);
    void InitDisqueAmovible(Medium medium);
    void InitDisqueExterne(Medium medium);
    void MajTexteBouton();

    void optBackup_Click();
    void optRestaure_Click();
    void MediumClicked(const wchar_t* procedure);
    void cmdBackup_Click();
    void cmdAide_Click();
    void cmdSortie_Click();

    void DisableChoices();
    bool Progress();
    void ShowMedia();
    void SelectFirstMedium();
    void EnableDriveLists();
    void DetectAgain();
    void ShowOffer(Medium medium, const MediumOffer& offer);
    static void FillDriveList(ui::ComboBox& list, const MediumOffer& offer);
    /// What stands in a medium's line; a disc has no list of drives.
    struct MediumLine {
        ui::Option& option;
        TextId captionId;
        ui::Label& isDetected;
        ui::ComboBox* drives;
        const wchar_t* clickProcedure;
    };
    MediumLine LineOf(Medium medium);
    std::optional<Medium> SelectedMedium();
    void SelectMedium(std::optional<Medium> medium);
    void OpenChosenWindow();
    void OpenBackup();
    void EndProgram();

    ui::Frame frmAction{*this, IDC_frmAction};
    ui::Option optBackup{*this, IDC_optBackup};
    ui::Option optRestaure{*this, IDC_optRestaure};
    ui::Frame frmMedium{*this, IDC_frmMedium};
    ui::Option optCD{*this, IDC_optCD};
    ui::Option optDVD{*this, IDC_optDVD};
    ui::Option optDisqueAmovible{*this, IDC_optDisqueAmovible};
    ui::Option optDisqueExterne{*this, IDC_optDisqueExterne};
    ui::ComboBox cboDrive{*this, IDC_cboDrive};
    ui::ComboBox cboDisqueExterne{*this, IDC_cboDisqueExterne};
    ui::Label lblDetCD{*this, IDC_lblDetCD};
    ui::Label lblDetDVD{*this, IDC_lblDetDVD};
    ui::Label lblDetRemDisk{*this, IDC_lblDetRemDisk};
    ui::Label lblDetExtDisk{*this, IDC_lblDetExtDisk};
    ui::Button cmdBackup{*this, IDC_cmdBackup};
    ui::Button cmdSortie{*this, IDC_cmdSortie};
    ui::Button cmdAide{*this, IDC_cmdAide};
    ui::ProgressBarControl pgbInit{*this, IDC_pgbInit};
    ui::ToolTips toolTips_{*this};

    Openers openers_;
    bool fullExit_ = false;
    bool hasStarted_ = false;
    bool isDetecting_ = false;
    bool isBackupClickHeld_ = false;
    bool isOpening_ = false; ///< from a click on `cmdBackup` until the window that it opened has gone
};
