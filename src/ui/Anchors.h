#pragma once

#include "ui/Form.h"

#include <vector>

namespace ui {

/// Which edges of its form a control keeps its distance from when the user makes the form larger.
struct Anchor {
    int controlId;
    bool left;
    bool top;
    bool right;
    bool bottom;
};

/// Keeps the controls of a form in their places while the user changes its size. No form gets smaller than it was made.
class Anchors {
  public:
    explicit Anchors(Form& form) : form_(form) {}

    /// Takes the form and its controls as they stand now; on a loaded form.
    void Take(const std::vector<Anchor>& anchors);
    /// Moves the controls to where they belong in the form's present size.
    void Apply() const;
    /// Answers WM_GETMINMAXINFO.
    void Limit(MINMAXINFO& limits) const;

  private:
    struct Held {
        Anchor anchor;
        RECT place;
    };

    Form& form_;
    std::vector<Held> held_;
    HWND window_ = nullptr; ///< the window that they were taken from
    SIZE inner_ = {};
    SIZE outer_ = {};
};

} // namespace ui
