#pragma once

#include "support/FakeFileStore.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

/// A gate in a medium: reads wait before it until it is opened.
class Gate {
  public:
    void Pass() {
        std::unique_lock lock(mutex_);
        isReached_ = true;
        changed_.notify_all();
        changed_.wait(lock, [this] { return isOpen_; });
    }
    void Open() {
        const std::lock_guard lock(mutex_);
        isOpen_ = true;
        changed_.notify_all();
    }
    void Close() {
        const std::lock_guard lock(mutex_);
        isOpen_ = isReached_ = false;
    }
    bool WaitUntilReached() {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, std::chrono::seconds(20), [this] { return isReached_; });
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isReached_ = false;
    bool isOpen_ = false;
};

class GatedInputFile final : public InputFile {
  public:
    GatedInputFile(std::unique_ptr<InputFile> file, Gate& gate) : file_(std::move(file)), gate_(gate) {}
    std::uint64_t SizeBytes() const override { return file_->SizeBytes(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) override {
        gate_.Pass();
        return file_->ReadAt(offset, buffer);
    }

  private:
    std::unique_ptr<InputFile> file_;
    Gate& gate_;
};

/// Files in memory, the archives among them behind a gate. New files may have one of their own.
class GatedFileStore final : public FakeFileStore {
  public:
    std::unique_ptr<InputFile> Open(const std::wstring& path) const override {
        auto file = FakeFileStore::Open(path);
        if (!path.ends_with(L".ZIP") && !(isListGated && path.ends_with(L".lst"))) return file;
        return std::make_unique<GatedInputFile>(std::move(file), gate);
    }
    std::unique_ptr<NewFile> CreateNew(const std::wstring& path) override {
        if (isWritingGated) writeGate.Pass();
        return FakeFileStore::CreateNew(path);
    }
    mutable Gate gate;
    Gate writeGate;
    bool isWritingGated = false;
    bool isListGated = false; ///< the lists as well
};
