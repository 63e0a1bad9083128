#pragma once

#include "platform/windows/discs/ImapiDiscWriter.h"

#include <windows.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>

/// Registers a copy of the virtual burner, with no drives, for this test program's machine. False, with the reason on
/// the standard output, where that must not or cannot be done.
bool RegisterVirtualBurner();

/// Objects and connections that the virtual burner counts as alive.
long LiveBurnerObjects();

/// Runs the calling thread's messages.
class TestMessageLoop : public MessageLoop {
  public:
    void RunPending() override;
    void SetPointer(Pointer) override {}
    int runs = 0;
};

/// The virtual burner's drives, laid out anew for each test: G: and H: write CDs, K: writes CDs and DVDs in fact but is
/// given for DVDs only. What a drive or its disc does is changed through its settings.
class BurnerBench {
  public:
    using Settings = std::map<std::string, std::string>;

    BurnerBench();
    ~BurnerBench();
    BurnerBench(const BurnerBench&) = delete;
    BurnerBench& operator=(const BurnerBench&) = delete;

    DiscWriters& Writers() { return writers_; }
    TestMessageLoop& Loop() { return loop_; }
    void Insert(DiscFamily family, int drive, MediaKind kind);
    void TakeOut(DiscFamily family, int drive);
    std::wstring MakeFile(const std::wstring& name, std::size_t sizeBytes);
    void SlowDown();
    void RunUntil(const std::function<bool()>& isDone) { RunFor(isDone, 15000); }
    void RunAWhile() {
        RunFor([] { return false; }, 1500);
    }

    /// Waits as a busy window does, without handling a message; false when `isDone` does not come about.
    static bool WaitBusy(const std::function<bool()>& isDone);

    /// By letter.
    static void SetDrive(wchar_t letter, const Settings& changes);
    static void SetDisc(wchar_t letter, const Settings& changes);
    static void InsertDisc(wchar_t letter, const Settings& disc);
    static std::string DiscSetting(wchar_t letter, const std::string& key);
    static std::filesystem::path DriveFolder(wchar_t letter);
    /// Whether something was written, or is being written, to the disc.
    static bool HasImage(wchar_t letter);
    /// Waits until the drive shows what was written.
    bool WaitForContent(wchar_t letter);

  private:
    void RunFor(const std::function<bool()>& isDone, DWORD milliseconds);

    TestMessageLoop loop_;
    ImapiDiscWriters writers_{loop_};
    std::filesystem::path files_;
};
