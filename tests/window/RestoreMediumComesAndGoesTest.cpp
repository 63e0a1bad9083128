// A medium that goes and comes back, and one that takes another's place, also while the password is asked for.
#include "RestoreWindowBench.h"
#include "core/ArchiveValues.h"
#include "core/StartUpValues.h"
#include "resources/TextId.h"

namespace {

class MediumComesAndGoes : public RestoreWindow {
  protected:
    void AddThreeItems() {
        AddBackup(L"E:\\", "C:\\a.txt,32,Zip0001\r\nC:\\b.txt,32,Zip0002\r\nC:\\c.txt,32,Zip0003\r\n");
    }
    void OpenDriveE() {
        Open();
        SelectDrive(static_cast<int>(DriveLinesShown().size()) - 1);
        ASSERT_EQ(RowCount(), 3);
    }
    /// The plug loses contact: letter and content are gone, and the list shows it.
    void PullOut() {
        stick = *machine.drives.At(L"E:\\");
        machine.drives.Remove(L"E:\\");
        list = machine.files.Read(L"E:\\_listFich.lst");
        machine.files.Remove(L"E:\\");
        SendDeviceChange();
        ASSERT_TRUE(WaitFor([&] { return RowCount() != 3; }));
    }
    void PutBack(const std::wstring& root = L"E:\\") {
        stick.root = root;
        machine.drives.drives.push_back(stick);
        machine.files.AddFile(root + L"_listFich.lst", list);
        machine.files.AddFile(root + L"OKRBACKUP.ZIP", "archive");
        SendDeviceChange();
        ASSERT_TRUE(WaitFor([&] { return RowCount() == 3; }));
    }
    void ExpectNothingWasRun() {
        EXPECT_EQ(machine.processes.commandLines, Texts());
        EXPECT_TRUE(form.IsLoaded());
        EXPECT_TRUE(IsEnabled(IDC_lstDrive));
        EXPECT_FALSE(mainWindow.FullExit());
        EXPECT_TRUE(machine.messageBoxes.shown.empty());
    }
    std::vector<bool> Ticks() const { return {IsTicked(0), IsTicked(1), IsTicked(2)}; }

    FakeDrives::Drive stick;
    std::string list;
};

TEST_F(MediumComesAndGoes, SameMediumReturnsWithItsTicks) {
    AddThreeItems();
    OpenDriveE();
    TickByKey(0);
    TickByKey(2);
    PullOut();
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
    PutBack();
    EXPECT_EQ(Ticks(), (std::vector<bool>{false, true, false}));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
    TickByKey(1);
    PullOut();
    PutBack();
    EXPECT_EQ(Ticks(), (std::vector<bool>{false, false, false}));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(MediumComesAndGoes, DriveThatTheUserChoseIsChosenAgainWhenItReturns) {
    machine.drives.Add(L"D:\\", DriveType::Removable, L"AUTRE");
    AddThreeItems();
    OpenDriveE();
    TickByKey(0);
    PullOut();
    EXPECT_EQ(SelectedDrive(), 0) << "the first drive stands in";
    PutBack();
    EXPECT_EQ(SelectedDrive(), 1);
    EXPECT_EQ(Ticks(), (std::vector<bool>{false, true, true}));
}

TEST_F(MediumComesAndGoes, DriveThatTheUserTurnedToMeanwhileIsNotTakenAway) {
    AddBackup(L"D:\\", "C:\\x.txt,32,Zip0001\r\nC:\\y.txt,32,Zip0002\r\n", L"AUTRE");
    AddThreeItems();
    OpenDriveE();
    PullOut();
    ASSERT_EQ(Cell(0, 0), L"C:\\x.txt");
    TickByKey(0);
    stick.root = L"E:\\";
    machine.drives.drives.push_back(stick);
    machine.files.AddFile(L"E:\\_listFich.lst", list);
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "archive");
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return DriveLinesShown().size() == 2; }));
    EXPECT_EQ(Cell(0, 0), L"C:\\x.txt");
    EXPECT_FALSE(IsTicked(0));
}

TEST_F(MediumComesAndGoes, SameMediumUnderAnotherLetterReturnsWithItsTicks) {
    AddThreeItems();
    OpenDriveE();
    TickByKey(1);
    PullOut();
    PutBack(L"G:\\");
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, false, true}));
}

TEST_F(MediumComesAndGoes, MenuBringsBackTheTicksOfADriveThatReturnedUnheard) {
    AddThreeItems();
    OpenDriveE();
    TickByKey(0);
    stick = *machine.drives.At(L"E:\\");
    machine.drives.Remove(L"E:\\");
    SendMessageW(form.Handle(), WM_COMMAND, IDC_mnuRaffraichir_Rafraichir, 0);
    EXPECT_EQ(RowCount(), 0);
    machine.drives.drives.push_back(stick);
    SendMessageW(form.Handle(), WM_COMMAND, IDC_mnuRaffraichir_Rafraichir, 0);
    ASSERT_EQ(RowCount(), 3);
    EXPECT_EQ(Ticks(), (std::vector<bool>{false, true, true}));
}

TEST_F(MediumComesAndGoes, WindowOpenedAnewTicksEverything) {
    AddThreeItems();
    OpenDriveE();
    TickByKey(0);
    form.Unload();
    OpenDriveE();
    EXPECT_EQ(Ticks(), (std::vector<bool>{true, true, true}));
}

TEST_F(MediumComesAndGoes, BlinkUnderThePasswordRestoresWhatWasTickedAndNothingElse) {
    AddThreeItems();
    OpenDriveE();
    TickByKey(0);
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        PullOut();
        PutBack();
    };
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 2u);
    EXPECT_NE(InnerExtractions()[0].find(L"Zip0002"), std::wstring::npos);
    EXPECT_NE(InnerExtractions()[1].find(L"Zip0003"), std::wstring::npos);
    EXPECT_TRUE(mainWindow.FullExit());
}

TEST_F(MediumComesAndGoes, AnotherMediumUnderThePasswordIsShownAndNotRestored) {
    AddThreeItems();
    OpenDriveE();
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        machine.files.AddFile(L"E:\\_listFich.lst", "C:\\other.txt,32,Zip0001\r\n");
        SendDeviceChange();
        EXPECT_TRUE(WaitFor([&] { return RowCount() == 1; }));
    };
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
    EXPECT_EQ(Cell(0, 0), L"C:\\other.txt");
    EXPECT_EQ(machine.power.awakeHolds, 0);
}

TEST_F(MediumComesAndGoes, AnotherMediumThatCameUnheardUnderThePasswordIsNotRestoredEither) {
    AddThreeItems();
    OpenDriveE();
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] { machine.drives.At(L"E:\\")->label = L"AUTRE"; };
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
}

TEST_F(MediumComesAndGoes, MediumOfAnotherDriveUnderThePasswordIsNotRestored) {
    AddThreeItems();
    OpenDriveE();
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        PullOut();
        AddBackup(L"F:\\", "C:\\f.txt,32,Zip0001\r\n");
        SendDeviceChange();
        EXPECT_TRUE(WaitFor([&] { return RowCount() == 1; }));
    };
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
}

TEST_F(MediumComesAndGoes, NoMediumUnderThePasswordMeansNoArchiver) {
    AddThreeItems();
    OpenDriveE();
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] { PullOut(); };
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
    EXPECT_EQ(dialogs.seen, 1u);
}

TEST_F(MediumComesAndGoes, MediumThatWentUnheardUnderThePasswordMeansNoArchiver) {
    AddThreeItems();
    OpenDriveE();
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        machine.drives.Remove(L"E:\\");
        machine.files.Remove(L"E:\\");
    };
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
    EXPECT_EQ(Cell(0, 0), machine.app.Text(TextId::NoBackupOnDisk));
}

TEST_F(MediumComesAndGoes, MediumThatWentAfterAWrongPasswordEndsTheAsking) {
    AddThreeItems();
    OpenDriveE();
    dialogs.passwords = {L"one", L"two"};
    machine.processes.exitCodes = {2, 0};
    machine.processes.effect = [&](const std::wstring&) { machine.files.Remove(L"E:\\"); };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(machine.processes.commandLines.size(), 1u);
    EXPECT_EQ(dialogs.seen, 2u);
    EXPECT_FALSE(mainWindow.FullExit());
}

TEST_F(MediumComesAndGoes, MediumThatWentUnheardBeforeTheLaunchAsksForNoPassword) {
    AddThreeItems();
    OpenDriveE();
    machine.files.Remove(L"E:\\");
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
    EXPECT_EQ(dialogs.seen, 0u);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(MediumComesAndGoes, WorkSpaceIsCheckedForTheArchiveThatWouldBeOpened) {
    AddThreeItems();
    OpenDriveE();
    machine.app.startUp->dblEspaceDisponible = 10;
    // What another window measured last is of no account.
    machine.app.archive->archiveSizeBytes = 1;
    machine.files.AddSizedFile(L"E:\\OKRBACKUP.ZIP", 10);
    Click(IDC_cmdLancerRestauration);
    ExpectNothingWasRun();
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(TextId::RestoreWorkSpaceTooSmall));
    EXPECT_EQ(dialogs.seen, 0u);
}

} // namespace
