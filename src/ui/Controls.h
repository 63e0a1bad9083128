#pragma once

#include "ui/Form.h"
#include "ui/Subclass.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// A control of a form, by its number. It looks its window up on each use, so it may be declared before the form is
/// loaded and outlive it; on a form that is not loaded every call is without effect.
class Control {
  public:
    Control(Form& form, int id) : form_(form), id_(id) {}

    int Id() const { return id_; }
    HWND Handle() const { return form_.ControlHandle(id_); }
    void Enable(bool isEnabled) { form_.Controls().SetEnabled(id_, isEnabled); }
    /// Whether the control can be used once it is seen.
    bool IsEnabled() const { return form_.Controls().IsWantedEnabled(id_); }
    void Show(bool isVisible) { form_.Controls().SetVisible(id_, isVisible); }
    /// Whether the control itself is to be seen; a hidden frame around it does not count.
    bool IsVisible() const { return form_.Controls().IsWantedVisible(id_); }
    void SetText(const std::wstring& text);
    std::wstring Text() const;
    /// Tab comes to this control right after `other`.
    void FollowInTabOrder(const Control& other);
    void SetFocus();
    bool HasFocus() const;
    BoundsTwips Bounds() const;
    void Move(const BoundsTwips& bounds);
    void SetWidth(int widthTwips);
    void Refresh();

  protected:
    Form& ParentForm() const { return form_; }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

  private:
    Form& form_;
    int id_;
};

class Label : public Control {
  public:
    using Control::Control;
    void SetColor(COLORREF color) { ParentForm().SetTextColor(Id(), color); }
    /// The colour that the system's scheme has for text.
    void ResetColor() { ParentForm().ResetTextColor(Id()); }
    COLORREF Color() const { return ParentForm().TextColor(Id()); }
};

class Button : public Control {
  public:
    using Control::Control;
    void OnClick(std::function<void()> handler) { ParentForm().On(Id(), BN_CLICKED, std::move(handler)); }
    void Click() { Send(BM_CLICK); }
};

/// A group box; `SetFrame` of the form names what stands in it.
class Frame : public Control {
  public:
    using Control::Control;
};

/// An option or a check box. Setting it by program raises no click.
class CheckButton : public Button {
  public:
    using Button::Button;
    /// 0 unchecked, 1 checked, 2 grey.
    int State() const { return static_cast<int>(Send(BM_GETCHECK)); }
    void SetState(int state) { Send(BM_SETCHECK, static_cast<WPARAM>(state)); }
    bool IsChecked() const { return State() == BST_CHECKED; }
};

class Option : public CheckButton {
  public:
    using CheckButton::CheckButton;
    /// Selects this option and clears the others from `firstId` to `lastId`.
    void Select(int firstId, int lastId);
    /// Clears an option of a group of which none is to be selected: each can then be reached by Tab.
    void Clear();
};

class TextBox : public Control {
  public:
    using Control::Control;
    /// Runs `handler` when Enter is pressed in the box; the default button does not see the key then. On a loaded form
    /// only, once per loading.
    void OnEnter(std::function<void()> handler);

  private:
    Subclass enterKey_;
};

/// A drop-down list. Rows count from 0; -1 is no row.
class ComboBox : public Control {
  public:
    using Control::Control;
    void Clear() { Send(CB_RESETCONTENT); }
    void Add(const std::wstring& text);
    int Count() const { return static_cast<int>(Send(CB_GETCOUNT)); }
    std::wstring Item(int row) const;
    int Selected() const { return static_cast<int>(Send(CB_GETCURSEL)); }
    std::wstring SelectedText() const { return Item(Selected()); }
    /// Selects without raising a click.
    void Select(int row) { Send(CB_SETCURSEL, static_cast<WPARAM>(row)); }
    void OnSelect(std::function<void()> handler) { ParentForm().On(Id(), CBN_SELCHANGE, std::move(handler)); }
};

/// A list box. Rows count from 0; -1 is no row.
class ListBox : public Control {
  public:
    using Control::Control;
    void Clear() { Send(LB_RESETCONTENT); }
    void Add(const std::wstring& text);
    /// Replaces all rows at once, painting once.
    void SetItems(const std::vector<std::wstring>& items);
    int Count() const { return static_cast<int>(Send(LB_GETCOUNT)); }
    std::wstring Item(int row) const;
    int Selected() const { return static_cast<int>(Send(LB_GETCURSEL)); }
    void Select(int row) { Send(LB_SETCURSEL, static_cast<WPARAM>(row)); }
    /// The selected rows of a list in which several can be selected, ascending.
    std::vector<int> SelectedRows() const;
    void OnSelect(std::function<void()> handler) { ParentForm().On(Id(), LBN_SELCHANGE, std::move(handler)); }
    void OnDoubleClick(std::function<void()> handler) { ParentForm().On(Id(), LBN_DBLCLK, std::move(handler)); }
};

/// A progress bar. What it shows may lag a little behind its value, because a themed bar takes a millisecond or two to
/// paint: for a second by less than a fiftieth of its range, and by less than a tenth of it while values come faster
/// than the eye sees. An end of the range is shown at once.
class ProgressBarControl : public Control {
  public:
    using Control::Control;
    int Min() const { return static_cast<int>(Send(PBM_GETRANGE, TRUE, 0)); }
    int Max() const { return static_cast<int>(Send(PBM_GETRANGE, FALSE, 0)); }
    void SetRange(int min, int max);
    int Value() const;
    /// A value outside of the range counts as the end that is nearer.
    void SetValue(int value);

  private:
    bool IsWorthShowing(int value, int min, int max) const;
    void ShowValue(int value);
    void Jump(int value);
    int ShownValue() const { return static_cast<int>(Send(PBM_GETPOS)); }

    /// The bar that `value_` belongs to: a form that is loaded again has another one.
    HWND window_ = nullptr;
    int value_ = 0;
    DWORD shownAtMilliseconds_ = 0;
};

class StatusBar : public Control {
  public:
    using Control::Control;
    /// Divides the bar into panels of these widths in twips; the last one takes the rest.
    void SetPanels(const std::vector<int>& widthsTwips);
    void SetPanelText(int panel, const std::wstring& text);
    std::wstring PanelText(int panel) const;
    /// The panel's place in the bar, in pixels.
    RECT PanelPlace(int panel) const;
};

} // namespace ui
