#include "platform/windows/AwakeHold.h"

#include <windows.h>

AwakeHold::AwakeHold() {
    SetThreadExecutionState(ES_CONTINUOUS | ES_SYSTEM_REQUIRED);
}

AwakeHold::~AwakeHold() {
    SetThreadExecutionState(ES_CONTINUOUS);
}
