#include "ui/ToolTips.h"

namespace ui {

namespace {

/// What names a tool on the form, where the numbers of the controls are taken.
int ToolOnForm(int controlId, int part) {
    return controlId + (part << 16);
}

TTTOOLINFOW ToolOn(HWND window) {
    TTTOOLINFOW tool{};
    // The size without the last member is what every version of the common controls takes.
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = window;
    return tool;
}

} // namespace

void ToolTips::Set(const Control& control, const std::wstring& text) {
    texts_[{control.Id(), 0}] = text;
    TTTOOLINFOW onControl = ToolOn(form_.Handle());
    onControl.uFlags |= TTF_IDISHWND;
    onControl.uId = reinterpret_cast<UINT_PTR>(control.Handle());
    RECT place{};
    GetClientRect(control.Handle(), &place);
    Register({control.Id(), 0}, onControl, place);
}

void ToolTips::SetPart(const Control& control, int part, const RECT& place, const std::wstring& text) {
    texts_[{control.Id(), part}] = text;
    TTTOOLINFOW onControl = ToolOn(control.Handle());
    onControl.uId = static_cast<UINT_PTR>(part);
    onControl.rect = place;
    Register({control.Id(), part}, onControl, place);
}

std::wstring ToolTips::Text(const Control& control) const {
    const auto text = texts_.find({control.Id(), 0});
    return text != texts_.end() ? text->second : std::wstring();
}

void ToolTips::Register(const Key& key, TTTOOLINFOW onControl, RECT place) {
    if (!form_.IsLoaded()) return;
    // It goes with the form's window, and a form that is loaded again has another one.
    if (!IsWindow(window_.Get())) {
        window_.Reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0, 0, 0,
                                      form_.Handle(), nullptr, nullptr, nullptr));
    }
    std::wstring& text = texts_[key];
    onControl.lpszText = text.data();

    // A disabled control lets its mouse messages through to the form, and so does a hidden one: what is told is
    // decided when the mouse rests there.
    TTTOOLINFOW onForm = ToolOn(form_.Handle());
    const int tool = ToolOnForm(key.first, key.second);
    onForm.uId = static_cast<UINT_PTR>(tool);
    MapWindowPoints(form_.ControlHandle(key.first), form_.Handle(), reinterpret_cast<POINT*>(&place), 2);
    onForm.rect = place;
    onForm.lpszText = LPSTR_TEXTCALLBACKW;
    form_.OnNotify(tool, TTN_GETDISPINFOW, [this, key](NMHDR& header) { return Tell(key, header); });

    for (TTTOOLINFOW* each : {&onControl, &onForm}) {
        SendMessageW(window_.Get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(each));
        if (!text.empty()) SendMessageW(window_.Get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(each));
    }
}

LRESULT ToolTips::Tell(const Key& key, NMHDR& header) {
    auto& asked = reinterpret_cast<NMTTDISPINFOW&>(header);
    asked.szText[0] = L'\0';
    asked.lpszText = IsWindowVisible(form_.ControlHandle(key.first)) ? texts_[key].data() : asked.szText;
    return 0;
}

} // namespace ui
