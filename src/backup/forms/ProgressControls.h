#pragma once

#include "backup/RunDisplay.h"
#include "backup/forms/frmBackupIds.h"
#include "core/ProgressBar.h"
#include "shell/forms/ApplicationForm.h"

/// The control that long work is given as its bar: the work knows no windows, and the control no work.
class WorkProgressBar final : public ui::ProgressBarControl, public ProgressBar {
  public:
    using ProgressBarControl::ProgressBarControl;
    std::int32_t Min() const override { return ProgressBarControl::Min(); }
    std::int32_t Max() const override { return ProgressBarControl::Max(); }
    void SetRange(std::int32_t min, std::int32_t max) override { ProgressBarControl::SetRange(min, max); }
    std::int32_t Value() const override { return ProgressBarControl::Value(); }
    void SetValue(std::int32_t value) override { ProgressBarControl::SetValue(value); }
};

/// The part of the backup window that stands in the settings' place while a backup runs.
class ProgressControls final : public RunDisplay {
  public:
    static constexpr ui::BoundsTwips Place{120, 5925, 11640, 1965};
    static constexpr int BottomTwips = Place.top + Place.height;

    /// `form` outlives it.
    explicit ProgressControls(ui::Form& form) : form_(form) {}

    /// The window's own buttons stand in the lowest row of the progress; the one that stops a run takes the place of
    /// `launch`, which starts it. The window ends with the place of the progress and the status bar: set in dialog
    /// units, which grow with the font, it would not fit a small screen at every scale.
    void LayOut(ui::Control& back, ui::Control& launch, ui::Control& quit, ui::StatusBar& bar);
    void Show(bool isVisible);
    std::wstring RunStatus() const override { return lblStatutGravure.Text(); }
    void SetRunStatus(const std::wstring& text) override { lblStatutGravure.SetText(text); }
    void SetWriterStatus(const std::wstring& text) override { lblStatutGraveur.SetText(text); }
    ProgressBar& Step() override { return pbProgress; }
    ProgressBar& Total() override { return pbProgressTotal; }
    void HideStep() override;
    void DisableStop() override { cmdStopWrite.Enable(false); }

  private:
    ui::Form& form_;

  public:
    ui::Frame fProgression{form_, IDC_fProgression};
    ui::Label lblStatutGravure{form_, IDC_lblStatutGravure};
    WorkProgressBar pbProgress{form_, IDC_pbProgress};
    ui::Label lblStatutGraveur{form_, IDC_lblStatutGraveur};
    WorkProgressBar pbProgressTotal{form_, IDC_pbProgressTotal};
    ui::Button cmdStopWrite{form_, IDC_cmdStopWrite};
};
