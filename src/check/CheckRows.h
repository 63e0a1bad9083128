#pragma once

#include "check/CheckJob.h"
#include "check/VerdictSign.h"
#include "check/WindowWords.h"

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

enum class CheckColumn { Number, Path, Kind, Files, Size, Result };
inline constexpr int CheckColumns = 6;

/// The rows of the check window: one for each item, in the order that the user wants. Items are lent by the jobs that
/// found them. Shown rows count from 0.
class CheckRows {
  public:
    explicit CheckRows(NumberWords words) : words_(std::move(words)) {}

    /// Another backup: no rows, no order, and what comes is ticked.
    void Clear();
    /// All items are to be told anew. Ticks and the order stay.
    void BeginAll();
    /// The ticked items are to be told anew, each when it is settled; the others stay as they are.
    void BeginTicked();
    /// The items of the rows may have come to be among these contents.
    void Keep(const std::shared_ptr<const void>& contents) { contents_.insert(contents); }
    /// Takes an item of a job whose contents are kept with it.
    void Take(const CheckJob::KnownItem& known, const std::shared_ptr<const void>& contents);

    int Count() const { return static_cast<int>(order_.size()); }
    std::wstring Cell(int row, CheckColumn column) const;
    std::wstring ToolTip(int row) const;
    VerdictSign Sign(int row) const;
    /// Nothing for an item that has not been read.
    const ItemReport* Settled(int row) const;

    /// The place of a row's item among all items of the backup.
    int PlaceOf(int row) const { return static_cast<int>(order_.at(static_cast<std::size_t>(row))); }

    bool IsTicked(int row) const { return At(row).isTicked; }
    void Toggle(int row);
    void TickAll(bool isTicked);
    bool IsAnyTicked() const { return tickedCount_ > 0; }
    /// The inner archives of the ticked items; nothing when all are ticked.
    std::shared_ptr<const NameSet> Wanted() const;

    /// Orders the rows by a column; the second time in a row the other way round. Gives where the row went that was at
    /// `row` (-1: none).
    int SortBy(CheckColumn column, int row);
    /// Puts what has changed where it belongs, and gives the same.
    int SortAgain(int row);
    CheckColumn SortedBy() const { return sortedBy_; }
    bool IsDescending() const { return isDescending_; }

  private:
    struct Row {
        const ItemReport* item = nullptr;
        bool isSettled = false;
        bool isTicked = true;
    };

    const Row& At(int row) const { return rows_.at(order_.at(static_cast<std::size_t>(row))); }
    Row& RowFor(const ItemReport& item);
    int Compare(const Row& left, const Row& right) const;

    NumberWords words_;
    std::deque<Row> rows_; ///< it grows without a copy
    std::vector<std::uint32_t> order_;
    std::vector<bool> ticksBefore_; ///< of the items that are to be told anew
    std::map<std::wstring, std::size_t> unlistedRows_;
    std::set<std::shared_ptr<const void>> contents_;
    bool isPart_ = false;
    std::size_t tickedCount_ = 0;
    CheckColumn sortedBy_ = CheckColumn::Number;
    bool isDescending_ = false;
};
