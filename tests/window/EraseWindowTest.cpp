#include "CaptionFit.h"
#include "FormDriver.h"
#include "KeyboardReach.h"
#include "ScreenFit.h"
#include "core/LanguageValues.h"
#include "core/WriterFlags.h"
#include "discutil/DiscHost.h"
#include "discutil/forms/frmEffacerCDRW.h"
#include "resources/TextId.h"
#include "support/FakeMachine.h"
#include "ui/MessagePump.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// The backup window as the erase window sees it.
class FakeDiscHost : public DiscHost, private DiscWriterEvents {
  public:
    explicit FakeDiscHost(FakeMachine& machine) : machine_(machine) {}

    Medium medium = Medium::Cd;
    std::wstring drive = L"E:\\";
    std::unique_ptr<DiscWriter> writer;
    frmEffacerCDRW* eraseWindow = nullptr;
    bool isErasing = false;
    int refreshes = 0;

    void MakeWriter() {
        writer = machine_.discWriters.Create(medium == Medium::Dvd ? DiscFamily::Dvd : DiscFamily::Cd);
        writer->SetEvents(this);
    }
    Medium MediaType() const override { return medium; }
    const std::wstring& Drive() const override { return drive; }
    std::wstring RequiredSpaceText() const override { return L"required"; }
    std::wstring DiscMediaTypeString() const override { return {}; }
    DiscWriter* Writer() override { return writer.get(); }
    void RefreshDiscInfo() override { ++refreshes; }
    bool EffacementEnCour() const override { return isErasing; }
    void SetEffacementEnCour(bool value) override { isErasing = value; }

  private:
    void ErrorEx(std::int32_t, const std::wstring&) override { machine_.app.writerFlags->hasWriterError = true; }
    void MediaChange() override {}
    void DiscReadAgain() override {}
    void WritersChange() override {}
    void OperationProgress(std::int16_t percent) override {
        if (eraseWindow != nullptr) eraseWindow->SetEffacementProgress(percent);
    }

    FakeMachine& machine_;
};

/// Lets the test play the drive's part at every run of the messages.
class PlayedMessages : public MessageLoop {
  public:
    std::function<void()> play;

    void RunPending() override {
        if (play) play();
        ui::RunPendingMessages();
    }
    void SetPointer(Pointer pointer) override { pointers.push_back(pointer); }
    std::vector<Pointer> pointers;
};

class EraseWindowTest : public testing::Test, protected FormDriver {
  protected:
    EraseWindowTest() : machine(&messages), host(machine), form(machine.app) {
        machine.discWriters.cdDrives.push_back({L"CD (G:)", BlankDisc(MediaKind::CdRw, 700000000)});
        machine.discWriters.dvdDrives.push_back({L"DVD (H:)", BlankDisc(MediaKind::DvdPlusRw, 4000000000)});
        host.eraseWindow = &form;
    }
    void Open(Medium medium = Medium::Cd) {
        host.medium = medium;
        host.MakeWriter();
        form.SetParent(host);
        form.Create();
        form.Show();
    }
    FakeDiscWriter& Writer() {
        return *machine.discWriters.Latest(host.medium == Medium::Dvd ? DiscFamily::Dvd : DiscFamily::Cd);
    }
    std::vector<std::wstring>& Calls() {
        return machine.discWriters.Record(host.medium == Medium::Dvd ? DiscFamily::Dvd : DiscFamily::Cd).calls;
    }
    HWND Window() const override { return form.Handle(); }
    void ExpectBox(std::size_t at, TextId text, TextId title, std::uint32_t style) {
        ASSERT_LT(at, machine.messageBoxes.shown.size());
        EXPECT_EQ(machine.messageBoxes.shown[at].text, machine.app.Text(text));
        EXPECT_EQ(machine.messageBoxes.shown[at].title, machine.app.Text(title));
        EXPECT_EQ(machine.messageBoxes.shown[at].style, style);
    }

    PlayedMessages messages;
    FakeMachine machine;
    FakeDiscHost host;
    frmEffacerCDRW form;
};

TEST_F(EraseWindowTest, CaptionsFitInBothLanguagesAndEveryControlIsReached) {
    for (const int language : {0, 10000}) {
        machine.app.language->lngLangue = language;
        Open();
        EXPECT_EQ(form.Title(), machine.app.Text(TextId::EraseTitle));
        EXPECT_EQ(Text(IDC_cmdFermer), machine.app.Text(TextId::CloseCaption));
        EXPECT_EQ(Text(IDC_cmdEffacerCD), machine.app.Text(TextId::EraseCaption));
        EXPECT_EQ(Text(IDC_optEffacementComplet), machine.app.Text(TextId::FullEraseChoice));
        EXPECT_EQ(Text(IDC_optEffacementRapide), machine.app.Text(TextId::QuickEraseChoice));
        EXPECT_THAT(ClippedCaptions(form.Handle()), IsEmpty());
        EXPECT_THAT(OverlappingControls(form.Handle()), IsEmpty());
        EXPECT_EQ(TooLargeForScreen(form.Handle()), "");
        EXPECT_THAT(UnreachableControls(form.Handle()), IsEmpty());
        EXPECT_EQ(AccessKeyClashes(form.Handle()), L"");
        EXPECT_EQ(LabelOf(At(IDC_pgbEffacement)), machine.app.Text(TextId::DiscErasing));
        form.Unload();
    }
}

TEST_F(EraseWindowTest, AQuickEraseAsksNoQuestionAndEndsTheWindow) {
    Open();
    EXPECT_EQ(State(IDC_optEffacementRapide), BST_CHECKED);
    messages.play = [this] {
        EXPECT_TRUE(host.isErasing);
        EXPECT_FALSE(IsEnabled(IDC_cmdEffacerCD));
        EXPECT_FALSE(IsEnabled(IDC_cmdFermer));
        Writer().PlayToEnd();
    };
    Click(IDC_cmdEffacerCD);
    EXPECT_THAT(Calls(), ElementsAre(L"Erase quick"));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    ExpectBox(0, TextId::EraseDone, TextId::DiscErasing, box::Exclamation);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(host.isErasing);
    EXPECT_EQ(host.refreshes, 1);
    EXPECT_THAT(messages.pointers, ElementsAre(Pointer::Hourglass, Pointer::Default));
}

TEST_F(EraseWindowTest, AFullEraseAsksFirst) {
    machine.app.language->lngLangue = 10000;
    Open(Medium::Dvd);
    messages.play = [this] { Writer().PlayToEnd(); };
    Click(IDC_optEffacementComplet);
    Click(IDC_cmdEffacerCD);
    EXPECT_THAT(Calls(), ElementsAre(L"Erase full"));
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    ExpectBox(0, TextId::FullEraseQuestion, TextId::FullEraseTitle, box::YesNo | box::Question);
    ExpectBox(1, TextId::EraseDone, TextId::DiscErasing, box::Exclamation);
}

TEST_F(EraseWindowTest, DecliningTheFullEraseLeavesTheDiscUntouchedAndTheWindowIdle) {
    Open();
    machine.messageBoxes.answers = {box::AnswerNo};
    machine.messageBoxes.whileShown = [this](const auto&) { EXPECT_TRUE(host.isErasing); };
    Click(IDC_optEffacementComplet);
    // An erase that was started all the same would be waited for.
    form.SetEffacementProgress(100);
    Click(IDC_cmdEffacerCD);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_TRUE(form.IsLoaded());
    EXPECT_TRUE(IsEnabled(IDC_cmdEffacerCD));
    EXPECT_TRUE(IsEnabled(IDC_cmdFermer));
    EXPECT_FALSE(host.isErasing);
    EXPECT_EQ(host.refreshes, 0);
}

TEST_F(EraseWindowTest, ProgressFillsTheBarAndAtTheEndAllowsClosing) {
    Open();
    EnableWindow(At(IDC_cmdFermer), FALSE);
    form.SetEffacementProgress(40);
    EXPECT_EQ(Progress(IDC_pgbEffacement), 40);
    EXPECT_FALSE(IsEnabled(IDC_cmdFermer));
    form.SetEffacementProgress(120);
    EXPECT_EQ(Progress(IDC_pgbEffacement), 100);
    EXPECT_TRUE(IsEnabled(IDC_cmdFermer));
}

TEST_F(EraseWindowTest, AWriterThatStopsAt99IsTakenAsFinished) {
    Open();
    machine.clock.now = {2026, 3, 14, 10, 20, 0};
    int runs = 0;
    messages.play = [&] {
        if (++runs == 1) Writer().RaiseProgress(DiscOperation::EraseInProgress, 99);
        if (runs > 1 && runs <= 12) ++machine.clock.now.second;
        ASSERT_LT(runs, 100);
    };
    Click(IDC_cmdEffacerCD);
    EXPECT_EQ(runs, 11);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    ExpectBox(0, TextId::EraseDone, TextId::DiscErasing, box::Exclamation);
}

TEST_F(EraseWindowTest, AnErrorAtTheStartIsReportedOnceAndTheWaitCanBeLeft) {
    Open();
    machine.discWriters.startError = FakeDiscError{5, L"No power."};
    int runs = 0;
    messages.play = [&] {
        if (++runs == 3) PostMessageW(form.Handle(), WM_CLOSE, 0, 0);
        if (runs > 50) form.Unload();
    };
    Click(IDC_cmdEffacerCD);
    EXPECT_EQ(runs, 3);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    ExpectBox(0, TextId::EraseFailed, TextId::DiscErasing, box::Critical);
    EXPECT_FALSE(machine.app.writerFlags->hasWriterError);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(host.isErasing);
    EXPECT_EQ(host.refreshes, 1);
}

TEST_F(EraseWindowTest, AnEraseThatHasFailedIsLeftByTheCloseButton) {
    Open();
    machine.discWriters.startError = FakeDiscError{5, L"No power."};
    int runs = 0;
    messages.play = [&] {
        if (++runs == 3) {
            EXPECT_TRUE(IsEnabled(IDC_cmdFermer));
            Click(IDC_cmdFermer);
        }
        if (runs > 50) form.Unload();
    };
    Click(IDC_cmdEffacerCD);
    EXPECT_EQ(runs, 3);
    EXPECT_FALSE(form.IsLoaded());
    EXPECT_FALSE(host.isErasing);
}

TEST_F(EraseWindowTest, AnErrorDuringTheEraseIsReportedToo) {
    Open();
    int runs = 0;
    messages.play = [&] {
        if (++runs == 2) Writer().RaiseError(7, L"Scratched.");
        if (runs == 4) Writer().PlayToEnd();
        if (runs > 50) form.Unload();
    };
    Click(IDC_cmdEffacerCD);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    ExpectBox(0, TextId::EraseFailed, TextId::DiscErasing, box::Critical);
    ExpectBox(1, TextId::EraseDone, TextId::DiscErasing, box::Exclamation);
}

TEST_F(EraseWindowTest, AnErrorThatWasShownBeforeDoesNotCountAgainstTheErase) {
    Open();
    machine.app.writerFlags->hasWriterError = true;
    messages.play = [this] { Writer().PlayToEnd(); };
    Click(IDC_cmdEffacerCD);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    ExpectBox(0, TextId::EraseDone, TextId::DiscErasing, box::Exclamation);
}

TEST_F(EraseWindowTest, TheWindowStaysWhileAnEraseRuns) {
    Open();
    int runs = 0;
    messages.play = [&] {
        if (++runs == 1) Close();
        if (runs == 2) {
            EXPECT_TRUE(form.IsLoaded());
            Writer().PlayToEnd();
        }
    };
    Click(IDC_cmdEffacerCD);
    EXPECT_EQ(runs, 2);
}

TEST_F(EraseWindowTest, TheSessionDoesNotEndDuringAnErase) {
    Open();
    const auto maySessionEnd = [this] { return SendMessageW(form.Handle(), WM_QUERYENDSESSION, 0, 0) != FALSE; };
    EXPECT_TRUE(maySessionEnd());
    int looks = 0;
    messages.play = [&] {
        ++looks;
        EXPECT_FALSE(maySessionEnd());
        Writer().PlayToEnd();
    };
    bool couldEndAtTheMessage = false;
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box&) { couldEndAtTheMessage = maySessionEnd(); };
    Click(IDC_cmdEffacerCD);
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(couldEndAtTheMessage) << "the disc is erased by then";
}

TEST_F(EraseWindowTest, CloseAndEscapeCloseIt) {
    Open();
    Click(IDC_cmdFermer);
    EXPECT_FALSE(form.IsLoaded());
    Open();
    Cancel();
    EXPECT_FALSE(form.IsLoaded());
}

TEST_F(EraseWindowTest, WithoutAWriterTheFailureIsReportedUnderItsLabel) {
    Open();
    host.writer.reset();
    Click(IDC_cmdEffacerCD);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
    EXPECT_THAT(machine.messageBoxes.shown[0].text, HasSubstr(L"cmdEffacerCD_Click, module frmEffacerCDRW"));
}

} // namespace
