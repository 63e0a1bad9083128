// The directory of an archive of many entries, as the library is given it.
#include "check/DirectoryParts.h"

#include "check/BackupWalk.h"
#include "check/CheckWork.h"
#include "check/ZipBuilder.h"
#include "support/FakeFileStore.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const wchar_t* Archive = L"E:\\OKRBACKUP.ZIP";
constexpr std::string_view RecordSign("PK\1\2", 4);

std::string NumberedZip(int count) {
    std::vector<BuiltEntry> entries;
    for (int number = 1; number <= count; ++number)
        entries.push_back({"n" + std::to_string(number), std::string(static_cast<std::size_t>(number), 'x')});
    return BuildZip(entries);
}

class DirectoryPartsTest : public testing::Test {
  protected:
    DirectoryParts Parts(const std::string& zip, std::uint64_t mostRecords) {
        files.Add(Archive, zip);
        file = files.Open(Archive);
        return DirectoryParts(*file, {}, mostRecords);
    }

    /// The names that the library finds by a part, each with how much it has read.
    std::vector<std::string> NamesBy(const DirectoryParts& parts, std::size_t part) {
        MediumSource medium(*file, 1000);
        PartSource source(medium, parts.All().front().place, parts.All().at(part));
        ZipReader reader(source, ZipReader::Way::ByDirectory, {});
        std::vector<std::string> names;
        ZipEntry entry;
        ZipStep step = reader.Next(entry);
        for (; step == ZipStep::Ok; step = reader.Next(entry)) {
            std::size_t length = 0;
            std::string_view bytes;
            while (reader.Read(bytes) == ZipStep::Ok) length += bytes.size();
            names.push_back(std::string(entry.name.begin(), entry.name.end()) + ":" + std::to_string(length));
        }
        EXPECT_EQ(step, ZipStep::End) << reader.Reason();
        return names;
    }

    FakeFileStore files;
    std::unique_ptr<InputFile> file;
};

TEST_F(DirectoryPartsTest, EachPartLeadsToItsEntriesAndToNoOther) {
    const DirectoryParts parts = Parts(NumberedZip(7), 3);
    ASSERT_THAT(parts.All(), SizeIs(3));
    EXPECT_THAT(NamesBy(parts, 0), ElementsAre("n1:1", "n2:2", "n3:3"));
    EXPECT_THAT(NamesBy(parts, 1), ElementsAre("n4:4", "n5:5", "n6:6"));
    EXPECT_THAT(NamesBy(parts, 2), ElementsAre("n7:7"));
}

TEST_F(DirectoryPartsTest, ASmallDirectoryIsNotParted) {
    EXPECT_THAT(Parts(NumberedZip(3), 3).All(), IsEmpty());
    EXPECT_THAT(Parts("", 3).All(), IsEmpty());
    EXPECT_THAT(Parts("no archive", 3).All(), IsEmpty());
}

TEST_F(DirectoryPartsTest, TheLongestRemarkBehindADirectoryDoesNotHideIt) {
    std::string zip = NumberedZip(7);
    zip.replace(zip.size() - 2, 2, "\xFF\xFF");
    zip.append(65535, 'r');
    EXPECT_THAT(Parts(zip, 3).All(), SizeIs(3));
}

TEST_F(DirectoryPartsTest, OneThatIsNotAsItSaysIsNotParted) {
    const std::string good = NumberedZip(7);
    ASSERT_THAT(Parts(good, 3).All(), SizeIs(3));
    EXPECT_THAT(Parts("before" + good, 3).All(), IsEmpty()) << "it stands elsewhere";
    std::string broken = good;
    broken[broken.rfind(RecordSign)] = 'p';
    EXPECT_THAT(Parts(broken, 3).All(), IsEmpty());
    // The second entry's place, of four bytes, is the first one's.
    std::string disordered = good;
    const std::size_t first = disordered.find(RecordSign);
    const std::size_t second = disordered.find(RecordSign, first + 1);
    disordered.replace(second + 42, 4, disordered.substr(first + 42, 4));
    EXPECT_THAT(Parts(disordered, 3).All(), IsEmpty());
}

TEST_F(DirectoryPartsTest, ABackupOfManyItemsIsCheckedByItsParts) {
    constexpr int count = 2 * static_cast<int>(DirectoryParts::MostRecords) + 5;
    std::string list;
    std::vector<std::vector<BuiltEntry>> items;
    for (int number = 1; number <= count; ++number) {
        items.push_back({{"a.txt", "a"}});
        const std::string digits = std::to_string(number);
        list.append("C:\\").append(digits).append("\\a.txt,32,Zip");
        list.append(4 - digits.size(), '0').append(digits).append("\r\n");
    }
    std::string archive = BuildBackup(items, "Valcoreaux1");
    files.Add(L"E:\\_listFich.lst", list);
    files.Add(Archive, archive);
    CheckRequest request;
    request.place = L"E:\\";
    request.password = L"Valcoreaux1";
    BackupReport report = RunCheck(files, request, {});
    EXPECT_EQ(report.verdict, Verdict::Good);
    EXPECT_EQ(report.Files(), static_cast<std::uint64_t>(count));
    ASSERT_THAT(report.items, SizeIs(static_cast<std::size_t>(count)));
    EXPECT_EQ(report.items.back().archive, L"Zip" + std::to_wstring(count));
    // A size in the middle of the directory is another than the entry has.
    std::size_t record = archive.find(RecordSign);
    for (int number = 1; number < count / 2; ++number) record = archive.find(RecordSign, record + 1);
    archive[record + 24] = static_cast<char>(archive[record + 24] + 1);
    files.Add(Archive, archive);
    report = RunCheck(files, request, {});
    EXPECT_EQ(report.verdict, Verdict::Faulty);
    ASSERT_THAT(report.items, SizeIs(static_cast<std::size_t>(count))) << "nothing is met twice";
    EXPECT_EQ(report.items[static_cast<std::size_t>(count) / 2 + 10].verdict, ItemVerdict::Whole);
}

} // namespace
