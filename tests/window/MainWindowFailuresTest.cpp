#include "MainWindowBench.h"
#include "core/StartUpValues.h"

namespace {

TEST_F(MainWindowTest, LanguageCodeThatIsNoNumberIsReportedAndStartUpGoesOnInFrench) {
    machine.settings.Set(L"C:\\Valcoreaux\\Accueil\\accueil.ini", L"ACCUEIL-DEFAULTS", L"Lang", L"français");
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

TEST_F(MainWindowTest, AProgramDriveThatCannotBeMeasuredIsNoReasonForAMessage) {
    machine.drives.At(L"C:\\")->canRead = false;
    Start();
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_EQ(machine.app.startUp->dblEspaceDisponible, 0);
    EXPECT_FALSE(ui::IsHourglassShown());
    EXPECT_TRUE(IsEnabled(IDC_cmdBackup));
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
    EXPECT_FALSE(ui::IsHourglassShown());
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
    form.Post([this] { Close(); });
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
    Close();
    EXPECT_TRUE(form.IsLoaded());
}

} // namespace
