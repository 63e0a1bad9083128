#include "shell/StartUp.h"

#include "core/LanguageValues.h"
#include "core/UserValues.h"
#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

TEST(ParentFolder, IsTheFolderCutBeforeItsLastBackslash) {
    EXPECT_EQ(ParentFolder(L"C:\\Valcoreaux\\Backup"), L"C:\\Valcoreaux");
    EXPECT_EQ(ParentFolder(L"\\\\server\\share\\Backup"), L"\\\\server\\share");
}

TEST(ParentFolder, OfAProgramFolderAtADriveRootIsTheBareDrive) {
    EXPECT_EQ(ParentFolder(L"C:\\Backup"), L"C:");
    EXPECT_EQ(ParentFolder(L"C:\\"), L"C:");
}

TEST(ParentFolder, WithoutABackslashIsAnInvalidCall) {
    try {
        ParentFolder(L"Backup");
        ADD_FAILURE();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5);
    }
}

TEST(ProgramDrive, IsMeasuredByTheFirstThreeCharactersOfTheFolder) {
    FakeMachine machine(nullptr, L"D:\\Valcoreaux\\Backup");
    machine.drives.Add(L"C:\\", DriveType::Fixed, L"", {1, 2});
    machine.drives.Add(L"D:\\", DriveType::Fixed, L"", {5e12, 6e12});
    EXPECT_EQ(MeasureWorkDrive(machine.app), 5e12);
}

TEST(ProgramDrive, WithoutALetterIsMeasuredWhereTheFolderLies) {
    FakeMachine machine(nullptr, L"\\\\server\\share\\Backup");
    machine.drives.Add(L"\\\\server\\share\\Backup", DriveType::Network, L"", {7e9, 8e9});
    EXPECT_EQ(MeasureWorkDrive(machine.app), 7e9);
}

TEST(ProgramDrive, ThatCannotBeMeasuredHasNoRoom) {
    FakeMachine machine(nullptr, L"\\\\server\\share\\Backup");
    EXPECT_EQ(MeasureWorkDrive(machine.app), 0);
}

TEST(User, IsReadFromTheProfileAndTheAccount) {
    FakeMachine machine;
    machine.account.profileFolder = L"C:\\Users\\j.dupont";
    machine.account.name = L"jdupont";
    ReadUser(machine.app);
    EXPECT_EQ(machine.app.user->strProfilUtilisateur, L"C:\\Users\\j.dupont");
    EXPECT_EQ(machine.app.user->strNomUtilisateur, L"j.dupont");
    EXPECT_EQ(machine.app.user->accountName, L"jdupont");
}

TEST(User, WithoutAProfileIsEmpty) {
    FakeMachine machine;
    machine.account.profileFolder.clear();
    ReadUser(machine.app);
    EXPECT_EQ(machine.app.user->strProfilUtilisateur, L"");
    EXPECT_EQ(machine.app.user->strNomUtilisateur, L"");
}

TEST(MainWindowTitle, CarriesTheVersionInBothLanguages) {
    FakeMachine machine;
    const std::wstring version = std::to_wstring(BACKUP_VERSION_MAJOR) + L"." + std::to_wstring(BACKUP_VERSION_MINOR) +
                                 L"." + std::to_wstring(BACKUP_VERSION_REVISION);
    EXPECT_EQ(MainWindowTitle(machine.app), L"Copies de sécurité - Version " + version);
    machine.app.language->lngLangue = 10000;
    EXPECT_EQ(MainWindowTitle(machine.app), L"Backup - Version " + version);
}

TEST(Help, OpensTheDocumentOfTheLanguageAtItsFixedPlace) {
    FakeMachine machine(nullptr, L"D:\\Elsewhere\\Backup");
    OpenHelp(machine.app);
    machine.app.language->lngLangue = 10000;
    OpenHelp(machine.app);
    ASSERT_EQ(machine.processes.opened.size(), 2u);
    EXPECT_EQ(machine.processes.opened[0].document, L"C:\\Valcoreaux\\Backup\\Copie de Sauvegarde.pdf");
    EXPECT_EQ(machine.processes.opened[1].document, L"C:\\Valcoreaux\\Backup\\Backup.pdf");
    for (const auto& opening : machine.processes.opened) {
        EXPECT_EQ(opening.workingFolder, L"C:\\Valcoreaux\\Backup\\");
    }
}

} // namespace
