#include "ui/Subclass.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace ui {

namespace {

/// Who stands before a window, by their numbers, and its procedure from before the first of them.
struct Front {
    WNDPROC behind = nullptr;
    std::map<std::uint64_t, Subclass*> takers;
};

// The system's own list of those before a window is a property of it, looked up for each message once by each of them:
// that takes longer than most of what the messages ask for.
std::unordered_map<HWND, Front>& Fronts() {
    static std::unordered_map<HWND, Front> fronts;
    return fronts;
}

} // namespace

void Subclass::Attach(HWND window, Steps steps) {
    static std::uint64_t lastNumber = 0;
    Detach();
    if (!IsWindow(window)) return;
    auto shared = std::make_shared<const Steps>(std::move(steps));
    Front& front = Fronts()[window];
    front.takers.emplace(++lastNumber, this);
    window_ = window;
    number_ = lastNumber;
    steps_ = std::move(shared);
    if (front.behind != nullptr) return;
    front.behind =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Procedure)));
    if (front.behind == nullptr) Detach();
}

void Subclass::Detach() {
    HWND window = std::exchange(window_, nullptr);
    steps_.reset();
    const auto front = Fronts().find(window);
    if (front == Fronts().end()) return;
    WNDPROC behind = front->second.behind;
    front->second.takers.erase(number_);
    if (!front->second.takers.empty()) return;
    if (behind != nullptr) {
        // Another procedure that has come before this one hands its messages on to it, as long as the window lives.
        if (GetWindowLongPtrW(window, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(Procedure)) return;
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(behind));
    }
    Fronts().erase(window);
}

LRESULT CALLBACK Subclass::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto front = Fronts().find(window);
    if (front == Fronts().end()) return DefWindowProcW(window, message, wParam, lParam);
    const WindowMessage taken{window, message, wParam, lParam, UINT64_MAX, front->second.behind};
    const LRESULT answer = taken.PassOn();
    // Its number may soon be another window's.
    if (message == WM_NCDESTROY) Fronts().erase(window);
    return answer;
}

LRESULT WindowMessage::PassOn() const {
    const auto front = Fronts().find(window);
    if (front != Fronts().end()) {
        const auto& takers = front->second.takers;
        if (auto next = takers.lower_bound(taker); next != takers.begin()) {
            Subclass& subclass = *(--next)->second;
            WindowMessage handed = *this;
            handed.taker = next->first;
            // The steps may end in the owner's destruction, and still have to come to their own end.
            const auto steps = subclass.steps_;
            if (id == WM_NCDESTROY) subclass.Detach();
            return (*steps)(handed);
        }
    }
    return CallWindowProcW(behind, window, id, wParam, lParam);
}

} // namespace ui
