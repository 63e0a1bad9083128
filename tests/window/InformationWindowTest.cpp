#include "CaptionFit.h"
#include "FormDriver.h"
#include "KeyboardReach.h"
#include "ScreenFit.h"
#include "core/LanguageValues.h"
#include "discutil/DiscHost.h"
#include "discutil/forms/frmInfoDisque.h"
#include "resources/TextId.h"
#include "shell/forms/FormMessageLoop.h"
#include "support/FakeMachine.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <map>
#include <memory>
#include <string>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::uint64_t Megabyte = 1048576;

class InformationHost : public DiscHost {
  public:
    Medium medium = Medium::Cd;
    std::wstring drive = L"E:\\";
    std::wstring kind;
    std::unique_ptr<DiscWriter> writer;

    Medium MediaType() const override { return medium; }
    const std::wstring& Drive() const override { return drive; }
    std::wstring RequiredSpaceText() const override { return L"Required :  1,000"; }
    std::wstring DiscMediaTypeString() const override { return kind; }
    DiscWriter* Writer() override { return writer.get(); }
    void RefreshDiscInfo() override {}
    bool EffacementEnCour() const override { return false; }
    void SetEffacementEnCour(bool) override {}
};

class InformationWindowTest : public testing::Test, protected FormDriver {
  protected:
    InformationWindowTest() : machine(&messages), form(machine.app) {
        machine.discWriters.cdDrives.push_back({L"CD (G:)", BlankDisc(MediaKind::CdR, 800 * Megabyte)});
        machine.discWriters.dvdDrives.push_back({L"DVD (H:)", BlankDisc(MediaKind::DvdPlusR, 4482 * Megabyte)});
    }
    void Open(Medium medium) {
        host.medium = medium;
        if (medium == Medium::Cd) host.writer = machine.discWriters.Create(DiscFamily::Cd);
        if (medium == Medium::Dvd) host.writer = machine.discWriters.Create(DiscFamily::Dvd);
        host.kind = medium == Medium::Dvd ? L"DVD+R" : L"CD-R";
        form.SetParent(host);
        form.Create();
        form.Show();
    }
    FakeDisc& Cd() { return machine.discWriters.cdDrives[0].disc; }
    FakeDisc& Dvd() { return machine.discWriters.dvdDrives[0].disc; }
    HWND Window() const override { return form.Handle(); }
    void ExpectShown(const std::wstring& type, const std::wstring& status, const std::wstring& used,
                     const std::wstring& estimate) {
        EXPECT_EQ(Text(IDC_lblTypeCD), type);
        EXPECT_EQ(Text(IDC_lblStatutCD), status);
        EXPECT_EQ(Text(IDC_lblEspaceUtilise), used);
        EXPECT_EQ(Text(IDC_lblEstimEspaceUtilise), estimate);
    }

    FormMessageLoop messages;
    FakeMachine machine;
    InformationHost host;
    frmInfoDisque form;
};

TEST_F(InformationWindowTest, CaptionsFitInBothLanguagesAndEveryControlIsReached) {
    const std::map<int, TextId> captions = {{IDC_cmdOK, TextId::OkCaption},
                                            {IDC_cmdRafraichir, TextId::RefreshCaption},
                                            {IDC_frmInfosDisque, TextId::DiscCaption},
                                            {IDC_lblLabelType, TextId::DiscTypeCaption},
                                            {IDC_lblLabelEspaceUtilise, TextId::UsedSpaceCaption},
                                            {IDC_lblLabelStatut, TextId::DiscStatusCaption},
                                            {IDC_lblMoAGraver, TextId::SizeCaption}};
    for (const int language : {0, 10000}) {
        machine.app.language->lngLangue = language;
        Open(Medium::Cd);
        EXPECT_EQ(form.Title(), machine.app.Text(TextId::DiscInformationTitle));
        for (const auto& [control, text] : captions) EXPECT_EQ(Text(control), machine.app.Text(text)) << control;
        EXPECT_THAT(ClippedCaptions(form.Handle()), IsEmpty());
        EXPECT_THAT(OverlappingControls(form.Handle()), IsEmpty());
        EXPECT_EQ(TooLargeForScreen(form.Handle()), "");
        EXPECT_THAT(UnreachableControls(form.Handle()), IsEmpty());
        form.Unload();
    }
}

TEST_F(InformationWindowTest, ABlankCdIsVierge) {
    Open(Medium::Cd);
    ExpectShown(L"CD-R", L"Vierge", L"0.000 Mo", L"  700,000 Mo");
}

TEST_F(InformationWindowTest, AnEmptyDriveIsUnknownAndHasNoSpace) {
    Cd() = {};
    Open(Medium::Cd);
    EXPECT_EQ(Text(IDC_lblStatutCD), L"Inconnu");
    EXPECT_EQ(Text(IDC_lblEspaceUtilise), L"0.000 Mo");
    EXPECT_EQ(Text(IDC_lblEstimEspaceUtilise), L"0.000 Mo");
}

TEST_F(InformationWindowTest, AutoPlayStaysAwayFromDiscsOnly) {
    const UINT question = RegisterWindowMessageW(L"QueryCancelAutoPlay");
    Open(Medium::Cd);
    EXPECT_EQ(SendMessageW(form.Handle(), question, 0, 0), TRUE);
    form.Unload();
    Open(Medium::ExternalDisk);
    EXPECT_EQ(SendMessageW(form.Handle(), question, 0, 0), FALSE);
}

TEST_F(InformationWindowTest, RefreshReadsAgain) {
    machine.app.language->lngLangue = 10000;
    machine.locale.decimalSeparator = L".";
    Open(Medium::Dvd);
    Dvd().status = DiscStatus::Open;
    Dvd().usedBytes = 1000 * Megabyte;
    Click(IDC_cmdRafraichir);
    ExpectShown(L"DVD+R", L"Open", L" 1 000.000 Mb", L" 3 300.000 Mb");
    Dvd().status = DiscStatus::Unknown;
    Click(IDC_cmdRafraichir);
    ExpectShown(L"DVD+R", L"Unknown", L"0.000 Mb", L"0.000 Mb");
}

TEST_F(InformationWindowTest, AStatusWithoutATextKeepsTheOneShown) {
    Open(Medium::Cd);
    Cd().status = static_cast<DiscStatus>(7);
    Cd().usedBytes = 5 * Megabyte;
    Click(IDC_cmdRafraichir);
    ExpectShown(L"CD-R", L"Vierge", L"  5,000 Mo", L"  700,000 Mo");
}

TEST_F(InformationWindowTest, ARemovedUsbDiskIsNotAvailableAndItsUsedSpaceEmpty) {
    machine.drives.Add(L"E:\\", DriveType::Removable, L"", {100.0 * 1048576, 300.0 * 1048576});
    Open(Medium::RemovableDisk);
    ExpectShown(L"Disque amovible", L"Prêt", L"200", L"Required :  1,000");
    machine.drives.Remove(L"E:\\");
    Click(IDC_cmdRafraichir);
    ExpectShown(L"Disque amovible", L"non disponible", L"", L"Required :  1,000");
}

TEST_F(InformationWindowTest, ADiskThatCannotBeReadStillShowsWhatIsKnownOfIt) {
    machine.drives.Add(L"E:\\", DriveType::Removable, std::nullopt).canRead = false;
    Open(Medium::RemovableDisk);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"Rafraichir, module frmInfoDisque"));
    ExpectShown(L"Disque amovible", L"Prêt", L"0", L"Required :  1,000");
}

TEST_F(InformationWindowTest, AnExternalDiskIsNamedSo) {
    machine.app.language->lngLangue = 10000;
    Open(Medium::ExternalDisk);
    ExpectShown(L"External disk", L"Disconnected", L"", L"Required :  1,000");
}

TEST_F(InformationWindowTest, AFailureIsReportedAndTheLabelsKeepTheirValues) {
    Open(Medium::Cd);
    host.writer.reset();
    Click(IDC_cmdRafraichir);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"Rafraichir, module frmInfoDisque"));
    ExpectShown(L"CD-R", L"Vierge", L"0.000 Mo", L"  700,000 Mo");
}

TEST_F(InformationWindowTest, OkAndEscapeCloseIt) {
    Open(Medium::Cd);
    Click(IDC_cmdOK);
    EXPECT_FALSE(form.IsLoaded());
    Open(Medium::Cd);
    Cancel();
    EXPECT_FALSE(form.IsLoaded());
}

} // namespace
