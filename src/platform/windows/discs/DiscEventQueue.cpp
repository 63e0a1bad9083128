#include "platform/windows/discs/DiscEventQueue.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace {

constexpr UINT EventArrived = WM_APP;
constexpr wchar_t WindowClassName[] = L"BackupDiscEvents";

bool IsNextStepOf(const DiscEvent& event, const DiscEvent& next) {
    return event.kind == DiscEvent::Kind::Progress && next.kind == DiscEvent::Kind::Progress &&
           event.operation == next.operation && event.progress.operation == next.progress.operation &&
           event.progress.stage == next.progress.stage;
}

} // namespace

DiscEventQueue::DiscEventQueue(std::function<void(DiscEvent)> onEvent)
    : onEvent_(std::move(onEvent)), arrived_(CreateEventW(nullptr, FALSE, FALSE, nullptr)) {
    const HINSTANCE module = GetModuleHandleW(nullptr);
    static const ATOM windowClass = [module] {
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.lpfnWndProc = WindowProcedure;
        description.hInstance = module;
        description.lpszClassName = WindowClassName;
        return RegisterClassExW(&description);
    }();
    window_.Reset(
        CreateWindowExW(0, MAKEINTATOM(windowClass), L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, module, nullptr));
    // A message posted to no window would go to the posting thread, and nobody would ever be told of anything.
    if (!arrived_ || !window_) throw RuntimeError(ErrorNumber::CannotCreateObject);
    SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

void DiscEventQueue::Post(DiscEvent event) {
    std::lock_guard lock(mutex_);
    // A window that was busy is told how far the stage has come by now, not every step that it missed.
    if (!events_.empty() && IsNextStepOf(events_.back(), event))
        events_.back() = std::move(event);
    else
        events_.push_back(std::move(event));
    SetEvent(arrived_.Get());
    if (!isAnnounced_) isAnnounced_ = PostMessageW(window_.Get(), EventArrived, 0, 0) != FALSE;
}

std::optional<DiscEvent> DiscEventQueue::Take(const std::function<bool(const DiscEvent&)>& isWanted) {
    std::lock_guard lock(mutex_);
    const auto found = std::find_if(events_.begin(), events_.end(), isWanted);
    if (found == events_.end()) return std::nullopt;
    DiscEvent event = std::move(*found);
    events_.erase(found);
    return event;
}

std::optional<DiscEvent> DiscEventQueue::WaitFor(const std::function<bool(const DiscEvent&)>& isWanted,
                                                 DWORD milliseconds) {
    const ULONGLONG start = GetTickCount64();
    for (;;) {
        if (auto event = Take(isWanted)) return event;
        const ULONGLONG elapsed = GetTickCount64() - start;
        if (elapsed >= milliseconds) return std::nullopt;
        const DWORD left = milliseconds - static_cast<DWORD>(elapsed);
        const HANDLE arrived = arrived_.Get();
        if (MsgWaitForMultipleObjects(1, &arrived, FALSE, left, QS_PAINT | QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1) {
            MSG message;
            if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE))
                DispatchMessageW(&message);
        }
    }
}

void DiscEventQueue::DeliverOne() {
    DiscEvent event;
    {
        std::lock_guard lock(mutex_);
        isAnnounced_ = false;
        if (events_.empty()) return;
        event = std::move(events_.front());
        events_.pop_front();
        // Announced before the event is handled: its handler may run a message loop of its own.
        if (!events_.empty()) isAnnounced_ = PostMessageW(window_.Get(), EventArrived, 0, 0) != FALSE;
    }
    const auto onEvent = onEvent_;
    if (onEvent) onEvent(std::move(event));
}

LRESULT CALLBACK DiscEventQueue::WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != EventArrived) return DefWindowProcW(window, message, wParam, lParam);
    if (auto* queue = reinterpret_cast<DiscEventQueue*>(GetWindowLongPtrW(window, GWLP_USERDATA))) queue->DeliverOne();
    return 0;
}
