#pragma once

#include "core/Currency.h"

#include <cstdint>
#include <string>

class DiscWriters;
class Drives;
class EventLog;
class Files;
class MessageBoxes;
class MessageLoop;
class Processes;
class StringTable;
class System;
class UsbDevices;

enum class TextId : int;

/// What the program asks of the machine. Every reference outlives the Application that borrows it.
struct Machine {
    StringTable& strings;
    Drives& drives;
    UsbDevices& usb;
    Files& files;
    Processes& processes;
    System& system;
    EventLog& eventLog;
    MessageBoxes& messageBoxes;
    MessageLoop& messageLoop;
    DiscWriters& discWriters;
};

enum class PasswordMode : std::int16_t { Creation = 1, Entry = 2 };

/// The values that one unit sets and others read, and the way to the machine. Made once, handed down by reference;
/// used on the user-interface thread only.
class Application {
  public:
    explicit Application(const Machine& theMachine);
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    Machine machine;

    std::int32_t lngLangue = 0; ///< 0 French, 10000 English
    bool blnLangueWindows = false;
    std::wstring strRepRacine;      ///< parent of the program's folder, no trailing backslash
    double dblEspaceDisponible = 0; ///< bytes free on the program's drive at start-up

    Currency requiredSpace;            ///< bytes, each item's size with its margin
    Currency availableSpace;           ///< bytes that the medium takes
    std::int64_t archiveSizeBytes = 0; ///< of the finished or the inserted OKRBACKUP.ZIP

    std::wstring backupPassword;
    PasswordMode passwordMode = PasswordMode::Creation;
    std::int16_t passwordResult = 0; ///< 1 when a password was accepted

    std::wstring strProfilUtilisateur; ///< the user's profile folder, no trailing backslash
    std::wstring strNomUtilisateur;    ///< the last part of the profile folder
    std::wstring accountName;

    std::int16_t blnQuestionUSB = 0;
    std::int16_t intReponseUSB = 0; ///< 0 not answered, 6 yes, 7 no

    std::wstring listFilePath;       ///< the control file last written
    std::uint64_t listFilePrint = 0; ///< tells its content from any other

    bool hasWriterError = false;      ///< raised by every error event of a disc writer
    bool isCancelRequested = false;   ///< makes progress events stop the write
    bool areFileMessagesHeld = false; ///< keeps messages from being handled between files added to an image

    /// The text in the user's language: the string of number `lngLangue` + `id`.
    std::wstring Text(TextId id) const;

    /// Shows text `id` in a modal box titled `titleId`, or "Backup" when that is None; gives the button pressed.
    std::int16_t ShowMessage(TextId id, TextId titleId, std::uint32_t style);
    /// The same for a text that was put together.
    std::int16_t ShowMessage(const std::wstring& text, TextId titleId, std::uint32_t style);

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
