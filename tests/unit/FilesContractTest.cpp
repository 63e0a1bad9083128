// What every implementation of Files does; run against the stand-in, and under Windows against the real one too.
#include "support/Failures.h"
#include "support/FakeFiles.h"

#include <gmock/gmock.h>

#ifdef _WIN32
#include "platform/windows/WindowsFiles.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#endif

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class FakeBench {
  public:
    FakeBench() { files_.AddFolder(root); }

    FakeFiles& Subject() { return files_; }
    void SetReadOnly(const std::wstring& path) { files_.SetReadOnly(path); }
    bool RefusesToOpenForWriting(const std::wstring&) const { return true; }

    const std::wstring root = L"C:\\Bench";

  private:
    FakeFiles files_;
};

#ifdef _WIN32
class WindowsBench {
  public:
    WindowsBench() { std::filesystem::create_directories(root); }

    ~WindowsBench() {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root, ignored)) {
            std::filesystem::permissions(entry.path(), std::filesystem::perms::owner_write,
                                         std::filesystem::perm_options::add, ignored);
        }
        std::filesystem::remove_all(root, ignored);
    }

    WindowsFiles& Subject() { return files_; }
    void SetReadOnly(const std::wstring& path) {
        std::filesystem::permissions(path,
                                     std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                                         std::filesystem::perms::others_write,
                                     std::filesystem::perm_options::remove);
    }
    bool RefusesToOpenForWriting(const std::wstring& path) const {
        return !std::ofstream(std::filesystem::path(path), std::ios::app).is_open();
    }

    const std::wstring root =
        (std::filesystem::temp_directory_path() / (L"FilesContract" + std::to_wstring(benches++))).wstring();

  private:
    static inline std::atomic<int> benches = 0;
    WindowsFiles files_;
};
using Benches = testing::Types<FakeBench, WindowsBench>;
#else
using Benches = testing::Types<FakeBench>;
#endif

template<typename Bench>
class FilesContract : public testing::Test {
  protected:
    std::wstring Path(const std::wstring& name) const { return bench_.root + L"\\" + name; }
    void Put(const std::wstring& name, std::string_view content) {
        const auto file = files_.Create(Path(name));
        file->Write(content);
        file->Close();
    }

    Bench bench_;
    Files& files_ = bench_.Subject();
};

TYPED_TEST_SUITE(FilesContract, Benches);

TYPED_TEST(FilesContract, WrittenBytesAreReadBack) {
    const std::string content("a\0b\r\n\xE9", 6);
    this->Put(L"a.txt", content);
    EXPECT_EQ(this->files_.Read(this->Path(L"a.txt")), content);
    EXPECT_EQ(this->files_.FileSize(this->Path(L"a.txt")), 6u);
}

TYPED_TEST(FilesContract, ManyWritesAreOneFile) {
    const auto file = this->files_.Create(this->Path(L"big"));
    const std::string piece(1000, 'x');
    for (int i = 0; i < 200; ++i) file->Write(piece);
    file->Write(std::string(100000, 'y'));
    file->Close();
    EXPECT_EQ(this->files_.Read(this->Path(L"big")), std::string(200000, 'x') + std::string(100000, 'y'));
}

TYPED_TEST(FilesContract, DestructionKeepsWhatWasWritten) {
    this->files_.Create(this->Path(L"a"))->Write("kept");
    EXPECT_EQ(this->files_.Read(this->Path(L"a")), "kept");
}

TYPED_TEST(FilesContract, CreateTruncates) {
    this->Put(L"a", "long content");
    this->Put(L"a", "");
    EXPECT_EQ(this->files_.FileSize(this->Path(L"a")), 0u);
}

TYPED_TEST(FilesContract, FileAndFolderAreToldApart) {
    this->Put(L"file", "");
    this->files_.CreateFolder(this->Path(L"folder"));
    EXPECT_TRUE(this->files_.FileExists(this->Path(L"file")));
    EXPECT_FALSE(this->files_.FolderExists(this->Path(L"file")));
    EXPECT_FALSE(this->files_.IsDirectory(this->Path(L"file")));
    EXPECT_FALSE(this->files_.FileExists(this->Path(L"folder")));
    EXPECT_TRUE(this->files_.FolderExists(this->Path(L"folder")));
    EXPECT_TRUE(this->files_.IsDirectory(this->Path(L"folder")));
    EXPECT_TRUE(this->files_.FolderExists(this->Path(L"folder\\")));
    EXPECT_TRUE(this->files_.IsDirectory(this->Path(L"folder\\")));
    EXPECT_FALSE(this->files_.FileExists(this->Path(L"file\\")));
}

TYPED_TEST(FilesContract, NothingExistsWhereNothingIs) {
    EXPECT_FALSE(this->files_.FileExists(this->Path(L"none")));
    EXPECT_FALSE(this->files_.FolderExists(this->Path(L"none")));
    EXPECT_FALSE(this->files_.IsDirectory(this->Path(L"none")));
    EXPECT_FALSE(this->files_.FileExists(L""));
    EXPECT_FALSE(this->files_.FolderExists(L""));
}

TYPED_TEST(FilesContract, NamesIgnoreCase) {
    this->Put(L"Été.txt", "1");
    EXPECT_TRUE(this->files_.FileExists(this->Path(L"ÉTÉ.TXT")));
    this->Put(L"été.TXT", "22");
    EXPECT_THAT(this->files_.Contents(this->bench_.root).files, testing::SizeIs(1));
}

TYPED_TEST(FilesContract, MissingFileIsError53) {
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Read(this->Path(L"none")); }), 53);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.FileSize(this->Path(L"none")); }), 53);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Delete(this->Path(L"none")); }), 53);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Flush(this->Path(L"none")); }), 53);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Copy(this->Path(L"none"), this->Path(L"b")); }), 53);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Rename(this->Path(L"none"), this->Path(L"b")); }), 53);
}

TYPED_TEST(FilesContract, MissingFolderIsError76) {
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Read(this->Path(L"none\\a")); }), 76);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.FileSize(this->Path(L"none\\a")); }), 76);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Create(this->Path(L"none\\a")); }), 76);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Contents(this->Path(L"none")); }), 76);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.CreateFolder(this->Path(L"none\\a")); }), 76);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.DeleteFolder(this->Path(L"none")); }), 76);
    this->Put(L"a", "");
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Copy(this->Path(L"a"), this->Path(L"none\\a")); }), 76);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Rename(this->Path(L"a"), this->Path(L"none\\a")); }), 76);
}

TYPED_TEST(FilesContract, AFolderHasNoFileSize) {
    EXPECT_EQ(NumberThrownBy([&] { this->files_.FileSize(this->bench_.root); }), 53);
}

TYPED_TEST(FilesContract, CreatingAFolderThatIsThereIsError75) {
    EXPECT_EQ(NumberThrownBy([&] { this->files_.CreateFolder(this->bench_.root); }), 75);
}

TYPED_TEST(FilesContract, ContentsAreTheDirectEntries) {
    this->Put(L"b.txt", "");
    for (const wchar_t* name : {L".hidden", L"..b", L"...c"}) this->Put(name, "");
    this->files_.CreateFolder(this->Path(L"sub"));
    this->Put(L"sub\\deep", "");
    const FolderContents contents = this->files_.Contents(this->bench_.root);
    EXPECT_THAT(contents.files, UnorderedElementsAre(L"b.txt", L".hidden", L"..b", L"...c"));
    EXPECT_THAT(contents.folders, ElementsAre(L"sub"));
    EXPECT_THAT(this->files_.Contents(this->Path(L"sub\\")).files, ElementsAre(L"deep"));
}

TYPED_TEST(FilesContract, FindMatchesFilesAndFolders) {
    this->Put(L"Rep1.txt", "");
    this->files_.CreateFolder(this->Path(L"reports"));
    this->Put(L"other", "");
    EXPECT_THAT(this->files_.Find(this->Path(L"Rep*")), UnorderedElementsAre(L"Rep1.txt", L"reports"));
    EXPECT_THAT(this->files_.Find(this->Path(L"*.*")), UnorderedElementsAre(L"Rep1.txt", L"reports", L"other"));
    EXPECT_THAT(this->files_.Find(this->Path(L"*.txt")), ElementsAre(L"Rep1.txt"));
    EXPECT_THAT(this->files_.Find(this->Path(L"z*")), IsEmpty());
    EXPECT_THAT(this->files_.Find(this->Path(L"none\\*")), IsEmpty());
}

TYPED_TEST(FilesContract, MeasureCountsAllLevelsButNotLeadingDots) {
    this->Put(L"a", "12345");
    this->Put(L".dot", "123");
    this->files_.CreateFolder(this->Path(L"sub"));
    this->Put(L"sub\\b", "1234567");
    this->files_.CreateFolder(this->Path(L"sub\\.git"));
    this->Put(L"sub\\.git\\c", "1");
    this->files_.CreateFolder(this->Path(L"empty"));
    for (const wchar_t* end : {L"", L"\\"}) {
        const FolderMeasure measure = this->files_.Measure(this->bench_.root + end);
        EXPECT_EQ(measure.fileCount, 2u);
        EXPECT_EQ(measure.sizeBytes, 12u);
    }
}

TYPED_TEST(FilesContract, MissingFolderMeasuresZero) {
    const FolderMeasure measure = this->files_.Measure(this->Path(L"none"));
    EXPECT_EQ(measure.fileCount, 0u);
    EXPECT_EQ(measure.sizeBytes, 0u);
}

TYPED_TEST(FilesContract, CopyReplacesTheTarget) {
    this->Put(L"a", "new");
    this->Put(L"b", "much older");
    this->files_.Copy(this->Path(L"a"), this->Path(L"b"));
    EXPECT_EQ(this->files_.Read(this->Path(L"b")), "new");
    EXPECT_EQ(this->files_.Read(this->Path(L"a")), "new");
}

TYPED_TEST(FilesContract, CopyThatFailsLeavesTheTargetAsItWas) {
    this->Put(L"a", "new");
    this->files_.CreateFolder(this->Path(L"taken"));
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Copy(this->Path(L"a"), this->Path(L"taken")); }), 70);
    EXPECT_TRUE(this->files_.FolderExists(this->Path(L"taken")));
    this->Put(L"b", "older");
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Copy(this->Path(L"none"), this->Path(L"b")); }), 53);
    EXPECT_EQ(this->files_.Read(this->Path(L"b")), "older");
    EXPECT_THAT(this->files_.Contents(this->bench_.root).files, UnorderedElementsAre(L"a", L"b"));
}

TYPED_TEST(FilesContract, FlushLeavesTheFileAsItIs) {
    this->Put(L"a", "1");
    this->files_.Flush(this->Path(L"a"));
    EXPECT_EQ(this->files_.Read(this->Path(L"a")), "1");
}

TYPED_TEST(FilesContract, RenamingKeepsTheContentUnderTheNewName) {
    this->Put(L"a", "1");
    this->files_.Rename(this->Path(L"a"), this->Path(L"b.~new"));
    EXPECT_EQ(this->files_.Read(this->Path(L"b.~new")), "1");
    EXPECT_FALSE(this->files_.FileExists(this->Path(L"a")));
}

TYPED_TEST(FilesContract, RenamingToATakenNameIsError75AndMovesNothing) {
    this->Put(L"a", "1");
    this->Put(L"b", "2");
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Rename(this->Path(L"a"), this->Path(L"b")); }), 75);
    EXPECT_EQ(this->files_.Read(this->Path(L"a")), "1");
    EXPECT_EQ(this->files_.Read(this->Path(L"b")), "2");
}

TYPED_TEST(FilesContract, AReadOnlyFileCanBeRenamedButNotDeleted) {
    this->Put(L"locked", "2");
    this->bench_.SetReadOnly(this->Path(L"locked"));
    this->files_.Rename(this->Path(L"locked"), this->Path(L"moved"));
    EXPECT_EQ(this->files_.Read(this->Path(L"moved")), "2");
    EXPECT_EQ(NumberThrownBy([&] { this->files_.RequireDeletable(this->Path(L"moved")); }), 70);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Delete(this->Path(L"moved")); }), 70);
}

TYPED_TEST(FilesContract, WhatCanBeDeletedAndWhatIsNotThereIsDeletable) {
    this->Put(L"a", "1");
    EXPECT_EQ(NumberThrownBy([&] { this->files_.RequireDeletable(this->Path(L"a")); }), 0);
    EXPECT_EQ(this->files_.Read(this->Path(L"a")), "1");
    EXPECT_EQ(NumberThrownBy([&] { this->files_.RequireDeletable(this->Path(L"none")); }), 0);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.RequireDeletable(this->Path(L"none\\a")); }), 0);
}

TYPED_TEST(FilesContract, DeletingAReadOnlyFileIsError70) {
    this->Put(L"locked", "2");
    this->bench_.SetReadOnly(this->Path(L"locked"));
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Delete(this->Path(L"locked")); }), 70);
    EXPECT_EQ(this->files_.Read(this->Path(L"locked")), "2");
}

TYPED_TEST(FilesContract, WritingOverAReadOnlyFileIsError70) {
    this->Put(L"a", "1");
    this->Put(L"locked", "2");
    this->bench_.SetReadOnly(this->Path(L"locked"));
    if (!this->bench_.RefusesToOpenForWriting(this->Path(L"locked"))) {
        GTEST_SKIP() << "this account may write to read-only files (Wine run by root)";
    }
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Create(this->Path(L"locked")); }), 70);
    EXPECT_EQ(NumberThrownBy([&] { this->files_.Copy(this->Path(L"a"), this->Path(L"locked")); }), 70);
    EXPECT_EQ(this->files_.Read(this->Path(L"locked")), "2");
}

TYPED_TEST(FilesContract, DeleteFolderTakesAllBelow) {
    this->files_.CreateFolder(this->Path(L"f"));
    this->files_.CreateFolder(this->Path(L"f\\g"));
    this->Put(L"f\\g\\a", "1");
    this->Put(L"f\\b", "1");
    this->Put(L"fb", "beside");
    this->files_.DeleteFolder(this->Path(L"f"));
    EXPECT_FALSE(this->files_.FolderExists(this->Path(L"f")));
    EXPECT_TRUE(this->files_.FileExists(this->Path(L"fb")));
}

TYPED_TEST(FilesContract, DeleteFolderStopsAtAReadOnlyFile) {
    this->files_.CreateFolder(this->Path(L"f"));
    this->Put(L"f\\locked", "1");
    this->bench_.SetReadOnly(this->Path(L"f\\locked"));
    EXPECT_EQ(NumberThrownBy([&] { this->files_.DeleteFolder(this->Path(L"f")); }), 70);
    EXPECT_TRUE(this->files_.FileExists(this->Path(L"f\\locked")));
}

TYPED_TEST(FilesContract, PathsOf250CharactersAreOrdinary) {
    std::wstring name(250 - this->bench_.root.size() - 1, L'n');
    this->Put(name, "1");
    EXPECT_EQ(this->Path(name).size(), 250u);
    EXPECT_TRUE(this->files_.FileExists(this->Path(name)));
    EXPECT_EQ(this->files_.Read(this->Path(name)), "1");
    this->files_.Copy(this->Path(name), this->Path(L"b"));
    EXPECT_EQ(this->files_.Measure(this->bench_.root).sizeBytes, 2u);
    this->files_.Delete(this->Path(name));
    EXPECT_FALSE(this->files_.FileExists(this->Path(name)));
}

TYPED_TEST(FilesContract, MeasureReachesBelowTheLongestPlainPath) {
    std::wstring folder = L"deep";
    this->files_.CreateFolder(this->Path(folder));
    for (int level = 0; level < 5; ++level) {
        folder += L"\\" + std::wstring(60, L'd');
        this->files_.CreateFolder(this->Path(folder));
    }
    this->Put(folder + L"\\a", "123");
    EXPECT_GT(this->Path(folder).size(), 260u);
    EXPECT_EQ(this->files_.Measure(this->bench_.root).sizeBytes, 3u);
    this->files_.DeleteFolder(this->Path(L"deep"));
    EXPECT_FALSE(this->files_.FolderExists(this->Path(L"deep")));
}

TEST(FakeFiles, FailsAsTold) {
    FakeFiles files;
    files.AddFile(L"C:\\Data\\denied", "1");
    files.AddFile(L"C:\\Data\\open", "22");
    files.Deny(L"C:\\Data\\denied");
    EXPECT_EQ(NumberThrownBy([&] { files.Read(L"C:\\Data\\denied"); }), 70);
    files.AddFile(L"C:\\Closed\\a", "333");
    files.Deny(L"C:\\Closed");
    EXPECT_EQ(files.Measure(L"C:\\Closed").sizeBytes, 0u);
}

TEST(FakeFiles, AFullDriveIsError61) {
    FakeFiles files;
    files.AddFolder(L"E:\\");
    files.SetFreeBytes(L"E:", 7);
    files.AddSizedFile(L"C:\\big", 11);
    files.AddFile(L"E:\\big", "old");
    EXPECT_EQ(NumberThrownBy([&] { files.Copy(L"C:\\big", L"E:\\big"); }), 61);
    EXPECT_EQ(files.Read(L"E:\\big"), "old") << "a copy that fails must not take what was there";
    files.Delete(L"E:\\big");
    const auto file = files.Create(L"E:\\small");
    file->Write("0123456789");
    EXPECT_EQ(NumberThrownBy([&] { file->Write("x"); }), 61);
    files.Delete(L"E:\\small");
    EXPECT_EQ(NumberThrownBy([&] { files.Create(L"E:\\again")->Write("0123456789"); }), 0);
}

} // namespace
