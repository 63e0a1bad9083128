#include "ui/Form.h"

#include "ui/MessagePump.h"

#include <algorithm>
#include <string>
#include <utility>

namespace ui {

namespace {

constexpr const wchar_t* FormProperty = L"Backup.Form";
constexpr int EraFrameTwips = 375;
constexpr int ProgramIcon = 1;

} // namespace

Form::Form(int templateId) : templateId_(templateId) {
    SetKeyTranslation([](HWND topLevel, MSG& message) {
        Form* form = Of(topLevel);
        return form != nullptr && form->TranslateKeys(message);
    });
}

Form::~Form() {
    // A derived part is gone by now: the window goes without its handlers.
    if (window_ != nullptr) DestroyWindow(Disconnect());
}

HWND Form::Disconnect() {
    HWND window = std::exchange(window_, nullptr);
    SetWindowLongPtrW(window, DWLP_USER, 0);
    RemovePropW(window, FormProperty);
    controls_.clear();
    return window;
}

Form* Form::Of(HWND window) {
    return static_cast<Form*>(GetPropW(window, FormProperty));
}

void Form::Create(Form* owner) {
    if (window_ != nullptr) return;
    owner_ = owner;
    CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(templateId_),
                       owner != nullptr ? owner->Handle() : nullptr, DialogProcedure, reinterpret_cast<LPARAM>(this));
}

void Form::CreateChild(Form& parent, const PlaceDialogUnits& place) {
    Create(&parent);
    const RECT pixels = PixelsOf(place, parent.Handle());
    SetWindowPos(window_, nullptr, pixels.left, pixels.top, pixels.right - pixels.left, pixels.bottom - pixels.top,
                 SWP_NOZORDER | SWP_SHOWWINDOW);
}

void Form::Show() {
    ShowWindow(window_, SW_SHOWNORMAL);
    UpdateWindow(window_);
    RaiseActivate();
}

void Form::ShowModal(Form* owner) {
    if (IsLoaded()) return;
    // Loading may let messages run, and show messages of its own.
    coveredOwner_ = owner;
    if (owner != nullptr) owner->Cover();
    Create(owner);
    if (IsLoaded()) Show();
    RunMessagesUntil([this] { return !IsLoaded(); });
    Unload();
    // A window that could not be made has not given its owner back.
    UncoverOwner();
    if (owner != nullptr && owner->IsLoaded()) owner->RaiseActivate();
}

void Form::Unload() {
    if (window_ == nullptr || isUnloading_) return;
    if (HWND window = Leave(); window != nullptr) DestroyWindow(window);
}

HWND Form::Leave() {
    // The window may be destroyed from outside while messages run in here.
    if (!std::exchange(isUnloading_, true)) RunGuarded([this] { OnUnload(); });
    isUnloading_ = false;
    if (window_ == nullptr) return nullptr;
    // The owner has its input back before the window goes, so that Windows activates the owner.
    UncoverOwner();
    posted_.clear();
    controlStates_.Clear();
    textColors_.clear();
    // A modal loop may be asleep in GetMessage.
    PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
    return Disconnect();
}

void Form::Cover() {
    ++covers_;
    EnableWindow(window_, FALSE);
}

void Form::Uncover() {
    if (--covers_ == 0) EnableWindow(window_, TRUE);
}

void Form::UncoverOwner() {
    if (Form* owner = std::exchange(coveredOwner_, nullptr); owner != nullptr) owner->Uncover();
}

bool Form::TakesInput() const {
    if (window_ == nullptr || covers_ > 0 || !IsWindowEnabled(window_)) return false;
    const Form* root = Of(GetAncestor(window_, GA_ROOT));
    return root == nullptr || root == this || root->TakesInput();
}

HWND Form::ControlHandle(int controlId) const {
    if (window_ == nullptr) return nullptr;
    HWND& control = controls_[controlId];
    // A look-up goes through all the children, which takes longer than most of what is done with one.
    if (!IsWindow(control)) control = GetDlgItem(window_, controlId);
    return control;
}

void Form::Enable(bool isEnabled) {
    EnableWindow(window_, isEnabled);
}

bool Form::IsEnabled() const {
    return IsWindowEnabled(window_) != FALSE;
}

bool Form::IsActive() const {
    return window_ != nullptr && GetActiveWindow() == window_;
}

void Form::PutFirst() {
    SetWindowPos(window_, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void Form::SetTitle(const std::wstring& title) {
    SetWindowTextW(window_, title.c_str());
}

std::wstring Form::Title() const {
    std::wstring title(static_cast<std::size_t>(GetWindowTextLengthW(window_)) + 1, L'\0');
    title.resize(static_cast<std::size_t>(GetWindowTextW(window_, title.data(), static_cast<int>(title.size()))));
    return title;
}

void Form::ShowProgramIcon() {
    for (const auto& [kind, metric] : {std::pair{ICON_BIG, SM_CXICON}, std::pair{ICON_SMALL, SM_CXSMICON}}) {
        const int size = GetSystemMetrics(metric);
        HANDLE icon =
            LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(ProgramIcon), IMAGE_ICON, size, size, LR_SHARED);
        SendMessageW(window_, WM_SETICON, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(icon));
    }
}

void Form::Refresh() {
    RedrawWindow(window_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void Form::SetHeightTwips(int heightTwips) {
    RECT outer{};
    RECT inner{};
    GetWindowRect(window_, &outer);
    GetClientRect(window_, &inner);
    const int frame = (outer.bottom - outer.top) - inner.bottom;
    const int eraFrame = PixelsFromTwips(EraFrameTwips, window_);
    const int height = PixelsFromTwips(heightTwips, window_) + (frame > eraFrame ? frame - eraFrame : 0);
    ResizeOnScreen(window_, {outer.right - outer.left, height});
}

void Form::SetInnerWidthTwips(int widthTwips) {
    SetInnerSize(widthTwips, std::nullopt);
}

void Form::SetInnerHeightTwips(int heightTwips) {
    SetInnerSize(std::nullopt, heightTwips);
}

int Form::InnerWidthTwips() const {
    RECT inner{};
    GetClientRect(window_, &inner);
    return TwipsFromPixels(inner.right, window_);
}

void Form::SetInnerSize(std::optional<int> widthTwips, std::optional<int> heightTwips) {
    RECT outer{};
    RECT inner{};
    GetWindowRect(window_, &outer);
    GetClientRect(window_, &inner);
    SIZE size{outer.right - outer.left, outer.bottom - outer.top};
    if (widthTwips) size.cx += PixelsFromTwips(*widthTwips, window_) - inner.right;
    if (heightTwips) size.cy += PixelsFromTwips(*heightTwips, window_) - inner.bottom;
    ResizeOnScreen(window_, size);
}

void Form::On(int controlId, int code, std::function<void()> handler) {
    commands_[{controlId, code}] = std::move(handler);
}

void Form::OnNotify(int controlId, UINT code, std::function<LRESULT(NMHDR&)> handler) {
    notifications_[{controlId, code}] = std::move(handler);
}

void Form::Post(std::function<void()> task) {
    if (window_ == nullptr) return;
    posted_.push_back(std::move(task));
    PostMessageW(window_, RunPostedMessage, 0, 0);
}

void Form::SetTextColor(int controlId, COLORREF color) {
    textColors_[controlId] = color;
    InvalidateRect(ControlHandle(controlId), nullptr, TRUE);
}

void Form::ResetTextColor(int controlId) {
    textColors_.erase(controlId);
    InvalidateRect(ControlHandle(controlId), nullptr, TRUE);
}

COLORREF Form::TextColor(int controlId) const {
    const auto color = textColors_.find(controlId);
    return color != textColors_.end() ? color->second : GetSysColor(COLOR_WINDOWTEXT);
}

bool Form::TranslateKeys(MSG& message) {
    if (!TakesInput()) return false;
    if (accelerators_ && TranslateAcceleratorW(window_, accelerators_.Get(), &message) != 0) return true;
    return IsDialogMessageW(window_, &message) != FALSE;
}

void Form::SetAccelerators(const std::vector<ACCEL>& keys) {
    accelerators_.Reset(CreateAcceleratorTableW(const_cast<ACCEL*>(keys.data()), static_cast<int>(keys.size())));
}

void Form::SetCancelButton(int controlId) {
    On(IDCANCEL, BN_CLICKED, [this, controlId] {
        HWND button = ControlHandle(controlId);
        if (IsWindowEnabled(button) && IsWindowVisible(button)) SendMessageW(button, BM_CLICK, 0, 0);
    });
}

void Form::IgnoreEscape() {
    On(IDCANCEL, BN_CLICKED, [] {});
}

std::optional<LRESULT> Form::OnMessage(UINT, WPARAM, LPARAM) {
    return std::nullopt;
}

void Form::RunGuarded(const std::function<void()>& steps) noexcept {
    try {
        steps();
    } catch (...) {
        OnUnhandledException();
    }
}

void Form::RaiseActivate() {
    if (window_ != nullptr) RunGuarded([this] { OnActivate(); });
}

INT_PTR CALLBACK Form::DialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Read for every message, so not from the property, which a look-up by name takes.
    auto* form = reinterpret_cast<Form*>(GetWindowLongPtrW(window, DWLP_USER));
    if (message == WM_INITDIALOG) {
        // Before the form hears of anything: a form that is not loaded yet is not told its size.
        EnlargeToUnits(window);
        form = reinterpret_cast<Form*>(lParam);
        form->window_ = window;
        SetWindowLongPtrW(window, DWLP_USER, lParam);
        SetPropW(window, FormProperty, form);
    }
    if (form == nullptr) return FALSE;
    try {
        return form->TakeMessage(message, wParam, lParam);
    } catch (...) {
        form->OnUnhandledException();
        return TRUE;
    }
}

} // namespace ui
