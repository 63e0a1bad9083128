#include "Requests.h"
#include "win32/UniqueHandle.h"

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

namespace uidriver {

namespace {

/// Memory that the system gives out, and takes back with LocalFree.
struct LocalTraits {
    using Type = HLOCAL;
    static Type Invalid() { return nullptr; }
    static void Close(Type memory) { LocalFree(memory); }
};
using UniqueLocal = UniqueHandle<LocalTraits>;

// rights PATH: owner and access list of a file or folder, in the security descriptor definition language
Rows Rights(const Row& fields) {
    constexpr SECURITY_INFORMATION wanted = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    UniqueLocal descriptor;
    const DWORD failure = GetNamedSecurityInfoW(fields.at(1).c_str(), SE_FILE_OBJECT, wanted, nullptr, nullptr, nullptr,
                                                nullptr, descriptor.Receive());
    if (failure != 0) throw RequestError("no rights to be read, error " + std::to_string(failure));
    wchar_t* text = nullptr;
    if (!ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.Get(), SDDL_REVISION_1, wanted, &text,
                                                              nullptr))
        throw RequestError("no text for the rights, error " + std::to_string(GetLastError()));
    const UniqueLocal owned(text);
    return {{text}};
}

} // namespace

void AddRightsRequests(RequestTable& table) {
    table[L"rights"] = Rights;
}

} // namespace uidriver
