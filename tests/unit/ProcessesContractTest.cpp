// What every implementation of Processes does; run against the stand-in, and under Windows against the real one too.
#include "support/Failures.h"
#include "support/FakeProcesses.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsProcesses.h"
#endif

namespace {

/// The command line of a program that ends with `exitCode`.
std::wstring Ending(int exitCode) {
    return L"cmd.exe /c exit " + std::to_wstring(exitCode);
}

struct FakeProcessesBench {
    FakeProcesses processes;
    void WillEndWith(int exitCode) { processes.exitCodes.push_back(exitCode); }
    void WillNotStart() { processes.canStart = false; }
};

#ifdef _WIN32
struct WindowsProcessesBench {
    WindowsProcesses processes;
    void WillEndWith(int) {}
    void WillNotStart() {}
};
using Benches = testing::Types<FakeProcessesBench, WindowsProcessesBench>;
#else
using Benches = testing::Types<FakeProcessesBench>;
#endif

template<typename Bench>
class ProcessesContract : public testing::Test {
  protected:
    Bench bench_;
    Processes& processes_ = bench_.processes;
};

TYPED_TEST_SUITE(ProcessesContract, Benches);

TYPED_TEST(ProcessesContract, RunGivesTheExitCode) {
    for (const int exitCode : {0, 2, 255}) {
        this->bench_.WillEndWith(exitCode);
        EXPECT_EQ(this->processes_.Run(Ending(exitCode)), exitCode);
    }
}

TYPED_TEST(ProcessesContract, AProgramThatCannotStartEndsWithZero) {
    this->bench_.WillNotStart();
    EXPECT_EQ(this->processes_.Run(L"C:\\no\\such\\program.exe a b"), 0);
}

TYPED_TEST(ProcessesContract, StartingWhatIsNotThereIsError53) {
    this->bench_.WillNotStart();
    EXPECT_EQ(NumberThrownBy([&] { this->processes_.Start(L"C:\\no\\such\\program.exe"); }), 53);
}

TYPED_TEST(ProcessesContract, StartDoesNotThrowForAProgramThatIsThere) {
    EXPECT_NO_THROW(this->processes_.Start(Ending(3)));
}

TYPED_TEST(ProcessesContract, OpeningWhatIsNotThereIsNoFailure) {
    this->bench_.WillNotStart();
    EXPECT_NO_THROW(this->processes_.Open(L"C:\\no\\such document.pdf", L"C:\\no"));
}

} // namespace
