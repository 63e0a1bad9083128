#pragma once

#include "core/Application.h"
#include "core/Medium.h"
#include "platform/discs/DiscWriter.h"

#include <optional>
#include <string>

/// What the information window shows. A text that is not set leaves its label as it was.
struct DiscInformation {
    std::optional<std::wstring> type;
    std::optional<std::wstring> status;
    std::optional<std::wstring> used;
    std::optional<std::wstring> estimate;
};

/// The disc in a writer's current drive; `kindText` is the backup window's text for it.
DiscInformation InformationOnDisc(const Application& app, DiscFamily family, const std::wstring& kindText,
                                  const DiscWriter& writer);

/// The disk at a drive root, for the USB media; `requiredText` is the backup window's figure. Throws 71 when the drive
/// is there but holds nothing that can be read; `information` then has what was known by then.
void ReadInformationOnDisk(const Application& app, Medium medium, const std::wstring& root,
                           const std::wstring& requiredText, DiscInformation& information);
