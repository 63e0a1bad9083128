#include "Requests.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <iostream>

namespace uidriver {

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
    const uidriver::RequestTable table = uidriver::AllRequests();
    for (std::string line; std::getline(std::cin, line);) {
        std::cout << uidriver::Answer(table, line) << std::flush;
    }
    return 0;
}
