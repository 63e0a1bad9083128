#include "shell/MediumOffer.h"

std::optional<Medium> FirstOffered(const std::function<bool(Medium)>& isOffered) {
    for (const Medium medium : AllMedia) {
        if (isOffered(medium)) return medium;
    }
    return std::nullopt;
}
