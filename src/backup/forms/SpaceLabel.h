#pragma once

#include "core/Application.h"
#include "ui/Controls.h"

#include <optional>

/// A label with an amount of space. Thousands of items may be added in a row, each with its look at the amounts: only
/// what changes is written.
class SpaceLabel : public ui::Label {
  public:
    /// Text `captionId` says what the amount is.
    SpaceLabel(ui::Form& form, int controlId, TextId captionId) : Label(form, controlId), captionId_(captionId) {}

    void ShowBytes(const Application& app, double bytes);
    void SetRed(bool isRed);
    /// Something else was written to the label meanwhile.
    void Forget() { shownBytes_.reset(); }

  private:
    TextId captionId_;
    std::optional<double> shownBytes_;
};
