#pragma once

#include "core/Currency.h"
#include "selection/LeftOutItems.h"
#include "selection/LongWork.h"
#include "selection/PredefinedSets.h"
#include "selection/SelectionRows.h"
#include "selection/clsColFileInfo.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class Application;

/// The host of the selection is told of every change of what it holds.
class SelectionEvents {
  public:
    virtual ~SelectionEvents() = default;
    /// An item was added by hand; its row and its record are there.
    virtual void OnAddFile(const std::wstring& path) = 0;
    /// An item is about to be removed by hand; its row and its record are still there.
    virtual void OnRemoveFile(const std::wstring& path) = 0;
    /// Everything was removed.
    virtual void OnRemoveAllFile() = 0;
    /// A predefined set has changed the required space.
    virtual void OnRefreshSpace() = 0;
    /// What was raised since the last time is to be seen now: comes at the end of each of the user's actions, and now
    /// and then within a long one. Figures that take longer to show than an item to add wait for it.
    virtual void OnShowChanges() {}
};

enum class BoxState : std::int16_t { Unchecked = 0, Checked = 1, Grey = 2 };

/// A predefined set's check box. Grey: some of its items were removed by hand.
struct SetBox {
    BoxState state = BoxState::Unchecked;
    bool isEnabled = false;
};

/// What shows the selection.
class SelectionView {
  public:
    virtual ~SelectionView() = default;
    /// The row that the user sees selected; -1 when none is.
    virtual std::int32_t SelectedRow() const = 0;
    /// Rows were added, removed or restyled. Row `selected` (-1: none) is to be the selected one, and row `shown`
    /// scrolled into view (-1: leave that as it is).
    virtual void RowsChanged(std::int32_t selected, std::int32_t shown) = 0;
    virtual void BoxChanged(std::int32_t index) = 0;
};

/// The list of what is to be backed up: its rows, its collection and the boxes of its predefined sets, kept in step.
/// A failure is reported under the procedure's label; what was done before it stays. For the user-interface thread.
class SelectionList {
  public:
    /// `events` and `view` are borrowed.
    SelectionList(Application& app, SelectionEvents& events, SelectionView& view);
    SelectionList(const SelectionList&) = delete;
    SelectionList& operator=(const SelectionList&) = delete;

    /// Fills the list with the sets that this computer holds, or with the transfer list when there is one, and reads
    /// the user's profile.
    void LoadSets();

    /// The collection itself, not a copy.
    const std::shared_ptr<clsColFileInfo>& ArrayFichier() const { return content_.collection; }
    /// Takes another collection and rebuilds the rows from it.
    void SetArrayFichier(std::shared_ptr<clsColFileInfo> collection);

    std::int32_t RowCount() const { return content_.rows.Count(); }
    const SelectionRow& Row(std::int32_t position) const { return content_.rows.At(position); }
    const SetBox& Box(std::int32_t index) const { return boxes_.at(static_cast<std::size_t>(index)); }
    std::int32_t ItemsAdded(std::int32_t setIndex) const;
    std::int32_t ItemsLeft(std::int32_t setIndex) const;

    /// Adds one path, or the folders that a wildcard pattern finds. What is there already is left out in silence.
    void AjouterFichRep(const std::wstring& sChemin, std::int32_t lngCouleur, bool blnAjouterCollection);
    /// Adds files of a folder, under the hourglass.
    void AddFiles(const std::wstring& folder, const std::vector<std::wstring>& names);
    /// Adds a folder and gives the one above it, to which the folder list moves. Gives nothing for a folder that was
    /// not taken: a disk root, refused with a message, one that a list cannot record, or none at all.
    std::wstring AddFolder(const std::wstring& path);
    /// Adds dropped paths up to the first disk root, which is refused with a message.
    void AddDropped(const std::vector<std::wstring>& paths);

    /// Removes a row with its item.
    void DetruireItem(std::int32_t iIndex);
    /// Removes the selected row and selects the one that took its place; nothing to do without one (-1).
    void EffacerFichierListe(std::int32_t selected);
    void EffacerTouteListe();

    /// The user clicked a set's box: a checked or grey one goes to unchecked, an unchecked one to checked.
    void ClickBox(std::int32_t index);

    /// The space that a file or folder takes of a backup. Throws the errors of `Files::FileSize`.
    Currency SpaceOf(const std::wstring& path);

  private:
    template<typename Steps>
    void Change(const wchar_t* procedure, Steps&& steps);
    void ListeFichiersRemplir();
    std::size_t AddPatternRows(const std::wstring& pattern, std::int32_t color);
    void AddRow(const std::wstring& path, bool isFolder, std::int32_t color);
    void SelectAndShow(std::int32_t row);
    void RemoveRecordOf(const SelectionRow& row);
    void SetBoxState(std::int32_t index, BoxState state);
    void SetBoxQuietly(std::int32_t index, BoxState state);
    void EnableBox(std::int32_t index, bool isEnabled);
    void chkSauvOKR_Click(std::int32_t index);
    void ShowChanges();

    Application& app_;
    SelectionEvents& events_;
    SelectionView& view_;
    SelectionContent content_;
    LongWork work_;
    LeftOutItems leftOut_;
    PredefinedSets sets_;
    std::array<SetBox, SetCount> boxes_ = {};
    bool blnTraiterClicSet_ = true;
};
