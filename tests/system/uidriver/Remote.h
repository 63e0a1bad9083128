#pragma once

#include <windows.h>

#include <string>

namespace uidriver {

/// Sends a message to a window of another process and waits for the answer, a few seconds at most; throws RequestError
/// "busy" when the window does not answer in that time, as while the program waits for the archiver.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

/// Puts a message into the window's queue, so that a handler that opens a modal box does not hold the caller up.
void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

std::wstring TextOf(HWND window);
std::wstring ClassOf(HWND window);

/// The notification that a control sends to its parent when a person uses it.
void PostNotification(HWND control, WORD code);

/// A press and a release of the left button at a point of the window, as the mouse would send them.
void PostClick(HWND window, POINT point, bool isDouble, WPARAM modifiers = 0);

/// A block of memory in the process that owns a window; list views read and write their item records there.
class RemoteBlock {
  public:
    RemoteBlock(HWND window, std::size_t sizeBytes);
    ~RemoteBlock();
    RemoteBlock(const RemoteBlock&) = delete;
    RemoteBlock& operator=(const RemoteBlock&) = delete;

    void Write(std::size_t offsetBytes, const void* data, std::size_t sizeBytes);
    void Read(std::size_t offsetBytes, void* data, std::size_t sizeBytes) const;
    LPARAM Address(std::size_t offsetBytes = 0) const;

    /// Leaves the block to the other process.
    void Release() { block_ = nullptr; }

  private:
    HANDLE process_ = nullptr;
    void* block_ = nullptr;
};

} // namespace uidriver
