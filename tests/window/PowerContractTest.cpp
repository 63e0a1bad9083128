#include "support/PowerContract.h"
#include "platform/windows/WindowsPower.h"

#include <windows.h>

namespace {

struct WindowsPowerBench {
    WindowsPowerBench() {
        // Wine's threads begin with all that can be asked for.
        SetThreadExecutionState(ES_CONTINUOUS);
    }
    WindowsPower power;
    bool IsKeptAwake() const {
        // Only a call that sets the state tells what it was.
        const EXECUTION_STATE state = SetThreadExecutionState(ES_CONTINUOUS);
        SetThreadExecutionState(state | ES_CONTINUOUS);
        return (state & ES_SYSTEM_REQUIRED) != 0;
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, PowerContract, WindowsPowerBench);

} // namespace
