#include "core/SpaceValues.h"
#include "support/PredefinedSetsBench.h"

namespace {

TEST_F(PredefinedSetsTest, UncheckingRemovesWhatTurnedRedAndLeavesWhatTheUserAdded) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    list.LoadSets();
    list.ClickBox(1);
    Add(L"C:\\Data\\a.dat");
    list.ClickBox(1);
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data\\a.dat|file|1", L"!C:\\Data\\b.dat|file|1"}));
    Add(L"C:\\Data\\Sub");
    list.ClickBox(1);
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\Sub\\*.*|folder|"}));
    ExpectSpaceIsTheSum();
}

TEST_F(PredefinedSetsTest, RowInBlackIsLeftAloneWithItsItem) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\late.dat"});
    list.LoadSets();
    machine.files.AddSizedFile(L"C:\\Data\\late.dat", 500);
    Add(L"C:\\Data\\late.dat");
    list.ClickBox(1);
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\late.dat|file|"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\late.dat/32"}));
    ExpectSpaceIsTheSum();
}

TEST_F(PredefinedSetsTest, RowThatWasRemovedIsNotFoundAgain) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    list.LoadSets();
    list.DetruireItem(0);
    Add(L"C:\\Data\\a.dat");
    list.ClickBox(1);
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\a.dat|file|"}));
    ExpectSpaceIsTheSum();
}

TEST_F(PredefinedSetsTest, FolderThatTheUserAddedStaysTheirs) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\Sub", L"C:\\Data\\a.dat"});
    Add(L"C:\\Data\\Sub");
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\Sub\\*.*|folder|", L"!C:\\Data\\a.dat|file|1"}));
    list.ClickBox(1);
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\Sub\\*.*|folder|"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\Sub/-1"}));
    ExpectSpaceIsTheSum();
}

TEST_F(PredefinedSetsTest, ClickTakesTheSetAwayAndClearsItsCounters) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\Sub"});
    list.LoadSets();
    host.events.clear();
    list.ClickBox(1);
    EXPECT_EQ(Box(1).state, BoxState::Unchecked);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(list.ArrayFichier()->Count(), 0);
    EXPECT_EQ(list.ItemsAdded(1), 0);
    EXPECT_EQ(list.ItemsLeft(1), 0);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
    EXPECT_EQ(host.events, (Texts{L"OnRefreshSpace"}));
}

TEST_F(PredefinedSetsTest, ClickOnABoxWhoseListVanishedOnlyRefreshesTheSpace) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat"});
    list.LoadSets();
    machine.files.Remove(machine.app.ListFileFolder() + L"qamor.lst");
    host.events.clear();
    list.ClickBox(1);
    EXPECT_EQ(host.events, (Texts{L"OnRefreshSpace"}));
    EXPECT_EQ(list.RowCount(), 1);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PredefinedSetsTest, RemovingOneOfThreeTurnsTheBoxGreyAndRemovingTheLastClearsIt) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat", L"C:\\Data\\Sub"});
    list.LoadSets();
    list.DetruireItem(0);
    EXPECT_EQ(Box(1).state, BoxState::Grey);
    EXPECT_EQ(Rows().size(), 2u) << "the set's other rows stay";
    list.DetruireItem(0);
    EXPECT_EQ(Box(1).state, BoxState::Grey);
    list.DetruireItem(0);
    EXPECT_EQ(Box(1).state, BoxState::Unchecked);
    EXPECT_EQ(list.ItemsAdded(1), 3) << "no click ran";
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
}

TEST_F(PredefinedSetsTest, FolderRowOfASetFindsItsItemByTheBarePath) {
    machine.files.AddSizedFile(L"C:\\Data2003\\x.dat", 16);
    AddListFile(L"qamor.lst", {L"C:\\Data", L"C:\\Data2003"});
    list.LoadSets();
    host.events.clear();
    list.DetruireItem(1);
    EXPECT_EQ(host.events, (Texts{L"OnRemoveFile C:\\Data2003"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data/-1"}));
    ExpectSpaceIsTheSum();
}

TEST_F(PredefinedSetsTest, GreyBoxClickedByHandGoesToUncheckedAndTakesTheRest) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    list.LoadSets();
    list.DetruireItem(0);
    list.ClickBox(1);
    EXPECT_EQ(Box(1).state, BoxState::Unchecked);
    EXPECT_EQ(list.RowCount(), 0);
    list.ClickBox(1);
    EXPECT_EQ(Box(1).state, BoxState::Checked);
    EXPECT_EQ(list.RowCount(), 2);
}

TEST_F(PredefinedSetsTest, FamiliesAndStoresAreTakenAwayByTheirPattern) {
    machine.files.AddSizedFile(L"C:\\Mail\\a.pst", 1);
    machine.files.AddSizedFile(L"C:\\Fam\\Rep1\\x", 2);
    machine.files.AddSizedFile(L"C:\\Fam\\Rep.txt", 4);
    AddListFile(L"qamor.lst", {L"C:\\Fam\\Rep*"});
    AddListFile(L"outlookVista.lst", {L"C:\\Mail\\*.pst"});
    list.LoadSets();
    ASSERT_EQ(list.RowCount(), 3);
    list.ClickBox(3);
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Fam\\Rep1|folder|1", L"!C:\\Fam\\Rep.txt|file|1"}));
    list.ClickBox(1);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
}

TEST_F(PredefinedSetsTest, StorePatternTakesSetRowsOfEveryFolderThatEndAsItDoes) {
    machine.files.AddSizedFile(L"C:\\Mail\\a.pst", 1);
    machine.files.AddSizedFile(L"D:\\Old\\b.pst", 2);
    machine.files.AddSizedFile(L"D:\\Old\\mine.pst", 4);
    AddListFile(L"qamor.lst", {L"D:\\Old\\b.pst"});
    AddListFile(L"outlookVista.lst", {L"C:\\Mail\\*.pst"});
    list.LoadSets();
    Add(L"D:\\Old\\mine.pst");
    list.ClickBox(3);
    EXPECT_EQ(Rows(), (Texts{L"D:\\Old\\mine.pst|file|"})) << "what the user added in black is left alone";
    ExpectSpaceIsTheSum();
}

TEST_F(PredefinedSetsTest, FolderThatChangedLeavesARemainderInTheSpace) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\Sub"});
    list.LoadSets();
    machine.files.AddSizedFile(L"C:\\Data\\Sub\\d.dat", 1000);
    list.ClickBox(1);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency::FromDouble(-1050));
}

TEST_F(PredefinedSetsTest, RemovingAllRunsTheClicksOfTheCheckedBoxesOnAnEmptyList) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat"});
    AddListFile(L"tarvel.lst", {L"C:\\Data\\b.dat"});
    list.LoadSets();
    Add(L"C:\\Data\\Sub");
    host.events.clear();
    Texts items;
    host.whenRaised = [&](const std::wstring&) {
        EXPECT_EQ(list.RowCount(), 0);
        items.push_back(std::to_wstring(list.ArrayFichier()->Count()));
    };
    list.EffacerTouteListe();
    EXPECT_EQ(host.events, (Texts{L"OnRefreshSpace", L"OnRefreshSpace", L"OnRemoveAllFile"}));
    EXPECT_EQ(items, (Texts{L"3", L"3", L"0"}));
    EXPECT_EQ(Box(1).state, BoxState::Unchecked);
    EXPECT_TRUE(Box(1).isEnabled);
    EXPECT_EQ(list.ItemsAdded(1), 0);
    EXPECT_EQ(list.ItemsLeft(2), 0);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
    host.whenRaised = {};
    list.ClickBox(1);
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data\\a.dat|file|1"}));
}

TEST_F(PredefinedSetsTest, SetTickedAgainAfterItsRowsWentByHandCountsItsItemsAnew) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    list.LoadSets();
    list.DetruireItem(1);
    list.DetruireItem(0);
    ASSERT_EQ(Box(1).state, BoxState::Unchecked);
    ASSERT_EQ(list.ItemsAdded(1), 2);
    list.ClickBox(1);
    EXPECT_EQ(list.ItemsAdded(1), 2);
    EXPECT_EQ(list.ItemsLeft(1), 2);
}

} // namespace
