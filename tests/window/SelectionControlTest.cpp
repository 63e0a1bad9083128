#include "CaptionFit.h"
#include "KeyboardReach.h"
#include "TestFormIds.h"
#include "selection/forms/ctlSelectionFichiers.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "support/SelectionHost.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <shlobj.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::wstring>;
using Ids = std::vector<int>;

class HostForm : public ui::Form {
  public:
    HostForm() : ui::Form(IDD_TestForm) {}

  protected:
    void OnUnhandledException() noexcept override { ADD_FAILURE() << "a handler let something through"; }
};

/// The selection control in a host window, on a stand-in workstation that has real messages.
class SelectionControlTest : public testing::Test {
  protected:
    SelectionControlTest() : machine(&messages), host(machine.app) {
        machine.drives.Add(L"A:\\", DriveType::Removable, L"FLOPPY");
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"Système");
        machine.drives.Add(L"D:\\", DriveType::Fixed, L"Données");
        machine.drives.Add(L"F:\\", DriveType::CdRom, std::nullopt);
        machine.files.FailWith(L"F:\\", ErrorNumber::DiskNotReady);
        machine.system.SetEnvironment(L"UserProfile", L"C:\\Users\\agent");
        machine.system.SetEnvironment(L"Windir", L"C:\\windows");
        for (const wchar_t* name : {L"c.txt", L"a.txt", L"b.txt"})
            machine.files.AddSizedFile(std::wstring(L"C:\\Users\\agent\\Documents\\") + name, 100);
        machine.files.AddFolder(L"C:\\Users\\agent\\Documents\\Ventes");
        machine.files.AddSizedFile(L"D:\\Data\\x.dat", 1000);
        machine.files.AddSizedFile(L"D:\\Data\\y.dat", 2000);
        machine.files.AddSizedFile(L"D:\\Data\\z.dat", 3000);
        host.spaceOf = [this](const std::wstring& path) { return control->SpaceOf(path); };
    }

    void AddListFile(const std::wstring& name, const std::string& content) {
        machine.files.AddFile(machine.app.ListFileFolder() + name, content);
    }

    void Open() {
        control = std::make_unique<ctlSelectionFichiers>(machine.app, host);
        parent.Create();
        SetWindowPos(parent.Handle(), nullptr, 0, 0, 820, 460, SWP_NOMOVE);
        for (HWND child = GetWindow(parent.Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            ShowWindow(child, SW_HIDE);
        RECT place{5, 4, 523, 242};
        MapDialogRect(parent.Handle(), &place);
        control->CreateChild(parent, place);
        parent.Show();
        ui::RunPendingMessages();
    }

    HWND At(int id) const { return GetDlgItem(control->Handle(), id); }
    std::wstring Text(int id) const {
        wchar_t text[256] = {};
        GetWindowTextW(At(id), text, 256);
        return text;
    }
    void Click(int id) {
        SendMessageW(At(id), BM_CLICK, 0, 0);
        ui::RunPendingMessages();
    }
    LRESULT State(int id) const { return SendMessageW(At(id), BM_GETCHECK, 0, 0); }
    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }

    Texts Lines(int id) const {
        Texts lines;
        for (LRESULT row = 0; row < SendMessageW(At(id), LB_GETCOUNT, 0, 0); ++row) {
            wchar_t text[MAX_PATH] = {};
            SendMessageW(At(id), LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
            lines.push_back(text);
        }
        return lines;
    }
    void ClickLine(int id, int row) {
        RECT place{};
        SendMessageW(At(id), LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        const LPARAM point = MAKELPARAM(place.left + 20, (place.top + place.bottom) / 2);
        PostMessageW(At(id), WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(At(id), WM_LBUTTONUP, 0, point);
        ui::RunPendingMessages();
    }
    void SelectLines(const std::vector<int>& rows) {
        for (const int row : rows) SendMessageW(At(IDC_flbSelectFichier), LB_SETSEL, TRUE, row);
    }
    void ChooseDrive(int row) {
        SendMessageW(At(IDC_dlbSelectLecteur), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
        SendMessageW(control->Handle(), WM_COMMAND, MAKEWPARAM(IDC_dlbSelectLecteur, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(At(IDC_dlbSelectLecteur)));
        ui::RunPendingMessages();
    }
    std::wstring Drive() const {
        wchar_t text[64] = {};
        GetWindowTextW(At(IDC_dlbSelectLecteur), text, 64);
        return text;
    }
    void Drop(const Texts& paths) {
        std::wstring names;
        for (const std::wstring& path : paths) names += path + L'\0';
        names += L'\0';
        const std::size_t bytes = names.size() * sizeof(wchar_t);
        HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + bytes);
        auto* header = static_cast<DROPFILES*>(GlobalLock(memory));
        header->pFiles = sizeof(DROPFILES);
        header->fWide = TRUE;
        std::memcpy(header + 1, names.data(), bytes);
        GlobalUnlock(memory);
        SendMessageW(At(IDC_lvFichRep), WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
        ui::RunPendingMessages();
    }
    int RowCount() const { return ListView_GetItemCount(At(IDC_lvFichRep)); }
    int SelectedRow() const { return ListView_GetNextItem(At(IDC_lvFichRep), -1, LVNI_SELECTED); }
    std::wstring Row(int row) const {
        std::wstring cells;
        for (int column = 0; column < 4; ++column) {
            wchar_t text[MAX_PATH] = {};
            ListView_GetItemText(At(IDC_lvFichRep), row, column, text, MAX_PATH);
            cells += (column > 0 ? L"|" : L"") + std::wstring(text);
        }
        return cells;
    }
    Texts Rows() const {
        Texts rows;
        for (int row = 0; row < RowCount(); ++row) rows.push_back(Row(row));
        return rows;
    }
    Texts Headers() const {
        Texts headers;
        for (int column = 0; column < 4; ++column) {
            wchar_t text[64] = {};
            LVCOLUMNW info{};
            info.mask = LVCF_TEXT;
            info.pszText = text;
            info.cchTextMax = 64;
            SendMessageW(At(IDC_lvFichRep), LVM_GETCOLUMNW, static_cast<WPARAM>(column),
                         reinterpret_cast<LPARAM>(&info));
            headers.push_back(text);
        }
        return headers;
    }
    /// How the view is told to draw a row.
    NMLVCUSTOMDRAW Drawn(int row) const {
        NMLVCUSTOMDRAW draw{};
        HDC screen = GetDC(nullptr);
        draw.nmcd.hdr = {At(IDC_lvFichRep), IDC_lvFichRep, static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
        draw.nmcd.hdc = screen;
        SendMessageW(control->Handle(), WM_NOTIFY, IDC_lvFichRep, reinterpret_cast<LPARAM>(&draw));
        ReleaseDC(nullptr, screen);
        return draw;
    }
    void PressKey(int id, WPARAM key) {
        SetFocus(At(id));
        MSG message{At(id), WM_KEYDOWN, key, 0, 0, {}};
        if (!parent.TranslateKeys(message)) DispatchMessageW(&message);
        ui::RunPendingMessages();
    }

    FormMessageLoop messages;
    FakeMachine machine;
    SelectionHost host;
    HostForm parent;
    std::unique_ptr<ctlSelectionFichiers> control;
};

TEST_F(SelectionControlTest, FrenchCaptions) {
    Open();
    EXPECT_EQ(Text(IDC_frmFileView), L"Fichiers et répertoires ");
    EXPECT_EQ(Text(IDC_cmdAjouterFichier), L"Ajouter les  &fichiers sélectionnés");
    EXPECT_EQ(Text(IDC_cmdAjouterRep), L"Ajouter le &répertoire");
    EXPECT_EQ(Text(IDC_frmSauvegardeOKR), L"Sau&vegarde des logiciels OKR");
    EXPECT_EQ(Text(IDC_chkSauvOKR0), L"&Illustrations et concepts de vente (Quillet, Rentes, ABF, Brinde)");
    EXPECT_EQ(Text(IDC_chkSauvOKR1), L"Gestion de la &clientèle");
    EXPECT_EQ(Text(IDC_chkSauvOKR2), L"Sauvegarde &Mes documents Tarvel (C:\\Repres\\Documents)");
    EXPECT_EQ(Text(IDC_chkSauvOKR3), L"Outlook");
    EXPECT_EQ(Text(IDC_frmDView), L"Liste des fichiers / Répertoires à graver ");
    EXPECT_EQ(Text(IDC_cmdOuvrirExplorer), L"Ouvrir l'explorateur &Windows");
    EXPECT_EQ(Text(IDC_cmdEffacerTouteListe), L"Effacer to&ute la liste");
    EXPECT_EQ(Text(IDC_cmdEffacerFichierListe), L"Eff&acer de la liste");
    EXPECT_EQ(Headers(), (Texts{L"Nº", L"Fichiers et répertoires", L"Type", L""}));
}

TEST_F(SelectionControlTest, EnglishCaptions) {
    machine.app.lngLangue = 10000;
    Open();
    EXPECT_EQ(Text(IDC_frmFileView), L"Files and folders ");
    EXPECT_EQ(Text(IDC_cmdAjouterFichier), L"Add selected &files");
    EXPECT_EQ(Text(IDC_cmdAjouterRep), L"Add selected folde&r");
    EXPECT_EQ(Text(IDC_frmSauvegardeOKR), L"Backup ORK software");
    EXPECT_EQ(Text(IDC_chkSauvOKR0), L"&Illustrations and sale concepts (Quill, Non UL, Annuities, FNA, Brinde)");
    EXPECT_EQ(Text(IDC_chkSauvOKR1), L"Save &Client Liaison");
    EXPECT_EQ(Text(IDC_chkSauvOKR2), L"Save &My Tarvel documents (C:\\Repres\\Documents)");
    EXPECT_EQ(Text(IDC_chkSauvOKR3), L"Outlook");
    EXPECT_EQ(Text(IDC_frmDView), L"List of files and folders to backup ");
    EXPECT_EQ(Text(IDC_cmdOuvrirExplorer), L"&Open Windows Explorer");
    EXPECT_EQ(Text(IDC_cmdEffacerTouteListe), L"Remove the w&hole list");
    EXPECT_EQ(Text(IDC_cmdEffacerFichierListe), L"Remove from &list");
    EXPECT_EQ(Headers(), (Texts{L"Num", L"Files and directories", L"Type", L""}));
}

TEST_F(SelectionControlTest, EveryCaptionFitsInBothLanguages) {
    Open();
    EXPECT_EQ(ClippedCaptions(control->Handle()), std::vector<std::string>{});
    EXPECT_EQ(OverlappingControls(control->Handle()), std::vector<std::string>{});
    control.reset();
    parent.Unload();
    machine.app.lngLangue = 10000;
    Open();
    EXPECT_EQ(ClippedCaptions(control->Handle()), std::vector<std::string>{});
}

TEST_F(SelectionControlTest, StandsAboveThePlaceOfTheProgress) {
    Open();
    RECT size{};
    GetWindowRect(control->Handle(), &size);
    EXPECT_LE(ui::TwipsFromPixels(size.bottom - size.top, control->Handle()), 5850);
}

TEST_F(SelectionControlTest, EveryControlIsReachedByKeyboardAndNamed) {
    AddListFile(L"vexal.lst", "D:\\Data\\x.dat");
    AddListFile(L"qamor.lst", "D:\\Data\\y.dat");
    AddListFile(L"tarvel.lst", "D:\\Data\\z.dat");
    AddListFile(L"outlookVista.lst", "D:\\Data");
    Open();
    EXPECT_EQ(UnreachableControls(control->Handle()), Ids{});
    EXPECT_EQ(UnlabelledFields(control->Handle()), Ids{});
    EXPECT_EQ(AccessKeyClashes(control->Handle()), L"");
    EXPECT_EQ(TabOrder(control->Handle()),
              (Ids{IDC_dlbSelectLecteur, IDC_dlbSelectRep, IDC_cmdAjouterRep, IDC_flbSelectFichier,
                   IDC_cmdAjouterFichier, IDC_chkSauvOKR0, IDC_chkSauvOKR1, IDC_chkSauvOKR2, IDC_chkSauvOKR3,
                   IDC_lvFichRep, IDC_cmdOuvrirExplorer, IDC_cmdEffacerTouteListe, IDC_cmdEffacerFichierListe}));
}

TEST_F(SelectionControlTest, StartsInTheUsersDocuments) {
    Open();
    EXPECT_EQ(Drive(), L"c: [Système]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent", L"Documents", L"Ventes"}));
    EXPECT_EQ(SendMessageW(At(IDC_dlbSelectRep), LB_GETCURSEL, 0, 0), 3);
    EXPECT_EQ(Lines(IDC_flbSelectFichier), (Texts{L"a.txt", L"b.txt", L"c.txt"}));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionControlTest, StaysOnTheProgramsDriveWithoutDocuments) {
    machine.system.SetEnvironment(L"UserProfile", L"C:\\Nobody");
    machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
    Open();
    EXPECT_EQ(Drive(), L"c: [Système]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Valcoreaux", L"Backup"}));
}

TEST_F(SelectionControlTest, OneClickOpensAFolderAndTheFilesFollow) {
    Open();
    machine.files.AddFile(L"C:\\Users\\agent\\Documents\\Ventes\\v.txt");
    ClickLine(IDC_dlbSelectRep, 4);
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent", L"Documents", L"Ventes"}));
    EXPECT_EQ(Lines(IDC_flbSelectFichier), (Texts{L"v.txt"}));
    ClickLine(IDC_dlbSelectRep, 1);
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent"}));
}

TEST_F(SelectionControlTest, ArrowKeysMoveThroughTheFoldersAndEnterOpens) {
    Open();
    PressKey(IDC_dlbSelectRep, VK_DOWN);
    EXPECT_EQ(SendMessageW(At(IDC_dlbSelectRep), LB_GETCURSEL, 0, 0), 4);
    EXPECT_EQ(Lines(IDC_flbSelectFichier).size(), 3u) << "the files are still those of the open folder";
    PressKey(IDC_dlbSelectRep, VK_RETURN);
    EXPECT_TRUE(Lines(IDC_flbSelectFichier).empty());
    PressKey(IDC_dlbSelectRep, VK_UP);
    PressKey(IDC_dlbSelectRep, VK_SPACE);
    EXPECT_EQ(Lines(IDC_flbSelectFichier).size(), 3u);
}

TEST_F(SelectionControlTest, FolderWithoutAccessIsReportedAndTheListsStay) {
    Open();
    machine.files.Deny(L"C:\\Users\\agent\\Documents\\Ventes");
    ClickLine(IDC_dlbSelectRep, 4);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"dlbSelectRep_Click, module frmBackupCD"), std::wstring::npos);
    EXPECT_EQ(Lines(IDC_flbSelectFichier).size(), 3u);
}

TEST_F(SelectionControlTest, ChoosingADriveOpensItsRoot) {
    Open();
    ChooseDrive(2);
    EXPECT_EQ(Drive(), L"d: [Données]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"D:\\", L"Data"}));
    EXPECT_TRUE(Lines(IDC_flbSelectFichier).empty());
}

TEST_F(SelectionControlTest, ChoosingAFloppyDriveMovesNothing) {
    machine.files.AddFile(L"A:\\floppy.txt");
    Open();
    ChooseDrive(0);
    EXPECT_EQ(Lines(IDC_dlbSelectRep).back(), L"Ventes");
    EXPECT_EQ(Lines(IDC_flbSelectFichier), (Texts{L"a.txt", L"b.txt", L"c.txt"}));
    EXPECT_EQ(Drive(), L"a:");
}

TEST_F(SelectionControlTest, EmptyDriveIsReportedAndTheDriveGoesBack) {
    Open();
    ChooseDrive(3);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"71 (Disk not ready)"), std::wstring::npos);
    EXPECT_EQ(Drive(), L"c: [Système]");
    EXPECT_EQ(Lines(IDC_dlbSelectRep).back(), L"Ventes");
}

TEST_F(SelectionControlTest, AddsTheSelectedFilesInOrder) {
    Open();
    SelectLines({2, 0});
    Click(IDC_cmdAjouterFichier);
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\a.txt|Fichier|",
                             L"2|C:\\Users\\agent\\Documents\\c.txt|Fichier|"}));
    EXPECT_EQ(SelectedRow(), 1);
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(SelectionControlTest, DoubleClickAndEnterAddFilesToo) {
    Open();
    SelectLines({1});
    SendMessageW(control->Handle(), WM_COMMAND, MAKEWPARAM(IDC_flbSelectFichier, LBN_DBLCLK), 0);
    ui::RunPendingMessages();
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\b.txt|Fichier|"}));
    SelectLines({2});
    PressKey(IDC_flbSelectFichier, VK_RETURN);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(SelectionControlTest, AddsTheFolderAndMovesToTheOneAbove) {
    Open();
    Click(IDC_cmdAjouterRep);
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\*.*|Répertoire|"}));
    EXPECT_EQ(Lines(IDC_dlbSelectRep), (Texts{L"C:\\", L"Users", L"agent", L"Documents"}));
    EXPECT_EQ(SendMessageW(At(IDC_dlbSelectRep), LB_GETCURSEL, 0, 0), 2);
    EXPECT_EQ(control->ArrayFichier()->Item(1)->strNom, L"C:\\Users\\agent\\Documents");
}

TEST_F(SelectionControlTest, KindsReadInTheUsersLanguage) {
    machine.app.lngLangue = 10000;
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
    EXPECT_EQ(SelectedRow(), 999);
}

TEST_F(SelectionControlTest, RemovalSelectsTheRowThatTookThePlaceOrTheNewLastOne) {
    Open();
    Drop({L"D:\\Data\\x.dat", L"D:\\Data\\y.dat", L"D:\\Data\\z.dat"});
    ListView_SetItemState(At(IDC_lvFichRep), 1, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(Rows(), (Texts{L"1|D:\\Data\\x.dat|Fichier|", L"2|D:\\Data\\z.dat|Fichier|"}));
    EXPECT_EQ(SelectedRow(), 1);
    Click(IDC_cmdEffacerFichierListe);
    EXPECT_EQ(SelectedRow(), 0);
    PressKey(IDC_lvFichRep, VK_DELETE);
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
    EXPECT_EQ(Drawn(0).clrText, RGB(255, 0, 0));
    EXPECT_EQ(Drawn(2).clrText, 0u);
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
    ListView_SetItemState(At(IDC_lvFichRep), 0, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
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

TEST_F(SelectionControlTest, DisabledControlGreysAllButTheFourBoxes) {
    AddListFile(L"qamor.lst", "D:\\Data\\x.dat");
    Open();
    control->SetEnabled(false);
    EXPECT_FALSE(control->Enabled());
    for (const int id : {IDC_frmFileView, IDC_dlbSelectLecteur, IDC_dlbSelectRep, IDC_flbSelectFichier,
                         IDC_cmdAjouterFichier, IDC_cmdAjouterRep, IDC_frmSauvegardeOKR, IDC_frmDView, IDC_lvFichRep,
                         IDC_cmdOuvrirExplorer, IDC_cmdEffacerTouteListe, IDC_cmdEffacerFichierListe})
        EXPECT_FALSE(IsEnabled(id)) << id;
    EXPECT_TRUE(IsEnabled(IDC_chkSauvOKR1));
    EXPECT_FALSE(IsEnabled(IDC_chkSauvOKR0)) << "a box keeps its own state";
    EXPECT_FALSE(IsWindowEnabled(control->Handle()));
    control->SetEnabled(true);
    EXPECT_TRUE(control->Enabled());
    EXPECT_TRUE(IsEnabled(IDC_lvFichRep));
    EXPECT_TRUE(IsWindowEnabled(control->Handle()));
}

TEST_F(SelectionControlTest, ExplorerIsStartedFromTheWindowsFolder) {
    Open();
    Click(IDC_cmdOuvrirExplorer);
    EXPECT_EQ(machine.processes.started, (Texts{L"C:\\windows\\explorer.exe"}));
    machine.processes.canStart = false;
    Click(IDC_cmdOuvrirExplorer);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"cmdOuvrirExplorer_Click, module frmBackupCD"),
              std::wstring::npos);
}

TEST_F(SelectionControlTest, SystemVersionSaysWhetherItIsVista) {
    Open();
    EXPECT_TRUE(control->IsWinVista());
    machine.system.version = {2, 5, 2};
    EXPECT_FALSE(control->IsWinVista());
    machine.system.version = {1, 6, 0};
    EXPECT_FALSE(control->IsWinVista());
}

} // namespace
