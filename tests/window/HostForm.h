#pragma once

#include "TestFormIds.h"
#include "ui/Form.h"

#include <gtest/gtest.h>

/// A window for a control to stand in.
class HostForm : public ui::Form {
  public:
    HostForm() : ui::Form(IDD_TestForm) {}

  protected:
    void OnUnhandledException() noexcept override { ADD_FAILURE() << "a handler let something through"; }
};
