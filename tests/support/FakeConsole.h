#pragma once

#include "platform/Console.h"
#include "platform/RuntimeError.h"

#include <optional>
#include <vector>

/// A console as plain data.
class FakeConsole final : public Console {
  public:
    std::vector<std::wstring> lines;  ///< shown, in order
    std::optional<std::string> input; ///< nothing when there is none
    bool isStopAsked = false;

    void Line(const std::wstring& text) override { lines.push_back(text); }
    std::string Input() override {
        if (!input) throw RuntimeError(ErrorNumber::InputPastEndOfFile);
        std::string first = input->substr(0, input->find('\n'));
        if (first.ends_with('\r')) first.pop_back();
        return first;
    }
    bool IsStopAsked() const override { return isStopAsked; }
};
