// What a drive and the system's image mastering may answer, of the right type and with any value: what the windows are
// told stays within bounds and free of contradictions.
#include "FuzzInput.h"
#include "Require.h"

#include "backup/MediumReport.h"
#include "backup/StartCondition.h"
#include "backup/WriteSpeeds.h"
#include "discutil/CdSpace.h"
#include "discutil/DiscInformation.h"
#include "platform/discs/DiscLabel.h"
#include "platform/discs/DiscProgress.h"
#include "platform/discs/DiscReading.h"
#include "platform/discs/DiscSpeeds.h"
#include "platform/discs/MasteringCodes.h"
#include "support/FakeMachine.h"

#include <cstddef>
#include <cstdint>

namespace {

constexpr std::uint32_t Results[] = {0,
                                     Mastering::NoMedia,
                                     Mastering::MediaIncompatible,
                                     Mastering::MediaUpsideDown,
                                     Mastering::MediaBecomingReady,
                                     Mastering::MediaBusy,
                                     Mastering::RecorderLocked,
                                     Mastering::AccessDenied,
                                     Mastering::DeviceGone,
                                     0x80004005};

std::uint32_t AnyResult(FuzzInput& input) {
    return input.Bool() ? input.OneOf(Results) : input.Bits<std::uint32_t>();
}

DriveAnswers AnyAnswers(FuzzInput& input) {
    DriveAnswers answers;
    answers.mediaTypeResult = AnyResult(input);
    answers.mediaType = input.Bool() ? static_cast<std::int32_t>(input.Below(20)) : input.Bits<std::int32_t>();
    answers.mediaStateResult = AnyResult(input);
    answers.mediaState = input.Bits<std::int32_t>();
    answers.isHeuristicallyBlank = input.Bool();
    answers.sizesResult = AnyResult(input);
    answers.totalSectors = input.Bits<std::int32_t>();
    answers.freeSectors = input.Bits<std::int32_t>();
    answers.isSupported = input.Bool();
    answers.fileSystems = static_cast<std::int32_t>(input.Below(16));
    return answers;
}

void RequireSoundDisc(const DiscState& disc, const DriveAnswers& answers, std::uint64_t volumeBytes) {
    if (disc.presence == DiscPresence::None || disc.presence == DiscPresence::NotAnswering)
        Require(disc == DiscState{disc.presence});
    Require(disc.usedBytes <= disc.totalBytes);
    if (disc.status == DiscStatus::Blank) Require(disc.usedBytes == 0 || disc.usedBytes == volumeBytes);
    Require(!disc.isDvdReady || disc.isWritable);
    if (!disc.isWritable) return;
    Require(disc.presence == DiscPresence::Ready && answers.isSupported);
    Require((answers.mediaState & Mastering::StateUnwritable) == 0);
    const bool isWithoutUdf = answers.fileSystems != 0 && (answers.fileSystems & Mastering::Udf) == 0;
    if (disc.status == DiscStatus::Open && isWithoutUdf) Require(!NeedsUdf(disc.freeBytes));
}

/// The disc in a drive, through the writer and into the windows' figures.
void RequireSoundWindow(const DiscState& disc, DiscFamily family) {
    FakeMachine machine;
    machine.discWriters.Drives(family).push_back({L"WRITER (G:)",
                                                  {disc.presence, disc.kind, disc.status, disc.isWritable,
                                                   disc.isDvdReady, disc.usedBytes, disc.totalBytes, disc.freeBytes}});
    const auto writer = machine.discWriters.Create(family);
    const MediumReport report = ReportOnDisc(machine.app, family, writer.get());
    Require(report.available >= Currency());
    if (disc.presence != DiscPresence::Ready) Require(!report.disc.flDiscWritable);
    const auto mostBytes =
        static_cast<double>(ByFamily(family, CdFreeMegabytes(disc.freeBytes) * std::uint64_t{1048576}, disc.freeBytes));
    Require(report.available <= Currency::FromDouble(mostBytes));
    const Medium medium = ByFamily(family, Medium::Cd, Medium::Dvd);
    if (CanStartBackup(medium, report.disc, {Currency::FromDouble(1), report.available, 1e9}))
        Require(disc.presence == DiscPresence::Ready && disc.isWritable && report.available > Currency::FromDouble(1));
    Require(InformationOnDisc(machine.app, family, L"kind", *writer).status.has_value());
}

void RequireSoundProgress(FuzzInput& input) {
    DiscProgress told;
    for (std::size_t reports = input.Below(8); reports > 0; --reports) {
        const WriteReport report{static_cast<std::int32_t>(input.Below(10)), input.Bits<std::int32_t>(),
                                 input.Bits<std::int32_t>(), input.Bits<std::int32_t>()};
        const auto progress = WriteProgress(report, told);
        Require(progress.has_value() == (report.action != Mastering::ActionCompleted));
        if (!progress) continue;
        told = *progress;
        Require(told.percent >= 0 && told.percent <= 100);
        Require(told.operation == DiscOperation::Preparing || told.operation == DiscOperation::Writing);
    }
    const auto elapsed = input.Bits<std::int32_t>();
    const auto estimated = input.Bits<std::int32_t>();
    const DiscProgress erase = EraseProgress(elapsed, estimated);
    Require(erase.percent >= 0 && erase.percent <= 99);
    Require(erase.percent < 99 || elapsed >= estimated);
}

void RequireSoundSpeeds(FuzzInput& input, DiscFamily family) {
    std::vector<std::uint32_t> sectors(input.Below(6));
    for (std::uint32_t& speed : sectors) speed = input.Bits<std::uint32_t>();
    const DiscSpeeds speeds(family, sectors);
    const double asked = input.Bits<std::uint16_t>() / 100.0;
    const double nearest = speeds.Nearest(asked);
    Require(nearest > 0 && nearest <= speeds.Fastest() && speeds.Nearest(nearest) == nearest);
    Require(speeds.SectorsPerSecond(asked) == speeds.SectorsPerSecond(nearest));
}

void RequireSoundLabel(const std::wstring& label) {
    const std::wstring accepted = AcceptableDiscLabel(label);
    Require(accepted.size() <= 15 && AcceptableDiscLabel(accepted) == accepted);
    for (const wchar_t c : accepted) Require(c > L' ' && c < 0x7F);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    FuzzInput input(data, sizeBytes);
    const DiscFamily family = input.Bool() ? DiscFamily::Cd : DiscFamily::Dvd;
    const DriveAnswers answers = AnyAnswers(input);
    const std::uint64_t volumeBytes = input.Bool() ? input.Bits<std::uint32_t>() : 0;
    const DiscState disc = DiscBehind(answers, volumeBytes);
    RequireSoundDisc(disc, answers, volumeBytes);
    Require(IsSameDisc(disc, disc));
    RequireSoundWindow(disc, family);
    RequireSoundProgress(input);
    RequireSoundSpeeds(input, family);
    RequireSoundLabel(input.Text(40));
    return 0;
}
