// What a predefined set brought may be gone from the disk by the time the set is unticked.
#include "core/SpaceValues.h"
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

class VanishedSetItemsTest : public testing::Test, protected SelectionBench {
  protected:
    VanishedSetItemsTest() {
        machine.files.AddSizedFile(L"C:\\Data\\a.dat", 1000);
        machine.files.AddSizedFile(L"C:\\Data\\b.dat", 2000);
        machine.files.AddSizedFile(L"C:\\Data\\c.dat", 4000);
        machine.files.AddSizedFile(L"C:\\Data\\Sub\\d.dat", 8000);
    }

    void ExpectSetIsGone() {
        EXPECT_EQ(Rows(), Texts());
        EXPECT_EQ(Items(), Texts());
        EXPECT_EQ(machine.app.space->requiredSpace, Currency());
        EXPECT_EQ(host.events.back(), L"OnRefreshSpace");
    }
    void ExpectOneReport(const wchar_t* label) {
        ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
        EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"53 (File not found)"), std::wstring::npos);
        EXPECT_NE(machine.messageBoxes.shown[0].text.find(label), std::wstring::npos);
    }
};

TEST_F(VanishedSetItemsTest, FilesAreReportedOnceAndTheWholeSetGoes) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat", L"C:\\Data\\c.dat"});
    list.LoadSets();
    machine.files.Remove(L"C:\\Data\\a.dat");
    machine.files.Remove(L"C:\\Data\\b.dat");
    list.ClickBox(1);
    ExpectOneReport(L"ViderArray, module frmBackupCD");
    ExpectSetIsGone();
}

TEST_F(VanishedSetItemsTest, FilesOfAFamilyAreReportedOnceAndTheWholeFamilyGoes) {
    AddListFile(L"outlookVista.lst", {L"C:\\Data\\.dat*"});
    list.LoadSets();
    ASSERT_EQ(list.RowCount(), 3);
    machine.files.Remove(L"C:\\Data\\b.dat");
    machine.files.Remove(L"C:\\Data\\c.dat");
    list.ClickBox(3);
    ExpectOneReport(L"EffacerMultiple, module modFonctionsCommunes");
    ExpectSetIsGone();
}

TEST_F(VanishedSetItemsTest, FolderCanBeUnticked) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\Sub\\", L"C:\\Data\\a.dat"});
    list.LoadSets();
    ASSERT_EQ(Rows(), (Texts{L"!C:\\Data\\Sub|folder|1", L"!C:\\Data\\a.dat|file|1"}));
    machine.files.Remove(L"C:\\Data\\Sub");
    list.ClickBox(1);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    ExpectSetIsGone();
}

TEST_F(VanishedSetItemsTest, FolderThatBecameAFileGoesAsTheFolderThatItWas) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\Sub"});
    list.LoadSets();
    machine.files.Remove(L"C:\\Data\\Sub");
    machine.files.AddSizedFile(L"C:\\Data\\Sub", 3);
    list.ClickBox(1);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    ExpectSetIsGone();
}

TEST_F(VanishedSetItemsTest, FileOfTheUserThatTurnedRedLeavesNoSpaceBehind) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    list.LoadSets();
    list.ClickBox(1);
    Add(L"C:\\Data\\a.dat");
    list.ClickBox(1);
    machine.files.Remove(L"C:\\Data\\a.dat");
    list.ClickBox(1);
    ExpectOneReport(L"ViderArray, module frmBackupCD");
    ExpectSetIsGone();
}

TEST_F(VanishedSetItemsTest, FileThatCannotBeReadAnyMoreLeavesNoSpaceBehind) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    list.LoadSets();
    machine.files.Deny(L"C:\\Data\\b.dat");
    list.ClickBox(1);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"70 (Permission denied)"), std::wstring::npos);
    ExpectSetIsGone();
}

} // namespace
