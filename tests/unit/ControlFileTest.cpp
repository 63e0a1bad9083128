#include "archive/ControlFile.h"
#include "archive/clsListe.h"
#include "core/ArchiveValues.h"
#include "selection/clsColFileInfo.h"
#include "support/Failures.h"
#include "support/FakeMachine.h"
#include "support/FakeProgressBar.h"
#include "support/ProcessorTime.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

#include <random>

namespace {

using Records = std::vector<ControlFileRecord>;

constexpr const wchar_t* Profile = L"C:\\Users\\agent";
constexpr const wchar_t* WrittenPath = L"C:\\Temp\\_listFich.lst";

Records Read(std::string_view bytes) {
    Records records;
    ReadControlFile(bytes, Profile, records);
    return records;
}

std::vector<std::wstring> PathsOf(const Records& records) {
    std::vector<std::wstring> paths;
    for (const ControlFileRecord& record : records) paths.push_back(record.restorePath);
    return paths;
}

class ControlFileWriting : public testing::Test {
  protected:
    ControlFileWriting() {
        machine.environment.Set(L"Temp", L"C:\\Temp");
        machine.files.AddFolder(L"C:\\Temp");
    }

    std::string Written() {
        clsListe(machine.app).EnregistrerListeFichiers(items, progress);
        return machine.files.Read(WrittenPath);
    }

    FakeMachine machine;
    clsColFileInfo items{machine.app};
    FakeProgressBar progress;
};

TEST_F(ControlFileWriting, LineHoldsPathKindAndInnerArchive) {
    items.Add(L"C:\\Users\\agent\\Mes documents\\budget.xls", KindFile);
    items.Add(L"C:\\Program Files\\Outil\\Donnees", KindFolder);
    items.Add(L"D:\\Dossiers\\Clients", 16);
    EXPECT_EQ(Written(), "**UserProfile**\\Mes documents\\budget.xls,32,Zip0001\r\n"
                         "C:\\Program Files\\Outil\\Donnees\\*.*,-1,Zip0002\r\n"
                         "D:\\Dossiers\\Clients,16,D:\\Dossiers\\Clients\r\n");
}

TEST_F(ControlFileWriting, EmptySelectionGivesAnEmptyFileAndLeavesTheBarAtZero) {
    progress.value = 42;
    EXPECT_EQ(Written(), "");
    EXPECT_EQ(progress.value, 0);
    EXPECT_EQ(machine.app.archive->listFilePath, WrittenPath);
}

TEST_F(ControlFileWriting, CommaInAPathIsWrittenUnquoted) {
    items.Add(L"C:\\a, b\\c.txt", KindFile);
    EXPECT_EQ(Written(), "C:\\a, b\\c.txt,32,Zip0001\r\n");
}

TEST_F(ControlFileWriting, OnlyKind16CarriesItsOwnPathAsTheThirdField) {
    items.Add(L"C:\\Users\\agent\\Clients", 16);
    items.Add(L"C:\\Data", KindFolder);
    items.Add(L"C:\\a.txt", KindFile);
    EXPECT_EQ(Written(), "**UserProfile**\\Clients,16,**UserProfile**\\Clients\r\n"
                         "C:\\Data\\*.*,-1,Zip0002\r\n"
                         "C:\\a.txt,32,Zip0003\r\n");
    EXPECT_EQ(items.Item(1)->strNomUnique, L"Zip0001");
}

TEST_F(ControlFileWriting, FolderThatAlreadyEndsInAllFilesIsNotExtendedAgain) {
    items.Add(L"C:\\Data\\*.*", KindFolder);
    EXPECT_EQ(Written(), "C:\\Data\\*.*,-1,Zip0001\r\n");
}

TEST_F(ControlFileWriting, FolderThatContainsAllFilesAnywhereIsNotExtended) {
    items.Add(L"C:\\Data\\*.*\\sous", KindFolder);
    EXPECT_EQ(Written(), "C:\\Data\\*.*\\sous,-1,Zip0001\r\n");
}

TEST_F(ControlFileWriting, EveryOccurrenceOfTheProfileIsReplacedCaseForCase) {
    items.Add(L"C:\\Users\\agent\\x\\C:\\Users\\agent\\y", KindFile);
    items.Add(L"c:\\users\\agent\\x", KindFile);
    EXPECT_EQ(Written(), "**UserProfile**\\x\\**UserProfile**\\y,32,Zip0001\r\n"
                         "c:\\users\\agent\\x,32,Zip0002\r\n");
}

TEST_F(ControlFileWriting, EveryItemIsGivenTheNameOfItsInnerArchive) {
    items.Add(L"C:\\a", KindFile);
    items.Add(L"C:\\b", KindFolder);
    Written();
    EXPECT_EQ(items.Item(1)->strNomUnique, L"Zip0001");
    EXPECT_EQ(items.Item(2)->strNomUnique, L"Zip0002");
}

TEST_F(ControlFileWriting, PositionsAbove9999GiveFiveDigits) {
    EXPECT_EQ(InnerArchiveName(1), L"Zip0001");
    EXPECT_EQ(InnerArchiveName(9999), L"Zip9999");
    EXPECT_EQ(InnerArchiveName(10000), L"Zip10000");
}

TEST_F(ControlFileWriting, BarFollowsTheItemsAndGetsItsBoundsBack) {
    items.Add(L"C:\\a", KindFile);
    items.Add(L"C:\\b", KindFile);
    progress.min = 5;
    progress.max = 50;
    Written();
    EXPECT_EQ(progress.values, (std::vector<std::int32_t>{1, 2, 0}));
    EXPECT_EQ(progress.ranges, (std::vector<std::pair<std::int32_t, std::int32_t>>{{0, 2}, {5, 50}}));
}

TEST_F(ControlFileWriting, PointerIsTheHourglassMeanwhile) {
    Written();
    EXPECT_EQ(machine.messageLoop.pointers, (std::vector{Pointer::Hourglass, Pointer::Default}));
}

TEST_F(ControlFileWriting, AccentsAreWrittenInTheSystemsCodePage) {
    items.Add(L"C:\\Été.txt", KindFile);
    EXPECT_EQ(Written(), "C:\\\xC9t\xE9.txt,32,Zip0001\r\n");
}

TEST_F(ControlFileWriting, FullDiskIsReportedUnderItsLabelAndNamesNoFile) {
    machine.app.archive->listFilePath = L"C:\\Temp\\old.lst";
    machine.files.SetFreeBytes(L"C:", 10);
    items.Add(L"C:\\a.txt", KindFile);
    clsListe(machine.app).EnregistrerListeFichiers(items, progress);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 61 (Disk full) dans la procédure EnregistrerListeFichiers, module frmBackupCD"),
              std::wstring::npos);
    EXPECT_EQ(machine.app.archive->listFilePath, L"");
}

TEST(ControlFile, LineGivesPathKindAndInnerArchive) {
    const Records records = Read("**UserProfile**\\a.txt,32,Zip0001\r\nC:\\Data\\*.*,-1,Zip0002\r\n");
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].restorePath, L"C:\\Users\\agent\\a.txt");
    EXPECT_EQ(records[0].kind, L"32");
    EXPECT_EQ(records[0].innerArchive, L"Zip0001");
    EXPECT_EQ(records[1].restorePath, L"C:\\Data\\*.*");
    EXPECT_EQ(records[1].kind, L"-1");
    EXPECT_EQ(records[1].innerArchive, L"Zip0002");
}

TEST(ControlFile, EmptyFileHoldsNoRecord) {
    EXPECT_TRUE(Read("").empty());
}

TEST(ControlFile, CommaSpoilsItsOwnRowOnly) {
    const Records records = Read("C:\\a,32,Zip0001\r\nC:\\b,c.txt,32,Zip0002\r\nC:\\d,-1,Zip0003\r\n");
    ASSERT_EQ(PathsOf(records), (std::vector<std::wstring>{L"C:\\a", L"C:\\b", L"C:\\d"}));
    EXPECT_EQ(records[1].kind, L"c.txt");
    EXPECT_EQ(records[1].innerArchive, L"32");
    EXPECT_EQ(records[2].kind, L"-1");
    EXPECT_EQ(records[2].innerArchive, L"Zip0003");
}

TEST(ControlFile, CommaInTheFirstPathSelectsTheOlderForm) {
    const Records records = Read("C:\\a,b.txt,32,Zip0001\r\nC:\\c,32,Zip0002\r\n");
    ASSERT_EQ(PathsOf(records), (std::vector<std::wstring>{L"C:\\a", L"C:\\c"}));
    EXPECT_EQ(records[0].kind, L"b.txt");
    EXPECT_EQ(records[1].innerArchive, L"C:\\c");
}

TEST(ControlFile, FirstLineWithOneCommaSelectsTheOlderFormForEveryLine) {
    const Records records = Read("C:\\a,32\r\nC:\\b,32,Zip0002\r\n");
    EXPECT_EQ(PathsOf(records), (std::vector<std::wstring>{L"C:\\a", L"C:\\b"}));
    EXPECT_EQ(records[0].innerArchive, L"C:\\a");
    EXPECT_EQ(records[1].innerArchive, L"C:\\b");
}

TEST(ControlFile, OlderFormTakesThePathAsItsInnerArchive) {
    const Records records = Read("**UserProfile**\\a.pst,32\r\n");
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].innerArchive, L"C:\\Users\\agent\\a.pst");
}

TEST(ControlFile, MailStoreIsRestoredToAFolderOfItsOwn) {
    EXPECT_EQ(PathsOf(Read("C:\\Donnees\\archive.pst,32,Zip0001\r\nC:\\Donnees\\b.PST,32,Zip0002\r\n")),
              (std::vector<std::wstring>{L"c:\\ValcoreauxTechno\\OutlookBK\\archive.pst", L"C:\\Donnees\\b.PST"}));
}

TEST(ControlFile, RecordWithoutAPathIsSkipped) {
    EXPECT_EQ(PathsOf(Read("C:\\a,32,Zip0001\r\n,32,Zip0002\r\nC:\\c,32,Zip0003\r\n")),
              (std::vector<std::wstring>{L"C:\\a", L"C:\\c"}));
}

TEST(ControlFile, LineWithoutAPathIsSkipped) {
    for (const char* line : {"", "  ", ",", ",32", "\"\",32,Zip0002"}) {
        Records records;
        const std::string bytes = "C:\\a,32,Zip0001\r\n" + std::string(line) + "\r\nC:\\c,32,Zip0003\r\n";
        EXPECT_EQ(NumberThrownBy([&] { ReadControlFile(bytes, Profile, records); }), 0) << line;
        EXPECT_EQ(PathsOf(records), (std::vector<std::wstring>{L"C:\\a", L"C:\\c"})) << line;
    }
}

TEST(ControlFile, LineWithTooFewFieldsGivesWhatItHasAndFailsWith62AfterAllLines) {
    Records records;
    const char* bytes = "C:\\a,32,Zip0001\r\nC:\\b,32\r\nC:\\c\r\nC:\\d,32,Zip0004\r\n";
    EXPECT_EQ(NumberThrownBy([&] { ReadControlFile(bytes, Profile, records); }), 62);
    ASSERT_EQ(PathsOf(records), (std::vector<std::wstring>{L"C:\\a", L"C:\\b", L"C:\\c", L"C:\\d"}));
    EXPECT_EQ(records[1].kind, L"32");
    EXPECT_EQ(records[1].innerArchive, L"");
    EXPECT_EQ(records[2].kind, L"");
    EXPECT_EQ(records[3].innerArchive, L"Zip0004");
}

TEST(ControlFile, MarkerIsReplacedBeforeAMailStoreIsLookedFor) {
    Records records;
    ReadControlFile("**UserProfile**\\a.txt,32,Zip0001\r\n", L"C:\\Users\\x.pst", records);
    EXPECT_EQ(PathsOf(records), std::vector<std::wstring>{L"c:\\ValcoreauxTechno\\OutlookBK\\a.txt"});
}

TEST(ControlFile, ByteOrderMarkSaysHowItIsWritten) {
    EXPECT_EQ(PathsOf(Read("\xEF\xBB\xBF"
                           "C:\\\xC5\x81.txt,32,Zip0001\r\n")),
              std::vector<std::wstring>{L"C:\\Ł.txt"});
}

TEST(ControlFile, LineOfAMegabyteIsARecord) {
    const std::string name(1 << 20, 'n');
    EXPECT_EQ(Read("C:\\" + name + ",32,Zip0001\r\nC:\\b,32,Zip0002\r\n").size(), 2u);
}

TEST(ControlFile, WriterAndReaderAgree) {
    FakeMachine machine;
    machine.environment.Set(L"Temp", L"C:\\Temp");
    machine.files.AddFolder(L"C:\\Temp");
    clsColFileInfo items(machine.app);
    items.Add(L"C:\\Users\\agent\\Été\\a.txt", KindFile);
    items.Add(L"D:\\Dossiers", KindFolder);
    FakeProgressBar progress;
    clsListe(machine.app).EnregistrerListeFichiers(items, progress);
    const Records records = Read(machine.files.Read(machine.app.archive->listFilePath));
    EXPECT_EQ(PathsOf(records), (std::vector<std::wstring>{L"C:\\Users\\agent\\Été\\a.txt", L"D:\\Dossiers\\*.*"}));
    EXPECT_EQ(records[1].innerArchive, L"Zip0002");
}

TEST(ControlFile, RandomBytesNeverBreakTheReader) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 200; ++round) {
        std::string bytes(random() % 400, '\0');
        for (char& byte : bytes) byte = random() % 3 == 0 ? ",\r\n\"\x1A "[random() % 6] : static_cast<char>(random());
        Records records;
        const std::int32_t failure = NumberThrownBy([&] { ReadControlFile(bytes, Profile, records); });
        EXPECT_TRUE(failure == 0 || failure == 62) << failure;
        for (const ControlFileRecord& record : records) EXPECT_FALSE(record.restorePath.empty());
    }
}

std::string ControlFileOf(int lines) {
    std::string bytes;
    for (int line = 1; line <= lines; ++line)
        bytes += "**UserProfile**\\Documents\\Dossier " + std::to_string(line) + "\\fichier.txt,32,Zip0001\r\n";
    return bytes;
}

TEST(ControlFile, TimePerLineDoesNotGrowWithTheNumberOfLines) {
    // As many lines in all each time, since a few take less than Windows counts.
    const auto secondsFor = [](int lines) {
        const std::string bytes = ControlFileOf(lines);
        const double start = ProcessorSeconds();
        for (int read = 0; read < 40000; read += lines) EXPECT_EQ(Read(bytes).size(), static_cast<std::size_t>(lines));
        return ProcessorSeconds() - start;
    };
    const double few = secondsFor(500);
    const double many = secondsFor(20000);
    // A quadratic reader takes forty times as long per line.
    EXPECT_LT(many, 8 * few);
}

} // namespace
