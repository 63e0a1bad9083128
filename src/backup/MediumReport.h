#pragma once

#include "backup/DiscFacts.h"
#include "core/Application.h"
#include "core/Currency.h"
#include "core/Medium.h"

#include <array>
#include <string>

/// The status bar's panels, in their order.
enum class Panel { Type, Status, UsedSpace, TotalSpace, Time };
inline constexpr std::size_t PanelCount = 5;

/// What the backup window shows of its medium and how much room it offers.
struct MediumReport {
    std::array<std::wstring, PanelCount> panels; ///< the time is left to the window
    Currency available;
    DiscFacts disc;

    std::wstring& operator[](Panel panel) { return panels[static_cast<std::size_t>(panel)]; }
    const std::wstring& operator[](Panel panel) const { return panels[static_cast<std::size_t>(panel)]; }
};

/// The disc in the current drive of a writer; null for a medium whose writer could not be made.
MediumReport ReportOnDisc(const Application& app, DiscFamily family, const DiscWriter* writer);

/// The disk at a drive root. Throws 71 when the drive is there but holds nothing that can be read.
MediumReport ReportOnDisk(const Application& app, Medium medium, const std::wstring& root);
