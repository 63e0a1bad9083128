#include "backup/forms/ProgressControls.h"

namespace {

constexpr int BarHeightTwips = 270;

constexpr ui::BoundsTwips ButtonPlace(int column) {
    return {5850 + column * 1950, 7350, 1860, 345};
}

} // namespace

/// What stands in the frame goes where the frame is put, whatever the dialog's font makes of its units.
void ProgressControls::LayOut(ui::Control& back, ui::Control& launch, ui::Control& quit, ui::StatusBar& bar) {
    form_.SetFrame(fProgression.Id(), {lblStatutGravure.Id(), pbProgress.Id(), lblStatutGraveur.Id(),
                                       pbProgressTotal.Id(), cmdStopWrite.Id()});
    fProgression.Move(Place);
    lblStatutGravure.Move({270, 6165, 11340, 210});
    pbProgress.Move({270, 6390, 11340, 210});
    lblStatutGraveur.Move({270, 6705, 11340, 210});
    pbProgressTotal.Move({270, 6930, 11340, 210});
    back.Move(ButtonPlace(0));
    for (ui::Control* button : {&launch, static_cast<ui::Control*>(&cmdStopWrite)}) button->Move(ButtonPlace(1));
    quit.Move(ButtonPlace(2));
    form_.SetInnerHeightTwips(BottomTwips + BarHeightTwips);
    bar.Move({0, BottomTwips, form_.InnerWidthTwips(), BarHeightTwips});
}

void ProgressControls::Show(bool isVisible) {
    fProgression.Enable(isVisible);
    fProgression.Show(isVisible);
    fProgression.Move(Place);
    cmdStopWrite.Enable(isVisible);
}

void ProgressControls::HideStep() {
    pbProgress.Show(false);
    lblStatutGraveur.Show(false);
}
