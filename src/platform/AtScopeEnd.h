#pragma once

#include <utility>

/// Does something when its scope is left, however that happens. The action must not throw.
template<class Action>
class AtScopeEnd {
  public:
    explicit AtScopeEnd(Action action) : action_(std::move(action)) {}
    // NOLINTNEXTLINE(bugprone-exception-escape): that what is given does not throw is its giver's to see to
    ~AtScopeEnd() { action_(); }
    AtScopeEnd(const AtScopeEnd&) = delete;
    AtScopeEnd& operator=(const AtScopeEnd&) = delete;

  private:
    Action action_;
};

/// Calls `steps` and then `ending`, whether the steps threw or not. The ending may throw as well: that is what comes
/// out then.
template<class Steps, class Ending>
void WithEnding(Steps steps, Ending ending) {
    try {
        steps();
    } catch (...) {
        ending();
        throw;
    }
    ending();
}
