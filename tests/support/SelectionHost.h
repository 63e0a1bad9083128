#pragma once

#include "core/Application.h"
#include "core/Currency.h"
#include "core/SpaceValues.h"
#include "selection/SelectionList.h"

#include <functional>
#include <string>
#include <vector>

/// A host that keeps the required space as the backup window does, and notes what it is told.
class SelectionHost : public SelectionEvents {
  public:
    explicit SelectionHost(Application& app) : app_(app) {}

    /// Where the sizes come from; to be set before items are added.
    std::function<Currency(const std::wstring&)> spaceOf;
    std::vector<std::wstring> events;
    std::function<void(const std::wstring& event)> whenRaised;
    bool isQuiet = false; ///< notes nothing

    void OnAddFile(const std::wstring& path) override {
        app_.space->requiredSpace += spaceOf(path);
        Note(L"OnAddFile " + path);
    }
    void OnRemoveFile(const std::wstring& path) override {
        app_.space->requiredSpace -= spaceOf(path);
        Note(L"OnRemoveFile " + path);
    }
    void OnRemoveAllFile() override {
        app_.space->requiredSpace = Currency();
        Note(L"OnRemoveAllFile");
    }
    void OnRefreshSpace() override { Note(L"OnRefreshSpace"); }

  private:
    void Note(const std::wstring& event) {
        if (!isQuiet) events.push_back(event);
        if (whenRaised) whenRaised(event);
    }

    Application& app_;
};

/// Notes what it is to show.
class SelectionScreen : public SelectionView {
  public:
    std::int32_t selected = -1;
    std::int32_t shown = -1;
    int refreshes = 0;
    std::vector<std::int32_t> boxChanges;

    std::int32_t SelectedRow() const override { return selected; }
    void RowsChanged(std::int32_t selectedRow, std::int32_t shownRow) override {
        ++refreshes;
        selected = selectedRow;
        if (shownRow >= 0) shown = shownRow;
    }
    void BoxChanged(std::int32_t index) override { boxChanges.push_back(index); }
};
