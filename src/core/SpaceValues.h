#pragma once

#include "core/Currency.h"

/// What the backup window weighs against each other.
struct SpaceValues {
    Currency requiredSpace;  ///< bytes, each item's size with its margin
    Currency availableSpace; ///< bytes that the medium takes
};
