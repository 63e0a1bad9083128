#include "BackupWindowBench.h"
#include "CaptionFit.h"
#include "resources/TextId.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST_F(BackupWindowTest, ABackupToARemovableDiskEndsTheProgram) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    AddItems();
    Click(IDC_cmdLancer);
    ExpectOnlyBox(Resource(TextId::BackupDone), Resource(TextId::BackupDoneTitle), box::Exclamation);
    EXPECT_TRUE(machine.files.FileExists(L"E:\\OKRBACKUP.ZIP"));
    EXPECT_TRUE(machine.files.FileExists(L"E:\\_listFich.lst"));
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(true));
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(machine.power.awakeHoldsTaken, 1);
}

TEST_F(BackupWindowTest, WhileTheArchiveIsBuiltOnlyStopCanBePressed) {
    OpenRemovable();
    AddItems();
    int looks = 0;
    whileArchiving = [&] {
        ++looks;
        EXPECT_TRUE(IsVisible(IDC_fProgression));
        EXPECT_FALSE(IsVisible(IDC_fParametres));
        EXPECT_TRUE(IsEnabled(IDC_cmdStopWrite));
        EXPECT_TRUE(IsVisible(IDC_cmdStopWrite));
        for (const int id : {IDC_cmdPrecedent, IDC_cmdQuitter, IDC_cmdLancer, IDC_cmbGraveur, IDC_cmdInfoDisque})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_FALSE(IsVisible(IDC_cmdLancer));
        EXPECT_FALSE(IsWindowEnabled(HostedAt(IDC_cmdAjouterRep)));
        EXPECT_EQ(Text(IDC_lblStatutGravure), Resource(TextId::BuildingList));
        Close();
        for (const int id : {IDC_cmdPrecedent, IDC_cmdQuitter})
            SendMessageW(form->Handle(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(At(id)));
        EXPECT_TRUE(form->IsLoaded());
    };
    Click(IDC_cmdLancer);
    EXPECT_EQ(looks, 4);
}

TEST_F(BackupWindowTest, TheKeyboardReachesStopDuringARunAndTheListAfterIt) {
    OpenRemovable();
    AddItems();
    SetActiveWindow(form->Handle());
    SetFocus(At(IDC_cmdLancer));
    whileArchiving = [&] { EXPECT_TRUE(HasFocus(IDC_cmdStopWrite)); };
    archiveSizeBytes = 1000000001;
    Click(IDC_cmdLancer);
    EXPECT_EQ(machine.processes.commandLines.size(), 4u);
    EXPECT_EQ(GetFocus(), HostedAt(IDC_lvFichRep));
}

TEST_F(BackupWindowTest, StoppingTheOnlyItemLeavesTheMediumUntouched) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old");
    ListViewDriver(HostedAt(IDC_lvFichRep)).Drop({L"C:\\Data\\a.txt"});
    whileArchiving = [this] {
        if (machine.processes.commandLines.size() == 2) PostMessageW(At(IDC_cmdStopWrite), BM_CLICK, 0, 0);
    };
    Click(IDC_cmdLancer);
    EXPECT_EQ(machine.processes.commandLines.size(), 2u);
    ExpectOnlyBox(Resource(TextId::BackupFailed), L"Error", box::Critical);
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "old");
    EXPECT_TRUE(form->IsLoaded());
}

TEST_F(BackupWindowTest, TheProgressStandsWhereItBelongs) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    const ui::BoundsTwips place = ui::BoundsOf(At(IDC_fProgression));
    EXPECT_NEAR(place.left, 120, 15);
    EXPECT_NEAR(place.top, 5925, 15);
    EXPECT_NEAR(place.width, 11640, 15);
    EXPECT_NEAR(place.height, 1965, 15);
    for (const int id :
         {IDC_lblStatutGravure, IDC_pbProgress, IDC_lblStatutGraveur, IDC_pbProgressTotal, IDC_cmdStopWrite}) {
        const ui::BoundsTwips inside = ui::BoundsOf(At(id));
        EXPECT_TRUE(IsVisible(id)) << id;
        EXPECT_GE(inside.top, place.top) << id;
        EXPECT_LE(inside.top + inside.height, place.top + place.height) << id;
        EXPECT_LE(inside.left + inside.width, place.left + place.width) << id;
    }
    EXPECT_EQ(OverlappingControls(form->Handle()), std::vector<std::string>());
    Click(IDC_cmdStopWrite);
}

TEST_F(BackupWindowTest, StoppingBetweenTwoItemsLeavesTheMediumUntouched) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old");
    AddItems();
    whileArchiving = [this] { PostMessageW(At(IDC_cmdStopWrite), BM_CLICK, 0, 0); };
    Click(IDC_cmdLancer);
    EXPECT_EQ(machine.processes.commandLines.size(), 2u);
    ExpectOnlyBox(Resource(TextId::BackupFailed), L"Error", box::Critical);
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "old");
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(IsVisible(IDC_fParametres));
    EXPECT_FALSE(IsVisible(IDC_fProgression));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, ARefusedPasswordLeavesTheWindowAsItWas) {
    OpenRemovable();
    AddItems();
    givesPassword = false;
    Click(IDC_cmdLancer);
    EXPECT_EQ(questions, 1);
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_THAT(machine.processes.commandLines, IsEmpty());
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    EXPECT_TRUE(IsVisible(IDC_fParametres));
}

TEST_F(BackupWindowTest, AMissingArchiverIsReported) {
    OpenRemovable();
    AddItems();
    machine.files.Remove(L"C:\\Valcoreaux\\Backup\\7Za.exe");
    SpeakEnglish();
    Click(IDC_cmdLancer);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"7Za.exe : Unable to compress data."));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Fatal error of the backup software");
    EXPECT_EQ(questions, 0);
}

TEST_F(BackupWindowTest, AnArchiveThatDoesNotFitIsSaid) {
    OpenRemovable();
    AddItems();
    archiveSizeBytes = 1000000001;
    Click(IDC_cmdLancer);
    ExpectOnlyBox(Resource(TextId::MediumTooSmall), Resource(TextId::CapacityReachedTitle), box::Exclamation);
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(IsVisible(IDC_fParametres));
}

TEST_F(BackupWindowTest, AVanishedDiskIsSaidToBeUnavailable) {
    OpenRemovable();
    AddItems();
    machine.drives.Remove(L"E:\\");
    Click(IDC_cmdLancer);
    ExpectOnlyBox(L"Disque amovible non disponible", L"Backup", box::Ok);
    EXPECT_EQ(PanelText(1), L"non disponible");
    EXPECT_EQ(questions, 0);
}

TEST_F(BackupWindowTest, ADiscIsWrittenUnderItsEventsAndEndsTheProgram) {
    OpenCd();
    AddItems();
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    Choose(IDC_cmbSpeed, 1);
    Click(IDC_cmdLancer);
    EXPECT_EQ(CdRecord().filesWritten.size(), 2u);
    EXPECT_EQ(CdRecord().label, L"14 mars, 2026");
    EXPECT_EQ(CdRecord().speed, 4);
    EXPECT_FALSE(form->StopWrite());
    EXPECT_FALSE(ui::IsHourglassShown());
    Cd().RaiseProgress(DiscOperation::Writing, 42, WritingStage::WritingTrack);
    EXPECT_EQ(Text(IDC_lblStatutGraveur), L"Ecriture de piste...");
    EXPECT_EQ(Progress(IDC_pbProgressTotal), 42);
    Cd().PlayToEnd();
    ExpectOnlyBox(Resource(TextId::BackupDone), Resource(TextId::BackupDoneTitle), box::Exclamation);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(true));
    EXPECT_EQ(CdRecord().shutDown, 1);
    EXPECT_EQ(CdRecord().alive, 0);
}

TEST_F(BackupWindowTest, StoppingABurnReturnsToTheSettingsAtOnce) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    Cd().RaiseProgress(DiscOperation::Writing, 30, WritingStage::WritingTrack);
    Click(IDC_cmdStopWrite);
    EXPECT_EQ(CdRecord().calls.back(), L"Abort");
    EXPECT_TRUE(IsVisible(IDC_fParametres));
    EXPECT_FALSE(IsVisible(IDC_fProgression));
    EXPECT_TRUE(IsEnabled(IDC_cmdPrecedent));
    EXPECT_TRUE(form->StopWrite());
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupWindowTest, AStartIsGreyAndSaysWhyUntilTheDriveHasEndedWhatWasStopped) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    Click(IDC_cmdStopWrite);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
    EXPECT_EQ(PanelText(1), L"Graveur occupé");
    Cd().PlayToEnd();
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    EXPECT_EQ(PanelText(1), L"Vierge");
}

TEST_F(BackupWindowTest, TheCrossIsRefusedDuringABurn) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    Close();
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_EQ(CdRecord().shutDown, 0);
    Click(IDC_cmdStopWrite);
    Close();
    EXPECT_FALSE(form->IsLoaded());
}

TEST_F(BackupWindowTest, AutoPlayStaysAwayFromDiscsWhileTheWindowIsInFront) {
    const UINT question = RegisterWindowMessageW(L"QueryCancelAutoPlay");
    OpenCd();
    EXPECT_EQ(SendMessageW(form->Handle(), question, 0, 0), TRUE);
}

TEST_F(BackupWindowTest, UnloadingDuringABurnShutsTheWriterDown) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    form->Unload();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(CdRecord().shutDown, 1);
    EXPECT_EQ(CdRecord().alive, 0);
}

TEST_F(BackupWindowTest, TheWindowMayCloseInsideAProgressEvent) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    form->Post([this] { form->Unload(); });
    Cd().RaiseProgress(DiscOperation::Writing, 30, WritingStage::WritingTrack);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(CdRecord().alive, 0);
}

} // namespace
