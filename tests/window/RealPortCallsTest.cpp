// What the real ports ask of the system, to the letter: Wine and most machines would give the same answer to less.
#include "ImportSwap.h"
#include "platform/RuntimeError.h"
#include "platform/Thread.h"
#include "platform/windows/WindowsConsole.h"
#include "platform/windows/WindowsDrives.h"
#include "platform/windows/WindowsEventLog.h"
#include "platform/windows/WindowsFiles.h"
#include "platform/windows/WindowsProcesses.h"
#include "platform/windows/WindowsUsbDevices.h"
#include "support/Failures.h"

#include <gtest/gtest.h>

#include <process.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

extern "C" {
extern decltype(&CreateProcessW) __imp_CreateProcessW;
extern decltype(&ReportEventW) __imp_ReportEventW;
extern decltype(&RegisterEventSourceW) __imp_RegisterEventSourceW;
extern decltype(&DeregisterEventSource) __imp_DeregisterEventSource;
extern decltype(&GetDiskFreeSpaceA) __imp_GetDiskFreeSpaceA;
extern decltype(&DeviceIoControl) __imp_DeviceIoControl;
extern decltype(&AttachConsole) __imp_AttachConsole;
extern decltype(&SetConsoleCtrlHandler) __imp_SetConsoleCtrlHandler;
extern decltype(&CreateFileW) __imp_CreateFileW;
extern decltype(&CreateDirectoryW) __imp_CreateDirectoryW;
extern decltype(&FlushFileBuffers) __imp_FlushFileBuffers;
extern decltype(&MoveFileExW) __imp_MoveFileExW;
extern decltype(&CreateMutexW) __imp_CreateMutexW;
extern decltype(&_beginthreadex) __imp__beginthreadex;
}

namespace {

struct ProcessStart {
    int count = 0;
    bool hasApplicationName = false;
    std::wstring commandLine;
    BOOL inheritsHandles = FALSE;
    DWORD flags = 0;
    bool hasOwnSurroundings = false;
    STARTUPINFOW startup = {};
};
ProcessStart seenStart;

BOOL WINAPI SeeProcessStart(LPCWSTR application, LPWSTR commandLine, LPSECURITY_ATTRIBUTES processSecurity,
                            LPSECURITY_ATTRIBUTES threadSecurity, BOOL inheritsHandles, DWORD flags, LPVOID environment,
                            LPCWSTR folder, LPSTARTUPINFOW startup, LPPROCESS_INFORMATION) {
    ++seenStart.count;
    seenStart.hasApplicationName = application != nullptr;
    seenStart.commandLine = commandLine;
    seenStart.inheritsHandles = inheritsHandles;
    seenStart.flags = flags;
    seenStart.hasOwnSurroundings =
        environment != nullptr || folder != nullptr || processSecurity != nullptr || threadSecurity != nullptr;
    seenStart.startup = *startup;
    return FALSE;
}

TEST(RealPortCalls, ArchiverIsStartedWithARecordOfSize65AndNothingElseInIt) {
    seenStart = {};
    const ImportSwap swap(&__imp_CreateProcessW, &SeeProcessStart);
    EXPECT_EQ(WindowsProcesses().Run(L"7Za.exe a"), 0);
    ASSERT_EQ(seenStart.count, 1);
    EXPECT_FALSE(seenStart.hasApplicationName);
    EXPECT_EQ(seenStart.commandLine, L"7Za.exe a");
    EXPECT_TRUE(seenStart.inheritsHandles);
    EXPECT_EQ(seenStart.flags, 0x20u);
    EXPECT_FALSE(seenStart.hasOwnSurroundings);
    STARTUPINFOW expected = {};
    expected.cb = 65;
    EXPECT_EQ(std::memcmp(&seenStart.startup, &expected, sizeof expected), 0);
}

struct LoggedEvent {
    int count = 0;
    HANDLE source = nullptr;
    WORD type = 0;
    std::wstring text;
};
LoggedEvent loggedEvent;
const HANDLE SomeSource = reinterpret_cast<HANDLE>(77);

HANDLE WINAPI GiveSource(LPCWSTR, LPCWSTR) {
    return SomeSource;
}
BOOL WINAPI TakeSource(HANDLE) {
    return TRUE;
}
BOOL WINAPI SeeEvent(HANDLE source, WORD type, WORD, DWORD, PSID, WORD textCount, DWORD, LPCWSTR* texts, LPVOID) {
    ++loggedEvent.count;
    loggedEvent.source = source;
    loggedEvent.type = type;
    for (WORD at = 0; at < textCount; ++at) loggedEvent.text += texts[at];
    return TRUE;
}

TEST(RealPortCalls, MessageReachesTheEventLogAsAnError) {
    loggedEvent = {};
    const ImportSwap give(&__imp_RegisterEventSourceW, &GiveSource);
    const ImportSwap take(&__imp_DeregisterEventSource, &TakeSource);
    const ImportSwap see(&__imp_ReportEventW, &SeeEvent);
    WindowsEventLog().WriteError(L"Erreur nº 13");
    EXPECT_EQ(loggedEvent.count, 1);
    EXPECT_EQ(loggedEvent.source, SomeSource);
    EXPECT_EQ(loggedEvent.type, EVENTLOG_ERROR_TYPE);
    EXPECT_EQ(loggedEvent.text, L"Erreur nº 13");
    WindowsEventLog().WriteError(std::wstring(40000, L'x'));
    EXPECT_EQ(loggedEvent.count, 2) << "cut to what the log takes";
}

std::wstring flushedPath;

BOOL WINAPI SeeFlush(HANDLE file) {
    wchar_t path[MAX_PATH] = {};
    GetFinalPathNameByHandleW(file, path, MAX_PATH, 0);
    flushedPath = path;
    SetLastError(ERROR_IO_DEVICE);
    return FALSE;
}

TEST(RealPortCalls, FlushIsTheDevicesAndItsFailureIsOne) {
    const std::filesystem::path file = std::filesystem::temp_directory_path() / L"RealPortCalls.txt";
    std::ofstream(file) << "x";
    flushedPath.clear();
    const ImportSwap swap(&__imp_FlushFileBuffers, &SeeFlush);
    EXPECT_EQ(NumberThrownBy([&] { WindowsFiles().Flush(file.wstring()); }), 57);
    EXPECT_TRUE(flushedPath.ends_with(L"RealPortCalls.txt")) << flushedPath;
    std::filesystem::remove(file);
}

DWORD moveFlags = 0;

BOOL WINAPI SeeMove(LPCWSTR, LPCWSTR, DWORD flags) {
    moveFlags = flags;
    return TRUE;
}

TEST(RealPortCalls, FileHasItsNewNameOnTheDeviceAndTakesNobodysPlace) {
    const ImportSwap swap(&__imp_MoveFileExW, &SeeMove);
    WindowsFiles().Rename(L"E:\\a", L"E:\\b");
    EXPECT_EQ(moveFlags, static_cast<DWORD>(MOVEFILE_WRITE_THROUGH));
}

int foldersRefused = 0;

/// As the system does while another program still holds the deleted folder of that name.
BOOL WINAPI RefuseTwoFolders(LPCWSTR, LPSECURITY_ATTRIBUTES) {
    if (++foldersRefused > 2) return TRUE;
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

TEST(RealPortCalls, FolderIsMadeOnceItsNameIsReleased) {
    foldersRefused = 0;
    const ImportSwap swap(&__imp_CreateDirectoryW, &RefuseTwoFolders);
    EXPECT_EQ(NumberThrownBy([] { WindowsFiles().CreateFolder(L"C:\\zip"); }), 0);
    EXPECT_EQ(foldersRefused, 3);
}

DWORD mutexError = 0;
std::wstring mutexName;

HANDLE WINAPI RefuseMutex(LPSECURITY_ATTRIBUTES, BOOL, LPCWSTR name) {
    mutexName = name;
    SetLastError(mutexError);
    return nullptr;
}

TEST(RealPortCalls, DriveIsClaimedForAllSessionsAndAClaimThatCannotBeMadeIsNoOtherCopys) {
    const ImportSwap swap(&__imp_CreateMutexW, &RefuseMutex);
    mutexError = ERROR_ACCESS_DENIED;
    EXPECT_EQ(WindowsDrives().Claim(L"e:\\"), nullptr) << "another account's";
    EXPECT_EQ(mutexName, L"Global\\Backup.Medium.E");
    mutexError = ERROR_NOT_ENOUGH_MEMORY;
    EXPECT_EQ(NumberThrownBy([] { WindowsDrives().Claim(L"E:"); }), 7);
}

BOOL WINAPI SayClusters(LPCSTR root, LPDWORD sectorsPerCluster, LPDWORD bytesPerSector, LPDWORD freeClusters,
                        LPDWORD totalClusters) {
    if (std::string(root) != "C:\\") return FALSE;
    *sectorsPerCluster = 8;
    *bytesPerSector = 512;
    *freeClusters = 3'000'000'000;
    *totalClusters = 4'000'000'000;
    return TRUE;
}

TEST(RealPortCalls, FreeSpaceIsTheFreeClustersTimesTheClusterSize) {
    const ImportSwap swap(&__imp_GetDiskFreeSpaceA, &SayClusters);
    EXPECT_EQ(WindowsDrives().FreeClusterBytes(L"C:\\"), 3e9 * 4096);
    EXPECT_EQ(WindowsDrives().FreeClusterBytes(L"C:"), 3e9 * 4096);
}

DWORD askedCode = 0;
DWORD askedBytes = 0;
DWORD offeredBytes = 0;
bool isQueryAllZero = false;

BOOL WINAPI DescribeUsbDisk(HANDLE, DWORD code, LPVOID query, DWORD queryBytes, LPVOID descriptor,
                            DWORD descriptorBytes, LPDWORD, LPOVERLAPPED) {
    askedCode = code;
    askedBytes = queryBytes;
    offeredBytes = descriptorBytes;
    const auto* bytes = static_cast<const char*>(query);
    isQueryAllZero = std::string(bytes, queryBytes) == std::string(queryBytes, '\0');
    std::memset(descriptor, 0x55, descriptorBytes);
    const std::uint32_t usb = 7;
    std::memcpy(static_cast<char*>(descriptor) + 28, &usb, sizeof usb);
    return TRUE;
}

TEST(RealPortCalls, BusTypeIsTheNumberAtByte28OfTheDescriptor) {
    WindowsUsbDevices devices;
    const auto device = devices.Open(L"C:");
    if (!device) GTEST_SKIP() << "this machine's disk C: cannot be opened as a device";
    const ImportSwap swap(&__imp_DeviceIoControl, &DescribeUsbDisk);
    EXPECT_EQ(device->BusType(0x2D1400), 7u);
    EXPECT_EQ(askedCode, 0x2D1400u);
    EXPECT_EQ(askedBytes, 12u);
    EXPECT_TRUE(isQueryAllZero);
    EXPECT_EQ(offeredBytes, 551u);
}

bool isAttached = false;
bool isControlHandled = false;

/// As the system does it: a console that is attached takes away the handlers that were there.
BOOL WINAPI AttachAndForgetHandlers(DWORD process) {
    if (process != ATTACH_PARENT_PROCESS || isAttached) return FALSE;
    isAttached = true;
    isControlHandled = false;
    return TRUE;
}
BOOL WINAPI SeeHandler(PHANDLER_ROUTINE routine, BOOL isAdded) {
    isControlHandled = routine != nullptr && isAdded;
    return TRUE;
}
HANDLE WINAPI OpenNothing(LPCWSTR, DWORD, DWORD, LPSECURITY_ATTRIBUTES, DWORD, DWORD, HANDLE) {
    return INVALID_HANDLE_VALUE;
}

/// A program without the standard handle `id`, as one with windows is started by hand.
class WithoutStandardHandle {
  public:
    explicit WithoutStandardHandle(DWORD id) : id_(id), before_(GetStdHandle(id)) { SetStdHandle(id, nullptr); }
    ~WithoutStandardHandle() { SetStdHandle(id_, before_); }
    WithoutStandardHandle(const WithoutStandardHandle&) = delete;
    WithoutStandardHandle& operator=(const WithoutStandardHandle&) = delete;

  private:
    DWORD id_;
    HANDLE before_;
};

class ConsoleAttaching : public testing::Test {
  protected:
    ConsoleAttaching() { isAttached = isControlHandled = false; }

    const ImportSwap<decltype(&AttachConsole)> attach_{&__imp_AttachConsole, &AttachAndForgetHandlers};
    const ImportSwap<decltype(&SetConsoleCtrlHandler)> see_{&__imp_SetConsoleCtrlHandler, &SeeHandler};
    const ImportSwap<decltype(&CreateFileW)> open_{&__imp_CreateFileW, &OpenNothing};
};

TEST_F(ConsoleAttaching, ControlKeysAreStillTakenAfterTheOutputsConsoleWasAttached) {
    const WithoutStandardHandle noOutput(STD_OUTPUT_HANDLE);
    const WindowsConsole console;
    EXPECT_TRUE(isAttached);
    EXPECT_TRUE(isControlHandled);
}

TEST_F(ConsoleAttaching, ControlKeysAreStillTakenAfterTheInputsConsoleWasAttached) {
    WindowsConsole console;
    isAttached = false;
    const WithoutStandardHandle noInput(STD_INPUT_HANDLE);
    EXPECT_THROW(console.Input(), RuntimeError);
    EXPECT_TRUE(isAttached);
    EXPECT_TRUE(isControlHandled);
}

uintptr_t __cdecl MakeNoThread(void*, unsigned, _beginthreadex_proc_type, void*, unsigned, unsigned*) {
    errno = EAGAIN;
    return 0;
}

TEST(RealPortCalls, AThreadThatCannotBeMadeIsAFailureAndLeavesNothing) {
    bool hasRun = false;
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> seen = held;
    const ImportSwap swap(&__imp__beginthreadex, &MakeNoThread);
    try {
        StartThread([&hasRun, held = std::move(held)] { hasRun = true; });
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.code(), std::errc::resource_unavailable_try_again);
    }
    EXPECT_FALSE(hasRun);
    EXPECT_TRUE(seen.expired());
}

} // namespace
