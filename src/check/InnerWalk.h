#pragma once

#include "check/WalkListener.h"

/// Reads the entry that `outer` stands at as an archive of its own, and tells the listener. Leaves the entry read to
/// its end, or to where it breaks off.
ItemOutcome WalkInner(ZipReader& outer, WalkListener& listener);
