#include "Footprint.h"
#include "RestoreWindowBench.h"
#include "resources/TextId.h"

namespace {

TEST_F(RestoreWindow, HookStandsBeforeTheWindowsOwnProcedureAndGivesItBack) {
    Open();
    EXPECT_EQ(Procedure(), &modFonctionsCommunes::MyWindowProcRestaureCD);
    form.Unload();
    Open();
    EXPECT_TRUE(IsHooked());
}

TEST_F(RestoreWindow, EveryMessageIsPassedOnToTheSavedProcedure) {
    Open();
    // Only the dialog's own procedure knows the default button.
    EXPECT_NE(SendMessageW(form.Handle(), DM_GETDEFID, 0, 0), 0);
    form.SetTitle(L"passed on");
    EXPECT_EQ(form.Title(), L"passed on");
    EXPECT_EQ(SendMessageW(form.Handle(), WM_DEVICECHANGE, 7, 0),
              CallWindowProcW(reinterpret_cast<WNDPROC>(DefDlgProcW), form.Handle(), WM_DEVICECHANGE, 7, 0));
}

TEST_F(RestoreWindow, DeviceArrivalRefreshesTheDriveListByItself) {
    Open();
    AddTwoItems();
    SendDeviceChange();
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(WaitFor([&] { return RowCount() == 2; }));
    EXPECT_LT(GetTickCount64() - start, 500u);
    EXPECT_EQ(DriveLinesShown(), Texts{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
}

TEST_F(RestoreWindow, TicksAndSelectionStayWhileTheSameMediumIsThere) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    machine.drives.drives.insert(machine.drives.drives.begin(),
                                 {L"A:\\", DriveType::Removable, std::nullopt, {}, true, false});
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return DriveLinesShown().size() == 2; }));
    EXPECT_EQ(SelectedDrive(), 1);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    EXPECT_EQ(List().Selected(), 0);
}

TEST_F(RestoreWindow, TicksAreMadeAnewForAnotherMedium) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\x,32,Zip0001\r\n");
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return RowCount() == 1; }));
    EXPECT_EQ(Cell(0, 0), L"C:\\x");
    EXPECT_TRUE(IsTicked(0));
}

TEST_F(RestoreWindow, PulledOutMediumTakesItsRowsWithIt) {
    AddTwoItems();
    machine.drives.Add(L"F:\\", DriveType::Removable, L"VIDE");
    OpenFirstDrive();
    machine.drives.Remove(L"E:\\");
    machine.files.Remove(L"E:\\");
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return DriveLinesShown().size() == 1; }));
    EXPECT_EQ(Cell(0, 0), machine.app.Text(TextId::NoBackupOnDisk));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, OlderFormatIsSaidOnceHoweverManyDevicesCome) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32\r\n");
    OpenFirstDrive();
    for (int round = 0; round < 3; ++round) {
        SendDeviceChange();
        LetRefreshHappen();
    }
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(RestoreWindow, MenuAndItsKeyFillTheDriveListAgain) {
    Open();
    machine.drives.Add(L"E:\\", DriveType::Removable, L"UN");
    HMENU menu = GetSubMenu(GetMenu(form.Handle()), 0);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(GetMenuItemID(menu, 0), static_cast<UINT>(IDC_mnuRaffraichir_Rafraichir));
    wchar_t caption[40] = {};
    GetMenuStringW(GetMenu(form.Handle()), 0, caption, 40, MF_BYPOSITION);
    EXPECT_STREQ(caption, L"&Rafraîchir");
    SendMessageW(form.Handle(), WM_COMMAND, GetMenuItemID(menu, 0), 0);
    EXPECT_EQ(DriveLinesShown(), Texts{L"E:\\ Disque amovible  Volume : UN"});
    machine.drives.Add(L"F:\\", DriveType::Removable, L"DEUX");
    Press(IDC_lstDrive, VK_F5);
    EXPECT_EQ(DriveLinesShown().size(), 2u);
}

TEST_F(RestoreWindow, StormOfDevicesLeavesTheListRightAndNothingBehind) {
    AddTwoItems();
    OpenFirstDrive();
    LetRefreshHappen();
    const Footprint before = FootprintNow();
    EXPECT_GT(before.handles, 0u);
    EXPECT_GT(before.gdiObjects, 0u);
    for (int change = 0; change < 500; ++change) {
        if (change % 2 == 0)
            machine.drives.Add(L"F:\\", DriveType::Removable, L"PASSAGER");
        else
            machine.drives.Remove(L"F:\\");
        SendMessageW(form.Handle(), WM_DEVICECHANGE, change % 2 == 0 ? 0x8000 : 0x8004, 0);
        if (change % 10 == 0) TickByKey(1);
        if (change % 50 == 0) {
            SelectDrive(0);
            LetRefreshHappen();
        }
        ui::RunPendingMessages();
    }
    LetRefreshHappen();
    EXPECT_EQ(DriveLinesShown(), Texts{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(FootprintNow(), before);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(RestoreWindow, StormDuringThePasswordDialogDisturbsNothing) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        for (int change = 0; change < 100; ++change) SendDeviceChange();
        LetRefreshHappen();
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(InnerExtractions().size(), 1u);
    EXPECT_TRUE(mainWindow.FullExit());
}

} // namespace
