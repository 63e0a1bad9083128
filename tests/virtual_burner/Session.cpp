#include "Session.h"

#include "Drives.h"

#include "platform/discs/MasteringCodes.h"
#include "win32/UniqueHandle.h"

#include <filesystem>
#include <vector>

namespace {

constexpr GUID OwnSessionId = {0x6f1d7ad2, 0x3b52, 0x4a57, {0x9c, 0x0e, 0x2b, 0x54, 0x86, 0x1f, 0x70, 0x12}};

} // namespace

void* Session::OtherThanDispatch(REFIID id) {
    const bool isKnown = id == OwnSessionId || (isRandomWrite && id == InterfaceId<IMultisessionRandomWrite>);
    return isKnown ? static_cast<IDispatch*>(this) : nullptr;
}

ComPointer<IDispatch> Session::In(SAFEARRAY* sessions, std::wstring& driveFolder) {
    LONG first = 0;
    VARIANT element;
    VariantInit(&element);
    ComPointer<IDispatch> session;
    if (!sessions || FAILED(SafeArrayGetElement(sessions, &first, &element))) return session;
    if (element.vt == VT_DISPATCH && element.pdispVal &&
        SUCCEEDED(element.pdispVal->QueryInterface(OwnSessionId, reinterpret_cast<void**>(session.Receive()))))
        driveFolder = static_cast<Session*>(session.Get())->driveFolder_;
    VariantClear(&element);
    return session;
}

HRESULT GiveSessions(const VirtualDrive& drive, SAFEARRAY** value) {
    const bool isOverwriteOnly = VirtualDisc(drive).IsOverwriteOnly();
    // Systems before Windows 7 know of no way to add to such a disc.
    const bool isKnown = !isOverwriteOnly || drive.settings.Text("random write", "yes") == "yes";
    return GiveArray(isKnown ? 1 : 0, value, [&](std::size_t) {
        auto* session = new Session(drive.folder);
        session->isRandomWrite = isOverwriteOnly;
        return Object(session);
    });
}

void StartShowingContent(const std::wstring& discFolder) {
    std::wstring command = L"rundll32.exe \"" + ServerPath() + L"\",ShowContent " + discFolder;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr, nullptr, &startup,
                        &process))
        return;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
}

void EjectDisc(const std::wstring& driveFolder) {
    const std::wstring inside = driveFolder + L"\\disc";
    const std::wstring outside = driveFolder + L"\\ejected";
    std::error_code ignored;
    std::filesystem::remove_all(outside, ignored);
    const ProcessLock lock(SettingsLockName);
    MoveFileExW(inside.c_str(), outside.c_str(), 0);
}

HRESULT RepeatDescriptors(HANDLE image, LONG startSector) {
    constexpr LONG firstDescriptor = 16;
    constexpr DWORD descriptorBytes = 3 * Mastering::SectorBytes;
    std::vector<char> descriptors(descriptorBytes);
    LARGE_INTEGER place{};
    DWORD count = 0;
    place.QuadPart = std::int64_t{startSector + firstDescriptor} * Mastering::SectorBytes;
    bool isDone = SetFilePointerEx(image, place, nullptr, FILE_BEGIN) &&
                  ReadFile(image, descriptors.data(), descriptorBytes, &count, nullptr) && count == descriptorBytes;
    place.QuadPart = std::int64_t{firstDescriptor} * Mastering::SectorBytes;
    isDone = isDone && SetFilePointerEx(image, place, nullptr, FILE_BEGIN) &&
             WriteFile(image, descriptors.data(), descriptorBytes, &count, nullptr);
    return isDone ? S_OK : static_cast<HRESULT>(Mastering::UnexpectedResponse);
}
