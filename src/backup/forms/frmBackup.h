#pragma once

#include "backup/ArchiveSteps.h"
#include "backup/BackupRun.h"
#include "backup/BackupState.h"
#include "backup/BackupView.h"
#include "backup/DiscSide.h"
#include "backup/SelectionWatch.h"
#include "backup/forms/MediumStatusBar.h"
#include "backup/forms/ProgressControls.h"
#include "backup/forms/SpaceLabel.h"
#include "backup/forms/WriterLists.h"
#include "backup/forms/frmBackupIds.h"
#include "platform/Power.h"
#include "resources/TextId.h"
#include "selection/forms/ctlScan.h"
#include "selection/forms/ctlSelectionFichiers.h"
#include "shell/MainWindow.h"
#include "shell/forms/ApplicationForm.h"
#include "ui/Timer.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class frmEffacerCDRW;

/// The window in which the user chooses what to back up and starts the backup. Each is shown once.
class frmBackup final : public ApplicationForm, private BackupView {
  public:
    /// Asks for a new password over a window; false when the user gives none.
    using PasswordQuestion = std::function<bool(ui::Form& owner)>;

    explicit frmBackup(Application& app, PasswordQuestion askPassword);

    void SetMedia(Medium iMediaType) { state_.miTypeMedia = iMediaType; }
    /// The drive of a USB medium, such as "E:\".
    void SetDrive(const std::wstring& strDrive);
    /// `frm` outlives the window.
    void SetParent(MainWindow& frm) { parent_ = &frm; }

    void InitCaptions();
    /// Takes the size of the selected drive for the available space; gives it as text, in bytes.
    std::wstring GetEspaceTotalUSB();
    /// Whether no copy or burn is in progress.
    bool StopWrite() override { return !state_.phase.IsOperationInProgress(); }
    /// The drive that the backup goes to, for USB media.
    const std::wstring& Drive() const { return state_.mstrDrive; }
    /// Whether an erase that was started from this window runs.
    bool EffacementEnCour() const { return discs_.EffacementEnCour(); }
    void SetEffacementEnCour(bool isErasing) { discs_.SetEffacementEnCour(isErasing); }

  protected:
    void OnLoad() override;
    void OnActivate() override;
    bool OnClosing() override;
    /// What plays or shows a disc keeps the writer from having it.
    bool KeepsDiscsFromOpening() const override { return IsDisc(state_.miTypeMedia); }
    void OnUnload() override;

  private:
    void ConnectControls();
    void HostSelection();
    void SetUp();
    void SetUpDiscs();
    void SetUpDisks();
    void ShowTitle();
    void LoadSpeedCombo();
    void CatchUp();
    void LoadComboDrive();
    void LoadComboDriveUSB();
    void FillDrives(const std::vector<std::wstring>& roots);
    void RemoveControls();

    void cmbGraveur_Click();
    void cmbSpeed_Click();
    void cmdInfoDisque_Click();
    void cmdEffacerDisque_Click();
    void cmdPrecedent_Click();
    void cmdQuitter_Click();
    void cmdStopWrite_Click();

    void AfficherProgression(bool isBusy) override;
    std::unique_ptr<Hold> HoldMachine() override;
    void ActiverControles(bool isEnabled) override;
    void MajBoutonLancer() override;
    void AfficherEspaces() override;
    void AfficherEspaceRequis() override;
    void AfficherEspaceDispo();
    void AfficherEspaceTravail();
    void MarkWorkSpace(bool isUsedUp) override { lblEspaceTravail.SetRed(isUsedUp); }
    void ShowPanels(const MediumReport& report) override;
    void ShowEraseButton(bool isVisible, bool isEnabled) override;
    void ShowWriters() override {
        areWritersDue_ = true;
        CatchUp();
    }
    void ProbeSpeedsAgain() override {
        areSpeedsDue_ = true;
        CatchUp();
    }
    void RefreshWindow() override { Refresh(); }
    RunDisplay& Display() override { return progress_; }
    std::wstring RequiredSpaceText() const override { return lblEspaceRequis.Text(); }
    std::wstring SelectedDrive() const override { return cmbGraveur.SelectedText(); }
    std::optional<double> SelectedSpeed() const override { return lists_.SelectedSpeed(); }
    std::wstring DiscLabel() const override { return txtDiscLabel.Text(); }
    void ShowDiscLabel(const std::wstring& label) override { txtDiscLabel.SetText(label); }
    void ShowEraseProgress(std::int16_t percent) override;
    void ShowEraseWindow() override;
    void EndProgram() override;

    ui::Frame fParametres{*this, IDC_fParametres};
    ui::ComboBox cmbGraveur{*this, IDC_cmbGraveur};
    ui::Label lblVitesse{*this, IDC_lblVitesse};
    ui::ComboBox cmbSpeed{*this, IDC_cmbSpeed};
    ui::Label lblNomVolume{*this, IDC_lblNomVolume};
    ui::TextBox txtDiscLabel{*this, IDC_txtDiscLabel};
    ui::Button cmdInfoDisque{*this, IDC_cmdInfoDisque};
    ui::Button cmdEffacerDisque{*this, IDC_cmdEffacerDisque};
    SpaceLabel lblEspaceRequis{*this, IDC_lblEspaceRequis, TextId::RequiredSpace};
    SpaceLabel lblEspaceDispo{*this, IDC_lblEspaceDispo, TextId::AvailableSpace};
    SpaceLabel lblEspaceTravail{*this, IDC_lblEspaceTravail, TextId::WorkSpace};
    ui::Button cmdPrecedent{*this, IDC_cmdPrecedent};
    ui::Button cmdLancer{*this, IDC_cmdLancer};
    ui::Button cmdQuitter{*this, IDC_cmdQuitter};
    MediumStatusBar stBarDataWriter{*this, IDC_stBarDataWriter};
    ProgressControls progress_{*this};
    ui::Timer clock_{*this, [this] {
                         stBarDataWriter.ShowTime(app_);
                         CatchUp();
                     }};

    BackupState state_;
    PasswordQuestion askPassword_;
    SelectionWatch watch_;
    ctlSelectionFichiers ctlSelectionFichiers_;
    ctlScan ctlScan_;
    DiscSide discs_;
    ArchiveSteps steps_;
    BackupRun run_;
    MainWindow* parent_ = nullptr;
    frmEffacerCDRW* eraseWindow_ = nullptr;
    WriterLists lists_{cmbGraveur, cmbSpeed, discs_};
    bool areWritersDue_ = false;
    bool areSpeedsDue_ = false;
};
