#pragma once

#include "backup/MediumReport.h"
#include "ui/Controls.h"
#include "ui/ToolTips.h"

/// The status bar with what is known of the medium, and the time.
class MediumStatusBar : public ui::StatusBar {
  public:
    using StatusBar::StatusBar;

    void LayOut();
    /// Once the bar has found its place.
    void ShowToolTips(const Application& app);
    /// Shows every panel but the time.
    void ShowReport(const MediumReport& report);
    void ShowTime(const Application& app);

  private:
    // The bar's own tips show only where a text is cut.
    ui::ToolTips toolTips_{ParentForm()};
};
