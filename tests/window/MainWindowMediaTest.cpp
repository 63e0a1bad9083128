#include "KeyboardReach.h"
#include "MainWindowBench.h"

namespace {

TEST_F(MainWindowTest, NoToTheQuestionOfAClickTakesTheRemovableDiskAwayAtOnce) {
    AddRemovable(L"E:\\");
    Start();
    ASSERT_EQ(EnabledMedia(), Ids{IDC_optDisqueAmovible});
    ASSERT_TRUE(machine.messageBoxes.shown.empty());
    AddExternal(L"J:");
    machine.messageBoxes.answers = {7};
    Click(IDC_optBackup);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(EnabledMedia(), Ids{});
    EXPECT_EQ(CheckedMedia(), Ids{});
    EXPECT_EQ(Count(IDC_cboDrive), 0u);
    EXPECT_EQ(DetectionLabels(), (Words{L"Non", L"Non", L"Non", L"Non"}));
    Click(IDC_cmdBackup);
    EXPECT_TRUE(openings.empty());
}

TEST_F(MainWindowTest, YesToTheQuestionOfAClickKeepsTheDriveThatWasChosen) {
    AddRemovable(L"E:\\");
    AddRemovable(L"F:\\");
    Start();
    AddExternal(L"J:");
    Click(IDC_optBackup);
    EXPECT_EQ(EnabledMedia(), (Ids{IDC_optDisqueAmovible, IDC_optDisqueExterne}));
    EXPECT_EQ(Count(IDC_cboDrive), 2u);
}

LRESULT CALLBACK RecordText(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR order) {
    if (message == WM_SETTEXT) reinterpret_cast<std::vector<int>*>(order)->push_back(GetDlgCtrlID(window));
    return DefSubclassProc(window, message, wParam, lParam);
}

TEST_F(MainWindowTest, AClickDetectsTheFourMediaInTheirOrder) {
    AddEverything();
    Start();
    const Ids labels = {IDC_lblDetCD, IDC_lblDetDVD, IDC_lblDetRemDisk, IDC_lblDetExtDisk};
    Ids order;
    for (const int id : labels) {
        SetWindowTextW(At(id), L"?");
        SetWindowSubclass(At(id), RecordText, 0, reinterpret_cast<DWORD_PTR>(&order));
    }
    Click(IDC_optBackup);
    EXPECT_EQ(order, labels);
    for (const int id : labels) RemoveWindowSubclass(At(id), RecordText, 0);
}

TEST_F(MainWindowTest, StartUpDetectsEachMediumOnce) {
    AddEverything();
    Start();
    EXPECT_EQ(machine.discWriters.cdRecord.created, 1);
    EXPECT_EQ(machine.discWriters.dvdRecord.created, 1);
    EXPECT_EQ(Count(IDC_cboDrive), 2u);
    EXPECT_EQ(Count(IDC_cboDisqueExterne), 1u);
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
    machine.operatingSystem.version = {2, 5, 1};
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
        EXPECT_EQ(Count(IDC_cboDrive), 0u);
        EXPECT_EQ(Count(IDC_cboDisqueExterne), 0u);
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
    EXPECT_EQ(Count(IDC_cboDisqueExterne), 1u);
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
    machine.operatingSystem.version = {2, 5, 1};
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
    EXPECT_EQ(Count(IDC_cboDrive), 2u);
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

} // namespace
