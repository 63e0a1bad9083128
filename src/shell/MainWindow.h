#pragma once

/// The main window as the windows that it opens see it.
class MainWindow {
  public:
    virtual ~MainWindow() = default;
    /// Whether the whole program ends as soon as the window that the main window opened has closed; false at first.
    virtual bool FullExit() const = 0;
    virtual void SetFullExit(bool vbExit) = 0;
};
