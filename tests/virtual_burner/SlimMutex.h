#pragma once

#include <windows.h>

/// A lock that needs no handle. `std::mutex` makes an event when two threads first want it at once: one that lives as
/// long as its process adds a handle to it at some late moment, in the midst of a comparison.
class SlimMutex {
  public:
    SlimMutex() = default;
    SlimMutex(const SlimMutex&) = delete;
    SlimMutex& operator=(const SlimMutex&) = delete;

    // The names that std::lock_guard calls.
    void lock() { AcquireSRWLockExclusive(&lock_); }   // NOLINT(readability-identifier-naming)
    void unlock() { ReleaseSRWLockExclusive(&lock_); } // NOLINT(readability-identifier-naming)

  private:
    SRWLOCK lock_ = SRWLOCK_INIT;
};
