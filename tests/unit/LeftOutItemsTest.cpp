// Items whose own path the list of a backup cannot record: they are not taken, and the user is told once.
#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "core/UserValues.h"
#include "platform/MessageBoxes.h"
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

class LeftOutItemsTest : public testing::Test, protected SelectionBench {
  protected:
    LeftOutItemsTest() {
        machine.files.AddSizedFile(L"C:\\Data\\a.txt", 1000);
        machine.files.AddSizedFile(L"C:\\Data\\été.txt", 1000);
        machine.files.AddSizedFile(Polish, 1000);
        machine.files.AddSizedFile(Decomposed, 1000);
        machine.files.AddFolder(L"C:\\Łódź");
    }

    /// The one message that was shown says which items were left out, and why.
    void ExpectOneMessageNaming(const Texts& paths) {
        ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
        const auto& shown = machine.messageBoxes.shown[0];
        for (const std::wstring& path : paths) EXPECT_NE(shown.text.find(path + L"\n"), std::wstring::npos) << path;
        EXPECT_EQ(shown.text.find(L"Ces éléments n'ont pas été ajoutés, parce que leur nom contient des caractères"),
                  0u);
        EXPECT_EQ(shown.title, L"Éléments non ajoutés");
        EXPECT_EQ(shown.style, box::Exclamation);
    }

    static constexpr const wchar_t* Polish = L"C:\\Data\\Łukasz.txt";
    static constexpr const wchar_t* Decomposed = L"C:\\Data\\e\u0301te\u0301.txt";
};

TEST_F(LeftOutItemsTest, FilesAddedByTheButtonAreNamedOnceAndTheOthersAreTaken) {
    list.AddFiles(L"C:\\Data", {L"Łukasz.txt", L"a.txt", L"e\u0301te\u0301.txt", L"été.txt"});
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\a.txt/32", L"C:\\Data\\été.txt/32"}));
    EXPECT_EQ(list.RowCount(), 2);
    EXPECT_EQ(host.events, (Texts{L"OnAddFile C:\\Data\\a.txt", L"OnAddFile C:\\Data\\été.txt"}));
    EXPECT_EQ(machine.app.space->requiredSpace, SumOfItems());
    ExpectOneMessageNaming({Polish, Decomposed});
}

TEST_F(LeftOutItemsTest, DroppedItemsAreNamedOnceAndTheOthersAreTaken) {
    list.AddDropped({L"C:\\Łódź", Polish, L"C:\\Data\\a.txt"});
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\a.txt/32"}));
    EXPECT_EQ(screen.selected, 0);
    ExpectOneMessageNaming({L"C:\\Łódź", Polish});
}

TEST_F(LeftOutItemsTest, FolderAddedByTheButtonStaysOpen) {
    EXPECT_EQ(list.AddFolder(L"C:\\Łódź"), L"");
    EXPECT_EQ(list.RowCount(), 0);
    ExpectOneMessageNaming({L"C:\\Łódź"});
    machine.messageBoxes.shown.clear();
    EXPECT_EQ(list.AddFolder(L"C:\\Data"), L"C:\\") << "what went before counts no more";
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(LeftOutItemsTest, NamesInsideAChosenFolderAreNoMatter) {
    Add(L"C:\\Data");
    EXPECT_EQ(Items(), (Texts{L"C:\\Data/-1"}));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(LeftOutItemsTest, NamesInTheProfileFoldersOwnPathAreNoMatter) {
    machine.app.user->strProfilUtilisateur = L"C:\\Users\\Łukasz";
    machine.files.AddSizedFile(L"C:\\Users\\Łukasz\\a.txt", 1);
    machine.files.AddSizedFile(L"C:\\Users\\Łukasz\\ł.txt", 1);
    list.AddDropped({L"C:\\Users\\Łukasz\\a.txt", L"C:\\Users\\Łukasz\\ł.txt"});
    EXPECT_EQ(Items(), (Texts{L"C:\\Users\\Łukasz\\a.txt/32"}));
    ExpectOneMessageNaming({L"C:\\Users\\Łukasz\\ł.txt"});
}

TEST_F(LeftOutItemsTest, ItemsOfASetAreNamedOncePerClick) {
    AddListFile(L"vexal.lst", {L"C:\\Data\\.txt*"});
    AddListFile(L"brinde.lst", {L"C:\\Data\\.txt*"});
    list.LoadSets();
    EXPECT_EQ(Items(), (Texts{L"C:\\Data\\a.txt/32", L"C:\\Data\\été.txt/32"}));
    EXPECT_EQ(list.ItemsAdded(0), 2);
    EXPECT_EQ(machine.app.space->requiredSpace, SumOfItems());
    ExpectOneMessageNaming({Polish, Decomposed});
    list.ClickBox(0);
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    list.ClickBox(0);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 2u);
}

TEST_F(LeftOutItemsTest, MessageComesWhenTheRowsAreShown) {
    int refreshesBefore = -1;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) { refreshesBefore = screen.refreshes; };
    list.AddDropped({L"C:\\Data\\a.txt", Polish});
    EXPECT_EQ(refreshesBefore, 1);
}

TEST_F(LeftOutItemsTest, OfVeryManyTheFirstTenAreNamedAndTheRestCounted) {
    machine.app.language->lngLangue = 10000;
    Texts paths;
    for (int number = 100; number < 125; ++number) paths.push_back(L"C:\\ł" + std::to_wstring(number));
    list.AddDropped(paths);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    const std::wstring& text = machine.messageBoxes.shown[0].text;
    EXPECT_NE(text.find(L"C:\\ł109\n... and 15 more\n"), std::wstring::npos) << text;
    EXPECT_EQ(text.find(L"C:\\ł110"), std::wstring::npos);
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Items not added");
}

TEST_F(LeftOutItemsTest, NoFolderAtAllAddsNothing) {
    EXPECT_EQ(list.AddFolder(L""), L"");
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(list.ArrayFichier()->Count(), 0);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

} // namespace
