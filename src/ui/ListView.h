#pragma once

#include "ui/Controls.h"
#include "ui/ListViewRows.h"
#include "ui/Subclass.h"
#include "win32/UniqueHandle.h"

#include <shellapi.h>

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// A list view in report style that holds no rows of its own.
class ListView : public Control {
  public:
    ListView(Form& form, int id) : Control(form, id) {}
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;

    /// Connects the view with its rows, which must outlive it, once the form is loaded.
    void Attach(const ListViewRows& rows, bool hasTicks);
    void AddColumn(const std::wstring& title, int widthTwips, bool isNumber = false);
    /// Adds a column for the program alone: it has no width, and no drag or double click gives it one.
    void AddHiddenColumn();
    /// Gives a column all the width that the others leave.
    void FillWidth(int column);
    /// The icons that the rows name, which must outlive the view. Its style shares them.
    void SetIcons(HIMAGELIST icons);
    /// Shows in the header which column the rows are ordered by.
    void ShowOrder(int column, bool isDescending);
    /// A column's header was clicked.
    void OnColumn(std::function<void(int column)> handler);
    /// Another row was selected, or none.
    void OnSelect(std::function<void()> handler);
    /// Makes a column wide enough for a text, where it is not.
    void WidenFor(int column, const std::wstring& text);
    /// Asks for the number of rows again and repaints; selection and place are kept where they can be.
    void RowsChanged();
    void Redraw();
    void RedrawRow(int row);
    /// Makes one row the selected and focused one (-1: none) and brings it into view; one below comes with the page of
    /// rows that it begins.
    void Select(int row);
    /// Scrolls one row into view.
    void ShowRow(int row) { Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE); }
    /// The focused selected row; -1 when none is.
    int Selected() const;
    /// A tick box was clicked, or the space bar pressed on the focused row.
    void OnTick(std::function<void(int row)> handler) { onTick_ = std::move(handler); }
    /// Takes files dropped from the shell, in their order.
    void OnDrop(std::function<void(const std::vector<std::wstring>& paths)> handler);

  private:
    void TurnPageTo(int row);
    int ColumnWidth(int column) const {
        return static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
    }
    void SetColumnWidth(int column, int width);
    void KeepHiddenColumnsShut();
    bool WouldOpenHidden(const NMHDR& header) const;
    std::wstring TipOf(int row) const;
    LRESULT FillItem(NMLVDISPINFOW& info) const;
    LRESULT Draw(NMLVCUSTOMDRAW& draw) const;
    void TakeDrop(HDROP drop);

    const ListViewRows* rows_ = nullptr;
    bool hasTicks_ = false;
    int columnCount_ = 0;
    int firstHiddenColumn_ = 0; ///< none when it is the number of columns
    UniqueFont boldFont_;
    mutable std::wstring cellText_;
    std::function<void(int)> onTick_;
    std::function<void(const std::vector<std::wstring>&)> onDrop_;
    Subclass dropTarget_;
    Subclass headerWatch_;
};

} // namespace ui
