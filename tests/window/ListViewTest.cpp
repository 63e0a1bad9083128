#include "ListViewDriver.h"
#include "TestForm.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

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
    ListViewDriver(form.testList.Handle()).Drop({L"D:\\b.txt", L"D:\\été\\a.txt"});
    ui::RunPendingMessages();
    EXPECT_EQ(dropped, (std::vector<std::wstring>{L"D:\\b.txt", L"D:\\été\\a.txt"}));
}

} // namespace
