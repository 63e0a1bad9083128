#include "Requests.h"
#include "faults/memory/AllocationPlan.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <sddl.h>

#include <map>
#include <vector>

namespace uidriver {

namespace {

/// The plan for one process, as long as the driver runs: it can still be read when the process has ended.
AllocationPlan* PlanOf(DWORD process) {
    struct SharedPlan {
        UniqueObject section;
        AllocationPlan* plan = nullptr;
    };
    static std::map<DWORD, SharedPlan> plans;
    auto& [section, plan] = plans[process];
    if (plan != nullptr) return plan;
    section = UniqueObject(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(AllocationPlan),
                                              NameOfAllocationPlan(process).c_str()));
    plan = static_cast<AllocationPlan*>(MapViewOfFile(section.Get(), FILE_MAP_WRITE, 0, 0, sizeof(AllocationPlan)));
    if (plan == nullptr) throw RequestError("no plan, error " + std::to_string(GetLastError()));
    return plan;
}

// loadlibrary PID PATH: the process loads a library
Rows LoadIntoProcess(const Row& fields) {
    const std::wstring& path = fields.at(2);
    const std::size_t bytes = (path.size() + 1) * sizeof(wchar_t);
    const auto id = static_cast<DWORD>(NumberAt(fields, 1));
    PlanOf(id);
    const UniqueObject process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, id));
    void* const remote = VirtualAllocEx(process.Get(), nullptr, bytes, MEM_COMMIT, PAGE_READWRITE);
    WriteProcessMemory(process.Get(), remote, path.c_str(), bytes, nullptr);
    // Where the system's libraries lie is the same for every process.
    const auto load = reinterpret_cast<LPTHREAD_START_ROUTINE>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "LoadLibraryW")));
    const UniqueObject thread(CreateRemoteThread(process.Get(), nullptr, 0, load, remote, 0, nullptr));
    if (!thread) throw RequestError("cannot enter the process, error " + std::to_string(GetLastError()));
    WaitForSingleObject(thread.Get(), INFINITE);
    VirtualFreeEx(process.Get(), remote, 0, MEM_RELEASE);
    DWORD library = 0;
    GetExitCodeThread(thread.Get(), &library);
    if (library == 0) throw RequestError("the process does not load the library");
    return {};
}

// allocations PID [FIRST COUNT]: from now on so many allocations of the process fail, from the first one on, 0 for
// none; without numbers: how many it has made since, and how many have failed
Rows Allocations(const Row& fields) {
    AllocationPlan& plan = *PlanOf(static_cast<DWORD>(NumberAt(fields, 1)));
    if (fields.size() < 3) return {{Number(plan.made), Number(plan.failed)}};
    const auto first = static_cast<LONG>(NumberAt(fields, 2));
    plan.first = 0;
    plan.made = 0;
    plan.failed = 0;
    plan.last = first + static_cast<LONG>(NumberAt(fields, 3)) - 1;
    plan.first = first;
    return {};
}

// foreignmutex NAME: a mutex that exists and that nobody may open, as one of another account; until the driver's end
Rows HoldForeignMutex(const Row& fields) {
    PSECURITY_DESCRIPTOR nobody = nullptr;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:", SDDL_REVISION_1, &nobody, nullptr);
    SECURITY_ATTRIBUTES attributes{sizeof attributes, nobody, FALSE};
    static std::vector<UniqueObject> held;
    held.emplace_back(CreateMutexW(&attributes, FALSE, fields.at(1).c_str()));
    const DWORD error = GetLastError();
    LocalFree(nobody);
    if (!held.back() || error == ERROR_ALREADY_EXISTS)
        throw RequestError("no such mutex, error " + std::to_string(error));
    return {};
}

// folderid PATH: the numbers by which the system knows a folder, whatever it is called
Rows FolderIdentity(const Row& fields) {
    const UniqueFile folder(CreateFileW(fields.at(1).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION facts{};
    if (!GetFileInformationByHandle(folder.Get(), &facts)) throw RequestError("no such folder");
    return {{Number(facts.dwVolumeSerialNumber), Number(facts.nFileIndexHigh), Number(facts.nFileIndexLow)}};
}

} // namespace

void AddMischiefRequests(RequestTable& table) {
    table[L"loadlibrary"] = LoadIntoProcess;
    table[L"allocations"] = Allocations;
    table[L"foreignmutex"] = HoldForeignMutex;
    table[L"folderid"] = FolderIdentity;
}

} // namespace uidriver
