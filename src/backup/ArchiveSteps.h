#pragma once

#include "archive/clsCopie.h"
#include "archive/clsListe.h"
#include "backup/BackupView.h"

#include <functional>
#include <memory>

/// The steps of a backup, done on what the backup window holds.
class ArchiveSteps final : public BackupSteps {
  public:
    struct Window {
        BackupView& view;
        std::function<std::shared_ptr<clsColFileInfo>()> selection;
        /// Asks for a new password; false when the user gives none.
        std::function<bool()> askPassword;
    };

    ArchiveSteps(Application& app, Window window);

    bool ValidZipApp() override { return copier_.ValidZipApp(); }
    std::wstring GetZipAppName() override { return copier_.GetZipAppName(); }
    bool DemanderMotPasse() override { return window_.askPassword(); }
    std::int32_t SelectedCount() const override;
    void EnregistrerListeFichiers() override;
    bool CopierListeFichiers() override;
    bool CopierUSB(const std::wstring& root) override { return copier_.CopierUSB(root); }

  private:
    clsListe list_;
    clsCopie copier_;
    Window window_;
};
