#pragma once

#include <atomic>
#include <functional>
#include <memory>

/// Steps that run on a thread of their own, at once. Nobody waits for them: a read from a bad disc may take longer than
/// the user does. What they use must belong to them.
class BackgroundTask {
  public:
    BackgroundTask() = default;
    /// Starts `steps`, which throw nothing. Throws std::system_error where no thread can be made.
    explicit BackgroundTask(std::function<void()> steps);

    /// Whether nothing runs any more. What the steps wrote may be read then.
    bool HasEnded() const { return !isRunning_ || !isRunning_->load(std::memory_order_acquire); }

  private:
    std::shared_ptr<std::atomic<bool>> isRunning_;
};
