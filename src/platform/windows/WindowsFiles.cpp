#include "platform/windows/WindowsFiles.h"

#include "platform/RuntimeError.h"
#include "platform/windows/FolderSearch.h"
#include "platform/windows/HeldFiles.h"
#include "platform/windows/LastError.h"
#include "platform/windows/QuietErrors.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <shlwapi.h>

#include <algorithm>

namespace {

constexpr std::size_t BufferBytes = 65536;

std::wstring Below(const std::wstring& folder, const wchar_t* name) {
    return folder.ends_with(L'\\') ? folder + name : folder + L'\\' + name;
}

std::wstring WithoutTrailingBackslash(std::wstring path) {
    while (path.size() > 3 && path.back() == L'\\') path.pop_back();
    return path;
}

bool IsFolder(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsNothingFound(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_NO_MORE_FILES ||
           error == ERROR_INVALID_NAME;
}

class WindowsOutputFile : public OutputFile {
  public:
    explicit WindowsOutputFile(UniqueFile file) : file_(std::move(file)) { buffer_.reserve(BufferBytes); }

    ~WindowsOutputFile() override {
        if (file_) WriteThrough(buffer_);
    }

    void Write(std::string_view bytes) override {
        if (buffer_.size() + bytes.size() > BufferBytes) {
            WriteBuffer();
            if (bytes.size() > BufferBytes) {
                if (!WriteThrough(bytes)) ThrowLastError();
                return;
            }
        }
        buffer_ += bytes;
    }

    void Close() override {
        WriteBuffer();
        file_.Reset();
    }

  private:
    void WriteBuffer() {
        const std::string bytes = std::exchange(buffer_, {});
        if (!WriteThrough(bytes)) ThrowLastError();
    }

    /// Leaves the last error as the failed call set it.
    bool WriteThrough(std::string_view bytes) {
        while (!bytes.empty()) {
            const auto length = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), 1u << 20));
            DWORD written = 0;
            if (!WriteFile(file_.Get(), bytes.data(), length, &written, nullptr)) return false;
            bytes.remove_prefix(written);
        }
        return true;
    }

    UniqueFile file_;
    std::string buffer_;
};

void AddMeasure(std::wstring& folder, const std::function<void()>& stillMeasuring, FolderMeasure& measure) {
    if (stillMeasuring) stillMeasuring();
    const std::size_t length = folder.size();
    folder += L"\\*";
    FolderSearch search(LongPath(folder));
    folder.resize(length);
    while (search.Next()) {
        const wchar_t* name = search.Entry().cFileName;
        if (name[0] == L'.') continue;
        if (search.IsFolder()) {
            if (search.IsLink()) continue;
            folder += L'\\';
            folder += name;
            AddMeasure(folder, stillMeasuring, measure);
            folder.resize(length);
        } else {
            if (++measure.fileCount % 1024 == 0 && stillMeasuring) stillMeasuring();
            measure.sizeBytes += search.SizeBytes();
        }
    }
}

void EmptyFolder(const std::wstring& folder) {
    FolderSearch search(LongPath(Below(folder, L"*")));
    if (search.Error() != 0 && !IsNothingFound(search.Error())) ThrowSystemError(search.Error());
    while (search.Next()) {
        const std::wstring path = Below(folder, search.Entry().cFileName);
        const std::wstring longPath = LongPath(path);
        if (!search.IsFolder()) {
            if (!OnceReleased([&] { return DeleteFileW(longPath.c_str()); })) ThrowLastError();
            continue;
        }
        if (!search.IsLink()) EmptyFolder(path);
        if (!OnceReleased([&] { return RemoveDirectoryW(longPath.c_str()); })) ThrowLastError();
    }
}

/// Whether the user has asked Explorer to show hidden files and folders.
bool AreHiddenEntriesShown() {
    constexpr DWORD shown = 1;
    DWORD choice = 0;
    DWORD bytes = sizeof choice;
    const LSTATUS status =
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Advanced", L"Hidden",
                     RRF_RT_REG_DWORD, nullptr, &choice, &bytes);
    return status == ERROR_SUCCESS && choice == shown;
}

bool IsShown(const FolderSearch& search, bool areHiddenShown) {
    const DWORD attributes = search.Entry().dwFileAttributes;
    if (search.IsLink()) return false;
    if ((attributes & FILE_ATTRIBUTE_HIDDEN) == 0) return true;
    return areHiddenShown && (attributes & FILE_ATTRIBUTE_SYSTEM) == 0;
}

template<typename Filter>
FolderContents ContentsThat(const std::wstring& folder, Filter&& isWanted) {
    FolderSearch search(LongPath(Below(folder, L"*")));
    FolderContents contents;
    while (search.Next()) {
        if (isWanted(search))
            (search.IsFolder() ? contents.folders : contents.files).push_back(search.Entry().cFileName);
    }
    // An empty root has no entry at all, not even its own.
    if (search.Error() == ERROR_FILE_NOT_FOUND && IsFolder(folder)) return contents;
    if (search.Error() != 0) ThrowSystemError(search.Error());
    return contents;
}

} // namespace

WindowsFiles::WindowsFiles() {
    SuppressDiskBoxes();
}

bool WindowsFiles::FileExists(const std::wstring& path) const {
    if (path.ends_with(L'\\')) return false;
    const DWORD attributes = GetFileAttributesW(LongPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool WindowsFiles::FolderExists(const std::wstring& path) const {
    return IsFolder(path);
}

bool WindowsFiles::IsDirectory(const std::wstring& path) const {
    // The shell's own test knows no path longer than this.
    return path.size() < MAX_PATH ? PathIsDirectoryW(path.c_str()) != FALSE : FolderExists(path);
}

std::uint64_t WindowsFiles::FileSize(const std::wstring& path) const {
    const std::wstring longPath = LongPath(path);
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(longPath.c_str(), GetFileExInfoStandard, &data)) ThrowLastError();
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) throw RuntimeError(ErrorNumber::FileNotFound);
    return static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

FolderContents WindowsFiles::Contents(const std::wstring& folder) const {
    return ContentsThat(folder, [](const FolderSearch&) { return true; });
}

FolderContents WindowsFiles::ShownContents(const std::wstring& folder) const {
    const bool areHiddenShown = AreHiddenEntriesShown();
    return ContentsThat(folder, [&](const FolderSearch& search) { return IsShown(search, areHiddenShown); });
}

std::vector<std::wstring> WindowsFiles::Find(const std::wstring& pattern) const {
    FolderSearch search(LongPath(pattern));
    std::vector<std::wstring> names;
    while (search.Next()) names.push_back(search.Entry().cFileName);
    if (search.Error() != 0 && !IsNothingFound(search.Error())) ThrowSystemError(search.Error());
    return names;
}

FolderMeasure WindowsFiles::Measure(const std::wstring& folder, const std::function<void()>& stillMeasuring) const {
    FolderMeasure measure;
    std::wstring path = folder;
    while (path.ends_with(L'\\')) path.pop_back();
    AddMeasure(path, stillMeasuring, measure);
    return measure;
}

std::string WindowsFiles::Read(const std::wstring& path) const {
    const std::wstring longPath = LongPath(path);
    const UniqueFile file(CreateFileW(longPath.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file) ThrowLastError();
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(file.Get(), &size)) ThrowLastError();
    std::string content(static_cast<std::size_t>(size.QuadPart), '\0');
    std::size_t filled = 0;
    while (filled < content.size()) {
        const auto wanted = static_cast<DWORD>(std::min<std::size_t>(content.size() - filled, 1u << 24));
        DWORD readBytes = 0;
        if (!ReadFile(file.Get(), content.data() + filled, wanted, &readBytes, nullptr)) ThrowLastError();
        if (readBytes == 0) break; // cut short meanwhile
        filled += readBytes;
    }
    content.resize(filled);
    return content;
}

std::unique_ptr<OutputFile> WindowsFiles::Create(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    UniqueFile file(CreateFileW(longPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) ThrowLastError();
    return std::make_unique<WindowsOutputFile>(std::move(file));
}

void WindowsFiles::Copy(const std::wstring& source, const std::wstring& target) {
    const std::wstring longSource = LongPath(source);
    const std::wstring longTarget = LongPath(target);
    if (OnceReleased([&] { return CopyFileW(longSource.c_str(), longTarget.c_str(), FALSE); })) return;
    const DWORD error = GetLastError();
    // Half a copy must not be taken for a whole one; not every system clears it away.
    if (ErrorNumberOf(error) == ErrorNumber::DiskFull) DeleteFileW(longTarget.c_str());
    ThrowSystemError(error);
}

void WindowsFiles::Flush(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    const UniqueFile file(CreateFileW(longPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    if (!file || !FlushFileBuffers(file.Get())) ThrowLastError();
}

void WindowsFiles::Rename(const std::wstring& source, const std::wstring& target) {
    const std::wstring longSource = LongPath(source);
    const std::wstring longTarget = LongPath(target);
    const auto rename = [&] { return MoveFileExW(longSource.c_str(), longTarget.c_str(), MOVEFILE_WRITE_THROUGH); };
    if (!OnceReleased(rename)) ThrowLastError();
}

void WindowsFiles::Delete(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    if (!OnceReleased([&] { return DeleteFileW(longPath.c_str()); })) ThrowLastError();
}

void WindowsFiles::RequireDeletable(const std::wstring& path) const {
    const std::wstring longPath = LongPath(path);
    const DWORD attributes = GetFileAttributesW(longPath.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        if (!IsNothingFound(error)) ThrowSystemError(error);
        return;
    }
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) throw RuntimeError(ErrorNumber::PermissionDenied);
    UniqueFile file;
    const auto open = [&] {
        file.Reset(CreateFileW(longPath.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        return static_cast<bool>(file);
    };
    if (!OnceReleased(open)) ThrowLastError();
}

void WindowsFiles::CreateFolder(const std::wstring& path) {
    const std::wstring longPath = LongPath(path);
    // A folder that was deleted keeps its name until the last program has let go of it.
    if (!OnceReleased([&] { return CreateDirectoryW(longPath.c_str(), nullptr); })) ThrowLastError();
}

void WindowsFiles::DeleteFolder(const std::wstring& path) {
    const std::wstring folder = WithoutTrailingBackslash(path);
    if (!FolderExists(folder)) throw RuntimeError(ErrorNumber::PathNotFound);
    const std::wstring longPath = LongPath(folder);
    // A link in its place goes; what it leads to belongs to somebody else.
    FolderSearch itself(longPath);
    if (!itself.Next() || !itself.IsLink()) EmptyFolder(folder);
    if (!OnceReleased([&] { return RemoveDirectoryW(longPath.c_str()); })) ThrowLastError();
}
