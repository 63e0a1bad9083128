#include "Remote.h"

#include "Protocol.h"

namespace uidriver {

constexpr UINT AnswerTimeoutMs = 3000;

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    SetLastError(0);
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, AnswerTimeoutMs, &result) == 0) {
        const DWORD error = GetLastError();
        if (!IsWindow(window)) throw RequestError("gone");
        throw RequestError(error == 0 || error == ERROR_TIMEOUT ? "busy" : "refused, error " + std::to_string(error));
    }
    return static_cast<LRESULT>(result);
}

void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!PostMessageW(window, message, wParam, lParam)) throw RequestError("gone");
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    const LRESULT length = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::wstring ClassOf(HWND window) {
    wchar_t name[256] = {};
    GetClassNameW(window, name, 256);
    return name;
}

void PostNotification(HWND control, WORD code) {
    Post(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code), reinterpret_cast<LPARAM>(control));
}

void PostClick(HWND window, POINT point, bool isDouble, WPARAM modifiers) {
    const LPARAM position = MAKELPARAM(point.x, point.y);
    Post(window, WM_LBUTTONDOWN, MK_LBUTTON | modifiers, position);
    Post(window, WM_LBUTTONUP, modifiers, position);
    if (!isDouble) return;
    Post(window, WM_LBUTTONDBLCLK, MK_LBUTTON | modifiers, position);
    Post(window, WM_LBUTTONUP, modifiers, position);
}

RemoteBlock::RemoteBlock(HWND window, std::size_t sizeBytes) {
    DWORD processId = 0;
    GetWindowThreadProcessId(window, &processId);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, processId);
    if (process_ == nullptr) throw RequestError("gone");
    block_ = VirtualAllocEx(process_, nullptr, sizeBytes, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
    if (block_ == nullptr) {
        CloseHandle(process_);
        throw RequestError("no memory in the other process");
    }
}

RemoteBlock::~RemoteBlock() {
    if (block_ != nullptr) VirtualFreeEx(process_, block_, 0, MEM_RELEASE);
    CloseHandle(process_);
}

void RemoteBlock::Write(std::size_t offsetBytes, const void* data, std::size_t sizeBytes) {
    if (!WriteProcessMemory(process_, static_cast<char*>(block_) + offsetBytes, data, sizeBytes, nullptr))
        throw RequestError("gone");
}

void RemoteBlock::Read(std::size_t offsetBytes, void* data, std::size_t sizeBytes) const {
    if (!ReadProcessMemory(process_, static_cast<const char*>(block_) + offsetBytes, data, sizeBytes, nullptr))
        throw RequestError("gone");
}

LPARAM RemoteBlock::Address(std::size_t offsetBytes) const {
    return reinterpret_cast<LPARAM>(static_cast<char*>(block_) + offsetBytes);
}

} // namespace uidriver
