#include "TestPrograms.h"

#include "Console.h"
#include "uidriver/Protocol.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <fstream>

namespace kit {

namespace {

constexpr DWORD LimitMilliseconds = 20 * 60 * 1000;
constexpr DWORD LookMilliseconds = 100;
constexpr std::size_t DetailLimit = 2000;

/// Gives the exit code.
DWORD RunInto(const std::filesystem::path& output, std::wstring commandLine, const std::filesystem::path& folder) {
    SECURITY_ATTRIBUTES isInheritable{sizeof isInheritable, nullptr, TRUE};
    const UniqueFile file(CreateFileW(output.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &isInheritable, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = file.Get();
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &startup,
                        &started))
        throw Failure(L"cannot be started, error " + std::to_wstring(GetLastError()) + L": " + commandLine);
    const UniqueObject process(started.hProcess);
    const UniqueObject thread(started.hThread);
    const ULONGLONG end = GetTickCount64() + LimitMilliseconds;
    while (WaitForSingleObject(process.Get(), LookMilliseconds) == WAIT_TIMEOUT) {
        if (!IsEndWished() && GetTickCount64() < end) continue;
        TerminateProcess(process.Get(), 1);
        throw Failure(IsEndWished() ? Say({L"interrompu", L"broken off"}) : L"no end after 20 minutes");
    }
    DWORD code = 0;
    GetExitCodeProcess(process.Get(), &code);
    return code;
}

/// What a test program's output says, line by line.
class TestLog {
  public:
    explicit TestLog(Report& report) : report_(report) {}

    void Read(const std::filesystem::path& output) {
        std::ifstream stream(output, std::ios::binary);
        for (std::string line; std::getline(stream, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            Take(line);
        }
    }
    int Count() const { return count_; }

  private:
    void Take(const std::string& line) {
        if (line.starts_with("[ RUN      ] "))
            detail_.clear();
        else if (!IsEnd(line, "[       OK ] ", Outcome::Passed) && !IsEnd(line, "[  FAILED  ] ", Outcome::Failed) &&
                 !IsEnd(line, "[  SKIPPED ] ", Outcome::Skipped) && detail_.size() < DetailLimit)
            detail_ += line + "\n";
    }
    /// Only the end of a test tells its time; the sum at the end names the failed ones again without it.
    bool IsEnd(const std::string& line, const std::string& mark, Outcome outcome) {
        if (!line.starts_with(mark) || !line.ends_with(" ms)")) return false;
        const std::string said = outcome == Outcome::Passed ? "" : detail_;
        report_.Add(outcome, uidriver::FromUtf8(line.substr(mark.size())), uidriver::FromUtf8(said));
        ++count_;
        return true;
    }

    Report& report_;
    std::string detail_;
    int count_ = 0;
};

} // namespace

void RunTests(const std::filesystem::path& program, const std::wstring& filter, const std::filesystem::path& scratch,
              Report& report) {
    const std::filesystem::path output = scratch / (program.stem().wstring() + L".txt");
    report.Step({L"programme d'essai", L"test program"}, [&] {
        const DWORD code =
            RunInto(output, L"\"" + program.wstring() + L"\" --gtest_color=no --gtest_filter=" + filter, scratch);
        TestLog log(report);
        log.Read(output);
        std::wstring said = program.filename().wstring() + L": " + std::to_wstring(log.Count()) +
                            Say({L" essais, code de fin ", L" tests, exit code "}) + std::to_wstring(code);
        if (code != 0 || log.Count() == 0) throw Failure(said);
        return said;
    });
}

} // namespace kit
