// What another program holds for a moment, as a scanner does with every fresh file.
#ifdef _WIN32
#include "platform/windows/WindowsFileStore.h"
#include "platform/windows/WindowsFiles.h"
#include "support/Failures.h"
#include "win32/UniqueHandle.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

using namespace std::chrono_literals;

/// Holds a file or folder against everybody else until the time is over.
class Scanner {
  public:
    Scanner(const std::filesystem::path& path, std::chrono::milliseconds time)
        : held_(
              CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
          thread_([this, time] {
              std::this_thread::sleep_for(time);
              held_.Reset();
          }) {}

  private:
    UniqueFile held_;
    std::jthread thread_;
};

class HeldFiles : public testing::Test {
  protected:
    HeldFiles() {
        std::filesystem::create_directories(folder_);
        std::ofstream(file_) << "fresh";
    }
    ~HeldFiles() override { std::filesystem::remove_all(folder_); }

    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() / L"HeldFiles";
    const std::filesystem::path file_ = folder_ / L"Zip0001.zip";
    WindowsFiles files_;
    WindowsFileStore store_;
};

TEST_F(HeldFiles, AreDeletedWhenTheyAreReleased) {
    const Scanner scanner(file_, 120ms);
    EXPECT_EQ(NumberThrownBy([&] { files_.Delete(file_.wstring()); }), 0);
    EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(HeldFiles, AreRenamedWhenTheyAreReleased) {
    const Scanner scanner(file_, 120ms);
    EXPECT_EQ(NumberThrownBy([&] { files_.Rename(file_.wstring(), (folder_ / L"b").wstring()); }), 0);
}

TEST_F(HeldFiles, AreCopiedWhenTheyAreReleased) {
    const Scanner scanner(file_, 120ms);
    EXPECT_EQ(NumberThrownBy([&] { files_.Copy(file_.wstring(), (folder_ / L"b").wstring()); }), 0);
}

TEST_F(HeldFiles, GoWithTheirFolderWhenTheyAreReleased) {
    const Scanner scanner(file_, 120ms);
    EXPECT_EQ(NumberThrownBy([&] { files_.DeleteFolder(folder_.wstring()); }), 0);
    EXPECT_FALSE(std::filesystem::exists(folder_));
}

TEST_F(HeldFiles, AreDeletedFromAStoreWhenTheyAreReleased) {
    const Scanner scanner(file_, 120ms);
    EXPECT_EQ(NumberThrownBy([&] { store_.Delete(file_.wstring()); }), 0);
    EXPECT_FALSE(std::filesystem::exists(file_));
}

TEST_F(HeldFiles, AreRenamedInAStoreWhenTheyAreReleased) {
    const Scanner scanner(file_, 120ms);
    bool isRenamed = false;
    EXPECT_EQ(NumberThrownBy([&] { isRenamed = store_.Rename(file_.wstring(), (folder_ / L"b").wstring()); }), 0);
    EXPECT_TRUE(isRenamed);
}

TEST_F(HeldFiles, ReplaceOthersWhenTheyAreReleased) {
    const std::filesystem::path old = folder_ / L"b";
    std::ofstream(old) << "old";
    const Scanner scanner(file_, 120ms);
    EXPECT_EQ(NumberThrownBy([&] { store_.Replace(file_.wstring(), old.wstring()); }), 0);
    EXPECT_EQ(std::filesystem::file_size(old), 5u);
}

TEST_F(HeldFiles, ThatAreNotReleasedAreError70) {
    const Scanner scanner(file_, 3s);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(NumberThrownBy([&] { files_.Delete(file_.wstring()); }), 70);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    EXPECT_EQ(NumberThrownBy([&] { files_.RequireDeletable(file_.wstring()); }), 70);
}

} // namespace
#endif
