#pragma once

#include "backup/BackupView.h"
#include "core/Application.h"
#include "core/Currency.h"
#include "selection/SelectionList.h"

#include <functional>
#include <string>

/// Keeps the required space in step with what is selected and tells the user when it no longer fits. Procedures report
/// their own failures.
class SelectionWatch final : public SelectionEvents {
  public:
    /// Gives the space that an item takes of a backup.
    using Measure = std::function<Currency(const std::wstring& path)>;

    SelectionWatch(Application& app, BackupView& view, Measure measure);

    void OnAddFile(const std::wstring& path) override;
    void OnRemoveFile(const std::wstring& path) override;
    void OnRemoveAllFile() override;
    void OnRefreshSpace() override;
    void OnShowChanges() override;

    /// Tells the user when what is required does not stay below the work space; gives whether it did.
    bool CheckWorkSpace();

  private:
    void ShowRemoval();

    Application& app_;
    BackupView& view_;
    Measure measure_;
    bool areFiguresDue_ = false;
};
