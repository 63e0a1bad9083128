#include "selection/SelectionRows.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

std::size_t HashOf(const std::wstring& upperCaseText) {
    return std::hash<std::wstring>()(upperCaseText);
}

} // namespace

const SelectionRow& SelectionRows::At(std::int32_t position) const {
    if (position < 0 || position >= Count()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return *rows_[static_cast<std::size_t>(position)];
}

SelectionRow& SelectionRows::Add(SelectionRow row) {
    rows_.push_back(std::make_unique<SelectionRow>(std::move(row)));
    if (isIndexed_) EnterInIndex(*rows_.back());
    return *rows_.back();
}

void SelectionRows::Remove(std::int32_t position) {
    At(position);
    DropIndex();
    rows_.erase(rows_.begin() + position);
    if (selected_ == position)
        selected_ = -1;
    else if (selected_ > position)
        --selected_;
}

void SelectionRows::Clear() {
    DropIndex();
    rows_.clear();
    selected_ = -1;
}

SelectionRow* SelectionRows::Find(const std::wstring& text) {
    if (!isIndexed_) {
        for (const auto& row : rows_) EnterInIndex(*row);
        isIndexed_ = true;
    }
    const std::wstring upper = UpperCase(text);
    const auto [first, last] = index_.equal_range(HashOf(upper));
    for (auto entry = first; entry != last; ++entry) {
        SelectionRow* row = entry->second;
        if (!row->isRemoved && UpperCase(row->Text()) == upper) return row;
    }
    return nullptr;
}

void SelectionRows::Mark(SelectionRow& row) {
    row.isRemoved = true;
    hasMarks_ = true;
}

void SelectionRows::Sweep() {
    if (!hasMarks_) return;
    DropIndex();
    const auto isMarked = [](const auto& row) { return row->isRemoved; };
    if (selected_ >= 0) {
        const auto selected = rows_.begin() + selected_;
        const auto gone = static_cast<std::int32_t>(std::count_if(rows_.begin(), selected, isMarked));
        selected_ = isMarked(*selected) ? -1 : selected_ - gone;
    }
    std::erase_if(rows_, isMarked);
    hasMarks_ = false;
}

void SelectionRows::EnterInIndex(SelectionRow& row) {
    index_.emplace(HashOf(UpperCase(row.Text())), &row);
}

void SelectionRows::DropIndex() {
    index_.clear();
    isIndexed_ = false;
}
