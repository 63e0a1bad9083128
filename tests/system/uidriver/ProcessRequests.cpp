#include "Requests.h"
#include "window/HandleCount.h"

#include <windows.h>

#include <psapi.h>

#include <utility>

namespace uidriver {

namespace {

class Process {
  public:
    explicit Process(HANDLE handle) : handle_(handle) {}
    Process(Process&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Process& operator=(Process&&) = delete;
    ~Process() {
        if (handle_ != nullptr) CloseHandle(handle_);
    }
    HANDLE Get() const { return handle_; }

  private:
    HANDLE handle_;
};

std::map<DWORD, Process>& StartedProcesses() {
    static std::map<DWORD, Process> processes;
    return processes;
}

HANDLE StartedProcess(const Row& fields) {
    const auto found = StartedProcesses().find(static_cast<DWORD>(NumberAt(fields, 1)));
    if (found == StartedProcesses().end()) throw RequestError("not started here");
    return found->second.Get();
}

// start FOLDER COMMANDLINE: the new process's id
Rows Start(const Row& fields) {
    if (fields.size() != 3) throw RequestError("start needs a folder and a command line");
    std::wstring commandLine = fields[2];
    // The driver's own standard handles carry its protocol; what the program's children print must not get into it.
    SECURITY_ATTRIBUTES isInheritable{sizeof isInheritable, nullptr, TRUE};
    const Process nowhere(CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      &isInheritable, OPEN_EXISTING, 0, nullptr));
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = startup.hStdOutput = startup.hStdError = nowhere.Get();
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, fields[1].c_str(), &startup,
                        &started))
        throw RequestError("cannot start, error " + std::to_string(GetLastError()));
    CloseHandle(started.hThread);
    StartedProcesses().emplace(started.dwProcessId, Process(started.hProcess));
    return {{Number(started.dwProcessId)}};
}

// state PID: empty while it runs, then its exit code
Rows State(const Row& fields) {
    const HANDLE process = StartedProcess(fields);
    if (WaitForSingleObject(process, 0) == WAIT_TIMEOUT) return {{L""}};
    DWORD exitCode = 0;
    GetExitCodeProcess(process, &exitCode);
    return {{Number(exitCode)}};
}

Rows Kill(const Row& fields) {
    TerminateProcess(StartedProcess(fields), 1);
    return {};
}

// usage PID: private bytes now and at their peak, handles, GDI objects, user objects
Rows Usage(const Row& fields) {
    const HANDLE process = StartedProcess(fields);
    PROCESS_MEMORY_COUNTERS_EX memory{};
    GetProcessMemoryInfo(process, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory);
    return {{Number(static_cast<std::int64_t>(memory.PrivateUsage)),
             Number(static_cast<std::int64_t>(memory.PeakPagefileUsage)),
             Number(static_cast<std::int64_t>(HandleCount(process))), Number(GetGuiResources(process, GR_GDIOBJECTS)),
             Number(GetGuiResources(process, GR_USEROBJECTS))}};
}

} // namespace

void AddProcessRequests(RequestTable& table) {
    table[L"start"] = Start;
    table[L"state"] = State;
    table[L"kill"] = Kill;
    table[L"usage"] = Usage;
}

} // namespace uidriver
