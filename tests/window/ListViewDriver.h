#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

/// What a person does to a list view and sees of it.
class ListViewDriver {
  public:
    /// How the view is told to draw a row.
    struct Look {
        COLORREF color;
        bool isBold;
    };

    explicit ListViewDriver(HWND list) : list_(list) {}

    int Count() const { return ListView_GetItemCount(list_); }
    std::wstring Cell(int row, int column) const;
    /// A row's cells with "|" between them.
    std::wstring Row(int row) const;
    std::vector<std::wstring> Rows() const;
    std::vector<std::wstring> Headers() const;
    bool IsTicked(int row) const { return ListView_GetCheckState(list_, row) == 1; }
    /// The selected row, -1 when there is none.
    int Selected() const { return ListView_GetNextItem(list_, -1, LVNI_SELECTED); }
    Look LookOf(int row) const;
    /// What hovering over a row shows.
    std::wstring Tip(int row) const;

    void Select(int row) const;
    /// The space bar on a row.
    void TickByKey(int row) const;
    /// Lets files and folders fall on the view.
    void Drop(const std::vector<std::wstring>& paths) const;

  private:
    /// Asks the view's window, as the view does, with a notification.
    template<class Notification>
    void Ask(Notification& notification, int code) const {
        const UINT_PTR id = static_cast<UINT_PTR>(GetDlgCtrlID(list_));
        *reinterpret_cast<NMHDR*>(&notification) = {list_, id, static_cast<UINT>(code)};
        SendMessageW(GetParent(list_), WM_NOTIFY, id, reinterpret_cast<LPARAM>(&notification));
    }

    HWND list_;
};
