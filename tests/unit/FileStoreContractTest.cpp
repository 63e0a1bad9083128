// What every implementation of FileStore does; run against the stand-in, and under Windows against the real one too.
#include "support/Failures.h"
#include "support/FakeFileStore.h"

#include <gmock/gmock.h>

#ifdef _WIN32
#include "platform/windows/WindowsFileStore.h"

#include <filesystem>
#endif

namespace {

using testing::UnorderedElementsAre;

struct FakeStoreBench {
    FakeStoreBench() { store.MakeFolder(root); }
    bool IsReadOnly(const std::wstring& path) const { return (store.Find(path)->attributes & 1) != 0; }
    void MakeWritable(const std::wstring& path) { store.Mark(path, {}, 32); }
    FakeFileStore store;
    const std::wstring root = L"C:\\Bench";
};

#ifdef _WIN32
struct WindowsStoreBench {
    WindowsStoreBench() { std::filesystem::create_directories(root); }
    ~WindowsStoreBench() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    WindowsStoreBench(const WindowsStoreBench&) = delete;
    WindowsStoreBench& operator=(const WindowsStoreBench&) = delete;
    static bool IsReadOnly(const std::wstring& path) {
        const auto mayWrite = std::filesystem::status(path).permissions() & std::filesystem::perms::owner_write;
        return mayWrite == std::filesystem::perms::none;
    }
    static void MakeWritable(const std::wstring& path) {
        std::filesystem::permissions(path, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    }
    WindowsFileStore store;
    const std::wstring root = (std::filesystem::temp_directory_path() / L"FileStoreContract").wstring();
};
using Benches = testing::Types<FakeStoreBench, WindowsStoreBench>;
#else
using Benches = testing::Types<FakeStoreBench>;
#endif

std::int32_t NumberOf(ErrorNumber error) {
    return static_cast<std::int32_t>(error);
}

template<typename Bench>
class FileStoreContract : public testing::Test {
  protected:
    std::wstring Path(const std::wstring& name) const { return bench_.root + L"\\" + name; }
    void Make(const std::wstring& name, const std::string& bytes) {
        const auto file = store_.CreateNew(Path(name));
        ASSERT_NE(file, nullptr);
        file->Write(bytes);
        file->Close();
    }
    std::string Read(const std::wstring& name) const {
        const auto file = store_.Open(Path(name));
        std::string bytes(static_cast<std::size_t>(file->SizeBytes()), '\0');
        EXPECT_EQ(file->ReadAt(0, bytes), bytes.size());
        return bytes;
    }
    std::vector<std::wstring> Names() const {
        std::vector<std::wstring> names;
        for (const StoredEntry& entry : store_.List(bench_.root)) names.push_back(entry.name);
        return names;
    }

    Bench bench_;
    FileStore& store_ = bench_.store;
};

TYPED_TEST_SUITE(FileStoreContract, Benches);

TYPED_TEST(FileStoreContract, WhatWasWrittenIsReadFromAnyPlace) {
    this->Make(L"a.txt", "0123456789");
    const auto file = this->store_.Open(this->Path(L"A.TXT"));
    EXPECT_EQ(file->SizeBytes(), 10u);
    std::string four(4, '\0');
    EXPECT_EQ(file->ReadAt(3, four), 4u);
    EXPECT_EQ(four, "3456");
    EXPECT_EQ(file->ReadAt(8, four), 2u);
    EXPECT_EQ(four.substr(0, 2), "89");
    EXPECT_EQ(file->ReadAt(10, four), 0u);
    EXPECT_EQ(file->ReadAt(11, four), 0u);
}

TYPED_TEST(FileStoreContract, AFileThatIsThereIsNeverMadeAnew) {
    this->Make(L"a.txt", "old");
    EXPECT_EQ(this->store_.CreateNew(this->Path(L"A.txt")), nullptr);
    this->store_.MakeFolder(this->Path(L"sub"));
    EXPECT_EQ(this->store_.CreateNew(this->Path(L"sub")), nullptr);
    EXPECT_EQ(this->Read(L"a.txt"), "old");
}

TYPED_TEST(FileStoreContract, WhatIsMissingHasItsNumber) {
    EXPECT_EQ(NumberThrownBy([&] { this->store_.Open(this->Path(L"no")); }), NumberOf(ErrorNumber::FileNotFound));
    EXPECT_EQ(NumberThrownBy([&] { this->store_.Delete(this->Path(L"no")); }), NumberOf(ErrorNumber::FileNotFound));
    EXPECT_EQ(NumberThrownBy([&] { this->store_.List(this->Path(L"no")); }), NumberOf(ErrorNumber::PathNotFound));
    EXPECT_EQ(NumberThrownBy([&] { this->store_.Rename(this->Path(L"no"), this->Path(L"new")); }),
              NumberOf(ErrorNumber::FileNotFound));
    EXPECT_FALSE(this->store_.Look(this->Path(L"no")).has_value());
    EXPECT_FALSE(this->store_.Look(this->Path(L"no\\deeper")).has_value());
}

TYPED_TEST(FileStoreContract, AFileInAFolderThatIsMissingIsNotMade) {
    EXPECT_EQ(NumberThrownBy([&] { this->store_.CreateNew(this->Path(L"no\\a.txt")); }),
              NumberOf(ErrorNumber::PathNotFound));
    EXPECT_EQ(NumberThrownBy([&] { this->store_.MakeFolder(this->Path(L"no\\sub")); }),
              NumberOf(ErrorNumber::PathNotFound));
}

TYPED_TEST(FileStoreContract, ANameThatIsTakenIsNotGivenAgain) {
    this->Make(L"a.txt", "a");
    this->Make(L"b.txt", "b");
    EXPECT_FALSE(this->store_.Rename(this->Path(L"a.txt"), this->Path(L"B.TXT")));
    EXPECT_TRUE(this->store_.Rename(this->Path(L"a.txt"), this->Path(L"c.txt")));
    EXPECT_THAT(this->Names(), UnorderedElementsAre(L"b.txt", L"c.txt"));
    EXPECT_EQ(this->Read(L"b.txt"), "b");
    EXPECT_EQ(this->Read(L"c.txt"), "a");
}

TYPED_TEST(FileStoreContract, AReplacedFileGoesAndAFolderDoesNot) {
    this->Make(L"a.txt", "a");
    this->Make(L"b.txt", "bb");
    this->store_.Replace(this->Path(L"a.txt"), this->Path(L"B.TXT"));
    this->store_.Replace(this->Path(L"b.txt"), this->Path(L"c.txt"));
    EXPECT_THAT(this->Names(), UnorderedElementsAre(L"c.txt"));
    EXPECT_EQ(this->Read(L"c.txt"), "a");
    this->store_.MakeFolder(this->Path(L"sub"));
    EXPECT_THROW(this->store_.Replace(this->Path(L"c.txt"), this->Path(L"sub")), RuntimeError);
    EXPECT_EQ(NumberThrownBy([&] { this->store_.Replace(this->Path(L"no"), this->Path(L"c.txt")); }),
              NumberOf(ErrorNumber::FileNotFound));
    EXPECT_THAT(this->Names(), UnorderedElementsAre(L"c.txt", L"sub"));
}

TYPED_TEST(FileStoreContract, AFolderThatIsThereIsWell) {
    this->store_.MakeFolder(this->Path(L"sub"));
    EXPECT_NO_THROW(this->store_.MakeFolder(this->Path(L"SUB")));
    const auto entry = this->store_.Look(this->Path(L"sub"));
    ASSERT_TRUE(entry.has_value());
    EXPECT_TRUE(entry->isFolder);
    EXPECT_FALSE(entry->isLink);
    this->Make(L"a.txt", "a");
    EXPECT_EQ(NumberThrownBy([&] { this->store_.MakeFolder(this->Path(L"a.txt")); }),
              NumberOf(ErrorNumber::PathFileAccessError));
}

TYPED_TEST(FileStoreContract, AFolderListsWhatLiesInIt) {
    this->Make(L"a.txt", "12345");
    this->store_.MakeFolder(this->Path(L"sub"));
    this->Make(L"sub\\deeper.txt", "");
    EXPECT_THAT(this->Names(), UnorderedElementsAre(L"a.txt", L"sub"));
    for (const StoredEntry& entry : this->store_.List(this->bench_.root)) {
        EXPECT_EQ(entry.isFolder, entry.name == L"sub");
        if (!entry.isFolder) {
            EXPECT_EQ(entry.sizeBytes, 5u);
        }
    }
}

TYPED_TEST(FileStoreContract, ADeletedFileIsGone) {
    this->Make(L"a.txt", "a");
    this->store_.Delete(this->Path(L"A.TXT"));
    EXPECT_FALSE(this->store_.Look(this->Path(L"a.txt")).has_value());
}

TYPED_TEST(FileStoreContract, OnlyTimesThatAreKnownAreSet) {
    // 2005-03-14 and 2010-07-01.
    constexpr FileTimes both{127552320000000000, 129224160000000000};
    this->Make(L"a.txt", "a");
    this->store_.Mark(this->Path(L"a.txt"), both, 0);
    this->store_.Mark(this->Path(L"a.txt"), {0, both.created}, 0);
    const auto entry = this->store_.Look(this->Path(L"a.txt"));
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->times.created, both.created);
    EXPECT_EQ(entry->times.written, both.created);
}

TYPED_TEST(FileStoreContract, AttributesAreThoseThatWereGiven) {
    constexpr std::uint32_t readOnly = 1;
    constexpr std::uint32_t folder = 16;
    constexpr std::uint32_t archive = 32;
    constexpr FileTimes written{0, 127552320000000000};
    this->Make(L"a.txt", "a");
    const std::wstring path = this->Path(L"a.txt");
    this->store_.Mark(path, {}, folder | archive);
    EXPECT_FALSE(this->bench_.IsReadOnly(path));
    this->store_.Mark(path, written, readOnly | folder);
    EXPECT_TRUE(this->bench_.IsReadOnly(path));
    EXPECT_EQ(this->store_.Look(path)->times.written, written.written);
    EXPECT_FALSE(this->store_.Look(path)->isFolder);
    // Nobody may delete it otherwise.
    this->bench_.MakeWritable(path);
    EXPECT_FALSE(this->bench_.IsReadOnly(path));
}

TYPED_TEST(FileStoreContract, APathThatIsWholeStaysAsItIs) {
    EXPECT_EQ(this->store_.FullPath(this->Path(L"a.txt")), this->Path(L"a.txt"));
}

TYPED_TEST(FileStoreContract, ADiskHasRoom) {
    EXPECT_GT(this->store_.FreeBytes(this->bench_.root), 0u);
}

} // namespace
