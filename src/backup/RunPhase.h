#pragma once

#include <array>
#include <cstddef>

/// Where a backup window is. The window, the run and the disc side all read it.
enum class RunPhase {
    Opening,        ///< not set up yet
    Idle,           ///< the settings wait for the user
    Preparing,      ///< the archiver is looked for, the password asked and the control file written
    Archiving,      ///< the items are being archived
    Archived,       ///< the archive is complete and on its way to the medium
    ArchiveFailed,  ///< the archive is not complete; the run goes on, to tell
    ArchiveStopped, ///< the user stopped before anything went to the medium
    Copying,        ///< to a disk
    StartingWrite,  ///< inside the call that starts the writer, whose events may come already
    Writing,        ///< the writer is at work; only its events go on
    StartRefused,   ///< the writer did not start: the window is busy with nothing that would end
    Ending,         ///< nothing is in progress any more, and the user is told how it went
    Erasing,        ///< the erase window erases a disc
    Closed,         ///< the window is gone
};

inline constexpr std::array AllRunPhases{
    RunPhase::Opening,       RunPhase::Idle,           RunPhase::Preparing, RunPhase::Archiving,     RunPhase::Archived,
    RunPhase::ArchiveFailed, RunPhase::ArchiveStopped, RunPhase::Copying,   RunPhase::StartingWrite, RunPhase::Writing,
    RunPhase::StartRefused,  RunPhase::Ending,         RunPhase::Erasing,   RunPhase::Closed,
};
static_assert(AllRunPhases.size() == static_cast<std::size_t>(RunPhase::Closed) + 1);

/// Whether one phase may follow another. A window may be closed in any phase, and stays closed.
bool IsStepAllowed(RunPhase from, RunPhase to);

/// From the start of the archive until the run has ended or was stopped.
bool IsOperationInProgress(RunPhase phase);

/// Whether the run still has steps of its own to take, so that the window must stay. A burn goes on without them.
bool IsRunning(RunPhase phase);

/// The phase that a backup window is in.
class CurrentPhase {
  public:
    RunPhase Now() const { return now_; }
    bool IsAt(RunPhase phase) const { return now_ == phase; }

    /// Goes to a phase. Throws 5 when that phase may not follow; a window that is gone stays gone.
    void Enter(RunPhase next);
    /// What a stop makes of the phase; nothing when no operation is in progress.
    void Stop();
    /// Takes an erase for begun or for over.
    void SetErasing(bool isErasing);

    bool IsOperationInProgress() const { return ::IsOperationInProgress(now_); }
    bool IsRunning() const { return ::IsRunning(now_); }

  private:
    RunPhase now_ = RunPhase::Opening;
};
