// What a drive lets a program wait for or refuses it.
#include "Drives.h"
#include "SlimMutex.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <mutex>

namespace {

/// What this process has seen of the discs in a drive.
struct SeenDisc {
    std::string id;
    bool isKnown = false;
    ULONGLONG readyTick = 0;
};

SlimMutex seenMutex;
std::map<std::wstring, SeenDisc> seenDiscs;

/// Whether something holds a file or folder open.
bool IsHeldOpen(const std::filesystem::path& path) {
    const UniqueFile held(CreateFileW(path.c_str(), GENERIC_READ | DELETE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    return !held && GetLastError() == ERROR_SHARING_VIOLATION;
}

/// Where a disc that is blank by guess has nothing but zeros: in its first and its last 2 MB.
bool HasOnlyZeros(const std::wstring& imagePath) {
    constexpr std::int64_t lookedAtBytes = 2 << 20;
    std::ifstream image(std::filesystem::path(imagePath), std::ios::binary | std::ios::ate);
    if (!image) return true;
    const std::int64_t sizeBytes = image.tellg();
    for (const std::int64_t start : {std::int64_t{0}, std::max<std::int64_t>(sizeBytes - lookedAtBytes, 0)}) {
        std::string bytes(static_cast<std::size_t>(std::min(sizeBytes - start, lookedAtBytes)), '\0');
        image.seekg(start);
        image.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (std::any_of(bytes.begin(), bytes.end(), [](char byte) { return byte != 0; })) return false;
    }
    return true;
}

} // namespace

bool VirtualDrive::IsStern(const std::string& mode) const {
    const std::string modes = settings.Text("stern", "all");
    return modes == "all" || (", " + modes + ",").find(", " + mode + ",") != std::string::npos;
}

std::int64_t VirtualDrive::Delay(const std::string& key, std::int64_t sternMilliseconds) const {
    return settings.Number(key, IsStern("delays") ? sternMilliseconds : 0);
}

HRESULT VirtualDrive::OpenResult() const {
    constexpr ULONGLONG longestSilenceMilliseconds = 40000;
    const ULONGLONG start = GetTickCount64();
    while (VirtualDrive(folder).settings.Flag("silent") && GetTickCount64() - start < longestSilenceMilliseconds)
        Sleep(50);
    const bool isRefused = settings.Flag("busy") && IsStern("opening");
    return isRefused ? static_cast<HRESULT>(Mastering::RecorderLocked) : S_OK;
}

HRESULT VirtualDrive::QueryResult() const {
    if (settings.Flag("busy")) return static_cast<HRESULT>(Mastering::RecorderLocked);
    return static_cast<HRESULT>(settings.Number("query code", S_OK));
}

HRESULT VirtualDrive::Answer(const VirtualDisc& disc) const {
    if (settings.Flag("counts questions"))
        std::ofstream(std::filesystem::path(folder) / "questions", std::ios::app | std::ios::binary) << '?';
    Sleep(static_cast<DWORD>(Delay("answer milliseconds", 1)));
    if (const HRESULT result = QueryResult(); FAILED(result)) return result;
    std::lock_guard lock(seenMutex);
    SeenDisc& seen = seenDiscs[folder];
    const std::string id = disc.IsPresent() ? disc.settings.Text("id") : "none";
    // A disc that was in when the program came has been ready for long.
    const bool isInserted = seen.isKnown && seen.id != id && disc.IsPresent() && !disc.settings.Flag("settled");
    if (seen.id != id) seen.readyTick = 0;
    if (isInserted) seen.readyTick = GetTickCount64() + static_cast<ULONGLONG>(Delay("ready milliseconds", 300));
    seen.id = id;
    seen.isKnown = true;
    if (!disc.IsPresent()) return static_cast<HRESULT>(Mastering::NoMedia);
    return GetTickCount64() < seen.readyTick ? static_cast<HRESULT>(Mastering::MediaBecomingReady) : S_OK;
}

void VirtualDrive::BecomeReadyAgain() const {
    std::lock_guard lock(seenMutex);
    seenDiscs[folder].readyTick = GetTickCount64() + static_cast<ULONGLONG>(Delay("ready milliseconds", 300));
}

bool VirtualDisc::IsInUse() const {
    std::error_code ignored;
    if (IsHeldOpen(VolumePath())) return true;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(VolumePath()), ignored))
        if (IsHeldOpen(entry.path())) return true;
    return false;
}

bool VirtualDisc::LooksBlank() const {
    Sleep(static_cast<DWORD>(blankTestMilliseconds_));
    return IsOverwriteOnly() ? HasOnlyZeros(ImagePath()) : IsBlank();
}

void VirtualDisc::Unmount() const {
    std::error_code ignored;
    std::filesystem::remove_all(std::filesystem::path(VolumePath()), ignored);
    std::filesystem::create_directory(std::filesystem::path(VolumePath()), ignored);
}
