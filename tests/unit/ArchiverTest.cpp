#include "archive/CommandLines.h"
#include "archive/clsCopie.h"
#include "archive/clsListe.h"
#include "core/ArchiveValues.h"
#include "selection/clsColFileInfo.h"
#include "support/CommandLineParts.h"
#include "support/FakeMachine.h"
#include "support/FakeProgressBar.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using Parts = std::vector<std::wstring>;

constexpr const wchar_t* Program = L"C:\\Valcoreaux\\Backup";
constexpr const wchar_t* WorkFolder = L"C:\\Valcoreaux\\Backup\\zip";

TEST(ArchiverCommand, FileIsPackedWithBothPathsInQuotes) {
    const std::wstring command = PackFileCommand(Program, L"C:\\Mes documents\\a b.txt", L"C:\\w\\Zip0001");
    EXPECT_EQ(command, L"C:\\Valcoreaux\\Backup\\7Za.exe a -tzip \"C:\\w\\Zip0001\" \"C:\\Mes documents\\a b.txt\"");
    EXPECT_EQ(PartsOf(command), (Parts{L"C:\\Valcoreaux\\Backup\\7Za.exe", L"a", L"-tzip", L"C:\\w\\Zip0001",
                                       L"C:\\Mes documents\\a b.txt"}));
}

TEST(ArchiverCommand, FolderIsPackedWithItsSegmentsInQuotes) {
    const std::wstring command = PackFolderCommand(Program, L"C:\\Mes documents\\Projets", L"C:\\w x\\Zip0001");
    EXPECT_EQ(command, L"C:\\Valcoreaux\\Backup\\7Za.exe a -tzip C:\\\"w x\"\\\"Zip0001\" "
                       L"C:\\\"Mes documents\"\\\"Projets\" -r0");
    EXPECT_EQ(PartsOf(command), (Parts{L"C:\\Valcoreaux\\Backup\\7Za.exe", L"a", L"-tzip", L"C:\\w x\\Zip0001",
                                       L"C:\\Mes documents\\Projets", L"-r0"}));
}

TEST(ArchiverCommand, OuterArchiveIsPackedWithThePassword) {
    const std::wstring command = PackFinalCommand(Program, L"C:\\w\\Zip0001.zip", L"C:\\w\\OKRBACKUP.ZIP", L"Abcdefg1");
    EXPECT_EQ(command, L"C:\\Valcoreaux\\Backup\\7Za.exe a -tzip \"C:\\w\\OKRBACKUP.ZIP\" -pAbcdefg1 "
                       L"\"C:\\w\\Zip0001.zip\"");
    EXPECT_EQ(PartsOf(command), (Parts{L"C:\\Valcoreaux\\Backup\\7Za.exe", L"a", L"-tzip", L"C:\\w\\OKRBACKUP.ZIP",
                                       L"-pAbcdefg1", L"C:\\w\\Zip0001.zip"}));
}

TEST(ArchiverCommand, FolderThatEndsInABackslashGivesAnEmptyLastSegment) {
    EXPECT_EQ(SegmentQuoted(L"C:\\Data\\"), L"C:\\\"Data\"\\\"\"");
}

TEST(ArchiverCommand, PathWithoutABackslashIsFollowedByOne) {
    EXPECT_EQ(SegmentQuoted(L"C:"), L"C:\\");
}

TEST(ArchiverCommand, PasswordWithABlankOrAQuoteIsPassedUnquotedAndBreaksTheLine) {
    const Parts blank = PartsOf(PackFinalCommand(Program, L"C:\\a.zip", L"C:\\b.zip", L"Ab1 defgh"));
    EXPECT_EQ(blank, (Parts{L"C:\\Valcoreaux\\Backup\\7Za.exe", L"a", L"-tzip", L"C:\\b.zip", L"-pAb1", L"defgh",
                            L"C:\\a.zip"}));
    const Parts quote = PartsOf(PackFinalCommand(Program, L"C:\\a.zip", L"C:\\b.zip", L"Ab\"1defgh"));
    EXPECT_EQ(quote,
              (Parts{L"C:\\Valcoreaux\\Backup\\7Za.exe", L"a", L"-tzip", L"C:\\b.zip", L"-pAb1defgh C:\\a.zip"}));
}

class FakeParent : public BackupParent {
  public:
    bool isStopped = false;
    int refreshes = 0;

    bool StopWrite() override { return isStopped; }
    void RefreshWindow() override { ++refreshes; }
};

/// An archiver that makes or extends the file it is told to.
class Archiver : public testing::Test {
  protected:
    Archiver() {
        machine.files.AddFolder(Program);
        machine.files.AddFile(L"C:\\Temp\\_listFich.lst", "list");
        machine.files.AddFile(L"C:\\Data\\a.txt", "a");
        machine.files.AddFolder(L"C:\\Mes documents");
        machine.app.archive->listFilePath = L"C:\\Temp\\_listFich.lst";
        machine.app.archive->listFilePrint = ListPrint("list");
        machine.app.archive->backupPassword = L"Abcdefg1";
        machine.processes.effect = [this](const std::wstring& commandLine) {
            std::wstring target = PartsOf(commandLine).at(3);
            if (!target.ends_with(L".ZIP")) {
                ++innerArchives;
                target += L".zip";
            }
            const std::string old = machine.files.FileExists(target) ? machine.files.Read(target) : std::string();
            machine.files.AddFile(target, old + "x");
            int inner = 0;
            for (const std::wstring& path : machine.files.Paths()) {
                if (path.starts_with(std::wstring(WorkFolder) + L"\\Zip")) ++inner;
            }
            mostInnerArchives = std::max(mostInnerArchives, inner);
        };
    }

    bool Copy() { return copie.CopierListeFichiers(items, progress, parent); }

    bool Reported(const std::wstring& label, int number) {
        const auto& shown = machine.messageBoxes.shown;
        return shown.size() == 1 && shown[0].text.find(L"Erreur nº " + std::to_wstring(number) + L" ") == 0 &&
               shown[0].text.find(L" dans la procédure " + label + L" à la ligne nº 0") != std::wstring::npos;
    }

    FakeMachine machine;
    clsColFileInfo items{machine.app};
    FakeProgressBar progress;
    FakeParent parent;
    clsCopie copie{machine.app};
    int innerArchives = 0;
    int mostInnerArchives = 0;
};

TEST_F(Archiver, OneFileIsPackedAsZip0001AndAddedToTheOuterArchive) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    EXPECT_TRUE(Copy());
    EXPECT_EQ(machine.processes.commandLines,
              (Parts{L"C:\\Valcoreaux\\Backup\\7Za.exe a -tzip \"C:\\Valcoreaux\\Backup\\zip\\Zip0001\" "
                     L"\"C:\\Data\\a.txt\"",
                     L"C:\\Valcoreaux\\Backup\\7Za.exe a -tzip \"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP\" "
                     L"-pAbcdefg1 \"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip\""}));
    EXPECT_FALSE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip"));
    EXPECT_EQ(machine.files.Read(L"C:\\Valcoreaux\\Backup\\zip\\_listFich.lst"), "list");
    EXPECT_EQ(machine.app.archive->archiveSizeBytes, 1);
}

TEST_F(Archiver, FileAndFolderDifferOnlyInTheWayTheyArePacked) {
    items.Add(L"C:\\Mes documents", KindFolder);
    EXPECT_TRUE(Copy());
    EXPECT_EQ(machine.processes.commandLines.at(0),
              L"C:\\Valcoreaux\\Backup\\7Za.exe a -tzip C:\\\"Valcoreaux\"\\\"Backup\"\\\"zip\"\\\"Zip0001\" "
              L"C:\\\"Mes documents\" -r0");
}

TEST_F(Archiver, KindIsTakenFromTheDiskAtThatMoment) {
    items.Add(L"C:\\Mes documents", KindFile);
    EXPECT_TRUE(Copy());
    EXPECT_TRUE(machine.processes.commandLines.at(0).ends_with(L"-r0"));
}

TEST_F(Archiver, WorkFolderIsMadeAnewAndHoldsOneInnerArchiveAtATime) {
    machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\left.over");
    for (const wchar_t* path : {L"C:\\Data\\a.txt", L"C:\\Mes documents", L"C:\\Data"}) items.Add(path, KindFile);
    EXPECT_TRUE(Copy());
    EXPECT_EQ(innerArchives, 3);
    EXPECT_EQ(mostInnerArchives, 1);
    EXPECT_EQ(machine.files.Contents(WorkFolder).files, (Parts{L"OKRBACKUP.ZIP", L"_listFich.lst"}));
}

TEST_F(Archiver, ReadOnlyLeftOversAreNotForcedAway) {
    machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\kept");
    machine.files.SetReadOnly(L"C:\\Valcoreaux\\Backup\\zip\\kept");
    items.Add(L"C:\\Data\\a.txt", KindFile);
    EXPECT_FALSE(Copy());
    EXPECT_TRUE(Reported(L"CopierListeFichiers, Class clsCopie", 70));
    EXPECT_TRUE(machine.processes.commandLines.empty());
}

TEST_F(Archiver, BarCountsTheItemsAndKeepsItsBounds) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    items.Add(L"C:\\Mes documents", KindFolder);
    Copy();
    EXPECT_EQ(progress.values, (std::vector<std::int32_t>{1, 2}));
    EXPECT_EQ(progress.min, 0);
    EXPECT_EQ(progress.max, 2);
    EXPECT_EQ(parent.refreshes, 2);
    EXPECT_EQ(machine.messageLoop.runs, 2);
}

TEST_F(Archiver, BarWindowAndMessagesAreServedBeforeTheOuterArchive) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    const auto archive = machine.processes.effect;
    int checks = 0;
    machine.processes.effect = [&](const std::wstring& commandLine) {
        const int served = PartsOf(commandLine).at(3).ends_with(L".ZIP") ? 1 : 0;
        EXPECT_EQ(static_cast<int>(progress.values.size()), served);
        EXPECT_EQ(parent.refreshes, served);
        EXPECT_EQ(machine.messageLoop.runs, served);
        EXPECT_FALSE(machine.files.FileExists(std::wstring(WorkFolder) + L"\\_listFich.lst")) << "the list comes last";
        ++checks;
        archive(commandLine);
    };
    EXPECT_TRUE(Copy());
    EXPECT_EQ(checks, 2);
}

TEST_F(Archiver, StopIsAskedForBeforeTheFirstItemToo) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    parent.isStopped = true;
    EXPECT_FALSE(Copy());
    EXPECT_TRUE(machine.processes.commandLines.empty());
}

TEST_F(Archiver, StopRequestBetweenTwoItemsEndsTheRun) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    items.Add(L"C:\\Mes documents", KindFolder);
    machine.messageLoop.handler = [this] { parent.isStopped = true; };
    EXPECT_FALSE(Copy());
    EXPECT_EQ(innerArchives, 1);
    EXPECT_FALSE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\_listFich.lst"));
}

TEST_F(Archiver, AnUnfinishedArchiveDoesNotKeepTheSizeOfAnEarlierOne) {
    machine.app.archive->archiveSizeBytes = 9;
    items.Add(L"C:\\Data\\gone.txt", KindFile);
    EXPECT_FALSE(Copy());
    EXPECT_EQ(machine.app.archive->archiveSizeBytes, 0);
}

TEST_F(Archiver, MissingItemEndsTheRunAndKeepsWhatWasPackedBefore) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    items.Add(L"C:\\Data\\gone.txt", KindFile);
    EXPECT_FALSE(Copy());
    EXPECT_EQ(innerArchives, 1);
    EXPECT_TRUE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP"));
    EXPECT_FALSE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\_listFich.lst"));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(Archiver, FailingArchiverCountsAsDone) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    items.Add(L"C:\\Mes documents", KindFolder);
    machine.processes.exitCodes = {2, 2, 2, 2};
    EXPECT_TRUE(Copy());
}

TEST_F(Archiver, ExitCodeOfAFoldersRunIsIgnored) {
    items.Add(L"C:\\Mes documents", KindFolder);
    items.Add(L"C:\\Data\\a.txt", KindFile);
    machine.processes.exitCodes = {2, 2, 0, 0};
    EXPECT_TRUE(Copy());
    EXPECT_EQ(innerArchives, 2);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(Archiver, ArchiveOfMoreThanTwoGigabytesKeepsItsSize) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    const auto archive = machine.processes.effect;
    machine.processes.effect = [&](const std::wstring& commandLine) {
        archive(commandLine);
        const std::wstring target = PartsOf(commandLine).at(3);
        if (target.ends_with(L".ZIP")) machine.files.AddSizedFile(target, 5'000'000'000);
    };
    EXPECT_TRUE(Copy());
    EXPECT_EQ(machine.app.archive->archiveSizeBytes, 5'000'000'000);
}

TEST_F(Archiver, EmptySelectionLeavesTheControlFileAloneInTheWorkFolder) {
    machine.app.archive->archiveSizeBytes = 7;
    EXPECT_TRUE(Copy());
    EXPECT_EQ(machine.app.archive->archiveSizeBytes, 0);
    EXPECT_EQ(machine.files.Contents(WorkFolder).files, Parts{L"_listFich.lst"});
}

TEST_F(Archiver, ListThatAnotherCopyOfTheProgramWroteMeanwhileIsNotTaken) {
    items.Add(L"C:\\Data\\a.txt", KindFile);
    const auto archive = machine.processes.effect;
    machine.processes.effect = [&](const std::wstring& commandLine) {
        archive(commandLine);
        machine.files.AddFile(L"C:\\Temp\\_listFich.lst", "tsil");
    };
    EXPECT_FALSE(Copy());
    EXPECT_TRUE(Reported(L"CopierListeFichiers, Class clsCopie", 75));
}

TEST_F(Archiver, MissingSourceRunsNothing) {
    EXPECT_FALSE(copie.ArchiverFichier(L"C:\\Mes documents", L"C:\\w\\Zip0001"));
    EXPECT_FALSE(copie.ArchiverRepertoire(L"C:\\Data\\a.txt", L"C:\\w\\Zip0001"));
    EXPECT_TRUE(machine.processes.commandLines.empty());
}

TEST_F(Archiver, PresenceIsTheFileBesideTheProgram) {
    EXPECT_FALSE(copie.ValidZipApp());
    machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\7Za.exe");
    EXPECT_TRUE(copie.ValidZipApp());
    EXPECT_EQ(copie.GetZipAppName(), L"7Za.exe");
}

TEST_F(Archiver, ExitCodeIsTheArchivers) {
    machine.processes.effect = nullptr;
    machine.processes.exitCodes = {7};
    EXPECT_EQ(copie.ExecCmd(L"7Za.exe"), 7);
}

} // namespace
