#include "platform/windows/MemoryEnd.h"

#include <cstddef>

namespace {

bool isNextRefused = false;

void ThrowAndCatch() {
    try {
        throw 0;
    } catch (int) {
        // What it took stays ready.
    }
}

} // namespace

// The linker gives both their names.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" void* __real_malloc(std::size_t size);

extern "C" void* __wrap_malloc(std::size_t size) {
    if (!isNextRefused) return __real_malloc(size);
    isNextRefused = false;
    return nullptr;
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

// The runtime keeps memory in reserve for exceptions, behind a lock that is made when it is first taken, out of
// ordinary memory. Where that has ended, the lock fails with an exception, which needs the reserve: the stack
// overflows, and the program is gone without a word.
void PrepareToThrowWithoutMemory() {
    // What each thread keeps of its exceptions is no part of the reserve.
    ThrowAndCatch();
    // The next one is made from the reserve, and takes its lock while there is memory to make it.
    isNextRefused = true;
    ThrowAndCatch();
}
