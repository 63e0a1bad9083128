// The real steps of a backup: the list, the archive and the copy, done on what the backup window holds.
#include "backup/ArchiveSteps.h"

#include "selection/clsColFileInfo.h"
#include "support/CommandLineParts.h"
#include "support/FakeBackupView.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

namespace {

using testing::Contains;

constexpr const wchar_t* WorkFolder = L"C:\\Valcoreaux\\Backup\\zip\\";

class ArchiveStepsTest : public testing::Test {
  protected:
    ArchiveStepsTest() {
        machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
        machine.files.AddFolder(L"C:\\Temp");
        machine.environment.Set(L"Temp", L"C:\\Temp");
        machine.files.AddFile(L"C:\\Data\\a.txt", "a");
        machine.processes.effect = [this](const std::wstring& commandLine) {
            const std::wstring target = PartsOf(commandLine).at(3);
            machine.files.AddFile(target.ends_with(L".ZIP") ? target : target + L".zip", "x");
        };
        Select({L"C:\\Data\\a.txt"});
    }

    void Select(const std::vector<std::wstring>& paths) {
        items = std::make_shared<clsColFileInfo>(machine.app);
        for (const std::wstring& path : paths) items->Add(path, KindFile);
    }

    FakeMachine machine;
    FakeBackupView view;
    std::shared_ptr<clsColFileInfo> items;
    bool isPasswordGiven = true;
    ArchiveSteps steps{machine.app, {view, [this] { return items; }, [this] { return isPasswordGiven; }}};
};

TEST_F(ArchiveStepsTest, ListAndArchiveAreOfTheItemsThatTheWindowHoldsNow) {
    Select({L"C:\\Data\\b.txt", L"C:\\Data\\a.txt"});
    machine.files.AddFile(L"C:\\Data\\b.txt", "b");
    EXPECT_EQ(steps.SelectedCount(), 2);
    steps.EnregistrerListeFichiers();
    const std::string list = "C:\\Data\\b.txt,32,Zip0001\r\nC:\\Data\\a.txt,32,Zip0002\r\n";
    EXPECT_EQ(machine.files.Read(L"C:\\Temp\\_listFich.lst"), list);
    EXPECT_TRUE(steps.CopierListeFichiers());
    EXPECT_EQ(machine.files.Read(std::wstring(WorkFolder) + L"_listFich.lst"), list);
    EXPECT_TRUE(machine.files.FileExists(std::wstring(WorkFolder) + L"OKRBACKUP.ZIP"));
    EXPECT_EQ(view.total.Max(), 2);
    EXPECT_EQ(view.total.Value(), 2);
    const std::vector<std::pair<std::int32_t, std::int32_t>> whileListed = {{0, 2}, {0, 100}};
    EXPECT_EQ(view.step.ranges, whileListed);
    EXPECT_THAT(view.calls, Contains(L"refresh").Times(2));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(ArchiveStepsTest, ItemThatIsGoneLeavesTheArchiveIncomplete) {
    steps.EnregistrerListeFichiers();
    machine.files.Remove(L"C:\\Data\\a.txt");
    EXPECT_FALSE(steps.CopierListeFichiers());
}

TEST_F(ArchiveStepsTest, PasswordIsTheOneThatTheWindowAsksFor) {
    EXPECT_TRUE(steps.DemanderMotPasse());
    isPasswordGiven = false;
    EXPECT_FALSE(steps.DemanderMotPasse());
}

TEST_F(ArchiveStepsTest, ArchiverIsThereOnceItsFileIs) {
    EXPECT_FALSE(steps.ValidZipApp());
    machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\" + steps.GetZipAppName(), "7z");
    EXPECT_TRUE(steps.ValidZipApp());
}

TEST_F(ArchiveStepsTest, PairIsCopiedToTheDriveAndTheWorkFolderGoes) {
    steps.EnregistrerListeFichiers();
    ASSERT_TRUE(steps.CopierListeFichiers());
    EXPECT_FALSE(steps.CopierUSB(L"E:\\")) << "there is no such drive";
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFolder(L"E:\\");
    EXPECT_TRUE(steps.CopierUSB(L"E:\\"));
    EXPECT_TRUE(machine.files.FileExists(L"E:\\OKRBACKUP.ZIP"));
    EXPECT_TRUE(machine.files.FileExists(L"E:\\_listFich.lst"));
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
}

} // namespace
