#include "CaptionFit.h"
#include "Footprint.h"
#include "KeyboardReach.h"
#include "RestoreWindowBench.h"
#include "ScreenFit.h"
#include "core/ArchiveValues.h"
#include "core/LanguageValues.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"
#include "support/ProcessorTime.h"

#include <cstdio>

namespace {

TEST_F(RestoreWindow, FrenchCaptions) {
    Open();
    EXPECT_EQ(form.Title(), L"Restauration des fichiers");
    EXPECT_EQ(Text(IDC_cmdLancerRestauration), L"&Lancer la restauration");
    EXPECT_EQ(Text(IDC_cmdToutDeselectionner), L"Tout &désélectionner");
    EXPECT_EQ(Text(IDC_cmdToutSelectionner), L"Tout &sélectionner");
    EXPECT_EQ(Text(IDC_cmdFermer), L"&Fermer");
}

TEST_F(RestoreWindow, EnglishCaptions) {
    machine.app.language->lngLangue = 10000;
    Open();
    EXPECT_EQ(form.Title(), L"Restore of files");
    EXPECT_EQ(Text(IDC_cmdLancerRestauration), L"&Start the restore");
    EXPECT_EQ(Text(IDC_cmdToutDeselectionner), L"&Deselect all");
    EXPECT_EQ(Text(IDC_cmdToutSelectionner), L"Select &all");
    EXPECT_EQ(Text(IDC_cmdFermer), L"&Close");
}

TEST_F(RestoreWindow, EveryCaptionFitsInBothLanguages) {
    for (const int language : {0, 10000}) {
        machine.app.language->lngLangue = language;
        Open();
        EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>());
        EXPECT_EQ(OverlappingControls(form.Handle()), std::vector<std::string>());
        EXPECT_EQ(TooLargeForScreen(form.Handle()), "");
        EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
        form.Unload();
    }
}

TEST_F(RestoreWindow, EveryControlIsReachedByKeyboardAndNamed) {
    AddTwoItems();
    OpenFirstDrive();
    EXPECT_EQ(TabOrder(form.Handle()), (Ids{IDC_lstDrive, IDC_lvFichiersRepertoires, IDC_cmdToutSelectionner,
                                            IDC_cmdToutDeselectionner, IDC_cmdLancerRestauration, IDC_cmdFermer}));
    EXPECT_EQ(UnreachableControls(form.Handle()), Ids());
    EXPECT_EQ(UnlabelledFields(form.Handle()), Ids());
    EXPECT_EQ(DefaultButton(), IDC_cmdLancerRestauration);
}

TEST_F(RestoreWindow, OpeningMakesTheWorkFolderAnewAndListsTheDrives) {
    AddTwoItems();
    machine.files.AddFile(std::wstring(WorkFolder) + L"\\left.over");
    Open();
    EXPECT_TRUE(machine.files.FolderExists(WorkFolder));
    EXPECT_TRUE(machine.files.Contents(WorkFolder).files.empty());
    EXPECT_EQ(DriveLinesShown(), Texts{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
    EXPECT_EQ(SelectedDrive(), LB_ERR);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, ClosingTakesTheWorkFolderAway) {
    Open();
    Click(IDC_cmdFermer);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
    EXPECT_FALSE(mainWindow.FullExit());
    Open();
    Close();
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
}

TEST_F(RestoreWindow, WorkFolderThatCannotGoIsReportedAndTheCrossStillCloses) {
    Open();
    const std::wstring leftOver = std::wstring(WorkFolder) + L"\\left.over";
    machine.files.AddFile(leftOver);
    machine.files.SetReadOnly(leftOver);
    Click(IDC_cmdFermer);
    EXPECT_TRUE(form.IsLoaded());
    Close();
    EXPECT_FALSE(form.IsLoaded());
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 70 (Permission denied) dans la procédure cmdFermer_Click, module frmRestaureCD"),
              0u);
    EXPECT_EQ(machine.messageBoxes.shown[1].text.find(
                  L"Erreur nº 70 (Permission denied) dans la procédure Form_Unload, module frmRestaureCD"),
              0u);
    EXPECT_TRUE(machine.files.FileExists(leftOver));
}

TEST_F(RestoreWindow, LeftOverThatCannotGoIsReportedAndTheDrivesCanStillBeListed) {
    AddTwoItems();
    const std::wstring leftOver = std::wstring(WorkFolder) + L"\\left.over";
    machine.files.AddFile(leftOver);
    machine.files.SetReadOnly(leftOver);
    Open();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 70 (Permission denied) dans la procédure Form_Load, module frmRestaureCD"),
              0u);
    EXPECT_EQ(DriveLinesShown(), Texts());
    Press(IDC_cmdFermer, VK_F5);
    EXPECT_EQ(DriveLinesShown().size(), 1u);
}

TEST_F(RestoreWindow, EscapeCloses) {
    Open();
    Press(IDC_lstDrive, VK_ESCAPE);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(RestoreWindow, ChosenMediumIsListedAndTicked) {
    AddTwoItems();
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), L"C:\\Users\\agent\\a.txt");
    EXPECT_EQ(Cell(0, 1), L"Fichier");
    EXPECT_EQ(Cell(0, 2), L"32");
    EXPECT_EQ(Cell(0, 3), L"Zip0001");
    EXPECT_EQ(Cell(1, 0), L"C:\\Data\\*.*");
    EXPECT_EQ(Cell(1, 1), L"Rep.");
    EXPECT_TRUE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    for (const int id : {IDC_cmdLancerRestauration, IDC_cmdToutSelectionner, IDC_cmdToutDeselectionner})
        EXPECT_TRUE(IsEnabled(id)) << id;
    EXPECT_EQ(machine.app.archive->archiveSizeBytes, 7);
}

TEST_F(RestoreWindow, ClickWithoutASelectionTakesTheFirstDrive) {
    AddTwoItems();
    Open();
    SelectDrive(-1);
    EXPECT_EQ(SelectedDrive(), 0);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(RestoreWindow, DiskWithoutABackupSaysSoAndCannotBeRestored) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), machine.app.Text(TextId::NoBackupOnDisk));
    EXPECT_FALSE(IsTicked(0));
    for (const int id : {IDC_cmdLancerRestauration, IDC_cmdToutSelectionner, IDC_cmdToutDeselectionner})
        EXPECT_FALSE(IsEnabled(id)) << id;
    TickByKey(0);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, CdRomWithoutABackupSaysSo) {
    machine.drives.Add(L"D:\\", DriveType::CdRom).canRead = false;
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), machine.app.Text(TextId::NoBackupOnCdRom));
}

TEST_F(RestoreWindow, MachineWithoutDrivesSaysSo) {
    OpenFirstDrive();
    EXPECT_EQ(DriveLinesShown(), Texts{L"Aucun lecteur de CD ou de disquette trouvé sur cet ordinateur"});
    EXPECT_EQ(Cell(0, 0), machine.app.Text(TextId::NoBackupOnDisk));
}

TEST_F(RestoreWindow, OlderFormatIsRefused) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32\r\n");
    OpenFirstDrive();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(TextId::OlderBackupFormat));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Prise de copie de sécurité");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Critical);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, CutControlFileIsReportedAndWhatCouldBeReadIsListed) {
    AddBackup(L"E:\\", "C:\\a,32,Zip0001\r\nC:\\b,32");
    OpenFirstDrive();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 62 (Input past end of file) dans la procédure MAJListeFich, module frmRestaureCD"),
              0u);
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(1, 0), L"C:\\b");
    EXPECT_EQ(Cell(1, 3), L"");
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, CommaInAPathSplitsItAndNothingIsReported) {
    AddBackup(L"E:\\", "C:\\un,deux.txt,32,Zip0001\r\n");
    OpenFirstDrive();
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    ASSERT_EQ(RowCount(), 1);
    EXPECT_EQ(Cell(0, 0), L"C:\\un");
    EXPECT_EQ(Cell(0, 2), L"deux.txt");
}

TEST_F(RestoreWindow, UntickingTheLastRowDisablesTheLaunch) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
    TickByKey(1);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
    TickByKey(1);
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, AllRowsAreTickedAndUntickedAtOnce) {
    AddTwoItems();
    OpenFirstDrive();
    Click(IDC_cmdToutDeselectionner);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_FALSE(IsTicked(1));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
    Click(IDC_cmdToutSelectionner);
    EXPECT_TRUE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, HundredThousandRowsAreShownAndTickedInTwoSeconds) {
    std::string list;
    for (int line = 1; line <= 100000; ++line)
        list += "**UserProfile**\\Documents\\Dossier " + std::to_string(line) + "\\fichier.txt,32,Zip" +
                std::to_string(10000 + line) + "\r\n";
    AddBackup(L"E:\\", list);
    Open();
    const double start = ProcessorSeconds();
    SelectDrive(0);
    ui::RunPendingMessages();
    const double seconds = ProcessorSeconds() - start;
    EXPECT_EQ(RowCount(), 100000);
    EXPECT_TRUE(IsTicked(99999));
    EXPECT_LT(seconds, 2.0);
    const double tickStart = ProcessorSeconds();
    Click(IDC_cmdToutDeselectionner);
    Click(IDC_cmdToutSelectionner);
    ui::RunPendingMessages();
    const double tickSeconds = ProcessorSeconds() - tickStart;
    EXPECT_LT(tickSeconds, 1.0);
    std::printf("100,000 rows: shown and ticked in %.3f s, all unticked and ticked again in %.3f s\n", seconds,
                tickSeconds);
}

TEST_F(RestoreWindow, CanBeOpenedAgainAndAgain) {
    AddTwoItems();
    Open();
    form.Unload();
    const Footprint before = FootprintNow();
    for (int round = 0; round < 10; ++round) {
        OpenFirstDrive();
        EXPECT_EQ(RowCount(), 2);
        SendDeviceChange();
        form.Unload();
    }
    LetRefreshHappen();
    EXPECT_EQ(FootprintNow(), before);
}

} // namespace
