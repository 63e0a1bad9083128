#pragma once

#include "platform/discs/DiscProgress.h"
#include "platform/discs/DiscReading.h"
#include "win32/UniqueHandle.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// A drive's disc and the speeds (sectors per second) at which it can be written.
struct DriveSnapshot {
    DiscState disc;
    std::vector<std::uint32_t> speeds;

    bool operator==(const DriveSnapshot&) const = default;
};

/// What the thread that talks to the drives has to say.
struct DiscEvent {
    enum class Kind {
        DrivesListed,  ///< `names` and `ids`, or `result` when image mastering cannot be reached
        DriveRead,     ///< `snapshot` of the drive of selection `selection`
        Progress,      ///< `progress` of operation `operation`
        OperationEnded ///< `result` of operation `operation`
    };

    Kind kind = Kind::DriveRead;
    int selection = 0;
    int operation = 0;
    DriveSnapshot snapshot;
    DiscProgress progress;
    std::int32_t result = 0;
    std::wstring text;
    std::vector<std::wstring> names;
    std::vector<std::wstring> ids;
    bool isAfterOperation = false; ///< the first reading since an operation has ended
};

/// Carries events from any thread to the thread that made the queue, in order. Each event is one message to an
/// invisible window of that thread, so that they take turns with the user's input.
class DiscEventQueue {
  public:
    /// `onEvent` is called on the creating thread for every event that nobody took before; it may destroy the queue.
    /// Throws 429 where the system gives no window.
    explicit DiscEventQueue(std::function<void(DiscEvent)> onEvent);
    DiscEventQueue(const DiscEventQueue&) = delete;
    DiscEventQueue& operator=(const DiscEventQueue&) = delete;

    /// From any thread. A step of the stage whose last step still waits takes that one's place.
    void Post(DiscEvent event);
    /// Takes out the first event for which `isWanted` is true.
    std::optional<DiscEvent> Take(const std::function<bool(const DiscEvent&)>& isWanted);
    /// Waits for such an event for at most `milliseconds`. Meanwhile windows are repainted and calls of other threads
    /// answered, but no input is handled.
    std::optional<DiscEvent> WaitFor(const std::function<bool(const DiscEvent&)>& isWanted, DWORD milliseconds);
    /// No event is delivered any more.
    void Close() { onEvent_ = nullptr; }

  private:
    static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void DeliverOne();

    std::function<void(DiscEvent)> onEvent_;
    UniqueObject arrived_;
    UniqueWindow window_;
    std::mutex mutex_;
    std::deque<DiscEvent> events_;
    bool isAnnounced_ = false;
};
