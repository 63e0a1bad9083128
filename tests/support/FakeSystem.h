#pragma once

#include "platform/System.h"

#include <array>
#include <map>
#include <tuple>
#include <vector>

/// A workstation as plain data: Windows 10 in French, unless told otherwise.
class FakeSystem : public System {
  public:
    OsVersion version = {2, 10, 0};
    std::map<std::wstring, std::wstring> environment; ///< by upper-case name
    std::wstring userLanguageName = L"français";
    std::wstring decimalSeparator = L",";
    std::array<std::wstring, 12> months = {L"janv.", L"févr.", L"mars",  L"avr.", L"mai",  L"juin",
                                           L"juil.", L"août",  L"sept.", L"oct.", L"nov.", L"déc."};
    std::wstring profileFolder = L"C:\\Users\\agent";
    std::wstring accountName = L"agent";
    std::wstring programFolder = L"C:\\Valcoreaux\\Backup";
    LocalTime now = {2026, 3, 14, 15, 9, 26};
    double secondsSinceMidnight = 54566.0; ///< Sleep moves it on
    double clockSpeed = 1;                 ///< how many times its length a Sleep takes

    int sleeps = 0;
    int awakeHolds = 0;      ///< alive now
    int awakeHoldsTaken = 0; ///< ever

    void SetEnvironment(const std::wstring& name, const std::wstring& value);
    void SetProfileString(const std::wstring& file, const std::wstring& section, const std::wstring& key,
                          const std::wstring& value);

    OsVersion Version() const override { return version; }
    std::optional<std::wstring> Environment(const std::wstring& name) const override;
    std::wstring UserLanguageName() const override { return userLanguageName; }
    std::wstring DecimalSeparator() const override { return decimalSeparator; }
    std::wstring AbbreviatedMonth(int month) const override { return months.at(static_cast<std::size_t>(month - 1)); }
    std::wstring ProfileString(const std::wstring& file, const std::wstring& section,
                               const std::wstring& key) const override;
    std::wstring ProfileFolder() const override { return profileFolder; }
    std::wstring AccountName() const override { return accountName; }
    std::wstring ProgramFolder() const override { return programFolder; }
    LocalTime Now() const override { return now; }
    double SecondsSinceMidnight() const override { return secondsSinceMidnight; }
    void Sleep(std::uint32_t milliseconds) override;
    std::unique_ptr<Hold> KeepAwake() override;

  private:
    std::map<std::tuple<std::wstring, std::wstring, std::wstring>, std::wstring> profileStrings_;
};
