// Every measure of a window hangs on its font: in another one than users have, what fits here is cut there.
#include "TestForm.h"

#include <gtest/gtest.h>

namespace {

TEST(DialogFontTest, FormsAreShownInTheFontThatUsersHave) {
    TestForm form;
    form.Create();
    const HDC context = GetDC(form.Handle());
    const HGDIOBJ before =
        SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(form.Handle(), WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics{};
    GetTextMetricsW(context, &metrics);
    SIZE digits{};
    GetTextExtentPoint32W(context, L"0123456789", 10, &digits);
    SelectObject(context, before);
    ReleaseDC(form.Handle(), context);
    // Tahoma of 8 points on a screen of 96 dots an inch.
    EXPECT_EQ(metrics.tmHeight, 13);
    EXPECT_EQ(metrics.tmAscent, 11);
    EXPECT_EQ(digits.cx, 60);
    form.Unload();
}

} // namespace
