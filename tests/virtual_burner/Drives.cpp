#include "Drives.h"

#include "platform/discs/MasteringCodes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

namespace {

struct KindOfDisc {
    const char* name;
    LONG mediaType;
    bool isErasable;
    bool isOverwriteOnly;
    bool isWritable;
};

constexpr KindOfDisc Kinds[] = {
    {"CD-ROM", Mastering::MediaCdRom, false, false, false},
    {"CD-R", Mastering::MediaCdR, false, false, true},
    {"CD-RW", Mastering::MediaCdRw, true, false, true},
    {"DVD-ROM", Mastering::MediaDvdRom, false, false, false},
    {"DVD-RAM", Mastering::MediaDvdRam, true, true, true},
    {"DVD+R", Mastering::MediaDvdPlusR, false, false, true},
    {"DVD+RW", Mastering::MediaDvdPlusRw, true, true, true},
    {"DVD+R DL", Mastering::MediaDvdPlusRDl, false, false, true},
    {"DVD-R", Mastering::MediaDvdMinusR, false, false, true},
    {"DVD-RW", Mastering::MediaDvdMinusRw, true, false, true},
    {"unrecognized", Mastering::MediaUnknown, false, false, false},
};

KindOfDisc KindNamed(const std::string& name) {
    for (const KindOfDisc& kind : Kinds)
        if (name == kind.name) return kind;
    return Kinds[std::size(Kinds) - 1];
}

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string KeyOf(const std::string& line) {
    const auto equals = line.find('=');
    return line.empty() || line[0] == '#' || equals == std::string::npos ? std::string()
                                                                         : Trimmed(line.substr(0, equals));
}

/// The whole of a file that others may be replacing at this moment; nothing when there is none.
std::optional<std::string> ContentOf(const std::wstring& path) {
    for (int tries = 0; tries < 300; ++tries) {
        const UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file) {
            std::string content(GetFileSize(file.Get(), nullptr), '\0');
            DWORD count = 0;
            ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &count, nullptr);
            content.resize(count);
            return content;
        }
        if (GetLastError() != ERROR_SHARING_VIOLATION) break;
        Sleep(10);
    }
    return std::nullopt;
}

std::vector<double> NumbersIn(const std::string& text) {
    std::istringstream words(text);
    std::vector<double> numbers;
    for (double number = 0; words >> number;) numbers.push_back(number);
    return numbers;
}

} // namespace

std::wstring Wide(const std::string& utf8) {
    std::wstring text(utf8.size(), L'\0');
    text.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                                             text.data(), static_cast<int>(text.size()))));
    return text;
}

std::string Narrow(const std::wstring& text) {
    std::string utf8(text.size() * 3, '\0');
    utf8.resize(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                     utf8.data(), static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

ProcessLock::ProcessLock(const wchar_t* name) : mutex_(CreateMutexW(nullptr, FALSE, name)) {
    WaitForSingleObject(mutex_.Get(), INFINITE);
}

ProcessLock::~ProcessLock() {
    ReleaseMutex(mutex_.Get());
}

SettingsFile::SettingsFile(std::wstring path) : path_(std::move(path)) {
    Load();
    id_ = Text("id");
}

void SettingsFile::Load() {
    lines_.clear();
    values_.clear();
    const auto content = ContentOf(path_);
    exists_ = content.has_value();
    std::istringstream file(content.value_or(std::string()));
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines_.push_back(line);
        if (const std::string key = KeyOf(line); !key.empty()) values_[key] = Trimmed(line.substr(line.find('=') + 1));
    }
}

std::string SettingsFile::Text(const std::string& key, const std::string& otherwise) const {
    const auto found = values_.find(key);
    return found == values_.end() ? otherwise : found->second;
}

std::optional<std::int64_t> SettingsFile::OptionalNumber(const std::string& key) const {
    const auto found = values_.find(key);
    if (found == values_.end() || found->second.empty()) return std::nullopt;
    return std::strtoll(found->second.c_str(), nullptr, 0);
}

std::int64_t SettingsFile::Number(const std::string& key, std::int64_t otherwise) const {
    return OptionalNumber(key).value_or(otherwise);
}

void SettingsFile::Set(const std::string& key, const std::string& value) {
    const ProcessLock lock(SettingsLockName);
    Load();
    // A disc that has been taken out meanwhile has nothing to be changed, and the next one has its own.
    if (!exists_ || Text("id") != id_) return;
    values_[key] = value;
    const std::string line = key + " = " + value;
    const auto found =
        std::find_if(lines_.begin(), lines_.end(), [&](const std::string& other) { return KeyOf(other) == key; });
    if (found == lines_.end())
        lines_.push_back(line);
    else
        *found = line;
    // Whole at every moment: others read it while it changes.
    const std::filesystem::path target(path_);
    const std::filesystem::path written(path_ + L".new");
    {
        std::ofstream file(written, std::ios::binary | std::ios::trunc);
        for (const std::string& kept : lines_) file << kept << '\n';
    }
    // The disc may have been exchanged while this was written; from here on the two names go with it.
    if (SettingsFile(path_).Text("id") != id_) {
        DeleteFileW(written.c_str());
        return;
    }
    // A reader that has it open at this moment keeps it from being replaced.
    for (int tries = 0; tries < 300 && std::filesystem::exists(written); ++tries) {
        if (MoveFileExW(written.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING)) break;
        Sleep(10);
    }
}

VirtualDrive::VirtualDrive(const std::wstring& driveFolder)
    : folder(driveFolder), settings(driveFolder + L"\\drive.ini") {}

std::vector<LONG> VirtualDrive::Profiles() const {
    std::vector<LONG> profiles;
    std::istringstream words(settings.Text("writes"));
    for (std::string word; words >> word;) {
        if (word == "cd") {
            profiles.insert(profiles.end(), {Mastering::ProfileCdRecordable, Mastering::ProfileCdRewritable});
        } else if (word == "dvd") {
            profiles.insert(profiles.end(), {Mastering::ProfileDvdMinusR, Mastering::ProfileDvdRam,
                                             Mastering::ProfileDvdMinusRwSequential, Mastering::ProfileDvdPlusRw,
                                             Mastering::ProfileDvdPlusR, Mastering::ProfileDvdPlusRDl});
        }
    }
    return profiles;
}

VirtualDisc::VirtualDisc(const VirtualDrive& drive)
    : folder(drive.DiscFolder()), settings(drive.DiscFolder() + L"\\disc.ini"),
      blankTestMilliseconds_(drive.Delay("blank test milliseconds", 50)) {}

LONG VirtualDisc::MediaType() const {
    return KindNamed(settings.Text("kind")).mediaType;
}

bool VirtualDisc::IsOverwriteOnly() const {
    return KindNamed(settings.Text("kind")).isOverwriteOnly;
}

bool VirtualDisc::IsErasable() const {
    return KindNamed(settings.Text("kind")).isErasable;
}

bool VirtualDisc::IsDvd() const {
    return settings.Text("kind").starts_with("DVD");
}

LONG VirtualDisc::State() const {
    const KindOfDisc kind = KindNamed(settings.Text("kind"));
    const std::string state = settings.Text("state");
    if (!kind.isWritable) return Mastering::StateUnsupported;
    if (state == "closed") return Mastering::StateFinalized;
    if (state == "protected") return LONG{Mastering::StateAppendable} | Mastering::StateWriteProtected;
    if (state == "erase required") return Mastering::StateEraseRequired;
    // Whatever became of its last write.
    if (kind.isOverwriteOnly) return Mastering::StateOverwriteOnly;
    if (state == "incomplete") return Mastering::StateIncompleteSession;
    if (state == "damaged") return Mastering::StateDamaged;
    if (state == "final session") return LONG{Mastering::StateAppendable} | Mastering::StateFinalSession;
    if (state == "blank") return LONG{Mastering::StateBlank} | Mastering::StateAppendable;
    return state == "open" ? LONG{Mastering::StateAppendable} : 0;
}

LONG VirtualDisc::TotalSectors() const {
    return static_cast<LONG>(settings.Number("capacity") / Mastering::SectorBytes);
}

LONG VirtualDisc::NextSector() const {
    return IsBlank() || IsOverwriteOnly() ? 0 : UsedSectors();
}

LONG VirtualDisc::UsedSectors() const {
    return static_cast<LONG>((settings.Number("used") + Mastering::SectorBytes - 1) / Mastering::SectorBytes);
}

LONG VirtualDisc::FreeSectors() const {
    if (const auto free = settings.OptionalNumber("free")) return static_cast<LONG>(*free / Mastering::SectorBytes);
    if (State() & Mastering::StateUnwritable) return 0;
    return std::max<LONG>(TotalSectors() - NextSector(), 0);
}

std::vector<LONG> VirtualDisc::Speeds() const {
    std::vector<LONG> speeds;
    for (double speed : NumbersIn(settings.Text("speeds")))
        speeds.push_back(static_cast<LONG>(std::lround(speed * (IsDvd() ? 1385000.0 / 2048 : 75.0))));
    std::sort(speeds.rbegin(), speeds.rend());
    return speeds;
}

std::wstring ServerPath() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&DriveFolders), &module);
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

std::vector<std::wstring> DriveFolders() {
    const std::wstring server = ServerPath();
    const std::filesystem::path drives = std::filesystem::path(server).parent_path() / L"drives";
    std::vector<std::wstring> folders;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(drives, ignored))
        if (std::filesystem::exists(entry.path() / L"drive.ini", ignored)) folders.push_back(entry.path().wstring());
    std::sort(folders.begin(), folders.end());
    return folders;
}
