#pragma once

#include "core/Application.h"
#include "platform/RuntimeError.h"

#include <cstdint>
#include <optional>
#include <string>

/// What a drive holds for the restore window.
struct InsertedMedium {
    enum class Content { NoBackup, OlderFormat, Backup };

    /// Tells one medium from another without keeping its list: the drive, the volume's label, the list's content and
    /// the archive's size.
    struct Print {
        std::wstring root;
        std::optional<std::wstring> volumeLabel;
        Content content = Content::NoBackup;
        std::uint64_t archiveSizeBytes = 0;
        std::size_t listBytes = 0;
        std::size_t listHash = 0;
        std::int32_t failure = 0;

        bool operator==(const Print&) const = default;
        /// Whether it is the same backup under the same label, whichever letter its drive has by now.
        bool IsSameMedium(Print other) const {
            other.root = root;
            return *this == other;
        }
    };

    Print print;
    bool isCdRom = false;
    std::string controlFile;             ///< the whole file, when the medium holds a backup
    std::optional<RuntimeError> failure; ///< why the medium could not be read
};

/// Looks at a drive root such as "E:\". What reading it meets is in the answer; nothing is thrown.
InsertedMedium LookAtMedium(const Application& app, const std::wstring& root);
