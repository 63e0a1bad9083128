#pragma once

#include "ui/MessagePump.h"

#include <functional>

/// Handles messages until `isDone`, at most for five seconds; gives whether it came to that.
inline bool WaitFor(const std::function<bool()>& isDone) {
    const ULONGLONG end = GetTickCount64() + 5000;
    while (!isDone()) {
        if (GetTickCount64() > end) return false;
        ui::RunPendingMessages();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}
