#pragma once

#include "platform/discs/DiscWriter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Writes down what a writer tells.
class RecordedDiscEvents : public DiscWriterEvents {
  public:
    struct Progress {
        DiscOperation operation;
        WritingStage stage;
        std::int16_t percent;
    };

    void ErrorEx(std::int32_t errCode, const std::wstring& errDescr) override {
        errors.emplace_back(errCode, errDescr);
        Told();
    }
    void MediaChange() override {
        ++mediaChanges;
        Told();
    }
    void DiscReadAgain() override {
        ++readings;
        Told();
    }
    void WritersChange() override {
        ++writersChanges;
        Told();
    }
    void OperationProgress(std::int16_t percent) override {
        progress.push_back({writer->CurrentOperation(), writer->CurrentStage(), percent});
        Told();
    }

    std::vector<std::int32_t> ErrorCodes() const {
        std::vector<std::int32_t> codes;
        for (const auto& error : errors) codes.push_back(error.first);
        return codes;
    }
    bool HasReached(DiscOperation operation, std::int16_t percent) const {
        return std::any_of(progress.begin(), progress.end(), [&](const Progress& step) {
            return step.operation == operation && step.percent >= percent;
        });
    }
    bool HasFinished() const { return HasReached(DiscOperation::Finished, 100); }
    std::size_t Count() const { return errors.size() + progress.size() + static_cast<std::size_t>(mediaChanges); }

    DiscWriter* writer = nullptr;
    std::function<void()> onEvent;
    std::vector<std::pair<std::int32_t, std::wstring>> errors;
    std::vector<Progress> progress;
    int mediaChanges = 0;
    int readings = 0;
    int writersChanges = 0;

  private:
    void Told() {
        if (onEvent) onEvent();
    }
};

/// What every implementation of DiscWriter does. A bench offers two CD writers, G: with a blank CD-RW and H: empty, and
/// a DVD writer, K: with a blank DVD+R, all of them new for each test:
///   DiscWriters& Writers();
///   void Insert(DiscFamily, int drive, MediaKind);      a blank disc of the kind's usual size
///   void TakeOut(DiscFamily, int drive);
///   std::wstring MakeFile(const std::wstring& name, std::size_t sizeBytes);
///   void SlowDown();                                    operations take about two seconds from now on
///   void RunUntil(const std::function<bool()>& isDone); handles messages and lets the drives work; gives up in time
///   void RunAWhile();                                   the same for longer than a drive takes to notice a change
template<typename Bench>
class DiscWriterContract : public testing::Test {
  protected:
    DiscWriter& Open(DiscFamily family = DiscFamily::Cd) {
        writer_ = bench_.Writers().Create(family);
        events_.writer = writer_.get();
        writer_->SetEvents(&events_);
        return *writer_;
    }
    void StartWrite() {
        writer_->SetDiscLabel(L"21 nov., 2026");
        writer_->AddFile(bench_.MakeFile(L"_listFich.lst", 100));
        writer_->AddFile(bench_.MakeFile(L"OKRBACKUP.ZIP", 300000));
        writer_->StartWrite();
    }
    void RunUntilEnd() {
        bench_.RunUntil([this] { return events_.HasFinished() || !events_.errors.empty(); });
        RunUntilRead();
    }
    /// Until the disc that an operation left has been read.
    void RunUntilRead() {
        bench_.RunUntil([this] { return !writer_ || !writer_->IsBusy(); });
    }

    Bench bench_;
    RecordedDiscEvents events_;
    std::unique_ptr<DiscWriter> writer_;
};

TYPED_TEST_SUITE_P(DiscWriterContract);

TYPED_TEST_P(DiscWriterContract, NamesEachWriterWithItsLetterAndTheFirstIsCurrent) {
    DiscWriter& writer = this->Open();
    const auto names = writer.WriterNames();
    ASSERT_EQ(names.size(), 2u);
    EXPECT_TRUE(names[0].ends_with(L" (G:)"));
    EXPECT_TRUE(names[1].ends_with(L" (H:)"));
    EXPECT_EQ(writer.Presence(), DiscPresence::Ready);
    EXPECT_EQ(writer.Kind(), MediaKind::CdRw);
}

TYPED_TEST_P(DiscWriterContract, BlankDiscIsWritableAndAllFree) {
    DiscWriter& writer = this->Open();
    EXPECT_EQ(writer.Status(), DiscStatus::Blank);
    EXPECT_TRUE(writer.IsWritable());
    EXPECT_FALSE(writer.IsDvdReady());
    EXPECT_EQ(writer.UsedBytes(), 0u);
    EXPECT_GT(writer.TotalBytes(), 600u << 20);
    EXPECT_EQ(writer.FreeBytes(), writer.TotalBytes());
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
}

TYPED_TEST_P(DiscWriterContract, BlankDvdIsReady) {
    DiscWriter& writer = this->Open(DiscFamily::Dvd);
    ASSERT_EQ(writer.WriterNames().size(), 1u);
    EXPECT_EQ(writer.Kind(), MediaKind::DvdPlusR);
    EXPECT_TRUE(writer.IsDvdReady());
    EXPECT_TRUE(writer.IsWritable());
}

TYPED_TEST_P(DiscWriterContract, SelectedWriterWithoutADiscReadsAsZero) {
    DiscWriter& writer = this->Open();
    writer.SelectWriter(1);
    EXPECT_EQ(writer.Presence(), DiscPresence::None);
    EXPECT_EQ(writer.Status(), DiscStatus::Unknown);
    EXPECT_EQ(writer.Kind(), MediaKind::Other);
    EXPECT_FALSE(writer.IsWritable());
    EXPECT_EQ(writer.TotalBytes(), 0u);
    EXPECT_EQ(writer.FreeBytes(), 0u);
    writer.SelectWriter(0);
    EXPECT_EQ(writer.Kind(), MediaKind::CdRw);
    EXPECT_EQ(this->events_.Count(), 0u);
}

TYPED_TEST_P(DiscWriterContract, SelectingAWriterThatIsNotThereChangesNothing) {
    DiscWriter& writer = this->Open();
    writer.SelectWriter(2);
    writer.SelectWriter(-1);
    EXPECT_EQ(writer.Kind(), MediaKind::CdRw);
}

TYPED_TEST_P(DiscWriterContract, SpeedSettlesOnASupportedOne) {
    DiscWriter& writer = this->Open();
    const double fastest = writer.WriteSpeed();
    writer.SetWriteSpeed(64);
    EXPECT_EQ(writer.WriteSpeed(), fastest);
    writer.SetWriteSpeed(1);
    const double slowest = writer.WriteSpeed();
    EXPECT_LT(slowest, fastest);
    writer.SetWriteSpeed(slowest);
    EXPECT_EQ(writer.WriteSpeed(), slowest);
}

TYPED_TEST_P(DiscWriterContract, WriteTellsItsStepsInOrderAndEndsOnce) {
    DiscWriter& writer = this->Open();
    this->StartWrite();
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::Preparing);
    this->RunUntilEnd();
    ASSERT_TRUE(this->events_.HasFinished());
    const auto& steps = this->events_.progress;
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end(), [](const auto& left, const auto& right) {
        return std::tuple(left.operation, left.stage, left.percent) <
               std::tuple(right.operation, right.stage, right.percent);
    }));
    EXPECT_EQ(steps.front().operation, DiscOperation::Preparing);
    EXPECT_TRUE(this->events_.HasReached(DiscOperation::Writing, 100));
    EXPECT_EQ(std::count_if(steps.begin(), steps.end(),
                            [](const auto& step) { return step.operation == DiscOperation::Finished; }),
              1);
    EXPECT_EQ(steps.back().operation, DiscOperation::Finished);
    EXPECT_TRUE(this->events_.errors.empty());
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
}

TYPED_TEST_P(DiscWriterContract, WrittenDiscReadsAsOpenOnceTheDriveIsFree) {
    DiscWriter& writer = this->Open();
    this->StartWrite();
    EXPECT_TRUE(writer.IsBusy());
    this->RunUntilEnd();
    EXPECT_FALSE(writer.IsBusy());
    EXPECT_EQ(writer.Status(), DiscStatus::Open);
    EXPECT_GE(writer.UsedBytes(), 300000u);
    EXPECT_LT(writer.FreeBytes(), writer.TotalBytes());
}

TYPED_TEST_P(DiscWriterContract, DiscWithoutFilesCanBeWritten) {
    DiscWriter& writer = this->Open();
    writer.StartWrite();
    this->RunUntilEnd();
    EXPECT_TRUE(this->events_.HasFinished());
}

TYPED_TEST_P(DiscWriterContract, SecondOperationIsRefusedInsideItsCall) {
    this->bench_.SlowDown();
    DiscWriter& writer = this->Open();
    this->StartWrite();
    writer.Erase(true);
    EXPECT_THAT(this->events_.ErrorCodes(), testing::ElementsAre(DiscErrorBusy));
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::Preparing);
}

TYPED_TEST_P(DiscWriterContract, OperationWithoutADiscIsRefusedSilentlyInsideItsCall) {
    DiscWriter& writer = this->Open();
    writer.SelectWriter(1);
    this->StartWrite();
    EXPECT_THAT(this->events_.ErrorCodes(), testing::ElementsAre(DiscErrorNoDisc));
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
    writer.Erase(true);
    EXPECT_THAT(this->events_.ErrorCodes(), testing::ElementsAre(DiscErrorNoDisc, DiscErrorNoDisc));
}

TYPED_TEST_P(DiscWriterContract, AbortedWriteIsIdleAtOnceAndEndsOnce) {
    this->bench_.SlowDown();
    DiscWriter& writer = this->Open();
    this->StartWrite();
    writer.Abort();
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
    EXPECT_TRUE(writer.IsBusy());
    const std::size_t told = this->events_.progress.size();
    writer.StartWrite();
    EXPECT_THAT(this->events_.ErrorCodes(), testing::ElementsAre(DiscErrorBusy));
    this->bench_.RunUntil([&] { return this->events_.errors.size() > 1; });
    this->RunUntilRead();
    EXPECT_EQ(this->events_.mediaChanges, 0);
    EXPECT_EQ(this->events_.readings, 1);
    this->bench_.RunAWhile();
    EXPECT_THAT(this->events_.ErrorCodes(), testing::ElementsAre(DiscErrorBusy, DiscErrorAborted));
    EXPECT_EQ(this->events_.progress.size(), told);
    writer.Abort();
    this->bench_.RunAWhile();
    EXPECT_EQ(this->events_.errors.size(), 2u);
}

TYPED_TEST_P(DiscWriterContract, AfterAnAbortedWriteTheNextOperationRuns) {
    this->bench_.SlowDown();
    DiscWriter& writer = this->Open();
    this->StartWrite();
    writer.Abort();
    this->bench_.RunUntil([&] { return !this->events_.errors.empty(); });
    this->RunUntilRead();
    writer.Erase(true);
    this->bench_.RunUntil([&] { return this->events_.HasReached(DiscOperation::EraseInProgress, 100); });
    this->RunUntilRead();
    EXPECT_TRUE(this->events_.HasReached(DiscOperation::EraseInProgress, 100));
    EXPECT_EQ(writer.Status(), DiscStatus::Blank);
}

TYPED_TEST_P(DiscWriterContract, EraseTellsItsProgressAndLeavesABlankDisc) {
    DiscWriter& writer = this->Open();
    this->StartWrite();
    this->RunUntilEnd();
    this->events_.progress.clear();
    writer.Erase(false);
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::EraseInProgress);
    this->bench_.RunUntil([&] { return this->events_.HasReached(DiscOperation::EraseInProgress, 100); });
    this->RunUntilRead();
    const auto& steps = this->events_.progress;
    ASSERT_FALSE(steps.empty());
    for (const auto& step : steps) EXPECT_EQ(step.operation, DiscOperation::EraseInProgress);
    EXPECT_TRUE(std::is_sorted(steps.begin(), steps.end(),
                               [](const auto& left, const auto& right) { return left.percent < right.percent; }));
    EXPECT_EQ(std::count_if(steps.begin(), steps.end(), [](const auto& step) { return step.percent == 100; }), 1);
    EXPECT_EQ(writer.Status(), DiscStatus::Blank);
    EXPECT_EQ(writer.FreeBytes(), writer.TotalBytes());
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
    EXPECT_TRUE(this->events_.errors.empty());
}

TYPED_TEST_P(DiscWriterContract, DiscThatComesOrGoesIsTold) {
    DiscWriter& writer = this->Open();
    this->bench_.TakeOut(DiscFamily::Cd, 0);
    this->bench_.RunUntil([&] { return this->events_.mediaChanges == 1; });
    EXPECT_EQ(this->events_.mediaChanges, 1);
    EXPECT_EQ(writer.Presence(), DiscPresence::None);
    this->bench_.Insert(DiscFamily::Cd, 0, MediaKind::DvdMinusR);
    this->bench_.RunUntil([&] { return this->events_.mediaChanges == 2; });
    EXPECT_EQ(this->events_.mediaChanges, 2);
    EXPECT_EQ(writer.Kind(), MediaKind::DvdMinusR);
}

TYPED_TEST_P(DiscWriterContract, NothingIsToldAfterEventsWereSetToNull) {
    DiscWriter& writer = this->Open();
    this->StartWrite();
    writer.SetEvents(nullptr);
    this->bench_.RunUntil([&] { return writer.Status() == DiscStatus::Open; });
    EXPECT_EQ(writer.Status(), DiscStatus::Open);
    writer.SelectWriter(1);
    writer.StartWrite();
    EXPECT_EQ(this->events_.Count(), 0u);
}

TYPED_TEST_P(DiscWriterContract, ShutDownInTheMiddleTellsNothingMore) {
    this->bench_.SlowDown();
    DiscWriter& writer = this->Open();
    this->StartWrite();
    writer.ShutDown();
    const std::size_t told = this->events_.Count();
    EXPECT_EQ(writer.CurrentOperation(), DiscOperation::None);
    EXPECT_EQ(writer.Presence(), DiscPresence::None);
    EXPECT_TRUE(writer.WriterNames().empty());
    EXPECT_EQ(writer.WriteSpeed(), 0);
    writer.ShutDown();
    writer.SelectWriter(0);
    writer.AddFile(L"C:\\none");
    writer.StartWrite();
    writer.Erase(true);
    writer.Abort();
    this->bench_.RunAWhile();
    EXPECT_EQ(this->events_.Count(), told);
}

TYPED_TEST_P(DiscWriterContract, HandlerMayDestroyTheWriter) {
    this->Open();
    this->events_.onEvent = [this] {
        if (!this->events_.HasFinished() || !this->writer_) return;
        this->writer_->ShutDown();
        this->writer_.reset();
    };
    this->StartWrite();
    this->RunUntilEnd();
    this->bench_.RunAWhile();
    EXPECT_TRUE(this->events_.HasFinished());
    EXPECT_FALSE(this->writer_);
    EXPECT_TRUE(this->events_.errors.empty());
}

TYPED_TEST_P(DiscWriterContract, RefusedStartForgetsItsFiles) {
    DiscWriter& writer = this->Open();
    writer.SelectWriter(1);
    writer.AddFile(L"C:\\there is no such file");
    writer.StartWrite();
    writer.SelectWriter(0);
    this->events_.errors.clear();
    writer.StartWrite();
    this->RunUntilEnd();
    EXPECT_TRUE(this->events_.HasFinished());
}

REGISTER_TYPED_TEST_SUITE_P(DiscWriterContract, NamesEachWriterWithItsLetterAndTheFirstIsCurrent,
                            BlankDiscIsWritableAndAllFree, BlankDvdIsReady, SelectedWriterWithoutADiscReadsAsZero,
                            SelectingAWriterThatIsNotThereChangesNothing, SpeedSettlesOnASupportedOne,
                            WriteTellsItsStepsInOrderAndEndsOnce, WrittenDiscReadsAsOpenOnceTheDriveIsFree,
                            DiscWithoutFilesCanBeWritten, SecondOperationIsRefusedInsideItsCall,
                            OperationWithoutADiscIsRefusedSilentlyInsideItsCall, AbortedWriteIsIdleAtOnceAndEndsOnce,
                            AfterAnAbortedWriteTheNextOperationRuns, EraseTellsItsProgressAndLeavesABlankDisc,
                            DiscThatComesOrGoesIsTold, NothingIsToldAfterEventsWereSetToNull,
                            ShutDownInTheMiddleTellsNothingMore, HandlerMayDestroyTheWriter,
                            RefusedStartForgetsItsFiles);
