#pragma once

#include "ui/ControlStates.h"
#include "ui/Placement.h"
#include "ui/Units.h"
#include "ui/Windows.h"
#include "win32/UniqueHandle.h"

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace ui {

/// A window made from a dialog template. It is loaded by `Create` or `ShowModal` and may be loaded again once it has
/// been unloaded. Everything runs on the user-interface thread; nothing thrown by a handler leaves the window
/// procedure.
class Form {
  public:
    explicit Form(int templateId);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    /// Creates the window, hidden, over `owner` (null: none) and loads it.
    void Create(Form* owner = nullptr);
    /// Creates the window as a visible child of `parent`, at a place of the parent's template, and loads it.
    void CreateChild(Form& parent, const PlaceDialogUnits& place);
    /// Shows a created window and activates it.
    void Show();
    /// Creates, shows and runs the window until it is unloaded or destroyed; `owner` takes no input meanwhile, from
    /// before the window is loaded, and is activated after. Nothing to do when it is loaded already.
    void ShowModal(Form* owner);
    /// Unloads the window: `OnUnload`, then it is destroyed. Nothing to do when it is not loaded or on its way out.
    void Unload();

    bool IsLoaded() const { return window_ != nullptr; }
    /// Whether the user can use the form: it is loaded and nothing is modal over it. Commands, keys and the wish to
    /// close it are dropped otherwise, however they came.
    bool TakesInput() const;
    HWND Handle() const { return window_; }
    HWND ControlHandle(int controlId) const;

    void Enable(bool isEnabled);
    bool IsEnabled() const;
    /// Whether this is the window that the user works in.
    bool IsActive() const;
    /// Puts a child before its sisters, so that Tab comes to it first.
    void PutFirst();

    void SetTitle(const std::wstring& title);
    std::wstring Title() const;
    void Refresh();
    /// Sets the outer height. Heights were made for a caption and frame of 375 twips; where the system's are taller
    /// the difference is added, so that no control is cut. These three keep the window on the screen.
    void SetHeightTwips(int heightTwips);
    void SetInnerWidthTwips(int widthTwips);
    void SetInnerHeightTwips(int heightTwips);
    int InnerWidthTwips() const;

    /// Runs `handler` when a control sends the notification `code` by WM_COMMAND.
    void On(int controlId, int code, std::function<void()> handler);
    /// Runs `handler` when a control sends the notification `code` by WM_NOTIFY; its value is the answer.
    void OnNotify(int controlId, UINT code, std::function<LRESULT(NMHDR&)> handler);

    /// Runs `steps`; what they let through is handed to `OnUnhandledException`.
    void RunGuarded(const std::function<void()>& steps) noexcept;

    /// Runs `task` once the messages already sent have been handled; dropped when the form is unloaded first.
    void Post(std::function<void()> task);

    /// Which controls are to be seen and which can be used.
    ControlStates& Controls() { return controlStates_; }
    const ControlStates& Controls() const { return controlStates_; }
    /// Declares that `controlIds` stand in the frame `frameId` and hide with it.
    void SetFrame(int frameId, const std::vector<int>& controlIds) { controlStates_.SetFrame(frameId, controlIds); }
    void SetTextColor(int controlId, COLORREF color);
    /// Gives a control back the colour that the system's scheme has for text.
    void ResetTextColor(int controlId);
    COLORREF TextColor(int controlId) const;

    /// The keys of this form: tab order, access keys, accelerators. Gives whether the message was one.
    bool TranslateKeys(MSG& message);
    /// Escape presses this button, when it can be pressed, instead of closing the window.
    void SetCancelButton(int controlId);
    /// Escape does nothing.
    void IgnoreEscape();
    void SetAccelerators(const std::vector<ACCEL>& keys);

    /// The form behind a window; null when the window is no form's.
    static Form* Of(HWND window);

  protected:
    virtual void OnLoad() {}
    /// Comes when the window is shown and each time a modal window over it has closed.
    virtual void OnActivate() {}
    /// The user wants the window closed (cross, Alt+F4, Escape without a cancel button). False keeps it.
    virtual bool OnClosing() { return true; }
    /// While the window is in front, Windows opens no disc that is put in.
    virtual bool KeepsDiscsFromOpening() const { return false; }
    virtual void OnUnload() {}
    /// Any message before the form handles it; a value ends its handling.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// Called in a catch block for whatever a handler let through.
    virtual void OnUnhandledException() noexcept = 0;

  private:
    friend class SessionEndHold;

    /// Has the oldest of the posted tasks run.
    static constexpr UINT RunPostedMessage = WM_APP + 1;

    static INT_PTR CALLBACK DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR TakeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    /// Parts the window from this object, which no message reaches any more; gives the window.
    HWND Disconnect();
    void SetInnerSize(std::optional<int> widthTwips, std::optional<int> heightTwips);
    /// All of unloading but the destruction of the window, which it gives; null when it has gone meanwhile.
    HWND Leave();
    /// Counts the windows that are modal over this one or about to be.
    void Cover();
    void Uncover();
    void UncoverOwner();
    void Close();
    bool HandleSystemCommand(WPARAM command);
    bool HandleCommand(int controlId, int code);
    bool HandleNotify(NMHDR& header);
    void RaiseActivate();
    void ShowProgramIcon();

    int templateId_;
    HWND window_ = nullptr;
    Form* owner_ = nullptr;
    Form* coveredOwner_ = nullptr;
    int covers_ = 0;
    bool isUnloading_ = false;
    int sessionEndHolds_ = 0;
    UniqueAccelerators accelerators_;
    std::map<std::pair<int, int>, std::function<void()>> commands_;
    std::map<std::pair<int, UINT>, std::function<LRESULT(NMHDR&)>> notifications_;
    std::deque<std::function<void()>> posted_;
    mutable std::unordered_map<int, HWND> controls_;
    ControlStates controlStates_;
    std::unordered_map<int, COLORREF> textColors_;
};

} // namespace ui
