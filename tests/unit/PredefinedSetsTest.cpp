#include "core/SpaceValues.h"
#include "core/UserValues.h"
#include "support/PredefinedSetsBench.h"

namespace {

TEST_F(PredefinedSetsTest, ItemsAreRedBoldAndRememberTheirSet) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\Sub"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data\\a.dat|file|1", L"!C:\\Data\\Sub|folder|1"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\a.dat/32", L"C:\\Data\\Sub/-1"}));
    EXPECT_EQ(machine.app.space->requiredSpace, Currency::FromDouble(1050 + 4200));
    EXPECT_EQ(list.ItemsAdded(1), 2);
    EXPECT_EQ(list.ItemsLeft(1), 2);
    EXPECT_EQ(host.events, (Texts{L"OnRefreshSpace"}));
    EXPECT_EQ(screen.shown, 1);
}

TEST_F(PredefinedSetsTest, SizesAreAddedToTheLastDecimalOfTheCurrency) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\b.dat"});
    list.LoadSets();
    EXPECT_EQ(machine.app.space->requiredSpace.TenThousandths(), 21010500);
}

TEST_F(PredefinedSetsTest, BoxIsCheckedWhereItsListExistsAndDisabledWhereItDoesNot) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat"});
    list.LoadSets();
    EXPECT_EQ(Box(1).state, BoxState::Checked);
    EXPECT_TRUE(Box(1).isEnabled);
    for (const std::int32_t index : {0, 2, 3}) {
        EXPECT_EQ(Box(index).state, BoxState::Unchecked) << index;
        EXPECT_FALSE(Box(index).isEnabled) << index;
    }
}

TEST_F(PredefinedSetsTest, SetWithNothingOnThisComputerIsEmptyAndGreyed) {
    AddListFile(L"tarvel.lst", {L"C:\\None\\x.dat", L"C:\\Nowhere", L""});
    list.LoadSets();
    EXPECT_EQ(Box(2).state, BoxState::Unchecked);
    EXPECT_FALSE(Box(2).isEnabled);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PredefinedSetsTest, OutlookListIsTheOneOfTheRunningSystem) {
    AddListFile(L"outlookVista.lst", {L"C:\\Data\\a.dat"});
    AddListFile(L"outlookXP.lst", {L"C:\\Data\\b.dat"});
    list.LoadSets();
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\a.dat/32"}));
    SelectionBench older;
    older.machine.operatingSystem.version = {2, 5, 1};
    older.machine.files.AddSizedFile(L"C:\\Data\\b.dat", 1);
    older.AddListFile(L"outlookVista.lst", {L"C:\\Data\\a.dat"});
    older.AddListFile(L"outlookXP.lst", {L"C:\\Data\\b.dat"});
    older.list.LoadSets();
    EXPECT_EQ(older.Items(), (Texts{L"C:\\Data\\b.dat/32"}));
}

TEST_F(PredefinedSetsTest, FirstSetReadsItsTwoListsInOrder) {
    AddListFile(L"brinde.lst", {L"C:\\Data\\a.dat"});
    AddListFile(L"vexal.lst", {L"C:\\Data\\Sub", L"C:\\Data\\b.dat"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data\\Sub|folder|0", L"!C:\\Data\\b.dat|file|0", L"!C:\\Data\\a.dat|file|0"}));
    EXPECT_EQ(list.ItemsAdded(0), 3);
}

TEST_F(PredefinedSetsTest, SecondListOfTheFirstSetMayBeMissing) {
    AddListFile(L"vexal.lst", {L"C:\\Data\\a.dat"});
    list.LoadSets();
    list.ClickBox(0);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PredefinedSetsTest, EntriesAreReadAsSequentialInputReadsThem) {
    machine.files.AddSizedFile(L"C:\\Data\\été, hiver.dat", 8);
    AddRawListFile(L"qamor.lst", ToAnsi(L"\"C:\\Data\\été, hiver.dat\",C:\\Data\\a.dat\r\n\r\n ,\r\nC:\\Data\\b.dat"));
    list.LoadSets();
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\été, hiver.dat/32", L"C:\\Data\\a.dat/32", L"C:\\Data\\b.dat/32"}));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PredefinedSetsTest, BlanksAfterTheLastLineAreNoFailure) {
    AddRawListFile(L"qamor.lst", std::string("C:\\Data\\a.dat\r\n  \t "));
    list.LoadSets();
    EXPECT_EQ(list.RowCount(), 1);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PredefinedSetsTest, ProfileTokenBecomesTheProfileFolder) {
    machine.files.AddFolder(L"C:\\Users\\agent\\Desktop");
    AddListFile(L"tarvel.lst", {L"**UserProfile**\\Desktop"});
    list.LoadSets();
    EXPECT_EQ(Items(), (Texts{L"C:\\Users\\agent\\Desktop/-1"}));
}

TEST_F(PredefinedSetsTest, OnlyOutlookListsAskTheSystemForTheProfile) {
    machine.app.user->strProfilUtilisateur = L"C:\\Profiles\\set";
    machine.files.AddFolder(L"C:\\Profiles\\set\\Desktop");
    machine.files.AddFolder(L"C:\\Users\\agent\\Desktop");
    AddListFile(L"tarvel.lst", {L"**UserProfile**\\Desktop"});
    AddListFile(L"outlookVista.lst", {L"**UserProfile**\\Desktop"});
    Texts profilesAtEvents;
    host.whenRaised = [&](const std::wstring&) { profilesAtEvents.push_back(machine.app.user->strProfilUtilisateur); };
    list.LoadSets();
    EXPECT_EQ(Items(), (Texts{L"C:\\Profiles\\set\\Desktop/-1", L"C:\\Users\\agent\\Desktop/-1"}));
    EXPECT_EQ(profilesAtEvents, (Texts{L"C:\\Profiles\\set", L"C:\\Profiles\\set"}));
    EXPECT_EQ(machine.app.user->strProfilUtilisateur, L"C:\\Users\\agent") << "read at the end of the loading";
    EXPECT_EQ(machine.app.user->strNomUtilisateur, L"agent");
}

TEST_F(PredefinedSetsTest, UnknownProfileLeavesTheTokenEmpty) {
    machine.account.profileFolder = L"";
    AddListFile(L"outlookVista.lst", {L"**UserProfile**\\Desktop"});
    list.LoadSets();
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(machine.app.user->strProfilUtilisateur, L"");
    EXPECT_EQ(machine.app.user->strNomUtilisateur, L"");
}

TEST_F(PredefinedSetsTest, StoresOfAFolderAreFoundByExactCaseAndNoFolderIsOne) {
    machine.files.AddSizedFile(L"C:\\Mail\\a.pst", 1);
    machine.files.AddSizedFile(L"C:\\Mail\\b.PST", 2);
    machine.files.AddSizedFile(L"C:\\Mail\\c.txt", 4);
    machine.files.AddFolder(L"C:\\Mail\\old.pst");
    machine.files.AddSizedFile(L"C:\\Mail\\old.pst\\below.pst", 8);
    AddListFile(L"outlookVista.lst", {L"C:\\Mail\\*.pst"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Mail\\a.pst|file|3"}));
    EXPECT_EQ(Box(3).state, BoxState::Checked);
    EXPECT_EQ(list.ItemsAdded(3), 1);
}

TEST_F(PredefinedSetsTest, FamilyIsEverySubFolderAndFileThatBeginsWithIt) {
    machine.files.AddFolder(L"C:\\Fam\\Rep1");
    machine.files.AddFolder(L"C:\\Fam\\rep2");
    machine.files.AddFolder(L"C:\\Fam\\MyRep");
    machine.files.AddSizedFile(L"C:\\Fam\\Rep.txt", 1);
    machine.files.AddSizedFile(L"C:\\Fam\\Other.txt", 2);
    AddListFile(L"qamor.lst", {L"C:\\Fam\\Rep*"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Fam\\Rep1|folder|1", L"!C:\\Fam\\Rep.txt|file|1"}));
}

TEST_F(PredefinedSetsTest, FilesOfAFamilyMayAlsoEndWithItButSubFoldersMayNot) {
    machine.files.AddSizedFile(L"C:\\Fam\\my.cfg", 1);
    machine.files.AddFolder(L"C:\\Fam\\dir.cfg");
    AddListFile(L"qamor.lst", {L"C:\\Fam\\.cfg*"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Fam\\my.cfg|file|1"}));
}

TEST_F(PredefinedSetsTest, FamilyWithNothingAfterTheBackslashIsTheFolderItself) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\*"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data|folder|1"}));
    list.ClickBox(1);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(list.ArrayFichier()->Count(), 0);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
}

TEST_F(PredefinedSetsTest, FamilyOfAnAbsentFolderAddsNothing) {
    AddListFile(L"qamor.lst", {L"C:\\None\\Rep*", L"*", L"Rep*"});
    list.LoadSets();
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(PredefinedSetsTest, PathOfTheUserTurnsRedAndGoesWithTheSet) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat"});
    Add(L"c:\\data\\A.DAT");
    Add(L"C:\\Data\\b.dat");
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!c:\\data\\A.DAT|file|1", L"C:\\Data\\b.dat|file|"}));
    EXPECT_EQ(list.ItemsAdded(1), 0) << "no counter moves for what was there";
    EXPECT_FALSE(Box(1).isEnabled);
}

TEST_F(PredefinedSetsTest, RowBelongsToTheLastSetThatNamedIt) {
    AddListFile(L"vexal.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\b.dat"});
    AddListFile(L"qamor.lst", {L"C:\\Data\\a.dat", L"C:\\Data\\Sub"});
    list.LoadSets();
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data\\a.dat|file|1", L"!C:\\Data\\b.dat|file|0", L"!C:\\Data\\Sub|folder|1"}));
    EXPECT_EQ(list.ItemsAdded(0), 2);
    EXPECT_EQ(list.ItemsAdded(1), 1);
}

TEST_F(PredefinedSetsTest, UnreadableListIsReportedAndTheOthersAreLoaded) {
    AddListFile(L"vexal.lst", {L"C:\\Data\\a.dat"});
    AddListFile(L"qamor.lst", {L"C:\\Data\\b.dat"});
    machine.files.Deny(machine.app.ListFileFolder() + L"vexal.lst");
    list.LoadSets();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"RemplirArray, module frmBackupCD"), std::wstring::npos);
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\b.dat/32"}));
    EXPECT_FALSE(Box(0).isEnabled);
}

TEST_F(PredefinedSetsTest, TransferListTakesThePlaceOfAllSets) {
    AddListFile(L"qamor.lst", {L"C:\\Data\\b.dat"});
    AddListFile(L"transfert.lst", {L"C:\\Data\\a.dat", L"C:\\None"});
    machine.messageLoop.handler = [&] { EXPECT_EQ(list.RowCount(), 0) << "it is loaded after the messages ran"; };
    list.LoadSets();
    EXPECT_EQ(machine.messageLoop.runs, 1);
    EXPECT_EQ(Rows(), (Texts{L"!C:\\Data\\a.dat|file|0"}));
    for (std::int32_t index = 0; index < SetCount; ++index) {
        EXPECT_EQ(Box(index).state, BoxState::Checked) << index;
        EXPECT_FALSE(Box(index).isEnabled) << index;
    }
    EXPECT_EQ(host.events, (Texts{L"OnRefreshSpace"}));
    EXPECT_EQ(list.ItemsAdded(0), 1);
}

TEST_F(PredefinedSetsTest, LoadingEndsWithTheProfileAndThePendingMessages) {
    machine.app.user->strProfilUtilisateur = L"";
    list.LoadSets();
    EXPECT_EQ(machine.app.user->strProfilUtilisateur, L"C:\\Users\\agent");
    EXPECT_EQ(machine.messageLoop.runs, 1);
    EXPECT_TRUE(host.events.empty());
}

} // namespace
