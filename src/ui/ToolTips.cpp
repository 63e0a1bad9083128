#include "ui/ToolTips.h"

namespace ui {

void ToolTips::Set(const Control& control, const std::wstring& text) {
    if (text.empty()) {
        texts_.erase(control.Id());
    } else {
        texts_[control.Id()] = text;
    }
    Register(control);
}

std::wstring ToolTips::Text(const Control& control) const {
    const auto text = texts_.find(control.Id());
    return text != texts_.end() ? text->second : std::wstring();
}

void ToolTips::Register(const Control& control) {
    if (!form_.IsLoaded()) return;
    // It goes with the form's window, and a form that is loaded again has another one.
    if (!IsWindow(window_.Get())) {
        window_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                      form_.Handle(), nullptr, nullptr, nullptr));
    }
    std::wstring text = Text(control);
    TTTOOLINFOW onControl{};
    // The size without the last member is what every version of the common controls takes.
    onControl.cbSize = TTTOOLINFOW_V1_SIZE;
    onControl.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    onControl.hwnd = form_.Handle();
    onControl.uId = reinterpret_cast<UINT_PTR>(control.Handle());

    // A disabled control lets its mouse messages through to the form.
    TTTOOLINFOW onForm = onControl;
    onForm.uFlags = TTF_SUBCLASS;
    onForm.uId = static_cast<UINT_PTR>(control.Id());
    GetWindowRect(control.Handle(), &onForm.rect);
    MapWindowPoints(nullptr, form_.Handle(), reinterpret_cast<POINT*>(&onForm.rect), 2);

    for (TTTOOLINFOW* tool : {&onControl, &onForm}) {
        SendMessageW(window_.Get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(tool));
        if (text.empty()) continue;
        tool->lpszText = text.data();
        SendMessageW(window_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(tool));
    }
}

} // namespace ui
