#include "check/CheckJob.h"

#include "archive/PassingSecret.h"

#include <mutex>
#include <utility>

/// What both threads hold, so that either may leave first.
struct CheckJob::Shared {
    std::shared_ptr<FileStore> files;
    CheckRequest request;
    BackupReport report;
    std::atomic<bool> isStopped{false};
    std::atomic<bool> isPasswordAccepted{false};
    std::atomic<std::uint64_t> doneBytes{0};
    std::atomic<std::uint64_t> totalBytes{0};
    std::mutex mutex;
    std::deque<KnownItem> known; ///< guarded by the mutex

    void Run() {
        CheckHooks hooks;
        hooks.isStopped = [this] { return isStopped.load(); };
        hooks.onProgress = [this](std::uint64_t done, std::uint64_t total) {
            doneBytes = done;
            totalBytes = total;
        };
        hooks.onPasswordAccepted = [this] { isPasswordAccepted = true; };
        hooks.onItem = [this](const ItemReport& item, bool isSettled) {
            const std::lock_guard lock(mutex);
            known.push_back({&item, isSettled});
        };
        report = RunCheck(*files, request, hooks);
        request.known.reset();
        if (request.password) Forget(*request.password);
    }
};

CheckJob::CheckJob(std::shared_ptr<FileStore> files, CheckRequest request) : contents_(std::make_shared<Shared>()) {
    contents_->files = std::move(files);
    contents_->request = std::move(request);
    task_ = BackgroundTask([contents = contents_] { contents->Run(); });
}

CheckJob::~CheckJob() {
    Stop();
}

void CheckJob::Stop() {
    contents_->isStopped = true;
}

CheckJob::Progress CheckJob::Now() const {
    return {contents_->doneBytes, contents_->totalBytes, contents_->isPasswordAccepted};
}

std::deque<CheckJob::KnownItem> CheckJob::TakeItems() {
    const std::lock_guard lock(contents_->mutex);
    return std::exchange(contents_->known, {});
}

std::shared_ptr<const BackupReport> CheckJob::Report() const {
    return {contents_, &contents_->report};
}

std::shared_ptr<BackupReport> CheckJob::HandOver() {
    return {contents_, &contents_->report};
}
