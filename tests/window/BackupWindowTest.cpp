#include "CaptionFit.h"
#include "Footprint.h"
#include "KeyboardReach.h"
#include "backup/forms/frmBackup.h"
#include "discutil/forms/frmEffacerCDRWIds.h"
#include "selection/forms/ctlSelectionFichiersIds.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"
#include "ui/MessagePump.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <shlobj.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint64_t Megabyte = 1048576;

class FakeMainWindow : public MainWindow {
  public:
    std::vector<bool> fullExits; ///< every value that was set

    bool FullExit() const override { return !fullExits.empty() && fullExits.back(); }
    void SetFullExit(bool vbExit) override { fullExits.push_back(vbExit); }
};

/// The backup window on a stand-in workstation that has real messages.
class BackupWindowTest : public testing::Test {
  protected:
    BackupWindowTest() : machine(&messages) {
        machine.app.dblEspaceDisponible = 5e9;
        machine.drives.Add(L"C:\\", DriveType::Fixed, L"", {5e9, 9e9});
        machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\7Za.exe", "x");
        machine.files.AddSizedFile(L"C:\\Data\\a.txt", 1000000);
        machine.files.AddSizedFile(L"C:\\Data\\b.txt", 2000000);
        machine.files.AddFolder(L"C:\\Temp");
        machine.system.SetEnvironment(L"Temp", L"C:\\Temp");
        machine.processes.effect = [this](const std::wstring& commandLine) { Archive(commandLine); };
    }
    ~BackupWindowTest() override { EXPECT_EQ(machine.system.awakeHolds, 0); }

    /// What the archiver leaves behind.
    void Archive(const std::wstring& commandLine) {
        if (commandLine.find(L"OKRBACKUP.ZIP") != std::wstring::npos) {
            machine.files.AddSizedFile(L"C:\\Valcoreaux\\Backup\\zip\\OKRBACKUP.ZIP", archiveSizeBytes);
        } else {
            machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\Zip0001.zip", "inner");
            machine.files.AddFile(L"C:\\Valcoreaux\\Backup\\zip\\Zip0002.zip", "inner");
        }
        if (whileArchiving) whileArchiving();
    }

    void SpeakEnglish() {
        machine.app.lngLangue = 10000;
        machine.system.decimalSeparator = L".";
    }
    void AddRemovable(const std::wstring& root) { machine.drives.Add(root, DriveType::Removable, L"", {1e9, 2e9}); }
    void AddExternal(const std::wstring& root) {
        machine.drives.Add(root, DriveType::Fixed, L"", {1e9, 2e9});
        machine.usb.busTypes[root.substr(0, 2)] = 7;
        machine.usb.serviceNames = {L"USBSTOR"};
        machine.app.blnQuestionUSB = 1;
        machine.app.intReponseUSB = box::AnswerYes;
    }
    void AddCdWriter(const FakeDisc& disc) { machine.discWriters.cdDrives.push_back({L"CD (G:)", disc}); }
    void AddDvdWriter(const FakeDisc& disc) { machine.discWriters.dvdDrives.push_back({L"DVD (H:)", disc}); }

    void Open(Medium medium, const std::wstring& drive = {}) {
        form = std::make_unique<frmBackup>(machine.app, [this](ui::Form&) {
            ++questions;
            machine.app.backupPassword = L"Secret-1";
            return givesPassword;
        });
        form->SetMedia(medium);
        form->SetParent(mainWindow);
        if (!drive.empty()) form->SetDrive(drive);
        form->Create();
        form->Show();
    }
    void OpenRemovable() {
        AddRemovable(L"E:\\");
        Open(Medium::RemovableDisk, L"E:\\");
    }
    void OpenCd(const FakeDisc& disc = BlankDisc(MediaKind::CdR, 700 * Megabyte)) {
        AddCdWriter(disc);
        Open(Medium::Cd);
    }
    FakeDiscWriter& Cd() { return *machine.discWriters.Latest(DiscFamily::Cd); }
    FakeDiscRecord& CdRecord() { return machine.discWriters.Record(DiscFamily::Cd); }

    HWND At(int id) const { return GetDlgItem(form->Handle(), id); }
    HWND SelectionAt(int id) const {
        HWND child = nullptr;
        while ((child = FindWindowExW(form->Handle(), child, L"#32770", nullptr)) != nullptr) {
            if (HWND control = GetDlgItem(child, id)) return control;
        }
        return nullptr;
    }
    bool IsEnabled(int id) const { return IsWindowEnabled(At(id)) != FALSE; }
    bool IsVisible(int id) const { return IsWindowVisible(At(id)) != FALSE; }
    void Click(int id) const { SendMessageW(At(id), BM_CLICK, 0, 0); }
    static std::wstring TextOf(HWND control) {
        wchar_t text[512] = {};
        GetWindowTextW(control, text, 512);
        return text;
    }
    std::wstring Text(int id) const { return TextOf(At(id)); }
    std::vector<std::wstring> Items(int comboId) const {
        std::vector<std::wstring> items(static_cast<std::size_t>(SendMessageW(At(comboId), CB_GETCOUNT, 0, 0)));
        for (std::size_t row = 0; row < items.size(); ++row) {
            wchar_t text[256] = {};
            SendMessageW(At(comboId), CB_GETLBTEXT, row, reinterpret_cast<LPARAM>(text));
            items[row] = text;
        }
        return items;
    }
    int Selected(int comboId) const { return static_cast<int>(SendMessageW(At(comboId), CB_GETCURSEL, 0, 0)); }
    void Choose(int comboId, int row) const {
        SendMessageW(At(comboId), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
        SendMessageW(form->Handle(), WM_COMMAND, MAKEWPARAM(comboId, CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(At(comboId)));
    }
    std::wstring PanelText(int panel) const {
        wchar_t text[256] = {};
        SendMessageW(At(IDC_stBarDataWriter), SB_GETTEXTW, static_cast<WPARAM>(panel), reinterpret_cast<LPARAM>(text));
        return text;
    }
    COLORREF ColorOf(int id) const { return form->TextColor(id); }
    /// Drops the two files on the list.
    void AddItems() {
        HWND list = SelectionAt(IDC_lvFichRep);
        Drop(list, {L"C:\\Data\\a.txt", L"C:\\Data\\b.txt"});
        ui::RunPendingMessages();
    }
    static void Drop(HWND list, const std::vector<std::wstring>& paths) {
        std::wstring names;
        for (const std::wstring& path : paths) names += path + L'\0';
        names += L'\0';
        const std::size_t bytes = sizeof(DROPFILES) + names.size() * sizeof(wchar_t);
        HGLOBAL memory = GlobalAlloc(GHND, bytes);
        auto* header = static_cast<DROPFILES*>(GlobalLock(memory));
        header->pFiles = sizeof(DROPFILES);
        header->fWide = TRUE;
        memcpy(header + 1, names.data(), names.size() * sizeof(wchar_t));
        GlobalUnlock(memory);
        SendMessageW(list, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
    }
    std::wstring Resource(int id) const { return machine.app.Text(id); }
    void ExpectBox(std::size_t at, const std::wstring& text, const std::wstring& title, std::uint32_t style) {
        ASSERT_LT(at, machine.messageBoxes.shown.size());
        EXPECT_EQ(machine.messageBoxes.shown[at].text, text);
        EXPECT_EQ(machine.messageBoxes.shown[at].title, title);
        EXPECT_EQ(machine.messageBoxes.shown[at].style, style);
    }
    void ExpectOnlyBox(const std::wstring& text, const std::wstring& title, std::uint32_t style) {
        ExpectBox(0, text, title, style);
        EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    }

    FormMessageLoop messages;
    FakeMachine machine;
    FakeMainWindow mainWindow;
    std::unique_ptr<frmBackup> form;
    std::uint64_t archiveSizeBytes = 3000000;
    std::function<void()> whileArchiving;
    bool givesPassword = true;
    int questions = 0;
};

const std::map<int, int> CaptionIds = {
    {IDC_lblVitesse, 222},       {IDC_lblNomVolume, 223},     {IDC_cmdInfoDisque, 204}, {IDC_cmdEffacerDisque, 205},
    {IDC_cmdPrecedent, 132},     {IDC_cmdQuitter, 102},       {IDC_cmdLancer, 133},     {IDC_fProgression, 209},
    {IDC_lblStatutGravure, 134}, {IDC_lblStatutGraveur, 219}, {IDC_cmdStopWrite, 135},  {IDC_fParametres, 136}};

TEST_F(BackupWindowTest, EveryCaptionComesFromTheTableInBothLanguages) {
    OpenCd();
    for (const auto& [control, text] : CaptionIds) EXPECT_EQ(Text(control), Resource(text)) << control;
    EXPECT_EQ(form->Title(), L"Prise de copie de sécurité CD-R/RW - Version " + VersionText());
    form->Unload();
    SpeakEnglish();
    Open(Medium::Cd);
    for (const auto& [control, text] : CaptionIds) EXPECT_EQ(Text(control), Resource(text)) << control;
    EXPECT_EQ(form->Title(), L"Backup copy CD-ROM - Version " + VersionText());
}

TEST_F(BackupWindowTest, TitleAndSettingsFrameNameEachMedium) {
    AddRemovable(L"E:\\");
    AddExternal(L"J:\\");
    const std::map<Medium, std::wstring> labels = {{Medium::Cd, L"CD-R/RW"},
                                                   {Medium::Dvd, L"DVD±R/RW"},
                                                   {Medium::RemovableDisk, L"Disque amovible"},
                                                   {Medium::ExternalDisk, L"Disque externe"}};
    for (const auto& [medium, label] : labels) {
        Open(medium, medium == Medium::ExternalDisk ? L"J:\\" : L"E:\\");
        EXPECT_EQ(form->Title(), L"Prise de copie de sécurité " + label + L" - Version " + VersionText());
        EXPECT_EQ(Text(IDC_fParametres), label);
        form->Unload();
    }
}

TEST_F(BackupWindowTest, NoCaptionIsCutAndNothingOverlapsInEitherLanguage) {
    for (const int language : {0, 10000}) {
        machine.app.lngLangue = language;
        machine.discWriters.cdDrives.clear();
        OpenCd();
        EXPECT_THAT(ClippedCaptions(form->Handle()), IsEmpty()) << language;
        EXPECT_THAT(OverlappingControls(form->Handle()), IsEmpty()) << language;
        form->Unload();
    }
}

TEST_F(BackupWindowTest, EveryControlIsReachedByTabAndEveryFieldHasALabel) {
    OpenCd(BlankDisc(MediaKind::CdRw, 700 * Megabyte));
    AddItems();
    EXPECT_THAT(UnreachableControls(form->Handle()), IsEmpty());
    for (const int id : UnlabelledFields(form->Handle())) EXPECT_GT(id, IDC_stBarDataWriter);
    const std::vector<int> order = TabOrder(form->Handle());
    ASSERT_GE(order.size(), 8u);
    EXPECT_EQ(order.front(), IDC_dlbSelectLecteur);
    EXPECT_THAT(std::vector<int>(order.end() - 8, order.end()),
                ElementsAre(IDC_cmbGraveur, IDC_cmbSpeed, IDC_txtDiscLabel, IDC_cmdInfoDisque, IDC_cmdEffacerDisque,
                            IDC_cmdPrecedent, IDC_cmdLancer, IDC_cmdQuitter));
}

TEST_F(BackupWindowTest, ReturnStartsTheBackupAndEscapeGoesBack) {
    OpenCd();
    EXPECT_EQ(LOWORD(SendMessageW(form->Handle(), DM_GETDEFID, 0, 0)), IDC_cmdLancer);
    SendMessageW(form->Handle(), WM_COMMAND, IDCANCEL, 0);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(false));
}

TEST_F(BackupWindowTest, TheWindowIsSetUpOnItsFirstActivationOnly) {
    OpenCd();
    SetDlgItemTextW(form->Handle(), IDC_txtDiscLabel, L"mine");
    form->Show();
    EXPECT_EQ(Text(IDC_txtDiscLabel), L"mine");
    EXPECT_EQ(CdRecord().created, 1);
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(BackupWindowTest, RequiredSpaceThatReachesTheWorkSpaceIsSaidAtEachActivation) {
    machine.app.dblEspaceDisponible = 0;
    OpenRemovable();
    ExpectOnlyBox(Resource(166), L"Capacité maximale atteinte", box::Exclamation);
    form->Show();
    EXPECT_EQ(machine.messageBoxes.shown.size(), 2u);
    SpeakEnglish();
    form->Show();
    ExpectBox(2, Resource(166), L"Maximum capacity reached", box::Exclamation);
}

TEST_F(BackupWindowTest, DiscsListTheirWritersSpeedsAndTodaysLabel) {
    AddCdWriter(BlankDisc(MediaKind::CdR, 700 * Megabyte));
    machine.discWriters.cdDrives.push_back({L"OTHER (I:)", {}});
    Open(Medium::Cd);
    EXPECT_THAT(Items(IDC_cmbGraveur), ElementsAre(L"CD (G:)", L"OTHER (I:)"));
    EXPECT_EQ(Selected(IDC_cmbGraveur), 0);
    EXPECT_THAT(Items(IDC_cmbSpeed), ElementsAre(L"8", L"4", L"2", L"1"));
    EXPECT_EQ(Selected(IDC_cmbSpeed), 0);
    EXPECT_EQ(Text(IDC_txtDiscLabel), L"14 mars, 2026");
    EXPECT_TRUE(IsEnabled(IDC_cmbGraveur));
    EXPECT_TRUE(IsVisible(IDC_fParametres));
    EXPECT_FALSE(IsVisible(IDC_fProgression));
}

TEST_F(BackupWindowTest, ChoosingASpeedSetsItOnTheWriter) {
    OpenCd();
    Choose(IDC_cmbSpeed, 2);
    EXPECT_EQ(CdRecord().speed, 2);
}

TEST_F(BackupWindowTest, ChoosingAnotherWriterReadsItsDiscAndChecksItsKind) {
    AddCdWriter(BlankDisc(MediaKind::CdR, 700 * Megabyte));
    machine.discWriters.cdDrives.push_back({L"OTHER (I:)", BlankDisc(MediaKind::DvdPlusR, 100 * Megabyte)});
    Open(Medium::Cd);
    EXPECT_EQ(PanelText(0), L"CD-R");
    Choose(IDC_cmbGraveur, 1);
    EXPECT_EQ(PanelText(0), L"DVD+R");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Erreur format de disque");
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"Le disque inséré est un DVD+R."));
}

TEST_F(BackupWindowTest, TheStatusBarShowsTheDiscAndTheTime) {
    SpeakEnglish();
    AddDvdWriter(BlankDisc(MediaKind::DvdMinusRw, 4482 * Megabyte));
    Open(Medium::Dvd);
    EXPECT_EQ(PanelText(0), L"DVD-RW");
    EXPECT_EQ(PanelText(1), L"Blank");
    EXPECT_EQ(PanelText(2), L"  0.000 Mo");
    EXPECT_EQ(PanelText(3), L" 4 482.000 Mo");
    EXPECT_EQ(PanelText(4), L"15:09");
    machine.system.now.minute = 10;
    SendMessageW(form->Handle(), WM_TIMER, 1, 0);
    EXPECT_EQ(PanelText(4), L"15:10");
}

TEST_F(BackupWindowTest, AComponentThatCannotBeMadeIsReportedAndTheWindowStaysUsable) {
    machine.discWriters.createFailure = RuntimeError(ErrorNumber::CannotCreateObject);
    Open(Medium::Cd);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"nº 429 "));
    EXPECT_EQ(PanelText(0), L"Aucun disque");
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
    EXPECT_TRUE(IsEnabled(IDC_cmdPrecedent));
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(BackupWindowTest, AChoiceWithoutAWriterIsReportedUnderTheLabelsThatUsersQuote) {
    machine.discWriters.createFailure = RuntimeError(ErrorNumber::CannotCreateObject);
    Open(Medium::Cd);
    machine.messageBoxes.shown.clear();
    Choose(IDC_cmbGraveur, -1);
    Choose(IDC_cmbSpeed, -1);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L" cmbGraveur_Click, module frmBackup" + Resource(3)));
    EXPECT_THAT(machine.messageBoxes.shown[1].text, HasSubstr(L" cmbSpeed_Click, module frmBackupCD" + Resource(3)));
}

TEST_F(BackupWindowTest, RemovableDisksAreListedWithTheirLabelAndTheOneChosenIsSelected) {
    AddRemovable(L"E:\\");
    AddRemovable(L"F:\\");
    AddExternal(L"J:\\");
    Open(Medium::RemovableDisk, L"F:\\");
    EXPECT_THAT(Items(IDC_cmbGraveur), ElementsAre(L"(E:\\) Disque amovible", L"(F:\\) Disque amovible"));
    EXPECT_EQ(Selected(IDC_cmbGraveur), 1);
}

TEST_F(BackupWindowTest, ExternalDisksAreListedWithTheirLabel) {
    SpeakEnglish();
    AddRemovable(L"E:\\");
    AddExternal(L"J:\\");
    AddExternal(L"K:\\");
    Open(Medium::ExternalDisk, L"K:\\");
    EXPECT_THAT(Items(IDC_cmbGraveur), ElementsAre(L"(J:\\) External disk", L"(K:\\) External disk"));
    EXPECT_EQ(Selected(IDC_cmbGraveur), 1);
}

TEST_F(BackupWindowTest, DisksHaveNoDiscControls) {
    OpenRemovable();
    for (const int id : {IDC_cmbSpeed, IDC_txtDiscLabel, IDC_cmdEffacerDisque}) {
        EXPECT_FALSE(IsVisible(id)) << id;
        EXPECT_FALSE(IsEnabled(id)) << id;
    }
    EXPECT_FALSE(IsVisible(IDC_lblVitesse));
    EXPECT_FALSE(IsVisible(IDC_lblNomVolume));
    EXPECT_TRUE(IsVisible(IDC_cmdInfoDisque));
}

TEST_F(BackupWindowTest, DisksShowTheirStateAndOfferWhatIsFree) {
    OpenRemovable();
    EXPECT_EQ(PanelText(1), L"Prêt");
    EXPECT_EQ(PanelText(2), L"  953,674 Megs");
    EXPECT_EQ(PanelText(3), L" 1 907,349 Megs");
    EXPECT_EQ(machine.app.availableSpace, Currency::FromDouble(1e9));
    EXPECT_EQ(Text(IDC_lblEspaceRequis), L"Espace requis pour sauvegarde :   0,000 Megs");
    EXPECT_EQ(Text(IDC_lblEspaceDispo), L"Espace disponible sur médium :   953,674 Megs");
    EXPECT_EQ(Text(IDC_lblEspaceTravail), L"Espace disponible sur le poste :  4 768,372 Megs");
}

TEST_F(BackupWindowTest, TheSizeOfTheSelectedDriveIsGivenInBytes) {
    OpenRemovable();
    EXPECT_EQ(form->GetEspaceTotalUSB(), L"2000 000 000");
    EXPECT_EQ(machine.app.availableSpace, Currency::FromDouble(2e9));
}

TEST_F(BackupWindowTest, ChoosingARemovableDiskMovesTheCopyThere) {
    AddRemovable(L"E:\\");
    AddRemovable(L"F:\\");
    machine.drives.At(L"F:\\")->space.freeBytes = 5e8;
    Open(Medium::RemovableDisk, L"E:\\");
    Choose(IDC_cmbGraveur, 1);
    EXPECT_EQ(form->Drive(), L"F:\\");
    EXPECT_EQ(machine.app.availableSpace, Currency::FromDouble(5e8));
    EXPECT_EQ(Text(IDC_lblEspaceDispo), L"Espace disponible sur médium :   476,837 Megs");
}

TEST_F(BackupWindowTest, ChoosingAnExternalDiskLeavesTheCopyWhereItWas) {
    AddExternal(L"J:\\");
    AddExternal(L"K:\\");
    machine.drives.At(L"K:\\")->space.freeBytes = 5e8;
    Open(Medium::ExternalDisk, L"J:\\");
    Choose(IDC_cmbGraveur, 1);
    EXPECT_EQ(form->Drive(), L"J:\\");
    EXPECT_EQ(machine.app.availableSpace, Currency::FromDouble(1e9));
}

TEST_F(BackupWindowTest, SelectingItemsMovesTheFigureAndTheStartButton) {
    OpenRemovable();
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
    AddItems();
    EXPECT_EQ(machine.app.requiredSpace, Currency::FromDouble(3150000));
    EXPECT_EQ(Text(IDC_lblEspaceRequis), L"Espace requis pour sauvegarde :   3,004 Megs");
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), 0u);
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    SendMessageW(SelectionAt(IDC_cmdEffacerTouteListe), BM_CLICK, 0, 0);
    EXPECT_EQ(machine.app.requiredSpace, Currency());
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, RequiredSpaceThatReachesTheMediumTurnsRed) {
    AddRemovable(L"E:\\");
    machine.drives.At(L"E:\\")->space.freeBytes = 3150000;
    Open(Medium::RemovableDisk, L"E:\\");
    AddItems();
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), 255u);
    ExpectOnlyBox(Resource(147), L"Capacité maximale atteinte", box::Exclamation);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, WorkSpaceThatIsReachedTurnsRedOnARemoval) {
    OpenRemovable();
    AddItems();
    machine.app.dblEspaceDisponible = 1000;
    SendMessageW(SelectionAt(IDC_cmdEffacerFichierListe), BM_CLICK, 0, 0);
    EXPECT_EQ(ColorOf(IDC_lblEspaceTravail), 255u);
    ExpectOnlyBox(Resource(166), L"Capacité maximale atteinte", box::Exclamation);
    SendMessageW(SelectionAt(IDC_cmdEffacerTouteListe), BM_CLICK, 0, 0);
    EXPECT_EQ(ColorOf(IDC_lblEspaceTravail), 0u);
}

TEST_F(BackupWindowTest, BackSetsTheRequiredSpaceToZeroAndReturns) {
    OpenRemovable();
    AddItems();
    Click(IDC_cmdPrecedent);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(machine.app.requiredSpace, Currency());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(false));
}

TEST_F(BackupWindowTest, QuitEndsTheProgram) {
    OpenRemovable();
    Click(IDC_cmdQuitter);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(true));
}

TEST_F(BackupWindowTest, ABackupToARemovableDiskEndsTheProgram) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    AddItems();
    Click(IDC_cmdLancer);
    ExpectOnlyBox(Resource(263), Resource(264), box::Exclamation);
    EXPECT_TRUE(machine.files.FileExists(L"E:\\OKRBACKUP.ZIP"));
    EXPECT_TRUE(machine.files.FileExists(L"E:\\_listFich.lst"));
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(true));
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(machine.system.awakeHoldsTaken, 1);
}

TEST_F(BackupWindowTest, WhileTheArchiveIsBuiltOnlyStopCanBePressed) {
    OpenRemovable();
    AddItems();
    int looks = 0;
    whileArchiving = [&] {
        ++looks;
        EXPECT_TRUE(IsVisible(IDC_fProgression));
        EXPECT_FALSE(IsVisible(IDC_fParametres));
        EXPECT_TRUE(IsEnabled(IDC_cmdStopWrite));
        EXPECT_TRUE(IsVisible(IDC_cmdStopWrite));
        for (const int id : {IDC_cmdPrecedent, IDC_cmdQuitter, IDC_cmdLancer, IDC_cmbGraveur, IDC_cmdInfoDisque})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_FALSE(IsVisible(IDC_cmdLancer));
        EXPECT_FALSE(IsWindowEnabled(SelectionAt(IDC_cmdAjouterRep)));
        EXPECT_EQ(Text(IDC_lblStatutGravure), Resource(142));
        SendMessageW(form->Handle(), WM_CLOSE, 0, 0);
        for (const int id : {IDC_cmdPrecedent, IDC_cmdQuitter})
            SendMessageW(form->Handle(), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(At(id)));
        EXPECT_TRUE(form->IsLoaded());
    };
    Click(IDC_cmdLancer);
    EXPECT_EQ(looks, 4);
}

TEST_F(BackupWindowTest, TheKeyboardReachesStopDuringARunAndTheStartButtonAfterIt) {
    OpenRemovable();
    AddItems();
    SetActiveWindow(form->Handle());
    SetFocus(At(IDC_cmdLancer));
    whileArchiving = [&] { EXPECT_EQ(GetFocus(), At(IDC_cmdStopWrite)); };
    archiveSizeBytes = 1000000001;
    Click(IDC_cmdLancer);
    EXPECT_EQ(machine.processes.commandLines.size(), 4u);
    EXPECT_EQ(GetFocus(), At(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, StoppingTheOnlyItemLeavesTheMediumUntouched) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old");
    Drop(SelectionAt(IDC_lvFichRep), {L"C:\\Data\\a.txt"});
    whileArchiving = [this] {
        if (machine.processes.commandLines.size() == 2) PostMessageW(At(IDC_cmdStopWrite), BM_CLICK, 0, 0);
    };
    Click(IDC_cmdLancer);
    EXPECT_EQ(machine.processes.commandLines.size(), 2u);
    ExpectOnlyBox(Resource(418), L"Error", box::Critical);
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "old");
    EXPECT_TRUE(form->IsLoaded());
}

TEST_F(BackupWindowTest, TheProgressStandsWhereItBelongs) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    const ui::BoundsTwips place = ui::BoundsOf(At(IDC_fProgression));
    EXPECT_NEAR(place.left, 120, 15);
    EXPECT_NEAR(place.top, 5925, 15);
    EXPECT_NEAR(place.width, 11640, 15);
    EXPECT_NEAR(place.height, 1965, 15);
    for (const int id :
         {IDC_lblStatutGravure, IDC_pbProgress, IDC_lblStatutGraveur, IDC_pbProgressTotal, IDC_cmdStopWrite}) {
        const ui::BoundsTwips inside = ui::BoundsOf(At(id));
        EXPECT_TRUE(IsVisible(id)) << id;
        EXPECT_GE(inside.top, place.top) << id;
        EXPECT_LE(inside.top + inside.height, place.top + place.height) << id;
        EXPECT_LE(inside.left + inside.width, place.left + place.width) << id;
    }
    Click(IDC_cmdStopWrite);
}

TEST_F(BackupWindowTest, StoppingBetweenTwoItemsLeavesTheMediumUntouched) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    machine.files.AddFile(L"E:\\OKRBACKUP.ZIP", "old");
    AddItems();
    whileArchiving = [this] { PostMessageW(At(IDC_cmdStopWrite), BM_CLICK, 0, 0); };
    Click(IDC_cmdLancer);
    EXPECT_EQ(machine.processes.commandLines.size(), 2u);
    ExpectOnlyBox(Resource(418), L"Error", box::Critical);
    EXPECT_EQ(machine.files.Read(L"E:\\OKRBACKUP.ZIP"), "old");
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(IsVisible(IDC_fParametres));
    EXPECT_FALSE(IsVisible(IDC_fProgression));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, ARefusedPasswordLeavesTheWindowAsItWas) {
    OpenRemovable();
    AddItems();
    givesPassword = false;
    Click(IDC_cmdLancer);
    EXPECT_EQ(questions, 1);
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_THAT(machine.processes.commandLines, IsEmpty());
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    EXPECT_TRUE(IsVisible(IDC_fParametres));
}

TEST_F(BackupWindowTest, AMissingArchiverIsReported) {
    OpenRemovable();
    AddItems();
    machine.files.Remove(L"C:\\Valcoreaux\\Backup\\7Za.exe");
    SpeakEnglish();
    Click(IDC_cmdLancer);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"7Za.exe : Unable to compress data."));
    EXPECT_EQ(machine.messageBoxes.shown[0].title, L"Fatal error of the backup software");
    EXPECT_EQ(questions, 0);
}

TEST_F(BackupWindowTest, AnArchiveThatDoesNotFitIsSaid) {
    OpenRemovable();
    AddItems();
    archiveSizeBytes = 1000000001;
    Click(IDC_cmdLancer);
    ExpectOnlyBox(Resource(147), Resource(146), box::Exclamation);
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(IsVisible(IDC_fParametres));
}

TEST_F(BackupWindowTest, AVanishedDiskIsSaidToBeUnavailable) {
    OpenRemovable();
    AddItems();
    machine.drives.Remove(L"E:\\");
    Click(IDC_cmdLancer);
    ExpectOnlyBox(L"Disque amovible non disponible", L"Backup", box::Ok);
    EXPECT_EQ(PanelText(1), L"non disponible");
    EXPECT_EQ(questions, 0);
}

TEST_F(BackupWindowTest, ADiscIsWrittenUnderItsEventsAndEndsTheProgram) {
    OpenCd();
    AddItems();
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    Choose(IDC_cmbSpeed, 1);
    Click(IDC_cmdLancer);
    EXPECT_EQ(CdRecord().filesWritten.size(), 2u);
    EXPECT_EQ(CdRecord().label, L"14 mars, 2026");
    EXPECT_EQ(CdRecord().speed, 4);
    EXPECT_FALSE(form->StopWrite());
    EXPECT_FALSE(ui::IsHourglassShown());
    Cd().RaiseProgress(DiscOperation::Writing, 42, WritingStage::WritingTrack);
    EXPECT_EQ(Text(IDC_lblStatutGraveur), L"Ecriture de piste...");
    EXPECT_EQ(SendMessageW(At(IDC_pbProgressTotal), PBM_GETPOS, 0, 0), 42);
    Cd().PlayToEnd();
    ExpectOnlyBox(Resource(263), Resource(264), box::Exclamation);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(true));
    EXPECT_EQ(CdRecord().shutDown, 1);
    EXPECT_EQ(CdRecord().alive, 0);
}

TEST_F(BackupWindowTest, StoppingABurnReturnsToTheSettingsAtOnce) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    Cd().RaiseProgress(DiscOperation::Writing, 30, WritingStage::WritingTrack);
    Click(IDC_cmdStopWrite);
    EXPECT_EQ(CdRecord().calls.back(), L"Abort");
    EXPECT_TRUE(IsVisible(IDC_fParametres));
    EXPECT_FALSE(IsVisible(IDC_fProgression));
    EXPECT_TRUE(IsEnabled(IDC_cmdPrecedent));
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    EXPECT_TRUE(form->StopWrite());
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
}

TEST_F(BackupWindowTest, ClosingDuringABurnShutsTheWriterDown) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    SendMessageW(form->Handle(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(CdRecord().shutDown, 1);
    EXPECT_EQ(CdRecord().alive, 0);
}

TEST_F(BackupWindowTest, TheWindowMayCloseInsideAProgressEvent) {
    OpenCd();
    AddItems();
    Click(IDC_cmdLancer);
    PostMessageW(form->Handle(), WM_CLOSE, 0, 0);
    Cd().RaiseProgress(DiscOperation::Writing, 30, WritingStage::WritingTrack);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(CdRecord().alive, 0);
}

TEST_F(BackupWindowTest, AnotherDiscInTheDriveIsReadAgain) {
    OpenCd();
    AddItems();
    Cd().InsertDisc({});
    EXPECT_EQ(PanelText(0), L"Aucun disque");
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
    EXPECT_EQ(Text(IDC_lblEspaceDispo), L"Espace disponible sur médium :   0,000 Megs");
    Cd().InsertDisc(BlankDisc(MediaKind::CdRw, 650 * Megabyte));
    EXPECT_EQ(PanelText(0), L"CD-RW");
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    EXPECT_TRUE(IsEnabled(IDC_cmdEffacerDisque));
}

TEST_F(BackupWindowTest, ACaptionThatFailsIsReportedUnderTheNameOfTheScan) {
    machine.strings.outOfMemoryAt = 204;
    OpenCd();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"InitCaptions, module ctlScan"));
    EXPECT_EQ(PanelText(0), L"CD-R");
}

TEST_F(BackupWindowTest, AnEraseThatFailsBeforeItsWindowIsReportedUnderItsButton) {
    FakeDisc disc = BlankDisc(MediaKind::CdRw, 650 * Megabyte);
    disc.status = DiscStatus::Unknown;
    OpenCd(disc);
    machine.strings.outOfMemoryAt = 259;
    Click(IDC_cmdEffacerDisque);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"cmdEffacerCD_Click, module frmBackupCD"));
}

TEST(FootprintTest, TellsALeakedHandleObjectAndWindow) {
    const Footprint before = FootprintNow();
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const Footprint after = FootprintNow();
    EXPECT_GT(after.handles, before.handles);
    EXPECT_GT(after.gdiObjects, before.gdiObjects);
    EXPECT_GT(after.windows, before.windows);
    DestroyWindow(window);
    DeleteObject(brush);
    CloseHandle(event);
}

TEST_F(BackupWindowTest, TwoHundredOpeningsLeakNeitherHandlesNorGdiObjects) {
    AddCdWriter(BlankDisc(MediaKind::CdRw, 700 * Megabyte));
    const auto cycle = [this](int turn) {
        Open(Medium::Cd);
        if (turn % 4 == 1) {
            AddItems();
            Click(IDC_cmdLancer);
            Cd().RaiseProgress(DiscOperation::Writing, 30, WritingStage::WritingTrack);
        }
        SendMessageW(form->Handle(), WM_CLOSE, 0, 0);
        ASSERT_FALSE(form->IsLoaded());
    };
    // What the system loads once is there after the first windows.
    for (int turn = 0; turn < 8; ++turn) cycle(turn);
    const Footprint before = FootprintNow();
    for (int turn = 0; turn < 200; ++turn) cycle(turn);
    const Footprint after = FootprintNow();
    EXPECT_EQ(after, before);
    EXPECT_EQ(CdRecord().alive, 0);
    EXPECT_EQ(CdRecord().created, CdRecord().shutDown);
}

} // namespace
