#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

class SelectionListTest : public testing::Test, protected SelectionBench {
  protected:
    SelectionListTest() {
        machine.files.AddSizedFile(L"C:\\Data\\a.txt", 1000);
        machine.files.AddSizedFile(L"C:\\Data\\b.txt", 2000);
        machine.files.AddSizedFile(L"C:\\Data\\Sub\\c.txt", 4000);
        machine.files.AddSizedFile(L"D:\\a.txt", 1);
        machine.files.AddSizedFile(L"D:\\b.txt", 2);
    }
};

TEST_F(SelectionListTest, FolderRowShowsAllFilesAndItsItemTheBarePath) {
    Add(L"C:\\Data");
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\*.*|folder|"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data/-1"}));
    EXPECT_EQ(host.events, (Texts{L"OnAddFile C:\\Data"}));
    EXPECT_EQ(screen.selected, 0);
}

TEST_F(SelectionListTest, FileRowShowsItsPath) {
    Add(L"C:\\Data\\a.txt");
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\a.txt|file|"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\a.txt/32"}));
    EXPECT_EQ(machine.app.space->requiredSpace, Currency::FromDouble(1050));
}

TEST_F(SelectionListTest, FolderGivenWithAllFilesOrABackslashIsTheSameFolder) {
    Add(L"C:\\Data\\*.*");
    Add(L"C:\\Data\\");
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\*.*|folder|"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Data/-1"}));
}

TEST_F(SelectionListTest, MissingPathAddedByHandIsTakenAsAFile) {
    host.spaceOf = [](const std::wstring&) { return Currency(); };
    Add(L"C:\\gone.txt");
    EXPECT_EQ(Rows(), (Texts{L"C:\\gone.txt|file|"}));
}

TEST_F(SelectionListTest, SameFolderTwiceLeavesOneRowOneItemAndOneEvent) {
    Add(L"C:\\Data");
    Add(L"C:\\Data");
    EXPECT_EQ(list.RowCount(), 1);
    EXPECT_EQ(list.ArrayFichier()->Count(), 1);
    EXPECT_EQ(host.events.size(), 1u);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionListTest, SameFolderInOtherLettersIsOneItem) {
    Add(L"C:\\Data");
    Add(L"c:\\data");
    EXPECT_EQ(Items(), (Texts{L"C:\\Data/-1"}));
    EXPECT_EQ(Rows().size(), 1u);
}

TEST_F(SelectionListTest, EventComesWhenRowAndItemAreThere) {
    int rows = 0;
    int items = 0;
    host.whenRaised = [&](const std::wstring&) {
        rows = list.RowCount();
        items = list.ArrayFichier()->Count();
    };
    Add(L"C:\\Data");
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(items, 1);
}

TEST_F(SelectionListTest, PathOfAnItemOfTheOtherKindIsReportedAndKeepsItsRow) {
    Add(L"D:\\a.txt");
    machine.files.Remove(L"D:\\a.txt");
    machine.files.AddFolder(L"D:\\a.txt");
    Add(L"D:\\a.txt");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"457"), std::wstring::npos);
    EXPECT_EQ(list.RowCount(), 2);
    EXPECT_EQ(list.ArrayFichier()->Count(), 1);
}

TEST_F(SelectionListTest, FolderPatternShowsARowPerNameFoundAndKeepsOneItem) {
    host.spaceOf = [](const std::wstring&) { return Currency(); };
    machine.files.AddFolder(L"C:\\Rep\\Rep1");
    machine.files.AddFolder(L"C:\\Rep\\Rep2");
    machine.files.AddFolder(L"C:\\Rep\\Other");
    Add(L"C:\\Rep\\Rep*");
    EXPECT_EQ(Rows(), (Texts{L"C:\\Rep\\Rep1\\*.*|folder|", L"C:\\Rep\\Rep2\\*.*|folder|"}));
    EXPECT_EQ(Items(), (Texts{L"C:\\Rep\\Rep*/32"}));
    EXPECT_EQ(host.events, (Texts{L"OnAddFile C:\\Rep\\Rep*"}));
}

TEST_F(SelectionListTest, FolderPatternThatFindsNothingNewTakesNoOtherRowAway) {
    host.spaceOf = [](const std::wstring&) { return Currency(); };
    Add(L"C:\\None\\Rep*");
    Add(L"C:\\Data");
    Add(L"C:\\None\\Rep*");
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\*.*|folder|"}));
}

TEST_F(SelectionListTest, RowsOfAnotherColourAreBold) {
    list.AjouterFichRep(L"D:\\a.txt", 255, true);
    Add(L"D:\\b.txt");
    EXPECT_TRUE(list.Row(0).IsBold());
    EXPECT_EQ(list.Row(0).color, 255);
    EXPECT_FALSE(list.Row(1).IsBold());
    EXPECT_EQ(list.Row(1).color, 0);
}

TEST_F(SelectionListTest, FilesAreAddedInOrderUnderTheHourglass) {
    list.AddFiles(L"D:\\", {L"b.txt", L"a.txt"});
    list.AddFiles(L"C:\\Data", {L"a.txt"});
    EXPECT_EQ(Items(), (Texts{L"D:\\b.txt/32", L"D:\\a.txt/32", L"C:\\Data\\a.txt/32"}));
    EXPECT_EQ(machine.messageLoop.pointers,
              (std::vector<Pointer>{Pointer::Hourglass, Pointer::Default, Pointer::Hourglass, Pointer::Default}));
    EXPECT_EQ(screen.refreshes, 2) << "the view is brought up to date once per click";
}

TEST_F(SelectionListTest, AddedFolderGivesTheFolderAboveIt) {
    EXPECT_EQ(list.AddFolder(L"C:\\Data\\Sub"), L"C:\\Data\\");
    EXPECT_EQ(list.AddFolder(L"C:\\Data"), L"C:\\");
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\Sub/-1", L"C:\\Data/-1"}));
}

TEST_F(SelectionListTest, RootIsRefusedByTheButtonWithTheExclamationIcon) {
    EXPECT_EQ(list.AddFolder(L"C:\\"), L"");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text,
              L"La racine d'un disque ne peut pas être ajoutée. Veuillez sélectionner un sous répertoire");
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Racine non autorisée");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, 48u);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_TRUE(host.events.empty());
}

TEST_F(SelectionListTest, RootIsRefusedByTheDropWithTheInformationIcon) {
    machine.app.language->lngLangue = 10000;
    list.AddDropped({L"C:\\"});
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, L"The disk root (whole C:\\ drive for exemple) can not be added to "
                                                  L"the list. Please select a sub-folder.");
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Root not authorised");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, 64u);
    EXPECT_EQ(list.RowCount(), 0);
}

TEST_F(SelectionListTest, RootAmongDroppedPathsEndsTheDropThere) {
    list.AddDropped({L"D:\\a.txt", L"E:\\", L"D:\\b.txt"});
    EXPECT_EQ(Items(), (Texts{L"D:\\a.txt/32"}));
    EXPECT_EQ(screen.refreshes, 2) << "what was dropped before the root shows while the message is open";
}

TEST_F(SelectionListTest, DroppedFoldersAreFoldersAndFilesAreFiles) {
    list.AddDropped({L"C:\\Data", L"D:\\a.txt"});
    EXPECT_EQ(Rows(), (Texts{L"C:\\Data\\*.*|folder|", L"D:\\a.txt|file|"}));
}

TEST_F(SelectionListTest, RemovedRowTakesItsItemAndSaysSoBefore) {
    Add(L"C:\\Data");
    Add(L"D:\\a.txt");
    int itemsAtEvent = 0;
    host.whenRaised = [&](const std::wstring&) { itemsAtEvent = list.ArrayFichier()->Count(); };
    list.DetruireItem(0);
    EXPECT_EQ(itemsAtEvent, 2);
    EXPECT_EQ(host.events.back(), L"OnRemoveFile C:\\Data");
    EXPECT_EQ(Items(), (Texts{L"D:\\a.txt/32"}));
    EXPECT_EQ(Rows(), (Texts{L"D:\\a.txt|file|"}));
    EXPECT_EQ(machine.app.space->requiredSpace, SumOfItems());
}

TEST_F(SelectionListTest, RemovingTheLastRowSelectsTheNewLastRow) {
    list.AddFiles(L"D:\\", {L"a.txt", L"b.txt"});
    list.EffacerFichierListe(1);
    EXPECT_EQ(screen.selected, 0);
}

TEST_F(SelectionListTest, RemovingAMiddleRowSelectsTheOneThatTookItsPlace) {
    list.AddFiles(L"D:\\", {L"a.txt", L"b.txt"});
    Add(L"C:\\Data\\a.txt");
    list.EffacerFichierListe(1);
    EXPECT_EQ(screen.selected, 1);
    EXPECT_EQ(list.Row(1).Text(), L"C:\\Data\\a.txt");
}

TEST_F(SelectionListTest, RemovingWithoutASelectedRowOrWithoutRowsDoesNothing) {
    list.EffacerFichierListe(0);
    Add(L"D:\\a.txt");
    list.EffacerFichierListe(-1);
    EXPECT_EQ(list.RowCount(), 1);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionListTest, RemovingAllEmptiesRowsAndItemsAndThenSaysSo) {
    Add(L"C:\\Data");
    Add(L"D:\\a.txt");
    int rows = -1;
    int items = -1;
    host.whenRaised = [&](const std::wstring&) {
        rows = list.RowCount();
        items = list.ArrayFichier()->Count();
    };
    host.events.clear();
    list.EffacerTouteListe();
    EXPECT_EQ(host.events, (Texts{L"OnRemoveAllFile"}));
    EXPECT_EQ(rows, 0);
    EXPECT_EQ(items, 0);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
}

TEST_F(SelectionListTest, FailureIsReportedUnderTheProcedureAndKeepsWhatWasDone) {
    list.DetruireItem(3);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"DetruireItem, module frmBackupCD"), std::wstring::npos);
    machine.messageBoxes.shown.clear();
    host.spaceOf = [](const std::wstring&) -> Currency { throw RuntimeError(ErrorNumber::FileNotFound); };
    list.AddDropped({L"D:\\a.txt", L"D:\\b.txt"});
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"AjouterFichRep, module frmBackupCD"), std::wstring::npos);
    EXPECT_EQ(list.RowCount(), 2);
}

TEST_F(SelectionListTest, CollectionIsTheListsOwn) {
    Add(L"D:\\a.txt");
    list.ArrayFichier()->Item(1)->strNomUnique = L"Zip0001";
    EXPECT_EQ(list.ArrayFichier()->Item(L"D:\\a.txt")->strNomUnique, L"Zip0001");
}

TEST_F(SelectionListTest, CollectionPutInIsKeptAndItsRowsAreDuplicatesOfIt) {
    Add(L"D:\\a.txt");
    const auto other = std::make_shared<clsColFileInfo>(machine.app);
    other->Add(L"D:\\b.txt", KindFile);
    host.events.clear();
    list.SetArrayFichier(other);
    EXPECT_EQ(list.ArrayFichier(), other);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_TRUE(host.events.empty());
}

TEST_F(SelectionListTest, LongWorkShowsTheHourglassAfterHalfASecondAndKeepsPainting) {
    host.whenRaised = [&](const std::wstring&) { machine.clock.secondsSinceMidnight += 0.2; };
    list.AddDropped({L"D:\\a.txt", L"D:\\b.txt"});
    EXPECT_TRUE(machine.messageLoop.pointers.empty());
    EXPECT_EQ(machine.messageLoop.paintings, 0);
    list.AddDropped({L"C:\\Data", L"C:\\Data\\a.txt", L"C:\\Data\\b.txt", L"C:\\Data\\Sub"});
    EXPECT_EQ(machine.messageLoop.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Default}));
    EXPECT_EQ(machine.messageLoop.paintings, 2);
}

TEST_F(SelectionListTest, LongWorkOverMidnightIsStillLong) {
    machine.clock.secondsSinceMidnight = 86399.9;
    host.whenRaised = [&](const std::wstring&) { machine.clock.secondsSinceMidnight = 0.5; };
    list.AddDropped({L"D:\\a.txt"});
    EXPECT_EQ(machine.messageLoop.paintings, 1);
}

TEST_F(SelectionListTest, HundredThousandRowsAreNumberedByTheirPosition) {
    host.isQuiet = true;
    host.spaceOf = [](const std::wstring&) { return Currency(); };
    std::vector<std::wstring> names;
    for (int i = 0; i < 100000; ++i) names.push_back(std::to_wstring(i));
    list.AddFiles(L"X:\\", names);
    ASSERT_EQ(list.RowCount(), 100000);
    list.DetruireItem(40000);
    EXPECT_EQ(list.Row(40000).Text(), L"X:\\40001");
    EXPECT_EQ(list.Row(99998).Text(), L"X:\\99999");
    EXPECT_EQ(list.ArrayFichier()->Item(40001)->strNom, L"X:\\40001");
}

} // namespace
