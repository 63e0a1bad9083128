#pragma once

#include "platform/DiscWriter.h"
#include "shell/Application.h"
#include "shell/MediumOffer.h"

#include <optional>
#include <string>

/// What the information window shows. A text that is not set leaves its label as it was.
struct DiscInformation {
    std::wstring type;
    std::optional<std::wstring> status;
    std::wstring used;
    std::wstring estimate;
};

/// The disc in a writer's current drive, for the media CD and DVD.
DiscInformation InformationOnDisc(const Application& app, Medium medium, const DiscWriter& writer);

/// The disk at a drive root, for the USB media; `requiredText` is the backup window's figure. Throws 71 when the drive
/// is there but holds nothing that can be read.
DiscInformation InformationOnDisk(const Application& app, Medium medium, const std::wstring& root,
                                  const std::wstring& requiredText);
