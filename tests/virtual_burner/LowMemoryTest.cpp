// The disc writer where memory ends for a moment: no thread of it falls, and what has begun comes to an end that is
// told.
#include "WriterBench.h"

#include "low_memory/AllocationFailure.h"

#include <new>

namespace {

using Where = AllocationFailure::Where;

class DiscLowMemory : public WriterBench {
  protected:
    DiscLowMemory() { BurnerBench::SetDrive(L'G', {{"shows content", "no"}, {"ready milliseconds", "0"}}); }

    /// Gives whether the start found no memory.
    bool IsStartWithout(long allocation, const std::function<void()>& start) {
        const AllocationFailure failure(allocation, 1, Where::OnThisThread);
        try {
            start();
            return false;
        } catch (const std::bad_alloc&) {
            return true;
        }
    }
};

TEST_F(DiscLowMemory, OperationForWhichTheWindowsFindNoMemoryHasNotBegun) {
    DiscWriter& writer = Open();
    for (const std::function<void()>& start :
         {std::function<void()>([&] { writer.StartWrite(); }), std::function<void()>([&] { writer.Erase(true); })}) {
        long allocation = 1;
        for (; IsStartWithout(allocation, start); ++allocation) {
            ASSERT_FALSE(writer.IsBusy()) << "without allocation " << allocation;
            ASSERT_EQ(writer.CurrentOperation(), DiscOperation::None);
        }
        EXPECT_GT(allocation, 1);
        EXPECT_TRUE(writer.IsBusy());
        RunUntilRead();
        EXPECT_FALSE(writer.IsBusy());
    }
    EXPECT_TRUE(events_.errors.empty());
}

TEST_F(DiscLowMemory, WriteForWhichADrivesThreadFindsNoMemoryEndsAndIsTold) {
    const std::vector<std::int32_t> outOfMemory{E_OUTOFMEMORY};
    int failedWrites = 0;
    bool hasHappened = true;
    for (long allocation = 1; hasHappened; ++allocation) {
        SCOPED_TRACE(allocation);
        bench_.Insert(DiscFamily::Cd, 0, MediaKind::CdRw);
        events_ = {};
        {
            const AllocationFailure failure(allocation, 1, Where::OnOtherThreads);
            Open();
            bench_.RunUntil([this] { return writer_->Presence() == DiscPresence::Ready; });
            Write(20000);
            hasHappened = failure.HasHappened();
        }
        EXPECT_FALSE(writer_->IsBusy());
        if (events_.ErrorCodes() == outOfMemory)
            ++failedWrites;
        else
            EXPECT_TRUE(events_.HasFinished()) << testing::PrintToString(events_.ErrorCodes());
        writer_.reset();
    }
    // A write that found no memory is not begun anew by itself.
    EXPECT_GT(failedWrites, 0);
}

} // namespace
