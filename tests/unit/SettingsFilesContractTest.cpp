// What every implementation of SettingsFiles does; run against the stand-in, and under Windows against the real one
// too.
#include "support/FakeSettingsFiles.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/windows/WindowsSettingsFiles.h"

#include <filesystem>
#include <fstream>
#endif

namespace {

struct FakeSettingsBench {
    FakeSettingsFiles side;
    std::wstring File(const std::wstring& value) {
        side.Set(L"C:\\s.ini", L"Section", L"Key", value);
        return L"C:\\s.ini";
    }
};

#ifdef _WIN32
struct WindowsSettingsBench {
    WindowsSettingsFiles side;
    std::filesystem::path file = std::filesystem::temp_directory_path() / "SettingsContract.ini";

    std::wstring File(const std::wstring& value) {
        std::ofstream(file, std::ios::binary)
            << "[Section]\r\nKey=" << std::string(value.begin(), value.end()) << "\r\n";
        return file.wstring();
    }
    ~WindowsSettingsBench() {
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
};
using Benches = testing::Types<FakeSettingsBench, WindowsSettingsBench>;
#else
using Benches = testing::Types<FakeSettingsBench>;
#endif

template<typename Bench>
class SettingsFilesContract : public testing::Test {
  protected:
    Bench bench_;
    const SettingsFiles& settings_ = bench_.side;
};

TYPED_TEST_SUITE(SettingsFilesContract, Benches);

TYPED_TEST(SettingsFilesContract, AValueIsReadWhateverTheCaseOfItsNames) {
    const std::wstring file = this->bench_.File(L"20001");
    EXPECT_EQ(this->settings_.Value(file, L"Section", L"Key"), L"20001");
    EXPECT_EQ(this->settings_.Value(file, L"SECTION", L"KEY"), L"20001");
}

TYPED_TEST(SettingsFilesContract, WhatIsMissingIsEmpty) {
    const std::wstring file = this->bench_.File(L"1");
    EXPECT_EQ(this->settings_.Value(file, L"Section", L"Other"), L"");
    EXPECT_EQ(this->settings_.Value(file, L"Other", L"Key"), L"");
    EXPECT_EQ(this->settings_.Value(L"C:\\no\\such.ini", L"Section", L"Key"), L"");
}

TYPED_TEST(SettingsFilesContract, AValueIsCutTo254Characters) {
    const std::wstring file = this->bench_.File(std::wstring(300, L'x'));
    EXPECT_EQ(this->settings_.Value(file, L"Section", L"Key"), std::wstring(254, L'x'));
}

} // namespace
