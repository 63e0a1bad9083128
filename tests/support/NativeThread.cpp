#include "platform/Thread.h"

#include <thread>
#include <utility>

void StartThread(std::function<void()> steps) {
    std::thread([steps = std::move(steps)]() noexcept { steps(); }).detach();
}
