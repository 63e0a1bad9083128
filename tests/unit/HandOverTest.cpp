#include "backup/HandOver.h"

#include "support/FakeMainWindow.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

/// Writes down what it is given.
struct RecordingWindow {
    std::vector<std::wstring> calls;
    MainWindow* parent = nullptr;

    void SetMedia(Medium medium) { calls.push_back(L"medium " + std::to_wstring(static_cast<int>(medium))); }
    void SetParent(MainWindow& window) {
        calls.emplace_back(L"parent");
        parent = &window;
    }
    void SetDrive(const std::wstring& drive) { calls.push_back(L"drive " + drive); }
};

using Calls = std::vector<std::wstring>;

TEST(HandOver, GivesADiskItsMediumThenTheParentThenTheDrive) {
    RecordingWindow window;
    FakeMainWindow parent;
    HandOver(window, Medium::ExternalDisk, parent, L"J:\\");
    EXPECT_EQ(window.calls, (Calls{L"medium 3", L"parent", L"drive J:\\"}));
    EXPECT_EQ(window.parent, &parent);
}

TEST(HandOver, GivesADiscNoDrive) {
    RecordingWindow window;
    FakeMainWindow parent;
    HandOver(window, Medium::Dvd, parent, std::nullopt);
    EXPECT_EQ(window.calls, (Calls{L"medium 1", L"parent"}));
}

} // namespace
