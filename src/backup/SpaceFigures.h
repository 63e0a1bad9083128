#pragma once

#include "core/Application.h"
#include "core/Currency.h"

#include <cstdint>
#include <string>

/// The amounts that decide whether a backup can be made.
struct Spaces {
    Currency required;
    Currency available;        ///< on the medium
    double workSpaceBytes = 0; ///< free on the disk that holds the work folder

    /// What is required must stay below each of the two: what is equal already counts as reached.
    bool IsMediumFull() const { return required >= available; }
    bool IsWorkSpaceFull() const { return required.ToDouble() >= workSpaceBytes; }
};

Spaces SpacesOf(const Application& app);

/// Text `captionId`, a blank, the amount in megabytes, a blank and the unit word.
std::wstring SpaceFigure(const Application& app, TextId captionId, double bytes);

/// Whether a finished archive goes on the medium; one that is exactly as large does.
bool FitsMedium(std::int64_t archiveSizeBytes, Currency available);
