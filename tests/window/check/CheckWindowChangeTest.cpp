// What the check window keeps, and what it gives up, when its medium goes or something ends while a dialog is open.
#include "CheckWindowBench.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class CheckWindowChange : public CheckWindowTest {
  protected:
    std::wstring TextOf(TextId id) const { return machine.app.Text(id); }
    /// Other drives are there from now on, and the window has seen it.
    void SetDrives(const Texts& lines) {
        drives = lines;
        SendMessageW(Window(), WM_DEVICECHANGE, 0x8004, 0);
        EXPECT_TRUE(WaitFor([&] { return Lines(IDC_Places) == lines; }));
    }
    void Save() {
        const std::size_t boxes = machine.messageBoxes.shown.size();
        Click(IDC_SaveReport);
        ASSERT_TRUE(WaitFor([&] { return machine.messageBoxes.shown.size() > boxes; }));
    }
    bool IsAnythingRecovered() const {
        for (const std::wstring& path : files->Paths()) {
            if (path.starts_with(L"D:\\Cible")) return true;
        }
        return false;
    }

    int SelectedLine() const { return static_cast<int>(SendDlgItemMessageW(Window(), IDC_Places, LB_GETCURSEL, 0, 0)); }
    /// Chooses the only place, and has its list read.
    void ChooseMedium() {
        Choose(IDC_Places, 0);
        EXPECT_TRUE(WaitFor([this] { return IsEnabled(IDC_Recover); }));
    }
    /// Lets the check end that waits at the gate.
    void EndCheck() {
        files->gate.Open();
        ASSERT_TRUE(WaitFor([this] { return !machine.messageBoxes.shown.empty(); }));
    }

    void OpenBeforeTheListIsRead() {
        CloseGate();
        files->isListGated = true;
        form.emplace(machine.app, ways);
        form->Create();
        form->Show();
        ASSERT_TRUE(WaitFor([this] { return IsEnabled(IDC_Check); }));
    }

    const Texts unlabelled = {L"E:\\ Disque amovible"};
    const Texts medium = {L"E:\\ Disque amovible  Volume : SAUVEGARDE"};
    const Texts otherMedium = {L"E:\\ Disque amovible  Volume : AUTRE"};
};

TEST_F(CheckWindowChange, WhatWasFoundStaysToBeReadAndSavedWhenTheMediumGoes) {
    Open();
    Check();
    SetDrives({});
    EXPECT_EQ(List().Count(), 2);
    EXPECT_EQ(Result(1), L"Intact");
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
    EXPECT_FALSE(IsEnabled(IDC_Check));
    EXPECT_FALSE(IsEnabled(IDC_Recover));
    EXPECT_TRUE(IsEnabled(IDC_SaveReport));
    Save();
    EXPECT_THAT(files->BytesOf(L"D:\\rapport.txt").value_or(""), HasSubstr("C:\\Docs"));
}

TEST_F(CheckWindowChange, AMediumThatComesBackIsCheckedBeforeItIsRecovered) {
    Open();
    List().TickByKey(0);
    Check();
    SetDrives({});
    SetDrives(medium);
    EXPECT_EQ(SelectedLine(), -1);
    EXPECT_FALSE(IsEnabled(IDC_Check));
    EXPECT_FALSE(IsEnabled(IDC_Recover)) << "it may be another one, and the ticks are not about it";
    ChooseMedium();
    EXPECT_TRUE(IsEnabled(IDC_Check));
    EXPECT_EQ(Result(0), L"Non vérifié");
    Check();
    EXPECT_TRUE(List().IsTicked(0));
    EXPECT_TRUE(IsEnabled(IDC_Recover));
}

TEST_F(CheckWindowChange, AMediumThatWasPulledOutDuringTheCheckIsCheckedAgainBeforeItIsRecovered) {
    Open();
    CloseGate();
    StartCheck();
    SetDrives(otherMedium);
    files->gate.Open();
    ASSERT_TRUE(WaitFor([this] { return !machine.messageBoxes.shown.empty(); }));
    EXPECT_FALSE(IsEnabled(IDC_Recover)) << "the rows may be about the one before";
    EXPECT_TRUE(IsEnabled(IDC_SaveReport));
    EXPECT_EQ(SelectedLine(), -1);
    ChooseMedium();
    Check();
    EXPECT_TRUE(IsEnabled(IDC_Recover));
}

TEST_F(CheckWindowChange, AMediumWhoseLabelCannotBeReadForAMomentIsNotLost) {
    Open();
    CloseGate();
    StartCheck();
    SetDrives(unlabelled);
    SetDrives(medium);
    EndCheck();
    EXPECT_EQ(SelectedLine(), 0);
    EXPECT_TRUE(IsEnabled(IDC_Recover));
}

TEST_F(CheckWindowChange, AMediumWhoseLabelCannotBeReadAtTheEndOfTheCheckIsLost) {
    Open();
    CloseGate();
    StartCheck();
    SetDrives(unlabelled);
    EndCheck();
    EXPECT_TRUE(WaitFor([this] { return !IsEnabled(IDC_Recover); }));
    EXPECT_EQ(SelectedLine(), -1);
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
    EXPECT_THAT(Text(IDC_Details), HasSubstr(TextOf(TextId::CheckChooseFirst)));
}

TEST_F(CheckWindowChange, AnotherMediumInTheDriveLeavesTheResultUntilItsPlaceIsChosen) {
    Open();
    Check();
    SetDrives(otherMedium);
    EXPECT_EQ(SelectedLine(), -1) << "the result is not that of the medium which is there";
    EXPECT_FALSE(IsEnabled(IDC_Check));
    EXPECT_THAT(Text(IDC_Details), HasSubstr(TextOf(TextId::CheckChooseFirst)));
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
    EXPECT_TRUE(IsEnabled(IDC_SaveReport));
    EXPECT_FALSE(IsEnabled(IDC_Recover));
    Choose(IDC_Places, 0);
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckNotCheckedYet));
    EXPECT_TRUE(WaitFor([this] { return IsEnabled(IDC_Recover); }));
}

TEST_F(CheckWindowChange, AReportIsSavedThoughItsMediumGoesWhileItsFileIsChosen) {
    ways.chooseReport = [this](ui::Form&, const std::wstring&) {
        SetDrives({});
        SetDrives(otherMedium);
        return chosenReport;
    };
    Open();
    Check();
    Save();
    EXPECT_THAT(files->BytesOf(L"D:\\rapport.txt").value_or(""), HasSubstr("C:\\Docs"));
}

TEST_F(CheckWindowChange, NothingIsRecoveredFromAMediumThatGoesWhileTheFolderIsChosen) {
    bool hasReport = false;
    Texts drivesAfter;
    int folderChoices = 0;
    ways.chooseTarget = [&](ui::Form&, const std::wstring&) {
        ++folderChoices;
        SetDrives({});
        if (!drivesAfter.empty()) SetDrives(drivesAfter);
        EXPECT_TRUE(WaitFor([&] { return drivesAfter.empty() || hasReport || List().Count() == 2; }));
        return chosenTarget;
    };
    for (const bool isChecked : {false, true}) {
        hasReport = isChecked;
        for (const Texts& lines : {Texts(), otherMedium, medium}) {
            drives = medium;
            Open();
            Type(IDC_Password, L"Valcoreaux1");
            if (isChecked) Check();
            List().TickByKey(0);
            drivesAfter = lines;
            Click(IDC_Recover);
            EXPECT_TRUE(WaitFor([this] { return form->HasWorkEnded(); }));
            EXPECT_FALSE(IsAnythingRecovered()) << isChecked << lines.size();
            form->Unload();
        }
    }
    EXPECT_EQ(folderChoices, 6);
}

TEST_F(CheckWindowChange, ACheckThatIsBegunBeforeTheListIsReadOffersRecovery) {
    OpenBeforeTheListIsRead();
    StartCheck();
    files->gate.Open();
    ASSERT_TRUE(WaitFor([this] { return !machine.messageBoxes.shown.empty(); }));
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
    EXPECT_TRUE(IsEnabled(IDC_Recover));
}

TEST_F(CheckWindowChange, AWrongPasswordBeforeTheListIsReadShowsWhatMayBeRecovered) {
    OpenBeforeTheListIsRead();
    StartCheck(L"wrong");
    EndCheck();
    EXPECT_EQ(List().Count(), 2);
    EXPECT_EQ(Result(0), L"Non vérifié");
    EXPECT_TRUE(IsEnabled(IDC_Recover));
}

TEST_F(CheckWindowChange, ACheckThatIsStoppedBeforeTheListIsReadOffersNoRecovery) {
    OpenBeforeTheListIsRead();
    StartCheck();
    Click(IDC_Cancel);
    files->gate.Open();
    ASSERT_TRUE(WaitFor([this] { return IsVisible(IDC_Close); }));
    EXPECT_EQ(List().Count(), 0);
    EXPECT_FALSE(IsEnabled(IDC_Recover)) << "it would be of everything";
}

TEST_F(CheckWindowChange, AWrongPasswordLeavesTheResultsOfTheCheckBefore) {
    Open();
    Check();
    Check(L"wrong");
    EXPECT_EQ(Result(1), L"Intact");
}

TEST_F(CheckWindowChange, TheSelectionStaysWithItsItemWhenSortedRowsAreToldAnew) {
    Open();
    Check();
    for (int click = 0; click < 2; ++click)
        SendMessageW(Window(), WM_COMMAND, IDM_SortByFirst + static_cast<int>(CheckColumn::Size), 0);
    ASSERT_EQ(List().Cell(0, 1), L"C:\\Docs");
    List().Select(0);
    Check();
    EXPECT_EQ(List().Cell(0, 1), L"C:\\Docs");
    EXPECT_EQ(List().Selected(), 0);
}

TEST_F(CheckWindowChange, AWindowThatSavesAReportClosesWhenItIsSaved) {
    Open();
    Check();
    files->isWritingGated = true;
    Click(IDC_SaveReport);
    Close();
    EXPECT_TRUE(form->IsLoaded());
    files->writeGate.Open();
    EXPECT_TRUE(WaitFor([this] { return !form->IsLoaded(); }));
    EXPECT_TRUE(files->BytesOf(L"D:\\rapport.txt").has_value());
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u) << "that of the check";
}

TEST_F(CheckWindowChange, AReportThatCannotBeSavedKeepsItsWindowOpen) {
    Open();
    Check();
    files->isWritingGated = true;
    files->freeBytes = 10;
    Click(IDC_SaveReport);
    Close();
    files->writeGate.Open();
    ASSERT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 2; }));
    EXPECT_EQ(LastBox().style, box::Critical);
    EXPECT_TRUE(form->IsLoaded());
    Close();
    EXPECT_FALSE(form->IsLoaded());
}

TEST_F(CheckWindowChange, AWindowWhoseReportHangsClosesTheSecondTime) {
    Open();
    Check();
    files->isWritingGated = true;
    Click(IDC_SaveReport);
    Close();
    Close();
    EXPECT_FALSE(form->IsLoaded());
    files->writeGate.Open();
}

TEST_F(CheckWindowChange, WhatEndsWhileClosingIsAskedAboutIsToldAfterTheAnswerNo) {
    Open();
    CloseGate();
    StartCheck();
    std::size_t boxesWhileAsked = 0;
    machine.messageBoxes.answers = {box::AnswerNo};
    machine.messageBoxes.whileShown = [&](const FakeMessageBoxes::Box& box) {
        if (box.text.find(TextOf(TextId::CheckCloseQuestion)) == std::wstring::npos) return;
        files->gate.Open();
        EXPECT_TRUE(WaitFor([this] { return IsVisible(IDC_Close); }));
        ui::RunPendingMessages();
        boxesWhileAsked = machine.messageBoxes.shown.size();
    };
    Close();
    EXPECT_EQ(boxesWhileAsked, 1u);
    EXPECT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 2; }));
    EXPECT_THAT(LastBox().text, HasSubstr(TextOf(TextId::CheckGood)));
}

} // namespace
