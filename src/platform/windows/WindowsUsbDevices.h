#pragma once

#include "platform/UsbDevices.h"

class WindowsUsbDevices : public UsbDevices {
  public:
    std::unique_ptr<StorageDevice> Open(const std::wstring& drive) override;
    std::vector<std::wstring> ServiceNames() const override;
};
