#include "support/FakeProcesses.h"

#include "platform/RuntimeError.h"

std::int32_t FakeProcesses::Run(const std::wstring& commandLine) {
    commandLines.push_back(commandLine);
    if (!canStart) return 0;
    if (effect) effect(commandLine);
    if (exitCodes.empty()) return 0;
    const std::int32_t exitCode = exitCodes.front();
    exitCodes.pop_front();
    return exitCode;
}

void FakeProcesses::Start(const std::wstring& commandLine) {
    if (!canStart) throw RuntimeError(ErrorNumber::FileNotFound);
    started.push_back(commandLine);
}

void FakeProcesses::Open(const std::wstring& document, const std::wstring& workingFolder) {
    opened.push_back({document, workingFolder});
}
