#include "CaptionFit.h"
#include "KeyboardReach.h"
#include "shell/forms/FormMessageLoop.h"
#include "shell/forms/frmMain.h"
#include "support/FakeMachine.h"
#include "ui/MessagePump.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using Ids = std::vector<int>;

struct Opening {
    Medium medium;
    std::optional<std::wstring> drive;
};

/// The main window on a stand-in workstation that has real messages.
class MainWindowTest : public testing::Test {
  protected:
    MainWindowTest()
        : machine(&messages), form(machine.app, {[this](frmMain& parent, Medium medium, const auto& drive) {
                                                     openings.push_back({medium, drive});
                                                     if (whenOpened) whenOpened(parent);
                                                 },
                                                 [this](frmMain& parent) {
                                                     ++restores;
                                                     if (whenOpened) whenOpened(parent);
                                                 }}) {
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"", {12345678, 2e9});
        machine.usb.busTypes[L"C:"] = 11;
        machine.system.clockSpeed = 200;
    }

    void Start() {
        form.Create();
        form.Show();
    }
    void StartInEnglish() {
        machine.system.userLanguageName = L"English";
        Start();
    }
    void AddRemovable(const wchar_t* root) { machine.drives.Add(root, DriveType::Removable); }
    void AddExternal(const wchar_t* drive) {
        machine.drives.Add(std::wstring(drive) + L"\\", DriveType::Fixed);
        machine.usb.busTypes[drive] = 7;
        machine.usb.serviceNames = {L"USBSTOR"};
    }
    void AddCdWriter() { machine.discWriters.cdDrives.push_back({L"CD (G:)", {}}); }
    void AddDvdWriter() {
        machine.discWriters.dvdDrives.push_back({L"DVD (H:)", {}});
        machine.system.SetProfileString(L"c:\\Valcoreaux\\Backup\\Backup.ini", L"DVD", L"Disponible", L"oui");
    }
    void AddEverything() {
        AddCdWriter();
        AddDvdWriter();
        AddRemovable(L"E:\\");
        AddRemovable(L"I:\\");
        AddExternal(L"J:");
    }

    HWND At(int id) const { return GetDlgItem(form.Handle(), id); }
    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }
    bool IsVisible(int id) const { return IsWindowVisible(At(id)) != FALSE; }
    bool IsChecked(int id) const { return SendMessageW(At(id), BM_GETCHECK, 0, 0) == BST_CHECKED; }
    void Click(int id) const { SendMessageW(At(id), BM_CLICK, 0, 0); }
    std::wstring Text(int id) const {
        wchar_t text[256] = {};
        GetWindowTextW(At(id), text, 256);
        return text;
    }
    std::wstring Chosen(int comboId) const {
        wchar_t text[256] = {};
        const LRESULT row = SendMessageW(At(comboId), CB_GETCURSEL, 0, 0);
        if (row >= 0) SendMessageW(At(comboId), CB_GETLBTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
        return text;
    }
    LRESULT Count(int comboId) const { return SendMessageW(At(comboId), CB_GETCOUNT, 0, 0); }
    int WidthTwips(int id) const { return ui::BoundsOf(At(id)).width; }
    Ids EnabledMedia() const {
        Ids enabled;
        for (const int id : {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}) {
            if (IsEnabled(id)) enabled.push_back(id);
        }
        return enabled;
    }
    Ids CheckedMedia() const {
        Ids checked;
        for (const int id : {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}) {
            if (IsChecked(id)) checked.push_back(id);
        }
        return checked;
    }
    std::vector<std::wstring> DetectionLabels() const {
        return {Text(IDC_lblDetCD), Text(IDC_lblDetDVD), Text(IDC_lblDetRemDisk), Text(IDC_lblDetExtDisk)};
    }
    void PressKey(WPARAM key) {
        MSG message{GetFocus(), WM_KEYDOWN, key, 0, 0, {}};
        if (!form.TranslateKeys(message)) ADD_FAILURE() << "key " << key << " is not the form's";
        ui::RunPendingMessages();
    }

    FormMessageLoop messages;
    FakeMachine machine;
    std::vector<Opening> openings;
    int restores = 0;
    std::function<void(frmMain&)> whenOpened;
    frmMain form;
};

using Words = std::vector<std::wstring>;

TEST_F(MainWindowTest, FrenchCaptions) {
    Start();
    const std::wstring version = std::to_wstring(BACKUP_VERSION_MAJOR) + L"." + std::to_wstring(BACKUP_VERSION_MINOR) +
                                 L"." + std::to_wstring(BACKUP_VERSION_REVISION);
    EXPECT_EQ(form.Title(), L"Copies de sécurité - Version " + version);
    EXPECT_EQ(Text(IDC_cmdSortie), L"&Quitter");
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Suivant...");
    EXPECT_EQ(Text(IDC_frmAction), L"&Action");
    EXPECT_EQ(Text(IDC_optRestaure), L"&Restaurer vos données");
    EXPECT_EQ(Text(IDC_optBackup), L"&Sauvegarder vos données");
    EXPECT_EQ(Text(IDC_frmMedium), L"Sauvegarder sur un(e)");
    EXPECT_EQ(Text(IDC_optCD), L"&CD-R/RW");
    EXPECT_EQ(Text(IDC_optDVD), L"&DVD±R/RW");
    EXPECT_EQ(Text(IDC_optDisqueAmovible), L"Disque amovible (port &USB)");
    EXPECT_EQ(Text(IDC_optDisqueExterne), L"Disque &externe (port USB)");
    EXPECT_EQ(Text(IDC_lblType), L"Type");
    EXPECT_EQ(Text(IDC_lblDetecte), L"Détecté");
    EXPECT_EQ(Text(IDC_cmdAide), L"A&ide");
}

TEST_F(MainWindowTest, EnglishCaptions) {
    StartInEnglish();
    EXPECT_TRUE(form.Title().starts_with(L"Backup - Version "));
    EXPECT_EQ(Text(IDC_cmdSortie), L"&Quit");
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Next...");
    EXPECT_EQ(Text(IDC_frmAction), L"&Action");
    EXPECT_EQ(Text(IDC_optRestaure), L"&Restore");
    EXPECT_EQ(Text(IDC_optBackup), L"&Backup");
    EXPECT_EQ(Text(IDC_frmMedium), L"Save on a");
    EXPECT_EQ(Text(IDC_optCD), L"&CD-R/RW");
    EXPECT_EQ(Text(IDC_optDVD), L"&DVD±R/RW");
    EXPECT_EQ(Text(IDC_optDisqueAmovible), L"Removable disk (&USB Port)");
    EXPECT_EQ(Text(IDC_optDisqueExterne), L"&External disk (USB port)");
    EXPECT_EQ(Text(IDC_lblType), L"Type");
    EXPECT_EQ(Text(IDC_lblDetecte), L"Detected");
    EXPECT_EQ(Text(IDC_cmdAide), L"&Help");
}

TEST_F(MainWindowTest, EveryCaptionFitsInFrench) {
    Start();
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
    EXPECT_EQ(OverlappingControls(form.Handle()), std::vector<std::string>{});
    Click(IDC_optRestaure);
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
}

TEST_F(MainWindowTest, EveryCaptionFitsInEnglish) {
    StartInEnglish();
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
    Click(IDC_optRestaure);
    EXPECT_EQ(ClippedCaptions(form.Handle()), std::vector<std::string>{});
    EXPECT_EQ(OverlappingControls(form.Handle()), std::vector<std::string>{});
}

TEST_F(MainWindowTest, EveryControlIsReachedByKeyboardAndNamed) {
    AddEverything();
    Start();
    EXPECT_EQ(UnreachableControls(form.Handle()), Ids{});
    EXPECT_EQ(UnlabelledFields(form.Handle()), Ids{});
    Click(IDC_optDisqueAmovible);
    EXPECT_EQ(TabOrder(form.Handle()),
              (Ids{IDC_optBackup, IDC_optDisqueAmovible, IDC_cboDrive, IDC_cmdBackup, IDC_cmdSortie, IDC_cmdAide}));
}

TEST_F(MainWindowTest, AccessKeysClashOnlyWhereTheTextsShareThem) {
    Start();
    EXPECT_EQ(AccessKeyClashes(form.Handle()), L"S"); // "&Suivant..." and "&Sauvegarder vos données"
}

TEST_F(MainWindowTest, EnglishAccessKeysAllDiffer) {
    StartInEnglish();
    EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
    Click(IDC_optRestaure);
    EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
}

TEST_F(MainWindowTest, StartUpTakesItsStepsInOrder) {
    AddEverything();
    Words steps;
    std::vector<int> progress;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        // The question comes with the external disks: both writers have been looked for, no removable disk yet.
        EXPECT_EQ(machine.discWriters.cdRecord.shutDown, 1);
        EXPECT_EQ(machine.discWriters.dvdRecord.shutDown, 1);
        EXPECT_EQ(DetectionLabels(), (Words{L"Oui", L"Oui", L"", L""}));
        EXPECT_EQ(SendMessageW(At(IDC_pgbInit), PBM_GETPOS, 0, 0), 4);
        EXPECT_TRUE(IsVisible(IDC_pgbInit));
        EXPECT_TRUE(ui::IsHourglassShown());
        EXPECT_EQ(Text(IDC_optCD), L"&CD-R/RW");
        EXPECT_EQ(machine.app.strRepRacine, L"C:\\Valcoreaux");
        for (const int id : {IDC_optBackup, IDC_optRestaure, IDC_cmdBackup, IDC_cmdSortie, IDC_cboDrive,
                             IDC_cboDisqueExterne, IDC_optDisqueAmovible, IDC_optDisqueExterne})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_EQ(machine.app.dblEspaceDisponible, 0);
    };
    Start();
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_FALSE(IsVisible(IDC_pgbInit));
    EXPECT_EQ(SendMessageW(At(IDC_pgbInit), PBM_GETPOS, 0, 0), 6);
    EXPECT_FALSE(ui::IsHourglassShown());
    for (const int id : {IDC_optBackup, IDC_optRestaure, IDC_cmdBackup, IDC_cmdSortie, IDC_cmdAide})
        EXPECT_TRUE(IsEnabled(id)) << id;
    EXPECT_TRUE(IsChecked(IDC_optBackup));
    EXPECT_EQ(machine.app.dblEspaceDisponible, 12345678);
    EXPECT_EQ(machine.drives.touched.size(), 52u);
}

TEST_F(MainWindowTest, FocusStartsOnTheActionWithNextAndQuitByKey) {
    Start();
    EXPECT_EQ(GetFocus(), At(IDC_optBackup));
    EXPECT_EQ(LOWORD(SendMessageW(form.Handle(), DM_GETDEFID, 0, 0)), IDC_cmdBackup);
    PressKey(VK_ESCAPE);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, EnterOpensTheChosenWindow) {
    AddRemovable(L"E:\\");
    Start();
    PressKey(VK_RETURN);
    EXPECT_EQ(openings.size(), 1u);
}

TEST_F(MainWindowTest, ArrowKeysChooseTheAction) {
    Start();
    PressKey(VK_DOWN);
    EXPECT_TRUE(IsChecked(IDC_optRestaure));
    EXPECT_FALSE(IsVisible(IDC_frmMedium));
    PressKey(VK_UP);
    EXPECT_TRUE(IsChecked(IDC_optBackup));
    EXPECT_TRUE(IsVisible(IDC_frmMedium));
}

TEST_F(MainWindowTest, ArrowKeysGoThroughTheMediaAndNotIntoTheDriveLists) {
    AddEverything();
    Start();
    SendMessageW(form.Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(At(IDC_optCD)), TRUE);
    for (const int id : {IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne, IDC_optCD}) {
        PressKey(VK_DOWN);
        EXPECT_EQ(CheckedMedia(), Ids{id});
    }
}

TEST_F(MainWindowTest, StartUpDetectsEachMediumOnce) {
    AddEverything();
    Start();
    EXPECT_EQ(machine.discWriters.cdRecord.created, 1);
    EXPECT_EQ(machine.discWriters.dvdRecord.created, 1);
    EXPECT_EQ(Count(IDC_cboDrive), 2);
    EXPECT_EQ(Count(IDC_cboDisqueExterne), 1);
}

TEST_F(MainWindowTest, MachineWithoutMediaOffersNothingAndBackupOpensNothing) {
    Start();
    EXPECT_EQ(EnabledMedia(), Ids{});
    EXPECT_EQ(CheckedMedia(), Ids{});
    EXPECT_EQ(DetectionLabels(), (Words{L"Non", L"Non", L"Non", L"Non"}));
    EXPECT_FALSE(IsEnabled(IDC_cboDrive));
    EXPECT_FALSE(IsEnabled(IDC_cboDisqueExterne));
    Click(IDC_cmdBackup);
    EXPECT_TRUE(openings.empty());
    EXPECT_EQ(restores, 0);
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(MainWindowTest, MachineWithEveryMediumOffersThemAllAndSelectsCd) {
    AddEverything();
    StartInEnglish();
    EXPECT_EQ(EnabledMedia(), (Ids{IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}));
    EXPECT_EQ(CheckedMedia(), Ids{IDC_optCD});
    EXPECT_EQ(DetectionLabels(), (Words{L"Yes", L"Yes", L"Yes", L"Yes"}));
}

TEST_F(MainWindowTest, FirstOfferedMediumIsSelectedWithItsDriveListOnly) {
    AddRemovable(L"E:\\");
    AddExternal(L"J:");
    Start();
    EXPECT_EQ(CheckedMedia(), Ids{IDC_optDisqueAmovible});
    EXPECT_TRUE(IsEnabled(IDC_cboDrive));
    EXPECT_FALSE(IsEnabled(IDC_cboDisqueExterne));
    EXPECT_EQ(Chosen(IDC_cboDrive), L"E:\\");
    EXPECT_EQ(Chosen(IDC_cboDisqueExterne), L"J:\\");
}

TEST_F(MainWindowTest, DriveListsAreEnabledForTheirOwnMediumOnly) {
    AddEverything();
    Start();
    struct Case {
        int click;
        bool isRemovableEnabled;
        bool isExternalEnabled;
    };
    for (const Case& row : {Case{IDC_optDisqueAmovible, true, false}, Case{IDC_optCD, false, false},
                            Case{IDC_optDisqueExterne, false, true}, Case{IDC_optDVD, false, false}}) {
        Click(row.click);
        EXPECT_EQ(IsEnabled(IDC_cboDrive), row.isRemovableEnabled) << row.click;
        EXPECT_EQ(IsEnabled(IDC_cboDisqueExterne), row.isExternalEnabled) << row.click;
        EXPECT_EQ(CheckedMedia(), Ids{row.click});
    }
}

TEST_F(MainWindowTest, DvdOnNt6StaysDisabledWithoutTheSettingsFile) {
    machine.discWriters.dvdDrives.push_back({L"DVD (H:)", {}});
    Start();
    EXPECT_FALSE(IsEnabled(IDC_optDVD));
    EXPECT_EQ(Text(IDC_lblDetDVD), L"Non");
}

TEST_F(MainWindowTest, DvdBeforeNt6IsOfferedWithoutTheSettingsFile) {
    machine.system.version = {2, 5, 1};
    machine.discWriters.dvdDrives.push_back({L"DVD (H:)", {}});
    Start();
    EXPECT_TRUE(IsEnabled(IDC_optDVD));
}

TEST_F(MainWindowTest, QuestionAnsweredNoHidesBothUsbMediaForTheRestOfTheRun) {
    AddRemovable(L"E:\\");
    AddExternal(L"J:");
    machine.messageBoxes.answers = {7};
    Start();
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(EnabledMedia(), Ids{});
        EXPECT_EQ(Count(IDC_cboDrive), 0);
        EXPECT_EQ(Count(IDC_cboDisqueExterne), 0);
        EXPECT_EQ(DetectionLabels(), (Words{L"Non", L"Non", L"Non", L"Non"}));
        Click(IDC_optBackup);
    }
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(MainWindowTest, QuestionHasTheStyleOfTheLanguage) {
    AddExternal(L"J:");
    Start();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].style, 324u);
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Utilisation d'un périphérique USB pour la prise de copie");
}

TEST_F(MainWindowTest, EnglishQuestionHasTheStyleOfTheLanguage) {
    AddExternal(L"J:");
    StartInEnglish();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].style, 4u);
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Utilization of a USB device for your backup");
}

TEST_F(MainWindowTest, FixedDriveThatCannotBeOpenedOrQueriedIsNoExternalDisk) {
    machine.drives.Add(L"K:\\", DriveType::Fixed);
    machine.drives.Add(L"L:\\", DriveType::Fixed);
    machine.usb.busTypes[L"L:"] = std::nullopt;
    AddExternal(L"J:");
    Start();
    EXPECT_EQ(EnabledMedia(), Ids{IDC_optDisqueExterne});
    EXPECT_EQ(Count(IDC_cboDisqueExterne), 1);
    EXPECT_EQ(Chosen(IDC_cboDisqueExterne), L"J:\\");
}

TEST_F(MainWindowTest, FailedEnumerationOffersNoExternalDiskAndAsksNothing) {
    AddExternal(L"J:");
    machine.usb.serviceNames.clear();
    Start();
    EXPECT_EQ(EnabledMedia(), Ids{});
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(MainWindowTest, BeforeNt6TheBusAloneDecidesOnExternalDisks) {
    machine.system.version = {2, 5, 1};
    AddExternal(L"J:");
    machine.usb.serviceNames.clear();
    Start();
    EXPECT_EQ(EnabledMedia(), Ids{IDC_optDisqueExterne});
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(MainWindowTest, BackupClickedAgainFindsWhatWasAttachedSince) {
    Start();
    AddEverything();
    Click(IDC_optBackup);
    EXPECT_EQ(EnabledMedia(), (Ids{IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}));
    EXPECT_EQ(DetectionLabels(), (Words{L"Oui", L"Oui", L"Oui", L"Oui"}));
    EXPECT_EQ(Count(IDC_cboDrive), 2);
    EXPECT_EQ(Chosen(IDC_cboDrive), L"E:\\");
    EXPECT_EQ(Chosen(IDC_cboDisqueExterne), L"J:\\");
}

TEST_F(MainWindowTest, BackupClickedAgainKeepsTheChosenMedium) {
    AddEverything();
    Start();
    Click(IDC_optDisqueExterne);
    Click(IDC_optBackup);
    EXPECT_EQ(CheckedMedia(), Ids{IDC_optDisqueExterne});
    EXPECT_TRUE(IsEnabled(IDC_cboDisqueExterne));
    EXPECT_FALSE(IsEnabled(IDC_cboDrive));
}

TEST_F(MainWindowTest, MediumThatIsGoneIsNoLongerChosen) {
    AddRemovable(L"E:\\");
    AddExternal(L"J:");
    Start();
    machine.drives.Remove(L"E:\\");
    Click(IDC_optBackup);
    EXPECT_EQ(CheckedMedia(), Ids{});
    EXPECT_FALSE(IsEnabled(IDC_cboDrive));
    Click(IDC_cmdBackup);
    EXPECT_TRUE(openings.empty());
    EXPECT_EQ(UnreachableControls(form.Handle()), Ids{});
}

TEST_F(MainWindowTest, MissingWriterIsExplainedByAToolTip) {
    Start();
    TTTOOLINFOW tool{};
    wchar_t text[256] = {};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = form.Handle();
    tool.lpszText = text;
    struct Search {
        HWND toolTips;
    } search{};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM found) -> BOOL {
            wchar_t name[64] = {};
            GetClassNameW(window, name, 64);
            if (std::wstring(name) == TOOLTIPS_CLASSW) reinterpret_cast<Search*>(found)->toolTips = window;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    ASSERT_NE(search.toolTips, nullptr);
    for (const int id : {IDC_optCD, IDC_optDVD}) {
        tool.uId = reinterpret_cast<UINT_PTR>(At(id));
        SendMessageW(search.toolTips, TTM_GETTEXTW, 256, reinterpret_cast<LPARAM>(&tool));
        EXPECT_EQ(std::wstring(text), L"Aucun graveur correctement configuré");
    }
    AddCdWriter();
    Click(IDC_optBackup);
    text[0] = 0;
    tool.uId = reinterpret_cast<UINT_PTR>(At(IDC_optCD));
    SendMessageW(search.toolTips, TTM_GETTEXTW, 256, reinterpret_cast<LPARAM>(&tool));
    EXPECT_EQ(std::wstring(text), L"");
}

TEST_F(MainWindowTest, RestoreHidesTheMediaAndWidensTheActionWithoutDetecting) {
    AddEverything();
    Start();
    EXPECT_NEAR(WidthTwips(IDC_frmAction), 3375, 8);
    const int created = machine.discWriters.cdRecord.created;
    Click(IDC_optRestaure);
    EXPECT_NEAR(WidthTwips(IDC_frmAction), 5775, 8);
    EXPECT_FALSE(IsVisible(IDC_frmMedium));
    EXPECT_FALSE(IsVisible(IDC_optCD));
    EXPECT_FALSE(IsVisible(IDC_cboDrive));
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Restaure...");
    EXPECT_EQ(machine.discWriters.cdRecord.created, created);
    Click(IDC_optBackup);
    EXPECT_NEAR(WidthTwips(IDC_frmAction), 3375, 8);
    EXPECT_TRUE(IsVisible(IDC_frmMedium));
    EXPECT_TRUE(IsVisible(IDC_optCD));
    EXPECT_EQ(Text(IDC_cmdBackup), L"&Suivant...");
    EXPECT_EQ(machine.discWriters.cdRecord.created, created + 1);
}

TEST_F(MainWindowTest, WidenedActionFrameLeavesNoTraceOfItsOldEdge) {
    Start();
    ui::RunPendingMessages();
    RECT frame{};
    GetWindowRect(At(IDC_frmAction), &frame);
    MapWindowPoints(nullptr, form.Handle(), reinterpret_cast<POINT*>(&frame), 2);
    Click(IDC_optRestaure);
    ui::RunPendingMessages();
    const HDC screen = GetDC(form.Handle());
    const int row = frame.bottom - 10;
    const COLORREF inside = GetPixel(screen, frame.right - 20, row);
    for (int column = frame.right - 6; column < frame.right + 2; ++column)
        EXPECT_EQ(GetPixel(screen, column, row), inside) << column;
    ReleaseDC(form.Handle(), screen);
}

TEST_F(MainWindowTest, EachMediumIsHandedOverWithItsCodeAndDrive) {
    AddEverything();
    Start();
    SendMessageW(At(IDC_cboDrive), CB_SETCURSEL, 1, 0);
    for (const int id : {IDC_optCD, IDC_optDVD, IDC_optDisqueAmovible, IDC_optDisqueExterne}) {
        Click(id);
        Click(IDC_cmdBackup);
    }
    ASSERT_EQ(openings.size(), 4u);
    EXPECT_EQ(openings[0].medium, Medium::Cd);
    EXPECT_EQ(openings[0].drive, std::nullopt);
    EXPECT_EQ(openings[1].medium, Medium::Dvd);
    EXPECT_EQ(openings[1].drive, std::nullopt);
    EXPECT_EQ(openings[2].medium, Medium::RemovableDisk);
    EXPECT_EQ(openings[2].drive, L"I:\\");
    EXPECT_EQ(openings[3].medium, Medium::ExternalDisk);
    EXPECT_EQ(openings[3].drive, L"J:\\");
    EXPECT_EQ(restores, 0);
}

TEST_F(MainWindowTest, RestoreIsOpenedWithTheOrdinaryPointer) {
    Start();
    Click(IDC_optRestaure);
    whenOpened = [](frmMain&) { EXPECT_FALSE(ui::IsHourglassShown()); };
    Click(IDC_cmdBackup);
    EXPECT_EQ(restores, 1);
    EXPECT_TRUE(openings.empty());
    EXPECT_TRUE(form.IsLoaded());
}

TEST_F(MainWindowTest, FullExitEndsTheProgramAsSoonAsTheBackupWindowCloses) {
    AddRemovable(L"E:\\");
    Start();
    EXPECT_FALSE(form.FullExit());
    whenOpened = [](frmMain& parent) { parent.SetFullExit(true); };
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, FullExitEndsTheProgramAfterARestore) {
    Start();
    Click(IDC_optRestaure);
    whenOpened = [](frmMain& parent) { parent.SetFullExit(true); };
    Click(IDC_cmdBackup);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, BackFromTheBackupWindowLeavesTheMainWindowIdle) {
    AddRemovable(L"E:\\");
    Start();
    whenOpened = [](frmMain& parent) { parent.SetFullExit(false); };
    Click(IDC_cmdBackup);
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(IsEnabled(IDC_cmdBackup));
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(MainWindowTest, HelpOpensTheDocumentOfTheLanguageWithoutAMessage) {
    StartInEnglish();
    Click(IDC_cmdAide);
    ASSERT_EQ(machine.processes.opened.size(), 1u);
    EXPECT_EQ(machine.processes.opened[0].document, L"C:\\Valcoreaux\\Backup\\Backup.pdf");
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(MainWindowTest, QuitEndsWithoutAsking) {
    Start();
    Click(IDC_cmdSortie);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(MainWindowTest, LanguageCodeThatIsNoNumberIsReportedAndStartUpGoesOnInFrench) {
    machine.system.SetProfileString(L"C:\\Valcoreaux\\Accueil\\accueil.ini", L"ACCUEIL-DEFAULTS", L"Lang", L"français");
    StartInEnglish();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_TRUE(machine.messageBoxes.shown[0].text.starts_with(
        L"Erreur nº 13 (Type mismatch) dans la procédure InitLangue, module frmMain à la ligne nº 0\r\n\r\n"));
    EXPECT_EQ(Text(IDC_cmdAide), L"A&ide");
    EXPECT_TRUE(IsEnabled(IDC_cmdBackup));
}

TEST_F(MainWindowTest, WriterThatCannotBeMadeIsReportedAndCountsAsNone) {
    AddRemovable(L"E:\\");
    machine.discWriters.createFailure = RuntimeError(429, L"ActiveX component can't create object");
    Start();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    for (const auto& box : machine.messageBoxes.shown)
        EXPECT_NE(box.text.find(L"InitGraveur, module frmMain"), std::wstring::npos);
    EXPECT_EQ(DetectionLabels(), (Words{L"Non", L"Non", L"Oui", L"Non"}));
    EXPECT_EQ(EnabledMedia(), Ids{IDC_optDisqueAmovible});
}

TEST_F(MainWindowTest, ErrorInAStepEndsTheStartUpThereAndLeavesAWindowThatCanBeLeft) {
    machine.drives.At(L"C:\\")->canRead = false;
    Start();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"nº 71 (Disk not ready) dans la procédure Form_Load, module "
                                                      L"frmMain"),
              std::wstring::npos);
    EXPECT_FALSE(ui::IsHourglassShown());
    EXPECT_TRUE(IsEnabled(IDC_cmdSortie));
    Click(IDC_cmdSortie);
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(MainWindowTest, ErrorInAnEarlyStepLeavesTheChoicesDisabled) {
    struct FailingLoop : FakeMessageLoop {
        FailingLoop() {
            handler = [this] {
                if (runs == 3) throw RuntimeError(ErrorNumber::OutOfMemory);
            };
        }
    } failing;
    FakeMachine other(&failing);
    frmMain broken(other.app, {});
    broken.Create();
    broken.Show();
    ASSERT_EQ(other.messageBoxes.shown.size(), 1u);
    EXPECT_NE(other.messageBoxes.shown[0].text.find(L"Form_Load, module frmMain"), std::wstring::npos);
    for (const int id : {IDC_optBackup, IDC_optRestaure, IDC_cmdBackup, IDC_optCD})
        EXPECT_FALSE(IsWindowEnabled(broken.ControlHandle(id))) << id;
    EXPECT_TRUE(IsWindowVisible(broken.ControlHandle(IDC_pgbInit)));
    EXPECT_TRUE(IsWindowEnabled(broken.ControlHandle(IDC_cmdSortie)));
    EXPECT_EQ(other.discWriters.cdRecord.created, 0);
}

/// Messages run while the writers are looked for; a handler may then come in.
class DetectionUnderClicks : public MainWindowTest {
  protected:
    void DuringDetection(std::function<void()> action) {
        pending = std::move(action);
        form.Post([this] { pending(); });
    }
    std::function<void()> pending;
};

TEST_F(DetectionUnderClicks, ClosingDuringStartUpEndsTheProgramThere) {
    AddEverything();
    form.Create();
    form.Post([this] { SendMessageW(form.Handle(), WM_CLOSE, 0, 0); });
    form.Show();
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(DetectionUnderClicks, NextClickedDuringDetectionOpensItsWindowOnceAtTheEnd) {
    AddEverything();
    Start();
    DuringDetection([this] {
        EXPECT_EQ(machine.discWriters.cdRecord.alive, 1);
        Click(IDC_cmdBackup);
        EXPECT_TRUE(openings.empty());
    });
    whenOpened = [this](frmMain&) {
        EXPECT_EQ(machine.discWriters.cdRecord.alive + machine.discWriters.dvdRecord.alive, 0);
    };
    Click(IDC_optBackup);
    EXPECT_EQ(openings.size(), 1u);
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(DetectionUnderClicks, BackupClickedDuringDetectionDetectsNoSecondTime) {
    AddEverything();
    Start();
    DuringDetection([this] {
        Click(IDC_optRestaure);
        Click(IDC_optBackup);
    });
    Click(IDC_optBackup);
    EXPECT_EQ(machine.discWriters.cdRecord.created, 2);
    EXPECT_TRUE(IsVisible(IDC_frmMedium));
}

TEST_F(DetectionUnderClicks, QuittingDuringDetectionEndsTheProgram) {
    AddEverything();
    Start();
    DuringDetection([this] { Click(IDC_cmdSortie); });
    Click(IDC_optBackup);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_EQ(machine.discWriters.cdRecord.alive, 0);
    EXPECT_EQ(machine.discWriters.dvdRecord.created, 1);
}

TEST_F(DetectionUnderClicks, MainWindowStaysWhileAnotherIsOpenOverIt) {
    Start();
    EnableWindow(form.Handle(), FALSE);
    SendMessageW(form.Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(form.IsLoaded());
}

} // namespace
