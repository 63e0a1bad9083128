// What every implementation of EventLog does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeEventLog.h"

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include "platform/windows/WindowsEventLog.h"
#endif

namespace {

#ifdef _WIN32
using Logs = testing::Types<FakeEventLog, WindowsEventLog>;
#else
using Logs = testing::Types<FakeEventLog>;
#endif

template<typename Log>
class EventLogContract : public testing::Test {
  protected:
    Log log_;
};

TYPED_TEST_SUITE(EventLogContract, Logs);

TYPED_TEST(EventLogContract, NoTextIsAFailure) {
    EventLog& log = this->log_;
    // The second is longer than an entry may be.
    for (const std::wstring& text : {std::wstring(), std::wstring(40000, L'x'), std::wstring(L"été %1 %n\r\n\"")})
        EXPECT_NO_THROW(log.WriteError(text)) << text.size();
}

TEST(FakeEventLog, KeepsWhatWasWritten) {
    FakeEventLog log;
    log.WriteError(L"a");
    log.WriteError(L"");
    EXPECT_EQ(log.errors, (std::vector<std::wstring>{L"a", L""}));
}

} // namespace
