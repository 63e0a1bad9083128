#include "platform/windows/SingleInstance.h"
#include "ImportSwap.h"
#include "TestFormIds.h"
#include "WaitFor.h"
#include "ui/Form.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

extern "C" {
extern decltype(&Sleep) __imp_Sleep;
extern decltype(&MessageBoxW) __imp_MessageBoxW;
}

namespace {

class MarkedForm : public ui::Form {
  public:
    MarkedForm() : ui::Form(IDD_TestForm) {
        Create();
        Show();
        ui::RunPendingMessages();
    }

  protected:
    void OnUnhandledException() noexcept override {}
};

TEST(SingleInstance, SecondCopyOfAnInstallationIsNotTheFirstWhateverTheCaseOfItsPath) {
    const SingleInstance first(L"C:\\Valcoreaux\\Backup");
    EXPECT_TRUE(first.IsFirst());
    EXPECT_FALSE(SingleInstance(L"C:\\VALCOREAUX\\backup").IsFirst());
}

TEST(SingleInstance, OtherNamesOfTheSameFolderAreTheSameInstallation) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / L"One installation";
    std::filesystem::create_directories(folder);
    const SingleInstance first(folder.wstring());
    EXPECT_TRUE(first.IsFirst());
    EXPECT_FALSE(SingleInstance(folder.wstring() + L"\\.").IsFirst());
    EXPECT_FALSE(SingleInstance(L"\\\\?\\" + folder.wstring()).IsFirst());
    const std::filesystem::path other = folder / L"Another";
    std::filesystem::create_directories(other);
    EXPECT_TRUE(SingleInstance(other.wstring()).IsFirst());
    std::filesystem::remove_all(folder);
}

TEST(SingleInstance, CopiesInDifferentFoldersDoNotMeet) {
    const SingleInstance first(L"C:\\Valcoreaux\\Backup");
    EXPECT_TRUE(SingleInstance(L"D:\\Valcoreaux\\Backup").IsFirst());
}

TEST(SingleInstance, CopyAfterTheEndOfTheFirstIsFirst) {
    auto first = std::make_unique<SingleInstance>(L"C:\\Valcoreaux\\Backup");
    first.reset();
    EXPECT_TRUE(SingleInstance(L"C:\\Valcoreaux\\Backup").IsFirst());
}

TEST(SingleInstance, SecondCopyBringsTheFirstToTheFront) {
    MarkedForm marked;
    const SingleInstance first(L"C:\\Valcoreaux\\Backup");
    first.Mark(marked.Handle());
    SingleInstance second(L"C:\\Valcoreaux\\Backup");
    MarkedForm other;
    // The window manager's word that it has given a window the focus may come late and take it back from another.
    ASSERT_TRUE(WaitFor([&] {
        SetForegroundWindow(other.Handle());
        ui::RunPendingMessages();
        return GetForegroundWindow() == other.Handle();
    }));
    EXPECT_TRUE(WaitFor([&] {
        second.ShowFirst();
        ui::RunPendingMessages();
        return GetForegroundWindow() == marked.Handle();
    }));
}

HWND windowToMark = nullptr;
const SingleInstance* firstCopy = nullptr;
DWORD waitedMilliseconds = 0;
int boxesShown = 0;

void WINAPI WaitWhileTheFirstCopyLoads(DWORD milliseconds) {
    waitedMilliseconds += milliseconds;
    if (firstCopy != nullptr && waitedMilliseconds >= 1000) firstCopy->Mark(windowToMark);
}
int WINAPI CountBox(HWND, LPCWSTR, LPCWSTR, UINT) {
    return ++boxesShown;
}

TEST(SingleInstance, SecondCopyWaitsForAFirstThatIsStillMakingItsWindow) {
    waitedMilliseconds = 0;
    boxesShown = 0;
    const ImportSwap wait(&__imp_Sleep, &WaitWhileTheFirstCopyLoads);
    const ImportSwap count(&__imp_MessageBoxW, &CountBox);
    MarkedForm marked;
    const SingleInstance first(L"C:\\Valcoreaux\\Backup");
    firstCopy = &first;
    windowToMark = marked.Handle();
    ShowWindow(marked.Handle(), SW_MINIMIZE);
    SingleInstance(L"C:\\Valcoreaux\\Backup").ShowFirst();
    firstCopy = nullptr;
    EXPECT_EQ(boxesShown, 0);
    EXPECT_FALSE(IsIconic(marked.Handle()));
}

TEST(SingleInstance, SecondCopySaysThatTheFirstRunsWhenThereIsNoWindowForSomeSeconds) {
    waitedMilliseconds = 0;
    boxesShown = 0;
    const ImportSwap wait(&__imp_Sleep, &WaitWhileTheFirstCopyLoads);
    const ImportSwap count(&__imp_MessageBoxW, &CountBox);
    const SingleInstance first(L"C:\\Valcoreaux\\Backup");
    SingleInstance(L"C:\\Valcoreaux\\Backup").ShowFirst();
    EXPECT_EQ(boxesShown, 1);
    EXPECT_EQ(waitedMilliseconds, 3000u);
}

TEST(SingleInstance, MinimizedFirstCopyIsRestored) {
    MarkedForm marked;
    const SingleInstance first(L"C:\\Valcoreaux\\Backup");
    first.Mark(marked.Handle());
    ShowWindow(marked.Handle(), SW_MINIMIZE);
    ASSERT_TRUE(IsIconic(marked.Handle()));
    SingleInstance(L"C:\\Valcoreaux\\Backup").ShowFirst();
    EXPECT_FALSE(IsIconic(marked.Handle()));
}

} // namespace
