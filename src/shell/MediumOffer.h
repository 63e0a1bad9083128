#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a backup is saved on, by the code that the windows hand each other.
enum class Medium : std::int16_t { Cd = 0, Dvd = 1, RemovableDisk = 2, ExternalDisk = 3 };

inline constexpr std::array AllMedia{Medium::Cd, Medium::Dvd, Medium::RemovableDisk, Medium::ExternalDisk};

/// What the main window shows of one medium after its detection.
struct MediumOffer {
    bool isEnabled = false;
    std::vector<std::wstring> roots; ///< drive roots such as "E:\", the first one selected; none for discs

    /// The text "Oui" / "Yes" or "Non" / "No".
    int LabelId() const { return isEnabled ? 124 : 125; }
    /// The text that says why a disc writer is not offered; 0 for none.
    int ToolTipId() const { return isEnabled ? 0 : 117; }
};

/// The first medium, by code, that is offered; nothing when none is.
std::optional<Medium> FirstOffered(const std::array<bool, 4>& isOffered);
