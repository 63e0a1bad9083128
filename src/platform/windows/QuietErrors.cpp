#include "platform/windows/QuietErrors.h"

#include <windows.h>

void SuppressDiskBoxes() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}
