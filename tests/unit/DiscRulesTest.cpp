#include "platform/discs/DiscLabel.h"
#include "platform/discs/DiscProgress.h"
#include "platform/discs/DiscReading.h"
#include "platform/discs/DiscSpeeds.h"
#include "platform/discs/MasteringCodes.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <vector>

namespace {

using testing::ElementsAre;

DriveAnswers BlankCdR() {
    DriveAnswers answers;
    answers.mediaType = Mastering::MediaCdR;
    answers.mediaState = Mastering::StateBlank | Mastering::StateAppendable;
    answers.totalSectors = 359845;
    answers.freeSectors = 359845;
    return answers;
}

/// What a window that asks for every speed from `first` down by `step` keeps.
std::vector<double> Probed(const DiscSpeeds& speeds, double first, double step, double last) {
    std::vector<double> kept;
    for (double asked = first; asked >= last - step / 2; asked -= step)
        if (kept.empty() || kept.back() != speeds.Nearest(asked)) kept.push_back(speeds.Nearest(asked));
    return kept;
}

TEST(DiscReading, EveryKindOfDiscHasItsCode) {
    EXPECT_EQ(KindOf(Mastering::MediaCdRom), MediaKind::CdRom);
    EXPECT_EQ(KindOf(Mastering::MediaCdR), MediaKind::CdR);
    EXPECT_EQ(KindOf(Mastering::MediaCdRw), MediaKind::CdRw);
    EXPECT_EQ(KindOf(Mastering::MediaDvdRom), MediaKind::DvdRom);
    EXPECT_EQ(KindOf(Mastering::MediaDvdPlusR), MediaKind::DvdPlusR);
    EXPECT_EQ(KindOf(Mastering::MediaDvdPlusRw), MediaKind::DvdPlusRw);
    EXPECT_EQ(KindOf(Mastering::MediaDvdMinusR), MediaKind::DvdMinusR);
    EXPECT_EQ(KindOf(Mastering::MediaDvdMinusRw), MediaKind::DvdMinusRw);
    EXPECT_EQ(KindOf(Mastering::MediaDvdRam), MediaKind::DvdRam);
    EXPECT_EQ(KindOf(Mastering::MediaDvdPlusRDl), MediaKind::DvdPlusRDl);
    for (std::int32_t other = 0x0B; other <= 0x13; ++other) EXPECT_EQ(KindOf(other), MediaKind::Other) << other;
}

TEST(DiscReading, StatusFollowsTheBitsOfTheState) {
    EXPECT_EQ(StatusOf(0, false), DiscStatus::Unknown);
    EXPECT_EQ(StatusOf(Mastering::StateUnsupported | Mastering::StateBlank, false), DiscStatus::Unknown);
    EXPECT_EQ(StatusOf(Mastering::StateDamaged | Mastering::StateFinalized, false), DiscStatus::Unknown);
    EXPECT_EQ(StatusOf(Mastering::StateFinalized | Mastering::StateAppendable, false), DiscStatus::Closed);
    EXPECT_EQ(StatusOf(Mastering::StateIncompleteSession, false), DiscStatus::Closed);
    EXPECT_EQ(StatusOf(Mastering::StateEraseRequired, false), DiscStatus::Closed);
    EXPECT_EQ(StatusOf(Mastering::StateWriteProtected | Mastering::StateBlank, false), DiscStatus::Closed);
    EXPECT_EQ(StatusOf(Mastering::StateBlank | Mastering::StateAppendable, false), DiscStatus::Blank);
    EXPECT_EQ(StatusOf(Mastering::StateOverwriteOnly, true), DiscStatus::Blank);
    EXPECT_EQ(StatusOf(Mastering::StateOverwriteOnly, false), DiscStatus::Open);
    EXPECT_EQ(StatusOf(Mastering::StateAppendable, false), DiscStatus::Open);
    EXPECT_EQ(StatusOf(Mastering::StateFinalSession, false), DiscStatus::Unknown);
}

TEST(DiscReading, BlankDiscIsAllFree) {
    const DiscState disc = DiscBehind(BlankCdR(), 0);
    EXPECT_EQ(disc.presence, DiscPresence::Ready);
    EXPECT_EQ(disc.kind, MediaKind::CdR);
    EXPECT_EQ(disc.status, DiscStatus::Blank);
    EXPECT_TRUE(disc.isWritable);
    EXPECT_FALSE(disc.isDvdReady);
    EXPECT_EQ(disc.usedBytes, 0u);
    EXPECT_EQ(disc.totalBytes, 736962560u);
    EXPECT_EQ(disc.freeBytes, 736962560u);
}

TEST(DiscReading, OpenDiscHasUsedWhatIsNotFree) {
    DriveAnswers answers = BlankCdR();
    answers.mediaState = Mastering::StateAppendable;
    answers.freeSectors = 300000;
    const DiscState disc = DiscBehind(answers, 0);
    EXPECT_EQ(disc.status, DiscStatus::Open);
    EXPECT_EQ(disc.usedBytes, 59845u * 2048u);
}

TEST(DiscReading, OverwritableDiscHasUsedItsVolume) {
    DriveAnswers answers = BlankCdR();
    answers.mediaType = Mastering::MediaDvdPlusRw;
    answers.mediaState = Mastering::StateOverwriteOnly;
    const DiscState disc = DiscBehind(answers, 5000000);
    EXPECT_EQ(disc.status, DiscStatus::Open);
    EXPECT_TRUE(disc.isDvdReady);
    EXPECT_EQ(disc.usedBytes, 5000000u);
    EXPECT_EQ(disc.freeBytes, disc.totalBytes - 5000000u);
}

TEST(DiscReading, OverwritableDiscWithoutAReadableVolumeIsNotBlank) {
    DriveAnswers answers = BlankCdR();
    answers.mediaType = Mastering::MediaDvdPlusRw;
    answers.mediaState = Mastering::StateOverwriteOnly;
    const DiscState disc = DiscBehind(answers, 0);
    EXPECT_EQ(disc.status, DiscStatus::Open);
    EXPECT_GT(disc.usedBytes, 0u);
    answers.isHeuristicallyBlank = true;
    EXPECT_EQ(DiscBehind(answers, 0).usedBytes, 0u);
}

TEST(DiscReading, DiscThatTheSystemDoesNotWriteToIsNotWritable) {
    DriveAnswers answers = BlankCdR();
    answers.isSupported = false;
    EXPECT_FALSE(DiscBehind(answers, 0).isWritable);
}

TEST(DiscReading, DamagedCdRwCanBeErasedAndADamagedCdRIsUnknown) {
    DriveAnswers answers = BlankCdR();
    answers.mediaState = Mastering::StateDamaged;
    EXPECT_EQ(DiscBehind(answers, 0).status, DiscStatus::Unknown);
    answers.mediaType = Mastering::MediaCdRw;
    EXPECT_EQ(DiscBehind(answers, 0).status, DiscStatus::Closed);
}

TEST(DiscReading, CdRwThatIsNotDamagedOrThatTheSystemCannotReadKeepsItsStatus) {
    DriveAnswers answers = BlankCdR();
    answers.mediaType = Mastering::MediaCdRw;
    EXPECT_EQ(DiscBehind(answers, 0).status, DiscStatus::Blank);
    answers.mediaState = Mastering::StateDamaged | Mastering::StateUnsupported;
    EXPECT_EQ(DiscBehind(answers, 0).status, DiscStatus::Unknown);
}

TEST(DiscReading, WritableDvdOfEveryKindIsReadyAndAnotherDiscIsNot) {
    DriveAnswers answers = BlankCdR();
    for (const std::int32_t type :
         {Mastering::MediaDvdPlusR, Mastering::MediaDvdPlusRw, Mastering::MediaDvdMinusR, Mastering::MediaDvdMinusRw,
          Mastering::MediaDvdRam, Mastering::MediaDvdPlusRDl, Mastering::MediaDvdRom}) {
        answers.mediaType = type;
        EXPECT_TRUE(DiscBehind(answers, 0).isDvdReady) << type;
    }
    for (const std::int32_t type : {Mastering::MediaCdR, Mastering::MediaCdRw, Mastering::MediaCdRom}) {
        answers.mediaType = type;
        EXPECT_FALSE(DiscBehind(answers, 0).isDvdReady) << type;
    }
}

TEST(DiscReading, DiscsAreTheSameByPresenceAndKindAlone) {
    const DiscState disc = DiscBehind(BlankCdR(), 0);
    DiscState other = disc;
    other.freeBytes = 7;
    EXPECT_TRUE(IsSameDisc(disc, other));
    other.kind = MediaKind::CdRw;
    EXPECT_FALSE(IsSameDisc(disc, other));
    other = disc;
    other.presence = DiscPresence::None;
    EXPECT_FALSE(IsSameDisc(disc, other));
}

TEST(DiscReading, OpenDiscWithoutUdfTakesNoFileOfTwoGib) {
    DriveAnswers answers = BlankCdR();
    answers.mediaType = Mastering::MediaDvdPlusR;
    answers.mediaState = Mastering::StateAppendable;
    answers.totalSectors = 2295104;
    answers.freeSectors = 2000000;
    EXPECT_EQ(DiscBehind(answers, 0).freeBytes, 2000000u * 2048ull);
    answers.fileSystems = Mastering::Iso9660 | Mastering::Joliet;
    EXPECT_EQ(DiscBehind(answers, 0).freeBytes, 0x7FFFFFFFu);
    EXPECT_EQ(DiscBehind(answers, 0).usedBytes, 295104u * 2048ull);
    answers.fileSystems = Mastering::Udf;
    EXPECT_EQ(DiscBehind(answers, 0).freeBytes, 2000000u * 2048ull);
}

TEST(DiscReading, OverwritableDiscHasNotUsedMoreThanItHolds) {
    DriveAnswers answers = BlankCdR();
    answers.mediaState = Mastering::StateOverwriteOnly;
    EXPECT_EQ(DiscBehind(answers, 250000000000u).usedBytes, 736962560u);
}

TEST(DiscReading, DiscWithoutSizesIsAsLargeAsItsVolume) {
    DriveAnswers answers = BlankCdR();
    answers.mediaState = Mastering::StateFinalized;
    answers.sizesResult = Mastering::InvalidMediaState;
    const DiscState disc = DiscBehind(answers, 12345);
    EXPECT_EQ(disc.status, DiscStatus::Closed);
    EXPECT_FALSE(disc.isWritable);
    EXPECT_EQ(disc.usedBytes, 12345u);
    EXPECT_EQ(disc.totalBytes, 12345u);
    EXPECT_EQ(disc.freeBytes, 0u);
}

TEST(DiscReading, ClosedDvdIsNotReady) {
    DriveAnswers answers = BlankCdR();
    answers.mediaType = Mastering::MediaDvdMinusR;
    answers.mediaState = Mastering::StateFinalized;
    EXPECT_FALSE(DiscBehind(answers, 0).isDvdReady);
}

TEST(DiscReading, EmptyDriveHasNoDiscHoweverItSaysSo) {
    DriveAnswers failing;
    failing.mediaTypeResult = Mastering::NoMedia;
    EXPECT_EQ(DiscBehind(failing, 99), DiscState());
    DriveAnswers quiet;
    EXPECT_EQ(DiscBehind(quiet, 99), DiscState()) << "no state at all";
    quiet.mediaStateResult = Mastering::NoMedia;
    EXPECT_EQ(DiscBehind(quiet, 99), DiscState());
}

TEST(DiscReading, FailedQuestionIsNoEmptyDrive) {
    for (const std::uint32_t result : {Mastering::MediaBecomingReady, Mastering::MediaFormatInProgress,
                                       Mastering::RecorderLocked, Mastering::AccessDenied, Mastering::CommandTimeout}) {
        DriveAnswers answers;
        answers.mediaTypeResult = result;
        EXPECT_EQ(DiscBehind(answers, 99).presence, DiscPresence::NotAnswering) << std::hex << result;
        answers.mediaTypeResult = 0;
        answers.mediaStateResult = result;
        EXPECT_EQ(DiscBehind(answers, 99).presence, DiscPresence::NotAnswering) << std::hex << result;
    }
}

TEST(DiscReading, DiscThatTheDriveCannotReadIsUnrecognized) {
    DriveAnswers upsideDown;
    upsideDown.mediaTypeResult = Mastering::MediaUpsideDown;
    EXPECT_EQ(DiscBehind(upsideDown, 0).presence, DiscPresence::Unrecognized);
    DriveAnswers foreign;
    foreign.mediaState = Mastering::StateUnsupported;
    foreign.sizesResult = Mastering::InvalidMediaState;
    const DiscState disc = DiscBehind(foreign, 0);
    EXPECT_EQ(disc.presence, DiscPresence::Unrecognized);
    EXPECT_EQ(disc.kind, MediaKind::Other);
    EXPECT_EQ(disc.status, DiscStatus::Unknown);
    EXPECT_FALSE(disc.isWritable);
}

TEST(DiscReading, OnlyAFileOfTwoGibOrMoreNeedsUdf) {
    EXPECT_FALSE(NeedsUdf(0x7FFFFFFF));
    EXPECT_TRUE(NeedsUdf(0x80000000));
    EXPECT_TRUE(NeedsUdf(0x100000001));
}

TEST(DiscSpeeds, ProbingACdWriterFindsWhatItSupports) {
    // 48, 32, 16, 8 and 4 times, the first as a drive that counts in kB/s gives it.
    const DiscSpeeds speeds(DiscFamily::Cd, {300, 3599, 600, 2400, 1200, 600});
    EXPECT_THAT(Probed(speeds, 64, 1, 1), ElementsAre(48, 32, 16, 8, 4));
    EXPECT_EQ(speeds.SectorsPerSecond(48), 3599);
}

TEST(DiscSpeeds, ACdWriterOfEverySpeedSettlesOnEachOne) {
    std::vector<std::uint32_t> all;
    for (std::uint32_t speed = 1; speed <= 64; ++speed) all.push_back(speed * 75);
    const DiscSpeeds speeds(DiscFamily::Cd, all);
    for (double asked = 64; asked >= 1; --asked) EXPECT_EQ(speeds.Nearest(asked), asked);
}

TEST(DiscSpeeds, ProbingADvdWriterFindsTenths) {
    // 16, 8, 4, 2.4 times; 16 times appears twice with different roundings.
    const DiscSpeeds speeds(DiscFamily::Dvd, {10820, 5410, 2705, 1623, 10821});
    EXPECT_THAT(Probed(speeds, 20, 0.1, 0.1), ElementsAre(16, 8, 4, 2.4));
}

TEST(DiscSpeeds, BetweenTwoSpeedsTheSlowerIsTaken) {
    for (const std::vector<std::uint32_t>& given : {std::vector<std::uint32_t>{300, 600}, {600, 300}}) {
        const DiscSpeeds speeds(DiscFamily::Cd, given);
        EXPECT_EQ(speeds.Nearest(6), 4);
        EXPECT_EQ(speeds.Nearest(64), 8);
        EXPECT_EQ(speeds.Fastest(), 8);
    }
}

TEST(DiscSpeeds, ADriveThatNamesNoneHasTheCustomaryOnes) {
    EXPECT_EQ(DiscSpeeds(DiscFamily::Cd).Fastest(), 52);
    EXPECT_EQ(DiscSpeeds(DiscFamily::Dvd).Nearest(2.4), 2.4);
    EXPECT_EQ(DiscSpeeds(DiscFamily::Cd, {0}).Fastest(), 52);
}

TEST(DiscSpeeds, TheCustomaryOnesAreThoseOnDrivesAndDiscs) {
    for (const double speed : {1, 2, 4, 8, 10, 12, 16, 20, 24, 32, 40, 48, 52})
        EXPECT_EQ(DiscSpeeds(DiscFamily::Cd).Nearest(speed), speed);
    for (const double speed : {1.0, 2.0, 2.4, 4.0, 6.0, 8.0, 12.0, 16.0, 18.0, 20.0})
        EXPECT_EQ(DiscSpeeds(DiscFamily::Dvd).Nearest(speed), speed);
}

TEST(DiscLabel, LettersLoseTheirAccentsAndSignsOfNamesStay) {
    EXPECT_EQ(AcceptableDiscLabel(L"\u00C0\u00D6\u00D8\u00DD"), L"AOOY");
    EXPECT_EQ(AcceptableDiscLabel(L"\u00E0\u00F6\u00F8\u00FF"), L"aooy");
    EXPECT_EQ(AcceptableDiscLabel(L"\u0152\u0153"), L"Oo");
    EXPECT_EQ(AcceptableDiscLabel(L"AZaz09._"), L"AZaz09._");
    EXPECT_EQ(AcceptableDiscLabel(L"a@b[c`d{e/f:g"), L"a_b_c_d_e_f_g");
    EXPECT_EQ(AcceptableDiscLabel(L"a\u00D7b\u00BFc\u0100"), L"a_b_c");
}

TEST(DiscLabel, DefaultDatesBecomeAcceptable) {
    EXPECT_EQ(AcceptableDiscLabel(L"21 nov., 2026"), L"21_nov._2026");
    EXPECT_EQ(AcceptableDiscLabel(L"Nov 21, 2026"), L"Nov_21_2026");
    EXPECT_EQ(AcceptableDiscLabel(L"21 f\u00e9vr., 2026"), L"21_fevr._2026");
    EXPECT_EQ(AcceptableDiscLabel(L"01 ao\u00fbt, 2026"), L"01_aout_2026");
}

TEST(DiscLabel, NoLabelIsLongerThanFifteen) {
    EXPECT_EQ(AcceptableDiscLabel(L"Sauvegarde de la comptabilit\u00e9"), L"Sauvegarde_de_l");
}

TEST(DiscLabel, NothingAcceptableGivesNothing) {
    EXPECT_EQ(AcceptableDiscLabel(L""), L"");
    EXPECT_EQ(AcceptableDiscLabel(L"\u4e2d\u6587 *?"), L"");
}

TEST(DiscProgress, WriteGoesFromPreparingThroughItsStages) {
    const DiscProgress start;
    for (std::int32_t action = 0; action <= 3; ++action)
        EXPECT_EQ(WriteProgress({action, 0, 0, 0}, start)->operation, DiscOperation::Preparing) << action;
    EXPECT_EQ(WriteProgress({4, 1000, 500, 1000}, start),
              (DiscProgress{DiscOperation::Writing, WritingStage::FillingBuffer, 0}));
    const DiscProgress half{DiscOperation::Writing, WritingStage::WritingTrack, 50};
    EXPECT_EQ(WriteProgress({4, 1000, 500, 1250}, start), half);
    EXPECT_EQ(WriteProgress({5, 0, 0, 0}, half),
              (DiscProgress{DiscOperation::Writing, WritingStage::ClosingTrack, 50}));
    EXPECT_EQ(WriteProgress({7, 0, 0, 0}, half)->stage, WritingStage::ClosingTrack);
    EXPECT_FALSE(WriteProgress({6, 0, 0, 0}, half));
}

TEST(DiscProgress, WritePercentStaysWithinBounds) {
    const DiscProgress start;
    EXPECT_EQ(WriteProgress({4, -150, 0, 10}, start)->percent, 0);
    EXPECT_EQ(WriteProgress({4, 0, 100, 500}, start)->percent, 100);
    EXPECT_EQ(WriteProgress({4, 100, 100, 0}, start)->percent, 0);
    EXPECT_EQ(WriteProgress({4, 0, 2000000000, 1000000000}, start)->percent, 50);
    EXPECT_EQ(WriteProgress({4, 0, 1000, 999}, start)->percent, 99);
}

TEST(DiscProgress, EraseReachesNinetyNineOnlyPastItsEstimate) {
    EXPECT_EQ(EraseProgress(0, 60).percent, 0);
    EXPECT_EQ(EraseProgress(30, 60).percent, 50);
    EXPECT_EQ(EraseProgress(599, 600).percent, 98);
    EXPECT_EQ(EraseProgress(600, 600).percent, 99);
    EXPECT_EQ(EraseProgress(900, 600).percent, 99);
    EXPECT_EQ(EraseProgress(1, 1).percent, 99);
    EXPECT_EQ(EraseProgress(10, 0).percent, 0);
    EXPECT_EQ(EraseProgress(1, 2).operation, DiscOperation::EraseInProgress);
}

} // namespace
