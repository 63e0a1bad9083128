#pragma once

#include "core/Application.h"

#include <string>

/// The folder that holds `folder`, without a trailing backslash: "C:" for a folder at a drive root.
/// Throws 5 (invalid call) for a path without a backslash.
std::wstring ParentFolder(const std::wstring& folder);

/// Free bytes on the drive that archives are built and opened on, which is the program's own, or where the program's
/// folder lies when that has no drive letter; 0 when neither can be measured.
double MeasureWorkDrive(const Application& app);

/// Reads who uses the program: the profile folder, its last part and the account name.
void ReadUser(Application& app);

/// The window title: text 101 and the program's version.
std::wstring MainWindowTitle(const Application& app);

/// Opens the help document of the language; a missing one gives no message.
void OpenHelp(Application& app);
