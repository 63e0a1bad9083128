#include "archive/DriveLines.h"

#include "archive/modGestionRestaure.h"
#include "platform/Drives.h"
#include "resources/TextId.h"
#include "shell/modObtenirUSB.h"

namespace {

constexpr const wchar_t* BeforeLabel = L"  Volume : ";
constexpr const wchar_t* NoDriveLine = L"Aucun lecteur de CD ou de disquette trouvé sur cet ordinateur";

std::optional<Medium> MediumIn(Application& app, const std::wstring& root) {
    switch (app.machine.drives->Type(root)) {
    case DriveType::CdRom:
        return Medium::Cd;
    case DriveType::Removable:
        return Medium::RemovableDisk;
    case DriveType::Fixed:
        if (modObtenirUSB::VérifierDriveUSB(app, root.substr(0, 2))) return Medium::ExternalDisk;
        return std::nullopt;
    case DriveType::Unknown:
    case DriveType::NoRoot:
    case DriveType::Network:
    case DriveType::RamDisk:
        break;
    }
    return std::nullopt;
}

TextId MediumTextOf(const DriveFacts& drive) {
    if (!IsDisc(drive.medium)) return Describe(drive.medium).labelId;
    if (!drive.label) return drive.doesVolumeOpen ? TextId::NoDiscOrBlank : TextId::NoCdOrBlank;
    return drive.doesVolumeOpen ? TextId::CdRomDrive : Describe(drive.medium).labelId;
}

} // namespace

std::vector<DriveFacts> DrivesToRestoreFrom(Application& app) {
    std::vector<DriveFacts> found;
    for (const std::wstring& root : app.machine.drives->Roots()) {
        const auto medium = MediumIn(app, root);
        if (!medium) continue;
        const bool doesVolumeOpen = IsDisc(*medium) && modGestionRestaure::CanOpenDrive(app, root.substr(0, 1));
        found.push_back({root, *medium, doesVolumeOpen, app.machine.drives->VolumeLabel(root)});
    }
    return found;
}

std::wstring DriveLine(const Application& app, const DriveFacts& drive) {
    std::wstring line = drive.root + L" " + app.Text(MediumTextOf(drive));
    if (drive.label) line += BeforeLabel + *drive.label;
    return line;
}

std::vector<std::wstring> DriveLines(Application& app) {
    std::vector<std::wstring> lines;
    for (const DriveFacts& drive : DrivesToRestoreFrom(app)) lines.push_back(DriveLine(app, drive));
    if (lines.empty()) lines.emplace_back(NoDriveLine);
    return lines;
}

bool HasLabel(const std::wstring& driveLine) {
    return driveLine.find(BeforeLabel) != std::wstring::npos;
}

std::wstring RootOfLine(const std::wstring& line) {
    return line.size() > 1 && line[1] == L':' ? line.substr(0, 3) : std::wstring();
}
