// Rows that no backup writes, among rows that one did.
#include "RestoreWindowBench.h"
#include "resources/TextId.h"

namespace {

TEST_F(RestoreWindow, RowThatNoBackupWritesIsListedSkippedAndReportedOnce) {
    AddBackup(L"E:\\", "C:\\a.txt,32,Zip0001\r\nC:\\Data\\..\\Windows\\b.txt,32,Zip0002\r\nC:\\c.txt,32,Zip3 -so\r\n"
                       "C:\\d.txt,32,Zip0004\r\n");
    OpenFirstDrive();
    ASSERT_EQ(RowCount(), 4);
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    ASSERT_EQ(InnerExtractions().size(), 2u);
    EXPECT_NE(InnerExtractions()[0].find(L"Zip0001.zip"), std::wstring::npos);
    EXPECT_NE(InnerExtractions()[1].find(L"Zip0004.zip"), std::wstring::npos);
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_EQ(machine.messageBoxes.shown[0].text.find(L"Erreur nº 52 (Bad file name or number)"), 0u);
    EXPECT_EQ(machine.messageBoxes.shown[1].text, machine.app.Text(TextId::RestoreDone));
}

TEST_F(RestoreWindow, RowThatNoBackupWritesIsNoMatterWhileItIsNotTicked) {
    AddBackup(L"E:\\", "C:\\a.txt,32,Zip0001\r\nC:\\b\".txt,32,Zip0002\r\n");
    OpenFirstDrive();
    TickByKey(1);
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(InnerExtractions().size(), 1u);
    EXPECT_EQ(machine.messageBoxes.shown.size(), 1u);
}

} // namespace
