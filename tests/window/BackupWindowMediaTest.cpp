#include "BackupWindowBench.h"
#include "WaitFor.h"
#include "core/SpaceValues.h"
#include "resources/TextId.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(BackupWindowTest, DiscsListTheirWritersSpeedsAndTodaysLabel) {
    AddCdWriter(BlankDisc(MediaKind::CdR, 700 * Megabyte));
    machine.discWriters.cdDrives.push_back({L"OTHER (I:)", {}});
    Open(Medium::Cd);
    EXPECT_THAT(Lines(IDC_cmbGraveur), ElementsAre(L"CD (G:)", L"OTHER (I:)"));
    EXPECT_EQ(Selected(IDC_cmbGraveur), 0);
    EXPECT_THAT(Lines(IDC_cmbSpeed), ElementsAre(L"8", L"4", L"2", L"1"));
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
    machine.clock.now.minute = 10;
    EXPECT_TRUE(WaitFor([&] { return PanelText(4) == L"15:10"; })) << PanelText(4);
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
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                HasSubstr(L" cmbGraveur_Click, module frmBackup" + Resource(TextId::ReportLine)));
    EXPECT_THAT(machine.messageBoxes.shown[1].text,
                HasSubstr(L" cmbSpeed_Click, module frmBackupCD" + Resource(TextId::ReportLine)));
}

TEST_F(BackupWindowTest, RemovableDisksAreListedWithTheirLabelAndTheOneChosenIsSelected) {
    AddRemovable(L"E:\\");
    AddRemovable(L"F:\\");
    AddExternal(L"J:\\");
    Open(Medium::RemovableDisk, L"F:\\");
    EXPECT_THAT(Lines(IDC_cmbGraveur), ElementsAre(L"(E:\\) Disque amovible", L"(F:\\) Disque amovible"));
    EXPECT_EQ(Selected(IDC_cmbGraveur), 1);
}

TEST_F(BackupWindowTest, ExternalDisksAreListedWithTheirLabel) {
    SpeakEnglish();
    AddRemovable(L"E:\\");
    AddExternal(L"J:\\");
    AddExternal(L"K:\\");
    Open(Medium::ExternalDisk, L"K:\\");
    EXPECT_THAT(Lines(IDC_cmbGraveur), ElementsAre(L"(J:\\) External disk", L"(K:\\) External disk"));
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
    EXPECT_EQ(machine.app.space->availableSpace, Currency::FromDouble(1e9));
    EXPECT_EQ(Text(IDC_lblEspaceRequis), L"Espace requis pour sauvegarde :   0,000 Megs");
    EXPECT_EQ(Text(IDC_lblEspaceDispo), L"Espace disponible sur médium :   953,674 Megs");
    EXPECT_EQ(Text(IDC_lblEspaceTravail), L"Espace disponible sur le poste :  4 768,372 Megs");
}

TEST_F(BackupWindowTest, TheSizeOfTheSelectedDriveIsGivenInBytes) {
    OpenRemovable();
    EXPECT_EQ(form->GetEspaceTotalUSB(), L"2000 000 000");
    EXPECT_EQ(machine.app.space->availableSpace, Currency::FromDouble(2e9));
}

TEST_F(BackupWindowTest, ChoosingARemovableDiskMovesTheCopyThere) {
    AddRemovable(L"E:\\");
    AddRemovable(L"F:\\");
    machine.drives.At(L"F:\\")->space.freeBytes = 5e8;
    Open(Medium::RemovableDisk, L"E:\\");
    Choose(IDC_cmbGraveur, 1);
    EXPECT_EQ(form->Drive(), L"F:\\");
    EXPECT_EQ(machine.app.space->availableSpace, Currency::FromDouble(5e8));
    EXPECT_EQ(Text(IDC_lblEspaceDispo), L"Espace disponible sur médium :   476,837 Megs");
}

TEST_F(BackupWindowTest, ChoosingAnExternalDiskLeavesTheCopyWhereItWas) {
    AddExternal(L"J:\\");
    AddExternal(L"K:\\");
    machine.drives.At(L"K:\\")->space.freeBytes = 5e8;
    Open(Medium::ExternalDisk, L"J:\\");
    Choose(IDC_cmbGraveur, 1);
    EXPECT_EQ(form->Drive(), L"J:\\");
    EXPECT_EQ(machine.app.space->availableSpace, Currency::FromDouble(1e9));
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

TEST_F(BackupWindowTest, AnEraseThatFailsBeforeItsWindowIsReportedUnderItsButton) {
    FakeDisc disc = BlankDisc(MediaKind::CdRw, 650 * Megabyte);
    disc.status = DiscStatus::Unknown;
    OpenCd(disc);
    machine.strings.outOfMemoryAt = 259;
    Click(IDC_cmdEffacerDisque);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"cmdEffacerCD_Click, module frmBackupCD"));
}

} // namespace
