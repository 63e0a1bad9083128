#pragma once

#include "platform/discs/DiscProgress.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <utility>

/// What the windows, the thread that runs an operation and the system's events share of it. The system may deliver an
/// event on a thread of its own, and late: whoever holds a share may call anything at any time.
class OperationWatch {
  public:
    /// `tell` is called on whatever thread reports, one call at a time, never after `End`.
    OperationWatch(DiscProgress first, std::function<void(const DiscProgress&)> tell)
        : last_(first), tell_(std::move(tell)) {}
    OperationWatch(const OperationWatch&) = delete;
    OperationWatch& operator=(const OperationWatch&) = delete;

    void RequestStop() { isStopRequested_ = true; }
    bool IsStopRequested() const { return isStopRequested_; }
    /// Whether the running operation is to be cancelled; false once it has ended: what runs then is another one.
    bool MustCancel() const { return isStopRequested_ && !hasEnded_; }

    DiscProgress Last() const {
        std::lock_guard lock(mutex_);
        return last_;
    }
    /// Tells a step that is not the last one told.
    void Report(const DiscProgress& progress) {
        std::lock_guard lock(mutex_);
        if (hasEnded_ || progress == last_) return;
        last_ = progress;
        tell_(progress);
    }
    void End() {
        std::lock_guard lock(mutex_);
        hasEnded_ = true;
    }

  private:
    mutable std::mutex mutex_;
    DiscProgress last_;
    std::function<void(const DiscProgress&)> tell_;
    std::atomic<bool> isStopRequested_{false};
    std::atomic<bool> hasEnded_{false};
};
