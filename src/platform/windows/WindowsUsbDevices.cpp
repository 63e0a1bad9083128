#include "platform/windows/WindowsUsbDevices.h"

#include "platform/Text.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <setupapi.h>

#include <array>
#include <cstring>

namespace {

constexpr DWORD ReadAttributesOnly = 0x80;
// As winioctl.h lays them out: a STORAGE_PROPERTY_QUERY, and BusType in a STORAGE_DEVICE_DESCRIPTOR, behind seven
// 32-bit words. What follows the descriptor's fields is text that is not looked at.
constexpr std::size_t QueryBytes = 12;
constexpr std::size_t DescriptorBytes = 551;
constexpr std::size_t BusTypeAt = 28;

class WindowsStorageDevice : public StorageDevice {
  public:
    explicit WindowsStorageDevice(UniqueFile device) : device_(std::move(device)) {}

    std::optional<std::uint32_t> BusType(std::uint32_t controlCode) override {
        // All zeros is the standard query for the standard device descriptor.
        std::array<std::byte, QueryBytes> query = {};
        std::array<std::byte, DescriptorBytes> descriptor = {};
        DWORD returnedBytes = 0;
        if (!DeviceIoControl(device_.Get(), controlCode, query.data(), query.size(), descriptor.data(),
                             descriptor.size(), &returnedBytes, nullptr)) {
            return std::nullopt;
        }
        std::uint32_t busType = 0;
        std::memcpy(&busType, descriptor.data() + BusTypeAt, sizeof busType);
        return busType;
    }

  private:
    UniqueFile device_;
};

struct DeviceListTraits {
    using Type = HDEVINFO;
    static Type Invalid() { return INVALID_HANDLE_VALUE; }
    static void Close(Type handle) { SetupDiDestroyDeviceInfoList(handle); }
};

std::wstring ServiceNameOf(HDEVINFO devices, SP_DEVINFO_DATA& device) {
    DWORD neededBytes = 0;
    SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_SERVICE, nullptr, nullptr, 0, &neededBytes);
    std::wstring name((neededBytes + sizeof(wchar_t) - 1) / sizeof(wchar_t), L'\0');
    if (name.empty()) return {};
    if (!SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_SERVICE, nullptr,
                                           reinterpret_cast<BYTE*>(name.data()), neededBytes, nullptr)) {
        return {};
    }
    std::erase(name, L'\0');
    name.erase(0, name.find_first_not_of(L' '));
    name.erase(name.find_last_not_of(L' ') + 1);
    return name;
}

} // namespace

std::unique_ptr<StorageDevice> WindowsUsbDevices::Open(const std::wstring& drive) {
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    UniqueFile device(CreateFileA(("\\\\.\\" + ToAnsi(drive)).c_str(), ReadAttributesOnly,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable, OPEN_EXISTING, 0, nullptr));
    if (!device) return nullptr;
    return std::make_unique<WindowsStorageDevice>(std::move(device));
}

std::vector<std::wstring> WindowsUsbDevices::ServiceNames() const {
    std::vector<std::wstring> names;
    const UniqueHandle<DeviceListTraits> devices(
        SetupDiGetClassDevsA(nullptr, nullptr, nullptr, DIGCF_PRESENT | DIGCF_ALLCLASSES));
    if (!devices) return names;
    SP_DEVINFO_DATA device = {};
    device.cbSize = sizeof device;
    for (DWORD index = 0; SetupDiEnumDeviceInfo(devices.Get(), index, &device); ++index) {
        std::wstring name = ServiceNameOf(devices.Get(), device);
        if (!name.empty()) names.push_back(std::move(name));
    }
    return names;
}
