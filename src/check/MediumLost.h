#pragma once

#include "platform/RuntimeError.h"

/// Thrown where somebody wants the work to end.
struct Stopped {};

/// Thrown where the medium cannot be read any more, to be told from failures of what is written.
struct MediumLost {
    RuntimeError error;
};
