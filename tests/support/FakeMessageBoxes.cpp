#include "support/FakeMessageBoxes.h"

int FakeMessageBoxes::Show(const std::wstring& text, const std::wstring& title, std::uint32_t style) {
    const Box shownNow = {text, title, style};
    shown.push_back(shownNow);
    if (whileShown) whileShown(shownNow);
    if (answers.empty()) return (style & 0xF) == box::YesNo ? box::AnswerYes : 1;
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}
