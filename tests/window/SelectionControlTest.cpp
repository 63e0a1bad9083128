#include "CaptionFit.h"
#include "KeyboardReach.h"
#include "SelectionControlBench.h"
#include "core/LanguageValues.h"

namespace {

TEST_F(SelectionControlTest, FrenchCaptions) {
    Open();
    EXPECT_EQ(Text(IDC_frmFileView), L"Fichiers et répertoires ");
    EXPECT_EQ(Text(IDC_cmdAjouterFichier), L"Ajouter les  &fichiers sélectionnés");
    EXPECT_EQ(Text(IDC_cmdAjouterRep), L"Ajouter le &répertoire");
    EXPECT_EQ(Text(IDC_frmSauvegardeOKR), L"Sau&vegarde des logiciels OKR");
    EXPECT_EQ(Text(IDC_chkSauvOKR0), L"&Illustrations et concepts de vente (Quillet, Rentes, ABF, Brinde)");
    EXPECT_EQ(Text(IDC_chkSauvOKR1), L"Gestion de la &clientèle");
    EXPECT_EQ(Text(IDC_chkSauvOKR2), L"Sauvegarde &Mes documents Tarvel (C:\\Repres\\Documents)");
    EXPECT_EQ(Text(IDC_chkSauvOKR3), L"Outlook");
    EXPECT_EQ(Text(IDC_frmDView), L"Liste des fichiers / Répertoires à graver ");
    EXPECT_EQ(Text(IDC_cmdOuvrirExplorer), L"Ouvrir l'explorateur &Windows");
    EXPECT_EQ(Text(IDC_cmdEffacerTouteListe), L"Effacer to&ute la liste");
    EXPECT_EQ(Text(IDC_cmdEffacerFichierListe), L"Eff&acer de la liste");
    EXPECT_EQ(List().Headers(), (Texts{L"Nº", L"Fichiers et répertoires", L"Type", L""}));
}

TEST_F(SelectionControlTest, EnglishCaptions) {
    machine.app.language->lngLangue = 10000;
    Open();
    EXPECT_EQ(Text(IDC_frmFileView), L"Files and folders ");
    EXPECT_EQ(Text(IDC_cmdAjouterFichier), L"Add selected &files");
    EXPECT_EQ(Text(IDC_cmdAjouterRep), L"Add selected folde&r");
    EXPECT_EQ(Text(IDC_frmSauvegardeOKR), L"Backup ORK software");
    EXPECT_EQ(Text(IDC_chkSauvOKR0), L"&Illustrations and sale concepts (Quill, Non UL, Annuities, FNA, Brinde)");
    EXPECT_EQ(Text(IDC_chkSauvOKR1), L"Save &Client Liaison");
    EXPECT_EQ(Text(IDC_chkSauvOKR2), L"Save &My Tarvel documents (C:\\Repres\\Documents)");
    EXPECT_EQ(Text(IDC_chkSauvOKR3), L"Outlook");
    EXPECT_EQ(Text(IDC_frmDView), L"List of files and folders to backup ");
    EXPECT_EQ(Text(IDC_cmdOuvrirExplorer), L"&Open Windows Explorer");
    EXPECT_EQ(Text(IDC_cmdEffacerTouteListe), L"Remove the w&hole list");
    EXPECT_EQ(Text(IDC_cmdEffacerFichierListe), L"Remove from &list");
    EXPECT_EQ(List().Headers(), (Texts{L"Num", L"Files and directories", L"Type", L""}));
}

TEST_F(SelectionControlTest, EveryCaptionFitsInBothLanguages) {
    Open();
    EXPECT_EQ(ClippedCaptions(control->Handle()), std::vector<std::string>{});
    EXPECT_EQ(OverlappingControls(control->Handle()), std::vector<std::string>{});
    control.reset();
    parent.Unload();
    machine.app.language->lngLangue = 10000;
    Open();
    EXPECT_EQ(ClippedCaptions(control->Handle()), std::vector<std::string>{});
}

TEST_F(SelectionControlTest, StandsAboveThePlaceOfTheProgress) {
    Open();
    RECT size{};
    GetWindowRect(control->Handle(), &size);
    EXPECT_LE(ui::TwipsFromPixels(size.bottom - size.top, control->Handle()), 5850);
}

TEST_F(SelectionControlTest, EveryControlIsReachedByKeyboardAndNamed) {
    AddListFile(L"vexal.lst", "D:\\Data\\x.dat");
    AddListFile(L"qamor.lst", "D:\\Data\\y.dat");
    AddListFile(L"tarvel.lst", "D:\\Data\\z.dat");
    AddListFile(L"outlookVista.lst", "D:\\Data");
    Open();
    EXPECT_EQ(UnreachableControls(control->Handle()), Ids{});
    EXPECT_EQ(UnlabelledFields(control->Handle()), Ids{});
    EXPECT_EQ(AccessKeyClashes(control->Handle()), L"");
    EXPECT_EQ(TabOrder(control->Handle()),
              (Ids{IDC_dlbSelectLecteur, IDC_dlbSelectRep, IDC_cmdAjouterRep, IDC_flbSelectFichier,
                   IDC_cmdAjouterFichier, IDC_chkSauvOKR0, IDC_chkSauvOKR1, IDC_chkSauvOKR2, IDC_chkSauvOKR3,
                   IDC_lvFichRep, IDC_cmdOuvrirExplorer, IDC_cmdEffacerTouteListe, IDC_cmdEffacerFichierListe}));
}

TEST_F(SelectionControlTest, StartsInTheUsersDocuments) {
    Open();
    EXPECT_EQ(Drive(), L"c: [Système]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent", L"Documents", L"Ventes"}));
    EXPECT_EQ(Selected(IDC_dlbSelectRep), 3);
    EXPECT_EQ(Lines(IDC_flbSelectFichier), (Texts{L"a.txt", L"b.txt", L"c.txt"}));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionControlTest, StaysOnTheProgramsDriveWithoutDocuments) {
    machine.environment.Set(L"UserProfile", L"C:\\Nobody");
    machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
    Open();
    EXPECT_EQ(Drive(), L"c: [Système]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Valcoreaux", L"Backup"}));
}

TEST_F(SelectionControlTest, OneClickOpensAFolderAndTheFilesFollow) {
    Open();
    machine.files.AddFile(L"C:\\Users\\agent\\Documents\\Ventes\\v.txt");
    ClickLine(IDC_dlbSelectRep, 4);
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent", L"Documents", L"Ventes"}));
    EXPECT_EQ(Lines(IDC_flbSelectFichier), (Texts{L"v.txt"}));
    ClickLine(IDC_dlbSelectRep, 1);
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent"}));
}

TEST_F(SelectionControlTest, ArrowKeysMoveThroughTheFoldersAndEnterOpens) {
    Open();
    Press(IDC_dlbSelectRep, VK_DOWN);
    EXPECT_EQ(Selected(IDC_dlbSelectRep), 4);
    EXPECT_EQ(Lines(IDC_flbSelectFichier).size(), 3u) << "the files are still those of the open folder";
    Press(IDC_dlbSelectRep, VK_RETURN);
    EXPECT_TRUE(Lines(IDC_flbSelectFichier).empty());
    Press(IDC_dlbSelectRep, VK_UP);
    Press(IDC_dlbSelectRep, VK_SPACE);
    EXPECT_EQ(Lines(IDC_flbSelectFichier).size(), 3u);
}

TEST_F(SelectionControlTest, FolderWithoutAccessIsReportedAndTheListsStay) {
    Open();
    machine.files.Deny(L"C:\\Users\\agent\\Documents\\Ventes");
    ClickLine(IDC_dlbSelectRep, 4);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"dlbSelectRep_Click, module frmBackupCD"), std::wstring::npos);
    EXPECT_EQ(Lines(IDC_flbSelectFichier).size(), 3u);
}

TEST_F(SelectionControlTest, ChoosingADriveOpensItsRoot) {
    Open();
    ChooseDrive(2);
    EXPECT_EQ(Drive(), L"d: [Données]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"D:\\", L"Data"}));
    EXPECT_TRUE(Lines(IDC_flbSelectFichier).empty());
}

TEST_F(SelectionControlTest, ChoosingAFloppyDriveMovesNothing) {
    machine.files.AddFile(L"A:\\floppy.txt");
    Open();
    ChooseDrive(0);
    EXPECT_EQ(Lines(IDC_dlbSelectRep).back(), L"Ventes");
    EXPECT_EQ(Lines(IDC_flbSelectFichier), (Texts{L"a.txt", L"b.txt", L"c.txt"}));
    EXPECT_EQ(Drive(), L"a:");
}

TEST_F(SelectionControlTest, EmptyDriveIsReportedAndTheDriveGoesBack) {
    Open();
    ChooseDrive(3);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"71 (Disk not ready)"), std::wstring::npos);
    EXPECT_EQ(Drive(), L"c: [Système]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep).back(), L"Ventes");
}

TEST_F(SelectionControlTest, DisabledControlGreysAllButTheFourBoxes) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat");
    Open();
    control->SetEnabled(false);
    EXPECT_FALSE(control->Enabled());
    for (const int id : {IDC_frmFileView, IDC_dlbSelectLecteur, IDC_dlbSelectRep, IDC_flbSelectFichier,
                         IDC_cmdAjouterFichier, IDC_cmdAjouterRep, IDC_frmSauvegardeOKR, IDC_frmDView, IDC_lvFichRep,
                         IDC_cmdOuvrirExplorer, IDC_cmdEffacerTouteListe, IDC_cmdEffacerFichierListe})
        EXPECT_FALSE(IsEnabled(id)) << id;
    EXPECT_TRUE(IsEnabled(IDC_chkSauvOKR1));
    EXPECT_FALSE(IsEnabled(IDC_chkSauvOKR0)) << "a box keeps its own state";
    EXPECT_FALSE(IsWindowEnabled(control->Handle()));
    control->SetEnabled(true);
    EXPECT_TRUE(control->Enabled());
    EXPECT_TRUE(IsEnabled(IDC_lvFichRep));
    EXPECT_TRUE(IsWindowEnabled(control->Handle()));
}

TEST_F(SelectionControlTest, ExplorerIsStartedFromTheWindowsFolder) {
    Open();
    Click(IDC_cmdOuvrirExplorer);
    EXPECT_EQ(machine.processes.started, (Texts{L"C:\\windows\\explorer.exe"}));
    machine.processes.canStart = false;
    Click(IDC_cmdOuvrirExplorer);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"cmdOuvrirExplorer_Click, module frmBackupCD"),
              std::wstring::npos);
}

TEST_F(SelectionControlTest, SystemVersionSaysWhetherItIsVista) {
    Open();
    EXPECT_TRUE(control->IsWinVista());
    machine.operatingSystem.version = {2, 5, 2};
    EXPECT_FALSE(control->IsWinVista());
    machine.operatingSystem.version = {1, 6, 0};
    EXPECT_FALSE(control->IsWinVista());
}

} // namespace
