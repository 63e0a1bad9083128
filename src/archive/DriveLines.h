#pragma once

#include "core/Application.h"
#include "core/Medium.h"

#include <optional>
#include <string>
#include <vector>

/// What a list of drives with backups says about one of them.
struct DriveFacts {
    std::wstring root;                     ///< such as "E:\"
    Medium medium = Medium::RemovableDisk; ///< what it takes; a CD for every CD-ROM drive
    bool doesVolumeOpen = false;           ///< looked at for CD-ROM drives only
    std::optional<std::wstring> label;     ///< nothing when no volume can be read
};

/// The drives that may hold a backup, in the system's order: CD-ROM drives, removable disks, and fixed disks on the USB
/// bus. May ask the user whether USB disks are to be used, once per run.
std::vector<DriveFacts> DrivesToRestoreFrom(Application& app);

/// The list's line of a drive; its first three characters are the drive's root.
std::wstring DriveLine(const Application& app, const DriveFacts& drive);

/// The lines of all those drives, or the single line that says that there is none.
std::vector<std::wstring> DriveLines(Application& app);

/// Whether a drive's line names the label of a medium.
bool HasLabel(const std::wstring& driveLine);

/// The drive root of a line, which is its first three characters; empty when the line is no drive's.
std::wstring RootOfLine(const std::wstring& line);
