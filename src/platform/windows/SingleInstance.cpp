#include "platform/windows/SingleInstance.h"

#include "platform/Text.h"

#include <array>
#include <functional>

namespace {

constexpr DWORD PatienceMilliseconds = 3000;
constexpr DWORD PauseMilliseconds = 50;

struct MarkedWindow {
    const wchar_t* mark;
    HWND window;
};

BOOL CALLBACK TakeMarked(HWND window, LPARAM parameter) {
    auto& wanted = *reinterpret_cast<MarkedWindow*>(parameter);
    if (GetPropW(window, wanted.mark) == nullptr) return TRUE;
    wanted.window = window;
    return FALSE;
}

void SayThatItRuns() {
    std::array<wchar_t, 512> text{};
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, ERROR_SINGLE_INSTANCE_APP, 0,
                   text.data(), static_cast<DWORD>(text.size()), nullptr);
    MessageBoxW(nullptr, text.data(), L"Backup", MB_OK | MB_ICONINFORMATION);
}

/// The same text for every name of one folder: short, substituted or by way of the network.
std::wstring IdentityOf(const std::wstring& folder) {
    const UniqueFile opened(CreateFileW(folder.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION facts = {};
    if (!opened || !GetFileInformationByHandle(opened.Get(), &facts))
        return std::to_wstring(std::hash<std::wstring>()(UpperCase(folder)));
    return std::to_wstring(facts.dwVolumeSerialNumber) + L"." + std::to_wstring(facts.nFileIndexHigh) + L"." +
           std::to_wstring(facts.nFileIndexLow);
}

} // namespace

SingleInstance::SingleInstance(const std::wstring& programFolder) : name_(L"Backup." + IdentityOf(programFolder)) {
    const std::wstring mutexName = L"Global\\" + name_;
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, mutexName.c_str());
    const DWORD error = GetLastError();
    mutex_.Reset(mutex);
    // Another user's mutex exists but cannot be opened.
    isFirst_ = mutex_ && error != ERROR_ALREADY_EXISTS;
}

void SingleInstance::Mark(HWND window) const {
    SetPropW(window, name_.c_str(), window);
}

void SingleInstance::ShowFirst() {
    mutex_.Reset();
    MarkedWindow first{name_.c_str(), nullptr};
    EnumWindows(TakeMarked, reinterpret_cast<LPARAM>(&first));
    // A copy that was started a moment ago has its window still to make.
    for (DWORD waited = 0; first.window == nullptr && waited < PatienceMilliseconds; waited += PauseMilliseconds) {
        Sleep(PauseMilliseconds);
        EnumWindows(TakeMarked, reinterpret_cast<LPARAM>(&first));
    }
    if (first.window == nullptr) return SayThatItRuns();
    if (IsIconic(first.window)) ShowWindow(first.window, SW_RESTORE);
    SetForegroundWindow(GetLastActivePopup(first.window));
}
