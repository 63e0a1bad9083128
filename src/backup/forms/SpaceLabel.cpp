#include "backup/forms/SpaceLabel.h"

#include "backup/SpaceFigures.h"

namespace {

constexpr COLORREF Red = 255;

} // namespace

void SpaceLabel::ShowBytes(const Application& app, double bytes) {
    if (shownBytes_ == bytes) return;
    SetText(SpaceFigure(app, captionId_, bytes));
    shownBytes_ = bytes;
}

void SpaceLabel::SetRed(bool isRed) {
    if (isRed == (Color() == Red)) return;
    // Black where the system's scheme has black text.
    if (isRed) {
        SetColor(Red);
    } else {
        ResetColor();
    }
}
