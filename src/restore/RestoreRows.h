#pragma once

#include "archive/ControlFile.h"
#include "core/Application.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Appends a letter for each of the file attributes hidden (H), system (S) and read-only (R).
void RemplirAttrib(std::int32_t attributes, std::wstring& text);

/// What the list calls a kind as it was read; empty when it is no number of 16 bits, as where a comma in a path has
/// shifted the fields.
std::wstring KindLabel(const Application& app, const std::wstring& kind);

/// The path that an item is extracted by: without the "\*.*" that marks a folder.
std::wstring ExtractionPath(const std::wstring& restorePath);

/// The rows of the restore window: what the medium holds, what is ticked and what has been restored. Rows count from 0.
class RestoreRows {
  public:
    struct Row {
        ControlFileRecord record;
        std::wstring kindLabel;
        bool isTicked = false;
        bool isRestored = false;
    };

    /// A column of the list, in the order in which they stand; the first is the path.
    struct Column {
        TextId headerId; ///< None for one that is there for the program only
        int widthTwips;  ///< 0 for what the others leave
        std::wstring (*cell)(const Row& row);
    };
    static std::span<const Column> Columns();

    void Clear();
    /// Says instead of a list that the medium holds no backup. Such rows cannot be ticked.
    void ShowNoBackup(const std::wstring& text);
    /// Takes the records of a control file.
    void Add(const Application& app, std::vector<ControlFileRecord> records);

    int Count() const { return static_cast<int>(rows_.size()); }
    const Row& At(int row) const { return rows_.at(static_cast<std::size_t>(row)); }
    /// Empty for a column that there is not.
    std::wstring Cell(int row, int column) const;
    /// Whether the rows are items that can be ticked.
    bool HoldItems() const { return holdItems_; }

    void Toggle(int row);
    void TickAll(bool isTicked);
    /// Row by row, whether it is ticked.
    std::vector<bool> Ticks() const;
    /// Ticks as `Ticks` gave them; rows without one there stay unticked.
    void SetTicks(const std::vector<bool>& ticks);
    bool IsAnyTicked() const { return tickedCount_ > 0; }
    /// Whether a ticked row is one that no backup writes.
    bool IsAnyTickedUnfit() const;
    void MarkRestored(int row) { rows_.at(static_cast<std::size_t>(row)).isRestored = true; }

  private:
    std::vector<Row> rows_;
    int tickedCount_ = 0;
    bool holdItems_ = false;
};
