#include "SelectionControlBench.h"
#include "core/LanguageValues.h"

namespace {

TEST_F(SelectionControlTest, AddsTheSelectedFilesInOrder) {
    Open();
    SelectLines({2, 0});
    Click(IDC_cmdAjouterFichier);
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\a.txt|Fichier|",
                             L"2|C:\\Users\\agent\\Documents\\c.txt|Fichier|"}));
    EXPECT_EQ(List().Selected(), 1);
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(SelectionControlTest, DoubleClickAndEnterAddFilesToo) {
    Open();
    SelectLines({1});
    SendMessageW(control->Handle(), WM_COMMAND, MAKEWPARAM(IDC_flbSelectFichier, LBN_DBLCLK), 0);
    ui::RunPendingMessages();
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\b.txt|Fichier|"}));
    SelectLines({2});
    Press(IDC_flbSelectFichier, VK_RETURN);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(SelectionControlTest, AddsTheFolderAndMovesToTheOneAbove) {
    Open();
    Click(IDC_cmdAjouterRep);
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\*.*|Répertoire|"}));
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent", L"Documents"}));
    EXPECT_EQ(Selected(IDC_dlbSelectRep), 2);
    EXPECT_EQ(control->ArrayFichier()->Item(1)->strNom, L"C:\\Users\\agent\\Documents");
}

TEST_F(SelectionControlTest, KindsReadInTheUsersLanguage) {
    machine.app.language->lngLangue = 10000;
    Open();
    Drop({L"D:\\Data", L"D:\\Data\\x.dat"});
    EXPECT_EQ(Rows(), (Texts{L"1|D:\\Data\\*.*|Directory|", L"2|D:\\Data\\x.dat|File|"}));
}

TEST_F(SelectionControlTest, RootIsRefusedByTheButtonAndByTheDropWithTheirOwnIcons) {
    Open();
    ChooseDrive(1);
    Click(IDC_cmdAjouterRep);
    Drop({L"D:\\Data\\x.dat", L"E:\\", L"D:\\Data\\y.dat"});
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_EQ(machine.messageBoxes.shown[0].style, 48u);
    EXPECT_EQ(machine.messageBoxes.shown[1].style, 64u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.messageBoxes.shown[1].text);
    EXPECT_EQ(Rows(), (Texts{L"1|D:\\Data\\x.dat|Fichier|"}));
    EXPECT_EQ(Lines(IDC_dlbSelectRep)[0], L"C:\\");
}

TEST_F(SelectionControlTest, ThousandDroppedFilesAreAllThere) {
    Texts paths;
    for (int i = 0; i < 1000; ++i) {
        paths.push_back(L"D:\\Lot\\" + std::to_wstring(i) + L".txt");
        machine.files.AddSizedFile(paths.back(), 1);
    }
    Open();
    Drop(paths);
    EXPECT_EQ(RowCount(), 1000);
    EXPECT_EQ(Row(999), L"1000|D:\\Lot\\999.txt|Fichier|");
    EXPECT_EQ(List().Selected(), 999);
}

TEST_F(SelectionControlTest, RemovalSelectsTheRowThatTookThePlaceOrTheNewLastOne) {
    Open();
    Drop({L"D:\\Data\\x.dat", L"D:\\Data\\y.dat", L"D:\\Data\\z.dat"});
    List().Select(1);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(Rows(), (Texts{L"1|D:\\Data\\x.dat|Fichier|", L"2|D:\\Data\\z.dat|Fichier|"}));
    EXPECT_EQ(List().Selected(), 1);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(List().Selected(), 0);
    Press(IDC_lvFichRep, VK_DELETE);
    EXPECT_EQ(RowCount(), 0);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionControlTest, SetRowsAreRedAndBoldAndCarryTheirSet) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat\r\nD:\\Data");
    Open();
    Drop({L"D:\\Data\\y.dat"});
    EXPECT_EQ(Rows(),
              (Texts{L"1|D:\\Data\\x.dat|Fichier|1", L"2|D:\\Data|Répertoire|1", L"3|D:\\Data\\y.dat|Fichier|"}));
    EXPECT_EQ(List().LookOf(0).color, RGB(255, 0, 0));
    EXPECT_EQ(List().LookOf(2).color, 0u);
}

TEST_F(SelectionControlTest, BoxesShowTheirSetsAndAClickTakesASetAway) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat\r\nD:\\Data\\y.dat\r\nD:\\Data\\z.dat");
    Open();
    EXPECT_EQ(State(IDC_chkSauvOKR1), BST_CHECKED);
    EXPECT_TRUE(IsEnabled(IDC_chkSauvOKR1));
    EXPECT_FALSE(IsEnabled(IDC_chkSauvOKR0));
    EXPECT_EQ(State(IDC_chkSauvOKR0), BST_UNCHECKED);
    Click(IDC_chkSauvOKR1);
    EXPECT_EQ(State(IDC_chkSauvOKR1), BST_UNCHECKED);
    EXPECT_EQ(RowCount(), 0);
    Click(IDC_chkSauvOKR1);
    EXPECT_EQ(State(IDC_chkSauvOKR1), BST_CHECKED);
    EXPECT_EQ(RowCount(), 3);
}

TEST_F(SelectionControlTest, BoxThatTurnsGreyByProgramTouchesNothingElse) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat\r\nD:\\Data\\y.dat\r\nD:\\Data\\z.dat");
    Open();
    host.events.clear();
    List().Select(0);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(State(IDC_chkSauvOKR1), BST_INDETERMINATE);
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(host.events, (Texts{L"OnRemoveFile D:\\Data\\x.dat"}));
    Click(IDC_chkSauvOKR1);
    EXPECT_EQ(State(IDC_chkSauvOKR1), BST_UNCHECKED);
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(SelectionControlTest, TransferListChecksAndDisablesAllBoxes) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat");
    AddListFile(L"transfert.lst", "D:\\Data\\y.dat");
    Open();
    for (const int id : {IDC_chkSauvOKR0, IDC_chkSauvOKR1, IDC_chkSauvOKR2, IDC_chkSauvOKR3}) {
        EXPECT_EQ(State(id), BST_CHECKED) << id;
        EXPECT_FALSE(IsEnabled(id)) << id;
    }
    EXPECT_EQ(Rows(), (Texts{L"1|D:\\Data\\y.dat|Fichier|0"}));
}

TEST_F(SelectionControlTest, RemovingTheWholeListClearsRowsAndBoxes) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat");
    Open();
    Drop({L"D:\\Data\\y.dat"});
    host.events.clear();
    Click(IDC_cmdEffacerTouteListe);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_EQ(State(IDC_chkSauvOKR1), BST_UNCHECKED);
    EXPECT_EQ(host.events, (Texts{L"OnRefreshSpace", L"OnRemoveAllFile"}));
    EXPECT_EQ(control->ArrayFichier()->Count(), 0);
}

} // namespace
