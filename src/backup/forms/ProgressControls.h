#pragma once

#include "backup/forms/frmBackupIds.h"
#include "shell/forms/ApplicationForm.h"

/// The part of the backup window that stands in the settings' place while a backup runs.
class ProgressControls {
  public:
    static constexpr ui::BoundsTwips Place{120, 5925, 11640, 1965};

    /// `form` outlives it.
    explicit ProgressControls(ui::Form& form) : form_(form) {}

    void LayOut();
    void Show(bool isVisible);
    /// Takes the bar of the single steps away, for media that have none.
    void HideStep();
    ProgressBar& Step() { return step_; }
    ProgressBar& Total() { return total_; }

  private:
    ui::Form& form_;

  public:
    ui::Frame fProgression{form_, IDC_fProgression};
    ui::Label lblStatutGravure{form_, IDC_lblStatutGravure};
    ui::ProgressBarControl pbProgress{form_, IDC_pbProgress};
    ui::Label lblStatutGraveur{form_, IDC_lblStatutGraveur};
    ui::ProgressBarControl pbProgressTotal{form_, IDC_pbProgressTotal};
    ui::Button cmdStopWrite{form_, IDC_cmdStopWrite};

  private:
    ControlProgress step_{pbProgress};
    ControlProgress total_{pbProgressTotal};
};
