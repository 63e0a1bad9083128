#include "selection/clsColFileInfo.h"

#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "shell/ErrorReport.h"

#include <algorithm>
#include <functional>

namespace {

std::size_t HashOf(const std::wstring& upperCaseKey) {
    return std::hash<std::wstring>()(upperCaseKey);
}

} // namespace

std::shared_ptr<clsFileInfo> clsColFileInfo::Add(const std::wstring& sKey, std::int32_t sType) {
    return Guarded(app_, L"Add, Class clsColFileInfo", [&]() -> std::shared_ptr<clsFileInfo> {
        if (InIndex(sKey) != index_.end()) throw RuntimeError(ErrorNumber::KeyAlreadyPresent);
        auto record = std::make_shared<Record>();
        record->lngType = sType;
        record->strNom = sKey;
        records_.push_back(record);
        try {
            if (!sKey.empty()) index_.emplace(HashOf(UpperCase(sKey)), record);
        } catch (...) {
            // A record without its key could be neither found nor removed.
            records_.pop_back();
            throw;
        }
        return record;
    });
}

std::shared_ptr<clsFileInfo> clsColFileInfo::Item(std::int32_t position) const {
    Sweep();
    if (position < 1 || position > Count()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return records_[static_cast<std::size_t>(position - 1)];
}

std::shared_ptr<clsFileInfo> clsColFileInfo::Item(const std::wstring& key) const {
    const auto entry = InIndex(key);
    if (entry == index_.end()) throw RuntimeError(ErrorNumber::InvalidCall);
    return entry->second;
}

std::shared_ptr<clsFileInfo> clsColFileInfo::Find(const std::wstring& path, std::int32_t kind) const {
    if (path.empty()) {
        const auto found = std::find_if(records_.begin(), records_.end(), [&](const auto& record) {
            return !record->isRemoved && record->strNom.empty() && record->lngType == kind;
        });
        return found == records_.end() ? nullptr : *found;
    }
    const auto entry = InIndex(path);
    return entry != index_.end() && entry->second->lngType == kind ? entry->second : nullptr;
}

void clsColFileInfo::Remove(std::int32_t position) {
    Guarded(app_, L"Remove, Class clsColFileInfo", [&] {
        const auto record = Item(position);
        const auto entry = InIndex(record->strNom);
        if (entry != index_.end()) index_.erase(entry);
        records_.erase(records_.begin() + (position - 1));
    });
}

void clsColFileInfo::Remove(const std::wstring& key) {
    Guarded(app_, L"Remove, Class clsColFileInfo", [&] {
        const auto entry = InIndex(key);
        if (entry == index_.end()) throw RuntimeError(ErrorNumber::InvalidCall);
        entry->second->isRemoved = true;
        index_.erase(entry);
        ++removed_;
    });
}

void clsColFileInfo::RemoveAll() {
    index_.clear();
    records_.clear();
    removed_ = 0;
}

clsColFileInfo::Index::const_iterator clsColFileInfo::InIndex(const std::wstring& key) const {
    const std::wstring upper = UpperCase(key);
    const auto [first, last] = index_.equal_range(HashOf(upper));
    const auto entry =
        std::find_if(first, last, [&](const auto& candidate) { return UpperCase(candidate.second->strNom) == upper; });
    return entry == last ? index_.end() : entry;
}

void clsColFileInfo::Sweep() const {
    if (removed_ == 0) return;
    std::erase_if(records_, [](const auto& record) { return record->isRemoved; });
    removed_ = 0;
}
