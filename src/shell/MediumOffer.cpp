#include "shell/MediumOffer.h"

std::optional<Medium> FirstOffered(const std::array<bool, 4>& isOffered) {
    for (const Medium medium : AllMedia) {
        if (isOffered[static_cast<std::size_t>(medium)]) return medium;
    }
    return std::nullopt;
}
