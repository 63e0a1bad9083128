// A whole medium, its list and its archive, recovered as the check recovers it: nothing may land outside the target.
#include "Require.h"

#include "check/CheckWork.h"
#include "support/FakeFileStore.h"
#include "support/ReportTexts.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), sizeBytes);
    // The list stands before the first byte 0, the archive behind it.
    const std::size_t border = bytes.find('\0');
    const std::string_view list = bytes.substr(0, border);
    const std::string_view archive = border == std::string_view::npos ? std::string_view() : bytes.substr(border + 1);
    FakeFileStore files;
    files.Add(L"E:\\OKRBACKUP.ZIP", std::string(archive));
    files.Add(L"E:\\_listFich.lst", std::string(list));
    files.freeBytes = 1 << 22;
    CheckRequest request;
    request.place = L"E:\\";
    request.password = L"Valcoreaux1";
    request.target = L"D:\\Target";
    const BackupReport report = RunCheck(files, request, {});
    for (const std::wstring& path : files.Paths()) {
        Require(path.starts_with(L"D:\\Target\\") || path.starts_with(L"E:\\"));
        Require(path.find(L"\\..\\") == std::wstring::npos && path.find(L':', 2) == std::wstring::npos);
    }
    Require(files.BytesOf(L"E:\\OKRBACKUP.ZIP") == archive);
    Require(!ReportJson(report).empty());
    return 0;
}
