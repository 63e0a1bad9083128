#include "check/Inspection.h"

#include "platform/Text.h"

namespace {

constexpr std::wstring_view ArchiveEnding = L".zip";

std::wstring FolderBefore(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end + 1);
}

} // namespace

std::wstring ArchiveOfRow(const std::wstring& name) {
    const bool hasEnding = name.size() > ArchiveEnding.size() &&
                           UpperCase(name.substr(name.size() - ArchiveEnding.size())) == UpperCase(ArchiveEnding);
    return hasEnding ? name.substr(0, name.size() - ArchiveEnding.size()) : name;
}

Inspection::Inspection(std::deque<ListedItem> rows, BackupReport& report, std::vector<FileTaker*> takers,
                       const NameSet* wanted, OnItemKnown onItemKnown)
    : report_(report), takers_(std::move(takers)), wanted_(wanted), onItemKnown_(std::move(onItemKnown)) {
    for (const ItemReport& item : report_.items) Tell(item, false);
    nextPlace_ = static_cast<std::uint32_t>(report_.items.size());
    // The rows go one by one while the items come.
    for (; !rows.empty(); rows.pop_front()) {
        const ListedItem& row = rows.front();
        const std::uint32_t place = nextPlace_++;
        if (!IsWanted(row.archive)) continue;
        ItemReport& item = report_.items.emplace_back();
        item.place = place;
        item.number = row.number;
        item.path = row.path;
        item.archive = row.archive;
        item.isFolder = row.isFolder;
        item.problems = static_cast<std::uint8_t>(row.problems);
        Tell(item, false);
    }
    rows_ = TextIndex(
        report_.items.size(), [this](std::uint32_t row) { return report_.items[row].archive; },
        TextIndex::Case::IsTheSame);
}

bool Inspection::Wants(const std::wstring& name) {
    return IsWanted(ArchiveOfRow(name));
}

bool Inspection::IsWanted(const std::wstring& archive) const {
    return !wanted_ || wanted_->Contains(archive);
}

void Inspection::Tell(const ItemReport& item, bool isSettled) const {
    if (onItemKnown_) onItemKnown_(item, isSettled);
}

void Inspection::OnItem(const ZipEntry& item) {
    const std::wstring name = ArchiveOfRow(item.name);
    const auto found = rows_.Find(name);
    // A second archive of one name belongs to no row any more.
    if (!found.empty() && report_.items[found.front()].verdict == ItemVerdict::NotChecked) {
        item_ = &report_.items[found.front()];
    } else {
        item_ = &report_.items.emplace_back();
        item_->place = nextPlace_++;
        item_->archive = report_.texts.Keep(name);
        Tell(*item_, false);
    }
    topName_.clear();
    hasOneTop_ = true;
    folderBefore_ = FolderBefore(item_->path).size();
    for (FileTaker* taker : takers_) taker->BeginItem(*item_, item);
}

void Inspection::OnFile(const ZipEntry& file) {
    file_ = file.name;
    isFolder_ = file.isFolder;
    const std::wstring top = file.name.substr(0, file.name.find(L'/'));
    if (topName_.empty()) topName_ = top;
    hasOneTop_ = hasOneTop_ && top == topName_;
    for (FileTaker* taker : takers_) taker->BeginFile(file);
}

void Inspection::OnData(std::string_view bytes) {
    for (FileTaker* taker : takers_) taker->Take(bytes);
}

void Inspection::OnFileEnd(const FileOutcome& outcome) {
    using What = FileFinding::What;
    if (outcome.state == FileState::Unreadable) {
        item_->Add({What::Unreadable, file_, 0, {}});
    } else if (outcome.state == FileState::Damaged) {
        item_->Add({outcome.isBrokenOff ? What::BrokenOff : What::Damaged, file_, outcome.bytes, {}});
    }
    const std::size_t length = folderBefore_ + file_.size();
    if (item_->number > 0 && item_->path.size() <= LongestPath && length > LongestPath)
        item_->Add({What::TooLong, file_, length, {}});
    for (FileTaker* taker : takers_) taker->EndFile(outcome);
}

void Inspection::OnRecord(std::uint64_t index, const DirectoryRecord& record) {
    for (FileTaker* taker : takers_) taker->Describe(index, record);
}

void Inspection::OnItemEnd(const ItemOutcome& outcome) {
    item_->Take(outcome);
    item_->verdict = VerdictOf(outcome);
    for (FileTaker* taker : takers_) taker->EndItem();
    Tell(*item_, true);
    item_ = nullptr;
}

ItemVerdict Inspection::VerdictOf(const ItemOutcome& outcome) const {
    switch (outcome.state) {
    case ItemState::Damaged:
        return ItemVerdict::Damaged;
    case ItemState::DamagedWhenSaved:
        return ItemVerdict::DamagedWhenSaved;
    case ItemState::Cut:
        return ItemVerdict::Cut;
    case ItemState::Empty:
        return ItemVerdict::Empty;
    case ItemState::DirectoryDamaged:
        return ItemVerdict::DirectoryDamaged;
    case ItemState::Locked:
        return ItemVerdict::Locked;
    case ItemState::Whole:
        break;
    }
    if (item_->number == 0) return report_.hasList ? ItemVerdict::NotListed : ItemVerdict::Whole;
    return IsWhatRowNames() ? ItemVerdict::Whole : ItemVerdict::OtherBackup;
}

bool Inspection::IsWhatRowNames() const {
    // A row that ends in a backslash names what stands in the folder, and not the folder.
    const std::wstring name = LastName(item_->path);
    return name.empty() || (hasOneTop_ && IsNameMeant(name, topName_));
}

void Inspection::Finish() {
    for (ItemReport& item : report_.items) {
        if (item.verdict != ItemVerdict::NotChecked) continue;
        item.verdict = ItemVerdict::Missing;
        Tell(item, true);
    }
}
