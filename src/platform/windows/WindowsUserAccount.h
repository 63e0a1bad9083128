#pragma once

#include "platform/UserAccount.h"

class WindowsUserAccount : public UserAccount {
  public:
    std::wstring Name() const override;
    std::wstring ProfileFolder() const override;
};
