#pragma once

#include "platform/Environment.h"
#include "platform/Text.h"

#include <map>

class FakeEnvironment : public Environment {
  public:
    std::map<std::wstring, std::wstring> variables; ///< by upper-case name
    std::wstring programFolder = L"C:\\Valcoreaux\\Backup";

    void Set(const std::wstring& name, const std::wstring& value) { variables[UpperCase(name)] = value; }

    std::optional<std::wstring> Variable(const std::wstring& name) const override {
        const auto found = variables.find(UpperCase(name));
        if (found == variables.end()) return std::nullopt;
        return found->second;
    }
    std::wstring ProgramFolder() const override { return programFolder; }
};
