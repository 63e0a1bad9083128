// A copy puts both files at the root of a disk, or reports why not and leaves what was there.
#include "archive/clsCopie.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

using Parts = std::vector<std::wstring>;

constexpr const wchar_t* WorkFolder = L"C:\\Valcoreaux\\Backup\\zip";

class CopyToDisk : public testing::Test {
  protected:
    CopyToDisk() {
        machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", "archive");
        machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\_listFich.lst", "list");
        machine.files.AddFolder(L"E:\\");
    }

    FakeMachine machine;
    clsCopie copie{machine.app};
};

TEST_F(CopyToDisk, DriveThatIsNotThereGivesFalseAndLeavesTheWorkFolder) {
    EXPECT_FALSE(copie.CopierUSB(L"E:\\"));
    EXPECT_TRUE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP"));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(CopyToDisk, BothFilesLieAtTheRootAndReachedTheDevice) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    EXPECT_TRUE(copie.CopierUSB(L"E:\\"));
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "archive");
    EXPECT_EQ(machine.files.Read(L"E:\\_listFich.lst"), "list");
    EXPECT_EQ(machine.files.Contents(L"E:\\").files, (Parts{L"OKRBACKUP.ZIP", L"_listFich.lst"}));
    EXPECT_TRUE(machine.files.flushed.size() > 1 && machine.files.flushed.back() == L"E:\\_listFich.lst");
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
}

TEST_F(CopyToDisk, FullDiskIsReportedAndLeavesTheWorkFolder) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old archive");
    machine.files.AddFile(L"E:\\_listFich.lst", "old list");
    machine.files.SetFreeBytes(L"E:", 3);
    EXPECT_FALSE(copie.CopierUSB(L"E:\\"));
    EXPECT_EQ(machine.files.Contents(L"E:\\").files, (Parts{L"OKRBACKUP.ZIP", L"_listFich.lst"}));
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "old archive");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"61 (Disk full) dans la procédure CopierUSB, Class clsCopie"),
              std::wstring::npos);
    EXPECT_TRUE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP"));
}

TEST_F(CopyToDisk, ArchiveTooLargeForTheFileSystemIsADiskThatIsFull) {
    machine.drives.Add(L"E:\\", DriveType::Removable).fileSystem = L"FAT32";
    machine.files.AddSizedFile(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", 4ull << 30);
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old archive");
    EXPECT_FALSE(copie.CopierUSB(L"E:\\"));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"61 (Disk full) dans la procédure CopierUSB, Class clsCopie"),
              std::wstring::npos);
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "old archive");
}

TEST_F(CopyToDisk, ExchangeBrokenOffBeforeIsFinishedFirst) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP.~new", std::string(100, 'x'));
    machine.files.SetFreeBytes(L"E:", 5);
    EXPECT_TRUE(copie.CopierUSB(L"E:\\")) << "what is left of it takes the room away";
    EXPECT_EQ(machine.files.Contents(L"E:\\").files, (Parts{L"OKRBACKUP.ZIP", L"_listFich.lst"}));
}

TEST_F(CopyToDisk, MediumThatAnotherCopyIsChangingIsLeftAloneAndReported) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP.~new", "coming");
    const std::unique_ptr<Hold> others = machine.drives.Claim(L"E:\\");
    EXPECT_FALSE(copie.CopierUSB(L"E:\\"));
    EXPECT_EQ(machine.files.Contents(L"E:\\").files, (Parts{L"OKRBACKUP.ZIP.~new"}));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"70 (Another copy of this program is changing the disk)"),
              std::wstring::npos);
    EXPECT_EQ(machine.clock.sleeps, 19) << "about a second";
    EXPECT_TRUE(machine.files.FileExists(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP"));
}

TEST_F(CopyToDisk, AnInstantOfAnotherCopyIsWaitedFor) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    std::unique_ptr<Hold> others = machine.drives.Claim(L"E:\\");
    machine.clock.duringSleep = [&] { others.reset(); };
    EXPECT_TRUE(copie.CopierUSB(L"E:\\"));
}

/// Files that look, at whatever happens to the disk, whether another copy of the program could change the disk.
class WatchedFiles : public FakeFiles {
  public:
    explicit WatchedFiles(FakeDrives& drives) : drives_(drives) {}
    void Copy(const std::wstring& source, const std::wstring& target) override {
        Look();
        FakeFiles::Copy(source, target);
    }
    void Flush(const std::wstring& path) override {
        Look();
        FakeFiles::Flush(path);
    }
    void Rename(const std::wstring& source, const std::wstring& target) override {
        Look();
        FakeFiles::Rename(source, target);
    }
    void Delete(const std::wstring& path) override {
        if (path.starts_with(L"E:")) Look();
        FakeFiles::Delete(path);
    }
    int unclaimed = 0;

  private:
    void Look() {
        if (drives_.Claim(L"E:\\")) ++unclaimed;
    }

    FakeDrives& drives_;
};

TEST_F(CopyToDisk, MediumIsClaimedFromTheFirstFileToTheEndAndNoLonger) {
    WatchedFiles files(machine.drives);
    files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", "archive");
    files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\_listFich.lst", "list");
    files.AddFile(L"E:\\OKRBACKUP.ZIP", "old archive");
    files.AddFile(L"E:\\_listFich.lst", "old list");
    machine.app.machine.files = files;
    machine.drives.Add(L"E:\\", DriveType::Removable);
    EXPECT_TRUE(copie.CopierUSB(L"E:\\"));
    EXPECT_EQ(files.Read(L"E:\\OKRBACKUP.ZIP"), "archive");
    EXPECT_EQ(files.unclaimed, 0);
    EXPECT_NE(machine.drives.Claim(L"E:\\"), nullptr);
}

TEST_F(CopyToDisk, MediumIsNoLongerClaimedAfterACopyThatFailed) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.FailWith(L"E:\\_listFich.lst", ErrorNumber::DeviceIoError);
    EXPECT_FALSE(copie.CopierUSB(L"E:\\"));
    EXPECT_NE(machine.drives.Claim(L"E:\\"), nullptr);
}

TEST_F(CopyToDisk, DeviceThatDoesNotTakeTheBytesIsNoSuccess) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.FailWith(L"E:\\_listFich.lst", ErrorNumber::DeviceIoError);
    EXPECT_FALSE(copie.CopierUSB(L"E:\\"));
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

} // namespace
