// What the system may answer about drives, volumes and the USB bus: only drives that are there are offered, each in its
// place, and the user is asked once.
#include "FuzzInput.h"
#include "Require.h"

#include "archive/DriveLines.h"
#include "backup/DriveEntries.h"
#include "backup/MediumReport.h"
#include "core/LanguageValues.h"
#include "core/UsbAnswer.h"
#include "discutil/DiscInformation.h"
#include "platform/MessageBoxes.h"
#include "restore/InsertedMedium.h"
#include "shell/DiskDetection.h"
#include "shell/StartUp.h"
#include "support/FakeMachine.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr std::size_t MostDrives = 8;
constexpr std::int16_t Answers[] = {box::AnswerYes, box::AnswerNo, 0, 2};
constexpr double Sizes[] = {0, 1, 4096, 3e9, 1e13, 1.8e19};

void AddDrives(FuzzInput& input, FakeMachine& machine) {
    machine.drives.drives.clear();
    wchar_t letter = L'A';
    for (std::size_t count = input.Below(MostDrives + 1); count > 0 && letter <= L'Z'; --count) {
        letter = static_cast<wchar_t>(letter + input.Below(4));
        if (letter > L'Z') break;
        const std::wstring root = std::wstring(1, letter++) + L":\\";
        const auto type = static_cast<DriveType>(input.Below(8));
        const double total = input.OneOf(Sizes);
        FakeDrives::Drive& drive =
            machine.drives.Add(root, type, std::nullopt, {total * static_cast<double>(input.Below(5)) / 4, total});
        if (input.Bool()) drive.label = input.Text(12);
        drive.canOpenVolume = input.Bool();
        drive.canRead = input.Bool();
        if (input.Bool())
            machine.usb.busTypes[root.substr(0, 2)] =
                input.Bool() ? std::optional<std::uint32_t>(input.Below(12)) : std::nullopt;
        if (input.Bool()) machine.files.AddFile(root + L"_listFich.lst", "C:\\a,32,Zip0001\r\n");
        if (input.Bool()) machine.files.AddSizedFile(root + L"OKRBACKUP.ZIP", input.Bits<std::uint32_t>());
        if (input.Bool()) machine.files.FailWith(root + L"_listFich.lst", ErrorNumber::DeviceIoError);
    }
}

bool IsDrive(const FakeMachine& machine, const std::wstring& root, DriveType type) {
    return machine.drives.Exists(root) && machine.drives.Type(root) == type;
}

void RequireSoundOffers(FakeMachine& machine) {
    const MediumOffer external = DetectExternalDisks(machine.app);
    const MediumOffer removable = DetectRemovableDisks(machine.app);
    for (const MediumOffer* offer : {&external, &removable}) {
        Require(offer->isEnabled == !offer->roots.empty());
        Require(offer->isEnabled == (offer->LabelId() == TextId::Yes));
    }
    for (const std::wstring& root : external.roots) {
        Require(IsDrive(machine, root, DriveType::Fixed));
        Require(machine.usb.busTypes.at(root.substr(0, 2)) == std::optional<std::uint32_t>(7));
    }
    for (const std::wstring& root : removable.roots)
        Require(IsDrive(machine, root, DriveType::Removable) && root[0] != L'A' && root[0] != L'B');
    if (machine.app.usbAnswer->intReponseUSB == box::AnswerNo)
        Require(external.roots.empty() && removable.roots.empty());
    Require(machine.messageBoxes.shown.size() <= 1 || machine.app.usbAnswer->intReponseUSB == 0);
}

void RequireSoundMedium(FakeMachine& machine, const std::wstring& root) {
    const InsertedMedium medium = LookAtMedium(machine.app, root);
    Require(medium.print.root == root && medium.print == medium.print);
    Require(medium.controlFile.empty() || medium.print.content == InsertedMedium::Content::Backup);
    Require(!medium.failure || medium.print.failure == medium.failure->Number());
    for (const Medium disk : {Medium::RemovableDisk, Medium::ExternalDisk}) {
        DiscInformation information;
        try {
            const MediumReport report = ReportOnDisk(machine.app, disk, root);
            Require(report.available >= Currency());
            ReadInformationOnDisk(machine.app, disk, root, L"1 Megs", information);
        } catch (const RuntimeError& error) {
            Require(error.Number() == static_cast<std::int32_t>(ErrorNumber::DiskNotReady) ||
                    error.Number() == static_cast<std::int32_t>(ErrorNumber::Overflow));
        }
    }
}

void RequireSoundLines(FakeMachine& machine) {
    std::vector<std::wstring> entries;
    for (const std::wstring& line : DriveLines(machine.app)) {
        const std::wstring root = RootOfLine(line);
        Require(root.empty() || machine.drives.Exists(root));
        RequireSoundMedium(machine, root);
        entries.push_back(DriveEntry(root, line));
    }
    const int selected = EntryToSelect(entries, L"E:\\");
    Require(selected >= 0 && static_cast<std::size_t>(selected) < entries.size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    FuzzInput input(data, sizeBytes);
    FakeMachine machine;
    machine.operatingSystem.version = {static_cast<std::uint32_t>(input.Below(3)),
                                       static_cast<std::uint32_t>(input.Below(11)), 0};
    machine.app.language->lngLangue = input.Bool() ? 10000 : 0;
    machine.messageBoxes.answers.assign(64, input.OneOf(Answers)); // a box that fails is asked again by every drive
    // Twice, as a click on the main window detects again what start-up has detected.
    for (int round = 0; round < 2; ++round) {
        machine.usb.serviceNames = {input.Text(6), input.Bool() ? L"UsbStor" : L"disk"};
        AddDrives(input, machine);
        RequireSoundOffers(machine);
        RequireSoundLines(machine);
        Require(MeasureWorkDrive(machine.app) >= 0);
    }
    return 0;
}
