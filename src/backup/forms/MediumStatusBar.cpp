#include "backup/forms/MediumStatusBar.h"

#include "core/NumberFormat.h"
#include "platform/Clock.h"
#include "resources/TextId.h"

#include <array>

namespace {

constexpr std::array<TextId, PanelCount> ToolTipTexts = {TextId::DiscTypeToolTip, TextId::DiscStatusToolTip,
                                                         TextId::UsedSpaceToolTip, TextId::TotalSpaceToolTip,
                                                         TextId::TimeToolTip};

} // namespace

void MediumStatusBar::LayOut() {
    SetPanels({2700, 2400, 2700, 2700, 1400});
}

void MediumStatusBar::ShowToolTips(const Application& app) {
    for (int panel = 0; panel < static_cast<int>(PanelCount); ++panel)
        toolTips_.SetPart(*this, panel + 1, PanelPlace(panel), app.Text(ToolTipTexts[static_cast<std::size_t>(panel)]));
}

void MediumStatusBar::ShowReport(const MediumReport& report) {
    for (std::size_t panel = 0; panel < static_cast<std::size_t>(Panel::Time); ++panel)
        SetPanelText(static_cast<int>(panel), report.panels[panel]);
}

void MediumStatusBar::ShowTime(const Application& app) {
    const LocalTime now = app.machine.clock->Now();
    const std::wstring time = FormatNumber(now.hour, L"00", L"") + L":" + FormatNumber(now.minute, L"00", L"");
    const int panel = static_cast<int>(Panel::Time);
    // It comes each second: what stands there already is not painted again.
    if (PanelText(panel) != time) SetPanelText(panel, time);
}
