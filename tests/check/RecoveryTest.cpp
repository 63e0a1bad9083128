// What a recovery does with an entry that the target does not take, and with a target that takes nothing any more.
#include "check/CheckWork.h"
#include "check/ZipBuilder.h"
#include "support/FakeFileStore.h"
#include "support/ReportTexts.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using What = FileFinding::What;

constexpr const char* Password = "Valcoreaux1";

/// A target on which one path fails, and from then on everything where it has gone.
class FaultyTarget final : public FakeFileStore {
  public:
    std::wstring faultyPath;
    ErrorNumber failure = ErrorNumber::PathFileAccessError;
    bool doesGo = false;
    std::wstring heldPath; ///< another program lets nobody read it

    std::unique_ptr<InputFile> Open(const std::wstring& path) const override {
        if (path == heldPath) throw RuntimeError(ErrorNumber::PermissionDenied);
        return FakeFileStore::Open(path);
    }
    std::unique_ptr<NewFile> CreateNew(const std::wstring& path) override {
        Meet(path);
        return FakeFileStore::CreateNew(path);
    }
    bool Rename(const std::wstring& path, const std::wstring& newPath) override {
        Meet(newPath);
        return FakeFileStore::Rename(path, newPath);
    }
    void MakeFolder(const std::wstring& path) override {
        Meet(path);
        FakeFileStore::MakeFolder(path);
    }
    void Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) override {
        ++marks;
        Meet(path);
        FakeFileStore::Mark(path, times, attributes);
    }
    int marks = 0;

  private:
    void Meet(const std::wstring& path) {
        hasGone_ = hasGone_ || (doesGo && path == faultyPath);
        if (hasGone_ || path == faultyPath) throw RuntimeError(failure);
    }
    bool hasGone_ = false;
};

/// An inner archive whose entries have these attributes of Windows, those of folders as well.
std::string WithAttributes(std::string zip, std::uint32_t attributes) {
    for (std::size_t record = zip.find("PK\1\2"); record != std::string::npos;
         record = zip.find("PK\1\2", record + 1)) {
        zip[record + 5] = 0;
        for (std::size_t byte = 0; byte < 4; ++byte)
            zip[record + 38 + byte] = static_cast<char>(attributes >> (8 * byte) & 0xFF);
    }
    return zip;
}

class RecoveryTest : public testing::Test {
  protected:
    BackupReport Recover(const std::vector<BuiltEntry>& first,
                         const std::vector<BuiltEntry>& second = {{"z.txt", "z"}}) {
        return RecoverFrom(BuildBackup({first, second}, Password));
    }
    BackupReport RecoverFrom(const std::string& archive) {
        files.Add(L"E:\\OKRBACKUP.ZIP", archive);
        files.Add(L"E:\\_listFich.lst", "C:\\Docs\\*.*,-1,Zip0001\r\nC:\\z.txt,32,Zip0002\r\n");
        CheckRequest request;
        request.place = L"E:\\";
        request.password = L"Valcoreaux1";
        request.target = L"D:\\Cible";
        return RunCheck(files, request, {});
    }
    std::vector<std::wstring> Recovered() const {
        std::vector<std::wstring> paths;
        for (const std::wstring& path : files.Paths()) {
            if (path.starts_with(L"D:\\")) paths.push_back(path.substr(9));
        }
        return paths;
    }
    static std::vector<std::pair<What, std::wstring>> FindingsOf(const ItemReport& item) {
        std::vector<std::pair<What, std::wstring>> findings;
        for (const FileFinding& finding : item.remarks->findings) findings.emplace_back(finding.what, finding.file);
        return findings;
    }

    FaultyTarget files;
};

TEST_F(RecoveryTest, TimesAndAttributesComeBack) {
    // What the entries are built with, since 1601.
    constexpr std::uint64_t saved = (1700000000ull + 11644473600ull) * 10000000;
    const std::string inner =
        WithAttributes(BuildZip({{"Docs/", ""}, {"Docs/a", "1"}, {"Docs/sub/", ""}, {"Docs/sub/b", "2"}}), 0x23);
    files.Add(L"D:\\Cible\\C\\Docs\\a", "1");
    EXPECT_EQ(RecoverFrom(BuildZip({{"Zip0001.zip", inner}, {"Zip0002.zip", BuildZip({{"z.txt", "z"}})}}, Password))
                  .ExitCode(),
              0);
    for (const wchar_t* path : {L"Docs", L"Docs\\a", L"Docs\\sub", L"Docs\\sub\\b"}) {
        const FakeFileStore::Kept* kept = files.Find(std::wstring(L"D:\\Cible\\C\\") + path);
        ASSERT_NE(kept, nullptr) << path;
        EXPECT_EQ(kept->times.written, saved) << path;
        EXPECT_EQ(kept->attributes, 0x23u) << path;
    }
    EXPECT_EQ(files.Find(L"D:\\Cible\\C\\z.txt")->times.written, saved);
    EXPECT_EQ(files.Find(L"D:\\Cible\\C\\z.txt")->attributes, 0u);
    EXPECT_EQ(files.Find(L"D:\\Cible\\C")->times.written, 0u) << "it was no part of the backup";
}

TEST_F(RecoveryTest, WithoutItsDirectoryAnItemsFilesHaveTheTimesOfTheEntries) {
    constexpr std::uint64_t saved = (1700000000ull + 11644473600ull) * 10000000;
    std::string inner = WithAttributes(BuildZip({{"Docs/a", "1"}}), 0x23);
    inner[inner.find("PK\1\2") + 3] = 'x';
    EXPECT_EQ(RecoverFrom(BuildZip({{"Zip0001.zip", inner}, {"Zip0002.zip", BuildZip({{"z.txt", "z"}})}}, Password))
                  .items[0]
                  .verdict,
              ItemVerdict::DirectoryDamaged);
    EXPECT_EQ(files.Find(L"D:\\Cible\\C\\Docs\\a")->times.written, saved);
    EXPECT_EQ(files.Find(L"D:\\Cible\\C\\Docs\\a")->attributes, 0u);
}

TEST_F(RecoveryTest, AFileWhereAFolderIsNeededIsToldAndTheRestComesBack) {
    const BackupReport report = Recover({{"Docs/a", "1"}, {"Docs/a/b", "2"}, {"Docs/a/c/", ""}, {"Docs/d", "4"}});
    EXPECT_EQ(report.verdict, Verdict::Faulty) << ReportJson(report);
    EXPECT_THAT(Recovered(), ElementsAre(L"C\\Docs\\a", L"C\\Docs\\d", L"C\\z.txt"));
    EXPECT_THAT(FindingsOf(report.items[0]), ElementsAre(std::pair(What::NotWritten, std::wstring(L"Docs/a/b")),
                                                         std::pair(What::NotWritten, std::wstring(L"Docs/a/c"))));
    EXPECT_EQ(report.items[0].recoveredFiles, 2u);
    EXPECT_EQ(report.items[1].recoveredFiles, 1u);
}

TEST_F(RecoveryTest, AFolderWhereAFileIsNeededGivesItANumber) {
    EXPECT_EQ(Recover({{"Docs/a/b", "2"}, {"Docs/a", "1"}}).ExitCode(), 0);
    EXPECT_THAT(Recovered(), ElementsAre(L"C\\Docs\\a (2)", L"C\\Docs\\a\\b", L"C\\z.txt"));
}

TEST_F(RecoveryTest, ATargetThatIsAFileIsRefused) {
    files.Add(L"D:\\Cible", "a file");
    EXPECT_EQ(Recover({{"Docs/a", "1"}}).verdict, Verdict::NotWritable);
}

TEST_F(RecoveryTest, AnEntryThatTheTargetDoesNotTakeIsToldWhateverStepFails) {
    for (const wchar_t* path :
         {L"D:\\Cible\\C\\Docs\\a.damaged", L"D:\\Cible\\C\\Docs\\a", L"D:\\Cible\\C\\Docs\\sub"}) {
        files = {};
        files.faultyPath = path;
        const BackupReport report = Recover({{"Docs/a", "1"}, {"Docs/b", "2"}, {"Docs/sub/c", "3"}});
        EXPECT_EQ(report.verdict, Verdict::Faulty);
        EXPECT_EQ(report.RecoveredFiles(), 3u);
        EXPECT_EQ(Recovered().size(), 3u) << "neither a trial nor half a file is left";
        EXPECT_EQ(FindingsOf(report.items[0]).size(), 1u);
        EXPECT_EQ(report.items[0].remarks->findings.at(0).at, 75u);
    }
}

TEST_F(RecoveryTest, AFileTooLargeForTheFileSystemIsNoFullDisk) {
    files.largestFileBytes = 1000;
    const BackupReport report = Recover({{"Docs/a", std::string(1001, 'a')}, {"Docs/b", "2"}});
    EXPECT_EQ(report.verdict, Verdict::Faulty);
    EXPECT_THAT(Recovered(), ElementsAre(L"C\\Docs\\b", L"C\\z.txt"));
    EXPECT_EQ(report.items[0].remarks->findings.at(0).at, static_cast<std::uint64_t>(ErrorNumber::Overflow));
}

TEST_F(RecoveryTest, ADiskThatFillsUpTellsHowLittleIsFree) {
    files.freeBytes = 5000;
    const BackupReport report = Recover({{"Docs/a", std::string(4000, 'a')}, {"Docs/b", std::string(4000, 'b')}});
    EXPECT_EQ(report.verdict, Verdict::NoRoom);
    EXPECT_EQ(report.freeBytes, 1000u);
    EXPECT_THAT(Recovered(), ElementsAre(L"C\\Docs\\a"));
}

TEST_F(RecoveryTest, ATargetThatGoesEndsTheWorkWhateverItAnswers) {
    for (const ErrorNumber failure :
         {ErrorNumber::PathNotFound, ErrorNumber::DiskNotReady, ErrorNumber::PermissionDenied}) {
        files = {};
        files.doesGo = true;
        files.failure = failure;
        files.faultyPath = L"D:\\Cible\\C\\z.txt.damaged";
        const BackupReport report = Recover({{"Docs/a", "1"}});
        EXPECT_EQ(report.verdict, Verdict::NotWritable);
        EXPECT_EQ(report.failure.value_or(RuntimeError(ErrorNumber::Overflow)).Number(),
                  static_cast<std::int32_t>(failure));
        EXPECT_THAT(Recovered(), ElementsAre(L"C\\Docs\\a"));
    }
}

TEST_F(RecoveryTest, ATimeThatTheTargetCannotKeepIsToldAndIsNoFault) {
    files.earliestTime = ~std::uint64_t{0};
    const BackupReport report = Recover({{"Docs/", ""}, {"Docs/a", "1"}, {"Docs/sub/b", "2"}});
    EXPECT_EQ(report.ExitCode(), 0) << ReportJson(report);
    EXPECT_EQ(report.RecoveredFiles(), 3u);
    EXPECT_THAT(FindingsOf(report.items[0]), ElementsAre(std::pair(What::NotMarked, std::wstring(L"Docs")),
                                                         std::pair(What::NotMarked, std::wstring(L"Docs/a")),
                                                         std::pair(What::NotMarked, std::wstring(L"Docs/sub/b"))));
    EXPECT_EQ(FindingsOf(report.items[1]).size(), 1u);
}

TEST_F(RecoveryTest, ATargetThatGoesWhileItIsMarkedEndsTheWork) {
    files.doesGo = true;
    files.failure = ErrorNumber::FileNotFound;
    files.faultyPath = L"D:\\Cible\\C\\z.txt";
    files.Add(files.faultyPath, "z");
    EXPECT_EQ(Recover({{"Docs/a", "1"}}).verdict, Verdict::NotWritable);
    EXPECT_EQ(files.marks, 2) << "and nothing behind it";
}

TEST_F(RecoveryTest, AFileThatAnotherProgramHoldsGetsANumberBesideIt) {
    files.heldPath = L"D:\\Cible\\C\\Docs\\a";
    files.Add(files.heldPath, "1");
    EXPECT_EQ(Recover({{"Docs/a", "1"}}).ExitCode(), 0);
    EXPECT_THAT(Recovered(), ElementsAre(L"C\\Docs\\a", L"C\\Docs\\a (2)", L"C\\z.txt"));
}

} // namespace
