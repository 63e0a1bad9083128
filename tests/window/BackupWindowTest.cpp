#include "BackupWindowBench.h"
#include "CaptionFit.h"
#include "Footprint.h"
#include "ImportSwap.h"
#include "KeyboardReach.h"
#include "ScreenFit.h"
#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "core/StartUpValues.h"
#include "resources/TextId.h"

#include <map>
#include <string>
#include <vector>

extern "C" {
extern decltype(&GetSysColor) __imp_GetSysColor;
}

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr COLORREF Red = 255;
constexpr COLORREF White = 0xFFFFFF;

/// The colours of a contrast scheme: all black but the text.
DWORD WINAPI ColorOfBlackScheme(int index) {
    return index == COLOR_WINDOWTEXT ? White : 0;
}

const std::map<int, TextId> CaptionIds = {{IDC_lblVitesse, TextId::WriteSpeedCaption},
                                          {IDC_lblNomVolume, TextId::DiscTitleCaption},
                                          {IDC_cmdInfoDisque, TextId::DiscInformationCaption},
                                          {IDC_cmdEffacerDisque, TextId::EraseDiscCaption},
                                          {IDC_cmdPrecedent, TextId::BackCaption},
                                          {IDC_cmdQuitter, TextId::QuitCaption},
                                          {IDC_cmdLancer, TextId::StartBackupCaption},
                                          {IDC_fProgression, TextId::ProgressFrame},
                                          {IDC_lblStatutGravure, TextId::WritingCaption},
                                          {IDC_lblStatutGraveur, TextId::DiscTotalCaption},
                                          {IDC_cmdStopWrite, TextId::StopCaption},
                                          {IDC_fParametres, TextId::CdLabel}};

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
        machine.app.language->lngLangue = language;
        machine.discWriters.cdDrives.clear();
        OpenCd();
        EXPECT_THAT(ClippedCaptions(form->Handle()), IsEmpty()) << language;
        EXPECT_THAT(OverlappingControls(form->Handle()), IsEmpty()) << language;
        EXPECT_EQ(TooLargeForScreen(form->Handle()), "");
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

TEST_F(BackupWindowTest, ReturnStartsTheBackup) {
    OpenCd();
    EXPECT_EQ(DefaultButton(), IDC_cmdLancer);
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
    machine.app.startUp->dblEspaceDisponible = 0;
    OpenRemovable();
    ExpectOnlyBox(Resource(TextId::BackupWorkSpaceTooSmall), L"Capacité maximale atteinte", box::Exclamation);
    form->Show();
    EXPECT_EQ(machine.messageBoxes.shown.size(), 2u);
    SpeakEnglish();
    form->Show();
    ExpectBox(2, Resource(TextId::BackupWorkSpaceTooSmall), L"Maximum capacity reached", box::Exclamation);
}

TEST_F(BackupWindowTest, SelectingItemsMovesTheFigureAndTheStartButton) {
    OpenRemovable();
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
    AddItems();
    EXPECT_EQ(machine.app.space->requiredSpace, Currency::FromDouble(3150000));
    EXPECT_EQ(Text(IDC_lblEspaceRequis), L"Espace requis pour sauvegarde :   3,004 Megs");
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), 0u);
    EXPECT_TRUE(IsEnabled(IDC_cmdLancer));
    SendMessageW(HostedAt(IDC_cmdEffacerTouteListe), BM_CLICK, 0, 0);
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, RequiredSpaceThatReachesTheMediumTurnsRed) {
    AddRemovable(L"E:\\");
    machine.drives.At(L"E:\\")->space.freeBytes = 3150000;
    Open(Medium::RemovableDisk, L"E:\\");
    AddItems();
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), 255u);
    ExpectOnlyBox(Resource(TextId::MediumTooSmall), L"Capacité maximale atteinte", box::Exclamation);
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, RequiredSpaceThatFitsIsAsReadableAsTheSchemesText) {
    const ImportSwap scheme(&__imp_GetSysColor, &ColorOfBlackScheme);
    AddRemovable(L"E:\\");
    machine.drives.At(L"E:\\")->space.freeBytes = 3150000;
    Open(Medium::RemovableDisk, L"E:\\");
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), White);
    AddItems();
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), Red);
    SendMessageW(HostedAt(IDC_cmdEffacerTouteListe), BM_CLICK, 0, 0);
    EXPECT_EQ(ColorOf(IDC_lblEspaceRequis), White);
}

TEST_F(BackupWindowTest, WorkSpaceThatIsReachedTurnsRedOnARemoval) {
    OpenRemovable();
    AddItems();
    machine.app.startUp->dblEspaceDisponible = 1000;
    SendMessageW(HostedAt(IDC_cmdEffacerFichierListe), BM_CLICK, 0, 0);
    EXPECT_EQ(ColorOf(IDC_lblEspaceTravail), 255u);
    ExpectOnlyBox(Resource(TextId::BackupWorkSpaceTooSmall), L"Capacité maximale atteinte", box::Exclamation);
    SendMessageW(HostedAt(IDC_cmdEffacerTouteListe), BM_CLICK, 0, 0);
    EXPECT_EQ(ColorOf(IDC_lblEspaceTravail), 0u);
}

TEST_F(BackupWindowTest, BackSetsTheRequiredSpaceToZeroAndReturns) {
    OpenRemovable();
    AddItems();
    Click(IDC_cmdPrecedent);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(false));
}

TEST_F(BackupWindowTest, QuitEndsTheProgram) {
    OpenRemovable();
    Click(IDC_cmdQuitter);
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_THAT(mainWindow.fullExits, ElementsAre(true));
}

TEST_F(BackupWindowTest, ACaptionThatFailsIsReportedUnderTheNameOfTheScan) {
    machine.strings.outOfMemoryAt = 204;
    OpenCd();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"InitCaptions, module ctlScan"));
    EXPECT_EQ(PanelText(0), L"CD-R");
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
        // A burn keeps its window from being closed, but not from going with the program.
        form->Unload();
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
