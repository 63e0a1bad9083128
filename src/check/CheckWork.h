#pragma once

#include "check/BackupReport.h"
#include "check/NameSet.h"

#include <functional>
#include <memory>

/// What is to be checked, or recovered.
struct CheckRequest {
    std::wstring place;                   ///< a drive, a folder, or the path of an archive
    std::optional<std::wstring> password; ///< nothing: none was given
    bool isComparison = false;
    std::optional<std::wstring> target;    ///< of a recovery; nothing: a check
    std::shared_ptr<const NameSet> wanted; ///< inner archives; nothing: all
    std::wstring profileFolder;
    bool isListOnly = false; ///< the rows of the list are read, and nothing else
    /// Of a work that has read the rows of the same backup and nothing else. Where the list is still the same, its
    /// items are taken: they are not kept twice.
    std::shared_ptr<BackupReport> known;
};

/// How the work is followed and ended. Called on the thread that works.
struct CheckHooks {
    std::function<bool()> isStopped;
    std::function<void(std::uint64_t doneBytes, std::uint64_t totalBytes)> onProgress;
    std::function<void()> onPasswordAccepted;
    /// An item that is new, and again once it is settled: it does not change any more then.
    std::function<void(const ItemReport& item, bool isSettled)> onItem;
};

/// Where a backup lies that is named by its drive, its folder or its archive.
struct BackupPlace {
    std::wstring archive; ///< empty when there is nothing under that name
    std::wstring list;
};

/// Whether a path lies on the medium of a backup, the drive whose root holds the archive: nothing is written there. A
/// backup that was copied into a folder has none.
bool IsOnMedium(const FileStore& files, const std::wstring& archive, const std::wstring& path);

BackupPlace PlaceOf(const FileStore& files, const std::wstring& place);

/// Checks a backup, or recovers it: reads all of it once and writes nothing but into the target folder. Whatever is
/// wrong is in the report; nothing is thrown.
BackupReport RunCheck(FileStore& files, const CheckRequest& request, const CheckHooks& hooks);
