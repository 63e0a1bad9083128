// What a list view shows on the screen, pixel by pixel where the view alone would say nothing of it.
#include "TestForm.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

/// Row 1 is bold; every row says the same.
class SameRows : public ui::ListViewRows {
  public:
    std::wstring text = L"Sauvegarde Sauvegarde";
    int Count() const override { return 3; }
    std::wstring Cell(int, int column) const override { return column == 0 ? text : std::wstring(); }
    ui::RowStyle Style(int row) const override { return {0, row == 1}; }
};

class ListViewDrawing : public testing::Test {
  protected:
    void Open(int widthPixels) {
        form.Create();
        list = form.testList.Handle();
        form.testList.Attach(rows, false);
        form.testList.AddColumn(L"A", 1000);
        form.testList.AddColumn(L"B", 500);
        form.testList.AddHiddenColumn();
        ListView_SetColumnWidth(list, 0, widthPixels);
        form.testList.RowsChanged();
        form.Show();
        ui::RunPendingMessages();
    }
    RECT LabelOf(int row) const {
        RECT label{};
        ListView_GetItemRect(list, row, &label, LVIR_LABEL);
        return label;
    }
    /// The pixels of a row, from `left` to the view's right edge, that are not of the background's colour.
    int InkOf(int row, int left) const {
        UpdateWindow(list);
        RECT inner{};
        GetClientRect(list, &inner);
        const RECT label = LabelOf(row);
        HDC context = GetDC(list);
        int ink = 0;
        for (int y = label.top; y < label.bottom; ++y) {
            for (int x = std::max<int>(left, 0); x < inner.right; ++x)
                ink += GetPixel(context, x, y) != GetSysColor(COLOR_WINDOW) ? 1 : 0;
        }
        ReleaseDC(list, context);
        return ink;
    }
    int WidthOf(const std::wstring& text) const {
        return static_cast<int>(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str())));
    }
    /// Tells the view's window what the header would say of one of its columns; gives the answer.
    LRESULT TellOfHeader(UINT code, int column, HDITEMW* item = nullptr) const {
        NMHEADERW change{};
        change.hdr = {ListView_GetHeader(list), 0, code};
        change.iItem = column;
        change.pitem = item;
        return SendMessageW(list, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change));
    }

    SameRows rows;
    TestForm form;
    HWND list = nullptr;
};

TEST_F(ListViewDrawing, BoldRowHasMoreInkThanTheSameTextBesideIt) {
    Open(250);
    const int plain = InkOf(0, 0);
    EXPECT_GT(plain, 0);
    EXPECT_EQ(InkOf(2, 0), plain);
    EXPECT_GT(InkOf(1, 0), plain + plain / 10);
}

TEST_F(ListViewDrawing, TextOfMoreThan259CharactersIsShownToItsEnd) {
    rows.text = std::wstring(259, L'm') + std::wstring(60, L'x');
    Open(6000);
    // To where only the last characters are, which the view itself would not draw.
    const int scrolled = WidthOf(std::wstring(259, L'm')) + 40;
    SendMessageW(list, LVM_SCROLL, static_cast<WPARAM>(scrolled), 0);
    UpdateWindow(list);
    EXPECT_GT(InkOf(0, 0), 100);
    RECT inner{};
    GetClientRect(list, &inner);
    const int end = LabelOf(0).left + WidthOf(std::wstring(259, L'm')) + WidthOf(std::wstring(60, L'x'));
    if (end + 20 < inner.right) {
        EXPECT_EQ(InkOf(0, end + 20), 0) << "and no further";
    }
}

TEST_F(ListViewDrawing, TipOfALongRowIsItsWholeText) {
    rows.text = std::wstring(400, L'p') + L".";
    Open(200);
    wchar_t text[INFOTIPSIZE] = {};
    NMLVGETINFOTIPW tip{};
    tip.hdr = {list, IDC_testList, static_cast<UINT>(LVN_GETINFOTIPW)};
    tip.pszText = text;
    tip.cchTextMax = INFOTIPSIZE;
    SendMessageW(form.Handle(), WM_NOTIFY, IDC_testList, reinterpret_cast<LPARAM>(&tip));
    EXPECT_EQ(text, rows.text);
}

TEST_F(ListViewDrawing, HiddenColumnCannotBeOpenedAndTheOthersCan) {
    Open(200);
    EXPECT_EQ(ListView_GetColumnWidth(list, 2), 0);
    EXPECT_NE(TellOfHeader(HDN_BEGINTRACKW, 2), 0);
    EXPECT_EQ(TellOfHeader(HDN_BEGINTRACKW, 1), 0);
    HDITEMW wide{};
    wide.mask = HDI_WIDTH;
    wide.cxy = 90;
    HWND header = ListView_GetHeader(list);
    SendMessageW(header, HDM_SETITEMW, 2, reinterpret_cast<LPARAM>(&wide));
    EXPECT_EQ(ListView_GetColumnWidth(list, 2), 0);
    SendMessageW(header, HDM_SETITEMW, 1, reinterpret_cast<LPARAM>(&wide));
    EXPECT_EQ(ListView_GetColumnWidth(list, 1), 90);
}

} // namespace
