#pragma once

#include "backup/DiscFacts.h"
#include "backup/SpaceFigures.h"
#include "core/Medium.h"

/// Whether the start button can be pressed. The disc counts for CD and DVD only.
bool CanStartBackup(Medium medium, const DiscFacts& disc, const Spaces& spaces);
