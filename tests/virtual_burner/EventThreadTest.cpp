// On which threads a drive tells of its write, and on which one the windows hear of it.
#include "WriterBench.h"

#include "platform/discs/MasteringCodes.h"
#include "platform/windows/discs/DiscSink.h"
#include "platform/windows/discs/FileStream.h"
#include "platform/windows/discs/ImapiDrive.h"

#include <cstddef>
#include <mutex>
#include <set>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

/// The threads on which something came.
class SeenThreads {
  public:
    void NoteThisOne() {
        const std::lock_guard lock(mutex_);
        threads_.insert(GetCurrentThreadId());
    }
    std::set<DWORD> All() const {
        const std::lock_guard lock(mutex_);
        return threads_;
    }

  private:
    mutable std::mutex mutex_;
    std::set<DWORD> threads_;
};

/// The burner's own objects, without the program's disc writer.
class BurnerEvents : public testing::Test {
  protected:
    BurnerEvents() { CoInitializeEx(nullptr, COINIT_MULTITHREADED); }
    ~BurnerEvents() override { CoUninitialize(); }

    /// Writes ten sectors on a drive of these modes; gives where it has told of it until then.
    std::shared_ptr<SeenThreads> Write(const std::string& modes) {
        BurnerBench::SetDrive(L'G', {{"stern", modes}, {"write milliseconds", "50"}, {"shows content", "no"}});
        ImapiDrive drive(BurnerBench::DriveFolder(L'G').wstring());
        EXPECT_EQ(drive.Open(), S_OK);
        const ComText clientName{L"Test"};
        drive.Data()->put_ClientName(clientName.Get());
        HRESULT result = E_FAIL;
        const auto stream = OpenFileStream(bench_.MakeFile(L"image", 10 * Mastering::SectorBytes), result);
        // An event that comes late may find this function and its test gone.
        auto seen = std::make_shared<SeenThreads>();
        const ComPointer<WriteSink> sink(new WriteSink([seen](auto*, auto*) { seen->NoteThisOne(); }));
        const SinkConnection connection(drive.Data(), static_cast<DDiscFormat2DataEvents*>(sink.Get()));
        EXPECT_EQ(drive.Data()->Write(stream.Get()), S_OK);
        return seen;
    }

    BurnerBench bench_;
};

TEST_F(BurnerEvents, ComeOnTheWritersThreadUnlessTheDriveHasOneOfItsOwn) {
    EXPECT_THAT(Write("none")->All(), ElementsAre(GetCurrentThreadId()));
}

TEST_F(BurnerEvents, ComeOnOneOtherThreadWhereTheDriveHasOneOfItsOwn) {
    const auto threads = Write("own thread")->All();
    EXPECT_EQ(threads.size(), 1u);
    EXPECT_THAT(threads, Not(Contains(GetCurrentThreadId())));
}

TEST_F(BurnerEvents, OneComesOnAnotherThreadAfterTheWriteHasReturned) {
    const auto seen = Write("late events");
    bench_.RunUntil([&] { return seen->All().size() == 2; });
    EXPECT_EQ(seen->All().size(), 2u);
    EXPECT_THAT(seen->All(), Contains(GetCurrentThreadId()));
}

class WriterEvents : public WriterBench, public testing::WithParamInterface<const char*> {};

TEST_P(WriterEvents, ComeOnTheThreadOfTheWindowsWhereverTheDriveTellsOfThem) {
    BurnerBench::SetDrive(L'G', {{"stern", GetParam()}, {"write milliseconds", "300"}});
    SeenThreads seen;
    events_.onEvent = [&] { seen.NoteThisOne(); };
    Open();
    const long objects = LiveBurnerObjects();
    Write();
    EXPECT_TRUE(events_.HasFinished());
    // The late one, if the drive has such.
    bench_.RunUntil([objects] { return LiveBurnerObjects() <= objects; });
    EXPECT_THAT(seen.All(), ElementsAre(GetCurrentThreadId()));
    EXPECT_TRUE(events_.errors.empty());
    EXPECT_TRUE(events_.HasReached(DiscOperation::Writing, 100));
    EXPECT_EQ(events_.progress.back().operation, DiscOperation::Finished);
    ExpectContent(L'G');
}

INSTANTIATE_TEST_SUITE_P(Modes, WriterEvents, testing::Values("none", "own thread", "late events", "all"));

} // namespace
