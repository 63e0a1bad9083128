#include "backup/forms/ProgressControls.h"

/// What stands in the frame goes where the frame is put, whatever the dialog's font makes of its units.
void ProgressControls::LayOut() {
    form_.SetFrame(fProgression.Id(), {lblStatutGravure.Id(), pbProgress.Id(), lblStatutGraveur.Id(),
                                       pbProgressTotal.Id(), cmdStopWrite.Id()});
    fProgression.Move(Place);
    lblStatutGravure.Move({270, 6165, 11340, 210});
    pbProgress.Move({270, 6390, 11340, 210});
    lblStatutGraveur.Move({270, 6705, 11340, 210});
    pbProgressTotal.Move({270, 6930, 11340, 210});
    cmdStopWrite.Move({9750, 7350, 1860, 345});
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
