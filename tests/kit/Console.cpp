#include "Console.h"

#include "uidriver/Protocol.h"

#include <windows.h>

#include <atomic>
#include <iostream>

namespace kit {

namespace {

std::atomic<bool> isEndWished = false;

BOOL WINAPI NoteEnd(DWORD event) {
    isEndWished = true;
    // When the window has been closed, the system ends the program as soon as this returns.
    constexpr DWORD cleaningMilliseconds = 4500;
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(cleaningMilliseconds);
    return TRUE;
}

} // namespace

void Print(const std::wstring& text) {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    DWORD written = 0;
    if (GetConsoleMode(output, &mode)) {
        WriteConsoleW(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
        return;
    }
    const std::string bytes = uidriver::ToUtf8(text);
    WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

std::wstring ReadLine() {
    std::string line;
    std::getline(std::cin, line);
    while (!line.empty() && (line.back() == '\r' || line.back() == ' ')) line.pop_back();
    return uidriver::FromUtf8(line);
}

void WatchForEnd() {
    SetConsoleCtrlHandler(NoteEnd, TRUE);
}

bool IsEndWished() {
    return isEndWished;
}

} // namespace kit
