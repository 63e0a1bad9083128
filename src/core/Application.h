#pragma once

#include "core/Machine.h"
#include "core/Part.h"

#include <cstdint>
#include <string>

enum class TextId : int;
struct ArchiveValues;
struct LanguageValues;
struct SpaceValues;
struct StartUpValues;
struct UsbAnswer;
struct UserValues;
struct WriterFlags;

/// The values that one unit sets and others read, grouped by who sets them, and the way to the machine. Made once,
/// handed down by reference; a constant one lets values be read and ports be asked, and changes nothing. Used on the
/// user-interface thread only.
class Application {
  public:
    explicit Application(Machine theMachine);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    Machine machine;

    // Each group has its header, for those who use it.
    Part<LanguageValues> language;
    Part<StartUpValues> startUp;
    Part<UserValues> user;
    Part<UsbAnswer> usbAnswer;
    Part<SpaceValues> space;
    Part<ArchiveValues> archive;
    Part<WriterFlags> writerFlags;

    /// The text in the user's language: the string of number `lngLangue` + `id`.
    std::wstring Text(TextId id) const;

    /// Shows text `id` in a modal box titled `titleId`, or "Backup" when that is None; gives the button pressed.
    int ShowMessage(TextId id, TextId titleId, std::uint32_t style);
    /// The same for a text that was put together.
    int ShowMessage(const std::wstring& text, TextId titleId, std::uint32_t style);

    /// The program's own folder, without a trailing backslash unless it is a root.
    const std::wstring& ProgramFolder() const { return programFolder_; }
    /// The folder in which archives are built and opened: the program's folder + "\zip".
    std::wstring WorkFolder() const;
    /// Where the predefined list files lie, with a trailing backslash.
    std::wstring ListFileFolder() const;

  private:
    std::wstring programFolder_;
};

/// The title of a message box that has none of its own.
inline constexpr const wchar_t* DefaultTitle = L"Backup";

/// "major.minor.revision" of this program.
std::wstring VersionText();
