#include "selection/FolderBrowser.h"
#include "core/LanguageValues.h"
#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

class FolderBrowserTest : public testing::Test {
  protected:
    FolderBrowserTest() {
        machine.files.AddFile(L"C:\\Users\\agent\\Documents\\zèbre.txt");
        machine.files.AddFile(L"C:\\Users\\agent\\Documents\\Abc.txt");
        machine.files.AddFolder(L"C:\\Users\\agent\\Documents\\beta");
        machine.files.AddFolder(L"C:\\Users\\agent\\Documents\\Alpha");
        machine.files.AddFolder(L"D:");
    }

    Texts Folders() const {
        Texts lines;
        for (const BrowsedFolder& folder : browser.Folders())
            lines.push_back(std::to_wstring(folder.level) + L" " + folder.name + L" = " + folder.path);
        return lines;
    }

    FakeMachine machine;
    FolderBrowser browser{machine.files};
};

TEST_F(FolderBrowserTest, ShowsTheWayDownAndTheFoldersInTheOpenOne) {
    browser.Open(L"C:\\Users\\agent\\Documents");
    EXPECT_EQ(Folders(),
              (Texts{L"0 C:\\ = C:\\", L"1 Users = C:\\Users", L"2 agent = C:\\Users\\agent",
                     L"3 Documents = C:\\Users\\agent\\Documents", L"4 Alpha = C:\\Users\\agent\\Documents\\Alpha",
                     L"4 beta = C:\\Users\\agent\\Documents\\beta"}));
    EXPECT_EQ(browser.OpenIndex(), 3u);
    EXPECT_EQ(browser.FileNames(), (Texts{L"Abc.txt", L"zèbre.txt"}));
}

TEST_F(FolderBrowserTest, ShowsNeitherLinksNorWhatIsHiddenForTheSystem) {
    const std::wstring documents = L"C:\\Users\\agent\\Documents";
    machine.files.AddFolder(documents + L"\\Mes images");
    machine.files.AddFolder(documents + L"\\Lien");
    machine.files.AddFile(documents + L"\\desktop.ini");
    machine.files.AddFile(documents + L"\\cachette.txt");
    machine.files.HideForTheSystem(documents + L"\\Mes images");
    machine.files.HideForTheSystem(documents + L"\\desktop.ini");
    machine.files.MakeLink(documents + L"\\Lien");
    machine.files.Hide(documents + L"\\cachette.txt");
    browser.Open(documents);
    EXPECT_EQ(browser.Folders().size(), 6u);
    EXPECT_EQ(browser.Folders().back().name, L"beta");
    EXPECT_EQ(browser.FileNames(), (Texts{L"Abc.txt", L"zèbre.txt"}));
    machine.files.areHiddenShown = true;
    browser.Open(documents);
    EXPECT_EQ(browser.Folders().size(), 6u);
    EXPECT_EQ(browser.FileNames(), (Texts{L"Abc.txt", L"cachette.txt", L"zèbre.txt"}));
}

TEST_F(FolderBrowserTest, OpensTheRootOfADrive) {
    browser.Open(L"C:");
    EXPECT_EQ(browser.Path(), L"C:\\");
    EXPECT_EQ(Folders(), (Texts{L"0 C:\\ = C:\\", L"1 Users = C:\\Users"}));
    EXPECT_EQ(browser.OpenIndex(), 0u);
    browser.Open(L"D:\\");
    EXPECT_EQ(Folders(), (Texts{L"0 D:\\ = D:\\"}));
}

TEST_F(FolderBrowserTest, FolderAboveIsGivenWithItsBackslash) {
    browser.Open(L"C:\\Users\\");
    EXPECT_EQ(browser.Path(), L"C:\\Users");
}

TEST_F(FolderBrowserTest, StaysWhereItWasWhenAFolderCannotBeRead) {
    browser.Open(L"C:\\Users\\agent\\Documents");
    machine.files.Deny(L"C:\\Users");
    machine.files.FailWith(L"E:\\", ErrorNumber::DiskNotReady);
    EXPECT_THROW(browser.Open(L"C:\\Users"), RuntimeError);
    EXPECT_THROW(browser.Open(L"E:"), RuntimeError);
    EXPECT_THROW(browser.Open(L"C:\\gone"), RuntimeError);
    EXPECT_EQ(browser.Path(), L"C:\\Users\\agent\\Documents");
    EXPECT_EQ(browser.OpenIndex(), 3u);
    EXPECT_EQ(browser.FileNames().size(), 2u);
}

TEST_F(FolderBrowserTest, DrivesShowTheirLabelsAndNoFloppyIsRead) {
    machine.drives.Add(L"A:\\", DriveType::Removable, L"FLOPPY");
    machine.drives.Add(L"C:\\", DriveType::Fixed, L"Système");
    machine.drives.Add(L"D:\\", DriveType::Fixed, L"");
    machine.drives.Add(L"E:\\", DriveType::Removable, L"CLE");
    machine.drives.Add(L"F:\\", DriveType::CdRom, std::nullopt);
    machine.drives.Add(L"N:\\", DriveType::Network, L"Partage");
    const Texts choices = DriveChoices(machine.app);
    EXPECT_EQ(choices, (Texts{L"a:", L"c: [Système]", L"d:", L"e: [CLE]", L"f:", L"n:"}));
    EXPECT_EQ(DriveOfChoice(choices[1]), L"C:");
}

TEST_F(FolderBrowserTest, FloppyDrivesMoveNothing) {
    EXPECT_TRUE(IsFloppyDrive(L"a:"));
    EXPECT_TRUE(IsFloppyDrive(L"B:"));
    EXPECT_FALSE(IsFloppyDrive(L"C:"));
}

class StartFolderTest : public FolderBrowserTest {
  protected:
    StartFolderTest() { machine.environment.Set(L"UserProfile", L"C:\\Profil"); }
    void UseOlderSystem() { machine.operatingSystem.version = {2, 5, 1}; }
};

TEST_F(StartFolderTest, IsDocumentsFromVistaOn) {
    machine.files.AddFolder(L"C:\\Profil\\Documents");
    machine.files.AddFolder(L"C:\\Profil\\Mes Documents");
    EXPECT_EQ(StartFolder(machine.app), L"C:\\Profil\\Documents");
}

TEST_F(StartFolderTest, IsTheFoldersOwnLanguageFirstBeforeVista) {
    UseOlderSystem();
    machine.files.AddFolder(L"C:\\Profil\\Mes Documents");
    machine.files.AddFolder(L"C:\\Profil\\My Documents");
    EXPECT_EQ(StartFolder(machine.app), L"C:\\Profil\\Mes Documents");
    machine.app.language->lngLangue = 10000;
    EXPECT_EQ(StartFolder(machine.app), L"C:\\Profil\\My Documents");
    machine.files.Remove(L"C:\\Profil\\My Documents");
    EXPECT_EQ(StartFolder(machine.app), L"C:\\Profil\\Mes Documents");
}

TEST_F(StartFolderTest, IsNoneWithoutDocumentsOrADriveLetter) {
    EXPECT_EQ(StartFolder(machine.app), std::nullopt);
    machine.environment.Set(L"UserProfile", L"\\\\server\\profil");
    machine.files.AddFolder(L"\\\\server\\profil\\Documents");
    EXPECT_EQ(StartFolder(machine.app), std::nullopt);
}

} // namespace
