#include "backup/DiscRules.h"
#include "backup/MediumReport.h"
#include "backup/SpaceFigures.h"
#include "backup/StartCondition.h"
#include "backup/VolumeLabel.h"
#include "backup/WriteSpeeds.h"
#include "core/LanguageValues.h"
#include "discutil/DiscInformation.h"
#include "discutil/EraseWatchdog.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

constexpr std::uint64_t Megabyte = 1048576;

class DiscTest : public testing::Test {
  protected:
    void SetUp() override {
        machine.discWriters.cdDrives.push_back({L"CD (G:)", {}});
        machine.discWriters.dvdDrives.push_back({L"DVD (H:)", {}});
    }
    FakeDisc& Cd() { return machine.discWriters.cdDrives[0].disc; }
    FakeDisc& Dvd() { return machine.discWriters.dvdDrives[0].disc; }
    MediumReport CdReport() { return ReportOnDisc(machine.app, DiscFamily::Cd, cdWriter.get()); }
    MediumReport DvdReport() { return ReportOnDisc(machine.app, DiscFamily::Dvd, dvdWriter.get()); }
    DiscInformation CdInformation() { return InformationOnDisc(machine.app, DiscFamily::Cd, L"kind", *cdWriter); }
    DiscInformation DiskInformation(Medium medium) {
        DiscInformation information;
        ReadInformationOnDisk(machine.app, medium, L"E:\\", L"required", information);
        return information;
    }
    DiscInformation DvdInformation() { return InformationOnDisc(machine.app, DiscFamily::Dvd, L"kind", *dvdWriter); }
    void SpeakEnglish() {
        machine.app.language->lngLangue = 10000;
        machine.locale.decimalSeparator = L".";
    }

    FakeMachine machine;
    std::unique_ptr<DiscWriter> cdWriter = machine.discWriters.Create(DiscFamily::Cd);
    std::unique_ptr<DiscWriter> dvdWriter = machine.discWriters.Create(DiscFamily::Dvd);
};

TEST_F(DiscTest, EachKindHasItsName) {
    const std::vector<std::wstring> names{L"CD-R/RW", L"CD-R",  L"CD-RW",  L"DVD±R/RW", L"DVD+R",
                                          L"DVD+RW",  L"DVD-R", L"DVD-RW", L"DVD-RAM",  L"DVD+R DL"};
    for (std::size_t code = 0; code < names.size(); ++code) {
        EXPECT_EQ(KindName(machine.app, static_cast<MediaKind>(code)), names[code]);
    }
    EXPECT_EQ(KindName(machine.app, MediaKind::Other), L"");
    EXPECT_EQ(KindName(machine.app, static_cast<MediaKind>(10)), L"");
    SpeakEnglish();
    EXPECT_EQ(KindName(machine.app, MediaKind::CdRom), L"CD-ROM");
    EXPECT_EQ(KindName(machine.app, MediaKind::DvdRom), L"DVD-ROM");
}

TEST_F(DiscTest, WhichCodesCountDiffersFromQuestionToQuestion) {
    for (int code = 0; code <= 10; ++code) {
        const auto kind = static_cast<MediaKind>(code);
        EXPECT_EQ(IsKindWritable(DiscFamily::Cd, kind, true), code == 1 || code == 2) << code;
        EXPECT_EQ(IsKindWritable(DiscFamily::Dvd, kind, true), code >= 4 && code <= 8) << code;
        EXPECT_FALSE(IsKindWritable(DiscFamily::Cd, kind, false)) << code;
        EXPECT_FALSE(IsKindWritable(DiscFamily::Dvd, kind, false)) << code;
        EXPECT_EQ(IsKindOfFamily(DiscFamily::Cd, kind), code == 1 || code == 2) << code;
        EXPECT_EQ(IsKindOfFamily(DiscFamily::Dvd, kind), code >= 4 && code <= 9) << code;
        EXPECT_EQ(IsKindErasable(DiscFamily::Cd, kind), code == 2) << code;
        EXPECT_EQ(IsKindErasable(DiscFamily::Dvd, kind), code == 5 || code == 7) << code;
    }
}

TEST_F(DiscTest, ADoubleLayerDvdPassesTheKindCheckButCannotStart) {
    Dvd() = BlankDisc(MediaKind::DvdPlusRDl, 8500 * Megabyte);
    const MediumReport report = DvdReport();
    EXPECT_TRUE(IsKindOfFamily(DiscFamily::Dvd, report.disc.kind));
    EXPECT_FALSE(report.disc.flDiscWritable);
    EXPECT_EQ(report.available, Currency());
    EXPECT_FALSE(CanStartBackup(Medium::Dvd, report.disc, {Currency::FromDouble(1), Currency::FromDouble(2), 2}));
}

TEST_F(DiscTest, WrongKindTextNamesTheDiscAndTheMediumWanted) {
    EXPECT_EQ(
        WrongKindText(machine.app, Medium::Cd, MediaKind::DvdPlusR),
        L"Vous avez choisi de faire une copie de sécurité sur un CD-R/RW. Le disque inséré est un DVD+R. Veuillez "
        L"insérer un CD-R/RW ou retourner à l'écran précédent afin de modifier votre choix.");
    SpeakEnglish();
    EXPECT_EQ(
        WrongKindText(machine.app, Medium::Dvd, MediaKind::CdRom),
        L"You have chosen to do a backup on a DVD±R/RW. The inserted disk is a CD-ROM. Please insert a DVD±R/RW or "
        L"go back to the previous screen to change your choice.");
}

TEST_F(DiscTest, WithoutADiscOnlyTheTypePanelSpeaks) {
    EXPECT_THAT(CdReport().panels, ElementsAre(L"Aucun disque", L"", L"", L"", L""));
    EXPECT_THAT(ReportOnDisc(machine.app, DiscFamily::Cd, nullptr).panels,
                ElementsAre(L"Aucun disque", L"", L"", L"", L""));
    EXPECT_EQ(CdReport().available, Currency());
    SpeakEnglish();
    EXPECT_THAT(DvdReport().panels, ElementsAre(L"No disk", L"", L"", L"", L""));
}

TEST_F(DiscTest, AnUnrecognisedDiscSaysSo) {
    Cd().presence = DiscPresence::Unrecognized;
    EXPECT_THAT(CdReport().panels, ElementsAre(L"Disque non reconnu", L"", L"", L"", L""));
    SpeakEnglish();
    EXPECT_EQ(CdReport()[Panel::Type], L"Unrecognized disk");
}

TEST_F(DiscTest, ABlankCdShowsZeroUsed) {
    Cd() = BlankDisc(MediaKind::CdR, 650 * Megabyte);
    EXPECT_THAT(CdReport().panels, ElementsAre(L"CD-R", L"Vierge", L"000,00 MB", L"  650,000 MB", L""));
    SpeakEnglish();
    EXPECT_THAT(CdReport().panels, ElementsAre(L"CD-R", L"Blank", L"000.00 MB", L"  650.000 MB", L""));
}

TEST_F(DiscTest, ACdOf800MegabytesOffersExactly700) {
    Cd() = BlankDisc(MediaKind::CdR, 800 * Megabyte);
    EXPECT_EQ(CdReport().available, Currency::FromDouble(734003200));
}

TEST_F(DiscTest, ACdOffersWholeMegabytes) {
    Cd() = BlankDisc(MediaKind::CdRw, 650 * Megabyte + 1048575);
    EXPECT_EQ(CdReport().available, Currency::FromDouble(650.0 * 1048576));
}

TEST_F(DiscTest, ACdThatCannotBeWrittenOffersNothing) {
    Cd() = BlankDisc(MediaKind::CdRom, 700 * Megabyte);
    Cd().status = DiscStatus::Closed;
    const MediumReport report = CdReport();
    EXPECT_THAT(report.panels, ElementsAre(L"CD-R/RW", L"Fermé", L"", L"", L""));
    EXPECT_EQ(report.available, Currency());
}

TEST_F(DiscTest, ADvdOffersWhatIsFreeWithoutACap) {
    Dvd() = BlankDisc(MediaKind::DvdMinusRw, 4482 * Megabyte + 1);
    EXPECT_THAT(DvdReport().panels, ElementsAre(L"DVD-RW", L"Vierge", L"  0,000 Megs", L" 4 482,000 Megs", L""));
    EXPECT_EQ(DvdReport().available, Currency::FromDouble(4482.0 * 1048576 + 1));
    SpeakEnglish();
    EXPECT_EQ(DvdReport()[Panel::TotalSpace], L" 4 482.000 Mo");
}

TEST_F(DiscTest, ADvdOffersNothingUnlessItIsReadyAndOfCodeThreeToEight) {
    for (int code = 0; code <= 10; ++code) {
        Dvd() = BlankDisc(static_cast<MediaKind>(code), 100 * Megabyte);
        Dvd().isDvdReady = true;
        EXPECT_EQ(DvdReport().available > Currency(), code >= 3 && code <= 8) << code;
        Dvd().isDvdReady = false;
        EXPECT_EQ(DvdReport().available, Currency()) << code;
    }
}

TEST_F(DiscTest, StatusCodesHaveTheirTexts) {
    Cd() = BlankDisc(MediaKind::CdR, 700 * Megabyte);
    const wchar_t* french[] = {L"Vierge", L"Ouvert", L"Fermé", L"Inconnu"};
    const wchar_t* english[] = {L"Blank", L"Open", L"Closed", L"Unknown"};
    for (int code = 0; code <= 3; ++code) {
        Cd().status = static_cast<DiscStatus>(code);
        machine.app.language->lngLangue = 0;
        EXPECT_EQ(CdReport()[Panel::Status], french[code]);
        EXPECT_EQ(CdReport().available == Currency(), code == 3);
        machine.app.language->lngLangue = 10000;
        EXPECT_EQ(CdReport()[Panel::Status], english[code]);
    }
}

TEST_F(DiscTest, AnOpenDvdWithNothingWrittenCountsAsBlank) {
    Dvd() = BlankDisc(MediaKind::DvdPlusRw, 100 * Megabyte);
    Dvd().status = DiscStatus::Open;
    EXPECT_EQ(DvdReport()[Panel::Status], L"Vierge");
    Dvd().usedBytes = 1;
    EXPECT_EQ(DvdReport()[Panel::Status], L"Ouvert");
    Cd() = BlankDisc(MediaKind::CdRw, 100 * Megabyte);
    Cd().status = DiscStatus::Open;
    EXPECT_EQ(CdReport()[Panel::Status], L"Ouvert");
}

TEST_F(DiscTest, ADiskShowsItsSpaces) {
    machine.drives.Add(L"E:\\", DriveType::Removable, L"KEY", {512.0 * 1048576, 2048.0 * 1048576});
    const MediumReport report = ReportOnDisk(machine.app, Medium::RemovableDisk, L"E:\\");
    EXPECT_THAT(report.panels, ElementsAre(L"Disque amovible", L"Prêt", L"  512,000 Megs", L" 2 048,000 Megs", L""));
    EXPECT_EQ(report.available, Currency::FromDouble(512.0 * 1048576));
    SpeakEnglish();
    EXPECT_THAT(ReportOnDisk(machine.app, Medium::ExternalDisk, L"E:\\").panels,
                ElementsAre(L"External disk", L"Ready", L"  512.000 Mo", L" 2 048.000 Mo", L""));
}

TEST_F(DiscTest, ADiskThatIsGoneIsNotAvailable) {
    const MediumReport report = ReportOnDisk(machine.app, Medium::RemovableDisk, L"E:\\");
    EXPECT_EQ(report[Panel::Status], L"non disponible");
    EXPECT_EQ(report.available, Currency());
    SpeakEnglish();
    EXPECT_EQ(ReportOnDisk(machine.app, Medium::RemovableDisk, L"E:\\")[Panel::Status], L"Disconnected");
}

std::vector<std::wstring> Texts(const std::vector<WriteSpeed>& speeds) {
    std::vector<std::wstring> texts;
    for (const WriteSpeed& speed : speeds) texts.push_back(speed.text);
    return texts;
}

TEST_F(DiscTest, ACdWriterThatTakesEverySpeedLists64WithTheFastestFirst) {
    machine.discWriters.cdDrives[0].acceptsEverySpeed = true;
    const auto speeds = ProbeCdSpeeds(*cdWriter);
    ASSERT_EQ(speeds.size(), 64u);
    EXPECT_EQ(speeds.front().text, L"64");
    EXPECT_EQ(speeds.back().text, L"1");
    EXPECT_EQ(cdWriter->WriteSpeed(), 1);
}

TEST_F(DiscTest, ACdWriterThatRoundsListsOnlyTheSpeedsItTakesAsAsked) {
    machine.discWriters.cdDrives[0].speeds = {48, 24, 16.5, 8};
    EXPECT_THAT(Texts(ProbeCdSpeeds(*cdWriter)), ElementsAre(L"48", L"24", L"8"));
}

TEST_F(DiscTest, TwoDvdSpeedsThatReadBackTheSameGiveOneEntry) {
    machine.discWriters.dvdDrives[0].speeds = {16, 8, 2.4};
    const auto speeds = ProbeDvdSpeeds(*dvdWriter, L",");
    EXPECT_THAT(Texts(speeds), ElementsAre(L"16,0", L"8,0", L"2,4"));
    EXPECT_EQ(speeds[2].speed, 2.4);
}

TEST_F(DiscTest, DvdSpeedsAreRoundedToTwoDecimalsBeforeOne) {
    machine.discWriters.dvdDrives[0].speeds = {7.3461, 6.3449, 6.35, 6.25};
    EXPECT_THAT(Texts(ProbeDvdSpeeds(*dvdWriter, L".")), ElementsAre(L"7.4", L"6.4", L"6.3", L"6.2"));
}

TEST_F(DiscTest, DvdSpeedsAreAskedForInStepsOfSinglePrecision) {
    machine.discWriters.dvdDrives[0].acceptsEverySpeed = true;
    const auto speeds = ProbeDvdSpeeds(*dvdWriter, L".");
    EXPECT_EQ(speeds.front().text, L"20.0");
    EXPECT_EQ(speeds[1].text, L"19.9");
    float last = 20.0F;
    std::size_t count = 1;
    for (; last - 0.1F >= 0.1F; ++count) last -= 0.1F;
    EXPECT_EQ(speeds.size(), count);
    EXPECT_EQ(dvdWriter->WriteSpeed(), static_cast<double>(last));
}

TEST_F(DiscTest, AWriterWithoutADriveHasNoCdSpeeds) {
    machine.discWriters.cdDrives.clear();
    EXPECT_TRUE(ProbeCdSpeeds(*cdWriter).empty());
}

TEST_F(DiscTest, TheProposedLabelIsTheDateInTheLanguagesOrder) {
    machine.clock.now = {2026, 8, 5, 1, 2, 3};
    EXPECT_EQ(DefaultVolumeLabel(machine.app), L"05 août, 2026");
    machine.app.language->lngLangue = 10000;
    machine.locale.months[7] = L"Aug";
    EXPECT_EQ(DefaultVolumeLabel(machine.app), L"Aug 05, 2026");
}

TEST_F(DiscTest, InformationOnABlankCdSaysNothingIsUsed) {
    Cd() = BlankDisc(MediaKind::CdR, 650 * Megabyte);
    const DiscInformation information = CdInformation();
    EXPECT_EQ(information.type, L"kind");
    EXPECT_EQ(information.status, L"Vierge");
    EXPECT_EQ(information.used, L"0.000 Mo");
    EXPECT_EQ(information.estimate, L"  650,000 Mo");
    SpeakEnglish();
    EXPECT_EQ(CdInformation().used, L"0.000 Mb");
    EXPECT_EQ(CdInformation().status, L"Blank");
}

TEST_F(DiscTest, InformationOnACdWithMoreThan700FreeShows700) {
    Cd() = BlankDisc(MediaKind::CdR, 800 * Megabyte);
    EXPECT_EQ(CdInformation().estimate, L"  700,000 Mo");
}

TEST_F(DiscTest, InformationOnADvdWith1000UsedEstimates3300) {
    Dvd() = BlankDisc(MediaKind::DvdPlusR, 4700 * Megabyte);
    Dvd().status = DiscStatus::Open;
    Dvd().usedBytes = 1000 * Megabyte;
    const DiscInformation information = DvdInformation();
    EXPECT_EQ(information.used, L" 1 000,000 Mo");
    EXPECT_EQ(information.estimate, L" 3 300,000 Mo");
    EXPECT_EQ(information.status, L"Ouvert");
}

TEST_F(DiscTest, InformationOnADiscOfUnknownStatusShowsNoSpace) {
    Cd() = BlankDisc(MediaKind::CdR, 650 * Megabyte);
    Cd().usedBytes = 5 * Megabyte;
    Cd().status = DiscStatus::Unknown;
    EXPECT_EQ(CdInformation().status, L"Inconnu");
    EXPECT_EQ(CdInformation().used, L"0.000 Mo");
    EXPECT_EQ(CdInformation().estimate, L"0.000 Mo");
    Cd().status = DiscStatus::Closed;
    EXPECT_EQ(CdInformation().status, L"Fermé");
    EXPECT_EQ(CdInformation().used, L"  5,000 Mo");
}

TEST_F(DiscTest, InformationOnAStatusWithoutATextLeavesTheStatusAsItWas) {
    Cd() = BlankDisc(MediaKind::CdR, 650 * Megabyte);
    Cd().status = static_cast<DiscStatus>(4);
    EXPECT_FALSE(CdInformation().status.has_value());
}

TEST_F(DiscTest, InformationOnARemovedDiskHasAnEmptyUsedSpace) {
    const DiscInformation information = DiskInformation(Medium::RemovableDisk);
    EXPECT_EQ(information.type, L"Disque amovible");
    EXPECT_EQ(information.estimate, L"required");
    EXPECT_EQ(information.status, L"non disponible");
    EXPECT_EQ(information.used, L"");
}

TEST_F(DiscTest, InformationOnADiskShowsWholeMegabytesUsed) {
    machine.drives.Add(L"E:\\", DriveType::Fixed, L"", {100.0 * 1048576, 300.6 * 1048576});
    SpeakEnglish();
    const DiscInformation information = DiskInformation(Medium::ExternalDisk);
    EXPECT_EQ(information.type, L"External disk");
    EXPECT_EQ(information.status, L"Ready");
    EXPECT_EQ(information.used, L"201");
}

TEST(EraseWatchdog, AWriterThatStopsAt99IsTakenAsFinishedAfterTenCountedUnits) {
    EraseWatchdog watchdog;
    EXPECT_FALSE(watchdog.IsStalled(98, {2026, 3, 14, 10, 20, 0}));
    EXPECT_FALSE(watchdog.IsStalled(99, {2026, 3, 14, 10, 20, 30}));
    EXPECT_FALSE(watchdog.IsStalled(99, {2026, 3, 14, 10, 20, 39}));
    EXPECT_TRUE(watchdog.IsStalled(99, {2026, 3, 14, 10, 20, 40}));
}

TEST(EraseWatchdog, TheEndOfAMinuteEndsTheWaitAtOnce) {
    EraseWatchdog watchdog;
    EXPECT_FALSE(watchdog.IsStalled(99, {2026, 3, 14, 10, 20, 59}));
    EXPECT_TRUE(watchdog.IsStalled(99, {2026, 3, 14, 10, 21, 0}));
}

TEST(EraseWatchdog, OnlyNinetyNinePercentCanStall) {
    EraseWatchdog watchdog;
    EXPECT_FALSE(watchdog.IsStalled(0, {2026, 3, 14, 10, 20, 0}));
    EXPECT_FALSE(watchdog.IsStalled(0, {2027, 3, 14, 10, 20, 0}));
    EXPECT_FALSE(watchdog.IsStalled(98, {2027, 3, 14, 10, 20, 0}));
    EXPECT_FALSE(watchdog.IsStalled(98, {2028, 3, 14, 10, 20, 0}));
}

TEST(EraseWatchdog, StampHasFourteenDigits) {
    EXPECT_EQ(EraseWatchdog::Stamp({2026, 3, 4, 5, 6, 7}), 20260304050607);
}

} // namespace
