#pragma once

#include "core/Medium.h"
#include "resources/TextId.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What the main window shows of one medium after its detection.
struct MediumOffer {
    bool isEnabled = false;
    bool isForbidden = false;        ///< a writer is there, but the settings file does not allow its use
    std::vector<std::wstring> roots; ///< drive roots such as "E:\", the first one selected; none for discs

    /// The text "Oui" / "Yes" or "Non" / "No".
    TextId LabelId() const { return isEnabled ? TextId::Yes : TextId::No; }
};

/// The first medium, by code, that is offered; nothing when none is.
std::optional<Medium> FirstOffered(const std::function<bool(Medium)>& isOffered);
