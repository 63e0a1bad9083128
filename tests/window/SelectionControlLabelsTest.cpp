// The labels under which the selection control reports, its boxes and its headers.
#include "SelectionControlBench.h"

#include "low_memory/AllocationFailure.h"

namespace {

class SelectionControlLabels : public SelectionControlTest {
  protected:
    void ExpectOneReport(const std::wstring& label) {
        ASSERT_EQ(machine.messageBoxes.shown.size(), 1u);
        EXPECT_NE(machine.messageBoxes.shown[0].text.find(L" dans la procédure " + label + L", module frmBackupCD à"),
                  std::wstring::npos)
            << machine.messageBoxes.shown[0].text;
        machine.messageBoxes.shown.clear();
    }
    /// A line in the file list of which the folder knows nothing.
    void SelectForeignFile() {
        const LRESULT row = SendMessageW(At(IDC_flbSelectFichier), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"zz"));
        SelectLines({static_cast<int>(row)});
    }
};

TEST_F(SelectionControlLabels, CaptionsThatCannotBeLoadedAreReported) {
    for (const int text : {225, 230, 287, 288, 289}) {
        machine.strings.outOfMemoryAt = text;
        Open();
        ExpectOneReport(L"InitCaptions");
        control.reset();
        parent.Unload();
    }
}

TEST_F(SelectionControlLabels, EveryWayToAddFilesReportsUnderItsOwn) {
    Open();
    SelectForeignFile();
    Click(IDC_cmdAjouterFichier);
    ExpectOneReport(L"cmdAjouterFichier_Click");
    SendMessageW(control->Handle(), WM_COMMAND, MAKEWPARAM(IDC_flbSelectFichier, LBN_DBLCLK), 0);
    ui::RunPendingMessages();
    ExpectOneReport(L"flbSelectFichier_DblClick");
    EXPECT_EQ(RowCount(), 0);
}

TEST_F(SelectionControlLabels, FolderAndDriveThatCannotBeOpenedAreReportedUnderTheirOwn) {
    Open();
    ChooseDrive(3);
    ExpectOneReport(L"dlbSelectLecteur_Change");
    machine.files.Deny(L"C:\\Users\\agent");
    Click(IDC_cmdAjouterRep);
    ExpectOneReport(L"cmdAjouterRep_Click");
    EXPECT_EQ(RowCount(), 1) << "the folder itself was added";
}

TEST_F(SelectionControlLabels, DisablingThatFindsNoMemoryIsReported) {
    Open();
    {
        const AllocationFailure failure(1);
        control->SetEnabled(false);
        ASSERT_TRUE(failure.HasHappened());
    }
    ExpectOneReport(L"Enabled");
}

TEST_F(SelectionControlLabels, DisabledControlLeavesAllFourBoxesAsTheyAre) {
    AddListFile(L"vexal.lst", "D:\\Data\\x.dat");
    AddListFile(L"qamor.lst", "D:\\Data\\y.dat");
    AddListFile(L"tarvel.lst", "D:\\Data\\z.dat");
    AddListFile(L"outlookVista.lst", "D:\\Data");
    Open();
    control->SetEnabled(false);
    for (const int id : {IDC_chkSauvOKR0, IDC_chkSauvOKR1, IDC_chkSauvOKR2, IDC_chkSauvOKR3}) {
        EXPECT_TRUE(IsEnabled(id)) << id;
        EXPECT_EQ(State(id), BST_CHECKED) << id;
    }
}

} // namespace
