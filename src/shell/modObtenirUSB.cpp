#include "shell/modObtenirUSB.h"

#include "core/Languages.h"
#include "core/UsbAnswer.h"
#include "platform/AtScopeEnd.h"
#include "platform/MessageBoxes.h"
#include "platform/OperatingSystem.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/UsbDevices.h"
#include "shell/ErrorReport.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

namespace modObtenirUSB {

namespace {

constexpr std::uint32_t UsbBus = 7;

std::array<std::int32_t, 32> PowersOfTwo() {
    std::array<std::int32_t, 32> powers{};
    std::uint32_t power = 1;
    for (std::int32_t& entry : powers) {
        entry = static_cast<std::int32_t>(power);
        power *= 2;
    }
    return powers;
}

int AskForUsb(Application& app) {
    const LanguageDescription& language = LanguageOf(app);
    return app.machine.messageBoxes->Show(language.usbQuestion, language.usbQuestionTitle, language.usbQuestionBox);
}

/// Whether USB disks may be used at all: there is one, and the user did not decline.
bool IsUsbWanted(Application& app) {
    if (!IsUsbStoragePresent(app)) return false;
    if (app.usbAnswer->blnQuestionUSB == 0) {
        // Messages run while the question is open; it must not be asked again from there.
        app.usbAnswer->blnQuestionUSB = 1;
        const AtScopeEnd unlessAnswered(
            [&] { app.usbAnswer->blnQuestionUSB = app.usbAnswer->intReponseUSB != 0 ? 1 : 0; });
        app.usbAnswer->intReponseUSB = static_cast<std::int16_t>(AskForUsb(app));
    }
    return app.usbAnswer->intReponseUSB == box::AnswerYes;
}

} // namespace

std::int32_t ShiftLeft(std::int32_t value, int bits) {
    static const std::array<std::int32_t, 32> powers = PowersOfTwo();
    if (bits < 0 || bits > 31) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    const auto factor = static_cast<std::uint32_t>(powers[static_cast<std::size_t>(bits)]);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value) * factor);
}

std::int32_t ControlCode(std::int32_t deviceType, std::int32_t function, std::int32_t method, std::int32_t access) {
    return ShiftLeft(deviceType, 16) | ShiftLeft(access, 14) | ShiftLeft(function, 2) | method;
}

bool IsWinVista(const Application& app) {
    return app.machine.operatingSystem->Version().IsVistaOrLater();
}

bool IsUsbStoragePresent(const Application& app) {
    const auto services = app.machine.usb->ServiceNames();
    return std::any_of(services.begin(), services.end(),
                       [](const std::wstring& service) { return UpperCase(service) == L"USBSTOR"; });
}

bool VérifierDriveUSB(Application& app, const std::wstring& lecteur) {
    return Guarded(app, L"VérifierDriveUSB, Module modObtenirUSB", [&] {
        const std::unique_ptr<StorageDevice> device = app.machine.usb->Open(lecteur);
        if (!device) return false;
        const std::int32_t storageQuery = ControlCode(0x2D, 0x500, 0, 0);
        if (IsWinVista(app) && !IsUsbWanted(app)) return false;
        return device->BusType(static_cast<std::uint32_t>(storageQuery)) == std::optional<std::uint32_t>(UsbBus);
    });
}

std::vector<std::wstring> ScanDiskLetter(Application& app, const std::vector<std::wstring>& letters) {
    std::vector<std::wstring> found;
    Guarded(app, L"ScanDiskLetter, Module modObtenirUSB", [&] {
        for (const std::wstring& letter : letters) {
            if (VérifierDriveUSB(app, letter + L":")) found.push_back(letter);
        }
    });
    if (found.empty()) found.emplace_back();
    return found;
}

FolderMeasure FolderSize(const Application& app, const std::wstring& folder, bool areSubfoldersCounted,
                         const std::function<void()>& stillMeasuring) {
    const Files& files = *app.machine.files;
    if (areSubfoldersCounted) return files.Measure(folder, stillMeasuring);
    FolderMeasure measure;
    if (!files.FolderExists(folder)) return measure;
    const std::wstring prefix = folder.ends_with(L"\\") ? folder : folder + L"\\";
    for (const std::wstring& name : files.Contents(folder).files) {
        if (name.starts_with(L".")) continue;
        ++measure.fileCount;
        measure.sizeBytes += files.FileSize(prefix + name);
    }
    return measure;
}

} // namespace modObtenirUSB
