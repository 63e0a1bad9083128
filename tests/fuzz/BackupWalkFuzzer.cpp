// A whole medium, its list and its archive, recovered as the check recovers it, and compared with this computer or not:
// nothing may land outside the target, and nothing that is here may change.
#include "Require.h"

#include "check/CheckWork.h"
#include "support/FakeFileStore.h"
#include "support/ReportTexts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t sizeBytes) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), sizeBytes);
    // The list stands before the first byte 0, the archive behind it.
    const std::size_t border = bytes.find('\0');
    const std::string_view list = bytes.substr(0, border);
    const std::string_view archive = border == std::string_view::npos ? std::string_view() : bytes.substr(border + 1);
    FakeFileStore files;
    files.Add(L"E:\\OKRBACKUP.ZIP", std::string(archive));
    files.Add(L"E:\\_listFich.lst", std::string(list));
    const std::wstring here[] = {L"C:\\a.txt", L"C:\\D\\b.txt", L"C:\\D\\sub\\c.txt"};
    for (const std::wstring& path : here) files.Add(path, "here", {1, 1});
    files.freeBytes = 1 << 22;
    CheckRequest request;
    request.place = L"E:\\";
    request.password = L"Valcoreaux1";
    request.target = L"D:\\Target";
    // The last byte of an archive without a remark is 0.
    request.isComparison = sizeBytes > 0 && (data[sizeBytes - 1] & 1) != 0;
    const BackupReport report = RunCheck(files, request, {});
    for (const std::wstring& path : files.Paths()) {
        Require(path.starts_with(L"D:\\Target\\") || path.starts_with(L"E:\\") ||
                std::find(std::begin(here), std::end(here), path) != std::end(here));
        Require(path.find(L"\\..\\") == std::wstring::npos && path.find(L':', 2) == std::wstring::npos);
    }
    Require(files.BytesOf(L"E:\\OKRBACKUP.ZIP") == archive);
    for (const std::wstring& path : here) Require(files.BytesOf(path) == "here");
    Require(!ReportJson(report).empty());
    return 0;
}
