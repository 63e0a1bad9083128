#include "backup/DriveEntries.h"
#include "backup/SelectionWatch.h"
#include "backup/SpaceFigures.h"
#include "backup/StartCondition.h"
#include "core/LanguageValues.h"
#include "core/SpaceValues.h"
#include "core/StartUpValues.h"
#include "resources/TextId.h"
#include "support/FakeBackupView.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

#include <map>

namespace {

Currency Bytes(double bytes) {
    return Currency::FromDouble(bytes);
}

Spaces Roomy(double required = 100) {
    return {Bytes(required), Bytes(1000), 1000};
}

DiscFacts ReadyDisc(MediaKind kind) {
    DiscFacts disc;
    disc.presence = DiscPresence::Ready;
    disc.kind = kind;
    disc.status = DiscStatus::Blank;
    disc.isDvdReady = true;
    disc.flDiscWritable = true;
    return disc;
}

TEST(StartButton, NeedsAWritableCdOfCodeOneOrTwo) {
    for (int code = 0; code <= 10; ++code) {
        EXPECT_EQ(CanStartBackup(Medium::Cd, ReadyDisc(static_cast<MediaKind>(code)), Roomy()), code == 1 || code == 2)
            << code;
    }
}

TEST(StartButton, NeedsADvdOfCodeThreeToEight) {
    for (int code = 0; code <= 10; ++code) {
        EXPECT_EQ(CanStartBackup(Medium::Dvd, ReadyDisc(static_cast<MediaKind>(code)), Roomy()), code >= 3 && code <= 8)
            << code;
    }
}

TEST(StartButton, NeedsEachConditionOfACd) {
    DiscFacts disc = ReadyDisc(MediaKind::CdR);
    disc.presence = DiscPresence::None;
    EXPECT_FALSE(CanStartBackup(Medium::Cd, disc, Roomy()));
    disc.presence = DiscPresence::Unrecognized;
    EXPECT_FALSE(CanStartBackup(Medium::Cd, disc, Roomy()));
    disc = ReadyDisc(MediaKind::CdR);
    disc.status = DiscStatus::Open;
    EXPECT_TRUE(CanStartBackup(Medium::Cd, disc, Roomy()));
    disc.status = DiscStatus::Closed;
    EXPECT_FALSE(CanStartBackup(Medium::Cd, disc, Roomy()));
    disc.status = DiscStatus::Unknown;
    EXPECT_FALSE(CanStartBackup(Medium::Cd, disc, Roomy()));
    disc = ReadyDisc(MediaKind::CdR);
    disc.flDiscWritable = false;
    EXPECT_FALSE(CanStartBackup(Medium::Cd, disc, Roomy()));
    disc = ReadyDisc(MediaKind::CdR);
    disc.isDvdReady = false;
    EXPECT_TRUE(CanStartBackup(Medium::Cd, disc, Roomy()));
}

TEST(StartButton, NeedsAReadyWritableDvdWhateverItsStatus) {
    DiscFacts disc = ReadyDisc(MediaKind::DvdPlusR);
    disc.status = DiscStatus::Closed;
    EXPECT_TRUE(CanStartBackup(Medium::Dvd, disc, Roomy()));
    disc.isDvdReady = false;
    EXPECT_FALSE(CanStartBackup(Medium::Dvd, disc, Roomy()));
    disc = ReadyDisc(MediaKind::DvdPlusR);
    disc.flDiscWritable = false;
    EXPECT_FALSE(CanStartBackup(Medium::Dvd, disc, Roomy()));
    disc = ReadyDisc(MediaKind::DvdPlusR);
    disc.isBusy = true;
    EXPECT_FALSE(CanStartBackup(Medium::Dvd, disc, Roomy()));
}

TEST(StartButton, NeedsSomethingSelectedThatStaysBelowBothSpaces) {
    for (const Medium medium : AllMedia) {
        const DiscFacts disc = ReadyDisc(medium == Medium::Dvd ? MediaKind::DvdMinusR : MediaKind::CdRw);
        EXPECT_FALSE(CanStartBackup(medium, disc, Roomy(0)));
        EXPECT_TRUE(CanStartBackup(medium, disc, Roomy(999.9999)));
        EXPECT_FALSE(CanStartBackup(medium, disc, Roomy(1000)));
        EXPECT_FALSE(CanStartBackup(medium, disc, {Bytes(100), Bytes(100), 1000}));
        EXPECT_FALSE(CanStartBackup(medium, disc, {Bytes(100), Bytes(1000), 100}));
    }
}

TEST(StartButton, AFigureBelowZeroStartsUsbMediaOnly) {
    EXPECT_TRUE(CanStartBackup(Medium::RemovableDisk, {}, Roomy(-1)));
    EXPECT_TRUE(CanStartBackup(Medium::ExternalDisk, {}, Roomy(-1)));
    EXPECT_FALSE(CanStartBackup(Medium::Cd, ReadyDisc(MediaKind::CdR), Roomy(-1)));
    EXPECT_FALSE(CanStartBackup(Medium::Dvd, ReadyDisc(MediaKind::DvdPlusR), Roomy(-1)));
}

TEST(SpaceFigure, IsCaptionMegabytesAndUnit) {
    FakeMachine machine;
    EXPECT_EQ(SpaceFigure(machine.app, TextId::RequiredSpace, 1234.5 * 1048576),
              L"Espace requis pour sauvegarde :  1 234,500 Megs");
    machine.app.language->lngLangue = 10000;
    machine.locale.decimalSeparator = L".";
    EXPECT_EQ(SpaceFigure(machine.app, TextId::AvailableSpace, 0), L"Available space on medium :   0.000 Mo");
}

TEST(FitCheck, AnArchiveExactlyAsLargeAsTheAvailableSpacePasses) {
    EXPECT_TRUE(FitsMedium(734003200, Bytes(734003200)));
    EXPECT_FALSE(FitsMedium(734003201, Bytes(734003200)));
    EXPECT_FALSE(FitsMedium(734003201, Bytes(734003200.9999)));
    EXPECT_TRUE(FitsMedium(3000000000, Bytes(3000000000)));
}

TEST(DriveEntries, CarryTheDriveInTheirFirstFourCharacters) {
    EXPECT_EQ(DriveEntry(L"E:\\", L"Disque amovible"), L"(E:\\) Disque amovible");
    EXPECT_EQ(DrivePart(L"(E:\\) Disque amovible"), L"E:\\");
    EXPECT_EQ(DrivePart(L""), L"");
}

TEST(DriveEntries, TheFirstIsSelectedUnlessAnotherIsThePreselectedDrive) {
    const std::vector<std::wstring> entries{L"(E:\\) x", L"(F:\\) x"};
    EXPECT_EQ(EntryToSelect({}, L"E:\\"), -1);
    EXPECT_EQ(EntryToSelect(entries, L""), 0);
    EXPECT_EQ(EntryToSelect(entries, L"F:\\"), 1);
    EXPECT_EQ(EntryToSelect(entries, L"Z:\\"), 0);
}

class SelectionWatchTest : public testing::Test {
  protected:
    void SetUp() override {
        machine.app.space->availableSpace = Bytes(1000);
        machine.app.startUp->dblEspaceDisponible = 1000;
        sizes[L"a"] = 105;
        sizes[L"b"] = 210;
    }
    std::vector<std::wstring> Messages() const {
        std::vector<std::wstring> texts;
        for (const auto& shown : machine.messageBoxes.shown) {
            EXPECT_EQ(shown.title, machine.app.Text(TextId::CapacityReachedTitle));
            EXPECT_EQ(shown.style, box::Exclamation);
            texts.push_back(shown.text);
        }
        return texts;
    }

    FakeMachine machine;
    FakeBackupView view;
    std::map<std::wstring, double> sizes;
    SelectionWatch watch{machine.app, view, [this](const std::wstring& path) { return Bytes(sizes.at(path)); }};
};

TEST_F(SelectionWatchTest, AnItemAddedAndRemovedLeavesTheRequiredSpaceWhereItWas) {
    watch.OnAddFile(L"a");
    watch.OnAddFile(L"b");
    EXPECT_EQ(machine.app.space->requiredSpace, Bytes(315));
    watch.OnRemoveFile(L"b");
    EXPECT_EQ(machine.app.space->requiredSpace, Bytes(105));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
}

TEST_F(SelectionWatchTest, AFolderThatChangedBeforeItsRemovalLeavesARemainder) {
    watch.OnAddFile(L"a");
    sizes[L"a"] = 100;
    watch.OnRemoveFile(L"a");
    EXPECT_EQ(machine.app.space->requiredSpace, Bytes(5));
}

TEST_F(SelectionWatchTest, AnAddRefreshesTheFiguresThenTheStartButton) {
    watch.OnAddFile(L"a");
    watch.OnShowChanges();
    EXPECT_THAT(view.calls, testing::ElementsAre(L"spaces", L"start button"));
}

TEST_F(SelectionWatchTest, ManyAddsRefreshTheFiguresOnce) {
    watch.OnAddFile(L"a");
    watch.OnAddFile(L"b");
    EXPECT_TRUE(view.calls.empty());
    watch.OnShowChanges();
    watch.OnShowChanges();
    EXPECT_THAT(view.calls, testing::ElementsAre(L"spaces", L"start button"));
}

TEST_F(SelectionWatchTest, AMessageComesOverFiguresThatAreRight) {
    machine.app.space->availableSpace = Bytes(105);
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        EXPECT_THAT(view.calls, testing::ElementsAre(L"spaces", L"start button"));
    };
    watch.OnAddFile(L"a");
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

TEST_F(SelectionWatchTest, ReachingTheAvailableSpaceShowsMessage147OnceAndNoWorkSpaceCheck) {
    machine.app.startUp->dblEspaceDisponible = 50;
    machine.app.space->availableSpace = Bytes(105);
    watch.OnAddFile(L"a");
    EXPECT_THAT(Messages(), testing::ElementsAre(machine.app.Text(TextId::MediumTooSmall)));
}

TEST_F(SelectionWatchTest, ReachingTheWorkSpaceOnAnAddShowsMessage166) {
    machine.app.startUp->dblEspaceDisponible = 105;
    watch.OnAddFile(L"a");
    EXPECT_THAT(Messages(), testing::ElementsAre(machine.app.Text(TextId::BackupWorkSpaceTooSmall)));
    EXPECT_FALSE(view.isWorkSpaceMarked);
    EXPECT_FALSE(CanStartBackup(Medium::RemovableDisk, {}, SpacesOf(machine.app)));
}

TEST_F(SelectionWatchTest, ARemovalThatStillReachesTheWorkSpaceMarksItRed) {
    machine.app.space->requiredSpace = Bytes(500);
    machine.app.startUp->dblEspaceDisponible = 395;
    watch.OnRemoveFile(L"a");
    EXPECT_THAT(Messages(), testing::ElementsAre(machine.app.Text(TextId::BackupWorkSpaceTooSmall)));
    EXPECT_TRUE(view.isWorkSpaceMarked);
    watch.OnRemoveFile(L"b");
    EXPECT_FALSE(view.isWorkSpaceMarked);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(view.calls, testing::ElementsAre(L"required", L"start button", L"required", L"start button"));
}

TEST_F(SelectionWatchTest, RemovingEverythingSetsTheRequiredSpaceToZero) {
    watch.OnAddFile(L"a");
    watch.OnRemoveAllFile();
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_FALSE(view.isWorkSpaceMarked);
}

TEST_F(SelectionWatchTest, ASetsChangeRefreshesTheFiguresThenTheStartButton) {
    watch.OnRefreshSpace();
    EXPECT_THAT(view.calls, testing::ElementsAre(L"spaces", L"start button"));
}

TEST_F(SelectionWatchTest, AnItemThatCannotBeMeasuredIsReportedAndCountsNothing) {
    SelectionWatch failing(machine.app, view,
                           [](const std::wstring&) -> Currency { throw RuntimeError(ErrorNumber::FileNotFound); });
    failing.OnAddFile(L"a");
    EXPECT_EQ(machine.app.space->requiredSpace, Currency());
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text,
                testing::HasSubstr(L"53 (File not found) dans la procédure ctlSelectionFichiers_OnAddFile, module "
                                   L"frmBackupCD"));
}

} // namespace
