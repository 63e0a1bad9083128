#include "platform/windows/WindowsPower.h"

#include "platform/windows/AwakeHold.h"

std::unique_ptr<Hold> WindowsPower::KeepAwake() {
    return std::make_unique<AwakeHold>();
}
