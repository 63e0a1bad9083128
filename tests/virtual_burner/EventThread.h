#pragma once

#include <windows.h>

#include <functional>
#include <thread>

/// A thread on which the events of a write are delivered, one after the other. It locks as Windows does: where a
/// hand-over goes through handles, a hundred of them cost a good part of a fast write.
class EventThread {
  public:
    EventThread() : thread_([this] { Run(); }) {}
    ~EventThread() {
        AcquireSRWLockExclusive(&lock_);
        isEnding_ = true;
        WakeAllConditionVariable(&changed_);
        ReleaseSRWLockExclusive(&lock_);
        thread_.join();
    }
    EventThread(const EventThread&) = delete;
    EventThread& operator=(const EventThread&) = delete;

    /// Returns when the event has been delivered.
    void Deliver(const std::function<void()>& event) {
        AcquireSRWLockExclusive(&lock_);
        event_ = &event;
        WakeAllConditionVariable(&changed_);
        while (event_) SleepConditionVariableSRW(&changed_, &lock_, INFINITE, 0);
        ReleaseSRWLockExclusive(&lock_);
    }

  private:
    void Run() {
        CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        AcquireSRWLockExclusive(&lock_);
        for (;;) {
            while (!event_ && !isEnding_) SleepConditionVariableSRW(&changed_, &lock_, INFINITE, 0);
            if (!event_) break;
            const std::function<void()>& event = *event_;
            ReleaseSRWLockExclusive(&lock_);
            event();
            AcquireSRWLockExclusive(&lock_);
            event_ = nullptr;
            WakeAllConditionVariable(&changed_);
        }
        ReleaseSRWLockExclusive(&lock_);
        CoUninitialize();
    }

    SRWLOCK lock_ = SRWLOCK_INIT;
    CONDITION_VARIABLE changed_ = CONDITION_VARIABLE_INIT;
    const std::function<void()>* event_ = nullptr;
    bool isEnding_ = false;
    std::thread thread_;
};
