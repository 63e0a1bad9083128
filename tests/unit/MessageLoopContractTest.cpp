#include "support/MessageLoopContract.h"
#include "support/FakeMessageLoop.h"

#include <utility>

namespace {

struct FakeLoopBench {
    FakeMessageLoop loop;
    void Post(std::function<void()> steps) {
        loop.handler = [this, steps = std::move(steps)] {
            // What these steps let run is what else is pending: nothing.
            const auto now = std::exchange(loop.handler, nullptr);
            steps();
        };
    }
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, MessageLoopContract, FakeLoopBench);

} // namespace
