#pragma once

#include "platform/discs/DiscWriter.h"
#include "platform/windows/discs/DiscEventQueue.h"
#include "platform/windows/discs/ImapiBurn.h"
#include "platform/windows/discs/ImapiDrive.h"

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// The thread that talks to image mastering. Every call of the system that may wait for a drive is made on it, and no
/// object of image mastering leaves it. What it finds goes to the queue, which must outlive it. While idle it looks at
/// the current drive every second: a disc that comes or goes sends no message to a program that shows no main window,
/// and a blank one none at all.
class ImapiWorker {
  public:
    ImapiWorker(DiscFamily family, DiscEventQueue& queue);
    /// Waits for the end.
    ~ImapiWorker();
    ImapiWorker(const ImapiWorker&) = delete;
    ImapiWorker& operator=(const ImapiWorker&) = delete;

    void SelectDrive(int index, int selection);
    void StartWrite(int operation, BurnJob job);
    void StartErase(int operation, bool isQuick);
    /// Asks the operation that was started last to stop.
    void RequestStop() { isStopRequested_ = true; }
    /// Asks the thread to end as soon as the drive lets it.
    void RequestEnd();
    bool WaitForEnd(DWORD milliseconds) const;

  private:
    void Run();
    void ListDrives();
    void Enqueue(std::function<void()> command);
    std::function<void()> NextCommand();
    void ReadDrive(bool isAsked);
    void RunOperation(int operation, const std::function<HRESULT(const OperationFollower&)>& run);

    DiscFamily family_;
    DiscEventQueue& queue_;
    UniqueObject wake_;
    UniqueObject ended_;
    std::mutex mutex_;
    std::deque<std::function<void()>> commands_;
    std::atomic<bool> isStopRequested_{false};
    std::atomic<bool> isEndRequested_{false};

    // Touched by the thread only.
    std::vector<ImapiDriveEntry> drives_;
    std::unique_ptr<ImapiDrive> drive_;
    int selection_ = 0;
    DriveSnapshot told_;

    std::thread thread_;
};
