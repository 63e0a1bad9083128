#pragma once

#include "ListViewDriver.h"

#include <windows.h>

#include <string>
#include <vector>

/// What a person does to a form and sees of it, by the numbers of its controls. A fixture says which form it drives.
class FormDriver {
  public:
    FormDriver() = default;
    FormDriver(const FormDriver&) = delete;
    FormDriver& operator=(const FormDriver&) = delete;
    virtual ~FormDriver() = default;

  protected:
    /// The form as it is now; null while it is not loaded.
    virtual HWND Window() const = 0;

    HWND At(int id) const { return GetDlgItem(Window(), id); }
    /// A control of a form that this one hosts; null when none of them has it.
    HWND HostedAt(int id) const;
    /// A list view of the form.
    ListViewDriver ListAt(int id) const { return ListViewDriver(At(id)); }

    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }
    bool IsVisible(int id) const { return IsWindowVisible(At(id)) != FALSE; }
    bool HasFocus(int id) const { return GetFocus() == At(id); }
    std::wstring Text(int id) const;
    /// BST_CHECKED and its like.
    LRESULT State(int id) const { return SendMessageW(At(id), BM_GETCHECK, 0, 0); }
    bool IsChecked(int id) const { return State(id) == BST_CHECKED; }
    /// Where a progress bar stands.
    LRESULT Progress(int id) const;
    /// The lines of a list box or a drop-down list.
    std::vector<std::wstring> Lines(int id) const;
    /// The selected line, -1 when there is none.
    int Selected(int id) const;
    int DefaultButton() const { return LOWORD(SendMessageW(Window(), DM_GETDEFID, 0, 0)); }

    void Click(int id) const { SendMessageW(At(id), BM_CLICK, 0, 0); }
    void Type(int id, const std::wstring& text) const { SetWindowTextW(At(id), text.c_str()); }
    /// A key that goes down in the control, which gets the focus for it.
    void Press(int id, WPARAM key) const;
    /// A key that goes down where the focus is.
    void Press(WPARAM key) const;
    /// Takes a line of a list box or a drop-down list, as a click on it does.
    void Choose(int id, int line) const;
    /// What Escape comes to.
    void Cancel() const { SendMessageW(Window(), WM_COMMAND, IDCANCEL, 0); }
    /// The cross of the window.
    void Close() const { SendMessageW(Window(), WM_CLOSE, 0, 0); }
};
