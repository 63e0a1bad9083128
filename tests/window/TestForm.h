#pragma once

#include "TestFormIds.h"
#include "ui/Controls.h"
#include "ui/ListView.h"

#include <functional>

/// A form with one control of each kind, which counts what happens to it.
class TestForm : public ui::Form {
  public:
    TestForm() : ui::Form(IDD_TestForm) {}

    ui::Button testButton{*this, IDC_testButton};
    ui::Button testCancel{*this, IDC_testCancel};
    ui::Label testLabel{*this, IDC_testLabel};
    ui::Frame testFrame{*this, IDC_testFrame};
    ui::TextBox testText{*this, IDC_testText};
    ui::ListView testList{*this, IDC_testList};
    ui::ProgressBarControl testProgress{*this, IDC_testProgress};

    int loads = 0;
    int activations = 0;
    int unloads = 0;
    int unhandled = 0;
    bool mayClose = true;
    std::function<void()> whenActivated;

  protected:
    void OnLoad() override { ++loads; }
    void OnActivate() override {
        ++activations;
        if (whenActivated) whenActivated();
    }
    bool OnClosing() override { return mayClose; }
    void OnUnload() override { ++unloads; }
    void OnUnhandledException() noexcept override { ++unhandled; }
};
