#include "support/MessageLoopContract.h"
#include "HostForm.h"
#include "shell/forms/FormMessageLoop.h"

#include <functional>
#include <utility>

namespace {

struct FormLoopBench {
    FormLoopBench() { form_.Create(nullptr); }
    FormMessageLoop loop;
    void Post(std::function<void()> steps) { form_.Post(std::move(steps)); }

  private:
    HostForm form_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Windows, MessageLoopContract, FormLoopBench);

} // namespace
