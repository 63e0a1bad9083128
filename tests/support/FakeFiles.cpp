#include "support/FakeFiles.h"

#include "platform/Text.h"

namespace {

std::wstring NameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t at = path.find_last_of(L'\\');
    return at == std::wstring::npos ? std::wstring() : path.substr(0, at);
}

bool Matches(std::wstring_view pattern, std::wstring_view name) {
    if (pattern.empty()) return name.empty();
    if (pattern[0] == L'*') {
        for (std::size_t skip = 0; skip <= name.size(); ++skip) {
            if (Matches(pattern.substr(1), name.substr(skip))) return true;
        }
        return false;
    }
    if (name.empty() || (pattern[0] != L'?' && pattern[0] != name[0])) return false;
    return Matches(pattern.substr(1), name.substr(1));
}

} // namespace

class FakeOutputFile : public OutputFile {
  public:
    FakeOutputFile(FakeFiles& files, std::wstring path) : files_(files), path_(std::move(path)) {}
    void Write(std::string_view bytes) override { files_.Append(path_, bytes); }
    void Close() override {}

  private:
    FakeFiles& files_;
    std::wstring path_;
};

std::wstring FakeFiles::KeyOf(std::wstring path) {
    while (!path.empty() && path.back() == L'\\') path.pop_back();
    return UpperCase(path);
}

void FakeFiles::AddFolder(const std::wstring& path) {
    std::wstring trimmed = path;
    while (!trimmed.empty() && trimmed.back() == L'\\') trimmed.pop_back();
    if (trimmed.empty()) return;
    AddFolder(FolderOf(trimmed));
    Entry entry;
    entry.path = trimmed;
    entries_.try_emplace(KeyOf(trimmed), std::move(entry)).first->second.isFolder = true;
}

void FakeFiles::AddFile(const std::wstring& path, std::string content) {
    AddFolder(FolderOf(path));
    Entry entry;
    entry.path = path;
    entry.sizeBytes = content.size();
    entry.content = std::move(content);
    entries_[KeyOf(path)] = std::move(entry);
}

void FakeFiles::AddSizedFile(const std::wstring& path, std::uint64_t sizeBytes) {
    AddFile(path);
    entries_[KeyOf(path)].sizeBytes = sizeBytes;
}

void FakeFiles::Remove(const std::wstring& path) {
    EraseBelow(KeyOf(path));
    entries_.erase(KeyOf(path));
}

void FakeFiles::SetReadOnly(const std::wstring& path, bool isReadOnly) {
    entries_.at(KeyOf(path)).isReadOnly = isReadOnly;
}

void FakeFiles::FailWith(const std::wstring& path, ErrorNumber number) {
    failures_.insert_or_assign(KeyOf(path), number);
}

void FakeFiles::SetFreeBytes(const std::wstring& drive, std::uint64_t freeBytes) {
    freeBytes_[KeyOf(drive).at(0)] = freeBytes;
}

std::vector<std::wstring> FakeFiles::Paths() const {
    std::vector<std::wstring> paths;
    for (const auto& [key, entry] : entries_) {
        if (!entry.isFolder) paths.push_back(entry.path);
    }
    return paths;
}

const FakeFiles::Entry* FakeFiles::At(const std::wstring& path) const {
    const auto found = entries_.find(KeyOf(path));
    return found == entries_.end() ? nullptr : &found->second;
}

const FakeFiles::Entry& FakeFiles::FileAt(const std::wstring& path) const {
    CheckFailure(path);
    const Entry* entry = At(path);
    if (!entry) {
        RequireFolderAbove(path);
        throw RuntimeError(ErrorNumber::FileNotFound);
    }
    return *entry;
}

void FakeFiles::RequireFolderAbove(const std::wstring& path) const {
    if (!FolderExists(FolderOf(path))) throw RuntimeError(ErrorNumber::PathNotFound);
}

void FakeFiles::CheckFailure(const std::wstring& path) const {
    const auto found = failures_.find(KeyOf(path));
    if (found != failures_.end()) throw RuntimeError(found->second);
}

template<typename Visit>
void FakeFiles::ForEachIn(const std::wstring& folderKey, Visit visit) const {
    const std::wstring prefix = folderKey + L'\\';
    for (auto at = entries_.lower_bound(prefix); at != entries_.end() && at->first.starts_with(prefix); ++at) {
        if (at->first.find(L'\\', prefix.size()) == std::wstring::npos) visit(at->first, at->second);
    }
}

void FakeFiles::TakeSpace(const std::wstring& path, std::uint64_t oldBytes, std::uint64_t newBytes) {
    const auto drive = freeBytes_.find(KeyOf(path).at(0));
    if (drive == freeBytes_.end()) return;
    if (newBytes > drive->second + oldBytes) throw RuntimeError(ErrorNumber::DiskFull);
    drive->second = drive->second + oldBytes - newBytes;
}

void FakeFiles::Append(const std::wstring& path, std::string_view bytes) {
    CheckFailure(path);
    const auto found = entries_.find(KeyOf(path));
    if (found == entries_.end()) throw RuntimeError(ErrorNumber::DeviceIoError); // the medium went away
    TakeSpace(path, 0, bytes.size());
    found->second.content += bytes;
    found->second.sizeBytes += bytes.size();
}

bool FakeFiles::FileExists(const std::wstring& path) const {
    const Entry* entry = At(path);
    return entry && !entry->isFolder && !path.ends_with(L'\\');
}

bool FakeFiles::FolderExists(const std::wstring& path) const {
    const Entry* entry = At(path);
    return entry && entry->isFolder;
}

bool FakeFiles::IsDirectory(const std::wstring& path) const {
    return FolderExists(path);
}

std::uint64_t FakeFiles::FileSize(const std::wstring& path) const {
    const Entry& entry = FileAt(path);
    if (entry.isFolder) throw RuntimeError(ErrorNumber::FileNotFound);
    return entry.sizeBytes;
}

FolderContents FakeFiles::Contents(const std::wstring& folder) const {
    CheckFailure(folder);
    if (!FolderExists(folder)) throw RuntimeError(ErrorNumber::PathNotFound);
    FolderContents contents;
    ForEachIn(KeyOf(folder), [&](const std::wstring&, const Entry& entry) {
        (entry.isFolder ? contents.folders : contents.files).push_back(NameOf(entry.path));
    });
    return contents;
}

FolderContents FakeFiles::ShownContents(const std::wstring& folder) const {
    CheckFailure(folder);
    if (!FolderExists(folder)) throw RuntimeError(ErrorNumber::PathNotFound);
    FolderContents contents;
    ForEachIn(KeyOf(folder), [&](const std::wstring&, const Entry& entry) {
        if (entry.isLink || entry.isHiddenForTheSystem || (entry.isHidden && !areHiddenShown)) return;
        (entry.isFolder ? contents.folders : contents.files).push_back(NameOf(entry.path));
    });
    return contents;
}

std::vector<std::wstring> FakeFiles::Find(const std::wstring& pattern) const {
    std::vector<std::wstring> names;
    const std::wstring wanted = UpperCase(NameOf(pattern));
    ForEachIn(KeyOf(FolderOf(pattern)), [&](const std::wstring& key, const Entry& entry) {
        if (wanted == L"*.*" || Matches(wanted, NameOf(key))) names.push_back(NameOf(entry.path));
    });
    return names;
}

FolderMeasure FakeFiles::Measure(const std::wstring& folder, const std::function<void()>& stillMeasuring) const {
    ++measures;
    if (stillMeasuring) stillMeasuring();
    FolderMeasure measure;
    const std::wstring key = KeyOf(folder);
    if (failures_.contains(key)) return measure;
    ForEachIn(key, [&](const std::wstring&, const Entry& entry) {
        if (NameOf(entry.path).starts_with(L'.')) return;
        if (entry.isFolder) {
            const FolderMeasure below = Measure(entry.path, stillMeasuring);
            measure.fileCount += below.fileCount;
            measure.sizeBytes += below.sizeBytes;
        } else {
            ++measure.fileCount;
            measure.sizeBytes += entry.sizeBytes;
        }
    });
    return measure;
}

std::string FakeFiles::Read(const std::wstring& path) const {
    const Entry& entry = FileAt(path);
    if (entry.isFolder) throw RuntimeError(ErrorNumber::PermissionDenied);
    if (path == tooLargeToRead) throw std::bad_alloc();
    return entry.content;
}

std::unique_ptr<OutputFile> FakeFiles::Create(const std::wstring& path) {
    CheckFailure(path);
    RequireFolderAbove(path);
    if (const Entry* old = At(path)) {
        if (old->isFolder || old->isReadOnly) throw RuntimeError(ErrorNumber::PermissionDenied);
        TakeSpace(path, old->sizeBytes, 0);
    }
    AddFile(path);
    return std::make_unique<FakeOutputFile>(*this, path);
}

void FakeFiles::Copy(const std::wstring& source, const std::wstring& target) {
    Entry copied = FileAt(source);
    if (copied.isFolder) throw RuntimeError(ErrorNumber::PermissionDenied);
    CheckFailure(target);
    RequireFolderAbove(target);
    const Entry* old = At(target);
    if (old && (old->isFolder || old->isReadOnly)) throw RuntimeError(ErrorNumber::PermissionDenied);
    // The old file gives its space back only when the new one is whole.
    TakeSpace(target, 0, copied.sizeBytes);
    if (old) TakeSpace(target, old->sizeBytes, 0);
    copied.path = target;
    entries_.insert_or_assign(KeyOf(target), std::move(copied));
}

void FakeFiles::Flush(const std::wstring& path) {
    FileAt(path);
    flushed.push_back(path);
}

void FakeFiles::Rename(const std::wstring& source, const std::wstring& target) {
    Entry renamed = FileAt(source);
    CheckFailure(target);
    RequireFolderAbove(target);
    if (At(target)) throw RuntimeError(ErrorNumber::PathFileAccessError);
    renamed.path = target;
    // As on a disk, the file has one of its names at every instant.
    const std::wstring oldKey = KeyOf(source);
    entries_.insert_or_assign(KeyOf(target), std::move(renamed));
    entries_.erase(oldKey);
}

void FakeFiles::RequireDeletable(const std::wstring& path) const {
    CheckFailure(path);
    const Entry* entry = At(path);
    if (entry && entry->isReadOnly) throw RuntimeError(ErrorNumber::PermissionDenied);
}

void FakeFiles::Delete(const std::wstring& path) {
    const Entry& entry = FileAt(path);
    if (entry.isFolder || entry.isReadOnly) throw RuntimeError(ErrorNumber::PermissionDenied);
    TakeSpace(path, entry.sizeBytes, 0);
    entries_.erase(KeyOf(path));
}

void FakeFiles::CreateFolder(const std::wstring& path) {
    CheckFailure(path);
    if (At(path)) throw RuntimeError(ErrorNumber::PathFileAccessError);
    RequireFolderAbove(path);
    AddFolder(path);
}

void FakeFiles::EraseBelow(const std::wstring& folderKey) {
    const std::wstring prefix = folderKey + L'\\';
    auto at = entries_.lower_bound(prefix);
    while (at != entries_.end() && at->first.starts_with(prefix)) at = entries_.erase(at);
}

void FakeFiles::DeleteFolder(const std::wstring& path) {
    CheckFailure(path);
    if (!FolderExists(path)) throw RuntimeError(ErrorNumber::PathNotFound);
    const std::wstring key = KeyOf(path);
    const std::wstring prefix = key + L'\\';
    for (auto at = entries_.lower_bound(prefix); at != entries_.end() && at->first.starts_with(prefix); ++at) {
        CheckFailure(at->first);
        if (at->second.isReadOnly) throw RuntimeError(ErrorNumber::PermissionDenied);
        if (!at->second.isFolder) TakeSpace(at->first, at->second.sizeBytes, 0);
    }
    EraseBelow(key);
    entries_.erase(key);
}
