// Small promises of the selection that its other tests pass by.
#include "selection/FolderBrowser.h"
#include "support/PredefinedSetsBench.h"

namespace {

class SelectionDetails : public PredefinedSetsTest {};

TEST_F(SelectionDetails, RowHoldsThePathOfItsItemAndNoCopyOfIt) {
    Add(L"C:\\Data\\a.dat");
    EXPECT_EQ(list.Row(0).path.get(), &list.ArrayFichier()->Item(1)->strNom);
}

TEST_F(SelectionDetails, ClearingTheListUnticksTheFirstSetToo) {
    AddListFile(L"vexal.lst", {L"C:\\Data\\a.dat"});
    AddListFile(L"outlookVista.lst", {L"C:\\Data\\b.dat"});
    list.LoadSets();
    list.EffacerTouteListe();
    for (std::int32_t index = 0; index < SetCount; ++index) EXPECT_EQ(Box(index).state, BoxState::Unchecked) << index;
}

TEST_F(SelectionDetails, TransferListGreysBoxesThatCouldBeClickedBefore) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat"});
    list.LoadSets();
    ASSERT_TRUE(Box(1).isEnabled);
    AddListFile(L"transfert.lst", {L"C:\\Data\\b.dat"});
    list.LoadSets();
    for (std::int32_t index = 0; index < SetCount; ++index) EXPECT_FALSE(Box(index).isEnabled) << index;
}

TEST_F(SelectionDetails, ItemsLeftOutAreNamedInOrderAndOnceEach) {
    list.AddDropped({L"C:\\\u0142b", L"C:\\\u0142a", L"C:\\\u0142b"});
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"C:\\\u0142a\nC:\\\u0142b\n"), std::wstring::npos);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(L"C:\\\u0142b\nC:\\"), std::wstring::npos);
}

TEST_F(SelectionDetails, WindowIsPaintedWhileAFolderIsMeasured) {
    host.spaceOf = [this](const std::wstring& path) {
        machine.clock.secondsSinceMidnight += 1;
        return list.SpaceOf(path);
    };
    int paintingsByTheEvent = 0;
    host.whenRaised = [&](const std::wstring&) { paintingsByTheEvent = machine.messageLoop.paintings; };
    Add(L"C:\\Data\\Sub");
    EXPECT_EQ(paintingsByTheEvent, 1);
}

TEST_F(SelectionDetails, ItemThatWasRemovedByItsPlaceCanBeAddedAgain) {
    clsColFileInfo items(machine.app);
    items.Add(L"C:\\a", 32);
    items.Remove(1);
    EXPECT_EQ(items.Find(L"C:\\a", 32), nullptr);
    items.Add(L"C:\\a", 32);
    EXPECT_EQ(items.Count(), 1);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionDetails, FolderThatHangsFromNoRootIsShownAtTheEdge) {
    machine.files.AddFolder(L"Documents");
    FolderBrowser browser(machine.files);
    browser.Open(L"Documents");
    ASSERT_EQ(browser.Folders().size(), 1u);
    EXPECT_EQ(browser.Folders()[0].level, 0);
}

} // namespace
