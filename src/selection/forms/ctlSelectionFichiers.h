#pragma once

#include "core/Currency.h"
#include "selection/FolderBrowser.h"
#include "selection/SelectionList.h"
#include "selection/forms/ctlSelectionFichiersIds.h"
#include "shell/forms/ApplicationForm.h"
#include "ui/ControlKeys.h"
#include "ui/Controls.h"
#include "ui/FolderListBox.h"
#include "ui/ListView.h"

#include <array>
#include <memory>
#include <string>

/// The part of the backup window in which the user builds the list of what is to be backed up. Its host places it with
/// `CreateChild`, which already loads the predefined sets: events may come from then on.
class ctlSelectionFichiers final : public ApplicationForm, private SelectionView, private ui::ListViewRows {
  public:
    /// `host` is borrowed.
    ctlSelectionFichiers(Application& app, SelectionEvents& host);

    /// What is selected: the list's own collection, not a copy. Empty before the form is loaded.
    const std::shared_ptr<clsColFileInfo>& ArrayFichier() const;
    /// Takes another collection and rebuilds the rows from it.
    void SetArrayFichier(std::shared_ptr<clsColFileInfo> collection);

    bool Enabled() const { return isEnabled_; }
    /// Greys everything but the boxes of the predefined sets, which only stop taking clicks; or brings it back.
    void SetEnabled(bool isEnabled);

    /// Gives the keyboard to the list of what is selected.
    void FocusList() { lvFichRep.SetFocus(); }

    /// Whether the system is Windows Vista or later.
    bool IsWinVista() const;

    /// The space that an item takes of a backup, for the host's figures: its bytes, for a folder those of all files
    /// below it, times 1.05. Throws the errors of `Files::FileSize`.
    Currency SpaceOf(const std::wstring& path) { return list_->SpaceOf(path); }

  protected:
    void OnLoad() override;

  private:
    std::unique_ptr<SelectionList> NewList();
    void InitCaptions();
    void ConnectControls();
    void dlbSelectLecteur_Change();
    void dlbSelectRep_Click();
    void dlbSelectRep_Change();
    void cmdAjouterRep_Click();
    void AjouterFichier(const wchar_t* procedure);
    void cmdOuvrirExplorer_Click();
    void RemoveSelectedRow();

    void OpenStartFolder();
    void OpenFolder(const std::wstring& path);
    void ShowDrive();

    std::int32_t SelectedRow() const override { return lvFichRep.Selected(); }
    void RowsChanged(std::int32_t selected, std::int32_t shown) override;
    void BoxChanged(std::int32_t index) override;

    int Count() const override { return list_->RowCount(); }
    std::wstring Cell(int row, int column) const override;
    ui::RowStyle Style(int row) const override;

    ui::Frame frmFileView{*this, IDC_frmFileView};
    ui::ComboBox dlbSelectLecteur{*this, IDC_dlbSelectLecteur};
    ui::FolderListBox dlbSelectRep{*this, IDC_dlbSelectRep};
    ui::ListBox flbSelectFichier{*this, IDC_flbSelectFichier};
    ui::Button cmdAjouterFichier{*this, IDC_cmdAjouterFichier};
    ui::Button cmdAjouterRep{*this, IDC_cmdAjouterRep};
    ui::Frame frmSauvegardeOKR{*this, IDC_frmSauvegardeOKR};
    std::array<ui::CheckButton, SetCount> chkSauvOKR{
        ui::CheckButton{*this, IDC_chkSauvOKR0}, ui::CheckButton{*this, IDC_chkSauvOKR1},
        ui::CheckButton{*this, IDC_chkSauvOKR2}, ui::CheckButton{*this, IDC_chkSauvOKR3}};
    ui::Frame frmDView{*this, IDC_frmDView};
    ui::ListView lvFichRep{*this, IDC_lvFichRep};
    ui::Button cmdOuvrirExplorer{*this, IDC_cmdOuvrirExplorer};
    ui::Button cmdEffacerTouteListe{*this, IDC_cmdEffacerTouteListe};
    ui::Button cmdEffacerFichierListe{*this, IDC_cmdEffacerFichierListe};

    SelectionEvents& host_;
    std::unique_ptr<SelectionList> list_;
    FolderBrowser browser_;
    bool isEnabled_ = true;
    ui::ControlKeys fileKeys_{*this, IDC_flbSelectFichier};
    ui::ControlKeys rowKeys_{*this, IDC_lvFichRep};
};
