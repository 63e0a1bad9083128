#include "BackupWindowBench.h"
#include "MainWindowBench.h"

namespace {

/// What the tool tips of the thread tell about the middle of a place, given in pixels of `window`.
std::wstring TipAt(HWND window, const RECT& place) {
    struct Search {
        TTHITTESTINFOW test{};
        std::wstring text;
    } search;
    search.test.hwnd = window;
    search.test.pt = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND candidate, LPARAM parameter) -> BOOL {
            wchar_t name[64] = {};
            GetClassNameW(candidate, name, 64);
            if (std::wstring(name) != TOOLTIPS_CLASSW) return TRUE;
            auto& found = *reinterpret_cast<Search*>(parameter);
            wchar_t text[256] = {};
            found.test.ti.cbSize = TTTOOLINFOW_V1_SIZE;
            found.test.ti.lpszText = text;
            if (SendMessageW(candidate, TTM_HITTESTW, 0, reinterpret_cast<LPARAM>(&found.test)) == FALSE) return TRUE;
            // Asked for its text, a tool that is told on demand asks its window.
            TTTOOLINFOW tool{};
            tool.cbSize = TTTOOLINFOW_V1_SIZE;
            tool.hwnd = found.test.ti.hwnd;
            tool.uId = found.test.ti.uId;
            tool.lpszText = text;
            SendMessageW(candidate, TTM_GETTEXTW, 256, reinterpret_cast<LPARAM>(&tool));
            found.text = text;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.text;
}

RECT PlaceOnForm(HWND form, HWND control) {
    RECT place{};
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

TEST_F(BackupWindowTest, EachPanelOfTheStatusBarHasItsTipWhateverItShows) {
    OpenRemovable();
    HWND bar = At(IDC_stBarDataWriter);
    WPARAM panel = 0;
    for (const TextId tip : {TextId::DiscTypeToolTip, TextId::DiscStatusToolTip, TextId::UsedSpaceToolTip,
                             TextId::TotalSpaceToolTip, TextId::TimeToolTip}) {
        RECT place{};
        SendMessageW(bar, SB_GETRECT, panel, reinterpret_cast<LPARAM>(&place));
        EXPECT_EQ(TipAt(bar, place), Resource(tip)) << panel;
        ++panel;
    }
}

TEST_F(BackupWindowTest, ThePanelsKeepTheirTipsWhileTheBarIsDisabled) {
    OpenRemovable();
    AddItems();
    int looks = 0;
    whileArchiving = [&] {
        ++looks;
        HWND bar = At(IDC_stBarDataWriter);
        RECT place{};
        SendMessageW(bar, SB_GETRECT, 1, reinterpret_cast<LPARAM>(&place));
        MapWindowPoints(bar, form->Handle(), reinterpret_cast<POINT*>(&place), 2);
        EXPECT_EQ(TipAt(form->Handle(), place), Resource(TextId::DiscStatusToolTip));
    };
    archiveSizeBytes = 1000000001;
    Click(IDC_cmdLancer);
    EXPECT_GT(looks, 0);
}

TEST_F(MainWindowTest, AHiddenWriterHasNoTip) {
    Start();
    const RECT place = PlaceOnForm(form.Handle(), At(IDC_optCD));
    EXPECT_EQ(TipAt(form.Handle(), place), L"Aucun graveur correctement configuré");
    Click(IDC_optRestaure);
    EXPECT_EQ(TipAt(form.Handle(), place), L"");
    Click(IDC_optBackup);
    EXPECT_EQ(TipAt(form.Handle(), place), L"Aucun graveur correctement configuré");
}

TEST_F(MainWindowTest, ADvdWriterThatMayNotBeUsedIsNotSaidToBeMissing) {
    machine.discWriters.dvdDrives.push_back({L"DVD (H:)", {}});
    Start();
    EXPECT_FALSE(IsEnabled(IDC_optDVD));
    EXPECT_EQ(TipAt(form.Handle(), PlaceOnForm(form.Handle(), At(IDC_optDVD))), L"");
}

} // namespace
