#include "shell/WriterDetection.h"
#include "resources/TextId.h"

#include "core/WriterFlags.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

namespace {

class WriterDetection : public testing::Test {
  protected:
    WriterDetection() {
        machine.discWriters.cdDrives.push_back({L"VENDOR CD (G:)", {}});
        machine.discWriters.dvdDrives.push_back({L"VENDOR DVD (H:)", {}});
    }
    void AllowDvd(const std::wstring& value) {
        machine.settings.Set(L"c:\\Valcoreaux\\Backup\\Backup.ini", L"DVD", L"Disponible", value);
    }
    bool IsOffered(DiscFamily family) { return WriterProbe(app, family).Offer().isEnabled; }

    FakeMachine machine;
    Application& app = machine.app;
    const std::function<bool()> goesOn = [] { return false; };
};

TEST_F(WriterDetection, WakesEveryDriveFromAToZOnceInOrder) {
    WakeDrives(app);
    ASSERT_EQ(machine.drives.touched.size(), 26u);
    EXPECT_EQ(machine.drives.touched.front(), L"A:\\");
    EXPECT_EQ(machine.drives.touched[6], L"G:\\");
    EXPECT_EQ(machine.drives.touched.back(), L"Z:\\");
}

TEST_F(WriterDetection, OneWriterIsEnough) {
    const MediumOffer offer = WriterProbe(app, DiscFamily::Cd).Offer();
    EXPECT_TRUE(offer.isEnabled);
    EXPECT_EQ(offer.LabelId(), TextId::Yes);
}

TEST_F(WriterDetection, WithoutAWriterNothingIsOfferedAndTheToolTipSaysWhy) {
    machine.discWriters.cdDrives.clear();
    const MediumOffer offer = WriterProbe(app, DiscFamily::Cd).Offer();
    EXPECT_FALSE(offer.isEnabled);
    EXPECT_EQ(offer.LabelId(), TextId::No);
}

TEST_F(WriterDetection, AWriterThatMayNotBeUsedIsNotSaidToBeMissing) {
    const MediumOffer offer = WriterProbe(app, DiscFamily::Dvd).Offer();
    EXPECT_FALSE(offer.isEnabled);
    EXPECT_TRUE(offer.isForbidden);
    machine.discWriters.dvdDrives.clear();
    EXPECT_FALSE(WriterProbe(app, DiscFamily::Dvd).Offer().isForbidden);
}

TEST_F(WriterDetection, ClearsTheErrorFlagFirst) {
    app.writerFlags->hasWriterError = true;
    EXPECT_TRUE(IsOffered(DiscFamily::Cd));
    EXPECT_FALSE(app.writerFlags->hasWriterError);
}

TEST_F(WriterDetection, ErrorWhileSettingUpMeansNoWriter) {
    WriterProbe probe(app, DiscFamily::Cd);
    machine.discWriters.Latest(DiscFamily::Cd)->RaiseError(-5, L"not ready");
    EXPECT_TRUE(app.writerFlags->hasWriterError);
    EXPECT_FALSE(probe.Offer().isEnabled);
}

TEST_F(WriterDetection, ComponentIsReleased) {
    {
        WriterProbe probe(app, DiscFamily::Dvd);
        EXPECT_EQ(machine.discWriters.dvdRecord.alive, 1);
    }
    EXPECT_EQ(machine.discWriters.dvdRecord.shutDown, 1);
    EXPECT_EQ(machine.discWriters.dvdRecord.alive, 0);
}

TEST_F(WriterDetection, ComponentThatCannotBeMadeIsAFailure) {
    machine.discWriters.createFailure = RuntimeError(429, L"ActiveX component can't create object");
    EXPECT_THROW(IsOffered(DiscFamily::Cd), RuntimeError);
}

TEST_F(WriterDetection, DvdOnNt6NeedsTheSettingsFile) {
    EXPECT_FALSE(IsOffered(DiscFamily::Dvd));
    EXPECT_TRUE(IsOffered(DiscFamily::Cd));
}

TEST_F(WriterDetection, DvdSwitchCountsInAnyCase) {
    for (const wchar_t* value : {L"OUI", L"oui", L"Oui"}) {
        AllowDvd(value);
        EXPECT_TRUE(IsOffered(DiscFamily::Dvd));
    }
    for (const wchar_t* value : {L"", L"NON", L"1", L"OUIS", L"YES"}) {
        AllowDvd(value);
        EXPECT_FALSE(IsOffered(DiscFamily::Dvd));
    }
}

TEST_F(WriterDetection, DvdBeforeNt6NeedsNoSetting) {
    machine.operatingSystem.version = {2, 5, 2};
    EXPECT_TRUE(IsOffered(DiscFamily::Dvd));
}

TEST_F(WriterDetection, DvdSwitchAloneMakesNoWriter) {
    AllowDvd(L"OUI");
    machine.discWriters.dvdDrives.clear();
    EXPECT_FALSE(IsOffered(DiscFamily::Dvd));
}

TEST_F(WriterDetection, WaitEndsWithTheNextWholeSecond) {
    machine.clock.secondsSinceMidnight = 100.3;
    WaitForNextSecond(app, goesOn);
    EXPECT_GE(machine.clock.secondsSinceMidnight, 101.0);
    EXPECT_LT(machine.clock.secondsSinceMidnight, 101.05);
    EXPECT_GT(machine.messageLoop.runs, 10);
}

TEST_F(WriterDetection, WaitFromAWholeSecondTakesAWholeOne) {
    machine.clock.secondsSinceMidnight = 100.0;
    WaitForNextSecond(app, goesOn);
    EXPECT_GE(machine.clock.secondsSinceMidnight, 101.0);
    EXPECT_LT(machine.clock.secondsSinceMidnight, 101.05);
}

TEST_F(WriterDetection, WaitEndsAtMidnight) {
    machine.clock.secondsSinceMidnight = 86399.5;
    machine.messageLoop.handler = [&] {
        if (machine.clock.secondsSinceMidnight >= 86399.99) machine.clock.secondsSinceMidnight = 0.0;
    };
    WaitForNextSecond(app, goesOn);
    EXPECT_LT(machine.clock.secondsSinceMidnight, 1.0);
}

TEST_F(WriterDetection, WaitEndsWhenTheProgramIsClosing) {
    machine.clock.secondsSinceMidnight = 100.0;
    bool isEnding = false;
    machine.messageLoop.handler = [&] { isEnding = true; };
    WaitForNextSecond(app, [&] { return isEnding; });
    EXPECT_EQ(machine.messageLoop.runs, 1);
}

TEST(FirstOffered, FollowsTheOrderOfTheCodes) {
    for (const Medium first : AllMedia) EXPECT_EQ(FirstOffered([&](Medium medium) { return medium >= first; }), first);
    EXPECT_EQ(FirstOffered([](Medium) { return false; }), std::nullopt);
}

} // namespace
