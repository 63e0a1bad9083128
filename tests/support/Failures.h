#pragma once

#include "platform/RuntimeError.h"

/// The number of the RuntimeError that `action` throws; 0 when it throws none.
template<typename Action>
std::int32_t NumberThrownBy(Action action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}
