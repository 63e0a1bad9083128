// What the check window does: places, passwords, checking, cancelling, recovering, saving, closing.
#include "CheckWindowBench.h"
#include "platform/MessageBoxes.h"
#include "resources/TextId.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CheckWindowWork : public CheckWindowTest {
  protected:
    std::wstring TextOf(TextId id) const { return machine.app.Text(id); }
};

TEST_F(CheckWindowWork, AGoodBackupIsToldInTheWindowAndInABox) {
    Open();
    Check();
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
    EXPECT_EQ(LastBox().style, box::Information);
    EXPECT_THAT(LastBox().text, HasSubstr(TextOf(TextId::CheckGood)));
    EXPECT_EQ(Progress(IDC_Progress), 1000);
    EXPECT_TRUE(IsEnabled(IDC_SaveReport));
    EXPECT_TRUE(HasFocus(IDC_Items));
    EXPECT_THAT(Text(IDC_Details), HasSubstr(L"fichiers : 2"));
}

TEST_F(CheckWindowWork, AWrongPasswordIsToldAndAskedForAgain) {
    Open();
    Check(L"autre");
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckWrongPassword));
    EXPECT_EQ(LastBox().style, box::Exclamation);
    EXPECT_TRUE(WaitFor([this] { return HasFocus(IDC_Password); }));
    EXPECT_EQ(List().Count(), 2) << "what the list says stays";
    Check();
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
}

TEST_F(CheckWindowWork, ADamagedItemIsToldInItsRowAndItsDetails) {
    std::string bytes = *files->BytesOf(L"E:\\OKRBACKUP.ZIP");
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
    files->Add(L"E:\\OKRBACKUP.ZIP", bytes);
    Open();
    Check();
    EXPECT_EQ(LastBox().style, box::Critical);
    EXPECT_EQ(Result(0), L"Intact");
    EXPECT_EQ(Result(1), L"Endommagé");
    List().Select(1);
    EXPECT_THAT(Text(IDC_Details), HasSubstr(L"Endommagé sur le médium"));
}

TEST_F(CheckWindowWork, WhileItWorksOnlyCancelAndTheListCanBeUsed) {
    Open();
    CloseGate();
    StartCheck();
    for (const int id : {IDC_Places, IDC_Browse, IDC_Password, IDC_Compare, IDC_Check, IDC_SelectAll, IDC_DeselectAll,
                         IDC_Recover, IDC_SaveReport})
        EXPECT_FALSE(IsEnabled(id)) << id;
    EXPECT_TRUE(IsEnabled(IDC_Items));
    EXPECT_TRUE(IsVisible(IDC_Cancel));
    EXPECT_FALSE(IsVisible(IDC_Close));
    EXPECT_TRUE(HasFocus(IDC_Cancel));
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckPasswordTried));
    EXPECT_EQ(machine.power.awakeHolds, 1);
    List().TickByKey(0);
    EXPECT_TRUE(List().IsTicked(0));
    files->gate.Open();
    ASSERT_TRUE(WaitFor([this] { return IsVisible(IDC_Close); }));
    EXPECT_EQ(machine.power.awakeHolds, 0);
}

TEST_F(CheckWindowWork, CancelGivesTheWindowBackWithinASecondFromAReadThatHangs) {
    Open();
    CloseGate();
    StartCheck();
    ASSERT_TRUE(files->gate.WaitUntilReached());
    const ULONGLONG begin = GetTickCount64();
    Cancel();
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::StoppingRun));
    ASSERT_TRUE(WaitFor([this] { return IsVisible(IDC_Close); }));
    EXPECT_LT(GetTickCount64() - begin, 1500u) << "a second, and what a busy machine takes";
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckStopped));
    EXPECT_FALSE(form->HasWorkEnded()) << "the read still hangs";
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    files->gate.Open();
    Check();
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
}

TEST_F(CheckWindowWork, ClosingWhileItWorksIsAskedAbout) {
    Open();
    CloseGate();
    StartCheck();
    machine.messageBoxes.answers = {box::AnswerNo, box::AnswerYes};
    Close();
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_THAT(LastBox().text, HasSubstr(TextOf(TextId::CheckRuns)));
    Close();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_EQ(machine.power.awakeHolds, 0);
}

TEST_F(CheckWindowWork, TheSessionDoesNotEndWhileItWorks) {
    Open();
    EXPECT_NE(SendMessageW(Window(), WM_QUERYENDSESSION, 0, 0), 0);
    CloseGate();
    StartCheck();
    EXPECT_EQ(SendMessageW(Window(), WM_QUERYENDSESSION, 0, 0), 0);
    files->gate.Open();
    ASSERT_TRUE(WaitFor([this] { return IsVisible(IDC_Close); }));
    EXPECT_NE(SendMessageW(Window(), WM_QUERYENDSESSION, 0, 0), 0);
}

TEST_F(CheckWindowWork, TickedItemsAreRecoveredAndTheOthersLeft) {
    Open();
    List().TickByKey(0);
    Type(IDC_Password, L"Valcoreaux1");
    Click(IDC_Recover);
    ASSERT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 1; }));
    EXPECT_EQ(files->BytesOf(L"D:\\Cible\\C\\Docs\\b.bin"), std::string(3000, 'b'));
    EXPECT_FALSE(files->BytesOf(L"D:\\Cible\\C\\a.txt"));
    EXPECT_EQ(Result(0), L"Non vérifié");
    EXPECT_EQ(Result(1), L"Intact");
    EXPECT_THAT(LastBox().text, HasSubstr(TextOf(TextId::CheckGoodRecovery)));
    Click(IDC_DeselectAll);
    EXPECT_FALSE(IsEnabled(IDC_Recover));
    Click(IDC_SelectAll);
    Click(IDC_Recover);
    ASSERT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 2; }));
    EXPECT_EQ(files->BytesOf(L"D:\\Cible\\C\\a.txt"), "premier");
}

TEST_F(CheckWindowWork, NothingIsRecoveredOntoTheMediumOrWithoutAFolder) {
    Open();
    Type(IDC_Password, L"Valcoreaux1");
    chosenTarget = L"e:\\ici";
    Click(IDC_Recover);
    EXPECT_EQ(LastBox().text, TextOf(TextId::CheckTargetOnMedium));
    chosenTarget.reset();
    Click(IDC_Recover);
    EXPECT_TRUE(form->HasWorkEnded());
    EXPECT_EQ(files->Paths().size(), 2u);
}

TEST_F(CheckWindowWork, TheReportIsSavedOrItsFailureTold) {
    Open();
    EXPECT_FALSE(IsEnabled(IDC_SaveReport));
    Check();
    Click(IDC_SaveReport);
    ASSERT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 2; }));
    EXPECT_THAT(LastBox().text, HasSubstr(L"D:\\rapport.txt"));
    EXPECT_THAT(files->BytesOf(L"D:\\rapport.txt").value_or(""), HasSubstr("C:\\Docs"));
    chosenReport = L"E:\\OKRBACKUP.ZIP";
    Click(IDC_SaveReport);
    ASSERT_TRUE(WaitFor([this] { return machine.messageBoxes.shown.size() == 3; }));
    EXPECT_EQ(LastBox().style, box::Critical);
}

TEST_F(CheckWindowWork, ABackupElsewhereIsBrowsedForAndStaysInTheList) {
    AddMedium(L"F:\\copies\\medium\\");
    Open();
    chosenBackup = L"F:\\copies\\medium";
    Click(IDC_Browse);
    EXPECT_THAT(Lines(IDC_Places), ElementsAre(drives[0], L"F:\\copies\\medium"));
    EXPECT_EQ(Selected(IDC_Places), 1);
    Check();
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckGood));
    Choose(IDC_Places, 0);
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckNotCheckedYet));
    EXPECT_FALSE(IsEnabled(IDC_SaveReport)) << "the report was about another one";
    Click(IDC_Browse);
    EXPECT_EQ(Lines(IDC_Places).size(), 2u);
}

TEST_F(CheckWindowWork, APlaceWithoutABackupSaysSoAndOffersNoRecovery) {
    files->Delete(L"E:\\OKRBACKUP.ZIP");
    files->Delete(L"E:\\_listFich.lst");
    form.emplace(machine.app, ways);
    form->Create();
    form->Show();
    ASSERT_TRUE(WaitFor([this] { return Text(IDC_Verdict) == TextOf(TextId::CheckNoBackup); }));
    EXPECT_FALSE(IsEnabled(IDC_Recover));
    EXPECT_EQ(List().Count(), 0);
}

TEST_F(CheckWindowWork, WithSeveralDrivesNoneIsChosenForTheUser) {
    drives.push_back(L"F:\\ Disque amovible");
    Open();
    EXPECT_EQ(Selected(IDC_Places), -1);
    EXPECT_EQ(Text(IDC_Verdict), TextOf(TextId::CheckChooseFirst));
    EXPECT_FALSE(IsEnabled(IDC_Check));
    Choose(IDC_Places, 0);
    EXPECT_TRUE(WaitFor([this] { return List().Count() == 2; }));
}

TEST_F(CheckWindowWork, ADriveThatGoesTakesItsRowsAndOneThatComesIsListed) {
    Open();
    drives.clear();
    SendMessageW(Window(), WM_DEVICECHANGE, 0x8004, 0);
    EXPECT_TRUE(WaitFor([this] { return Lines(IDC_Places).empty(); }));
    EXPECT_EQ(List().Count(), 0);
    EXPECT_FALSE(IsEnabled(IDC_Check));
    drives = {L"E:\\ Disque amovible"};
    SendMessageW(Window(), WM_COMMAND, IDM_Refresh, 0);
    EXPECT_TRUE(WaitFor([this] { return List().Count() == 2; }));
}

} // namespace
