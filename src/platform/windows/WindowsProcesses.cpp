#include "platform/windows/WindowsProcesses.h"

#include "platform/RuntimeError.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <shellapi.h>

namespace {

// Smaller than the record itself, and accepted by every Windows.
constexpr DWORD StartupRecordBytes = 65;

} // namespace

std::int32_t WindowsProcesses::Run(const std::wstring& commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = StartupRecordBytes;
    PROCESS_INFORMATION started = {};
    std::wstring mutableLine = commandLine; // the call may write into it
    CreateProcessW(nullptr, mutableLine.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                   &startup, &started);
    const UniqueObject process(started.hProcess);
    const UniqueObject thread(started.hThread);
    // After a failed start both calls act on a null handle, do nothing, and the answer is 0.
    WaitForSingleObject(process.Get(), INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(process.Get(), &exitCode);
    return static_cast<std::int32_t>(exitCode);
}

void WindowsProcesses::Start(const std::wstring& commandLine) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWNORMAL;
    PROCESS_INFORMATION started = {};
    std::wstring mutableLine = commandLine; // the call may write into it
    if (!CreateProcessW(nullptr, mutableLine.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                        &startup, &started)) {
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    const UniqueObject process(started.hProcess);
    const UniqueObject thread(started.hThread);
}

void WindowsProcesses::Open(const std::wstring& document, const std::wstring& workingFolder) {
    ShellExecuteW(nullptr, L"open", document.c_str(), nullptr, workingFolder.c_str(), SW_SHOWNORMAL);
}
