#pragma once

#include "core/Currency.h"
#include "selection/LeftOutItems.h"
#include "selection/LongWork.h"
#include "selection/SelectionRows.h"
#include "selection/SetTable.h"
#include "selection/clsColFileInfo.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Application;

/// What the selection holds: the rows that are shown, the collection that is backed up, and per predefined set how many
/// items it added and how many of them are left.
struct SelectionContent {
    std::shared_ptr<clsColFileInfo> collection;
    SelectionRows rows;
    std::array<std::int32_t, SetCount> arrNbItemsAjoutes = {};
    std::array<std::int32_t, SetCount> arrNbItemsRestants = {};
    std::int32_t shownRow = -1; ///< the row that was last to be scrolled into view
};

/// Adds the items of predefined sets to the selection and takes them away again, and keeps the required space. A
/// failure is reported under the procedure's label; what was done before it stays.
class PredefinedSets {
  public:
    PredefinedSets(Application& app, SelectionContent& content, LongWork& work, LeftOutItems& leftOut)
        : app_(app), content_(content), work_(work), leftOut_(leftOut) {}

    /// Full paths of a set's list files on this system, in the order in which they are read.
    std::vector<std::wstring> ListFiles(std::int32_t setIndex) const;
    /// Whether the set's first list file is there.
    bool IsInstalled(std::int32_t setIndex) const;
    /// The list that takes the place of all sets.
    std::wstring TransferList() const;

    /// Adds every entry of a list file as an item of the set.
    void RemplirArray(const std::wstring& listFile, std::int32_t setIndex);
    /// Removes a list file's items.
    void ViderArray(const std::wstring& listFile);
    /// Adds what a wildcard entry stands for.
    void AjouteMultiple(const std::wstring& pattern, std::int32_t setIndex);
    /// Adds one item, when it exists.
    void AjouteToListAndArray(const std::wstring& path, bool isFolder, std::int32_t setIndex);
    /// Removes what a wildcard entry stands for.
    void EffacerMultiple(const std::wstring& pattern);

  private:
    std::vector<std::wstring> Entries(const std::wstring& listFile);
    void FillFrom(const std::wstring& entry, std::int32_t setIndex);
    void AddItem(const clsFileInfo& probe, std::int32_t setIndex);
    void RemoveItem(SelectionRow& row);
    Currency SpaceOf(const std::wstring& path, bool isFolder);
    Currency SpaceToGive(const SelectionRow& row);

    Application& app_;
    SelectionContent& content_;
    LongWork& work_;
    LeftOutItems& leftOut_;
};
