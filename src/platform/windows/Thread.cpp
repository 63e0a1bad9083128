// A thread of the system. One of the thread library's (winpthreads 10, behind std::thread) that is detached while it
// starts was lost once in about 130 times: its steps never ran, or the program fell at address zero.

#include "platform/Thread.h"

#include "win32/UniqueHandle.h"

#include <process.h>

#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

namespace {

using Steps = std::function<void()>;

unsigned __stdcall RunSteps(void* parameter) noexcept {
    const std::unique_ptr<Steps> steps(static_cast<Steps*>(parameter));
    (*steps)();
    return 0;
}

} // namespace

void StartThread(std::function<void()> steps) {
    auto parameter = std::make_unique<Steps>(std::move(steps));
    const UniqueObject thread(
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, RunSteps, parameter.get(), 0, nullptr)));
    if (!thread) throw std::system_error(errno, std::generic_category());
    static_cast<void>(parameter.release());
}
