#include "platform/windows/WindowsDrives.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/windows/LastError.h"
#include "platform/windows/QuietErrors.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <utility>

namespace {

constexpr DWORD RootsBufferBytes = 255;
constexpr DWORD RootBytes = 4; ///< "E:\" and its NUL

std::wstring RootOf(const std::wstring& drive) {
    return drive.ends_with(L'\\') ? drive : drive + L'\\';
}

bool IsLetterAssigned(wchar_t letter) {
    const wchar_t upper = letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - 0x20) : letter;
    if (upper < L'A' || upper > L'Z') return false;
    return (GetLogicalDrives() >> (upper - L'A') & 1) != 0;
}

/// A letter can outlive the place that it stood for. A drive without a medium fails in another way: it is not ready.
bool LeadsNowhere(const std::wstring& root) {
    if (GetFileAttributesW(root.c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const DWORD error = GetLastError();
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_DRIVE;
}

/// What is claimed is claimed for as long as the mutex exists; nobody owns it.
class VolumeClaim final : public Hold {
  public:
    explicit VolumeClaim(UniqueObject mutex) : mutex_(std::move(mutex)) {}

  private:
    UniqueObject mutex_;
};

} // namespace

WindowsDrives::WindowsDrives() {
    SuppressDiskBoxes();
}

std::vector<std::wstring> WindowsDrives::Roots() const {
    std::string buffer(RootsBufferBytes, ' ');
    const DWORD length = GetLogicalDriveStringsA(RootsBufferBytes, buffer.data());
    std::vector<std::wstring> roots;
    for (DWORD at = 0; at + RootBytes <= length; at += RootBytes) roots.push_back(FromAnsi(buffer.substr(at, 3)));
    return roots;
}

DriveType WindowsDrives::Type(const std::wstring& root) const {
    return static_cast<DriveType>(GetDriveTypeA(ToAnsi(RootOf(root)).c_str()));
}

bool WindowsDrives::Exists(const std::wstring& root) const {
    return !root.empty() && IsLetterAssigned(root[0]) && Type(root) != DriveType::NoRoot && !LeadsNowhere(RootOf(root));
}

std::optional<std::wstring> WindowsDrives::VolumeLabel(const std::wstring& root) const {
    wchar_t label[MAX_PATH + 1] = {};
    if (!GetVolumeInformationW(RootOf(root).c_str(), label, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0)) {
        return std::nullopt;
    }
    return label;
}

DriveSpace WindowsDrives::Space(const std::wstring& root) const {
    ULARGE_INTEGER free = {};
    ULARGE_INTEGER total = {};
    if (!GetDiskFreeSpaceExW(RootOf(root).c_str(), &free, &total, nullptr)) {
        throw RuntimeError(ErrorNumber::DiskNotReady);
    }
    return {static_cast<double>(free.QuadPart), static_cast<double>(total.QuadPart)};
}

double WindowsDrives::FreeClusterBytes(const std::wstring& root) const {
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD totalClusters = 0;
    if (!GetDiskFreeSpaceA(ToAnsi(RootOf(root)).c_str(), &sectorsPerCluster, &bytesPerSector, &freeClusters,
                           &totalClusters)) {
        throw RuntimeError(ErrorNumber::DiskNotReady);
    }
    return static_cast<double>(freeClusters) * (static_cast<double>(bytesPerSector) * sectorsPerCluster);
}

std::wstring WindowsDrives::FileSystemName(const std::wstring& root) const {
    wchar_t name[MAX_PATH + 1] = {};
    if (!GetVolumeInformationW(RootOf(root).c_str(), nullptr, 0, nullptr, nullptr, nullptr, name, MAX_PATH + 1))
        return {};
    return name;
}

bool WindowsDrives::CanOpenVolume(const std::wstring& letter) const {
    const std::string device = "\\\\.\\" + ToAnsi(letter) + ":";
    const UniqueFile volume(CreateFileA(device.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    return static_cast<bool>(volume);
}

void WindowsDrives::Touch(const std::wstring& root) {
    WIN32_FIND_DATAW found = {};
    const UniqueFind search(FindFirstFileW((RootOf(root) + L"*").c_str(), &found));
}

std::unique_ptr<Hold> WindowsDrives::Claim(const std::wstring& root) {
    const std::wstring name = L"Global\\Backup.Medium." + UpperCase(root.substr(0, 1));
    UniqueObject mutex(CreateMutexW(nullptr, FALSE, name.c_str()));
    const DWORD error = GetLastError();
    // Another user's mutex exists but cannot be opened.
    if (error == ERROR_ALREADY_EXISTS || (!mutex && error == ERROR_ACCESS_DENIED)) return nullptr;
    if (!mutex) ThrowSystemError(error);
    return std::make_unique<VolumeClaim>(std::move(mutex));
}
