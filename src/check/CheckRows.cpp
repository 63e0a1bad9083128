#include "check/CheckRows.h"

#include "platform/Text.h"
#include "resources/TextId.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

template<typename Value>
int Order(const Value& left, const Value& right) {
    return left < right ? -1 : right < left ? 1 : 0;
}

PackedText NameOf(const ItemReport& item) {
    return item.path.empty() ? item.archive : item.path;
}

} // namespace

void CheckRows::Clear() {
    rows_.clear();
    order_.clear();
    ticksBefore_.clear();
    unlistedRows_.clear();
    contents_.clear();
    isPart_ = false;
    tickedCount_ = 0;
    sortedBy_ = CheckColumn::Number;
    isDescending_ = false;
}

void CheckRows::BeginAll() {
    ticksBefore_.clear();
    for (const Row& row : rows_) ticksBefore_.push_back(row.isTicked);
    rows_.clear();
    order_.clear();
    unlistedRows_.clear();
    contents_.clear();
    isPart_ = false;
    tickedCount_ = 0;
}

void CheckRows::BeginTicked() {
    isPart_ = true;
    unlistedRows_.clear();
    for (std::size_t at = 0; at < rows_.size(); ++at) {
        const ItemReport& item = *rows_[at].item;
        if (item.number == 0) unlistedRows_.try_emplace(UpperCase(std::wstring(item.archive)), at);
    }
}

void CheckRows::Take(const CheckJob::KnownItem& known, const std::shared_ptr<const void>& contents) {
    contents_.insert(contents);
    Row& row = RowFor(*known.item);
    // What was told of it before stays until there is something new to tell.
    if (row.isSettled && !known.isSettled) return;
    row.item = known.item;
    row.isSettled = known.isSettled;
}

/// A whole listing comes in its order. A part of it finds its rows: by their places in the list, or by their names.
CheckRows::Row& CheckRows::RowFor(const ItemReport& item) {
    if (isPart_ && item.number == 0) {
        const auto found = unlistedRows_.find(UpperCase(std::wstring(item.archive)));
        if (found != unlistedRows_.end()) return rows_[found->second];
    } else if (item.place < rows_.size() && rows_[item.place].item->number == item.number) {
        return rows_[item.place];
    }
    const bool isTicked = rows_.size() >= ticksBefore_.size() || ticksBefore_[rows_.size()];
    tickedCount_ += isTicked ? 1 : 0;
    order_.push_back(static_cast<std::uint32_t>(rows_.size()));
    rows_.push_back({&item, false, isTicked});
    if (isPart_ && item.number == 0) unlistedRows_.try_emplace(UpperCase(std::wstring(item.archive)), rows_.size() - 1);
    return rows_.back();
}

std::wstring CheckRows::Cell(int row, CheckColumn column) const {
    const ItemReport& item = *At(row).item;
    const bool isSettled = At(row).isSettled;
    switch (column) {
    case CheckColumn::Number:
        return item.number == 0 ? std::wstring() : words_.Count(static_cast<std::uint64_t>(item.number));
    case CheckColumn::Path:
        return NameOf(item);
    case CheckColumn::Kind:
        return item.number == 0 ? std::wstring() : words_.texts(item.isFolder ? TextId::FolderKind : TextId::FileKind);
    case CheckColumn::Files:
        return isSettled ? words_.Count(item.files) : std::wstring();
    case CheckColumn::Size:
        return isSettled ? words_.Size(item.bytes) : std::wstring();
    case CheckColumn::Result:
        return isSettled ? ShortVerdict(item, words_.texts) : words_.texts(TextId::CheckShortNotChecked);
    }
    return {};
}

std::wstring CheckRows::ToolTip(int row) const {
    if (!At(row).isSettled) return {};
    std::vector<std::wstring> lines = ProblemSentences(*At(row).item, words_.texts);
    lines.insert(lines.begin(), ItemSentence(*At(row).item, words_.texts));
    return AsParagraphs(lines);
}

VerdictSign CheckRows::Sign(int row) const {
    return At(row).isSettled ? SignOf(*At(row).item) : VerdictSign::None;
}

const ItemReport* CheckRows::Settled(int row) const {
    return At(row).isSettled ? At(row).item : nullptr;
}

void CheckRows::Toggle(int row) {
    bool& isTicked = rows_.at(order_.at(static_cast<std::size_t>(row))).isTicked;
    isTicked = !isTicked;
    if (isTicked) {
        ++tickedCount_;
    } else {
        --tickedCount_;
    }
}

void CheckRows::TickAll(bool isTicked) {
    for (Row& row : rows_) row.isTicked = isTicked;
    tickedCount_ = isTicked ? rows_.size() : 0;
}

std::shared_ptr<const NameSet> CheckRows::Wanted() const {
    if (tickedCount_ == rows_.size()) return nullptr;
    std::vector<PackedText> wanted;
    for (const Row& row : rows_) {
        if (row.isTicked) wanted.push_back(row.item->archive);
    }
    return std::make_shared<const NameSet>(wanted);
}

int CheckRows::SortBy(CheckColumn column, int row) {
    isDescending_ = column == sortedBy_ && !isDescending_;
    sortedBy_ = column;
    return SortAgain(row);
}

int CheckRows::SortAgain(int row) {
    const std::size_t kept = row < 0 ? rows_.size() : order_.at(static_cast<std::size_t>(row));
    std::iota(order_.begin(), order_.end(), 0u);
    std::stable_sort(order_.begin(), order_.end(), [this](std::uint32_t left, std::uint32_t right) {
        const int order = Compare(rows_[left], rows_[right]);
        return isDescending_ ? order > 0 : order < 0;
    });
    return row < 0 ? -1 : static_cast<int>(std::find(order_.begin(), order_.end(), kept) - order_.begin());
}

int CheckRows::Compare(const Row& left, const Row& right) const {
    const bool areRead = left.isSettled && right.isSettled;
    switch (sortedBy_) {
    case CheckColumn::Number:
        return Order(left.item->place, right.item->place);
    case CheckColumn::Path:
        return OrderOfNames(NameOf(*left.item), NameOf(*right.item));
    case CheckColumn::Kind:
        return Order(left.item->isFolder, right.item->isFolder);
    case CheckColumn::Files:
        return areRead ? Order(left.item->files, right.item->files) : Order(left.isSettled, right.isSettled);
    case CheckColumn::Size:
        return areRead ? Order(left.item->bytes, right.item->bytes) : Order(left.isSettled, right.isSettled);
    case CheckColumn::Result:
        return areRead ? Order(std::pair(SignOf(*left.item), left.item->verdict),
                               std::pair(SignOf(*right.item), right.item->verdict))
                       : Order(left.isSettled, right.isSettled);
    }
    return 0;
}
