#pragma once

#include "check/CheckWork.h"
#include "check/ReportWords.h"
#include "platform/Console.h"

#include <string>
#include <variant>

/// A command line that was understood.
struct CheckCommand {
    CheckRequest request;
    std::optional<std::wstring> passwordFile; ///< "-" is standard input
    std::optional<std::wstring> reportFile;
};

/// A command line that was not: a text and the word that it is about.
struct CommandFault {
    TextId text = {};
    std::wstring word;
};

/// Understands the words behind the program's name; they are not empty.
std::variant<CheckCommand, CommandFault> ReadCommand(const std::vector<std::wstring>& words);

/// The password in the bytes of a file or of standard input: its first line, in the system's ANSI code page.
std::wstring PasswordIn(std::string_view bytes);

/// Does what the words ask for and gives the exit code of the program.
int RunCommand(FileStore& files, Console& console, const NumberWords& numbers, const std::vector<std::wstring>& words,
               const std::wstring& profileFolder);
