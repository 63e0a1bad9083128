// The disc writer on a system that has nothing left to give.
#include "BurnerBench.h"

#include "platform/RuntimeError.h"
#include "window/ImportSwap.h"

#include <gmock/gmock.h>

#include <process.h>

#include <cerrno>
#include <cstdint>

// The pointers through which this program calls these.
extern "C" {
extern decltype(&CreateEventW) __imp_CreateEventW;
extern decltype(&_beginthreadex) __imp__beginthreadex;
}

namespace {

decltype(&CreateEventW) realCreateEvent = nullptr;
int eventsBeforeTheRefusedOne = 0;

HANDLE WINAPI GiveAllEventsButOne(LPSECURITY_ATTRIBUTES security, BOOL isManual, BOOL isSet, LPCWSTR name) {
    return eventsBeforeTheRefusedOne-- != 0 ? realCreateEvent(security, isManual, isSet, name) : nullptr;
}

std::uintptr_t __cdecl GiveNoThread(void*, unsigned, _beginthreadex_proc_type, void*, unsigned, unsigned*) {
    errno = EAGAIN;
    return 0;
}

/// The number of the error with which a writer is refused; 0 when it is made.
std::int32_t ErrorOfMaking(BurnerBench& bench) {
    try {
        bench.Writers().Create(DiscFamily::Cd);
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}

constexpr auto CannotCreate = static_cast<std::int32_t>(ErrorNumber::CannotCreateObject);

TEST(ScarceSystem, WriterWithoutOneOfItsEventsIsNotMade) {
    BurnerBench bench;
    realCreateEvent = __imp_CreateEventW;
    const ImportSwap swap(&__imp_CreateEventW, &GiveAllEventsButOne);
    for (int event = 0; event < 3; ++event) {
        SCOPED_TRACE(event);
        eventsBeforeTheRefusedOne = event;
        EXPECT_EQ(ErrorOfMaking(bench), CannotCreate);
    }
    eventsBeforeTheRefusedOne = 3;
    EXPECT_EQ(ErrorOfMaking(bench), 0);
}

TEST(ScarceSystem, WriterWithoutAThreadIsNotMade) {
    BurnerBench bench;
    const ImportSwap swap(&__imp__beginthreadex, &GiveNoThread);
    EXPECT_EQ(ErrorOfMaking(bench), CannotCreate);
}

} // namespace
