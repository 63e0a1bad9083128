#pragma once

#include "restore/InsertedMedium.h"
#include "restore/RestoreRows.h"
#include "restore/TickMemory.h"
#include "restore/forms/frmRestaureCDIds.h"
#include "shell/MainWindow.h"
#include "shell/forms/ApplicationForm.h"
#include "ui/Anchors.h"
#include "ui/DelayedCall.h"
#include "ui/ListView.h"
#include "ui/WindowProcedureHook.h"

#include <optional>
#include <string>
#include <vector>

namespace modFonctionsCommunes {

/// Stands before the restore window's own procedure: a device that comes or goes refreshes the window's lists. Every
/// message is passed on.
LRESULT CALLBACK MyWindowProcRestaureCD(HWND hwnd, UINT uMsg, WPARAM wParam, LPARAM lParam);

} // namespace modFonctionsCommunes

/// The user picks a medium that holds a backup, ticks what to bring back and starts the restore.
class frmRestaureCD final : public ApplicationForm {
  public:
    frmRestaureCD(Application& app, MainWindow& parent);

    /// Has the lists refreshed soon, once for a burst of device messages.
    void DevicesChanged();

  protected:
    void OnLoad() override;
    bool OnClosing() override;
    void OnUnload() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    /// The rows as the list view shows them.
    class ShownRows final : public ui::ListViewRows {
      public:
        explicit ShownRows(const frmRestaureCD& form) : form_(form) {}
        int Count() const override { return form_.rows_.Count(); }
        std::wstring Cell(int row, int column) const override { return form_.rows_.Cell(row, column); }
        ui::RowStyle Style(int row) const override { return {0, form_.rows_.At(row).isRestored}; }
        bool IsTicked(int row) const override { return form_.rows_.At(row).isTicked; }
        std::wstring ToolTip(int row) const override;

      private:
        const frmRestaureCD& form_;
    };

    void Form_Load();
    void InitCaptions();
    void AddColumns();
    void Form_Unload();
    void MAJListeCDetUSB();
    void lstDrive_Click();
    void MAJListeFich();
    void lvFichiersRepertoires_ItemCheck(int row);
    void cmdToutSelectionner_Click();
    void cmdToutDeselectionner_Click();
    void cmdLancerRestauration_Click();
    void CopierFichRepert(int index);
    void BloquerBoutons(bool bEnable);
    void mnuRaffraichir_Rafraichir_Click();
    void cmdFermer_Click();

    std::wstring SelectedRoot() const;
    bool SelectRoot(const std::wstring& root);
    void RefreshLists();
    bool BringListsUpToDate();
    void FollowMedium(InsertedMedium medium);
    InsertedMedium LookAtChosenMedium();
    void ShowMedium(InsertedMedium medium);
    void FillRows(const InsertedMedium& medium);
    void ShowNoMedium();
    void TickAll(bool isTicked);
    void EnableLaunch();
    void GiveWindowBack();
    bool IsStillThere(const InsertedMedium::Print& medium);
    bool OpenArchive(const InsertedMedium::Print& medium);
    void Restore();
    void ReportUnfitRows();

    MainWindow& parent_;
    ui::ListBox lstDrive{*this, IDC_lstDrive};
    ui::ListView lvFichiersRepertoires{*this, IDC_lvFichiersRepertoires};
    ui::Button cmdToutSelectionner{*this, IDC_cmdToutSelectionner};
    ui::Button cmdToutDeselectionner{*this, IDC_cmdToutDeselectionner};
    ui::Button cmdLancerRestauration{*this, IDC_cmdLancerRestauration};
    ui::Button cmdFermer{*this, IDC_cmdFermer};

    RestoreRows rows_;
    ShownRows shownRows_{*this};
    InsertedMedium::Print shownMedium_;
    TickMemory tickMemory_;
    std::wstring chosenRoot_; ///< the drive that the user works with, there or not
    std::vector<std::wstring> driveLines_;
    ui::Anchors anchors_{*this};
    ui::WindowProcedureHook hook_;
    ui::DelayedCall refresh_;
    bool isBusy_ = false;
    bool isRestoring_ = false;
};
