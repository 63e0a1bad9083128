#include "resources/TextId.h"
#include "shell/DiskDetection.h"
#include "shell/modObtenirUSB.h"

#include "core/LanguageValues.h"
#include "core/UsbAnswer.h"
#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

using namespace modObtenirUSB;
using Letters = std::vector<std::wstring>;
using Roots = std::vector<std::wstring>;

class UsbDetection : public testing::Test {
  protected:
    UsbDetection() {
        machine.drives.Add(L"C:\\", DriveType::Fixed);
        machine.usb.busTypes[L"C:"] = 11;
        machine.usb.serviceNames = {L"disk", L"UsbStor"};
    }
    void AddFixed(const std::wstring& drive, std::optional<std::uint32_t> busType) {
        machine.drives.Add(drive + L"\\", DriveType::Fixed);
        machine.usb.busTypes[drive] = busType;
    }
    void RunOnXp() { machine.operatingSystem.version = {2, 5, 2}; }

    FakeMachine machine;
    Application& app = machine.app;
};

TEST(ShiftLeft, MultipliesByPowersOfTwo) {
    EXPECT_EQ(ShiftLeft(0x2D, 16), 0x2D0000);
    EXPECT_EQ(ShiftLeft(5, 0), 5);
}

TEST(ShiftLeft, IntoTheSignBitIsNegativeWithoutOverflow) {
    EXPECT_EQ(ShiftLeft(1, 31), INT32_MIN);
    EXPECT_EQ(ShiftLeft(3, 31), INT32_MIN);
    EXPECT_EQ(ShiftLeft(0x8000, 16), INT32_MIN);
    EXPECT_EQ(ShiftLeft(-1, 4), -16);
}

TEST(ShiftLeft, LosesWhatLeavesTheThirtyTwoBits) {
    EXPECT_EQ(ShiftLeft(0x10001, 16), 0x10000);
}

TEST(ShiftLeft, OutsideTheTableIsOutOfRange) {
    for (const int bits : {-1, 32}) {
        try {
            ShiftLeft(1, bits);
            ADD_FAILURE() << bits;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), 9);
        }
    }
}

TEST(ControlCode, OfTheStorageQuery) {
    EXPECT_EQ(ControlCode(0x2D, 0x500, 0, 0), 0x2D1400);
}

TEST(ControlCode, PutsEveryPartInItsPlace) {
    EXPECT_EQ(ControlCode(0x07, 0x001, 3, 2), 0x00078007);
    EXPECT_EQ(static_cast<std::uint32_t>(ControlCode(0x8000, 0x800, 3, 3)), 0x8000E003u);
}

TEST_F(UsbDetection, DriveOnTheUsbBusPasses) {
    AddFixed(L"F:", 7);
    EXPECT_TRUE(VérifierDriveUSB(app, L"F:"));
    EXPECT_EQ(machine.usb.controlCodes, (std::vector<std::uint32_t>{0x2D1400}));
}

TEST_F(UsbDetection, DriveOnAnotherBusFails) {
    EXPECT_FALSE(VérifierDriveUSB(app, L"C:"));
}

TEST_F(UsbDetection, DriveThatCannotBeOpenedIsNotUsbAndAsksNothing) {
    EXPECT_FALSE(VérifierDriveUSB(app, L"Q:"));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_EQ(machine.usb.enumerations, 0);
}

TEST_F(UsbDetection, FailedQueryIsNotUsb) {
    AddFixed(L"F:", std::nullopt);
    EXPECT_FALSE(VérifierDriveUSB(app, L"F:"));
    EXPECT_EQ(machine.usb.controlCodes.size(), 1u);
}

TEST_F(UsbDetection, OlderSystemAsksNothingAndTheBusAloneDecides) {
    RunOnXp();
    machine.usb.serviceNames.clear();
    AddFixed(L"F:", 7);
    EXPECT_TRUE(VérifierDriveUSB(app, L"F:"));
    EXPECT_FALSE(VérifierDriveUSB(app, L"C:"));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_EQ(app.usbAnswer->blnQuestionUSB, 0);
}

TEST_F(UsbDetection, OldFamilyOfMajorVersion6IsOlder) {
    machine.operatingSystem.version = {1, 6, 0};
    EXPECT_FALSE(IsWinVista(app));
    machine.operatingSystem.version = {2, 6, 0};
    EXPECT_TRUE(IsWinVista(app));
}

TEST_F(UsbDetection, WithoutMassStorageNothingIsAskedAndNothingIsUsb) {
    machine.usb.serviceNames = {L"disk", L"USBSTORE", L"USB"};
    AddFixed(L"F:", 7);
    EXPECT_FALSE(VérifierDriveUSB(app, L"F:"));
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_EQ(app.usbAnswer->blnQuestionUSB, 0);
}

TEST_F(UsbDetection, ServiceNameIsComparedWithoutCase) {
    EXPECT_TRUE(IsUsbStoragePresent(app));
}

TEST_F(UsbDetection, FailedEnumerationCountsAsNoMassStorage) {
    machine.usb.serviceNames.clear();
    EXPECT_FALSE(IsUsbStoragePresent(app));
}

TEST_F(UsbDetection, FrenchQuestionHasAnIconAndNoAsDefault) {
    VérifierDriveUSB(app, L"C:");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    const auto& question = machine.messageBoxes.shown[0];
    EXPECT_EQ(question.title, L"Utilisation d'un périphérique USB pour la prise de copie");
    EXPECT_EQ(question.text, L"Un périphérique de masse USB (disque externe et/ou disque amovible) a été détecté.  "
                             L"Désirez-vous l'utiliser pour faire une copie de sécurité ? ");
    EXPECT_EQ(question.style, 324u);
}

TEST_F(UsbDetection, EnglishQuestionHasNoIconAndYesAsDefault) {
    machine.app.language->lngLangue = 10000;
    VérifierDriveUSB(app, L"C:");
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    const auto& question = machine.messageBoxes.shown[0];
    EXPECT_EQ(question.title, L"Utilization of a USB device for your backup");
    EXPECT_EQ(question.text, L"A mass storage device USB (removable disk and/or external disk) has been detected.  "
                             L"Do you want tu use that device to do your backup ? ");
    EXPECT_EQ(question.style, 4u);
}

TEST_F(UsbDetection, QuestionIsAskedOncePerRun) {
    AddFixed(L"F:", 7);
    AddFixed(L"G:", 7);
    EXPECT_EQ(DetectExternalDisks(app).roots, (Roots{L"F:\\", L"G:\\"}));
    EXPECT_EQ(DetectExternalDisks(app).roots, (Roots{L"F:\\", L"G:\\"}));
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(app.usbAnswer->blnQuestionUSB, 1);
    EXPECT_EQ(app.usbAnswer->intReponseUSB, 6);
}

TEST_F(UsbDetection, QuestionComesWithTheFirstDriveWhicheverItIs) {
    DetectExternalDisks(app);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(machine.usb.opened.front(), L"C:");
}

TEST_F(UsbDetection, NoRemovesBothUsbMediaForTheRestOfTheRun) {
    AddFixed(L"F:", 7);
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.messageBoxes.answers = {7};
    for (int run = 0; run < 2; ++run) {
        const MediumOffer external = DetectExternalDisks(app);
        const MediumOffer removable = DetectRemovableDisks(app);
        EXPECT_FALSE(external.isEnabled);
        EXPECT_TRUE(external.roots.empty());
        EXPECT_FALSE(removable.isEnabled);
        EXPECT_TRUE(removable.roots.empty());
    }
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_EQ(app.usbAnswer->blnQuestionUSB, 1);
    EXPECT_EQ(app.usbAnswer->intReponseUSB, 7);
}

TEST_F(UsbDetection, RemovableDisksAreNotPutThroughTheUsbTest) {
    machine.drives.Add(L"E:\\", DriveType::Removable);
    const MediumOffer offer = DetectRemovableDisks(app);
    EXPECT_TRUE(offer.isEnabled);
    EXPECT_EQ(offer.roots, (Roots{L"E:\\"}));
    EXPECT_TRUE(machine.usb.opened.empty());
}

TEST_F(UsbDetection, UsbDiskIsOfferedByTheTypeThatWindowsReports) {
    AddFixed(L"F:", 7);
    machine.drives.Add(L"E:\\", DriveType::Removable);
    machine.usb.busTypes[L"E:"] = 7;
    EXPECT_EQ(DetectExternalDisks(app).roots, (Roots{L"F:\\"}));
    EXPECT_EQ(DetectRemovableDisks(app).roots, (Roots{L"E:\\"}));
}

TEST_F(UsbDetection, MachineWithoutRemovableDrivesOffersNone) {
    const MediumOffer offer = DetectRemovableDisks(app);
    EXPECT_FALSE(offer.isEnabled);
    EXPECT_TRUE(offer.roots.empty());
    EXPECT_EQ(offer.LabelId(), TextId::No);
}

TEST_F(UsbDetection, ThreeRemovableDisksAreAllOfferedInOrder) {
    for (const wchar_t* root : {L"A:\\", L"G:\\", L"E:\\", L"F:\\"}) machine.drives.Add(root, DriveType::Removable);
    const MediumOffer offer = DetectRemovableDisks(app);
    EXPECT_EQ(offer.roots, (Roots{L"G:\\", L"E:\\", L"F:\\"}));
    EXPECT_EQ(offer.LabelId(), TextId::Yes);
}

TEST_F(UsbDetection, ScanOfAnEmptyListIsOneEmptyElement) {
    EXPECT_EQ(ScanDiskLetter(app, {L""}), (Letters{L""}));
}

TEST_F(UsbDetection, ScanKeepsTheUsbLettersInOrder) {
    AddFixed(L"G:", 7);
    AddFixed(L"F:", 7);
    EXPECT_EQ(ScanDiskLetter(app, {L"G", L"C", L"F"}), (Letters{L"G", L"F"}));
}

TEST_F(UsbDetection, FailureInOneDriveIsReportedAndTheScanGoesOn) {
    AddFixed(L"F:", 7);
    AddFixed(L"G:", 7);
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        machine.messageBoxes.whileShown = nullptr;
        throw RuntimeError(ErrorNumber::OutOfMemory);
    };
    EXPECT_EQ(ScanDiskLetter(app, {L"F", L"G"}), (Letters{L"G"}));
    ASSERT_EQ(machine.eventLog.errors.size(), 1u);
    EXPECT_NE(machine.eventLog.errors[0].find(L"VérifierDriveUSB, Module modObtenirUSB"), std::wstring::npos);
}

TEST_F(UsbDetection, QuestionIsNotAskedAgainWhileItIsOpen) {
    AddFixed(L"F:", 7);
    std::vector<bool> meanwhile;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) {
        meanwhile.push_back(VérifierDriveUSB(app, L"F:"));
    };
    EXPECT_TRUE(VérifierDriveUSB(app, L"F:"));
    EXPECT_EQ(meanwhile, std::vector<bool>{false}) << "nobody has agreed yet";
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_TRUE(VérifierDriveUSB(app, L"F:"));
}

class FolderSizeTest : public testing::Test {
  protected:
    FolderSizeTest() {
        machine.files.AddFile(L"C:\\Data\\a.txt", "12345");
        machine.files.AddFile(L"C:\\Data\\.hidden", "123");
        machine.files.AddFile(L"C:\\Data\\Sub\\b.txt", "1234567");
        machine.files.AddFile(L"C:\\Data\\.git\\c.txt", "1");
    }
    FakeMachine machine;
};

TEST_F(FolderSizeTest, CountsAllLevelsWhenAsked) {
    const FolderMeasure measure = FolderSize(machine.app, L"C:\\Data", true);
    EXPECT_EQ(measure.fileCount, 2u);
    EXPECT_EQ(measure.sizeBytes, 12u);
}

TEST_F(FolderSizeTest, StaysInTheFolderOtherwise) {
    const FolderMeasure measure = FolderSize(machine.app, L"C:\\Data", false);
    EXPECT_EQ(measure.fileCount, 1u);
    EXPECT_EQ(measure.sizeBytes, 5u);
}

TEST_F(FolderSizeTest, MissingFolderMeasuresZero) {
    EXPECT_EQ(FolderSize(machine.app, L"C:\\None", true).fileCount, 0u);
    EXPECT_EQ(FolderSize(machine.app, L"C:\\None", false).sizeBytes, 0u);
}

} // namespace
