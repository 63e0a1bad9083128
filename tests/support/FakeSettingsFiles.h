#pragma once

#include "platform/SettingsFiles.h"
#include "platform/Text.h"

#include <map>
#include <tuple>

class FakeSettingsFiles : public SettingsFiles {
  public:
    void Set(const std::wstring& file, const std::wstring& section, const std::wstring& key,
             const std::wstring& value) {
        values_[{UpperCase(file), UpperCase(section), UpperCase(key)}] = value;
    }

    std::wstring Value(const std::wstring& file, const std::wstring& section, const std::wstring& key) const override {
        const auto found = values_.find({UpperCase(file), UpperCase(section), UpperCase(key)});
        return found == values_.end() ? std::wstring() : found->second.substr(0, 254);
    }

  private:
    std::map<std::tuple<std::wstring, std::wstring, std::wstring>, std::wstring> values_;
};
