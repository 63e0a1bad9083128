#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A drive's storage device, opened for queries; closed by its destructor.
class StorageDevice {
  public:
    virtual ~StorageDevice() = default;
    /// Asks by `controlCode` (the storage property query) for the standard device descriptor and gives its bus type
    /// (7 is USB); nothing when the query fails.
    virtual std::optional<std::uint32_t> BusType(std::uint32_t controlCode) = 0;
};

/// What the program asks about the USB bus.
class UsbDevices {
  public:
    virtual ~UsbDevices() = default;
    /// Opens the device of a drive written "E:"; null when it cannot be opened.
    virtual std::unique_ptr<StorageDevice> Open(const std::wstring& drive) = 0;
    /// The service name of every present device, NULs removed and blanks trimmed; empty when the enumeration fails.
    virtual std::vector<std::wstring> ServiceNames() const = 0;
};
