// The backup window for discs: what it shows while it asks a writer, and what it catches up with.
#include "BackupWindowBench.h"
#include "WaitFor.h"
#include "core/SpaceValues.h"
#include "selection/forms/ctlScanIds.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A writer that calls somebody whenever a speed is asked of it.
class WatchedWriter final : public FakeDiscWriter {
  public:
    WatchedWriter(FakeDiscWriters& writers, DiscFamily family, std::function<void()> look)
        : FakeDiscWriter(writers, family), look_(std::move(look)) {}
    void SetWriteSpeed(double speed) override {
        FakeDiscWriter::SetWriteSpeed(speed);
        look_();
    }

  private:
    std::function<void()> look_;
};

class WatchedWriters final : public DiscWriters {
  public:
    WatchedWriters(FakeDiscWriters& writers, std::function<void()> look) : writers_(writers), look_(std::move(look)) {}
    std::unique_ptr<DiscWriter> Create(DiscFamily family) override {
        return std::make_unique<WatchedWriter>(writers_, family, look_);
    }

  private:
    FakeDiscWriters& writers_;
    std::function<void()> look_;
};

TEST_F(BackupWindowTest, WhileTheSpeedsAreProbedTheScanIsShownAndNothingCanBePressed) {
    AddCdWriter(BlankDisc(MediaKind::CdR, 700 * Megabyte));
    int looks = 0;
    WatchedWriters watched(machine.discWriters, [&] {
        if (looks++ > 0) return;
        ASSERT_NE(HostedAt(IDC_pgbScan), nullptr);
        EXPECT_TRUE(IsWindowVisible(HostedAt(IDC_pgbScan)));
        EXPECT_EQ(SendMessageW(HostedAt(IDC_pgbScan), PBM_GETPOS, 0, 0), 1);
        EXPECT_EQ(SendMessageW(HostedAt(IDC_pgbScan), PBM_GETRANGE, FALSE, 0), 3);
        EXPECT_FALSE(IsVisible(IDC_fParametres));
        for (const int id : {IDC_cmbGraveur, IDC_cmbSpeed, IDC_txtDiscLabel, IDC_cmdInfoDisque, IDC_cmdPrecedent,
                             IDC_cmdQuitter, IDC_cmdLancer})
            EXPECT_FALSE(IsEnabled(id)) << id;
        EXPECT_FALSE(IsWindowEnabled(HostedAt(IDC_cmdAjouterRep)));
        EXPECT_TRUE(ui::IsHourglassShown());
    });
    machine.app.machine.discWriters = watched;
    Open(Medium::Cd);
    EXPECT_EQ(looks, 64);
    EXPECT_EQ(HostedAt(IDC_pgbScan), nullptr);
    EXPECT_TRUE(IsVisible(IDC_fParametres));
    for (const int id :
         {IDC_cmbGraveur, IDC_cmbSpeed, IDC_txtDiscLabel, IDC_cmdInfoDisque, IDC_cmdPrecedent, IDC_cmdQuitter})
        EXPECT_TRUE(IsEnabled(id)) << id;
    EXPECT_TRUE(IsWindowEnabled(HostedAt(IDC_cmdAjouterRep)));
    EXPECT_FALSE(ui::IsHourglassShown());
}

TEST_F(BackupWindowTest, SpeedsAreProbedAgainWhenADiscComesToADriveThatWasEmpty) {
    OpenCd({});
    Choose(IDC_cmbSpeed, 1);
    machine.discWriters.cdDrives[0].speeds = {16, 4};
    Cd().InsertDisc(BlankDisc(MediaKind::CdR, 700 * Megabyte));
    EXPECT_THAT(Lines(IDC_cmbSpeed), ElementsAre(L"16", L"4"));
    // The one that was chosen stays chosen.
    EXPECT_EQ(Selected(IDC_cmbSpeed), 1);
    EXPECT_TRUE(IsEnabled(IDC_cmbSpeed));
}

TEST_F(BackupWindowTest, SpeedsAreNotProbedWhileARunNeedsTheWriter) {
    OpenCd({});
    AddItems();
    machine.messageBoxes.shown.clear();
    machine.discWriters.cdDrives[0].disc = BlankDisc(MediaKind::CdR, 700 * Megabyte);
    machine.discWriters.cdDrives[0].speeds = {16};
    whileArchiving = [&] { Cd().RaiseMediaChange(); };
    // As for a disc that comes at the same moment.
    machine.app.space->availableSpace = Currency::FromDouble(700.0 * Megabyte);
    EnableWindow(At(IDC_cmdLancer), TRUE);
    Click(IDC_cmdLancer);
    EXPECT_THAT(Lines(IDC_cmbSpeed), ElementsAre(L"8", L"4", L"2", L"1"));
    EXPECT_FALSE(form->StopWrite());
    Click(IDC_cmdStopWrite);
    EXPECT_TRUE(WaitFor([&] { return Lines(IDC_cmbSpeed).size() == 1; }));
}

TEST_F(BackupWindowTest, AStartThatWasRefusedLeavesOnlyStopWhateverTheDriveTells) {
    OpenCd({});
    machine.discWriters.cdDrives[0].disc = BlankDisc(MediaKind::CdR, 700 * Megabyte);
    whileArchiving = [&] {
        machine.app.space->availableSpace = Currency::FromDouble(700.0 * Megabyte);
        machine.discWriters.startError = FakeDiscError{5, L"No power."};
    };
    EnableWindow(At(IDC_cmdLancer), TRUE);
    Click(IDC_cmdLancer);
    Cd().RaiseMediaChange();
    Cd().RaiseWritersChange();
    EXPECT_TRUE(IsEnabled(IDC_cmdStopWrite));
    for (const int id : {IDC_cmbGraveur, IDC_cmdPrecedent, IDC_cmdQuitter}) EXPECT_FALSE(IsEnabled(id)) << id;
    Click(IDC_cmdStopWrite);
    EXPECT_TRUE(IsEnabled(IDC_cmdQuitter));
}

TEST_F(BackupWindowTest, ADvdWriterThatTellsNoSpeedHasAnEmptyList) {
    AddDvdWriter(BlankDisc(MediaKind::DvdPlusR, 4000 * Megabyte));
    machine.discWriters.dvdDrives[0].speeds = {0};
    Open(Medium::Dvd);
    EXPECT_THAT(Lines(IDC_cmbSpeed), IsEmpty());
}

TEST_F(BackupWindowTest, ALabelThatTheSystemRefusesIsShownAsItWillBeWritten) {
    OpenCd();
    machine.discWriters.acceptedLabel = L"ete_2026";
    Type(IDC_txtDiscLabel, L"été 2026");
    SendMessageW(form->Handle(), WM_COMMAND, MAKEWPARAM(IDC_txtDiscLabel, EN_KILLFOCUS),
                 reinterpret_cast<LPARAM>(At(IDC_txtDiscLabel)));
    EXPECT_EQ(Text(IDC_txtDiscLabel), L"ete_2026");
}

TEST_F(BackupWindowTest, AutoPlayIsLeftAloneForDisks) {
    const UINT question = RegisterWindowMessageW(L"QueryCancelAutoPlay");
    OpenRemovable();
    EXPECT_EQ(SendMessageW(form->Handle(), question, 0, 0), FALSE);
}

TEST_F(BackupWindowTest, AWriterThatComesIsListedAndOneThatGoesGivesWayToTheFirst) {
    OpenCd();
    machine.discWriters.cdDrives.push_back({L"OTHER (I:)", BlankDisc(MediaKind::CdRw, 100 * Megabyte)});
    Cd().RaiseWritersChange();
    EXPECT_THAT(Lines(IDC_cmbGraveur), ElementsAre(L"CD (G:)", L"OTHER (I:)"));
    EXPECT_EQ(Selected(IDC_cmbGraveur), 0);
    Choose(IDC_cmbGraveur, 1);
    machine.discWriters.cdDrives.pop_back();
    Cd().RaiseWritersChange();
    EXPECT_THAT(Lines(IDC_cmbGraveur), ElementsAre(L"CD (G:)"));
    EXPECT_EQ(Cd().CurrentWriter(), 0);
    EXPECT_EQ(PanelText(0), L"CD-R");
}

TEST_F(BackupWindowTest, AWindowThatFollowsBackOrTheCrossStartsFromAnEmptyFigure) {
    OpenCd();
    for (const bool isBack : {true, false}) {
        AddItems();
        ASSERT_GT(machine.app.space->requiredSpace, Currency());
        if (isBack)
            Click(IDC_cmdPrecedent);
        else
            Close();
        ASSERT_FALSE(form->IsLoaded());
        Open(Medium::Cd);
        EXPECT_EQ(machine.app.space->requiredSpace, Currency());
        EXPECT_EQ(Text(IDC_lblEspaceRequis), L"Espace requis pour sauvegarde :   0,000 Megs");
        EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
    }
}

TEST_F(BackupWindowTest, ADoubleLayerDiscBringsNoBoxOfItsKindAndStartsNothingThatIsSelected) {
    AddDvdWriter(BlankDisc(MediaKind::DvdPlusRDl, 8500 * Megabyte));
    Open(Medium::Dvd);
    EXPECT_THAT(machine.messageBoxes.shown, IsEmpty());
    EXPECT_EQ(PanelText(0), L"DVD+R DL");
    AddItems();
    EXPECT_GT(machine.app.space->requiredSpace, Currency());
    for (const auto& box : machine.messageBoxes.shown) EXPECT_EQ(box.text, Resource(TextId::MediumTooSmall));
    EXPECT_FALSE(IsEnabled(IDC_cmdLancer));
}

TEST_F(BackupWindowTest, ACopyShowsTheWholeAtHalfWithoutItsSingleSteps) {
    OpenRemovable();
    machine.files.AddFolder(L"E:");
    AddItems();
    int looks = 0;
    machine.messageBoxes.whileShown = [&](const auto&) {
        ++looks;
        EXPECT_FALSE(IsVisible(IDC_pbProgress));
        EXPECT_FALSE(IsVisible(IDC_lblStatutGraveur));
        EXPECT_TRUE(IsVisible(IDC_pbProgressTotal));
        EXPECT_EQ(Progress(IDC_pbProgressTotal), 100);
        EXPECT_TRUE(IsVisible(IDC_fProgression));
    };
    Click(IDC_cmdLancer);
    EXPECT_EQ(looks, 1);
}

} // namespace
