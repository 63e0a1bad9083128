#pragma once

#include "check/PackedText.h"

/// Names of inner archives, of which there may be very many. The case of letters is the same.
class NameSet {
  public:
    /// Of all in `names`, each of which makes a std::wstring; keeps texts of its own.
    template<typename Names>
    explicit NameSet(const Names& names) {
        for (const auto& name : names) names_.push_back(texts_.Keep(std::wstring(name)));
        index_ = TextIndex(
            names_.size(), [this](std::uint32_t number) { return names_[number]; }, TextIndex::Case::IsTheSame);
    }
    NameSet(const NameSet&) = delete;
    NameSet& operator=(const NameSet&) = delete;

    bool Contains(std::wstring_view name) const { return !index_.Find(name).empty(); }

  private:
    PackedTexts texts_;
    std::vector<PackedText> names_;
    TextIndex index_;
};
