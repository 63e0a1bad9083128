#include "Requests.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>

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

static std::string Answer(const RequestTable& table, const std::string& line) {
    try {
        const Row fields = ParseLine(line);
        const auto request = table.find(fields.front());
        if (request == table.end()) throw RequestError("unknown request");
        const Rows rows = request->second(fields);
        return "ok " + std::to_string(rows.size()) + "\n" + FormatRows(rows);
    } catch (const RequestError& error) {
        return std::string("error ") + error.what() + "\n";
    }
}

} // namespace uidriver

int wmain() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    uidriver::RequestTable table;
    uidriver::AddProcessRequests(table);
    uidriver::AddWindowRequests(table);
    uidriver::AddListRequests(table);
    uidriver::AddMessageBoxRequests(table);
    uidriver::AddDriveRequests(table);
    uidriver::AddFileRequests(table);
    for (std::string line; std::getline(std::cin, line);) {
        std::cout << uidriver::Answer(table, line) << std::flush;
    }
    return 0;
}
