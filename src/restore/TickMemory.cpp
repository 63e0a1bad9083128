#include "restore/TickMemory.h"

#include <algorithm>

namespace {

/// More than anybody has plugs for.
constexpr std::size_t MostMedia = 32;

} // namespace

void TickMemory::Keep(const InsertedMedium::Print& medium, const RestoreRows& rows) {
    if (!rows.HoldItems()) return;
    std::erase_if(kept_, [&](const Ticks& kept) { return kept.medium.IsSameMedium(medium); });
    if (kept_.size() == MostMedia) kept_.erase(kept_.begin());
    kept_.push_back({medium, rows.Ticks()});
}

bool TickMemory::GiveBack(const InsertedMedium::Print& medium, RestoreRows& rows) const {
    const auto kept =
        std::find_if(kept_.begin(), kept_.end(), [&](const Ticks& entry) { return entry.medium.IsSameMedium(medium); });
    if (kept == kept_.end()) return false;
    rows.SetTicks(kept->ticks);
    return true;
}
