#pragma once

#include "backup/DiscSide.h"
#include "ui/Controls.h"

#include <optional>
#include <vector>

/// The backup window's lists of disc writers and of their write speeds.
class WriterLists {
  public:
    /// All outlive it.
    WriterLists(ui::ComboBox& writers, ui::ComboBox& speeds, DiscSide& discs)
        : writersBox_(writers), speedsBox_(speeds), discs_(discs) {}

    /// Lists the writers that are there now and selects the current one, else the first.
    void FillWriters();
    /// Probes the current writer and lists what it takes; the speed that was chosen stays chosen where it is offered,
    /// else the fastest is.
    void FillSpeeds();
    /// Nothing when the list is empty.
    std::optional<double> SelectedSpeed() const;

  private:
    ui::ComboBox& writersBox_;
    ui::ComboBox& speedsBox_;
    DiscSide& discs_;
    std::vector<WriteSpeed> speeds_;
};
