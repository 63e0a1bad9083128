#include "BurnerBench.h"

#include "Drives.h"

#include <fstream>

namespace fs = std::filesystem;

namespace {

HMODULE server = nullptr;

fs::path OwnFolder() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return fs::path(path).parent_path();
}

fs::path BurnerFolder() {
    return L"C:\\VirtualBurner";
}

wchar_t LetterOf(DiscFamily family, int drive) {
    if (family == DiscFamily::Dvd) return L'K';
    return drive == 0 ? L'G' : L'H';
}

const char* NameOf(MediaKind kind) {
    switch (kind) {
    case MediaKind::CdRom:
        return "CD-ROM";
    case MediaKind::CdR:
        return "CD-R";
    case MediaKind::CdRw:
        return "CD-RW";
    case MediaKind::DvdRom:
        return "DVD-ROM";
    case MediaKind::DvdPlusR:
        return "DVD+R";
    case MediaKind::DvdPlusRw:
        return "DVD+RW";
    case MediaKind::DvdMinusR:
        return "DVD-R";
    case MediaKind::DvdMinusRw:
        return "DVD-RW";
    case MediaKind::DvdRam:
        return "DVD-RAM";
    case MediaKind::DvdPlusRDl:
        return "DVD+R DL";
    default:
        return "unrecognized";
    }
}

void WriteSettings(const fs::path& path, const BurnerBench::Settings& settings) {
    std::ofstream file(path, std::ios::binary);
    for (const auto& [key, value] : settings) file << key << " = " << value << '\n';
}

void Change(const fs::path& path, const BurnerBench::Settings& changes) {
    SettingsFile settings(path.wstring());
    for (const auto& [key, value] : changes) settings.Set(key, value);
}

} // namespace

bool RegisterVirtualBurner() {
    // On a real Windows it would hide the system's own image mastering from every program.
    if (!GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version")) {
        std::puts("The virtual burner is registered on test workstations under Wine only.");
        return false;
    }
    std::error_code failure;
    fs::create_directories(BurnerFolder(), failure);
    const fs::path copy = BurnerFolder() / "VirtualBurner.dll";
    fs::copy_file(OwnFolder() / "VirtualBurner.dll", copy, fs::copy_options::overwrite_existing, failure);
    server = LoadLibraryW(copy.c_str());
    const auto registerServer = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)()>(
        reinterpret_cast<void*>(server ? GetProcAddress(server, "DllRegisterServer") : nullptr));
    if (registerServer && SUCCEEDED(registerServer())) return true;
    std::puts("The virtual burner cannot be registered.");
    return false;
}

long LiveBurnerObjects() {
    const auto count = reinterpret_cast<long (*)()>(reinterpret_cast<void*>(GetProcAddress(server, "LiveObjectCount")));
    return count();
}

void TestMessageLoop::RunPending() {
    ++runs;
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

BurnerBench::BurnerBench() : files_(BurnerFolder() / L"files") {
    std::error_code ignored;
    fs::remove_all(BurnerFolder() / L"drives", ignored);
    fs::create_directories(files_, ignored);
    for (wchar_t letter : {L'G', L'H', L'K'}) {
        fs::create_directories(DriveFolder(letter), ignored);
        WriteSettings(DriveFolder(letter) / "drive.ini", {{"vendor", "VIRTUAL"},
                                                          {"product", letter == L'K' ? "DVD WRITER" : "CD WRITER"},
                                                          {"letter", std::string(1, static_cast<char>(letter))},
                                                          {"writes", letter == L'K' ? "dvd" : "cd"}});
    }
    Insert(DiscFamily::Cd, 0, MediaKind::CdRw);
    Insert(DiscFamily::Dvd, 0, MediaKind::DvdPlusR);
}

BurnerBench::~BurnerBench() {
    std::error_code ignored;
    fs::remove_all(files_, ignored);
}

fs::path BurnerBench::DriveFolder(wchar_t letter) {
    return BurnerFolder() / L"drives" / std::wstring(1, letter);
}

void BurnerBench::SetDrive(wchar_t letter, const Settings& changes) {
    Change(DriveFolder(letter) / "drive.ini", changes);
}

void BurnerBench::SetDisc(wchar_t letter, const Settings& changes) {
    Change(DriveFolder(letter) / "disc" / "disc.ini", changes);
}

std::string BurnerBench::DiscSetting(wchar_t letter, const std::string& key) {
    return SettingsFile((DriveFolder(letter) / "disc" / "disc.ini").wstring()).Text(key);
}

bool BurnerBench::HasImage(wchar_t letter) {
    std::error_code ignored;
    return fs::exists(DriveFolder(letter) / "disc" / "disc.iso", ignored);
}

void BurnerBench::InsertDisc(wchar_t letter, const Settings& disc) {
    std::error_code ignored;
    const fs::path prepared = DriveFolder(letter) / "prepared";
    fs::remove_all(prepared, ignored);
    fs::create_directories(prepared / "volume", ignored);
    static int lastId = 0;
    Settings named = disc;
    named["id"] = std::to_string(GetCurrentProcessId()) + "." + std::to_string(++lastId);
    // A disc that was in before the writer was made, unless the test says otherwise.
    named.try_emplace("settled", "yes");
    WriteSettings(prepared / "disc.ini", named);
    // What a test before wrote may still be on its way to the letter.
    const ProcessLock lock(SettingsLockName);
    fs::remove_all(DriveFolder(letter) / "disc", ignored);
    fs::rename(prepared, DriveFolder(letter) / "disc", ignored);
}

void BurnerBench::Insert(DiscFamily family, int drive, MediaKind kind) {
    const bool isDvd = kind >= MediaKind::DvdRom && kind <= MediaKind::DvdPlusRDl;
    InsertDisc(LetterOf(family, drive), {{"kind", NameOf(kind)},
                                         {"state", "blank"},
                                         {"capacity", isDvd ? "4700372992" : "736962560"},
                                         {"speeds", isDvd ? "16 8 4 2.4" : "48 32 16 8 4"}});
}

void BurnerBench::TakeOut(DiscFamily family, int drive) {
    std::error_code ignored;
    const fs::path folder = DriveFolder(LetterOf(family, drive));
    fs::remove_all(folder / "outside", ignored);
    const ProcessLock lock(SettingsLockName);
    fs::rename(folder / "disc", folder / "outside", ignored);
}

std::wstring BurnerBench::MakeFile(const std::wstring& name, std::size_t sizeBytes) {
    const fs::path path = files_ / name;
    std::ofstream file(path, std::ios::binary);
    std::string bytes(sizeBytes, '\0');
    unsigned value = 12345;
    for (char& next : bytes) {
        value = value * 1664525 + 1013904223;
        next = static_cast<char>(value >> 24);
    }
    file << bytes;
    return path.wstring();
}

void BurnerBench::SlowDown() {
    for (wchar_t letter : {L'G', L'H', L'K'})
        SetDrive(letter, {{"write milliseconds", "2000"},
                          {"quick erase milliseconds", "2000"},
                          {"full erase milliseconds", "2000"},
                          {"stop milliseconds", "500"}});
}

bool BurnerBench::WaitForContent(wchar_t letter) {
    // While the burner rewrites its state file a reader may find it empty.
    RunFor(
        [letter] {
            const std::string content = DiscSetting(letter, "content");
            return content == "shown" || content == "unreadable";
        },
        15000);
    return DiscSetting(letter, "content") == "shown";
}

bool BurnerBench::WaitBusy(const std::function<bool()>& isDone) {
    const ULONGLONG end = GetTickCount64() + 15000;
    while (!isDone() && GetTickCount64() < end) MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, 0);
    return isDone();
}

void BurnerBench::RunFor(const std::function<bool()>& isDone, DWORD milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    loop_.RunPending();
    while (!isDone() && GetTickCount64() < end) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        loop_.RunPending();
    }
}
