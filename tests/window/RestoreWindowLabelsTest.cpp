// The labels under which the restore window's procedures report what they are not expected to meet.
#include "RestoreWindowBench.h"
#include "platform/RuntimeError.h"

#include <limits>
#include <utility>

namespace {

/// The form's real messages, which fail from a moment on.
class FailingMessageLoop : public MessageLoop {
  public:
    bool isFailing = false;

    void RunPending() override {
        if (isFailing) throw RuntimeError(ErrorNumber::OutOfMemory);
        messages_.RunPending();
    }
    void Paint() override { messages_.Paint(); }
    void SetPointer(Pointer pointer) override { messages_.SetPointer(pointer); }

  private:
    FormMessageLoop messages_;
};

WNDPROC listsOwn = nullptr;

/// A list that speaks of lines longer than any memory.
LRESULT CALLBACK GiveEndlessLines(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LB_GETTEXTLEN) return std::numeric_limits<LRESULT>::max() / 8;
    return CallWindowProcW(listsOwn, window, message, wParam, lParam);
}

class RestoreWindowLabels : public RestoreWindow {
  protected:
    void ReplaceListProcedure(WNDPROC procedure) {
        listsOwn = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(At(IDC_lstDrive), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    }
    /// The labels of the reports so far, which are forgotten.
    Texts TakeLabels() {
        static const std::wstring before = L" dans la procédure ";
        Texts labels;
        for (const auto& box : std::exchange(machine.messageBoxes.shown, {})) {
            const std::size_t start = box.text.find(before);
            if (start == std::wstring::npos) continue;
            labels.push_back(box.text.substr(start + before.size()));
            labels.back().resize(labels.back().find(L','));
        }
        return labels;
    }
};

TEST_F(RestoreWindowLabels, DriveThatCannotBeReadFromTheListIsReportedByWhatTheUserDid) {
    AddTwoItems();
    OpenFirstDrive();
    ReplaceListProcedure(GiveEndlessLines);
    TickByKey(0);
    EXPECT_EQ(TakeLabels(), Texts{L"lvFichiersRepertoires_ItemCheck"});
    Click(IDC_cmdToutDeselectionner);
    EXPECT_EQ(TakeLabels(), Texts{L"cmdToutDeselectionner_Click"});
    EXPECT_TRUE(IsTicked(0));
    EXPECT_TRUE(IsTicked(1));
    Click(IDC_cmdToutSelectionner);
    EXPECT_EQ(TakeLabels(), Texts{L"cmdToutSelectionner_Click"});
    for (int time = 0; time < 2; ++time) {
        SendMessageW(form.Handle(), WM_COMMAND, IDC_mnuRaffraichir_Rafraichir, 0);
        EXPECT_EQ(TakeLabels(), Texts{L"mnuRaffraichir_Rafraichir_Click"});
    }
    ReplaceListProcedure(listsOwn);
    TickByKey(0);
    EXPECT_FALSE(IsTicked(0));
    EXPECT_EQ(TakeLabels(), Texts());
}

TEST_F(RestoreWindowLabels, MessagesThatFailDuringARestoreAreReportedByTheStepThatLetThemInAndLoseNoItem) {
    FailingMessageLoop failing;
    machine.app.machine.messageLoop = failing;
    machine.processes.effect = [&](const std::wstring&) { failing.isFailing = true; };
    AddTwoItems();
    OpenFirstDrive();
    dialogs.passwords = {L"Abcdefg1"};
    Click(IDC_cmdLancerRestauration);
    EXPECT_EQ(InnerExtractions().size(), 2u);
    EXPECT_EQ(TakeLabels(), (Texts{L"BloquerBoutons", L"CopierFichRepert", L"CopierFichRepert"}));
    EXPECT_FALSE(form.IsLoaded());
    machine.app.machine.messageLoop = messages;
}

} // namespace
