// The control file of a medium, read as the restore window reads it.
#include "Require.h"

#include "archive/CommandLines.h"
#include "archive/ControlFile.h"
#include "platform/RuntimeError.h"
#include "restore/RestoreRows.h"
#include "support/CommandLineParts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

/// Whether the archiver is given two switches for a row, the program's own.
bool BringsNoSwitch(const ControlFileRecord& record) {
    const auto parts = PartsOf(
        UnpackInnerCommand(L"C:\\Backup", L"C:\\Backup\\zip", ExtractionPath(record.restorePath), record.innerArchive));
    return std::count_if(parts.begin(), parts.end(), [](const std::wstring& part) {
               return part.starts_with(L'-') || part.starts_with(L'@');
           }) == 2;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), sizeBytes);
    std::vector<ControlFileRecord> records;
    try {
        ReadControlFile(bytes, L"C:\\users\\agent", records);
    } catch (const RuntimeError& error) {
        Require(error.Number() == static_cast<std::int32_t>(ErrorNumber::InputPastEndOfFile));
    }
    for (const ControlFileRecord& record : records) {
        Require(!record.restorePath.empty());
        if (record.couldBeWritten) Require(BringsNoSwitch(record));
    }
    // A record takes at least one byte of the file and the end of a field.
    Require(records.size() <= sizeBytes);
    return 0;
}
