#include "Requests.h"

namespace uidriver {

std::int64_t NumberAt(const Row& fields, std::size_t index) {
    if (index >= fields.size()) throw RequestError("a number is missing");
    wchar_t* end = nullptr;
    const std::int64_t value = wcstoll(fields[index].c_str(), &end, 0);
    if (end == fields[index].c_str() || *end != L'\0') throw RequestError("not a number: " + ToUtf8(fields[index]));
    return value;
}

HWND WindowAt(const Row& fields, std::size_t index) {
    const auto window = reinterpret_cast<HWND>(static_cast<INT_PTR>(NumberAt(fields, index)));
    if (!IsWindow(window)) throw RequestError("gone");
    return window;
}

std::wstring Number(std::int64_t value) {
    return std::to_wstring(value);
}

std::wstring Handle(HWND window) {
    return Number(static_cast<std::int64_t>(reinterpret_cast<INT_PTR>(window)));
}

RequestTable AllRequests() {
    RequestTable table;
    AddProcessRequests(table);
    AddWindowRequests(table);
    AddListRequests(table);
    AddMessageBoxRequests(table);
    AddDriveRequests(table);
    AddFileRequests(table);
    AddRightsRequests(table);
    AddSurroundingsRequests(table);
    AddMischiefRequests(table);
    return table;
}

} // namespace uidriver
