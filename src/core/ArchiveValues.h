#pragma once

#include <cstdint>
#include <string>

/// What the password dialog, the control file's writer, the archiver and the reading of a medium leave for each other.
struct ArchiveValues {
    std::wstring backupPassword;       ///< the one accepted last; empty while it is being asked for
    std::wstring listFilePath;         ///< the control file last written
    std::uint64_t listFilePrint = 0;   ///< tells its content from any other
    std::int64_t archiveSizeBytes = 0; ///< of the finished or the inserted OKRBACKUP.ZIP
};
