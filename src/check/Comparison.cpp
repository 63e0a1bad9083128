#include "check/Comparison.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t CompareBytes = 65536;
/// Archives keep times to two seconds.
constexpr std::uint64_t TimeGrain = 2 * 10000000ull;
constexpr int DeepestFolder = 200;

std::wstring Below(const std::wstring& itemPath, const std::wstring& name) {
    std::wstring path = itemPath.substr(0, itemPath.find_last_of(L'\\') + 1) + name;
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return path;
}

} // namespace

void Comparison::BeginItem(ItemReport& item, const ZipEntry& entry) {
    item_ = &item;
    itemPath_ = item.path;
    savedAt_ = entry.writtenAt;
    saved_.clear();
}

void Comparison::BeginFile(const ZipEntry& file) {
    file_ = file;
    here_.reset();
    isHere_ = differs_ = false;
    compared_ = 0;
    saved_.insert(UpperCase(file.name));
    if (item_->number == 0 || file.isFolder || file.name.find(L"..") != std::wstring::npos) return;
    const std::wstring path = Below(itemPath_, file.name);
    try {
        const auto entry = files_.Look(path);
        if (!entry || entry->isFolder) return;
        here_ = files_.Open(path);
        isHere_ = true;
        writtenHere_ = entry->times.written;
        differs_ = file.sizeBytes && entry->sizeBytes != *file.sizeBytes;
    } catch (const RuntimeError&) {
        isHere_ = false;
    }
}

void Comparison::Take(std::string_view bytes) {
    std::array<char, CompareBytes> other;
    while (isHere_ && !differs_ && !bytes.empty()) {
        const std::size_t length = std::min(bytes.size(), other.size());
        try {
            differs_ = here_->ReadAt(compared_, {other.data(), length}) != length ||
                       bytes.substr(0, length) != std::string_view(other.data(), length);
        } catch (const RuntimeError&) {
            isHere_ = false;
        }
        bytes.remove_prefix(length);
        compared_ += length;
    }
}

void Comparison::EndFile(const FileOutcome& outcome) {
    using What = FileFinding::What;
    if (!isHere_ || outcome.state != FileState::Whole) return;
    if (!differs_ && compared_ == here_->SizeBytes()) return;
    What what = What::Differs;
    if (file_.writtenAt != 0 && writtenHere_ > file_.writtenAt + TimeGrain) what = What::Newer;
    if (writtenHere_ + TimeGrain < file_.writtenAt) what = What::Older;
    item_->Add({what, file_.name, 0, {}});
}

void Comparison::EndItem() {
    here_.reset();
    if (item_->number == 0) return;
    const std::wstring name = LastName(itemPath_);
    try {
        const auto entry = files_.Look(itemPath_);
        if (entry && entry->isFolder) FindAbsent(itemPath_, name);
    } catch (const RuntimeError&) {
        // A folder that nobody may list says nothing about the backup.
    }
}

void Comparison::FindAbsent(const std::wstring& folder, const std::wstring& name) {
    using What = FileFinding::What;
    if (std::count(name.begin(), name.end(), L'/') > DeepestFolder) return;
    for (const StoredEntry& entry : files_.List(folder)) {
        onStep_();
        const std::wstring entryName = name + L"/" + entry.name;
        if (entry.isFolder) {
            if (entry.isLink) continue;
            try {
                FindAbsent(folder + L"\\" + entry.name, entryName);
            } catch (const RuntimeError&) {
                continue;
            }
        } else if (!saved_.contains(UpperCase(entryName))) {
            const bool wasThere = std::max(entry.times.written, entry.times.created) < savedAt_;
            item_->Add({wasThere ? What::Absent : What::AddedSince, entryName, 0, {}});
        }
    }
}
