#pragma once

#include "core/Currency.h"
#include "selection/PathRules.h"
#include "selection/clsFileInfo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// The colour of rows that a predefined set brought.
inline constexpr std::int32_t SetRowColor = 255;
/// The set index of rows that the user added.
inline constexpr std::int32_t NoSet = -1;

/// One row of the selection's list as it is shown. Its number is its position.
struct SelectionRow {
    std::shared_ptr<const std::wstring> path; ///< its item's own text where it has one: long lists hold each path once
    bool hasAllFiles = false;                 ///< "\*.*" is shown after the path: a folder that the user added
    bool isFolder = false;
    std::int32_t setIndex = NoSet;
    std::int32_t color = 0;
    Currency space = {};    ///< what a predefined set counted for it
    bool isRemoved = false; ///< marked to go with the next sweep

    /// What the row shows.
    std::wstring Text() const { return hasAllFiles ? *path + std::wstring(AllFiles) : *path; }
    bool IsBold() const { return color != 0; }
    /// Takes the path's text from the row's item from now on; nothing to do without one.
    void ShareText(const std::shared_ptr<clsFileInfo>& item) {
        if (item != nullptr) path = {item, &item->strNom};
    }
};

/// The selection's rows in order, and which of them is the selected one. Positions count from 0 here.
class SelectionRows {
  public:
    std::int32_t Count() const { return static_cast<std::int32_t>(rows_.size()); }
    /// Throws 9 when there is no such row.
    const SelectionRow& At(std::int32_t position) const;

    /// Appends a row. The reference holds until the row is removed.
    SelectionRow& Add(SelectionRow row);
    /// The row added last; there must be one.
    SelectionRow& Last() { return *rows_.back(); }
    void Remove(std::int32_t position);
    void Clear();

    /// The selected row keeps its place among the others whatever is removed around it; -1 is none, as after its own
    /// removal.
    void Select(std::int32_t position) { selected_ = position < Count() ? position : -1; }
    std::int32_t Selected() const { return selected_; }

    /// A row of this text in any letter case; null when there is none. After the first look-up the time does not grow
    /// with the number of rows until rows are removed one by one.
    SelectionRow* Find(const std::wstring& text);

    /// Takes a row out of every look-up; it goes with the next `Sweep`.
    void Mark(SelectionRow& row);
    /// Removes all marked rows in one pass.
    void Sweep();
    /// Calls `visit` for each row that is not marked, from the last to the first.
    template<typename Visit>
    void VisitBackwards(Visit visit) {
        for (auto row = rows_.rbegin(); row != rows_.rend(); ++row) {
            if (!(*row)->isRemoved) visit(**row);
        }
    }

  private:
    void EnterInIndex(SelectionRow& row);
    void DropIndex();

    std::vector<std::unique_ptr<SelectionRow>> rows_;
    // By the hash of the upper-case text. Only the predefined sets look rows up by text, so it is made when they do.
    std::unordered_multimap<std::size_t, SelectionRow*> index_;
    bool isIndexed_ = false;
    bool hasMarks_ = false;
    std::int32_t selected_ = -1;
};
