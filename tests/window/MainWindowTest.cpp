#include "CaptionFit.h"
#include "KeyboardReach.h"
#include "MainWindowBench.h"
#include "ScreenFit.h"
#include "core/StartUpValues.h"

namespace {

TEST_F(MainWindowTest, FrenchCaptions) {
    Start();
    const std::wstring version = std::to_wstring(BACKUP_VERSION_MAJOR) + L"." + std::to_wstring(BACKUP_VERSION_MINOR) +
                                 L"." + std::to_wstring(BACKUP_VERSION_REVISION);
    EXPECT_EQ(form.Title(), L"Copies de sécurité - Version " + version);
    EXPECT_EQ(Text(IDC_cmdSortie), L"&Quitter");
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Suivant...");
    EXPECT_EQ(Text(IDC_frmAction), L"&Action");
    EXPECT_EQ(Text(IDC_optRestaure), L"&Restaurer vos données");
    EXPECT_EQ(Text(IDC_optBackup), L"&Sauvegarder vos données");
    EXPECT_EQ(Text(IDC_frmMedium), L"Sauvegarder sur un(e)");
    EXPECT_EQ(Text(IDC_optCD), L"&CD-R/RW");
    EXPECT_EQ(Text(IDC_optDVD), L"&DVD±R/RW");
    EXPECT_EQ(Text(IDC_optDisqueAmovible), L"Disque amovible (port &USB)");
    EXPECT_EQ(Text(IDC_optDisqueExterne), L"Disque &externe (port USB)");
    EXPECT_EQ(Text(IDC_lblType), L"Type");
    EXPECT_EQ(Text(IDC_lblDetecte), L"Détecté");
    EXPECT_EQ(Text(IDC_cmdAide), L"A&ide");
}

TEST_F(MainWindowTest, EnglishCaptions) {
    StartInEnglish();
    EXPECT_TRUE(form.Title().starts_with(L"Backup - Version "));
    EXPECT_EQ(Text(IDC_cmdSortie), L"&Quit");
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Next...");
    EXPECT_EQ(Text(IDC_frmAction), L"&Action");
    EXPECT_EQ(Text(IDC_optRestaure), L"&Restore");
    EXPECT_EQ(Text(IDC_optBackup), L"&Backup");
    EXPECT_EQ(Text(IDC_frmMedium), L"Save on a");
    EXPECT_EQ(Text(IDC_optCD), L"&CD-R/RW");
    EXPECT_EQ(Text(IDC_optDVD), L"&DVD±R/RW");
    EXPECT_EQ(Text(IDC_optDisqueAmovible), L"Removable disk (&USB Port)");
    EXPECT_EQ(Text(IDC_optDisqueExterne), L"&External disk (USB port)");
    EXPECT_EQ(Text(IDC_lblType), L"Type");
    EXPECT_EQ(Text(IDC_lblDetecte), L"Detected");
    EXPECT_EQ(Text(IDC_cmdAide), L"&Help");
}

TEST_F(MainWindowTest, EveryCaptionFitsInFrench) {
    Start();
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
    EXPECT_EQ(OverlappingControls(form.Handle()), std::vector<std::string>{});
    EXPECT_EQ(TooLargeForScreen(form.Handle()), "");
    Click(IDC_optRestaure);
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
}

TEST_F(MainWindowTest, EveryCaptionFitsInEnglish) {
    StartInEnglish();
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
    Click(IDC_optRestaure);
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
    EXPECT_EQ(OverlappingControls(form.Handle()), std::vector<std::string>{});
}

TEST_F(MainWindowTest, EveryControlIsReachedByKeyboardAndNamed) {
    AddEverything();
    Start();
    EXPECT_EQ(UnreachableControls(form.Handle()), Ids{});
    EXPECT_EQ(UnlabelledFields(form.Handle()), Ids{});
    EXPECT_EQ(LabelOf(At(IDC_pgbInit)), L"Scan des bus IDE / SCSI / USB / IEEE1394 en cours");
    Click(IDC_optDisqueAmovible);
    EXPECT_EQ(TabOrder(form.Handle()),
              (Ids{IDC_optBackup, IDC_optDisqueAmovible, IDC_cboDrive, IDC_cmdBackup, IDC_cmdSortie, IDC_cmdAide}));
}

TEST_F(MainWindowTest, AccessKeysClashOnlyWhereTheTextsShareThem) {
    Start();
    EXPECT_EQ(AccessKeyClashes(form.Handle()), L"S"); // "&Suivant..." and "&Sauvegarder vos données"
}

TEST_F(MainWindowTest, EnglishAccessKeysAllDiffer) {
    StartInEnglish();
    EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
    Click(IDC_optRestaure);
    EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
}

TEST_F(MainWindowTest, StartUpTakesItsStepsInOrder) {
    AddEverything();
    Words steps;
    std::vector<int> progress;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        // The question comes with the external disks: both writers have been looked for, no removable disk yet.
        EXPECT_EQ(machine.discWriters.cdRecord.shutDown, 1);
        EXPECT_EQ(machine.discWriters.dvdRecord.shutDown, 1);
        EXPECT_EQ(DetectionLabels(), (Words{L"Oui", L"Oui", L"", L""}));
        EXPECT_EQ(Progress(IDC_pgbInit), 4);
        EXPECT_TRUE(IsVisible(IDC_pgbInit));
        EXPECT_TRUE(ui::IsHourglassShown());
        EXPECT_EQ(Text(IDC_optCD), L"&CD-R/RW");
        EXPECT_EQ(machine.app.startUp->strRepRacine, L"C:\\Valcoreaux");
        for (const int id : {IDC_optBackup, IDC_optRestaure, IDC_cmdBackup, IDC_cmdSortie, IDC_cboDrive,
                             IDC_cboDisqueExterne, IDC_optDisqueAmovible, IDC_optDisqueExterne})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_EQ(machine.app.startUp->dblEspaceDisponible, 0);
    };
    Start();
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_FALSE(IsVisible(IDC_pgbInit));
    EXPECT_EQ(Progress(IDC_pgbInit), 6);
    EXPECT_FALSE(ui::IsHourglassShown());
    for (const int id : {IDC_optBackup, IDC_optRestaure, IDC_cmdBackup, IDC_cmdSortie, IDC_cmdAide})
        EXPECT_TRUE(IsEnabled(id)) << id;
    EXPECT_TRUE(IsChecked(IDC_optBackup));
    EXPECT_EQ(machine.app.startUp->dblEspaceDisponible, 12345678);
    EXPECT_EQ(machine.drives.touched.size(), 52u);
}

TEST_F(MainWindowTest, FocusStartsOnTheActionWithNextAndQuitByKey) {
    Start();
    EXPECT_TRUE(HasFocus(IDC_optBackup));
    EXPECT_EQ(DefaultButton(), IDC_cmdBackup);
    Press(VK_ESCAPE);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, EnterOpensTheChosenWindow) {
    AddRemovable(L"E:\\");
    Start();
    Press(VK_RETURN);
    EXPECT_EQ(openings.size(), 1u);
}

TEST_F(MainWindowTest, ArrowKeysChooseTheAction) {
    Start();
    Press(VK_DOWN);
    EXPECT_TRUE(IsChecked(IDC_optRestaure));
    EXPECT_FALSE(IsVisible(IDC_frmMedium));
    Press(VK_UP);
    EXPECT_TRUE(IsChecked(IDC_optBackup));
    EXPECT_TRUE(IsVisible(IDC_frmMedium));
}

TEST_F(MainWindowTest, ArrowKeysGoThroughTheMediaAndNotIntoTheDriveLists) {
    AddEverything();
    Start();
    SendMessageW(form.Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(At(IDC_optCD)), TRUE);
    for (const int id : {IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne, IDC_optCD}) {
        Press(VK_DOWN);
        EXPECT_EQ(CheckedMedia(), Ids{id});
    }
}

TEST_F(MainWindowTest, RestoreHidesTheMediaAndWidensTheActionWithoutDetecting) {
    AddEverything();
    Start();
    EXPECT_NEAR(WidthTwips(IDC_frmAction), 3375, 8);
    const int created = machine.discWriters.cdRecord.created;
    Click(IDC_optRestaure);
    EXPECT_NEAR(WidthTwips(IDC_frmAction), 5775, 8);
    EXPECT_FALSE(IsVisible(IDC_frmMedium));
    EXPECT_FALSE(IsVisible(IDC_optCD));
    EXPECT_FALSE(IsVisible(IDC_cboDrive));
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Restaure...");
    EXPECT_EQ(machine.discWriters.cdRecord.created, created);
    Click(IDC_optBackup);
    EXPECT_NEAR(WidthTwips(IDC_frmAction), 3375, 8);
    EXPECT_TRUE(IsVisible(IDC_frmMedium));
    EXPECT_TRUE(IsVisible(IDC_optCD));
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Suivant...");
    EXPECT_EQ(machine.discWriters.cdRecord.created, created + 1);
}

TEST_F(MainWindowTest, WidenedActionFrameLeavesNoTraceOfItsOldEdge) {
    Start();
    ui::RunPendingMessages();
    RECT frame{};
    GetWindowRect(At(IDC_frmAction), &frame);
    MapWindowPoints(nullptr, form.Handle(), reinterpret_cast<POINT*>(&frame), 2);
    Click(IDC_optRestaure);
    ui::RunPendingMessages();
    const HDC screen = GetDC(form.Handle());
    const int row = frame.bottom - 10;
    const COLORREF inside = GetPixel(screen, frame.right - 20, row);
    for (int column = frame.right - 6; column < frame.right + 2; ++column)
        EXPECT_EQ(GetPixel(screen, column, row), inside) << column;
    ReleaseDC(form.Handle(), screen);
}

TEST_F(MainWindowTest, EachMediumIsHandedOverWithItsCodeAndDrive) {
    AddEverything();
    Start();
    Choose(IDC_cboDrive, 1);
    for (const int id : {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}) {
        Click(id);
        Click(IDC_cmdBackup);
    }
    ASSERT_EQ(openings.size(), 4u);
    EXPECT_EQ(openings[0].medium, Medium::Cd);
    EXPECT_EQ(openings[0].drive, std::nullopt);
    EXPECT_EQ(openings[1].medium, Medium::Dvd);
    EXPECT_EQ(openings[1].drive, std::nullopt);
    EXPECT_EQ(openings[2].medium, Medium::RemovableDisk);
    EXPECT_EQ(openings[2].drive, L"I:\\");
    EXPECT_EQ(openings[3].medium, Medium::ExternalDisk);
    EXPECT_EQ(openings[3].drive, L"J:\\");
    EXPECT_EQ(restores, 0);
}

TEST_F(MainWindowTest, RestoreIsOpenedWithTheOrdinaryPointer) {
    Start();
    Click(IDC_optRestaure);
    whenOpened = [](frmMain&) { EXPECT_FALSE(ui::IsHourglassShown()); };
    Click(IDC_cmdBackup);
    EXPECT_EQ(restores, 1);
    EXPECT_TRUE(openings.empty());
    EXPECT_TRUE(form.IsLoaded());
}

TEST_F(MainWindowTest, FullExitEndsTheProgramAsSoonAsTheBackupWindowCloses) {
    AddRemovable(L"E:\\");
    Start();
    EXPECT_FALSE(form.FullExit());
    whenOpened = [](frmMain& parent) { parent.SetFullExit(true); };
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, FullExitEndsTheProgramAfterARestore) {
    Start();
    Click(IDC_optRestaure);
    whenOpened = [](frmMain& parent) { parent.SetFullExit(true); };
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, BackFromTheBackupWindowLeavesTheMainWindowIdle) {
    AddRemovable(L"E:\\");
    Start();
    whenOpened = [](frmMain& parent) { parent.SetFullExit(false); };
    Click(IDC_cmdBackup);
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(IsEnabled(IDC_cmdBackup));
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(MainWindowTest, HelpOpensTheDocumentOfTheLanguageWithoutAMessage) {
    StartInEnglish();
    Click(IDC_cmdAide);
    ASSERT_EQ(machine.processes.opened.size(), 1u);
    EXPECT_EQ(machine.processes.opened[0].document, L"C:\\Valcoreaux\\Backup\\Backup.pdf");
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(MainWindowTest, QuitEndsWithoutAsking) {
    Start();
    Click(IDC_cmdSortie);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

} // namespace
