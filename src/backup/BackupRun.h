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
    /// Whether the archive is being built or copied, so that the window must stay.
    bool IsRunning() const { return isRunning_; }

  private:
    struct Preparation {
        bool hasFailed = false; ///< the archive is not complete; the run goes on to tell
        bool wasStopped = false;
        bool isOk = false;
    };

    void RunToDisk();
    void RunToDisc();
    Preparation PreparerArchive();
    void BuildArchive(Preparation& result);
    void CopyToDisk(bool hasFailed);
    void EndCopy(bool hasFailed);
    void StartWriting(bool hasFailed);
    void ReturnToIdle();

    Application& app_;
    BackupState& state_;
    BackupView& view_;
    BackupSteps& steps_;
    DiscSide& discs_;
    bool isRunning_ = false;
    bool isBurnStarted_ = false;  ///< by the present run
    bool isStartRefused_ = false; ///< the window is busy with nothing that would end
};
