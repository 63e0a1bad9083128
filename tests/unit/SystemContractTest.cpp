// What every implementation of System does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeSystem.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsSystem.h"

#include <filesystem>
#include <fstream>
#endif

namespace {

struct FakeSystemBench {
    FakeSystemBench() { system.SetEnvironment(L"Temp", L"C:\\Temp"); }
    FakeSystem system;
    std::wstring SettingsFile(const std::wstring& value) {
        system.SetProfileString(L"C:\\s.ini", L"Section", L"Key", value);
        return L"C:\\s.ini";
    }
};

#ifdef _WIN32
struct WindowsSystemBench {
    WindowsSystem system;
    std::filesystem::path file = std::filesystem::temp_directory_path() / "SystemContract.ini";

    std::wstring SettingsFile(const std::wstring& value) {
        std::ofstream(file, std::ios::binary)
            << "[Section]\r\nKey=" << std::string(value.begin(), value.end()) << "\r\n";
        return file.wstring();
    }
    ~WindowsSystemBench() {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
};
using Benches = testing::Types<FakeSystemBench, WindowsSystemBench>;
#else
using Benches = testing::Types<FakeSystemBench>;
#endif

template<typename Bench>
class SystemContract : public testing::Test {
  protected:
    Bench bench_;
    System& system_ = bench_.system;
};

TYPED_TEST_SUITE(SystemContract, Benches);

TYPED_TEST(SystemContract, EnvironmentNamesIgnoreCase) {
    ASSERT_TRUE(this->system_.Environment(L"Temp").has_value());
    EXPECT_EQ(this->system_.Environment(L"TEMP"), this->system_.Environment(L"temp"));
    EXPECT_FALSE(this->system_.Environment(L"Temp")->empty());
}

TYPED_TEST(SystemContract, AVariableThatIsNotSetIsNothing) {
    EXPECT_FALSE(this->system_.Environment(L"NoSuchVariableAnywhere").has_value());
}

TYPED_TEST(SystemContract, VersionIsOfTheNtFamily) {
    EXPECT_EQ(this->system_.Version().platform, 2u);
    EXPECT_GE(this->system_.Version().major, 5u);
}

TYPED_TEST(SystemContract, LocaleTextsAreThere) {
    EXPECT_FALSE(this->system_.UserLanguageName().empty());
    EXPECT_FALSE(this->system_.DecimalSeparator().empty());
    for (int month = 1; month <= 12; ++month) EXPECT_FALSE(this->system_.AbbreviatedMonth(month).empty());
    EXPECT_NE(this->system_.AbbreviatedMonth(1), this->system_.AbbreviatedMonth(12));
}

TYPED_TEST(SystemContract, ProfileStringIsReadWhateverTheCaseOfItsNames) {
    const std::wstring file = this->bench_.SettingsFile(L"20001");
    EXPECT_EQ(this->system_.ProfileString(file, L"Section", L"Key"), L"20001");
    EXPECT_EQ(this->system_.ProfileString(file, L"SECTION", L"KEY"), L"20001");
}

TYPED_TEST(SystemContract, MissingProfileStringIsEmpty) {
    const std::wstring file = this->bench_.SettingsFile(L"1");
    EXPECT_EQ(this->system_.ProfileString(file, L"Section", L"Other"), L"");
    EXPECT_EQ(this->system_.ProfileString(file, L"Other", L"Key"), L"");
    EXPECT_EQ(this->system_.ProfileString(L"C:\\no\\such.ini", L"Section", L"Key"), L"");
}

TYPED_TEST(SystemContract, ProfileStringIsCutTo254Characters) {
    const std::wstring file = this->bench_.SettingsFile(std::wstring(300, L'x'));
    EXPECT_EQ(this->system_.ProfileString(file, L"Section", L"Key"), std::wstring(254, L'x'));
}

TYPED_TEST(SystemContract, FoldersHaveNoTrailingBackslash) {
    EXPECT_FALSE(this->system_.ProfileFolder().empty());
    EXPECT_FALSE(this->system_.ProfileFolder().ends_with(L'\\'));
    EXPECT_FALSE(this->system_.ProgramFolder().empty());
    EXPECT_FALSE(this->system_.ProgramFolder().ends_with(L'\\'));
}

TYPED_TEST(SystemContract, AccountHasAName) {
    EXPECT_FALSE(this->system_.AccountName().empty());
}

TYPED_TEST(SystemContract, NowIsADate) {
    const LocalTime now = this->system_.Now();
    EXPECT_GE(now.year, 2024);
    EXPECT_GE(now.month, 1);
    EXPECT_LE(now.month, 12);
    EXPECT_GE(now.day, 1);
    EXPECT_LE(now.day, 31);
}

TYPED_TEST(SystemContract, SleepLetsTimePass) {
    const double before = this->system_.SecondsSinceMidnight();
    this->system_.Sleep(30);
    const double after = this->system_.SecondsSinceMidnight();
    const bool isPastMidnight = after < before;
    EXPECT_TRUE(isPastMidnight || after - before >= 0.02) << before << " then " << after;
}

TYPED_TEST(SystemContract, SecondsSinceMidnightAreThoseOfOneDay) {
    EXPECT_GE(this->system_.SecondsSinceMidnight(), 0);
    EXPECT_LT(this->system_.SecondsSinceMidnight(), 24 * 60 * 60);
}

TYPED_TEST(SystemContract, KeepAwakeGivesAHold) {
    EXPECT_NE(this->system_.KeepAwake(), nullptr);
}

TEST(FakeSystem, CountsHoldsThatLive) {
    FakeSystem system;
    {
        const auto hold = system.KeepAwake();
        EXPECT_EQ(system.awakeHolds, 1);
    }
    EXPECT_EQ(system.awakeHolds, 0);
    EXPECT_EQ(system.awakeHoldsTaken, 1);
}

} // namespace
