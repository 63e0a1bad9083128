#pragma once

#include <array>
#include <cstdint>
#include <optional>

class Application;

/// A language of the program: what differs by language beside the texts of Strings.def.
struct LanguageDescription {
    std::int32_t textOffset;                  ///< added to a text's number
    const wchar_t* windowsName;               ///< what Windows calls it in its own words; none where it is the fallback
    std::optional<std::int32_t> settingsCode; ///< by which the settings file of the sibling program asks for it
    const wchar_t* guide;                     ///< file name of the user's guide
    const wchar_t* documentsFolder;           ///< what Windows XP calls the folder in the profile
    bool isDayBeforeMonth;
    const wchar_t* usbQuestion;
    const wchar_t* usbQuestionTitle;
    std::uint32_t usbQuestionBox; ///< buttons, icon and default button
};

/// Every language; the last is taken where no other is asked for.
extern const std::array<LanguageDescription, 2> Languages;

/// The language that the windows speak. Throws 9 when `lngLangue` is no language's.
const LanguageDescription& LanguageOf(const Application& app);
