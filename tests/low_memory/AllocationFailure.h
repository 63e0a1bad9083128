#pragma once

/// While one lives, the allocation of number `at` (from 1) fails, and with it the `count - 1` after it. One at a time.
class AllocationFailure {
  public:
    enum class Where { Anywhere, OnThisThread, OnOtherThreads };

    explicit AllocationFailure(long at, long count = 1, Where where = Where::Anywhere);
    ~AllocationFailure();
    AllocationFailure(const AllocationFailure&) = delete;
    AllocationFailure& operator=(const AllocationFailure&) = delete;

    /// Whether so many allocations were asked for.
    bool HasHappened() const;
};

/// While one lives, allocations succeed and are not counted: they stand for those of another process.
class OutsideTheProgram {
  public:
    OutsideTheProgram();
    ~OutsideTheProgram();
    OutsideTheProgram(const OutsideTheProgram&) = delete;
    OutsideTheProgram& operator=(const OutsideTheProgram&) = delete;

  private:
    bool wasArmed_;
};
