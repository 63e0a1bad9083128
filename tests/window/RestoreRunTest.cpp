#include "RestoreWindowBench.h"
#include "core/StartUpValues.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"
#include "support/FakeMessageLoop.h"

#include <new>
#include <vector>

namespace {

TEST_F(RestoreWindow, TooLittleWorkSpaceStopsBeforeThePassword) {
    AddTwoItems();
    machine.app.startUp->dblEspaceDisponible = 7;
    OpenFirstDrive();
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(TextId::RestoreWorkSpaceTooSmall));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Capacité maximale atteinte");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Critical);
    EXPECT_EQ(dialogs.seen, 0u);
    EXPECT_TRUE(machine.processes.commandLines.empty());
}

TEST_F(RestoreWindow, OneByteMoreOfWorkSpaceIsEnough) {
    AddTwoItems();
    machine.app.startUp->dblEspaceDisponible = 8;
    OpenFirstDrive();
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(dialogs.seen, 1u);
}

TEST_F(RestoreWindow, TickedItemsAreRestoredInOrderAndTheProgramEnds) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(machine.processes.commandLines,
              (Texts{L"C:\\Valcoreaux\\Backup\\7za x E:\\OKRBACKUP.ZIP "
                     L"-oC:\\\"Valcoreaux\"\\\"Backup\"\\\"zip\" -aoa -pAbcdefg1",
                     L"C:\\Valcoreaux\\Backup\\7za x C:\\\"Valcoreaux\"\\\"Backup\"\\zip\\Zip0001.zip -aoa "
                     L"-oC:\\\"Users\"\\\"agent\"\\",
                     L"C:\\Valcoreaux\\Backup\\7za x C:\\\"Valcoreaux\"\\\"Backup\"\\zip\\Zip0002.zip -aoa -oC:\\"}));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, L"Restauration des fichiers sélectionnés terminée");
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Restauration des fichiers");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Exclamation);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_TRUE(mainWindow.FullExit());
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
    EXPECT_EQ(machine.power.awakeHoldsTaken, 1);
    EXPECT_EQ(machine.power.awakeHolds, 0);
}

// Windows may ask while the archive is opened; its question is met by the first messages that run.
TEST_F(RestoreWindow, TheSessionIsHeldFromTheFirstMessageToTheLastRow) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    FakeMessageLoop asking;
    std::vector<LRESULT> answers;
    asking.handler = [&] {
        if (!machine.processes.commandLines.empty())
            answers.push_back(SendMessageW(form.Handle(), WM_QUERYENDSESSION, 0, 0));
    };
    machine.app.machine.messageLoop = asking;
    Click(IDC_cmdLancerRestauration);
    machine.app.machine.messageLoop = messages;
    EXPECT_EQ(answers, (std::vector<LRESULT>{FALSE, FALSE, FALSE}));
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(RestoreWindow, UntickedRowIsLeftAlone) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 1u);
    EXPECT_NE(InnerExtractions()[0].find(L"Zip0002.zip"), std::wstring::npos);
}

TEST_F(RestoreWindow, FolderIsRestoredIntoItsParent) {
    AddBackup(L"E:\\", "C:\\Docs\\Lettres\\*.*,-1,Zip0001\r\n");
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 1u);
    EXPECT_TRUE(InnerExtractions()[0].ends_with(L" -aoa -oC:\\\"Docs\"\\"));
}

TEST_F(RestoreWindow, MailStoreIsRestoredToItsOwnFolder) {
    AddBackup(L"E:\\", "C:\\Donnees\\archive.pst,32,Zip0001\r\n");
    OpenFirstDrive();
    EXPECT_EQ(Cell(0, 0), L"c:\\ValcoreauxTechno\\OutlookBK\\archive.pst");
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 1u);
    EXPECT_TRUE(InnerExtractions()[0].ends_with(L" -oc:\\\"ValcoreauxTechno\"\\\"OutlookBK\"\\"));
}

TEST_F(RestoreWindow, WrongPasswordIsSaidAndAskedForAgainInAnEmptyWorkFolder) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"one", L"two", L"Abcdefg1"};
    machine.processes.exitCodes = {2, 2, 0};
    machine.processes.effect = [&](const std::wstring& line) {
        if (line.find(L"OKRBACKUP.ZIP") == std::wstring::npos) return;
        EXPECT_TRUE(machine.files.Contents(WorkFolder).files.empty());
        machine.files.AddFile(std::wstring(WorkFolder) + L"\\Zip0001.zip");
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(dialogs.seen, 3u);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 3u);
    for (const int wrong : {0, 1}) {
        const auto& shown = machine.messageBoxes.shown[static_cast<std::size_t>(wrong)];
        EXPECT_EQ(shown.text, machine.app.Text(TextId::WrongPassword));
        EXPECT_EQ(shown.title, L"Mot de passe invalide");
        EXPECT_EQ(shown.style, box::Exclamation);
    }
    EXPECT_EQ(machine.messageBoxes.shown[2].text, machine.app.Text(TextId::RestoreDone));
    EXPECT_EQ(InnerExtractions().size(), 2u);
}

TEST_F(RestoreWindow, TheWorkFolderIsEmptyByTheTimeAWrongPasswordIsSaid) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"one"};
    machine.processes.exitCodes = {2};
    machine.processes.effect = [&](const std::wstring&) {
        machine.files.AddFile(std::wstring(WorkFolder) + L"\\Zip0001.zip");
    };
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box& shown) {
        EXPECT_EQ(shown.text, machine.app.Text(TextId::WrongPassword));
        EXPECT_TRUE(machine.files.FolderExists(WorkFolder));
        EXPECT_TRUE(machine.files.Contents(WorkFolder).files.empty());
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(RestoreWindow, CancelledPasswordLeavesTheWindowAsItWas) {
    AddTwoItems();
    OpenFirstDrive();
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(dialogs.seen, 1u);
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(IsHooked());
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
    EXPECT_TRUE(machine.processes.commandLines.empty());
    EXPECT_FALSE(mainWindow.FullExit());
    EXPECT_EQ(machine.power.awakeHolds, 0);
}

TEST_F(RestoreWindow, EveryOtherExitCodeCountsAsOpened) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    machine.processes.exitCodes = {1, 2, 2};
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(InnerExtractions().size(), 2u);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(RestoreWindow, DuringTheCopyNothingMovesNothingClosesAndNothingCanBePressed) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    int checks = 0;
    machine.processes.effect = [&](const std::wstring& line) {
        if (line.find(L"Zip0002") == std::wstring::npos) return;
        ++checks;
        EXPECT_FALSE(IsHooked());
        for (const int id : {IDC_cmdLancerRestauration, IDC_cmdFermer, IDC_cmdToutDeselectionner,
                             IDC_cmdToutSelectionner, IDC_lvFichiersRepertoires, IDC_lstDrive})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_TRUE(List().LookOf(0).isBold);
        EXPECT_EQ(List().Tip(0), L"Restauré");
        EXPECT_FALSE(List().LookOf(1).isBold);
        EXPECT_EQ(List().Tip(1), L"");
        EXPECT_EQ(List().Selected(), 1);
        machine.drives.Add(L"F:\\", DriveType::Removable, L"NEUF");
        SendDeviceChange();
        SendMessageW(form.Handle(), WM_COMMAND, IDC_mnuRaffraichir_Rafraichir, 0);
        LetRefreshHappen();
        EXPECT_EQ(DriveLinesShown().size(), 1u);
        Close();
        Cancel();
        EXPECT_TRUE(form.IsLoaded());
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(checks, 1);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(RestoreWindow, ARestoreThatCannotEvenBeReportedLeavesAWindowThatCanBeClosed) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    // The message of the end fails, and so does its first report.
    int failures = 2;
    machine.messageBoxes.whileShown = [&](const auto&) {
        if (failures-- > 0) throw std::bad_alloc();
    };
    Click(IDC_cmdLancerRestauration);
    ASSERT_TRUE(form.IsLoaded());
    EXPECT_TRUE(IsHooked());
    Click(IDC_cmdFermer);
    EXPECT_FALSE(form.IsLoaded());
}

} // namespace
