#include "platform/windows/WindowsFileStore.h"

#include "platform/RuntimeError.h"
#include "platform/windows/FolderSearch.h"
#include "platform/windows/HeldFiles.h"
#include "platform/windows/LastError.h"
#include "platform/windows/QuietErrors.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <algorithm>

namespace {

constexpr DWORD MarkedAttributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr std::size_t LargestTransfer = 1u << 20;

std::uint64_t Joined(DWORD high, DWORD low) {
    return static_cast<std::uint64_t>(high) << 32 | low;
}

std::uint64_t MomentOf(const FILETIME& time) {
    return Joined(time.dwHighDateTime, time.dwLowDateTime);
}

FILETIME FileTimeOf(std::uint64_t moment) {
    return {static_cast<DWORD>(moment), static_cast<DWORD>(moment >> 32)};
}

bool IsMissing(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_DRIVE ||
           error == ERROR_BAD_NETPATH || error == ERROR_BAD_NET_NAME || error == ERROR_NOT_READY ||
           error == ERROR_INVALID_NAME || error == ERROR_BAD_PATHNAME;
}

bool IsTaken(DWORD error) {
    return error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS;
}

class WindowsInputFile final : public InputFile {
  public:
    explicit WindowsInputFile(const std::wstring& longPath)
        : file_(CreateFileW(longPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {
        if (!file_) ThrowLastError();
        LARGE_INTEGER size = {};
        if (!GetFileSizeEx(file_.Get(), &size)) ThrowLastError();
        sizeBytes_ = static_cast<std::uint64_t>(size.QuadPart);
    }

    std::uint64_t SizeBytes() const override { return sizeBytes_; }

    std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) override {
        std::size_t filled = 0;
        while (filled < buffer.size()) {
            OVERLAPPED place = {};
            place.Offset = static_cast<DWORD>(offset + filled);
            place.OffsetHigh = static_cast<DWORD>((offset + filled) >> 32);
            const auto wanted = static_cast<DWORD>(std::min(buffer.size() - filled, LargestTransfer));
            DWORD readBytes = 0;
            if (!ReadFile(file_.Get(), buffer.data() + filled, wanted, &readBytes, &place)) {
                const DWORD error = GetLastError();
                if (error == ERROR_HANDLE_EOF) break;
                ThrowSystemError(error);
            }
            if (readBytes == 0) break;
            filled += readBytes;
        }
        return filled;
    }

  private:
    UniqueFile file_;
    std::uint64_t sizeBytes_ = 0;
};

class WindowsNewFile final : public NewFile {
  public:
    explicit WindowsNewFile(UniqueFile file) : file_(std::move(file)) {}

    void Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const auto length = static_cast<DWORD>(std::min(bytes.size(), LargestTransfer));
            DWORD written = 0;
            if (!WriteFile(file_.Get(), bytes.data(), length, &written, nullptr)) ThrowLastError();
            if (written == 0) throw RuntimeError(ErrorNumber::DiskFull);
            bytes.remove_prefix(written);
        }
    }
    void Close() override { file_.Reset(); }

  private:
    UniqueFile file_;
};

StoredEntry EntryOf(const FolderSearch& search) {
    const WIN32_FIND_DATAW& found = search.Entry();
    return {found.cFileName,
            search.IsFolder(),
            search.IsLink(),
            search.SizeBytes(),
            {MomentOf(found.ftCreationTime), MomentOf(found.ftLastWriteTime)}};
}

} // namespace

WindowsFileStore::WindowsFileStore() {
    SuppressDiskBoxes();
}

std::unique_ptr<InputFile> WindowsFileStore::Open(const std::wstring& path) const {
    const std::wstring longPath = LongPath(path);
    return std::make_unique<WindowsInputFile>(longPath);
}

std::optional<StoredEntry> WindowsFileStore::Look(const std::wstring& path) const {
    const std::wstring longPath = LongPath(path);
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(longPath.c_str(), GetFileExInfoStandard, &data)) {
        const DWORD error = GetLastError();
        if (IsMissing(error)) return std::nullopt;
        ThrowSystemError(error);
    }
    return StoredEntry{path.substr(path.find_last_of(L'\\') + 1),
                       (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                       (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0,
                       Joined(data.nFileSizeHigh, data.nFileSizeLow),
                       {MomentOf(data.ftCreationTime), MomentOf(data.ftLastWriteTime)}};
}

std::vector<StoredEntry> WindowsFileStore::List(const std::wstring& folder) const {
    FolderSearch search(LongPath(folder.ends_with(L'\\') ? folder + L"*" : folder + L"\\*"));
    std::vector<StoredEntry> entries;
    while (search.Next()) entries.push_back(EntryOf(search));
    // An empty root has no entry at all, not even its own.
    if (search.Error() != 0 && search.Error() != ERROR_FILE_NOT_FOUND) ThrowSystemError(search.Error());
    return entries;
}

std::unique_ptr<NewFile> WindowsFileStore::CreateNew(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    UniqueFile file(CreateFileW(longPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file) return std::make_unique<WindowsNewFile>(std::move(file));
    const DWORD error = GetLastError();
    if (IsTaken(error)) return nullptr;
    // A folder of that name is told as a file that may not be written.
    if (error == ERROR_ACCESS_DENIED && GetFileAttributesW(longPath.c_str()) != INVALID_FILE_ATTRIBUTES) return nullptr;
    ThrowSystemError(error);
}

bool WindowsFileStore::Rename(const std::wstring& path, const std::wstring& newPath) {
    const std::wstring longPath = LongPath(path);
    const std::wstring newLongPath = LongPath(newPath);
    if (OnceReleased([&] { return MoveFileExW(longPath.c_str(), newLongPath.c_str(), 0) != FALSE; })) return true;
    const DWORD error = GetLastError();
    if (IsTaken(error)) return false;
    ThrowSystemError(error);
}

void WindowsFileStore::Replace(const std::wstring& path, const std::wstring& oldPath) {
    const std::wstring longPath = LongPath(path);
    const std::wstring oldLongPath = LongPath(oldPath);
    const auto replace = [&] {
        return MoveFileExW(longPath.c_str(), oldLongPath.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
    };
    if (!OnceReleased(replace)) ThrowLastError();
}

void WindowsFileStore::MakeFolder(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    if (CreateDirectoryW(longPath.c_str(), nullptr)) return;
    const DWORD error = GetLastError();
    const DWORD attributes = GetFileAttributesW(longPath.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return;
    ThrowSystemError(error);
}

void WindowsFileStore::Delete(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    if (!OnceReleased([&] { return DeleteFileW(longPath.c_str()) != FALSE; })) ThrowLastError();
}

void WindowsFileStore::Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) {
    const std::wstring longPath = LongPath(path);
    const UniqueFile file(CreateFileW(longPath.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!file) ThrowLastError();
    const FILETIME created = FileTimeOf(times.created);
    const FILETIME written = FileTimeOf(times.written);
    if (!SetFileTime(file.Get(), times.created ? &created : nullptr, nullptr, times.written ? &written : nullptr))
        ThrowLastError();
    const DWORD wanted = attributes & MarkedAttributes;
    if (wanted != 0 && !SetFileAttributesW(longPath.c_str(), wanted)) ThrowLastError();
}

std::uint64_t WindowsFileStore::FreeBytes(const std::wstring& folder) const {
    ULARGE_INTEGER freeBytes = {};
    const std::wstring longPath = LongPath(folder);
    if (!GetDiskFreeSpaceExW(longPath.c_str(), &freeBytes, nullptr, nullptr)) ThrowLastError();
    return freeBytes.QuadPart;
}

std::wstring WindowsFileStore::FullPath(const std::wstring& path) const {
    const DWORD length = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    if (length == 0) ThrowLastError();
    std::wstring full(length, L'\0');
    full.resize(GetFullPathNameW(path.c_str(), length, full.data(), nullptr));
    return full;
}
