#pragma once

#include "platform/Environment.h"

class WindowsEnvironment : public Environment {
  public:
    std::optional<std::wstring> Variable(const std::wstring& name) const override;
    std::wstring ProgramFolder() const override;
};
