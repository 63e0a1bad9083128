#include "TestFormIds.h"
#include "ui/Controls.h"
#include "ui/FolderListBox.h"
#include "ui/ListView.h"
#include "ui/MessagePump.h"
#include "ui/ToolTips.h"
#include "ui/Units.h"

#include <gtest/gtest.h>

#include <shellapi.h>
#include <shlobj.h>

#include <stdexcept>
#include <vector>

namespace {

class TestForm : public ui::Form {
  public:
    TestForm() : ui::Form(IDD_TestForm) {}

    ui::Button testButton{*this, IDC_testButton};
    ui::Button testCancel{*this, IDC_testCancel};
    ui::Label testLabel{*this, IDC_testLabel};
    ui::Frame testFrame{*this, IDC_testFrame};
    ui::TextBox testText{*this, IDC_testText};
    ui::ListView testList{*this, IDC_testList};
    ui::ProgressBarControl testProgress{*this, IDC_testProgress};

    int loads = 0;
    int activations = 0;
    int unloads = 0;
    int unhandled = 0;
    bool mayClose = true;
    std::function<void()> whenActivated;

  protected:
    void OnLoad() override { ++loads; }
    void OnActivate() override {
        ++activations;
        if (whenActivated) whenActivated();
    }
    bool OnClosing() override { return mayClose; }
    void OnUnload() override { ++unloads; }
    void OnUnhandledException() noexcept override { ++unhandled; }
};

class TickRows : public ui::ListViewRows {
  public:
    std::vector<bool> ticks;
    int Count() const override { return static_cast<int>(ticks.size()); }
    std::wstring Cell(int row, int column) const override {
        return std::to_wstring(row) + L"/" + std::to_wstring(column);
    }
    bool IsTicked(int row) const override { return ticks[static_cast<std::size_t>(row)]; }
    ui::RowStyle Style(int row) const override { return {row == 1 ? RGB(255, 0, 0) : 0u, row == 1}; }
};

TEST(Form, LoadsShowsAndUnloadsOnce) {
    TestForm form;
    form.Create();
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_EQ(form.loads, 1);
    form.Show();
    EXPECT_EQ(form.activations, 1);
    form.Unload();
    form.Unload();
    EXPECT_EQ(form.unloads, 1);
    EXPECT_FALSE(form.IsLoaded());
}

TEST(Form, CarriesTheProgramsIcon) {
    TestForm form;
    form.Create();
    EXPECT_NE(SendMessageW(form.Handle(), WM_GETICON, ICON_SMALL, 0), 0);
}

TEST(Form, CanBeLoadedAgain) {
    TestForm form;
    form.Create();
    form.Unload();
    form.Create();
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_EQ(form.loads, 2);
}

TEST(Form, NothingThrownLeavesTheWindowProcedure) {
    TestForm form;
    form.testButton.OnClick([] { throw std::runtime_error("handler"); });
    form.Create();
    form.testButton.Click();
    EXPECT_EQ(form.unhandled, 1);
}

TEST(Form, ModalWindowDisablesItsOwnerAndActivatesItAfterwards) {
    TestForm owner;
    owner.Create();
    owner.Show();
    TestForm modal;
    bool wasOwnerEnabled = true;
    modal.whenActivated = [&] {
        wasOwnerEnabled = IsWindowEnabled(owner.Handle()) != FALSE;
        modal.Post([&] { modal.Unload(); });
    };
    modal.ShowModal(&owner);
    EXPECT_FALSE(wasOwnerEnabled);
    EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
    EXPECT_EQ(owner.activations, 2);
}

TEST(Form, RefusesToCloseWhileItsWorkRuns) {
    TestForm form;
    form.Create();
    form.mayClose = false;
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(form.IsLoaded());
    form.mayClose = true;
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(form.IsLoaded());
}

TEST(Form, EscapePressesTheCancelButtonOnlyWhenItCanBePressed) {
    TestForm form;
    int cancels = 0;
    form.testCancel.OnClick([&] { ++cancels; });
    form.SetCancelButton(IDC_testCancel);
    form.Create();
    form.Show();
    SendMessageW(form.Handle(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(cancels, 1);
    form.testCancel.Enable(false);
    SendMessageW(form.Handle(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_EQ(cancels, 1);
    EXPECT_TRUE(form.IsLoaded());
}

TEST(Form, HiddenFrameHidesWhatItHoldsAndKeepsWhatWasWanted) {
    TestForm form;
    form.Create();
    form.SetFrame(IDC_testFrame, {IDC_testLabel, IDC_testText});
    form.Show();
    form.testText.Show(false);
    form.testFrame.Show(false);
    EXPECT_FALSE(IsWindowVisible(form.testLabel.Handle()));
    form.testText.Show(true);
    EXPECT_FALSE(IsWindowVisible(form.testText.Handle())) << "a control must not come up in a hidden frame";
    form.testFrame.Show(true);
    EXPECT_TRUE(IsWindowVisible(form.testLabel.Handle()));
    EXPECT_TRUE(IsWindowVisible(form.testText.Handle()));
}

TEST(Form, HeightGrowsByWhatTheCaptionIsTallerThanItWas) {
    TestForm form;
    form.Create();
    form.SetHeightTwips(2865);
    RECT outer{};
    RECT inner{};
    GetWindowRect(form.Handle(), &outer);
    GetClientRect(form.Handle(), &inner);
    const int innerTwips = ui::TwipsFromPixels(inner.bottom, form.Handle());
    EXPECT_GE(innerTwips, 2865 - 375 - 15);
    EXPECT_GE(outer.bottom - outer.top, ui::PixelsFromTwips(2865, form.Handle()));
}

TEST(Form, PostedWorkIsDroppedWhenTheWindowGoesFirst) {
    TestForm form;
    form.Create();
    int runs = 0;
    form.Post([&] { ++runs; });
    ui::RunPendingMessages();
    EXPECT_EQ(runs, 1);
    form.Post([&] { ++runs; });
    form.Unload();
    ui::RunPendingMessages();
    EXPECT_EQ(runs, 1);
}

class ListViewTest : public testing::Test {
  protected:
    void SetUp() override { form.Create(); }

    /// The view, with one column and as many rows.
    HWND Fill(std::size_t count, bool hasTicks) {
        rows.ticks.assign(count, false);
        form.testList.Attach(rows, hasTicks);
        form.testList.AddColumn(L"A", 2000);
        form.testList.RowsChanged();
        return form.testList.Handle();
    }

    TickRows rows;
    TestForm form;
};

TEST_F(ListViewTest, AsksForTicksRowByRow) {
    HWND list = Fill(100000, true);
    form.testList.AddColumn(L"B", 1000);
    rows.ticks[3] = true;
    EXPECT_EQ(ListView_GetItemCount(list), 100000);
    EXPECT_TRUE(ListView_GetCheckState(list, 3));
    EXPECT_FALSE(ListView_GetCheckState(list, 4));
    wchar_t text[40];
    ListView_GetItemText(list, 99999, 1, text, 40);
    EXPECT_STREQ(text, L"99999/1");
}

TEST_F(ListViewTest, ClickOnTheBoxAndSpaceOnTheRowTickOnceEach) {
    HWND list = Fill(10, true);
    std::vector<int> ticked;
    form.testList.OnTick([&](int row) {
        ticked.push_back(row);
        rows.ticks[static_cast<std::size_t>(row)] = !rows.ticks[static_cast<std::size_t>(row)];
        form.testList.Redraw();
    });
    form.Show();
    ui::RunPendingMessages();
    RECT label{};
    ListView_GetItemRect(list, 2, &label, LVIR_LABEL);
    RECT row{};
    ListView_GetItemRect(list, 2, &row, LVIR_BOUNDS);
    const LPARAM box = MAKELPARAM((row.left + label.left) / 2, (row.top + row.bottom) / 2);
    // The view waits for the button to come up; both messages must be there before it handles the first.
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, box);
    PostMessageW(list, WM_LBUTTONUP, 0, box);
    ui::RunPendingMessages();
    EXPECT_EQ(ticked, std::vector<int>{2});
    EXPECT_TRUE(ListView_GetCheckState(list, 2));
    form.testList.Select(5);
    SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
    EXPECT_EQ(ticked, (std::vector<int>{2, 5}));
    EXPECT_TRUE(rows.ticks[5]);
    // A click on the text selects and ticks nothing.
    const LPARAM textPlace = MAKELPARAM(label.left + 10, (row.top + row.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, textPlace);
    PostMessageW(list, WM_LBUTTONUP, 0, textPlace);
    ui::RunPendingMessages();
    EXPECT_EQ(ticked.size(), 2u);
    EXPECT_EQ(form.testList.Selected(), 2);
    // The second of two quick clicks on the box takes the tick back.
    PostMessageW(list, WM_LBUTTONDBLCLK, MK_LBUTTON, box);
    PostMessageW(list, WM_LBUTTONUP, 0, box);
    ui::RunPendingMessages();
    EXPECT_EQ(ticked, (std::vector<int>{2, 5, 2}));
    EXPECT_FALSE(ListView_GetCheckState(list, 2));
}

TEST_F(ListViewTest, TurnsThePageForRowsThatAreSelectedOneByOne) {
    HWND list = Fill(100, false);
    const int rowsPerPage = ListView_GetCountPerPage(list);
    ASSERT_GT(rowsPerPage, 3);
    ASSERT_LT(rowsPerPage, 30);
    int turns = 0;
    for (int row = 0; row < 100; ++row) {
        const int top = ListView_GetTopIndex(list);
        form.testList.Select(row);
        if (ListView_GetTopIndex(list) != top) ++turns;
        EXPECT_GE(row, ListView_GetTopIndex(list));
        EXPECT_LT(row, ListView_GetTopIndex(list) + rowsPerPage);
    }
    EXPECT_EQ(turns, (100 - 1) / rowsPerPage);
    form.testList.Select(2);
    EXPECT_LE(ListView_GetTopIndex(list), 2);
    EXPECT_GT(ListView_GetTopIndex(list) + rowsPerPage, 2);
}

TEST_F(ListViewTest, TakesDroppedPathsInTheirOrder) {
    form.testList.Attach(rows, false);
    std::vector<std::wstring> dropped;
    form.testList.OnDrop([&](const std::vector<std::wstring>& paths) { dropped = paths; });
    const wchar_t paths[] = L"D:\\b.txt\0D:\\été\\a.txt\0";
    HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + sizeof paths);
    auto* header = static_cast<DROPFILES*>(GlobalLock(memory));
    header->pFiles = sizeof(DROPFILES);
    header->fWide = TRUE;
    memcpy(header + 1, paths, sizeof paths);
    GlobalUnlock(memory);
    SendMessageW(form.testList.Handle(), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    ui::RunPendingMessages();
    EXPECT_EQ(dropped, (std::vector<std::wstring>{L"D:\\b.txt", L"D:\\été\\a.txt"}));
}

/// What an icon of the small size looks like on white, row by row.
std::vector<COLORREF> Pixels(const std::function<void(HDC context, RECT place)>& draw) {
    const RECT place{0, 0, GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON)};
    HDC screen = GetDC(nullptr);
    HDC context = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, place.right, place.bottom);
    HGDIOBJ previous = SelectObject(context, bitmap);
    FillRect(context, &place, GetSysColorBrush(COLOR_WINDOW));
    draw(context, place);
    std::vector<COLORREF> pixels;
    for (int y = 0; y < place.bottom; ++y) {
        for (int x = 0; x < place.right; ++x) pixels.push_back(GetPixel(context, x, y));
    }
    SelectObject(context, previous);
    DeleteObject(bitmap);
    DeleteDC(context);
    ReleaseDC(nullptr, screen);
    return pixels;
}

std::vector<COLORREF> ShellFolderPixels(UINT state) {
    std::wstring folder(MAX_PATH, L'\0');
    folder.resize(GetSystemDirectoryW(folder.data(), MAX_PATH));
    SHFILEINFOW info{};
    SHGetFileInfoW(folder.c_str(), 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON | state);
    const std::vector<COLORREF> pixels = Pixels([&](HDC context, RECT place) {
        DrawIconEx(context, 0, 0, info.hIcon, place.right, place.bottom, 0, nullptr, DI_NORMAL);
    });
    DestroyIcon(info.hIcon);
    return pixels;
}

TEST(FolderListBox, ShowsFoldersAsTheShellDoes) {
    TestForm form;
    form.Create();
    ui::FolderListBox folders(form, IDC_testFolders);
    folders.Attach();
    folders.SetLines({{L"", 0, true}, {L"", 0, false}}, -1);
    const int margin = ui::PixelsFromTwips(30, folders.Handle());
    const auto drawn = [&](UINT row) {
        return Pixels([&](HDC context, RECT place) {
            OffsetRect(&place, -margin, 0);
            place.right += margin;
            DRAWITEMSTRUCT item{ODT_LISTBOX, IDC_testFolders, row, ODA_DRAWENTIRE, 0, folders.Handle(),
                                context,     place,           0};
            SendMessageW(form.Handle(), WM_DRAWITEM, IDC_testFolders, reinterpret_cast<LPARAM>(&item));
        });
    };
    EXPECT_EQ(drawn(0), ShellFolderPixels(SHGFI_OPENICON));
    EXPECT_EQ(drawn(1), ShellFolderPixels(0));
    EXPECT_NE(drawn(0), drawn(1));
}

LRESULT CALLBACK CountPaints(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR count) {
    if (message == WM_PAINT) ++*reinterpret_cast<int*>(count);
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST(ProgressBar, IsNotPaintedForEachOfManySteps) {
    TestForm form;
    form.Create();
    form.Show();
    ui::RunPendingMessages();
    int paints = 0;
    SetWindowSubclass(form.testProgress.Handle(), CountPaints, 0, reinterpret_cast<DWORD_PTR>(&paints));
    constexpr int steps = 5000;
    const DWORD start = GetTickCount();
    form.testProgress.SetRange(0, steps);
    for (int step = 1; step <= steps; ++step) {
        form.testProgress.SetValue(step);
        ASSERT_EQ(form.testProgress.Value(), step);
    }
    const int frames = static_cast<int>(GetTickCount() - start) / 40;
    EXPECT_EQ(SendMessageW(form.testProgress.Handle(), PBM_GETPOS, 0, 0), steps);
    EXPECT_GE(paints, 10);
    EXPECT_LE(paints, 20 + frames);
    RemoveWindowSubclass(form.testProgress.Handle(), CountPaints, 0);
}

TEST(ProgressBar, ShowsASlowStepOfAFiftiethAndAfterASecondAny) {
    TestForm form;
    form.Create();
    const auto shown = [&] { return static_cast<int>(SendMessageW(form.testProgress.Handle(), PBM_GETPOS, 0, 0)); };
    form.testProgress.SetRange(0, 1000);
    DWORD started = 0;
    int shownAtOnce = 0;
    // Until nothing else on the machine has come between.
    do {
        form.testProgress.SetValue(0);
        started = GetTickCount();
        form.testProgress.SetValue(50);
        shownAtOnce = shown();
    } while (GetTickCount() - started > 20);
    EXPECT_EQ(shownAtOnce, 0);
    EXPECT_EQ(form.testProgress.Value(), 50);
    form.testProgress.SetValue(500);
    EXPECT_EQ(shown(), 500);
    Sleep(60);
    form.testProgress.SetValue(520);
    EXPECT_EQ(shown(), 520);
    Sleep(60);
    form.testProgress.SetValue(521);
    EXPECT_EQ(shown(), 520);
    Sleep(1100);
    form.testProgress.SetValue(522);
    EXPECT_EQ(shown(), 522);
    form.testProgress.SetValue(1000);
    EXPECT_EQ(shown(), 1000);
    form.testProgress.SetValue(0);
    EXPECT_EQ(shown(), 0);
}

TEST(ProgressBar, KeepsItsValueWithinItsRange) {
    TestForm form;
    form.Create();
    form.testProgress.SetRange(0, 3);
    form.testProgress.SetValue(-1);
    EXPECT_EQ(form.testProgress.Value(), 0);
    form.testProgress.SetValue(4);
    EXPECT_EQ(form.testProgress.Value(), 3);
    form.testProgress.SetRange(0, 2);
    EXPECT_EQ(form.testProgress.Value(), 2);
    EXPECT_EQ(form.testProgress.Max(), 2);
    // An empty selection.
    form.testProgress.SetRange(0, 0);
    EXPECT_EQ(form.testProgress.Value(), 0);
}

TEST(ProgressBar, StartsAgainWithItsForm) {
    TestForm form;
    form.Create();
    form.testProgress.SetRange(0, 100);
    form.testProgress.SetValue(70);
    form.Unload();
    form.Create();
    EXPECT_EQ(form.testProgress.Value(), 0);
}

TEST(Controls, TextColorIsKeptPerLabel) {
    TestForm form;
    form.Create();
    form.testLabel.SetColor(RGB(255, 0, 0));
    EXPECT_EQ(form.testLabel.Color(), 255u);
    form.testLabel.SetColor(0);
    EXPECT_EQ(form.testLabel.Color(), 0u);
}

TEST(ToolTips, EmptyTextTakesTheTipAway) {
    TestForm form;
    form.Create();
    ui::ToolTips tips(form);
    tips.Set(form.testButton, L"Aucun graveur");
    EXPECT_EQ(tips.Text(form.testButton), L"Aucun graveur");
    tips.Set(form.testButton, L"");
    EXPECT_EQ(tips.Text(form.testButton), L"");
}

} // namespace
