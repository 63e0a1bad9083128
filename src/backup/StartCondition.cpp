#include "backup/StartCondition.h"

namespace {

bool IsCdReady(const DiscFacts& disc) {
    return !disc.isBusy && disc.presence == DiscPresence::Ready &&
           (disc.kind == MediaKind::CdR || disc.kind == MediaKind::CdRw) && disc.status < DiscStatus::Closed &&
           disc.flDiscWritable;
}

bool IsDvdReady(const DiscFacts& disc) {
    return !disc.isBusy && disc.kind >= MediaKind::DvdRom && disc.kind <= MediaKind::DvdRam && disc.isDvdReady &&
           disc.flDiscWritable;
}

} // namespace

bool CanStartBackup(Medium medium, const DiscFacts& disc, const Spaces& spaces) {
    if (spaces.IsMediumFull() || spaces.IsWorkSpaceFull()) return false;
    if (const auto family = DiscFamilyOf(medium))
        return spaces.required > Currency() && ByFamily(*family, IsCdReady, IsDvdReady)(disc);
    // A folder that shrank after it was added can leave a figure below zero.
    return spaces.required != Currency();
}
