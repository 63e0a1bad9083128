#include "discutil/DiscInformation.h"

#include "core/NumberFormat.h"
#include "discutil/CdSpace.h"
#include "platform/Drives.h"
#include "platform/Locale.h"
#include "resources/TextId.h"

#include <cmath>

namespace {

/// What a DVD is taken to hold, below what is printed on it.
constexpr double DvdMegabytes = 4300;

std::wstring Amount(const Application& app, double megabytes) {
    return FormatNumber(megabytes, MegabytePicture, app.machine.locale->DecimalSeparator()) + L" " +
           app.Text(TextId::DiscUnit);
}

void ApplyStatus(const Application& app, DiscStatus status, DiscInformation& information) {
    // A point in both languages, unlike the figures that are measured.
    const std::wstring nothing = L"0.000 " + app.Text(TextId::DiscUnit);
    switch (status) {
    case DiscStatus::Blank:
        information.status = app.Text(TextId::DiscBlank);
        information.used = nothing;
        break;
    case DiscStatus::Open:
        information.status = app.Text(TextId::DiscOpen);
        break;
    case DiscStatus::Closed:
        information.status = app.Text(TextId::DiscClosed);
        break;
    case DiscStatus::Unknown:
        information.status = app.Text(TextId::DiscUnknown);
        information.used = nothing;
        information.estimate = nothing;
        break;
    }
}

} // namespace

DiscInformation InformationOnDisc(const Application& app, DiscFamily family, const std::wstring& kindText,
                                  const DiscWriter& writer) {
    DiscInformation information;
    const double usedMegabytes = Megabytes(static_cast<double>(writer.UsedBytes()));
    information.type = kindText;
    information.used = Amount(app, usedMegabytes);
    const auto cdMegabytes = static_cast<double>(CdFreeMegabytes(writer.FreeBytes()));
    information.estimate = Amount(app, ByFamily(family, cdMegabytes, DvdMegabytes - usedMegabytes));
    ApplyStatus(app, writer.Status(), information);
    return information;
}

void ReadInformationOnDisk(const Application& app, Medium medium, const std::wstring& root,
                           const std::wstring& requiredText, DiscInformation& information) {
    information.type = app.Text(Describe(medium).labelId);
    information.estimate = requiredText;
    if (!app.machine.drives->Exists(root)) {
        information.status = app.Text(TextId::MediumUnavailable);
        information.used = L"";
        return;
    }
    information.status = app.Text(TextId::MediumReady);
    const DriveSpace space = app.machine.drives->Space(root);
    information.used = std::to_wstring(std::llrint(Megabytes(space.totalBytes - space.freeBytes)));
}
