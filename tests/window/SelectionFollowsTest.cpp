// The row that the user sees selected, while rows come and go around it.
#include "SelectionControlBench.h"

namespace {

class SelectionFollows : public SelectionControlTest {
  protected:
    bool IsInView(int row) const {
        const int top = ListView_GetTopIndex(At(IDC_lvFichRep));
        return row >= top && row < top + ListView_GetCountPerPage(At(IDC_lvFichRep));
    }
};

TEST_F(SelectionFollows, RowsAboveThatGoWithTheirSetLeaveTheItemSelected) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat\r\nD:\\Data\\y.dat\r\nD:\\Data\\z.dat");
    Open();
    const std::wstring documents = L"C:\\Users\\agent\\Documents\\";
    Drop({documents + L"a.txt", documents + L"b.txt", documents + L"c.txt"});
    List().Select(4);
    Click(IDC_chkSauvOKR1);
    ASSERT_EQ(RowCount(), 3);
    EXPECT_EQ(List().Selected(), 1);
    EXPECT_EQ(ListView_GetSelectedCount(At(IDC_lvFichRep)), 1u);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(Rows(), (Texts{L"1|" + documents + L"a.txt|Fichier|", L"2|" + documents + L"c.txt|Fichier|"}));
}

TEST_F(SelectionFollows, RowThatWentWithItsSetLeavesNoneSelected) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat");
    Open();
    Drop({L"D:\\Data\\y.dat", L"D:\\Data\\z.dat"});
    List().Select(0);
    Click(IDC_chkSauvOKR1);
    EXPECT_EQ(List().Selected(), -1);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(SelectionFollows, DropThatEndsWithADuplicateShowsItsNewRow) {
    Texts paths;
    for (int i = 0; i < 100; ++i) paths.push_back(L"D:\\Lot\\" + std::to_wstring(i) + L".txt");
    for (const std::wstring& path : paths) machine.files.AddSizedFile(path, 1);
    Open();
    Drop(paths);
    List().Select(0);
    ListView_EnsureVisible(At(IDC_lvFichRep), 0, FALSE);
    Drop({L"D:\\Data\\x.dat", L"D:\\Data\\y.dat", paths[0]});
    EXPECT_EQ(RowCount(), 102);
    EXPECT_EQ(List().Selected(), 101);
    EXPECT_TRUE(IsInView(100));
    EXPECT_TRUE(IsInView(101));
}

} // namespace
