#pragma once

#include "shell/MainWindow.h"

#include <vector>

/// The main window as the windows over it see it.
class FakeMainWindow : public MainWindow {
  public:
    std::vector<bool> fullExits; ///< every value that was set

    bool FullExit() const override { return !fullExits.empty() && fullExits.back(); }
    void SetFullExit(bool vbExit) override { fullExits.push_back(vbExit); }
};
