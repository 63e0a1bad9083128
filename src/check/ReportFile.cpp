#include "check/ReportFile.h"

#include "check/CheckWork.h"
#include "platform/CodePages.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

std::string AsText(const BackupReport& report, const Texts& texts) {
    std::string bytes(Utf8Mark);
    for (const std::wstring& line : ReportLines(report, texts)) bytes += ToUtf8(line) + "\r\n";
    return bytes;
}

/// Beside the file that it may replace first, so that a report is never half there.
void WriteBytes(FileStore& files, const std::wstring& path, const std::string& bytes) {
    const std::wstring full = files.FullPath(path);
    const std::wstring fresh = full + L".new";
    if (files.Look(fresh)) files.Delete(fresh);
    const auto file = files.CreateNew(fresh);
    if (!file) throw RuntimeError(ErrorNumber::PathFileAccessError);
    file->Write(bytes);
    file->Close();
    const auto old = files.Look(full);
    if (old && !old->isFolder) files.Delete(full);
    if (!files.Rename(fresh, full)) throw RuntimeError(ErrorNumber::PathFileAccessError);
}

bool IsTextReport(const std::wstring& path) {
    return UpperCase(path).ends_with(L".TXT");
}

bool IsPartOfBackup(const FileStore& files, const BackupReport& report, const std::wstring& path) {
    const std::wstring full = UpperCase(files.FullPath(path));
    const BackupPlace place = PlaceOf(files, report.archive);
    return full == UpperCase(report.archive) || (!place.list.empty() && full == UpperCase(place.list));
}

} // namespace

void WriteReport(FileStore& files, const BackupReport& report, const std::wstring& path, const Texts& texts) {
    if (IsPartOfBackup(files, report, path)) throw RuntimeError(ErrorNumber::PermissionDenied);
    WriteBytes(files, path, IsTextReport(path) ? AsText(report, texts) : ReportJson(report));
}
