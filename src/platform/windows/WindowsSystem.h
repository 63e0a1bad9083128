#pragma once

#include "platform/System.h"

class WindowsSystem : public System {
  public:
    OsVersion Version() const override;
    std::optional<std::wstring> Environment(const std::wstring& name) const override;
    std::wstring UserLanguageName() const override;
    std::wstring DecimalSeparator() const override;
    std::wstring AbbreviatedMonth(int month) const override;
    std::wstring ProfileString(const std::wstring& file, const std::wstring& section,
                               const std::wstring& key) const override;
    std::wstring ProfileFolder() const override;
    std::wstring AccountName() const override;
    std::wstring ProgramFolder() const override;
    LocalTime Now() const override;
    double SecondsSinceMidnight() const override;
    void Sleep(std::uint32_t milliseconds) override;
    /// The hold belongs to the calling thread and must end on it.
    std::unique_ptr<Hold> KeepAwake() override;
};
