#include "platform/windows/WindowsConsole.h"

#include "platform/CodePages.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/windows/LastError.h"

#include <windows.h>

#include <atomic>

namespace {

constexpr std::size_t LongestInput = 65536;

bool IsConsole(HANDLE handle) {
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != FALSE;
}

bool IsUsable(HANDLE handle) {
    return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

UniqueFile OpenConsole(const wchar_t* name) {
    return UniqueFile(CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
}

/// Keeps what is typed from being shown, for as long as it lives.
class HiddenTyping {
  public:
    explicit HiddenTyping(HANDLE input) : input_(input), isConsole_(GetConsoleMode(input, &mode_) != FALSE) {
        if (isConsole_) SetConsoleMode(input_, mode_ & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
    }
    ~HiddenTyping() {
        if (isConsole_) SetConsoleMode(input_, mode_);
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;
    bool IsConsole() const { return isConsole_; }

  private:
    HANDLE input_;
    DWORD mode_ = 0;
    bool isConsole_;
};

std::string ReadFirstLine(HANDLE input) {
    std::string bytes;
    while (bytes.size() < LongestInput) {
        char byte = 0;
        DWORD readBytes = 0;
        if (!ReadFile(input, &byte, 1, &readBytes, nullptr)) {
            const DWORD error = GetLastError();
            if (error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF) break;
            ThrowSystemError(error);
        }
        if (readBytes == 0 || byte == '\n') break;
        bytes += byte;
    }
    if (bytes.ends_with('\r')) bytes.pop_back();
    return bytes;
}

std::string ReadTyped(HANDLE input) {
    wchar_t typed[512];
    DWORD length = 0;
    if (!ReadConsoleW(input, typed, 512, &length, nullptr)) ThrowLastError();
    while (length > 0 && (typed[length - 1] == L'\n' || typed[length - 1] == L'\r')) --length;
    return ToAnsi({typed, length});
}

/// The system calls the handler without anything of ours, on a thread of its own.
std::atomic<bool> isStopAsked{false};
/// How long Windows lets a program live on whose console was closed.
constexpr DWORD LongestEndMilliseconds = 5000;

BOOL WINAPI TakeControlEvent(DWORD event) {
    isStopAsked = true;
    // With the end of this call the program would end in the middle of a file.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(LongestEndMilliseconds);
    return TRUE;
}

/// Takes the console of whoever started the program. That empties the program's list of handlers, so ours goes in
/// after.
bool AttachToParent() {
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) return false;
    SetConsoleCtrlHandler(TakeControlEvent, TRUE);
    return true;
}

} // namespace

WindowsConsole::WindowsConsole() {
    SetConsoleCtrlHandler(TakeControlEvent, TRUE);
    output_ = GetStdHandle(STD_OUTPUT_HANDLE);
    if (!IsUsable(output_)) {
        output_ = nullptr;
        if (AttachToParent()) attached_ = OpenConsole(L"CONOUT$");
        if (attached_) output_ = attached_.Get();
    }
    isOutputConsole_ = output_ != nullptr && IsConsole(output_);
}

bool WindowsConsole::IsStopAsked() const {
    return isStopAsked;
}

void WindowsConsole::Line(const std::wstring& text) {
    if (output_ == nullptr) return;
    const std::wstring line = text + L"\r\n";
    DWORD written = 0;
    if (isOutputConsole_) {
        WriteConsoleW(output_, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
        return;
    }
    // Somebody who no longer listens is no reason to stop: the exit code is still waited for.
    const std::string bytes = ToUtf8(line);
    WriteFile(output_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

std::string WindowsConsole::Input() {
    HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    UniqueFile opened;
    if (!IsUsable(input)) {
        AttachToParent();
        opened = OpenConsole(L"CONIN$");
        if (!opened) throw RuntimeError(ErrorNumber::InputPastEndOfFile);
        input = opened.Get();
    }
    const HiddenTyping hidden(input);
    return hidden.IsConsole() ? ReadTyped(input) : ReadFirstLine(input);
}
