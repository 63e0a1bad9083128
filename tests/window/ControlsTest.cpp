#include "TestForm.h"
#include "ui/ToolTips.h"

#include <gtest/gtest.h>

namespace {

TEST(Controls, TextColorIsKeptPerLabel) {
    TestForm form;
    form.Create();
    form.testLabel.SetColor(RGB(255, 0, 0));
    EXPECT_EQ(form.testLabel.Color(), 255u);
    form.testLabel.SetColor(0);
    EXPECT_EQ(form.testLabel.Color(), 0u);
}

TEST(ToolTips, EmptyTextTakesTheTipAway) {
    TestForm form;
    form.Create();
    ui::ToolTips tips(form);
    tips.Set(form.testButton, L"Aucun graveur");
    EXPECT_EQ(tips.Text(form.testButton), L"Aucun graveur");
    tips.Set(form.testButton, L"");
    EXPECT_EQ(tips.Text(form.testButton), L"");
}

} // namespace
