#pragma once

#include <string>
#include <vector>

/// Parts a command line into words. Double quotes hold blanks together and nothing else has a meaning, so that a quoted
/// folder may end in a backslash; the first word is the program.
std::vector<std::wstring> CommandWords(const std::wstring& commandLine);
