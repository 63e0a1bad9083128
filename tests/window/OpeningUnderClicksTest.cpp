#include "MainWindowBench.h"

namespace {

/// The window that is opened lets messages run while it is loaded, and goes again; what the user does meanwhile must
/// neither open a second one nor take the main window away under it.
class OpeningUnderClicks : public MainWindowTest {
  protected:
    void SetUp() override {
        AddRemovable(L"E:\\");
        Start();
    }
    void WhileOpening(std::function<void()> action) {
        whenOpened = [action = std::move(action)](frmMain&) {
            action();
            ui::RunPendingMessages();
        };
    }
};

TEST_F(OpeningUnderClicks, ASecondClickOpensNoSecondWindow) {
    WhileOpening([this] { PostMessageW(At(IDC_cmdBackup), BM_CLICK, 0, 0); });
    Click(IDC_cmdBackup);
    ui::RunPendingMessages();
    EXPECT_EQ(openings.size(), 1u);
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_FALSE(ui::IsHourglassShown());
    Click(IDC_cmdBackup);
    EXPECT_EQ(openings.size(), 2u) << "the next opening is not kept out";
}

TEST_F(OpeningUnderClicks, ASecondClickOpensNoSecondRestoreWindow) {
    Click(IDC_optRestaure);
    WhileOpening([this] { PostMessageW(At(IDC_cmdBackup), BM_CLICK, 0, 0); });
    Click(IDC_cmdBackup);
    EXPECT_EQ(restores, 1);
}

TEST_F(OpeningUnderClicks, QuitEndsTheProgramOnceTheOpeningIsOver) {
    WhileOpening([this] {
        Click(IDC_cmdSortie);
        EXPECT_TRUE(form.IsLoaded());
    });
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(OpeningUnderClicks, EscapeEndsTheProgramOnceTheOpeningIsOver) {
    WhileOpening([this] {
        SendMessageW(form.Handle(), WM_COMMAND, IDCANCEL, 0);
        EXPECT_TRUE(form.IsLoaded());
    });
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(OpeningUnderClicks, TheCrossEndsTheProgramOnceTheOpeningIsOver) {
    WhileOpening([this] {
        SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(form.IsLoaded());
    });
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(OpeningUnderClicks, AFailedOpeningGivesThePointerBackAndHonoursTheWishToEnd) {
    whenOpened = [](frmMain& parent) {
        parent.SetFullExit(true);
        throw RuntimeError(ErrorNumber::OutOfMemory);
    };
    Click(IDC_cmdBackup);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"cmdBackup_Click, module frmMain"), std::wstring::npos);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(OpeningUnderClicks, AFailedOpeningLeavesAWindowThatOpensTheNextOne) {
    whenOpened = [](frmMain&) { throw RuntimeError(ErrorNumber::OutOfMemory); };
    Click(IDC_cmdBackup);
    EXPECT_FALSE(ui::IsHourglassShown());
    EXPECT_TRUE(form.IsLoaded());
    Click(IDC_cmdBackup);
    EXPECT_EQ(openings.size(), 2u);
}

TEST_F(OpeningUnderClicks, TheHourglassShowsFromTheClickUntilABackupWindowTakesOver) {
    bool wasHourglass = false;
    whenOpened = [&](frmMain&) { wasHourglass = ui::IsHourglassShown(); };
    Click(IDC_cmdBackup);
    EXPECT_TRUE(wasHourglass);
    EXPECT_FALSE(ui::IsHourglassShown());
}

} // namespace
