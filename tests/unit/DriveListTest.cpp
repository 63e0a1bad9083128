#include "shell/modFonctionsCommunes.h"

#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using modFonctionsCommunes::GetDriveListByType;
using modFonctionsCommunes::RemovableButFloppies;
using Letters = std::vector<std::wstring>;

constexpr auto Fixed = static_cast<std::int32_t>(DriveType::Fixed);
constexpr auto Removable = static_cast<std::int32_t>(DriveType::Removable);

TEST(DriveList, HoldsTheLettersOfOneTypeInTheSystemsOrder) {
    FakeMachine machine;
    machine.drives.Add(L"f:\\", DriveType::Fixed);
    machine.drives.Add(L"C:\\", DriveType::Fixed);
    machine.drives.Add(L"D:\\", DriveType::CdRom);
    EXPECT_EQ(GetDriveListByType(machine.app, Fixed), (Letters{L"F", L"C"}));
}

TEST(DriveList, FloppyDrivesNeverAppearAmongRemovableDisks) {
    FakeMachine machine;
    machine.drives.Add(L"a:\\", DriveType::Removable);
    machine.drives.Add(L"B:\\", DriveType::Removable);
    machine.drives.Add(L"E:\\", DriveType::Removable);
    EXPECT_EQ(GetDriveListByType(machine.app, RemovableButFloppies), (Letters{L"E"}));
    EXPECT_EQ(GetDriveListByType(machine.app, Removable), (Letters{L"A", L"B", L"E"}));
}

TEST(DriveList, WithoutAMatchIsOneEmptyElement) {
    FakeMachine machine;
    machine.drives.Add(L"C:\\", DriveType::Fixed);
    EXPECT_EQ(GetDriveListByType(machine.app, RemovableButFloppies), (Letters{L""}));
}

TEST(DriveList, FailureIsReportedAndKeepsWhatWasFound) {
    struct FailingDrives : FakeDrives {
        DriveType Type(const std::wstring& root) const override {
            if (root == L"E:\\") throw RuntimeError(ErrorNumber::DeviceIoError);
            return FakeDrives::Type(root);
        }
    };
    FakeMachine machine;
    FailingDrives drives;
    drives.Add(L"D:\\", DriveType::Fixed);
    drives.Add(L"E:\\", DriveType::Fixed);
    Machine ports = machine.Ports();
    ports.drives = drives;
    Application app(std::move(ports));
    EXPECT_EQ(GetDriveListByType(app, Fixed), (Letters{L"D"}));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_NE(machine.messageBoxes.shown[0].text.find(L"GetDriveListByType, module modFonctionsCommunes"),
              std::wstring::npos);
}

} // namespace
