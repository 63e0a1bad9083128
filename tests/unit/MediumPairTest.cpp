// A medium's two files are exchanged for new ones whatever happens in between.
#include "archive/MediumPair.h"
#include "support/Failures.h"
#include "support/FakeDrives.h"
#include "support/FakeFiles.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using Paths = std::vector<std::wstring>;

constexpr const wchar_t* Root = L"E:\\";
constexpr const wchar_t* List = L"E:\\_listFich.lst";
constexpr const wchar_t* Archive = L"E:\\OKRBACKUP.ZIP";

/// How a call ends at which the medium is lost.
enum class Break {
    Before, ///< it never comes to the call
    Torn,   ///< the call is done, a copy by half, and nobody hears of it
};

/// A medium that fails at one call of the port, counted from 1, and from a call on for good, as when it is pulled out
/// or the program is ended.
class LosableFiles : public FakeFiles {
  public:
    void FailAt(int call, Break kind) {
        calls = 0;
        failsAt_ = call;
        kind_ = kind;
        lostFrom_ = std::numeric_limits<int>::max();
    }
    void LoseAt(int call, Break kind) {
        FailAt(call, kind);
        lostFrom_ = call;
    }
    void FailAtAndLoseAt(int call, int laterCall) {
        FailAt(call, Break::Before);
        lostFrom_ = laterCall;
    }
    void FindAgain() { FailAt(0, Break::Before); }
    int calls = 0;

    FolderContents Contents(const std::wstring& folder) const override {
        const_cast<LosableFiles*>(this)->Count([] {});
        return FakeFiles::Contents(folder);
    }
    void RequireDeletable(const std::wstring& path) const override {
        const_cast<LosableFiles*>(this)->Count([] {});
        FakeFiles::RequireDeletable(path);
    }
    void Copy(const std::wstring& source, const std::wstring& target) override {
        Count([&] { AddFile(target, Read(source).substr(0, 3)); });
        FakeFiles::Copy(source, target);
    }
    void Flush(const std::wstring& path) override {
        Count([&] { FakeFiles::Flush(path); });
        FakeFiles::Flush(path);
    }
    void Rename(const std::wstring& source, const std::wstring& target) override {
        Count([&] { FakeFiles::Rename(source, target); });
        FakeFiles::Rename(source, target);
    }
    void Delete(const std::wstring& path) override {
        Count([&] { FakeFiles::Delete(path); });
        FakeFiles::Delete(path);
    }

  private:
    template<typename Done>
    void Count(Done done) {
        ++calls;
        if (calls != failsAt_ && calls < lostFrom_) return;
        if (calls == failsAt_ && kind_ == Break::Torn) done();
        throw RuntimeError(ErrorNumber::DeviceIoError);
    }

    int failsAt_ = 0;
    int lostFrom_ = std::numeric_limits<int>::max();
    Break kind_ = Break::Before;
};

/// What was on the medium before.
enum class Before { Nothing, Pair, ListAlone, ArchiveAlone };

class MediumPair {
  public:
    explicit MediumPair(Before before = Before::Pair) {
        files.AddFolder(Root);
        files.AddFile(L"C:\\zip\\OKRBACKUP.ZIP", "new archive");
        files.AddFile(L"C:\\zip\\_listFich.lst", "new list");
        if (before == Before::Pair || before == Before::ListAlone) files.AddFile(List, "old list");
        if (before == Before::Pair || before == Before::ArchiveAlone) files.AddFile(Archive, "old archive");
        old = OnMedium();
    }

    void Exchange() { ExchangePair(files, Root, {L"C:\\zip\\OKRBACKUP.ZIP", L"C:\\zip\\_listFich.lst"}); }
    void Finish() { FinishExchange(files, Root); }

    /// Every file of the medium with its content.
    std::map<std::wstring, std::string> OnMedium() const {
        std::map<std::wstring, std::string> found;
        for (const std::wstring& path : files.Paths()) {
            if (path.starts_with(Root)) found[path] = files.Read(path);
        }
        return found;
    }
    /// What a restore would take: the pair that is named as one, if there is a list.
    std::map<std::wstring, std::string> Shown() const {
        std::map<std::wstring, std::string> shown;
        if (!files.FileExists(List)) return shown;
        for (const wchar_t* path : {List, Archive}) {
            if (files.FileExists(path)) shown[path] = files.Read(path);
        }
        return shown;
    }

    LosableFiles files;
    std::map<std::wstring, std::string> old;
    const std::map<std::wstring, std::string> fresh = {{List, "new list"}, {Archive, "new archive"}};
    const std::map<std::wstring, std::string> none;
};

int CallsOfAnExchange(Before before) {
    MediumPair medium(before);
    medium.Exchange();
    return medium.files.calls;
}

constexpr Before Starts[] = {Before::Pair, Before::Nothing, Before::ListAlone, Before::ArchiveAlone};
constexpr Break Breaks[] = {Break::Before, Break::Torn};

/// Calls `check` for a medium that was lost for good at each call of an exchange, from each start, in each way.
template<typename Check>
void ForEachLoss(Check check) {
    for (const Before start : Starts) {
        for (int call = 1; call <= CallsOfAnExchange(start); ++call) {
            for (const Break kind : Breaks) {
                SCOPED_TRACE("start " + std::to_string(static_cast<int>(start)) + ", lost at call " +
                             std::to_string(call) + (kind == Break::Torn ? ", torn" : ""));
                MediumPair medium(start);
                medium.files.LoseAt(call, kind);
                EXPECT_EQ(NumberThrownBy([&] { medium.Exchange(); }), 57);
                medium.files.FindAgain();
                check(medium);
                if (testing::Test::HasFatalFailure()) return;
            }
        }
    }
}

void ExpectOldOrNewPairAndNothingElse(const MediumPair& medium) {
    const auto found = medium.OnMedium();
    EXPECT_TRUE(found == medium.old || found == medium.fresh) << testing::PrintToString(found);
}

TEST(MediumPair, NewPairTakesThePlaceOfTheOldOneAndLeavesNothingElse) {
    for (const Before start : Starts) {
        MediumPair medium(start);
        medium.Exchange();
        EXPECT_EQ(medium.OnMedium(), medium.fresh);
    }
}

TEST(MediumPair, BothFilesReachTheDeviceBeforeAnOldNameIsTouched) {
    MediumPair medium;
    medium.Exchange();
    EXPECT_EQ(medium.files.flushed, (Paths{L"E:\\OKRBACKUP.ZIP.~new", L"E:\\_listFich.lst.~part", Archive, List}));
    EXPECT_GE(CallsOfAnExchange(Before::Pair), 12);
}

TEST(MediumPair, OtherFilesStay) {
    MediumPair medium;
    medium.files.AddFile(L"E:\\OKRBACKUP.OLD", "kept by hand");
    medium.files.AddFile(L"E:\\photo.jpg", "photo");
    medium.Exchange();
    medium.Finish();
    EXPECT_EQ(medium.files.Read(L"E:\\OKRBACKUP.OLD"), "kept by hand");
    EXPECT_EQ(medium.files.Read(L"E:\\photo.jpg"), "photo");
}

TEST(MediumPair, LostAtAnyCallShowsTheOldPairTheNewOneOrNoBackup) {
    ForEachLoss([](const MediumPair& medium) {
        const auto shown = medium.Shown();
        const auto shownBefore = medium.old.contains(List) ? medium.old : medium.none;
        EXPECT_TRUE(shown == shownBefore || shown == medium.fresh || shown == medium.none)
            << testing::PrintToString(shown);
    });
}

TEST(MediumPair, LostAtAnyCallIsFinishedOrUndoneByTheNextStart) {
    ForEachLoss([](MediumPair& medium) {
        medium.Finish();
        ExpectOldOrNewPairAndNothingElse(medium);
    });
}

TEST(MediumPair, LostAgainWhileItIsFinishedIsFinishedByTheStartAfterThat) {
    ForEachLoss([](const MediumPair& broken) {
        MediumPair counted = broken;
        counted.files.FindAgain();
        counted.Finish();
        for (int call = 1; call <= counted.files.calls; ++call) {
            for (const Break kind : Breaks) {
                SCOPED_TRACE("and again at call " + std::to_string(call) + (kind == Break::Torn ? ", torn" : ""));
                MediumPair medium = broken;
                medium.files.LoseAt(call, kind);
                EXPECT_EQ(NumberThrownBy([&] { medium.Finish(); }), 57);
                medium.files.FindAgain();
                medium.Finish();
                ExpectOldOrNewPairAndNothingElse(medium);
            }
        }
    });
}

TEST(MediumPair, LostAtAnyCallTakesTheNextPairWhole) {
    ForEachLoss([](MediumPair& medium) {
        medium.files.AddFile(L"C:\\zip\\OKRBACKUP.ZIP", "third archive");
        medium.files.AddFile(L"C:\\zip\\_listFich.lst", "third list");
        medium.Finish();
        medium.Exchange();
        EXPECT_EQ(medium.OnMedium(),
                  (std::map<std::wstring, std::string>{{List, "third list"}, {Archive, "third archive"}}));
    });
}

TEST(MediumPair, StepThatFailsAtAnyCallLeavesAPairInItsPlace) {
    for (const Before start : Starts) {
        for (int call = 1; call <= CallsOfAnExchange(start); ++call) {
            for (const Break kind : Breaks) {
                SCOPED_TRACE("start " + std::to_string(static_cast<int>(start)) + ", fails at call " +
                             std::to_string(call) + (kind == Break::Torn ? ", torn" : ""));
                MediumPair medium(start);
                medium.files.FailAt(call, kind);
                EXPECT_EQ(NumberThrownBy([&] { medium.Exchange(); }), 57);
                medium.files.FindAgain();
                if (medium.Shown() != medium.fresh) {
                    EXPECT_EQ(medium.OnMedium(), medium.old);
                }
                medium.Finish();
                ExpectOldOrNewPairAndNothingElse(medium);
            }
        }
    }
}

TEST(MediumPair, LostWhileAFailedStepIsUndoneIsFinishedOrUndoneByTheNextStart) {
    for (const Before start : Starts) {
        const int calls = CallsOfAnExchange(start);
        for (int call = 1; call < calls; ++call) {
            for (int later = call + 1; later < calls + 8; ++later) {
                SCOPED_TRACE("start " + std::to_string(static_cast<int>(start)) + ", fails at call " +
                             std::to_string(call) + ", lost at call " + std::to_string(later));
                MediumPair medium(start);
                medium.files.FailAtAndLoseAt(call, later);
                EXPECT_EQ(NumberThrownBy([&] { medium.Exchange(); }), 57);
                medium.files.FindAgain();
                medium.Finish();
                ExpectOldOrNewPairAndNothingElse(medium);
            }
        }
    }
}

TEST(MediumPair, NewArchiveThatTheDiskHasLostBringsTheOldPairBack) {
    MediumPair medium(Before::Nothing);
    medium.files.AddFile(L"E:\\_listFich.lst.~new", "new list");
    medium.files.AddFile(L"E:\\_listFich.lst.~old", "old list");
    medium.files.AddFile(L"E:\\OKRBACKUP.ZIP.~old", "old archive");
    medium.Finish();
    EXPECT_EQ(medium.OnMedium(), (std::map<std::wstring, std::string>{{List, "old list"}, {Archive, "old archive"}}));
}

TEST(MediumPair, ArchiveOfWhichNobodyKnowsTheListGetsNone) {
    MediumPair medium(Before::ArchiveAlone);
    medium.files.AddFile(L"E:\\_listFich.lst.~old", "old list");
    medium.Finish();
    EXPECT_EQ(medium.Shown(), medium.none);
    EXPECT_TRUE(medium.files.FileExists(L"E:\\_listFich.lst.~old"));
}

TEST(MediumPair, DiskThatIsFullKeepsTheOldPairAlone) {
    for (const std::uint64_t freeBytes : {0u, 5u, 11u, 15u}) {
        MediumPair medium;
        medium.files.SetFreeBytes(L"E:", freeBytes);
        EXPECT_EQ(NumberThrownBy([&] { medium.Exchange(); }), 61) << freeBytes;
        EXPECT_EQ(medium.OnMedium(), medium.old) << freeBytes;
    }
    MediumPair enough;
    enough.files.SetFreeBytes(L"E:", 19);
    enough.Exchange();
    EXPECT_EQ(enough.OnMedium(), enough.fresh);
}

TEST(MediumPair, OldFileThatIsReadOnlyIsNotReplaced) {
    for (const wchar_t* path : {List, Archive}) {
        MediumPair medium;
        medium.files.SetReadOnly(path);
        EXPECT_EQ(NumberThrownBy([&] { medium.Exchange(); }), 70);
        EXPECT_EQ(medium.OnMedium(), medium.old);
    }
}

TEST(MediumPair, NothingIsChangedWhereNoExchangeWasBrokenOff) {
    for (const Before start : Starts) {
        MediumPair medium(start);
        medium.Finish();
        EXPECT_EQ(medium.OnMedium(), medium.old);
        EXPECT_EQ(medium.files.calls, 1) << "one look at the root";
    }
}

TEST(MediumPair, MediumThatAnotherCopyOfTheProgramIsChangingIsLeftToIt) {
    FakeMachine machine;
    machine.drives.Add(Root, DriveType::Removable);
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP.~new", "coming");
    std::unique_ptr<Hold> others = machine.drives.Claim(Root);
    FinishExchangeIfPossible(machine.app, Root);
    EXPECT_TRUE(machine.files.FileExists(L"E:\\OKRBACKUP.ZIP.~new"));
    others.reset();
    FinishExchangeIfPossible(machine.app, Root);
    EXPECT_FALSE(machine.files.FileExists(L"E:\\OKRBACKUP.ZIP.~new")) << "what a copy left that was broken off";
    EXPECT_NE(machine.drives.Claim(Root), nullptr);
}

TEST(MediumPair, FatHoldsNoFileOfFourGibibytes) {
    FakeDrives drives;
    const std::uint64_t fourGibibytes = 4ull << 30;
    for (const wchar_t* name : {L"FAT", L"FAT16", L"FAT32"}) {
        drives.Add(Root, DriveType::Removable).fileSystem = name;
        EXPECT_EQ(NumberThrownBy([&] { RequireRoomInFileSystem(drives, Root, fourGibibytes); }), 61) << name;
        EXPECT_EQ(NumberThrownBy([&] { RequireRoomInFileSystem(drives, Root, fourGibibytes - 1); }), 0) << name;
        drives.Remove(Root);
    }
    for (const wchar_t* name : {L"exFAT", L"NTFS", L""}) {
        drives.Add(Root, DriveType::Removable).fileSystem = name;
        EXPECT_EQ(NumberThrownBy([&] { RequireRoomInFileSystem(drives, Root, fourGibibytes); }), 0) << name;
        drives.Remove(Root);
    }
}

} // namespace
