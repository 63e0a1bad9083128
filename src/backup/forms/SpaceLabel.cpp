#include "backup/forms/SpaceLabel.h"

#include "backup/SpaceFigures.h"

namespace {

constexpr COLORREF Red = 255;
constexpr COLORREF Black = 0;

} // namespace

void SpaceLabel::ShowBytes(const Application& app, double bytes) {
    if (shownBytes_ == bytes) return;
    SetText(SpaceFigure(app, captionId_, bytes));
    shownBytes_ = bytes;
}

void SpaceLabel::SetRed(bool isRed) {
    const COLORREF color = isRed ? Red : Black;
    if (Color() != color) SetColor(color);
}
