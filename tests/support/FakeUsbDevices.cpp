#include "support/FakeUsbDevices.h"

namespace {

constexpr std::uint32_t StoragePropertyQuery = 0x2D1400; // IOCTL_STORAGE_QUERY_PROPERTY

class FakeStorageDevice : public StorageDevice {
  public:
    FakeStorageDevice(std::optional<std::uint32_t> busType, std::vector<std::uint32_t>& controlCodes)
        : busType_(busType), controlCodes_(controlCodes) {}
    std::optional<std::uint32_t> BusType(std::uint32_t controlCode) override {
        controlCodes_.push_back(controlCode);
        return controlCode == StoragePropertyQuery ? busType_ : std::nullopt;
    }

  private:
    std::optional<std::uint32_t> busType_;
    std::vector<std::uint32_t>& controlCodes_;
};

} // namespace

std::unique_ptr<StorageDevice> FakeUsbDevices::Open(const std::wstring& drive) {
    opened.push_back(drive);
    const auto found = busTypes.find(drive);
    if (found == busTypes.end()) return nullptr;
    return std::make_unique<FakeStorageDevice>(found->second, controlCodes);
}

std::vector<std::wstring> FakeUsbDevices::ServiceNames() const {
    ++enumerations;
    return serviceNames;
}
