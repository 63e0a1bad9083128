#pragma once

#include "core/ProgressBar.h"

#include <string>

/// How far a run is, as the window shows it.
class RunDisplay {
  public:
    virtual ~RunDisplay() = default;

    /// The line above the bar of the single steps.
    virtual std::wstring RunStatus() const = 0;
    virtual void SetRunStatus(const std::wstring& text) = 0;
    /// The line above the bar of the whole.
    virtual void SetWriterStatus(const std::wstring& text) = 0;
    virtual ProgressBar& Step() = 0;
    virtual ProgressBar& Total() = 0;
    /// Takes the bar of the single steps away, for media that have none.
    virtual void HideStep() = 0;
    /// The stop has been asked for and cannot be asked for again.
    virtual void DisableStop() = 0;
};
