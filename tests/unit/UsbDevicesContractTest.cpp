// What every implementation of UsbDevices does; run against the stand-in, and under Windows against the real one too.
#include "support/FakeUsbDevices.h"

#include <gmock/gmock.h>

#ifdef _WIN32
#include "platform/windows/WindowsUsbDevices.h"
#endif

namespace {

constexpr std::uint32_t StorageQuery = 0x2D1400; // IOCTL_STORAGE_QUERY_PROPERTY

struct FakeUsbBench {
    FakeUsbBench() {
        usb.busTypes[L"C:"] = 1;
        usb.serviceNames = {L"disk"};
    }
    FakeUsbDevices usb;
};

#ifdef _WIN32
struct WindowsUsbBench {
    WindowsUsbDevices usb;
};
using Benches = testing::Types<FakeUsbBench, WindowsUsbBench>;
#else
using Benches = testing::Types<FakeUsbBench>;
#endif

template<typename Bench>
class UsbDevicesContract : public testing::Test {
  protected:
    Bench bench_;
    UsbDevices& usb_ = bench_.usb;
};

TYPED_TEST_SUITE(UsbDevicesContract, Benches);

TYPED_TEST(UsbDevicesContract, TheSystemDriveAnswersTheBusQuery) {
    const auto device = this->usb_.Open(L"C:");
    ASSERT_NE(device, nullptr);
    EXPECT_TRUE(device->BusType(StorageQuery).has_value());
}

TYPED_TEST(UsbDevicesContract, ADriveThatIsNotThereCannotBeOpened) {
    EXPECT_EQ(this->usb_.Open(L"Q:"), nullptr);
    EXPECT_EQ(this->usb_.Open(L""), nullptr);
}

TYPED_TEST(UsbDevicesContract, ServiceNamesAreTrimmedAndNotEmpty) {
    for (const std::wstring& name : this->usb_.ServiceNames()) {
        EXPECT_FALSE(name.empty());
        EXPECT_EQ(name.find(L'\0'), std::wstring::npos);
        EXPECT_NE(name.front(), L' ');
        EXPECT_NE(name.back(), L' ');
    }
}

TYPED_TEST(UsbDevicesContract, AnUnknownControlCodeGivesNothing) {
    const auto device = this->usb_.Open(L"C:");
    ASSERT_NE(device, nullptr);
    EXPECT_FALSE(device->BusType(0xFFFFFFFC).has_value());
}

} // namespace
