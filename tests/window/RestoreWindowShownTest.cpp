// What the restore window shows, at which size, and the labels under which its procedures report.
#include "RestoreWindowBench.h"
#include "core/LanguageValues.h"
#include "core/StartUpValues.h"
#include "core/UserValues.h"
#include "resources/TextId.h"

namespace {

class RestoreWindowShown : public RestoreWindow {
  protected:
    SIZE OuterSize() const {
        RECT outer{};
        GetWindowRect(form.Handle(), &outer);
        return {outer.right - outer.left, outer.bottom - outer.top};
    }
    RECT PlaceOf(int id) const {
        RECT place{};
        GetWindowRect(At(id), &place);
        MapWindowPoints(nullptr, form.Handle(), reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    void MakeLarger(int by) {
        const SIZE size = OuterSize();
        SetWindowPos(form.Handle(), nullptr, 0, 0, size.cx + by, size.cy + by, SWP_NOMOVE | SWP_NOZORDER);
        ui::RunPendingMessages();
    }
    int ColumnWidth(int column) const { return ListView_GetColumnWidth(At(IDC_lvFichiersRepertoires), column); }
    std::wstring MenuText(HMENU menu) const {
        wchar_t caption[40] = {};
        GetMenuStringW(menu, 0, caption, 40, MF_BYPOSITION);
        return caption;
    }
    void ExpectOneReport(const std::wstring& label) {
        ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
        EXPECT_NE(machine.messageBoxes.shown[0].text.find(L" dans la procédure " + label + L", module frmRestaureCD à"),
                  std::wstring::npos)
            << label;
    }
};

TEST_F(RestoreWindowShown, PlaceholderRowsAreNotCutInEitherLanguage) {
    machine.drives.Add(L"D:\\", DriveType::CdRom).canRead = false;
    machine.drives.Add(L"E:\\", DriveType::Removable);
    for (const int language : {0, 10000}) {
        machine.app.language->lngLangue = language;
        Open();
        for (const int drive : {0, 1}) {
            // However narrow the user has made the column.
            HWND list = At(IDC_lvFichiersRepertoires);
            ListView_SetColumnWidth(list, 0, 100);
            SelectDrive(drive);
            const std::wstring text = Cell(0, 0);
            EXPECT_EQ(text, machine.app.Text(drive == 0 ? TextId::NoBackupOnCdRom : TextId::NoBackupOnDisk));
            const auto width =
                static_cast<int>(SendMessageW(list, LVM_GETSTRINGWIDTHW, 0, reinterpret_cast<LPARAM>(text.c_str())));
            RECT label{};
            ListView_GetItemRect(list, 0, &label, LVIR_LABEL);
            RECT inner{};
            GetClientRect(list, &inner);
            EXPECT_LE(label.left + width + 4, label.right);
            EXPECT_LE(label.right, inner.right) << "without scrolling to the side";
        }
        form.Unload();
    }
}

TEST_F(RestoreWindowShown, WindowCanBeMadeLargerAndItsListWithIt) {
    AddTwoItems();
    OpenFirstDrive();
    const RECT list = PlaceOf(IDC_lvFichiersRepertoires);
    const RECT drives = PlaceOf(IDC_lstDrive);
    const RECT selectAll = PlaceOf(IDC_cmdToutSelectionner);
    const RECT close = PlaceOf(IDC_cmdFermer);
    const int pathWidth = ColumnWidth(0);
    const int kindWidth = ColumnWidth(1);
    MakeLarger(100);
    EXPECT_EQ(PlaceOf(IDC_lvFichiersRepertoires).left, list.left);
    EXPECT_EQ(PlaceOf(IDC_lvFichiersRepertoires).top, list.top);
    EXPECT_EQ(PlaceOf(IDC_lvFichiersRepertoires).right, list.right + 100);
    EXPECT_EQ(PlaceOf(IDC_lvFichiersRepertoires).bottom, list.bottom + 100);
    EXPECT_EQ(PlaceOf(IDC_lstDrive).right, drives.right + 100);
    EXPECT_EQ(PlaceOf(IDC_lstDrive).bottom, drives.bottom);
    EXPECT_EQ(PlaceOf(IDC_cmdToutSelectionner).left, selectAll.left);
    EXPECT_EQ(PlaceOf(IDC_cmdToutSelectionner).top, selectAll.top + 100);
    EXPECT_EQ(PlaceOf(IDC_cmdFermer).left, close.left + 100);
    EXPECT_EQ(PlaceOf(IDC_cmdFermer).right, close.right + 100);
    EXPECT_NEAR(ColumnWidth(0), pathWidth + 100, 30);
    EXPECT_EQ(ColumnWidth(1), kindWidth);
    EXPECT_EQ(ColumnWidth(2), 0);
    MakeLarger(-100);
    EXPECT_EQ(PlaceOf(IDC_lvFichiersRepertoires).right, list.right);
    EXPECT_EQ(PlaceOf(IDC_cmdFermer).left, close.left);
}

TEST_F(RestoreWindowShown, WindowHasASizingFrameAndGetsNoSmallerThanItWasMade) {
    Open();
    EXPECT_NE(GetWindowLongPtrW(form.Handle(), GWL_STYLE) & WS_THICKFRAME, 0);
    const SIZE size = OuterSize();
    MINMAXINFO limits{};
    SendMessageW(form.Handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
    EXPECT_EQ(limits.ptMinTrackSize.x, size.cx);
    EXPECT_EQ(limits.ptMinTrackSize.y, size.cy);
}

TEST_F(RestoreWindowShown, MailStoreIsLookedForOnceTheMarkerWasReplaced) {
    machine.app.user->strProfilUtilisateur = L"C:\\Users\\jean.pst";
    AddBackup(L"E:\\", "**UserProfile**\\lettre.doc,32,Zip0001\r\nC:\\Data\\b.doc,32,Zip0002\r\n");
    OpenFirstDrive();
    EXPECT_EQ(Cell(0, 0), L"c:\\ValcoreauxTechno\\OutlookBK\\lettre.doc");
    EXPECT_EQ(Cell(1, 0), L"C:\\Data\\b.doc");
}

TEST_F(RestoreWindowShown, RecordOfEachKindIsARowAsItWasRead) {
    AddBackup(L"E:\\", "C:\\a.txt,32,Zip0001\r\nC:\\b\\*.*,-1,Zip0002\r\n**UserProfile**\\c,16,**UserProfile**\\c\r\n");
    OpenFirstDrive();
    EXPECT_EQ(List().Rows(), (Texts{L"C:\\a.txt|Fichier|32|Zip0001", L"C:\\b\\*.*|Rep.|-1|Zip0002",
                                    L"C:\\Users\\agent\\c|Répertoire|16|C:\\Users\\agent\\c"}));
    form.Unload();
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a.txt,32\r\n**UserProfile**\\c,16\r\n");
    OpenFirstDrive();
    EXPECT_EQ(List().Rows(),
              (Texts{L"C:\\a.txt|Fichier|32|C:\\a.txt", L"C:\\Users\\agent\\c|Répertoire|16|C:\\Users\\agent\\c"}));
}

TEST_F(RestoreWindowShown, MenuAndItsCommandReadInBothLanguages) {
    Open();
    EXPECT_EQ(MenuText(GetMenu(form.Handle())), L"&Rafraîchir");
    EXPECT_EQ(MenuText(GetSubMenu(GetMenu(form.Handle()), 0)), L"&Rafraîchir\tF5");
    form.Unload();
    machine.app.language->lngLangue = 10000;
    Open();
    EXPECT_EQ(MenuText(GetMenu(form.Handle())), L"&Refresh");
    EXPECT_EQ(MenuText(GetSubMenu(GetMenu(form.Handle()), 0)), L"&Refresh\tF5");
}

TEST_F(RestoreWindowShown, EachTextThatCannotBeLoadedIsReportedByTheProcedureThatShowsIt) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    const std::vector<std::pair<int, std::wstring>> texts = {{801, L"InitCaptions"},    {288, L"InitCaptions"},
                                                             {289, L"InitCaptions"},    {605, L"InitCaptions"},
                                                             {138, L"MAJListeCDetUSB"}, {150, L"MAJListeFich"}};
    for (const auto& [text, label] : texts) {
        machine.messageBoxes.shown.clear();
        machine.strings.outOfMemoryAt = text;
        Open();
        if (text == 150) SelectDrive(0);
        ExpectOneReport(label);
        machine.strings.outOfMemoryAt = 0;
        form.Unload();
    }
}

TEST_F(RestoreWindowShown, LaunchThatFailsIsReportedAndGivesTheWindowBack) {
    AddTwoItems();
    OpenFirstDrive();
    machine.strings.outOfMemoryAt = 168;
    machine.app.startUp->dblEspaceDisponible = 1;
    Click(IDC_cmdLancerRestauration);
    ExpectOneReport(L"cmdLancerRestauration_Click");
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
    EXPECT_TRUE(IsHooked());
}

} // namespace
