// The control file of a medium, read as the restore window reads it.
#include "Require.h"

#include "archive/ControlFile.h"
#include "platform/RuntimeError.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), sizeBytes);
    std::vector<ControlFileRecord> records;
    try {
        ReadControlFile(bytes, L"C:\\users\\agent", records);
    } catch (const RuntimeError& error) {
        Require(error.Number() == static_cast<std::int32_t>(ErrorNumber::InputPastEndOfFile));
    }
    for (const ControlFileRecord& record : records) Require(!record.restorePath.empty());
    // A record takes at least one byte of the file and the end of a field.
    Require(records.size() <= sizeBytes);
    return 0;
}
