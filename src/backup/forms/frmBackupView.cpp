// What the run and the disc side make the backup window show.
#include "backup/forms/frmBackup.h"

#include "backup/SpaceFigures.h"
#include "backup/StartCondition.h"
#include "core/SpaceValues.h"
#include "core/StartUpValues.h"
#include "platform/MessageLoop.h"
#include "platform/Power.h"
#include "resources/TextId.h"
#include "shell/forms/RunHold.h"

void frmBackup::AfficherProgression(bool isBusy) {
    fParametres.Enable(!isBusy);
    fParametres.Show(!isBusy);
    progress_.Show(isBusy);
    ActiverControles(!isBusy);
    cmdLancer.Enable(!isBusy);
    cmdLancer.Show(!isBusy);
    // The control that had the focus is hidden or disabled now: without one the keyboard would reach nothing. Of those
    // that can be used afterwards the list is the one that does no harm.
    if (IsActive()) isBusy ? progress_.cmdStopWrite.SetFocus() : ctlSelectionFichiers_.FocusList();
    app_.machine.messageLoop->RunPending();
}

std::unique_ptr<Hold> frmBackup::HoldMachine() {
    return std::make_unique<RunHold>(app_.machine.power->KeepAwake(), *this, Text(TextId::BackupRuns));
}

void frmBackup::ActiverControles(bool isEnabled) {
    for (const int controlId :
         {IDC_fParametres, IDC_cmbGraveur, IDC_cmbSpeed, IDC_txtDiscLabel, IDC_cmdInfoDisque, IDC_pbProgress,
          IDC_pbProgressTotal, IDC_cmdPrecedent, IDC_cmdQuitter, IDC_stBarDataWriter})
        ui::Control(*this, controlId).Enable(isEnabled);
    ctlScan_.SetEnabled(isEnabled);
    ctlSelectionFichiers_.SetEnabled(isEnabled);
}

void frmBackup::MajBoutonLancer() {
    Guarded(L"MajBoutonLancer, module frmBackupCD", [this] {
        const bool canStart = CanStartBackup(state_.miTypeMedia, state_.disc, SpacesOf(app_));
        if (cmdLancer.IsEnabled() != canStart) cmdLancer.Enable(canStart);
    });
}

void frmBackup::AfficherEspaces() {
    AfficherEspaceDispo();
    AfficherEspaceRequis();
    AfficherEspaceTravail();
}

void frmBackup::AfficherEspaceRequis() {
    Guarded(L"AfficherEspaceRequis, module frmBackupCD", [this] {
        lblEspaceRequis.ShowBytes(app_, app_.space->requiredSpace.ToDouble());
        lblEspaceRequis.SetRed(SpacesOf(app_).IsMediumFull());
        MajBoutonLancer();
    });
}

void frmBackup::AfficherEspaceDispo() {
    lblEspaceDispo.ShowBytes(app_, app_.space->availableSpace.ToDouble());
}

void frmBackup::AfficherEspaceTravail() {
    Guarded(L"AfficherEspaceTravail, module frmBackupCD",
            [this] { lblEspaceTravail.ShowBytes(app_, app_.startUp->dblEspaceDisponible); });
}

void frmBackup::ShowPanels(const MediumReport& report) {
    stBarDataWriter.ShowReport(report);
    stBarDataWriter.ShowTime(app_);
}

void frmBackup::ShowEraseButton(bool isVisible, bool isEnabled) {
    cmdEffacerDisque.Show(isVisible);
    cmdEffacerDisque.Enable(isEnabled);
}
