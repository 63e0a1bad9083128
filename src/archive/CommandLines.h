#pragma once

#include <string>

/// The archiver's file name.
inline constexpr const wchar_t* ArchiverName = L"7Za.exe";

/// A path with every piece but the first in double quotes: C:\"Mes documents"\"Projets".
std::wstring SegmentQuoted(const std::wstring& path);

/// The folder of a path, likewise quoted and ending in a backslash: C:\"Mes documents"\.
std::wstring SegmentQuotedFolderOf(const std::wstring& path);

/// The archiver's command lines. `programFolder` stands in them unquoted, and so does the password: one with a blank or
/// a double quote breaks the line, and media that were made so are opened the same way.
std::wstring PackFolderCommand(const std::wstring& programFolder, const std::wstring& source,
                               const std::wstring& destination);
std::wstring PackFileCommand(const std::wstring& programFolder, const std::wstring& source,
                             const std::wstring& destination);
std::wstring PackFinalCommand(const std::wstring& programFolder, const std::wstring& source,
                              const std::wstring& destination, const std::wstring& password);
std::wstring UnpackOuterCommand(const std::wstring& programFolder, const std::wstring& archive,
                                const std::wstring& workFolder, const std::wstring& password);
std::wstring UnpackInnerCommand(const std::wstring& programFolder, const std::wstring& workFolder,
                                const std::wstring& restorePath, const std::wstring& innerName);
