#pragma once

#include "archive/BackupParent.h"
#include "core/Application.h"
#include "core/ProgressBar.h"

#include <cstdint>
#include <string>

class clsColFileInfo;

/// Builds the archive of a backup in the work folder and copies it to a disk. Every operation reports its own failure
/// and gives false (or 0) then. The archiver's exit codes are not looked at: a run of it that fails counts as done.
class clsCopie {
  public:
    explicit clsCopie(Application& app) : app_(app) {}

    /// Packs every item into an inner archive and these into the outer one, in a new work folder; then keeps the outer
    /// archive's size as `archiveSizeBytes` and puts a copy of the control file beside it. False when an item is
    /// missing or the user stopped. Waits for the archiver; messages run between two items.
    bool CopierListeFichiers(clsColFileInfo& varrListeFichiers, ProgressBar& pbProgress, BackupParent& frmParent);

    /// Exchanges the pair at a drive root such as "E:\" for the two files of the work folder, on the device when it
    /// returns, and deletes the work folder. False when the drive is not there; the old pair stays where the new one
    /// could not come.
    bool CopierUSB(const std::wstring& vDisque);

    /// False, and nothing is run, when the source is missing.
    bool ArchiverRepertoire(const std::wstring& vstrSource, const std::wstring& vstrDestination);
    bool ArchiverFichier(const std::wstring& vstrSource, const std::wstring& vstrDestination);
    /// Adds the source to the outer archive, with the backup password.
    bool ArchiverZipFinal(const std::wstring& vstrSource, const std::wstring& vstrDestination);

    /// Runs a command line, waits for its end and gives its exit code.
    std::int32_t ExecCmd(const std::wstring& cmdline);

    /// Whether the archiver is there.
    bool ValidZipApp();
    /// The archiver's file name.
    std::wstring GetZipAppName();

  private:
    bool ArchiveItem(const std::wstring& path, std::int32_t position, ProgressBar& progress, BackupParent& parent);

    Application& app_;
};
