#include "check/CheckWork.h"

#include "check/ZipBuilder.h"
#include "resources/TextId.h"
#include "support/FakeFileStore.h"
#include "support/ReportTexts.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

constexpr const wchar_t* Archive = L"E:\\OKRBACKUP.ZIP";
constexpr const wchar_t* List = L"E:\\_listFich.lst";
constexpr const char* Password = "Valcoreaux1";

std::string Noise(std::size_t length) {
    std::string bytes;
    std::uint32_t state = 7;
    while (bytes.size() < length) {
        state = state * 1664525u + 1013904223u;
        bytes += static_cast<char>(state >> 24);
    }
    return bytes;
}

class CheckWorkTest : public testing::Test {
  protected:
    CheckWorkTest() {
        files.Add(Archive,
                  BuildBackup({{{"a.txt", "premier"}}, {{"Dossier/", ""}, {"Dossier/b.bin", Noise(5000)}}}, Password));
        files.Add(List, "C:\\Docs\\a.txt,32,Zip0001\r\nC:\\Docs\\Dossier\\*.*,-1,Zip0002\r\n");
        request.place = L"E:\\";
        request.password = L"Valcoreaux1";
    }

    BackupReport Run() { return RunCheck(files, request, {}); }
    BackupReport Recover() {
        request.target = L"D:\\Cible";
        return Run();
    }
    void Use(const std::vector<std::vector<BuiltEntry>>& items, const std::string& password = Password) {
        files.Add(Archive, BuildBackup(items, password));
    }

    FakeFileStore files;
    CheckRequest request;
};

} // namespace

TEST_F(CheckWorkTest, AGoodBackupIsGood) {
    const BackupReport report = Run();
    EXPECT_EQ(report.verdict, Verdict::Good) << ReportJson(report);
    EXPECT_EQ(report.ExitCode(), 0);
    EXPECT_EQ(report.Files(), 2u);
    EXPECT_EQ(report.Bytes(), 5007u);
}

TEST_F(CheckWorkTest, AWrongPasswordIsNoDamage) {
    request.password = L"autre";
    EXPECT_EQ(Run().verdict, Verdict::WrongPassword);
    request.password.reset();
    EXPECT_EQ(Run().verdict, Verdict::PasswordMissing);
    EXPECT_EQ(Run().ExitCode(), 2);
}

TEST_F(CheckWorkTest, TheFirstWordOfThePasswordOpens) {
    Use({{{"a.txt", "premier"}}}, "Mot");
    files.Add(List, "C:\\Docs\\a.txt,32,Zip0001\r\n");
    request.password = L"Mot de passe";
    const BackupReport report = Run();
    EXPECT_TRUE(report.isOpenedByFirstWord);
    EXPECT_EQ(report.ExitCode(), 0);
}

TEST_F(CheckWorkTest, AnAccentedPasswordOpensInTheArchiversBytes) {
    Use({{{"a.txt", "premier"}}}, "\x90t\x82 2026");
    files.Add(List, "C:\\Docs\\a.txt,32,Zip0001\r\n");
    request.password = L"Été 2026";
    EXPECT_EQ(Run().ExitCode(), 0);
}

TEST_F(CheckWorkTest, ADamagedItemIsToldAndTheOthersAreRead) {
    std::string bytes = *files.BytesOf(Archive);
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    files.Add(Archive, bytes);
    const BackupReport report = Run();
    EXPECT_EQ(report.ExitCode(), 1);
    EXPECT_EQ(report.items.at(0).verdict, ItemVerdict::Whole);
    EXPECT_EQ(report.items.at(1).verdict, ItemVerdict::Damaged);
}

TEST_F(CheckWorkTest, ACutArchiveIsReadToTheCut) {
    const std::string whole = *files.BytesOf(Archive);
    files.Add(Archive, whole.substr(0, whole.size() - 200));
    const BackupReport report = Run();
    EXPECT_EQ(report.ExitCode(), 1);
    EXPECT_FALSE(report.walk.hasDirectory);
    EXPECT_EQ(report.items.at(0).verdict, ItemVerdict::Whole);
}

TEST_F(CheckWorkTest, NoCutIsTakenForAGoodBackup) {
    const std::string whole = *files.BytesOf(Archive);
    for (std::size_t length = 0; length < whole.size(); length += 97) {
        files.Add(Archive, whole.substr(0, length));
        EXPECT_NE(Run().ExitCode(), 0) << length;
    }
}

TEST_F(CheckWorkTest, MissingAndExtraItemsAreTold) {
    files.Add(List, "C:\\Docs\\a.txt,32,Zip0001\r\nC:\\c.txt,32,Zip0003\r\n");
    const BackupReport report = Run();
    ASSERT_EQ(report.items.size(), 3u);
    EXPECT_EQ(report.items[1].verdict, ItemVerdict::Missing);
    EXPECT_EQ(report.items[2].verdict, ItemVerdict::NotListed);
    EXPECT_EQ(report.ExitCode(), 1);
}

TEST_F(CheckWorkTest, TheListOfAnotherBackupIsTold) {
    files.Add(List, "C:\\x.doc,32,Zip0001\r\nC:\\Autre\\*.*,-1,Zip0002\r\n");
    const BackupReport report = Run();
    EXPECT_EQ(report.items.at(0).verdict, ItemVerdict::OtherBackup);
    EXPECT_EQ(report.items.at(1).verdict, ItemVerdict::OtherBackup);
}

TEST_F(CheckWorkTest, PlacesWithoutABackupAreTold) {
    files.Delete(Archive);
    EXPECT_EQ(Run().verdict, Verdict::OlderFormat);
    files.Delete(List);
    EXPECT_EQ(Run().verdict, Verdict::NoBackup);
    request.place = L"Q:\\";
    EXPECT_EQ(Run().ExitCode(), 3);
}

TEST_F(CheckWorkTest, AMissingListIsAFaultOfItsOwn) {
    files.Delete(List);
    const BackupReport report = Run();
    EXPECT_EQ(report.ExitCode(), 1);
    EXPECT_EQ(report.FaultyItems(), 0u);
    EXPECT_EQ(report.items.at(0).archive, L"Zip0001");
}

TEST_F(CheckWorkTest, AnEmptyItemIsTold) {
    Use({{}, {{"Dossier/", ""}, {"Dossier/b.bin", "b"}}});
    EXPECT_EQ(Run().items.at(0).verdict, ItemVerdict::Empty);
}

TEST_F(CheckWorkTest, AMediumThatGoesEndsTheWork) {
    files.failsAt = 3000;
    EXPECT_EQ(Run().verdict, Verdict::Unreadable);
    EXPECT_EQ(Run().ExitCode(), 4);
}

TEST_F(CheckWorkTest, APlaceThatCannotBeReadIsDamageAndNotTheEnd) {
    files.failsAt = files.BytesOf(Archive)->size() / 2;
    files.readFailure = ErrorNumber::DeviceIoError;
    const BackupReport report = Run();
    EXPECT_EQ(report.verdict, Verdict::Faulty);
    EXPECT_GT(report.walk.unreadableBytes, 0u);
}

TEST_F(CheckWorkTest, ACheckStopsWhenAsked) {
    const CheckHooks hooks{[] { return true; }, {}, {}, {}};
    EXPECT_EQ(RunCheck(files, request, hooks).verdict, Verdict::Stopped);
}

TEST_F(CheckWorkTest, RecoveredFilesStandUnderTheirDriveLetter) {
    const BackupReport report = Recover();
    EXPECT_EQ(report.ExitCode(), 0) << ReportJson(report);
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\a.txt"), "premier");
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\Dossier\\b.bin"), Noise(5000));
}

TEST_F(CheckWorkTest, NothingIsOverwritten) {
    files.Add(L"D:\\Cible\\C\\Docs\\a.txt", "PREMIER");
    EXPECT_EQ(Recover().RecoveredFiles(), 2u);
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\a.txt"), "PREMIER");
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\a (2).txt"), "premier");
}

TEST_F(CheckWorkTest, HostileNamesStayInTheTarget) {
    Use({{{"../../out.txt", "1"}, {"/abs.txt", "2"}, {"C:/drive.txt", "3"}, {"a.txt:stream", "4"}, {"nul", "5"}}});
    files.Add(List, "C:\\..\\..\\x,32,Zip0001\r\n");
    const std::vector<std::wstring> before = files.Paths();
    EXPECT_EQ(Recover().ExitCode(), 1);
    for (const std::wstring& path : files.Paths()) {
        const bool isOld = std::find(before.begin(), before.end(), path) != before.end();
        EXPECT_TRUE(isOld || path.starts_with(L"D:\\Cible\\")) << std::string(path.begin(), path.end());
    }
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\Zip0001\\a.txt_stream"), "4");
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\Zip0001\\_nul"), "5");
}

TEST_F(CheckWorkTest, ADamagedFileKeepsANameThatSaysSo) {
    std::string bytes = *files.BytesOf(Archive);
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    files.Add(Archive, bytes);
    EXPECT_EQ(Recover().ExitCode(), 1);
    EXPECT_FALSE(files.BytesOf(L"D:\\Cible\\C\\Docs\\Dossier\\b.bin"));
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\a.txt"), "premier");
}

TEST_F(CheckWorkTest, WithoutRoomNothingIsBegun) {
    files.freeBytes = 100;
    EXPECT_EQ(Recover().verdict, Verdict::NoRoom);
    EXPECT_EQ(files.Paths().size(), 2u);
}

TEST_F(CheckWorkTest, TickedItemsAreHeldAgainstTheRoomByTheirOwnSizes) {
    request.wanted = std::make_shared<const NameSet>(std::vector{L"zip0002"});
    files.freeBytes = 1000;
    const BackupReport without = Recover();
    EXPECT_EQ(without.verdict, Verdict::NoRoom);
    EXPECT_EQ(without.neededBytes, BuildZip({{"Dossier/", ""}, {"Dossier/b.bin", Noise(5000)}}).size());
    EXPECT_LT(without.neededBytes, without.archiveBytes);
    EXPECT_EQ(files.Paths().size(), 2u) << "nothing was begun";
    request.wanted = std::make_shared<const NameSet>(std::vector{L"Zip0001"});
    EXPECT_EQ(Recover().ExitCode(), 0);
}

TEST_F(CheckWorkTest, NothingIsRecoveredOntoTheMediumHoweverItIsNamed) {
    for (const wchar_t* place : {L"E:\\", L"e:", L"E:\\okrbackup.zip", L"E:\\_listFich.lst"}) {
        request.place = place;
        request.target = L"e:\\Cible";
        const BackupReport report = Run();
        EXPECT_EQ(report.verdict, Verdict::NotWritable) << place;
        EXPECT_EQ(report.ExitCode(), 4);
        const Texts numbers = [](TextId id) { return std::to_wstring(static_cast<int>(id)); };
        EXPECT_EQ(VerdictSentence(report, {numbers, L","}), numbers(TextId::CheckTargetOnMedium));
    }
    EXPECT_EQ(files.Paths().size(), 2u);
    EXPECT_FALSE(files.Find(L"E:\\Cible"));
}

TEST_F(CheckWorkTest, ADiskThatFillsUpKeepsOnlyWhatIsWhole) {
    Use({{{"a.txt", "premier"}}, {{"Dossier/b.bin", std::string(200000, 'x')}}});
    files.freeBytes = 100000;
    EXPECT_EQ(Recover().verdict, Verdict::NoRoom);
    EXPECT_EQ(files.BytesOf(L"D:\\Cible\\C\\Docs\\a.txt"), "premier");
    EXPECT_EQ(files.Paths().size(), 3u);
}

TEST_F(CheckWorkTest, AComparisonFindsWhatTheBackupLacks) {
    const FileTimes before{1, 1};
    files.Add(L"C:\\Docs\\a.txt", "Premier", {1, 140000000000000000});
    files.Add(L"C:\\Docs\\Dossier\\b.bin", Noise(5000), before);
    files.Add(L"C:\\Docs\\Dossier\\ouvert.pst", "x", before);
    files.Add(L"C:\\Docs\\Dossier\\nouveau.txt", "x", {140000000000000000, 140000000000000000});
    request.isComparison = true;
    const BackupReport report = Run();
    ASSERT_EQ(report.items.at(0).remarks->findings.size(), 1u);
    EXPECT_EQ(report.items[0].remarks->findings[0].what, FileFinding::What::Newer);
    ASSERT_EQ(report.items[1].remarks->findings.size(), 2u);
    EXPECT_EQ(report.items[1].remarks->findings[0].what, FileFinding::What::AddedSince);
    EXPECT_EQ(report.items[1].remarks->findings[1].what, FileFinding::What::Absent);
    EXPECT_EQ(report.ExitCode(), 1);
}
