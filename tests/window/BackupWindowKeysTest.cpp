#include "BackupWindowBench.h"

namespace {

TEST_F(BackupWindowTest, EscapeDoesNothing) {
    OpenRemovable();
    AddItems();
    MSG key{GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0, 0, {}};
    form->TranslateKeys(key);
    SendMessageW(form->Handle(), WM_COMMAND, IDCANCEL, 0);
    ui::RunPendingMessages();
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(mainWindow.fullExits.empty());
}

TEST_F(BackupWindowTest, AfterAFailedRunTheFocusIsOnTheList) {
    OpenRemovable();
    AddItems();
    SetActiveWindow(form->Handle());
    SetFocus(At(IDC_cmdLancer));
    archiveSizeBytes = 1000000001;
    machine.messageBoxes.whileShown = [this](const FakeMessageBoxes::Box&) {
        // The medium has filled up meanwhile: the start button does not come back.
        machine.drives.At(L"E:\\")->space.freeBytes = 1;
    };
    Click(IDC_cmdLancer);
    EXPECT_EQ(GetFocus(), HostedAt(IDC_lvFichRep));
}

} // namespace
