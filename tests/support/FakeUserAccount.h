#pragma once

#include "platform/UserAccount.h"

class FakeUserAccount : public UserAccount {
  public:
    std::wstring name = L"agent";
    std::wstring profileFolder = L"C:\\Users\\agent";

    std::wstring Name() const override { return name; }
    std::wstring ProfileFolder() const override { return profileFolder; }
};
