#include "support/FakeSystem.h"

#include "platform/Text.h"
#include "support/CountedHold.h"

void FakeSystem::SetEnvironment(const std::wstring& name, const std::wstring& value) {
    environment[UpperCase(name)] = value;
}

void FakeSystem::SetProfileString(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                                  const std::wstring& value) {
    profileStrings_[{UpperCase(file), UpperCase(section), UpperCase(key)}] = value;
}

std::optional<std::wstring> FakeSystem::Environment(const std::wstring& name) const {
    const auto found = environment.find(UpperCase(name));
    if (found == environment.end()) return std::nullopt;
    return found->second;
}

std::wstring FakeSystem::ProfileString(const std::wstring& file, const std::wstring& section,
                                       const std::wstring& key) const {
    const auto found = profileStrings_.find({UpperCase(file), UpperCase(section), UpperCase(key)});
    return found == profileStrings_.end() ? std::wstring() : found->second.substr(0, 254);
}

void FakeSystem::Sleep(std::uint32_t milliseconds) {
    ++sleeps;
    secondsSinceMidnight += clockSpeed * milliseconds / 1000.0;
}

std::unique_ptr<Hold> FakeSystem::KeepAwake() {
    ++awakeHoldsTaken;
    return std::make_unique<CountedHold>(awakeHolds);
}
