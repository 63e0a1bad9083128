#include "shell/forms/ApplicationForm.h"
#include "TestFormIds.h"
#include "platform/RuntimeError.h"
#include "support/FakeMachine.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// A form with a button whose handler keeps nothing to itself.
class TroubledForm : public ApplicationForm {
  public:
    explicit TroubledForm(Application& app) : ApplicationForm(app, IDD_TestForm, L"frmTroubled") {
        testButton_.OnClick([] { throw RuntimeError(ErrorNumber::OutOfMemory); });
    }
    void ClickTheButton() { testButton_.Click(); }

  private:
    ui::Button testButton_{*this, IDC_testButton};
};

TEST(ApplicationForm, StaysWhenNotEvenTheReportOfAFailureCanBeMadeAndReportsTheNextOne) {
    FakeMachine machine;
    TroubledForm form(machine.app);
    form.Create();
    machine.messageBoxes.whileShown = [](const auto&) { throw RuntimeError(ErrorNumber::OutOfMemory); };
    form.ClickTheButton();
    EXPECT_TRUE(form.IsLoaded());
    machine.messageBoxes.whileShown = nullptr;
    form.ClickTheButton();
    ASSERT_EQ(machine.messageBoxes.shown.size(), 2u);
    EXPECT_NE(machine.messageBoxes.shown[1].text.find(L"WindowProc, module frmTroubled"), std::wstring::npos);
}

} // namespace
