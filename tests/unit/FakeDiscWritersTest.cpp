// The stand-in for disc writers, held to what the real one does.
#include "support/FakeDiscWriters.h"
#include "support/DiscWriterContract.h"

namespace {

constexpr std::uint64_t CdBytes = 737280000;
constexpr std::uint64_t DvdBytes = 4700372992;

class FakeDiscWritersBench {
  public:
    FakeDiscWritersBench() {
        writers_.cdDrives.push_back({L"STAND-IN CD WRITER (G:)", BlankDisc(MediaKind::CdRw, CdBytes)});
        writers_.cdDrives.push_back({L"STAND-IN CD WRITER (H:)", {}});
        writers_.dvdDrives.push_back({L"STAND-IN DVD WRITER (K:)", BlankDisc(MediaKind::DvdPlusR, DvdBytes)});
    }
    DiscWriters& Writers() { return writers_; }
    void Insert(DiscFamily family, int drive, MediaKind kind) {
        Put(family, drive, BlankDisc(kind, family == DiscFamily::Cd ? CdBytes : DvdBytes));
    }
    void TakeOut(DiscFamily family, int drive) { Put(family, drive, {}); }
    std::wstring MakeFile(const std::wstring& name, std::size_t) { return L"C:\\" + name; }
    void SlowDown() {}
    void RunUntil(const std::function<bool()>& isDone) {
        for (int turn = 0; turn < 10 && !isDone(); ++turn) RunAWhile();
    }
    void RunAWhile() {
        for (DiscFamily family : {DiscFamily::Cd, DiscFamily::Dvd})
            if (FakeDiscWriter* writer = writers_.Latest(family)) writer->PlayToEnd();
    }

  private:
    void Put(DiscFamily family, int drive, const FakeDisc& disc) {
        writers_.Drives(family)[static_cast<std::size_t>(drive)].disc = disc;
        if (FakeDiscWriter* writer = writers_.Latest(family)) writer->RaiseMediaChange();
    }

    FakeDiscWriters writers_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(StandIn, DiscWriterContract, FakeDiscWritersBench);

TEST(FakeDiscWriters, FailureToCreateIsThrown) {
    FakeDiscWriters writers;
    writers.createFailure = RuntimeError(ErrorNumber::CannotCreateObject);
    EXPECT_THROW(writers.Create(DiscFamily::Cd), RuntimeError);
}

TEST(FakeDiscWriters, CountsItsWriters) {
    FakeDiscWriters writers;
    {
        const auto first = writers.Create(DiscFamily::Cd);
        const auto second = writers.Create(DiscFamily::Cd);
        EXPECT_EQ(writers.cdRecord.alive, 2);
    }
    EXPECT_EQ(writers.cdRecord.alive, 0);
    EXPECT_EQ(writers.cdRecord.shutDown, 2);
    EXPECT_EQ(writers.Latest(DiscFamily::Cd), nullptr);
}

} // namespace
