#include "CaptionFit.h"
#include "FormDriver.h"
#include "HostForm.h"
#include "core/LanguageValues.h"
#include "platform/RuntimeError.h"
#include "selection/forms/ctlScan.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

class ScanControlTest : public testing::Test, protected FormDriver {
  protected:
    void Open() {
        parent.Create();
        scan.CreateChild(parent, {0, 0, 240, 28});
    }
    HWND Window() const override { return scan.Handle(); }

    FakeMachine machine;
    HostForm parent;
    ctlScan scan{machine.app};
};

TEST_F(ScanControlTest, LabelReadsInFrench) {
    Open();
    EXPECT_EQ(Text(IDC_lblScan), L"Scan des bus IDE / SCSI / USB / IEEE1394 en cours");
    EXPECT_EQ(ClippedCaptions(scan.Handle()), std::vector<std::string>{});
}

TEST_F(ScanControlTest, LabelReadsInEnglish) {
    machine.app.language->lngLangue = 10000;
    Open();
    EXPECT_EQ(Text(IDC_lblScan), L"Scan of the IDE / SCSI / USB / IEEE1394 buses in progress");
    EXPECT_EQ(ClippedCaptions(scan.Handle()), std::vector<std::string>{});
}

TEST_F(ScanControlTest, CaptionWhoseReportCannotBeMadeIsReportedByTheStartOfTheControl) {
    machine.strings.outOfMemoryAt = 672;
    bool isFirst = true;
    machine.messageBoxes.whileShown = [&](const auto&) {
        if (std::exchange(isFirst, false)) throw RuntimeError(ErrorNumber::OutOfMemory);
    };
    Open();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    const auto isToldOf = [&](std::size_t box, const wchar_t* label) {
        return machine.messageBoxes.shown[box].text.find(label) != std::wstring::npos;
    };
    EXPECT_TRUE(isToldOf(0, L" InitCaptions, module ctlScan "));
    EXPECT_TRUE(isToldOf(1, L" UserControl_Initialize, module ctlScan "));
}

TEST_F(ScanControlTest, RangeAndPositionAreTheBars) {
    Open();
    scan.SetMIN(5);
    scan.SetMAX(26);
    scan.SetValue(12);
    EXPECT_EQ(scan.MIN(), 5);
    EXPECT_EQ(scan.MAX(), 26);
    EXPECT_EQ(scan.Value(), 12);
    EXPECT_EQ(Progress(IDC_pgbScan), 12);
}

TEST_F(ScanControlTest, BarRefusesAPositionOutsideItsRange) {
    Open();
    scan.SetMIN(0);
    scan.SetMAX(26);
    scan.SetValue(27);
    EXPECT_EQ(scan.Value(), 26);
    scan.SetValue(-1);
    EXPECT_EQ(scan.Value(), 0);
}

TEST_F(ScanControlTest, CanBeDisabled) {
    Open();
    EXPECT_TRUE(scan.Enabled());
    scan.SetEnabled(false);
    EXPECT_FALSE(scan.Enabled());
}

} // namespace
