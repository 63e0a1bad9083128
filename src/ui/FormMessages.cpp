// What a form does with the messages that its window gets.
#include "ui/Form.h"

#include "ui/MessagePump.h"

#include <utility>

namespace ui {

namespace {

INT_PTR Answer(HWND window, LRESULT result) {
    // Reading costs less than writing, and many answers are the same as the last one.
    if (GetWindowLongPtrW(window, DWLP_MSGRESULT) != result) SetWindowLongPtrW(window, DWLP_MSGRESULT, result);
    return TRUE;
}

} // namespace

INT_PTR Form::TakeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = window_;
    if (const auto result = OnMessage(message, wParam, lParam)) return Answer(window, *result);
    static const UINT autoPlayQuestion = RegisterWindowMessageW(L"QueryCancelAutoPlay");
    if (message == autoPlayQuestion && KeepsDiscsFromOpening()) return Answer(window, TRUE);
    switch (message) {
    case WM_INITDIALOG:
        ShowProgramIcon();
        controlStates_.Begin(window_);
        OnLoad();
        return TRUE;
    case WM_QUERYENDSESSION:
        return sessionEndHolds_ > 0 ? Answer(window, FALSE) : FALSE;
    case WM_SYSCOMMAND:
        // The lower four bits are the system's own.
        return HandleSystemCommand(wParam & 0xFFF0) ? Answer(window, 0) : FALSE;
    case WM_COMMAND:
        return HandleCommand(LOWORD(wParam), HIWORD(wParam)) ? TRUE : FALSE;
    case WM_NOTIFY:
        return HandleNotify(*reinterpret_cast<NMHDR*>(lParam)) ? TRUE : FALSE;
    case WM_CLOSE:
        Close();
        return TRUE;
    case WM_DESTROY:
        // Somebody else destroys the window, as it goes with its owner's.
        Leave();
        return TRUE;
    case RunPostedMessage: {
        if (posted_.empty()) return TRUE;
        const auto task = std::move(posted_.front());
        posted_.pop_front();
        task();
        return TRUE;
    }
    case WM_SETCURSOR:
        if (!IsHourglassShown()) return FALSE;
        SetCursor(LoadCursorW(nullptr, IDC_WAIT));
        return Answer(window, TRUE);
    case WM_CTLCOLORSTATIC: {
        const auto color = textColors_.find(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)));
        if (color == textColors_.end()) return FALSE;
        HDC context = reinterpret_cast<HDC>(wParam);
        ::SetTextColor(context, color->second);
        SetBkMode(context, TRANSPARENT);
        return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_3DFACE));
    }
    default:
        return FALSE;
    }
}

bool Form::HandleSystemCommand(WPARAM command) {
    HWND root = GetAncestor(window_, GA_ROOTOWNER);
    if (command == SC_MINIMIZE && root != window_) {
        // Minimised alone, a window with an owner becomes a stub on the desktop that no taskbar button stands for.
        ShowOwnedPopups(root, FALSE);
        ShowWindow(root, SW_MINIMIZE);
        return true;
    }
    if (command == SC_RESTORE && covers_ > 0 && IsIconic(window_)) {
        // Windows restores no window that is disabled.
        ShowWindow(window_, SW_RESTORE);
        ShowOwnedPopups(window_, TRUE);
        SetForegroundWindow(GetLastActivePopup(window_));
        return true;
    }
    return false;
}

void Form::Close() {
    if (TakesInput() && OnClosing()) Unload();
}

bool Form::HandleCommand(int controlId, int code) {
    if (!TakesInput()) return true;
    // A key or menu choice (code 1 and 0) counts as a click.
    auto handler = commands_.find({controlId, code});
    if (handler == commands_.end() && code == 1) handler = commands_.find({controlId, BN_CLICKED});
    if (handler != commands_.end()) {
        const auto steps = handler->second;
        steps();
        return true;
    }
    if (controlId == IDCANCEL) {
        if (GetWindowLongPtrW(window_, GWL_STYLE) & WS_CHILD) return false;
        Close();
        return true;
    }
    return false;
}

bool Form::HandleNotify(NMHDR& header) {
    const auto handler = notifications_.find({static_cast<int>(header.idFrom), header.code});
    if (handler == notifications_.end()) return false;
    HWND window = window_;
    const auto steps = handler->second;
    const LRESULT answer = steps(header);
    // What a notification that nobody handles is answered with anyway.
    if (answer == 0) return false;
    Answer(window, answer);
    return true;
}

} // namespace ui
