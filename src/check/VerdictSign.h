#pragma once

#include "check/BackupReport.h"

#include <cstdint>
#include <vector>

/// The small picture beside a verdict.
enum class VerdictSign { None, Good, Warning, Bad };
inline constexpr int VerdictSigns = 4;

/// The sign of an item that has been read: bad is what does not come back whole, a warning what comes back but not by
/// the restore window, or not to everybody's surprise.
VerdictSign SignOf(const ItemReport& item);
VerdictSign SignOf(const BackupReport& report);

/// The sign as `sizePixels` rows of as many pixels, from the top, each alpha, red, green and blue from its highest byte
/// on. No sign is all clear.
std::vector<std::uint32_t> PaintSign(VerdictSign sign, int sizePixels);
