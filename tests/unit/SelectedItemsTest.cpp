#include "platform/RuntimeError.h"
#include "selection/clsColFileInfo.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

class SelectedItems : public testing::Test {
  protected:
    std::vector<std::wstring> Paths() const {
        std::vector<std::wstring> paths;
        for (const auto& item : items) paths.push_back(item->strNom);
        return paths;
    }

    FakeMachine machine;
    clsColFileInfo items{machine.app};
};

using Paths = std::vector<std::wstring>;

template<typename Steps>
std::int32_t NumberThrownBy(Steps steps) {
    try {
        steps();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

TEST_F(SelectedItems, KeepTheOrderInWhichTheyWereAdded) {
    items.Add(L"C:\\b", KindFile);
    items.Add(L"C:\\a", KindFolder);
    items.Add(L"C:\\c", KindFile);
    EXPECT_EQ(items.Count(), 3);
    EXPECT_EQ(Paths(), (::Paths{L"C:\\b", L"C:\\a", L"C:\\c"}));
    EXPECT_EQ(items.Item(2)->strNom, L"C:\\a");
    EXPECT_EQ(items.Item(2)->lngType, -1);
}

TEST_F(SelectedItems, AreFoundByTheirPathInAnyLetterCase) {
    items.Add(L"C:\\Données\\été.txt", KindFile);
    EXPECT_EQ(items.Item(L"c:\\DONNÉES\\ÉTÉ.TXT")->strNom, L"C:\\Données\\été.txt");
}

TEST_F(SelectedItems, AreSharedNotCopied) {
    const auto added = items.Add(L"C:\\a", KindFile);
    items.Item(1)->strNomUnique = L"Zip0001";
    EXPECT_EQ(added->strNomUnique, L"Zip0001");
    items.RemoveAll();
    EXPECT_EQ(added->strNom, L"C:\\a");
}

TEST_F(SelectedItems, EmptyPathsCoexistWithoutAKey) {
    EXPECT_NE(items.Add(L"", KindFile), nullptr);
    EXPECT_NE(items.Add(L"", KindFile), nullptr);
    EXPECT_EQ(items.Count(), 2);
    EXPECT_TRUE(items.ContainsItem({L"", KindFile, {}}));
    EXPECT_FALSE(items.ContainsItem({L"", KindFolder, {}}));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    items.Remove(1);
    EXPECT_EQ(items.Count(), 1);
}

TEST_F(SelectedItems, SamePathInOtherLettersIsRefusedAndWasSeenBeforehand) {
    items.Add(L"c:\\data", KindFolder);
    EXPECT_TRUE(items.ContainsItem({L"C:\\Data", KindFolder, {}}));
    EXPECT_EQ(items.Add(L"C:\\Data", KindFolder), nullptr);
    EXPECT_EQ(items.Count(), 1);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"457"), std::wstring::npos);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"Add, Class clsColFileInfo"), std::wstring::npos);
}

TEST_F(SelectedItems, FolderIsNotContainedWhereOnlyAFileOfItsNameIs) {
    items.Add(L"C:\\Data", KindFile);
    EXPECT_FALSE(items.ContainsItem({L"C:\\Data", KindFolder, {}}));
    EXPECT_TRUE(items.ContainsItem({L"C:\\Data", KindFile, {}}));
}

TEST_F(SelectedItems, RemoveAllLeavesNoneAndDoesNothingWhenEmpty) {
    items.RemoveAll();
    EXPECT_EQ(items.Count(), 0);
    for (int i = 0; i < 50; ++i) items.Add(L"C:\\" + std::to_wstring(i), KindFile);
    items.RemoveAll();
    EXPECT_EQ(items.Count(), 0);
    EXPECT_FALSE(items.ContainsItem({L"C:\\7", KindFile, {}}));
    EXPECT_NE(items.Add(L"C:\\7", KindFile), nullptr);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectedItems, LaterPositionsMoveDownWhenOneIsRemoved) {
    items.Add(L"C:\\a", KindFile);
    items.Add(L"C:\\b", KindFile);
    items.Add(L"C:\\c", KindFile);
    items.Remove(1);
    EXPECT_EQ(items.Item(1)->strNom, L"C:\\b");
    items.Remove(L"c:\\B");
    EXPECT_EQ(items.Item(1)->strNom, L"C:\\c");
    EXPECT_EQ(items.Count(), 1);
}

TEST_F(SelectedItems, RemovedPathCanBeAddedAgainAtTheEnd) {
    items.Add(L"C:\\a", KindFile);
    items.Add(L"C:\\b", KindFile);
    items.Remove(L"C:\\a");
    EXPECT_FALSE(items.ContainsItem({L"C:\\a", KindFile, {}}));
    items.Add(L"C:\\a", KindFile);
    EXPECT_EQ(Paths(), (::Paths{L"C:\\b", L"C:\\a"}));
}

TEST_F(SelectedItems, UnknownPositionsAndKeysAreTheCallersError) {
    items.Add(L"C:\\a", KindFile);
    EXPECT_EQ(NumberThrownBy([&] { (void)items.Item(0); }), 9);
    EXPECT_EQ(NumberThrownBy([&] { (void)items.Item(2); }), 9);
    EXPECT_EQ(NumberThrownBy([&] { (void)items.Item(L"C:\\b"); }), 5);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectedItems, RemovingWhatIsNotThereIsReported) {
    items.Remove(1);
    items.Remove(L"C:\\a");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"9 (Subscript out of range)"), std::wstring::npos);
    EXPECT_NE(machine.messageBoxes.shown[1].text.find(L"Remove, Class clsColFileInfo"), std::wstring::npos);
}

} // namespace
