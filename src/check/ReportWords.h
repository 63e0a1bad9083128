#pragma once

#include "check/BackupReport.h"
#include "check/NumberWords.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Why something failed, as %1 or %3 of the texts that tell it.
std::wstring FailureWords(const RuntimeError& error, const Texts& texts);

/// What a whole check has found, in one sentence.
std::wstring VerdictSentence(const BackupReport& report, const NumberWords& words);
/// What else is to be known of the backup as a whole.
std::vector<std::wstring> Remarks(const BackupReport& report, const Texts& texts);
/// What an item has come to, in one sentence.
std::wstring ItemSentence(const ItemReport& item, const Texts& texts);
/// Why the restore window cannot put the item back, one sentence each.
std::vector<std::wstring> ProblemSentences(const ItemReport& item, const Texts& texts);
/// Whether a finding carries the run-time number of a failure.
bool HasNumber(FileFinding::What what);
std::wstring FindingSentence(const FileFinding& finding, const Texts& texts);

/// All that is to be told of an item.
std::vector<std::wstring> ItemLines(const ItemReport& item, const Texts& texts);
/// What is to be told of the backup as a whole, the verdict last.
std::vector<std::wstring> SummaryLines(const BackupReport& report, const NumberWords& words);
/// Gives the report line by line, as plain text for people.
void TellReport(const BackupReport& report, const NumberWords& words,
                const std::function<void(const std::wstring& line)>& tell);
/// Gives the report piece by piece, as JSON in UTF-8 for programs; docs/backup-check.schema.json describes it.
void TellReportAsJson(const BackupReport& report, const std::function<void(std::string_view piece)>& tell);
