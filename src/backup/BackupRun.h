#pragma once

#include "backup/BackupState.h"
#include "backup/BackupView.h"
#include "backup/DiscSide.h"
#include "core/Application.h"
#include "resources/TextId.h"

#include <cstdint>
#include <optional>

/// The run from the start button to the finished medium.
class BackupRun {
  public:
    BackupRun(Application& app, BackupState& state, BackupView& view, BackupSteps& steps, DiscSide& discs);

    /// What the start button does. A disc goes on being written under the writer's events afterwards. Nothing while a
    /// run is under way.
    void Launch();
    /// What the stop button does.
    void Stop();

  private:
    /// What a box tells.
    struct Notice {
        TextId text;
        TextId title;
        std::uint32_t style;
    };

    void RunToDisk();
    void RunToDisc();
    /// Whether there is something that can go on to the medium; the phase tells what.
    bool PreparerArchive();
    /// Leaves the window in its busy mode.
    void BuildArchive();
    void AwaitDrive();
    bool IsDriveSilent() const;
    bool IsDiscStopped() const;
    /// Why the archive does not go on to the medium as it was read last; nothing when it fits.
    std::optional<Notice> WhyNotToMedium() const;
    void CopyToDisk();
    void EndCopy(bool isCopied);
    void StartWriting();
    void EndHold();
    void Tell(const Notice& notice);
    void ReturnToIdle();

    Application& app_;
    BackupState& state_;
    BackupView& view_;
    BackupSteps& steps_;
    DiscSide& discs_;
};
