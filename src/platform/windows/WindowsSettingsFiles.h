#pragma once

#include "platform/SettingsFiles.h"

class WindowsSettingsFiles : public SettingsFiles {
  public:
    std::wstring Value(const std::wstring& file, const std::wstring& section, const std::wstring& key) const override;
};
