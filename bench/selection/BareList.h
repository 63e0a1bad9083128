#pragma once

#include <windows.h>

#include <commctrl.h>

/// Selects a row as a person does, who sees it: it alone, in view and painted.
void SelectInView(HWND list, int row);

/// The floor of a removal: a list view of the looks of another one, alone in its window, and a button that takes the
/// selected row away. No program stands behind it, and no row has a text.
class BareList {
  public:
    BareList(HWND like, int rowCount);
    BareList(const BareList&) = delete;
    BareList& operator=(const BareList&) = delete;
    ~BareList();

    HWND View() const { return view_; }
    int RowCount() const { return ListView_GetItemCount(view_); }
    void Click() const { SendMessageW(button_, BM_CLICK, 0, 0); }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void TakeLooksOf(HWND like) const;
    void RemoveSelected() const;

    HWND window_ = nullptr;
    HWND view_ = nullptr;
    HWND button_ = nullptr;
};
