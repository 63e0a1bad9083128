#pragma once

#include "backup/BackupState.h"
#include "backup/BackupView.h"
#include "backup/DiscSide.h"
#include "core/Application.h"

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
    void RunToDisk();
    void RunToDisc();
    /// Whether there is something that can go on to the medium; the phase tells what.
    bool PreparerArchive();
    void BuildArchive();
    void AwaitDrive();
    bool IsDriveSilent() const;
    void TellWhyItDoesNotFit();
    void CopyToDisk();
    void EndCopy(bool isCopied);
    void StartWriting();
    void LeaveRun();
    void ReturnToIdle();

    Application& app_;
    BackupState& state_;
    BackupView& view_;
    BackupSteps& steps_;
    DiscSide& discs_;
};
