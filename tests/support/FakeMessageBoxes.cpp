#include "support/FakeMessageBoxes.h"

std::int16_t FakeMessageBoxes::Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) {
    const Box shownNow = {text, title, style};
    shown.push_back(shownNow);
    if (whileShown) whileShown(shownNow);
    if (answers.empty()) return (style & 0xF) == box::YesNo ? box::AnswerYes : std::int16_t{1};
    const std::int16_t answer = answers.front();
    answers.pop_front();
    return answer;
}
