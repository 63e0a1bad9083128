// Looking around in the folders of the selection control.
#include "SelectionControlBench.h"

namespace {

class FolderBrowsing : public SelectionControlTest {
  protected:
    int HighlightedFolder() const { return Selected(IDC_dlbSelectRep); }
};

TEST_F(FolderBrowsing, FolderThatCannotBeOpenedGivesTheHighlightBackToTheOpenOne) {
    Open();
    machine.files.Deny(L"C:\\Users\\agent\\Documents\\Ventes");
    for (const bool isByKey : {false, true}) {
        if (isByKey) {
            Press(IDC_dlbSelectRep, VK_DOWN);
            EXPECT_EQ(HighlightedFolder(), 4);
            Press(IDC_dlbSelectRep, VK_RETURN);
        } else {
            ClickLine(IDC_dlbSelectRep, 4);
        }
        EXPECT_EQ(HighlightedFolder(), 3) << "the documents, which are still open";
    }
    EXPECT_EQ(machine.messageBoxes.shown.size(), 2u);
    Click(IDC_cmdAjouterRep);
    EXPECT_EQ(Rows(), (Texts{L"1|C:\\Users\\agent\\Documents\\*.*|Répertoire|"}));
}

TEST_F(FolderBrowsing, WithoutAnOpenFolderNothingIsAdded) {
    machine.environment.Set(L"UserProfile", L"C:\\Nobody");
    Open();
    ASSERT_TRUE(Lines(IDC_dlbSelectRep).empty());
    Click(IDC_cmdAjouterRep);
    Click(IDC_cmdAjouterFichier);
    EXPECT_EQ(RowCount(), 0);
    EXPECT_EQ(control->ArrayFichier()->Count(), 0);
    EXPECT_TRUE(machine.messageBoxes.shown.empty());
    EXPECT_TRUE(host.events.empty());
}

} // namespace
