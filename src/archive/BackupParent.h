#pragma once

/// The window on whose behalf a backup is made.
class BackupParent {
  public:
    virtual ~BackupParent() = default;
    /// Whether the user has asked the backup to stop.
    virtual bool StopWrite() = 0;
    /// Paints the window now.
    virtual void RefreshWindow() = 0;
};
