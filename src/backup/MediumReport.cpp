#include "backup/MediumReport.h"

#include "backup/DiscRules.h"
#include "core/NumberFormat.h"
#include "discutil/CdSpace.h"
#include "platform/Drives.h"
#include "platform/Locale.h"
#include "resources/TextId.h"

namespace {

constexpr std::uint64_t MegabyteBytes = 1048576;

std::wstring Amount(const Application& app, double bytes, const wchar_t* picture, const std::wstring& unit) {
    return FormatNumber(Megabytes(bytes), picture, app.machine.locale->DecimalSeparator()) + L" " + unit;
}

std::wstring Amount(const Application& app, double bytes) {
    return Amount(app, bytes, MegabytePicture, app.Text(TextId::BackupUnit));
}

void ReportCdSpace(const Application& app, const DiscWriter& writer, MediumReport& report) {
    if (!report.disc.flDiscWritable) return;
    report[Panel::UsedSpace] = Amount(app, static_cast<double>(writer.UsedBytes()), L"000.00", L"MB");
    report[Panel::TotalSpace] = Amount(app, static_cast<double>(writer.TotalBytes()), MegabytePicture, L"MB");
    report.available = Currency::FromDouble(static_cast<double>(CdFreeMegabytes(writer.FreeBytes()) * MegabyteBytes));
}

void ReportDvdSpace(const Application& app, const DiscWriter& writer, MediumReport& report) {
    report[Panel::UsedSpace] = Amount(app, static_cast<double>(writer.UsedBytes()));
    report[Panel::TotalSpace] = Amount(app, static_cast<double>(writer.TotalBytes()));
    const DiscFacts& disc = report.disc;
    if (disc.isDvdReady && disc.kind >= MediaKind::DvdRom && disc.kind <= MediaKind::DvdRam)
        report.available = Currency::FromDouble(static_cast<double>(writer.FreeBytes()));
}

/// The text of the disc's state; None for a state without one.
TextId StatusText(DiscFamily family, DiscStatus status, std::uint64_t usedBytes) {
    switch (status) {
    case DiscStatus::Blank:
        return TextId::DiscBlank;
    case DiscStatus::Open:
        return ByFamily(family, false, usedBytes == 0) ? TextId::DiscBlank : TextId::DiscOpen;
    case DiscStatus::Closed:
        return TextId::DiscClosed;
    case DiscStatus::Unknown:
        return TextId::DiscUnknown;
    }
    return TextId::None;
}

} // namespace

MediumReport ReportOnDisc(const Application& app, DiscFamily family, const DiscWriter* writer) {
    MediumReport report;
    DiscFacts& disc = report.disc;
    if (writer != nullptr) disc.presence = writer->Presence();
    if (disc.flNoDisc()) {
        report[Panel::Type] = app.Text(TextId::NoDisc);
        return report;
    }
    if (disc.flMediaUnrecognized()) {
        report[Panel::Type] = app.Text(TextId::UnrecognizedDisc);
        return report;
    }
    disc.isBusy = writer->IsBusy();
    if (disc.presence == DiscPresence::NotAnswering) {
        report[Panel::Type] = app.Text(TextId::WriterBusy);
        report[Panel::Status] = app.Text(StatusText(family, DiscStatus::Unknown, 0));
        return report;
    }
    disc.kind = writer->Kind();
    disc.status = writer->Status();
    disc.isDvdReady = writer->IsDvdReady();
    disc.flDiscWritable = IsKindWritable(family, disc.kind, writer->IsWritable());
    disc.flDiscErasable = !disc.isBusy && IsKindErasable(family, disc.kind);
    report[Panel::Type] = KindName(app, disc.kind);
    ByFamily(family, ReportCdSpace, ReportDvdSpace)(app, *writer, report);
    const TextId text = disc.isBusy ? TextId::WriterBusy : StatusText(family, disc.status, writer->UsedBytes());
    if (text != TextId::None) report[Panel::Status] = app.Text(text);
    if (disc.status == DiscStatus::Unknown) report.available = Currency();
    return report;
}

MediumReport ReportOnDisk(const Application& app, Medium medium, const std::wstring& root) {
    MediumReport report;
    report[Panel::Type] = app.Text(Describe(medium).labelId);
    if (!app.machine.drives->Exists(root)) {
        report[Panel::Status] = app.Text(TextId::MediumUnavailable);
        return report;
    }
    const DriveSpace space = app.machine.drives->Space(root);
    report[Panel::Status] = app.Text(TextId::MediumReady);
    report[Panel::UsedSpace] = Amount(app, space.freeBytes);
    report[Panel::TotalSpace] = Amount(app, space.totalBytes);
    report.available = Currency::FromDouble(space.freeBytes);
    return report;
}
