#pragma once

#include "check/BackupReport.h"
#include "check/ReportWords.h"
#include "platform/FileStore.h"

#include <string>

/// Throws 70 when a file of that path would lie on the medium of a backup, or be a part of the backup.
void RequireOffBackup(const FileStore& files, const std::wstring& archive, const std::wstring& path,
                      const Texts& texts);

/// Writes the report to a file: plain text where its name ends in ".txt", JSON otherwise. A file of that name is
/// replaced once the report is whole, but never one that the report is about, nor is anything written to the medium:
/// that throws 70, and everything else what writing meets.
void WriteReport(FileStore& files, const BackupReport& report, const std::wstring& path, const NumberWords& words);
