#include "archive/CommandLines.h"
#include "archive/WorkFolder.h"
#include "archive/modGestionRestaure.h"
#include "core/ArchiveValues.h"
#include "support/CommandLineParts.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

using Parts = std::vector<std::wstring>;

TEST(Extraction, OuterArchiveIsOpenedWithThePasswordIntoTheWorkFolder) {
    FakeMachine machine;
    machine.app.archive->backupPassword = L"Abcdefg1";
    machine.processes.exitCodes = {2};
    EXPECT_EQ(modGestionRestaure::UnZipOkrBackup(machine.app, L"E:\\", L"OKRBACKUP.ZIP"), 2);
    const std::wstring command = machine.processes.commandLines.at(0);
    EXPECT_EQ(command, L"C:\\Valcoreaux\\Backup\\7za x E:\\OKRBACKUP.ZIP -oC:\\\"Valcoreaux\"\\\"Backup\"\\\"zip\" "
                       L"-aoa -pAbcdefg1");
    EXPECT_EQ(PartsOf(command), (Parts{L"C:\\Valcoreaux\\Backup\\7za", L"x", L"E:\\OKRBACKUP.ZIP",
                                       L"-oC:\\Valcoreaux\\Backup\\zip", L"-aoa", L"-pAbcdefg1"}));
}

TEST(Extraction, InnerArchiveIsOpenedIntoTheFolderThatHoldsTheItem) {
    FakeMachine machine;
    machine.processes.exitCodes = {1};
    EXPECT_EQ(modGestionRestaure::UnZipIntermediaire(machine.app, L"C:\\Docs\\Mes lettres\\a.doc", L"Zip0001"), 1);
    const std::wstring command = machine.processes.commandLines.at(0);
    EXPECT_EQ(command, L"C:\\Valcoreaux\\Backup\\7za x C:\\\"Valcoreaux\"\\\"Backup\"\\zip\\Zip0001.zip -aoa "
                       L"-oC:\\\"Docs\"\\\"Mes lettres\"\\");
    EXPECT_EQ(PartsOf(command),
              (Parts{L"C:\\Valcoreaux\\Backup\\7za", L"x", L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip", L"-aoa",
                     L"-oC:\\Docs\\Mes lettres\\"}));
}

TEST(Extraction, ItemAtADrivesRootGoesToTheDriveAlone) {
    EXPECT_EQ(SegmentQuotedFolderOf(L"D:\\a.txt"), L"D:\\");
}

TEST(Extraction, FolderGoesToItsParent) {
    EXPECT_EQ(SegmentQuotedFolderOf(L"C:\\Docs\\Lettres"), L"C:\\\"Docs\"\\");
}

TEST(Extraction, PasswordWithABlankBreaksTheLineAsItDidWhenTheArchiveWasMade) {
    const Parts parts =
        PartsOf(UnpackOuterCommand(L"C:\\Program", L"E:\\OKRBACKUP.ZIP", L"C:\\Program\\zip", L"Ab1 defgh"));
    EXPECT_EQ(parts.at(5), L"-pAb1");
    EXPECT_EQ(parts.at(6), L"defgh");
}

TEST(Extraction, InnerArchiveLiesWhereverTheWorkFolderIs) {
    EXPECT_EQ(UnpackInnerCommand(L"C:\\Program", L"D:\\work", L"C:\\a\\b.txt", L"Zip0001"),
              L"C:\\Program\\7za x D:\\work\\Zip0001.zip -aoa -oC:\\\"a\"\\");
    EXPECT_EQ(UnpackInnerCommand(L"C:\\Program", L"D:\\Sauvegarde temporaire", L"C:\\a\\b.txt", L"Zip0001"),
              L"C:\\Program\\7za x D:\\\"Sauvegarde temporaire\"\\Zip0001.zip -aoa -oC:\\\"a\"\\");
}

TEST(Extraction, WorkFolderIsMadeWhenMissingAndEmptiedWhenThere) {
    FakeMachine machine;
    machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
    ResetWorkFolder(machine.app);
    EXPECT_TRUE(machine.files.FolderExists(L"C:\\Valcoreaux\\Backup\\zip"));
    machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip");
    ResetWorkFolder(machine.app);
    EXPECT_TRUE(machine.files.Contents(L"C:\\Valcoreaux\\Backup\\zip").files.empty());
}

TEST(Extraction, WorkFolderCanBeRemovedTwice) {
    FakeMachine machine;
    machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip");
    RemoveWorkFolder(machine.app);
    RemoveWorkFolder(machine.app);
    EXPECT_FALSE(machine.files.FolderExists(L"C:\\Valcoreaux\\Backup\\zip"));
}

TEST(Extraction, DriveProbeTellsWhetherTheVolumeOpens) {
    FakeMachine machine;
    machine.drives.Add(L"D:\\", DriveType::CdRom).canOpenVolume = false;
    machine.drives.Add(L"E:\\", DriveType::CdRom);
    EXPECT_FALSE(modGestionRestaure::CanOpenDrive(machine.app, L"D"));
    EXPECT_TRUE(modGestionRestaure::CanOpenDrive(machine.app, L"E"));
}

} // namespace
