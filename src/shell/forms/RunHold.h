#pragma once

#include "platform/Power.h"
#include "ui/SessionEndHold.h"

#include <memory>
#include <string>
#include <utility>

/// While it lives, the computer stays awake and Windows does not end the session, for the reason that it shows.
class RunHold final : public Hold {
  public:
    RunHold(std::unique_ptr<Hold> awake, ui::Form& form, const std::wstring& reason)
        : awake_(std::move(awake)), session_(form, reason) {}

  private:
    std::unique_ptr<Hold> awake_;
    ui::SessionEndHold session_;
};
