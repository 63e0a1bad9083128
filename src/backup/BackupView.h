#pragma once

#include "archive/BackupParent.h"
#include "backup/MediumReport.h"
#include "backup/RunDisplay.h"
#include "platform/Power.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

/// The backup window as its run and its disc side see it. On a window that has been unloaded every call is without
/// effect and everything reads as empty.
class BackupView : public BackupParent {
  public:
    /// Shows the progress instead of the settings, or the other way round, and lets messages run once.
    virtual void AfficherProgression(bool isBusy) = 0;
    /// Keeps the computer awake, and Windows from ending the session, for as long as the result lives.
    virtual std::unique_ptr<Hold> HoldMachine() = 0;
    /// Enables or disables what the user must not touch during a run: settings, selection, back, quit.
    virtual void ActiverControles(bool isEnabled) = 0;
    /// Enables the start button where a backup could start (`CanStartBackup`), else disables it. Failures are reported.
    virtual void MajBoutonLancer() = 0;
    /// Writes the three space figures.
    virtual void AfficherEspaces() = 0;
    /// Writes the figure of the required space, red when the medium is full, and does `MajBoutonLancer`. Failures are
    /// reported.
    virtual void AfficherEspaceRequis() = 0;
    /// Colours the figure of the work space: red when it is used up.
    virtual void MarkWorkSpace(bool isUsedUp) = 0;
    /// Writes what is known of the medium, and the time, to the status bar.
    virtual void ShowPanels(const MediumReport& report) = 0;
    /// What is said of a hidden button's use counts once it is shown.
    virtual void ShowEraseButton(bool isVisible, bool isEnabled) = 0;
    /// Lists the disc writers anew, as soon as the window is idle.
    virtual void ShowWriters() = 0;
    /// Probes the write speeds anew, as soon as the window is idle.
    virtual void ProbeSpeedsAgain() = 0;
    /// Owned by the window, and there as long as it.
    virtual RunDisplay& Display() = 0;

    /// The figure of the required space as it is shown.
    virtual std::wstring RequiredSpaceText() const = 0;
    /// The selected entry of the list of drives.
    virtual std::wstring SelectedDrive() const = 0;
    /// The selected write speed, as a multiple of the family's single speed; nothing when the list is empty.
    virtual std::optional<double> SelectedSpeed() const = 0;
    /// The disc's title as it stands in the window.
    virtual std::wstring DiscLabel() const = 0;
    virtual void ShowDiscLabel(const std::wstring& label) = 0;

    /// 0 to 100, in the erase window; nothing to do when that is not open.
    virtual void ShowEraseProgress(std::int16_t percent) = 0;
    /// Shows the erase window until it is closed.
    virtual void ShowEraseWindow() = 0;
    /// Closes the window, and the program with it.
    virtual void EndProgram() = 0;
};

/// The steps of a backup that other units do. All but the first may let messages run. The order that the run keeps
/// among them, and what a stop between them comes to, is tested on a stand-in: with the real steps a test of the run
/// would be one of the archiver, the list and the copy as well.
class BackupSteps {
  public:
    virtual ~BackupSteps() = default;
    /// Whether the archiver is there.
    virtual bool ValidZipApp() = 0;
    /// The archiver's file name.
    virtual std::wstring GetZipAppName() = 0;
    /// Asks for a new password; false when the user gives none.
    virtual bool DemanderMotPasse() = 0;
    /// How many items are selected.
    virtual std::int32_t SelectedCount() const = 0;
    /// Writes the control file; see `clsListe`. Failures are reported.
    virtual void EnregistrerListeFichiers() = 0;
    /// Builds the archive; false when it is not complete.
    virtual bool CopierListeFichiers() = 0;
    /// Copies the result to a drive root; false when it could not.
    virtual bool CopierUSB(const std::wstring& root) = 0;
};
