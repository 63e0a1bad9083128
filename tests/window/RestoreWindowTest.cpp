#include "CaptionFit.h"
#include "Footprint.h"
#include "KeyboardReach.h"
#include "archive/forms/frmMotPasse.h"
#include "platform/MessageBoxes.h"
#include "restore/forms/frmRestaureCD.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using Ids = std::vector<int>;
using Lines = std::vector<std::wstring>;

constexpr const wchar_t* WorkFolder = L"C:\\Valcoreaux\\Backup\\zip";

/// What a user does to the password dialogs that come up, one entry each: a text is typed and accepted, none cancels.
struct DialogScript {
    std::vector<std::optional<std::wstring>> passwords;
    std::size_t seen = 0;
    std::function<void()> beforeAnswer; ///< may let messages run
    bool isAnswering = false;
};

DialogScript* script = nullptr;

BOOL CALLBACK AnswerDialog(HWND window, LPARAM) {
    HWND box = GetDlgItem(window, IDC_txtMotPasse);
    if (ui::Form::Of(window) == nullptr || box == nullptr || !IsWindowVisible(window)) return TRUE;
    if (std::exchange(script->isAnswering, true)) return FALSE;
    if (script->beforeAnswer) script->beforeAnswer();
    script->isAnswering = false;
    const std::size_t at = script->seen++;
    if (at < script->passwords.size() && script->passwords[at]) {
        SetWindowTextW(box, script->passwords[at]->c_str());
        SendMessageW(GetDlgItem(window, IDC_cmdOK), BM_CLICK, 0, 0);
    } else {
        SendMessageW(GetDlgItem(window, IDC_cmdCancel), BM_CLICK, 0, 0);
    }
    return FALSE;
}

void CALLBACK LookForDialog(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), AnswerDialog, 0);
}

class FakeMainWindow : public MainWindow {
  public:
    bool isFullExit = false;
    bool FullExit() const override { return isFullExit; }
    void SetFullExit(bool vbExit) override { isFullExit = vbExit; }
};

class RestoreWindow : public testing::Test {
  protected:
    RestoreWindow() {
        machine.files.AddFolder(L"C:\\Valcoreaux\\Backup");
        machine.drives.Add(L"C:\\", DriveType::Fixed);
        machine.usb.busTypes[L"C:"] = 11;
        machine.app.dblEspaceDisponible = 1e9;
        script = &dialogs;
        timer_ = SetTimer(nullptr, 0, 10, LookForDialog);
    }
    ~RestoreWindow() override {
        KillTimer(nullptr, timer_);
        script = nullptr;
    }

    void AddBackup(const std::wstring& root, const std::string& list, const std::wstring& label = L"SAUVEGARDE") {
        machine.drives.Add(root, DriveType::Removable, label);
        machine.files.AddFile(root + L"_listFich.lst", list);
        machine.files.AddFile(root + L"OKRBACKUP.ZIP", "archive");
    }
    void AddTwoItems() { AddBackup(L"E:\\", "**UserProfile**\\a.txt,32,Zip0001\r\nC:\\Data\\*.*,-1,Zip0002\r\n"); }
    void Open() {
        form.Create();
        form.Show();
        ui::RunPendingMessages();
    }
    void SelectDrive(int line) {
        SendMessageW(At(IDC_lstDrive), LB_SETCURSEL, static_cast<WPARAM>(line), 0);
        SendMessageW(form.Handle(), WM_COMMAND, MAKEWPARAM(IDC_lstDrive, LBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(At(IDC_lstDrive)));
    }
    void OpenFirstDrive() {
        Open();
        SelectDrive(0);
    }
    void SendDeviceChange() { SendMessageW(form.Handle(), WM_DEVICECHANGE, 0x8000, 0); }
    /// Handles messages until `isDone`, at most a second long.
    bool WaitFor(const std::function<bool()>& isDone) {
        const ULONGLONG end = GetTickCount64() + 1000;
        while (!isDone()) {
            if (GetTickCount64() > end) return false;
            ui::RunPendingMessages();
            Sleep(1);
        }
        return true;
    }
    void LetRefreshHappen() {
        const ULONGLONG end = GetTickCount64() + 300;
        WaitFor([&] { return GetTickCount64() > end; });
    }

    HWND At(int id) const { return GetDlgItem(form.Handle(), id); }
    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }
    void Click(int id) const { SendMessageW(At(id), BM_CLICK, 0, 0); }
    std::wstring Text(int id) const {
        wchar_t text[256] = {};
        GetWindowTextW(At(id), text, 256);
        return text;
    }
    Lines DriveLinesShown() const {
        Lines lines;
        const LRESULT count = SendMessageW(At(IDC_lstDrive), LB_GETCOUNT, 0, 0);
        for (LRESULT line = 0; line < count; ++line) {
            wchar_t text[256] = {};
            SendMessageW(At(IDC_lstDrive), LB_GETTEXT, static_cast<WPARAM>(line), reinterpret_cast<LPARAM>(text));
            lines.emplace_back(text);
        }
        return lines;
    }
    LRESULT SelectedDrive() const { return SendMessageW(At(IDC_lstDrive), LB_GETCURSEL, 0, 0); }
    int RowCount() const { return ListView_GetItemCount(At(IDC_lvFichiersRepertoires)); }
    std::wstring Cell(int row, int column) const {
        wchar_t text[300] = {};
        ListView_GetItemText(At(IDC_lvFichiersRepertoires), row, column, text, 300);
        return text;
    }
    bool IsTicked(int row) const { return ListView_GetCheckState(At(IDC_lvFichiersRepertoires), row) == 1; }
    void TickByKey(int row) {
        HWND list = At(IDC_lvFichiersRepertoires);
        LVITEMW item{};
        item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
    }
    /// Whether a row's text is drawn bold, as the view is told when it asks.
    bool IsBold(int row) const {
        const HDC screen = GetDC(nullptr);
        const HGDIOBJ before = SelectObject(screen, GetStockObject(DEFAULT_GUI_FONT));
        NMLVCUSTOMDRAW draw{};
        draw.nmcd.hdr = {At(IDC_lvFichiersRepertoires), IDC_lvFichiersRepertoires, static_cast<UINT>(NM_CUSTOMDRAW)};
        draw.nmcd.dwDrawStage = CDDS_ITEMPREPAINT;
        draw.nmcd.hdc = screen;
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(row);
        SendMessageW(form.Handle(), WM_NOTIFY, IDC_lvFichiersRepertoires, reinterpret_cast<LPARAM>(&draw));
        LOGFONTW font{};
        GetObjectW(SelectObject(screen, before), sizeof font, &font);
        ReleaseDC(nullptr, screen);
        return font.lfWeight >= FW_BOLD;
    }
    std::wstring RowTip(int row) const {
        wchar_t text[100] = {};
        NMLVGETINFOTIPW tip{};
        tip.hdr = {At(IDC_lvFichiersRepertoires), IDC_lvFichiersRepertoires, static_cast<UINT>(LVN_GETINFOTIPW)};
        tip.pszText = text;
        tip.cchTextMax = 100;
        tip.iItem = row;
        SendMessageW(form.Handle(), WM_NOTIFY, IDC_lvFichiersRepertoires, reinterpret_cast<LPARAM>(&tip));
        return text;
    }
    bool IsHooked() const { return ui::WindowProcedureHook::Of(form.Handle()) != nullptr; }
    WNDPROC Procedure() const { return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(form.Handle(), GWLP_WNDPROC)); }
    /// The extractions of single items that were run.
    Lines InnerExtractions() const {
        Lines lines;
        for (const std::wstring& line : machine.processes.commandLines) {
            if (line.find(L"OKRBACKUP.ZIP") == std::wstring::npos) lines.push_back(line);
        }
        return lines;
    }

    FormMessageLoop messages;
    FakeMachine machine{&messages};
    FakeMainWindow mainWindow;
    DialogScript dialogs;
    frmRestaureCD form{machine.app, mainWindow};

  private:
    UINT_PTR timer_ = 0;
};

TEST_F(RestoreWindow, FrenchCaptions) {
    Open();
    EXPECT_EQ(form.Title(), L"Restauration des fichiers");
    EXPECT_EQ(Text(IDC_cmdLancerRestauration), L"&Lancer la restauration");
    EXPECT_EQ(Text(IDC_cmdToutDeselectionner), L"Tout &désélectionner");
    EXPECT_EQ(Text(IDC_cmdToutSelectionner), L"Tout &sélectionner");
    EXPECT_EQ(Text(IDC_cmdFermer), L"&Fermer");
}

TEST_F(RestoreWindow, EnglishCaptions) {
    machine.app.lngLangue = 10000;
    Open();
    EXPECT_EQ(form.Title(), L"Restore of files");
    EXPECT_EQ(Text(IDC_cmdLancerRestauration), L"&Start the restore");
    EXPECT_EQ(Text(IDC_cmdToutDeselectionner), L"&Deselect all");
    EXPECT_EQ(Text(IDC_cmdToutSelectionner), L"Select &all");
    EXPECT_EQ(Text(IDC_cmdFermer), L"&Close");
}

TEST_F(RestoreWindow, EveryCaptionFitsInBothLanguages) {
    for (const int language : {0, 10000}) {
        machine.app.lngLangue = language;
        Open();
        EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>());
        EXPECT_EQ(OverlappingControls(form.Handle()), std::vector<std::string>());
        EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
        form.Unload();
    }
}

TEST_F(RestoreWindow, EveryControlIsReachedByKeyboardAndNamed) {
    AddTwoItems();
    OpenFirstDrive();
    EXPECT_EQ(TabOrder(form.Handle()), (Ids{IDC_lstDrive, IDC_lvFichiersRepertoires, IDC_cmdToutSelectionner,
                                            IDC_cmdToutDeselectionner, IDC_cmdLancerRestauration, IDC_cmdFermer}));
    EXPECT_EQ(UnreachableControls(form.Handle()), Ids());
    EXPECT_EQ(UnlabelledFields(form.Handle()), Ids());
    EXPECT_EQ(LOWORD(SendMessageW(form.Handle(), DM_GETDEFID, 0, 0)), IDC_cmdLancerRestauration);
}

TEST_F(RestoreWindow, OpeningMakesTheWorkFolderAnewAndListsTheDrives) {
    AddTwoItems();
    machine.files.AddFile(std::wstring(WorkFolder) + L"\\left.over");
    Open();
    EXPECT_TRUE(machine.files.FolderExists(WorkFolder));
    EXPECT_TRUE(machine.files.Contents(WorkFolder).files.empty());
    EXPECT_EQ(DriveLinesShown(), Lines{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
    EXPECT_EQ(SelectedDrive(), LB_ERR);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, ClosingTakesTheWorkFolderAway) {
    Open();
    Click(IDC_cmdFermer);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
    EXPECT_FALSE(mainWindow.isFullExit);
    Open();
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
}

TEST_F(RestoreWindow, WorkFolderThatCannotGoIsReportedAndTheCrossStillCloses) {
    Open();
    const std::wstring leftOver = std::wstring(WorkFolder) + L"\\left.over";
    machine.files.AddFile(leftOver);
    machine.files.SetReadOnly(leftOver);
    Click(IDC_cmdFermer);
    EXPECT_TRUE(form.IsLoaded());
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(form.IsLoaded());
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 70 (Permission denied) dans la procédure cmdFermer_Click, module frmRestaureCD"),
              0u);
    EXPECT_EQ(machine.messageBoxes.shown[1].text.find(
                  L"Erreur nº 70 (Permission denied) dans la procédure Form_Unload, module frmRestaureCD"),
              0u);
    EXPECT_TRUE(machine.files.FileExists(leftOver));
}

TEST_F(RestoreWindow, LeftOverThatCannotGoIsReportedAndTheDrivesCanStillBeListed) {
    AddTwoItems();
    const std::wstring leftOver = std::wstring(WorkFolder) + L"\\left.over";
    machine.files.AddFile(leftOver);
    machine.files.SetReadOnly(leftOver);
    Open();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 70 (Permission denied) dans la procédure Form_Load, module frmRestaureCD"),
              0u);
    EXPECT_EQ(DriveLinesShown(), Lines());
    PostMessageW(At(IDC_cmdFermer), WM_KEYDOWN, VK_F5, 0);
    ui::RunPendingMessages();
    EXPECT_EQ(DriveLinesShown().size(), 1u);
}

TEST_F(RestoreWindow, EscapeCloses) {
    Open();
    PostMessageW(At(IDC_lstDrive), WM_KEYDOWN, VK_ESCAPE, 0);
    ui::RunPendingMessages();
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(RestoreWindow, ChosenMediumIsListedAndTicked) {
    AddTwoItems();
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), L"C:\\Users\\agent\\a.txt");
    EXPECT_EQ(Cell(0, 1), L"Fichier");
    EXPECT_EQ(Cell(0, 2), L"32");
    EXPECT_EQ(Cell(0, 3), L"Zip0001");
    EXPECT_EQ(Cell(1, 0), L"C:\\Data\\*.*");
    EXPECT_EQ(Cell(1, 1), L"Rep.");
    EXPECT_TRUE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    for (const int id : {IDC_cmdLancerRestauration, IDC_cmdToutSelectionner, IDC_cmdToutDeselectionner})
        EXPECT_TRUE(IsEnabled(id)) << id;
    EXPECT_EQ(machine.app.archiveSizeBytes, 7);
}

TEST_F(RestoreWindow, ClickWithoutASelectionTakesTheFirstDrive) {
    AddTwoItems();
    Open();
    SelectDrive(-1);
    EXPECT_EQ(SelectedDrive(), 0);
    EXPECT_EQ(RowCount(), 2);
}

TEST_F(RestoreWindow, DiskWithoutABackupSaysSoAndCannotBeRestored) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), machine.app.Text(150));
    EXPECT_FALSE(IsTicked(0));
    for (const int id : {IDC_cmdLancerRestauration, IDC_cmdToutSelectionner, IDC_cmdToutDeselectionner})
        EXPECT_FALSE(IsEnabled(id)) << id;
    TickByKey(0);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, CdRomWithoutABackupSaysSo) {
    machine.drives.Add(L"D:\\", DriveType::CdRom).canRead = false;
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), machine.app.Text(158));
}

TEST_F(RestoreWindow, MachineWithoutDrivesSaysSo) {
    OpenFirstDrive();
    EXPECT_EQ(DriveLinesShown(), Lines{L"Aucun lecteur de CD ou de disquette trouvé sur cet ordinateur"});
    EXPECT_EQ(Cell(0, 0), machine.app.Text(150));
}

TEST_F(RestoreWindow, OlderFormatIsRefused) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32\r\n");
    OpenFirstDrive();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(921));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Prise de copie de sécurité");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Critical);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, CutControlFileIsReportedAndWhatCouldBeReadIsListed) {
    AddBackup(L"E:\\", "C:\\a,32,Zip0001\r\nC:\\b,32");
    OpenFirstDrive();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(
                  L"Erreur nº 62 (Input past end of file) dans la procédure MAJListeFich, module frmRestaureCD"),
              0u);
    EXPECT_EQ(RowCount(), 1);
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, CommaInAPathSplitsItAndNothingIsReported) {
    AddBackup(L"E:\\", "C:\\un,deux.txt,32,Zip0001\r\n");
    OpenFirstDrive();
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    ASSERT_EQ(RowCount(), 2);
    EXPECT_EQ(Cell(0, 0), L"C:\\un");
    EXPECT_EQ(Cell(1, 0), L"32");
}

TEST_F(RestoreWindow, UntickingTheLastRowDisablesTheLaunch) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
    TickByKey(1);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
    TickByKey(1);
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, AllRowsAreTickedAndUntickedAtOnce) {
    AddTwoItems();
    OpenFirstDrive();
    Click(IDC_cmdToutDeselectionner);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_FALSE(IsTicked(1));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
    Click(IDC_cmdToutSelectionner);
    EXPECT_TRUE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, TooLittleWorkSpaceStopsBeforeThePassword) {
    AddTwoItems();
    machine.app.dblEspaceDisponible = 7;
    OpenFirstDrive();
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, machine.app.Text(168));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Capacité maximale atteinte");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Critical);
    EXPECT_EQ(dialogs.seen, 0u);
    EXPECT_TRUE(machine.processes.commandLines.empty());
}

TEST_F(RestoreWindow, OneByteMoreOfWorkSpaceIsEnough) {
    AddTwoItems();
    machine.app.dblEspaceDisponible = 8;
    OpenFirstDrive();
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(dialogs.seen, 1u);
}

TEST_F(RestoreWindow, TickedItemsAreRestoredInOrderAndTheProgramEnds) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(machine.processes.commandLines,
              (Lines{L"C:\\Valcoreaux\\Backup\\7za x E:\\OKRBACKUP.ZIP "
                     L"-oC:\\\"Valcoreaux\"\\\"Backup\"\\\"zip\" -aoa -pAbcdefg1",
                     L"C:\\Valcoreaux\\Backup\\7za x C:\\\"Valcoreaux\"\\\"Backup\"\\zip\\Zip0001.zip -aoa "
                     L"-oC:\\\"Users\"\\\"agent\"\\",
                     L"C:\\Valcoreaux\\Backup\\7za x C:\\\"Valcoreaux\"\\\"Backup\"\\zip\\Zip0002.zip -aoa -oC:\\"}));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text, L"Restauration des fichiers sélectionnés terminée");
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Restauration des fichiers");
    EXPECT_EQ(machine.messageBoxes.shown[0].style, box::Exclamation);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_TRUE(mainWindow.isFullExit);
    EXPECT_FALSE(machine.files.FolderExists(WorkFolder));
    EXPECT_EQ(machine.system.awakeHoldsTaken, 1);
    EXPECT_EQ(machine.system.awakeHolds, 0);
}

TEST_F(RestoreWindow, UntickedRowIsLeftAlone) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 1u);
    EXPECT_NE(InnerExtractions()[0].find(L"Zip0002.zip"), std::wstring::npos);
}

TEST_F(RestoreWindow, FolderIsRestoredIntoItsParent) {
    AddBackup(L"E:\\", "C:\\Docs\\Lettres\\*.*,-1,Zip0001\r\n");
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 1u);
    EXPECT_TRUE(InnerExtractions()[0].ends_with(L" -aoa -oC:\\\"Docs\"\\"));
}

TEST_F(RestoreWindow, MailStoreIsRestoredToItsOwnFolder) {
    AddBackup(L"E:\\", "C:\\Donnees\\archive.pst,32,Zip0001\r\n");
    OpenFirstDrive();
    EXPECT_EQ(Cell(0, 0), L"c:\\ValcoreauxTechno\\OutlookBK\\archive.pst");
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 1u);
    EXPECT_TRUE(InnerExtractions()[0].ends_with(L" -oc:\\\"ValcoreauxTechno\"\\\"OutlookBK\"\\"));
}

TEST_F(RestoreWindow, WrongPasswordIsSaidAndAskedForAgainInAnEmptyWorkFolder) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"one", L"two", L"Abcdefg1"};
    machine.processes.exitCodes = {2, 2, 0};
    machine.processes.effect = [&](const std::wstring& line) {
        if (line.find(L"OKRBACKUP.ZIP") == std::wstring::npos) return;
        EXPECT_TRUE(machine.files.Contents(WorkFolder).files.empty());
        machine.files.AddFile(std::wstring(WorkFolder) + L"\\Zip0001.zip");
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(dialogs.seen, 3u);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 3u);
    for (const int wrong : {0, 1}) {
        const auto& shown = machine.messageBoxes.shown[static_cast<std::size_t>(wrong)];
        EXPECT_EQ(shown.text, machine.app.Text(920));
        EXPECT_EQ(shown.title, L"Mot de passe invalide");
        EXPECT_EQ(shown.style, box::Exclamation);
    }
    EXPECT_EQ(machine.messageBoxes.shown[2].text, machine.app.Text(814));
    EXPECT_EQ(InnerExtractions().size(), 2u);
}

TEST_F(RestoreWindow, CancelledPasswordLeavesTheWindowAsItWas) {
    AddTwoItems();
    OpenFirstDrive();
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(dialogs.seen, 1u);
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(IsHooked());
    EXPECT_TRUE(IsEnabled(IDC_cmdLancerRestauration));
    EXPECT_TRUE(machine.processes.commandLines.empty());
    EXPECT_FALSE(mainWindow.isFullExit);
    EXPECT_EQ(machine.system.awakeHolds, 0);
}

TEST_F(RestoreWindow, EveryOtherExitCodeCountsAsOpened) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    machine.processes.exitCodes = {1, 2, 2};
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(InnerExtractions().size(), 2u);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(RestoreWindow, DuringTheCopyNothingMovesNothingClosesAndNothingCanBePressed) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    int checks = 0;
    machine.processes.effect = [&](const std::wstring& line) {
        if (line.find(L"Zip0002") == std::wstring::npos) return;
        ++checks;
        EXPECT_FALSE(IsHooked());
        for (const int id : {IDC_cmdLancerRestauration, IDC_cmdFermer, IDC_cmdToutDeselectionner,
                             IDC_cmdToutSelectionner, IDC_lvFichiersRepertoires, IDC_lstDrive})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_TRUE(IsBold(0));
        EXPECT_EQ(RowTip(0), L"Restauré");
        EXPECT_FALSE(IsBold(1));
        EXPECT_EQ(RowTip(1), L"");
        EXPECT_EQ(ListView_GetNextItem(At(IDC_lvFichiersRepertoires), -1, LVNI_SELECTED), 1);
        machine.drives.Add(L"F:\\", DriveType::Removable, L"NEUF");
        SendDeviceChange();
        SendMessageW(form.Handle(), WM_COMMAND, IDC_mnuRaffraichir_Rafraichir, 0);
        LetRefreshHappen();
        EXPECT_EQ(DriveLinesShown().size(), 1u);
        SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
        SendMessageW(form.Handle(), WM_COMMAND, IDCANCEL, 0);
        EXPECT_TRUE(form.IsLoaded());
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(checks, 1);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(RestoreWindow, HookStandsBeforeTheWindowsOwnProcedureAndGivesItBack) {
    Open();
    EXPECT_EQ(Procedure(), &modFonctionsCommunes::MyWindowProcRestaureCD);
    form.Unload();
    Open();
    EXPECT_TRUE(IsHooked());
}

TEST_F(RestoreWindow, EveryMessageIsPassedOnToTheSavedProcedure) {
    Open();
    // Only the dialog's own procedure knows the default button.
    EXPECT_NE(SendMessageW(form.Handle(), DM_GETDEFID, 0, 0), 0);
    form.SetTitle(L"passed on");
    EXPECT_EQ(form.Title(), L"passed on");
    EXPECT_EQ(SendMessageW(form.Handle(), WM_DEVICECHANGE, 7, 0),
              CallWindowProcW(reinterpret_cast<WNDPROC>(DefDlgProcW), form.Handle(), WM_DEVICECHANGE, 7, 0));
}

TEST_F(RestoreWindow, DeviceArrivalRefreshesTheDriveListByItself) {
    Open();
    AddTwoItems();
    SendDeviceChange();
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(WaitFor([&] { return RowCount() == 2; }));
    EXPECT_LT(GetTickCount64() - start, 500u);
    EXPECT_EQ(DriveLinesShown(), Lines{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
}

TEST_F(RestoreWindow, TicksAndSelectionStayWhileTheSameMediumIsThere) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    machine.drives.drives.insert(machine.drives.drives.begin(),
                                 {L"A:\\", DriveType::Removable, std::nullopt, {}, true, false});
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return DriveLinesShown().size() == 2; }));
    EXPECT_EQ(SelectedDrive(), 1);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    EXPECT_EQ(ListView_GetNextItem(At(IDC_lvFichiersRepertoires), -1, LVNI_SELECTED), 0);
}

TEST_F(RestoreWindow, TicksAreMadeAnewForAnotherMedium) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\x,32,Zip0001\r\n");
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return RowCount() == 1; }));
    EXPECT_EQ(Cell(0, 0), L"C:\\x");
    EXPECT_TRUE(IsTicked(0));
}

TEST_F(RestoreWindow, PulledOutMediumTakesItsRowsWithIt) {
    AddTwoItems();
    machine.drives.Add(L"F:\\", DriveType::Removable, L"VIDE");
    OpenFirstDrive();
    machine.drives.Remove(L"E:\\");
    machine.files.Remove(L"E:\\");
    SendDeviceChange();
    EXPECT_TRUE(WaitFor([&] { return DriveLinesShown().size() == 1; }));
    EXPECT_EQ(Cell(0, 0), machine.app.Text(150));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancerRestauration));
}

TEST_F(RestoreWindow, OlderFormatIsSaidOnceHoweverManyDevicesCome) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.files.AddFile(L"E:\\_listFich.lst", "C:\\a,32\r\n");
    OpenFirstDrive();
    for (int round = 0; round < 3; ++round) {
        SendDeviceChange();
        LetRefreshHappen();
    }
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(RestoreWindow, MenuAndItsKeyFillTheDriveListAgain) {
    Open();
    machine.drives.Add(L"E:\\", DriveType::Removable, L"UN");
    HMENU menu = GetSubMenu(GetMenu(form.Handle()), 0);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(GetMenuItemID(menu, 0), static_cast<UINT>(IDC_mnuRaffraichir_Rafraichir));
    wchar_t caption[40] = {};
    GetMenuStringW(GetMenu(form.Handle()), 0, caption, 40, MF_BYPOSITION);
    EXPECT_STREQ(caption, L"&Rafraîchir");
    SendMessageW(form.Handle(), WM_COMMAND, GetMenuItemID(menu, 0), 0);
    EXPECT_EQ(DriveLinesShown(), Lines{L"E:\\ Disque amovible  Volume : UN"});
    machine.drives.Add(L"F:\\", DriveType::Removable, L"DEUX");
    PostMessageW(At(IDC_lstDrive), WM_KEYDOWN, VK_F5, 0);
    ui::RunPendingMessages();
    EXPECT_EQ(DriveLinesShown().size(), 2u);
}

TEST_F(RestoreWindow, WhatIsOpenedIsTheMediumThatIsShownAfterThePassword) {
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        machine.drives.Remove(L"E:\\");
        machine.files.Remove(L"E:\\");
        AddBackup(L"F:\\", "C:\\f.txt,32,Zip0001\r\n");
        SendDeviceChange();
        EXPECT_TRUE(WaitFor([&] { return RowCount() == 1; }));
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_NE(machine.processes.commandLines.at(0).find(L" F:\\OKRBACKUP.ZIP "), std::wstring::npos);
    EXPECT_EQ(InnerExtractions().size(), 1u);
}

TEST_F(RestoreWindow, StormOfDevicesLeavesTheListRightAndNothingBehind) {
    AddTwoItems();
    OpenFirstDrive();
    LetRefreshHappen();
    const Footprint before = FootprintNow();
    EXPECT_GT(before.handles, 0u);
    EXPECT_GT(before.gdiObjects, 0u);
    for (int change = 0; change < 500; ++change) {
        if (change % 2 == 0)
            machine.drives.Add(L"F:\\", DriveType::Removable, L"PASSAGER");
        else
            machine.drives.Remove(L"F:\\");
        SendMessageW(form.Handle(), WM_DEVICECHANGE, change % 2 == 0 ? 0x8000 : 0x8004, 0);
        if (change % 10 == 0) TickByKey(1);
        if (change % 50 == 0) {
            SelectDrive(0);
            LetRefreshHappen();
        }
        ui::RunPendingMessages();
    }
    LetRefreshHappen();
    EXPECT_EQ(DriveLinesShown(), Lines{L"E:\\ Disque amovible  Volume : SAUVEGARDE"});
    EXPECT_EQ(RowCount(), 2);
    EXPECT_EQ(FootprintNow(), before);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(RestoreWindow, StormDuringThePasswordDialogDisturbsNothing) {
    AddTwoItems();
    OpenFirstDrive();
    TickByKey(0);
    dialogs.passwords = {L"Abcdefg1"};
    dialogs.beforeAnswer = [&] {
        for (int change = 0; change < 100; ++change) SendDeviceChange();
        LetRefreshHappen();
    };
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(InnerExtractions().size(), 1u);
    EXPECT_TRUE(mainWindow.isFullExit);
}

double SecondsToShow(const std::function<void()>& steps) {
    const auto start = std::chrono::steady_clock::now();
    steps();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST_F(RestoreWindow, HundredThousandRowsAreShownAndTickedInTwoSeconds) {
    std::string list;
    for (int line = 1; line <= 100000; ++line)
        list += "**UserProfile**\\Documents\\Dossier " + std::to_string(line) + "\\fichier.txt,32,Zip" +
                std::to_string(10000 + line) + "\r\n";
    AddBackup(L"E:\\", list);
    Open();
    const double seconds = SecondsToShow([&] {
        SelectDrive(0);
        ui::RunPendingMessages();
    });
    EXPECT_EQ(RowCount(), 100000);
    EXPECT_TRUE(IsTicked(99999));
    EXPECT_LT(seconds, 2.0);
    const double tickSeconds = SecondsToShow([&] {
        Click(IDC_cmdToutDeselectionner);
        Click(IDC_cmdToutSelectionner);
        ui::RunPendingMessages();
    });
    EXPECT_LT(tickSeconds, 1.0);
    std::printf("100,000 rows: shown and ticked in %.3f s, all unticked and ticked again in %.3f s\n", seconds,
                tickSeconds);
}

TEST_F(RestoreWindow, CanBeOpenedAgainAndAgain) {
    AddTwoItems();
    Open();
    form.Unload();
    const Footprint before = FootprintNow();
    for (int round = 0; round < 10; ++round) {
        OpenFirstDrive();
        EXPECT_EQ(RowCount(), 2);
        SendDeviceChange();
        form.Unload();
    }
    LetRefreshHappen();
    EXPECT_EQ(FootprintNow(), before);
}

TEST(WindowProcedureHook, MayGoAfterItsWindow) {
    ui::WindowProcedureHook hook;
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    hook.Install(window, modFonctionsCommunes::MyWindowProcRestaureCD);
    EXPECT_EQ(ui::WindowProcedureHook::Of(window), &hook);
    DestroyWindow(window);
    hook.Remove();
    EXPECT_FALSE(hook.IsInstalled());
}

TEST(WindowProcedureHook, MayGoBeforeItsWindow) {
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 10, 10, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    const LONG_PTR own = GetWindowLongPtrW(window, GWLP_WNDPROC);
    {
        ui::WindowProcedureHook hook;
        hook.Install(window, modFonctionsCommunes::MyWindowProcRestaureCD);
        EXPECT_NE(GetWindowLongPtrW(window, GWLP_WNDPROC), own);
    }
    EXPECT_EQ(GetWindowLongPtrW(window, GWLP_WNDPROC), own);
    EXPECT_EQ(ui::WindowProcedureHook::Of(window), nullptr);
    DestroyWindow(window);
}

} // namespace
