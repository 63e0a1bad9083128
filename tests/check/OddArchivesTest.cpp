// Archives of sorts that a backup may come in, put together byte by byte.
#include "check/BackupList.h"
#include "check/CheckWork.h"
#include "check/ZipBuilder.h"
#include "support/FakeFileStore.h"
#include "support/ReportTexts.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* Password = "Valcoreaux1";

std::string Bytes(std::uint64_t value, std::size_t count) {
    std::string bytes;
    for (; count > 0; --count, value >>= 8) bytes += static_cast<char>(value & 0xFF);
    return bytes;
}

std::string Replaced(std::string text, const std::string& part, const std::string& other) {
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += other.size())
        text.replace(at, part.size(), other);
    return text;
}

/// The archive with the records that one beyond 4 GiB has at its end.
std::string WithLargeEnd(std::string archive) {
    using namespace std::string_literals;
    const std::size_t end = archive.rfind("PK\5\6");
    const std::string size = archive.substr(end + 12, 4) + Bytes(0, 4);
    const std::string place = archive.substr(end + 16, 4) + Bytes(0, 4);
    const std::string count = archive.substr(end + 10, 2) + Bytes(0, 6);
    const std::string largeEnd =
        "PK\6\6"s + Bytes(44, 8) + Bytes(45, 2) + Bytes(45, 2) + Bytes(0, 8) + count + count + size + place;
    archive.insert(end, largeEnd + "PK\6\7"s + Bytes(0, 4) + Bytes(end, 8) + Bytes(1, 4));
    return archive;
}

class OddArchives : public testing::Test {
  protected:
    OddArchives() {
        request.place = L"E:\\";
        request.password = L"Valcoreaux1";
        files.Add(L"E:\\_listFich.lst", "C:\\Docs\\\xE9\xE9.txt,32,Zip0001\r\n");
    }
    BackupReport Check(const std::string& archive) {
        files.Add(L"E:\\OKRBACKUP.ZIP", archive);
        return RunCheck(files, request, {});
    }

    FakeFileStore files;
    CheckRequest request;
};

} // namespace

TEST_F(OddArchives, NamesInTheCodePageOfConsolesComeBack) {
    const std::string inner = Replaced(BuildZip({{"QQ.txt", "premier"}}), "QQ", "\x82\x82");
    request.target = L"D:\\Cible";
    const BackupReport report = Check(BuildZip({{"Zip0001.zip", inner}}, Password));
    EXPECT_EQ(report.verdict, Verdict::Good) << ReportJson(report);
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\\u00E9\u00E9.txt"), "premier");
}

TEST_F(OddArchives, TheDirectoryOfALargeArchiveIsFound) {
    const std::string archive = BuildBackup({{{"\xC3\xA9\xC3\xA9.txt", "premier"}}}, Password);
    EXPECT_EQ(Check(archive).verdict, Verdict::Good);
    const BackupReport report = Check(WithLargeEnd(archive));
    EXPECT_EQ(report.verdict, Verdict::Good) << ReportJson(report);
}

TEST_F(OddArchives, AnArchiveWithoutAPasswordNeedsNone) {
    const BackupReport report = Check(BuildZip({{"Zip0001.zip", BuildZip({{"\xC3\xA9\xC3\xA9.txt", "premier"}})}}));
    EXPECT_EQ(report.verdict, Verdict::Good) << ReportJson(report);
    EXPECT_FALSE(report.isEncrypted);
    EXPECT_TRUE(Check(BuildBackup({{{"\xC3\xA9\xC3\xA9.txt", "premier"}}}, Password)).isEncrypted);
}

TEST_F(OddArchives, AnItemOfOneByteIsCutAndAnItemOfNoneIsEmpty) {
    files.Add(L"E:\\_listFich.lst", "C:\\a.txt,32,Zip0001\r\nC:\\b.txt,32,Zip0002\r\nC:\\c.txt,32,Zip0003\r\n");
    const std::string whole = BuildZip({{"a.txt", "premier"}});
    const BackupReport report =
        Check(BuildZip({{"Zip0001.zip", whole}, {"Zip0002.zip", "P"}, {"Zip0003.zip", ""}}, Password));
    ASSERT_EQ(report.items.size(), 3u);
    EXPECT_EQ(report.items[0].verdict, ItemVerdict::Whole);
    EXPECT_EQ(report.items[1].verdict, ItemVerdict::Cut);
    EXPECT_EQ(report.items[2].verdict, ItemVerdict::Empty);
}

TEST(ListedNames, AQuestionMarkMeansALetterThatTheListLost) {
    EXPECT_TRUE(IsNameMeant(L"?t?.txt", L"\u00E9t\u00E9.txt"));
    EXPECT_TRUE(IsNameMeant(L"L?d\u00E9.txt", L"l\u0142d\u00E9.TXT"));
    EXPECT_FALSE(IsNameMeant(L"?t?.txt", L"ete.txt"));
    EXPECT_FALSE(IsNameMeant(L"?t?.txt2", L"\u00E9t\u00E9.txt"));
    EXPECT_FALSE(IsNameMeant(L"?t?.tx", L"\u00E9t\u00E9.txt"));
    EXPECT_FALSE(IsNameMeant(L"", L"a"));
}
