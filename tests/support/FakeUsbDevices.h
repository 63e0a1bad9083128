#pragma once

#include "platform/UsbDevices.h"

#include <map>

/// The USB bus as plain data.
class FakeUsbDevices : public UsbDevices {
  public:
    /// Bus type by drive ("E:"); nothing for a device that opens but fails the query. Others cannot be opened.
    std::map<std::wstring, std::optional<std::uint32_t>> busTypes;
    std::vector<std::wstring> serviceNames;

    std::vector<std::wstring> opened;
    std::vector<std::uint32_t> controlCodes; ///< of every bus query
    mutable int enumerations = 0;

    std::unique_ptr<StorageDevice> Open(const std::wstring& drive) override;
    std::vector<std::wstring> ServiceNames() const override;
};
