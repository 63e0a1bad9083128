#pragma once

#include "check/ReportWords.h"

#include <string>
#include <vector>

/// All lines of a report.
inline std::vector<std::wstring> ReportLines(const BackupReport& report, const NumberWords& words) {
    std::vector<std::wstring> lines;
    TellReport(report, words, [&](const std::wstring& line) { lines.push_back(line); });
    return lines;
}

/// A report as JSON, in one piece.
inline std::string ReportJson(const BackupReport& report) {
    std::string json;
    TellReportAsJson(report, [&](std::string_view piece) { json += piece; });
    return json;
}
