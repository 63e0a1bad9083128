#pragma once

#include <windows.h>

/// Whether the error is what a file or folder gives that another program holds, a scanner for instance.
inline bool MayBeReleased(DWORD error) {
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
           error == ERROR_DIR_NOT_EMPTY;
}

/// Calls `call` until it gives true, for about half a second as long as its last error may pass; gives its last answer
/// and leaves the last error as that call set it.
template<typename Call>
bool OnceReleased(Call call) {
    constexpr DWORD pausesMilliseconds[] = {10, 40, 100, 150, 200};
    for (const DWORD pause : pausesMilliseconds) {
        if (call()) return true;
        if (!MayBeReleased(GetLastError())) return false;
        Sleep(pause);
    }
    return call();
}
