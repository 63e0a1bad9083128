#pragma once

#include "platform/discs/DiscWriter.h"
#include "platform/windows/discs/DiscEventQueue.h"
#include "platform/windows/discs/ImapiDrive.h"
#include "platform/windows/discs/ImapiDriveList.h"
#include "platform/windows/discs/ImapiImage.h"
#include "platform/windows/discs/OperationWatch.h"

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// The thread that talks to image mastering. Every call of the system that may wait for a drive is made on it, and no
/// object of image mastering leaves it. What it finds goes to the queue, which must outlive it. While idle it looks at
/// the current drive every second: a disc that comes or goes sends no message to a program that shows no main window,
/// and a blank one none at all.
class ImapiWorker {
  public:
    /// Throws 429 where the system has no event or thread left.
    ImapiWorker(DiscFamily family, DiscEventQueue& queue);
    /// Waits for the end.
    ~ImapiWorker();
    ImapiWorker(const ImapiWorker&) = delete;
    ImapiWorker& operator=(const ImapiWorker&) = delete;

    /// `id` is one of those listed; empty for no drive.
    void SelectDrive(const std::wstring& id, int selection);
    void StartWrite(int operation, BurnJob job);
    void StartErase(int operation, bool isQuick);
    /// Asks the operation that was started last to stop.
    void RequestStop();
    /// Asks the thread to end as soon as the drive lets it.
    void RequestEnd();
    bool WaitForEnd(DWORD milliseconds) const;

  private:
    using Operation = std::function<HRESULT(const std::shared_ptr<OperationWatch>&)>;

    void Run();
    /// May fail for want of memory before anything is told of it, and is then taken again.
    void TakeStep();
    DWORD MillisecondsToNextLook() const;
    void LookForDrives();
    void TellDrives();
    void Enqueue(std::function<void()> command);
    /// The command that waits longest; null when none does. It stays where it is until it is dropped.
    std::function<void()>* FirstCommand();
    void DropFirstCommand();
    void ReadDrive(bool isAsked);
    void Start(int operation, DiscOperation kind, Operation run);
    static HRESULT ResultOf(const Operation& run, const std::shared_ptr<OperationWatch>& watch);
    void TellEnd(int operation, HRESULT result);

    DiscFamily family_;
    DiscEventQueue& queue_;
    UniqueObject wake_;
    UniqueObject ended_;
    std::mutex mutex_;
    std::deque<std::function<void()>> commands_;
    std::atomic<bool> isEndRequested_{false};
    std::shared_ptr<OperationWatch> latest_; ///< touched by the thread of the windows only

    // Touched by the thread only.
    ImapiDriveList list_;
    bool mustTellDrives_ = true;
    ULONGLONG listedTick_ = 0;
    std::unique_ptr<ImapiDrive> drive_;
    int selection_ = 0;
    DriveSnapshot told_;
    ULONGLONG settleEnd_ = 0; ///< until when the disc that an operation left may be awaited; 0 when none is
    bool isLookDue_ = false;  ///< at once

    std::thread thread_;
};
