#pragma once

#include "check/BackgroundTask.h"
#include "check/CheckWork.h"

#include <deque>
#include <memory>

/// A check or a recovery that runs on a thread of its own, followed from another one.
class CheckJob {
  public:
    /// An item as it became known; `item` stays as long as the job's contents do, and may be read but for what was
    /// found of it. That may be read once it is settled.
    struct KnownItem {
        const ItemReport* item = nullptr;
        bool isSettled = false;
    };
    struct Progress {
        std::uint64_t doneBytes = 0;
        std::uint64_t totalBytes = 0;
        bool isPasswordAccepted = false;
    };

    /// Begins at once.
    CheckJob(std::shared_ptr<FileStore> files, CheckRequest request);
    CheckJob(const CheckJob&) = delete;
    CheckJob& operator=(const CheckJob&) = delete;
    /// Asks the work to end and leaves it to its thread.
    ~CheckJob();

    /// Asks the work to end; it does so with its next read or write.
    void Stop();
    bool HasEnded() const { return task_.HasEnded(); }
    BackgroundTask Task() const { return task_; }
    Progress Now() const;
    /// The items that became known since the last call, in their order.
    std::deque<KnownItem> TakeItems();
    /// All that was found; once the work has ended. It keeps the items that were taken.
    std::shared_ptr<const BackupReport> Report() const;
    /// The same, for another job that takes the items over. This one's rows go on living there.
    std::shared_ptr<BackupReport> HandOver();
    /// Keeps the items that were taken, whether the work has ended or not.
    std::shared_ptr<const void> Contents() const { return contents_; }

  private:
    struct Shared;

    std::shared_ptr<Shared> contents_;
    BackgroundTask task_;
};
