#include "support/FakeFileStore.h"

#include "platform/Text.h"

#include <algorithm>

namespace {

constexpr std::uint32_t MarkedAttributes = 0x27;

std::wstring KeyOf(std::wstring path) {
    while (path.ends_with(L'\\')) path.pop_back();
    return UpperCase(path);
}

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

class FakeInputFile final : public InputFile {
  public:
    FakeInputFile(const FakeFileStore& store, const std::string& bytes) : store_(store), bytes_(bytes) {}
    std::uint64_t SizeBytes() const override { return bytes_.size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<char> buffer) override {
        if (store_.failsAt && offset + buffer.size() > *store_.failsAt) throw RuntimeError(store_.readFailure);
        if (offset >= bytes_.size()) return 0;
        return bytes_.copy(buffer.data(), buffer.size(), static_cast<std::size_t>(offset));
    }

  private:
    const FakeFileStore& store_;
    std::string bytes_;
};

StoredEntry EntryOf(const FakeFileStore::Kept& kept) {
    return {kept.path.substr(kept.path.find_last_of(L'\\') + 1), kept.isFolder, false, kept.bytes.size(), kept.times};
}

} // namespace

class FakeNewFile final : public NewFile {
  public:
    FakeNewFile(FakeFileStore& store, std::wstring key) : store_(store), key_(std::move(key)) {}
    void Write(std::string_view bytes) override {
        const std::uint64_t sizeBytes = store_.kept_.at(key_).bytes.size() + bytes.size();
        if (bytes.size() > store_.freeBytes || sizeBytes > store_.largestFileBytes)
            throw RuntimeError(ErrorNumber::DiskFull);
        store_.freeBytes -= bytes.size();
        store_.kept_.at(key_).bytes += bytes;
    }
    void Close() override {}

  private:
    FakeFileStore& store_;
    std::wstring key_;
};

void FakeFileStore::Add(const std::wstring& path, std::string bytes, FileTimes times) {
    for (std::wstring folder = FolderOf(path); !folder.empty(); folder = FolderOf(folder)) {
        kept_.try_emplace(KeyOf(folder), Kept{folder, true, {}, {}, 0});
    }
    kept_[KeyOf(path)] = {path, false, std::move(bytes), times, 0};
}

const FakeFileStore::Kept* FakeFileStore::Find(const std::wstring& path) const {
    const auto found = kept_.find(KeyOf(path));
    return found == kept_.end() ? nullptr : &found->second;
}

std::optional<std::string> FakeFileStore::BytesOf(const std::wstring& path) const {
    const Kept* kept = Find(path);
    return kept && !kept->isFolder ? std::optional(kept->bytes) : std::nullopt;
}

std::vector<std::wstring> FakeFileStore::Paths() const {
    std::vector<std::wstring> paths;
    for (const auto& [key, kept] : kept_) {
        if (!kept.isFolder) paths.push_back(kept.path);
    }
    return paths;
}

std::unique_ptr<InputFile> FakeFileStore::Open(const std::wstring& path) const {
    const Kept* kept = Find(path);
    if (!kept || kept->isFolder) throw RuntimeError(ErrorNumber::FileNotFound);
    return std::make_unique<FakeInputFile>(*this, kept->bytes);
}

std::optional<StoredEntry> FakeFileStore::Look(const std::wstring& path) const {
    const Kept* kept = Find(path);
    return kept ? std::optional(EntryOf(*kept)) : std::nullopt;
}

std::vector<StoredEntry> FakeFileStore::List(const std::wstring& folder) const {
    if (!Find(folder)) throw RuntimeError(ErrorNumber::PathNotFound);
    std::vector<StoredEntry> entries;
    for (const auto& [key, kept] : kept_) {
        if (FolderOf(key) == KeyOf(folder) && key != KeyOf(folder)) entries.push_back(EntryOf(kept));
    }
    return entries;
}

/// A drive is always there.
void FakeFileStore::RequireFolderOf(const std::wstring& path) const {
    const std::wstring folder = FolderOf(path);
    if (folder.find(L'\\') != std::wstring::npos && !Find(folder)) throw RuntimeError(ErrorNumber::PathNotFound);
}

std::unique_ptr<NewFile> FakeFileStore::CreateNew(const std::wstring& path) {
    RequireFolderOf(path);
    if (!kept_.try_emplace(KeyOf(path), Kept{path, false, {}, {}, 0}).second) return nullptr;
    return std::make_unique<FakeNewFile>(*this, KeyOf(path));
}

bool FakeFileStore::Rename(const std::wstring& path, const std::wstring& newPath) {
    if (kept_.contains(KeyOf(newPath))) return false;
    auto node = kept_.extract(KeyOf(path));
    if (node.empty()) throw RuntimeError(ErrorNumber::FileNotFound);
    node.key() = KeyOf(newPath);
    node.mapped().path = newPath;
    kept_.insert(std::move(node));
    return true;
}

void FakeFileStore::Replace(const std::wstring& path, const std::wstring& oldPath) {
    const Kept* old = Find(oldPath);
    if (old && old->isFolder) throw RuntimeError(ErrorNumber::PathFileAccessError);
    if (!Find(path)) throw RuntimeError(ErrorNumber::FileNotFound);
    if (old) Delete(oldPath);
    Rename(path, oldPath);
}

void FakeFileStore::MakeFolder(const std::wstring& path) {
    RequireFolderOf(path);
    const auto [place, isNew] = kept_.try_emplace(KeyOf(path), Kept{path, true, {}, {}, 0});
    if (!isNew && !place->second.isFolder) throw RuntimeError(ErrorNumber::PathFileAccessError);
}

void FakeFileStore::Delete(const std::wstring& path) {
    if (kept_.erase(KeyOf(path)) == 0) throw RuntimeError(ErrorNumber::FileNotFound);
}

void FakeFileStore::Mark(const std::wstring& path, const FileTimes& times, std::uint32_t attributes) {
    const auto found = kept_.find(KeyOf(path));
    if (found == kept_.end()) throw RuntimeError(ErrorNumber::FileNotFound);
    if (times.written != 0 && times.written < earliestTime) throw RuntimeError(ErrorNumber::PathFileAccessError);
    if (times.created != 0) found->second.times.created = times.created;
    if (times.written != 0) found->second.times.written = times.written;
    if (const std::uint32_t wanted = attributes & MarkedAttributes; wanted != 0) found->second.attributes = wanted;
}
