// The selected row of the list: it belongs to an item, not to a place.
#include "support/SelectionBench.h"

#include <gtest/gtest.h>

namespace {

class SelectedRowTest : public testing::Test, protected SelectionBench {
  protected:
    SelectedRowTest() {
        for (const wchar_t* name : {L"a", L"b", L"c", L"d"})
            machine.files.AddSizedFile(std::wstring(L"C:\\Data\\") + name, 100);
        machine.files.AddSizedFile(L"D:\\one", 1);
        machine.files.AddSizedFile(L"D:\\two", 2);
        machine.files.AddSizedFile(L"D:\\three", 4);
        AddListFile(L"vexal.lst", {L"C:\\Data\\a", L"C:\\Data\\b"});
        AddListFile(L"brinde.lst", {L"C:\\Data\\c"});
        AddListFile(L"qamor.lst", {L"C:\\Data\\d"});
    }

    void Load() {
        list.LoadSets();
        list.AddDropped({L"D:\\one", L"D:\\two", L"D:\\three"});
        ASSERT_EQ(list.RowCount(), 7);
    }
    void UserSelects(const std::wstring& text) {
        for (std::int32_t row = 0; row < list.RowCount(); ++row) {
            if (list.Row(row).Text() == text) screen.selected = row;
        }
        ASSERT_EQ(SelectedText(), text);
    }
    std::wstring SelectedText() const { return screen.selected < 0 ? L"" : list.Row(screen.selected).Text(); }
};

TEST_F(SelectedRowTest, StaysWithItsItemWhenASetAboveGoes) {
    Load();
    UserSelects(L"D:\\two");
    list.ClickBox(0);
    EXPECT_EQ(SelectedText(), L"D:\\two");
    list.EffacerFichierListe(screen.selected);
    EXPECT_EQ(list.ArrayFichier()->Find(L"D:\\two", KindFile), nullptr);
    EXPECT_NE(list.ArrayFichier()->Find(L"D:\\three", KindFile), nullptr);
    EXPECT_EQ(SelectedText(), L"D:\\three") << "the row that took its place";
}

TEST_F(SelectedRowTest, StaysWhereItIsWhenASetBelowComesOrGoes) {
    Load();
    list.ClickBox(1);
    UserSelects(L"D:\\one");
    list.ClickBox(1);
    EXPECT_EQ(SelectedText(), L"D:\\one");
    list.ClickBox(1);
    EXPECT_EQ(SelectedText(), L"D:\\one");
}

TEST_F(SelectedRowTest, IsNoneOnceItsOwnItemWentWithItsSet) {
    Load();
    UserSelects(L"C:\\Data\\b");
    list.ClickBox(0);
    EXPECT_EQ(screen.selected, -1);
    list.EffacerFichierListe(screen.selected);
    EXPECT_EQ(list.RowCount(), 4) << "nothing is removed that nobody chose";
}

TEST_F(SelectedRowTest, StaysWithItsItemWhenAnotherRowIsRemoved) {
    Load();
    UserSelects(L"D:\\two");
    list.DetruireItem(0);
    EXPECT_EQ(SelectedText(), L"D:\\two");
    list.DetruireItem(list.RowCount() - 1);
    EXPECT_EQ(SelectedText(), L"D:\\two");
}

TEST_F(SelectedRowTest, IsNoneAfterTheWholeListWent) {
    Load();
    UserSelects(L"D:\\two");
    list.EffacerTouteListe();
    EXPECT_EQ(screen.selected, -1);
}

TEST_F(SelectedRowTest, IsTheLastNewRowOfADropThatEndsWithADuplicate) {
    Load();
    machine.files.AddSizedFile(L"D:\\four", 8);
    UserSelects(L"C:\\Data\\a");
    screen.shown = -1;
    list.AddDropped({L"D:\\four", L"D:\\one"});
    EXPECT_EQ(SelectedText(), L"D:\\four");
    EXPECT_EQ(screen.shown, screen.selected);
}

TEST_F(SelectedRowTest, StaysWhereItWasAfterADropOfDuplicatesOnly) {
    Load();
    UserSelects(L"C:\\Data\\a");
    screen.shown = -1;
    list.AddDropped({L"D:\\two", L"D:\\one"});
    EXPECT_EQ(SelectedText(), L"C:\\Data\\a");
    EXPECT_EQ(screen.shown, -1);
}

} // namespace
