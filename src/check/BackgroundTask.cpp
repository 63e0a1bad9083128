#include "check/BackgroundTask.h"

#include "platform/Thread.h"

#include <utility>

BackgroundTask::BackgroundTask(std::function<void()> steps) : isRunning_(std::make_shared<std::atomic<bool>>(true)) {
    StartThread([steps = std::move(steps), isRunning = isRunning_]() mutable {
        steps();
        // What the steps hold goes before anybody is told that they have ended.
        steps = nullptr;
        isRunning->store(false, std::memory_order_release);
    });
}
