#include "check/ReportFile.h"

#include "check/CheckWork.h"
#include "check/TargetNames.h"
#include "platform/CodePages.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "resources/TextId.h"

namespace {

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr const wchar_t* FreshEnding = L".new";
constexpr int MostNumbers = 1000;

constexpr std::size_t PieceBytes = 65536;

void WriteAsText(const BackupReport& report, const NumberWords& words, NewFile& file) {
    std::string piece(Utf8Mark);
    TellReport(report, words, [&](const std::wstring& line) {
        piece += ToUtf8(line) + "\r\n";
        if (piece.size() < PieceBytes) return;
        file.Write(piece);
        piece.clear();
    });
    file.Write(piece);
}

void Discard(FileStore& files, const std::wstring& path) {
    try {
        files.Delete(path);
    } catch (const RuntimeError&) {
        // The disk has gone, and the reason is told already.
    }
}

/// Beside the file that it may replace first, so that a report is never half there.
template<typename Fill>
void WriteWhole(FileStore& files, const std::wstring& path, Fill fill) {
    const std::wstring full = files.FullPath(path);
    std::wstring fresh;
    std::unique_ptr<NewFile> file;
    for (int number = 1; !file; ++number) {
        if (number > MostNumbers) throw RuntimeError(ErrorNumber::PathFileAccessError);
        fresh = number == 1 ? full + FreshEnding : Numbered(full + FreshEnding, number);
        file = files.CreateNew(fresh);
    }
    try {
        fill(*file);
        file->Close();
        files.Replace(fresh, full);
    } catch (const RuntimeError&) {
        file.reset();
        Discard(files, fresh);
        throw;
    }
}

bool IsTextReport(const std::wstring& path) {
    return UpperCase(path).ends_with(L".TXT");
}

/// Where a copied backup lies in a folder, its two files are what no report may take the place of.
bool IsPartOfBackup(const FileStore& files, const std::wstring& archive, const std::wstring& path) {
    const std::wstring full = UpperCase(files.FullPath(path));
    const BackupPlace place = PlaceOf(files, archive);
    return full == UpperCase(archive) || (!place.list.empty() && full == UpperCase(place.list));
}

} // namespace

void RequireOffBackup(const FileStore& files, const std::wstring& archive, const std::wstring& path,
                      const Texts& texts) {
    if (IsOnMedium(files, archive, path))
        throw RuntimeError(static_cast<std::int32_t>(ErrorNumber::PermissionDenied),
                           texts(TextId::CheckTargetOnMedium));
    if (IsPartOfBackup(files, archive, path)) throw RuntimeError(ErrorNumber::PermissionDenied);
}

void WriteReport(FileStore& files, const BackupReport& report, const std::wstring& path, const NumberWords& words) {
    RequireOffBackup(files, report.archive, path, words.texts);
    WriteWhole(files, path, [&](NewFile& file) {
        if (IsTextReport(path)) return WriteAsText(report, words, file);
        TellReportAsJson(report, [&](std::string_view piece) { file.Write(piece); });
    });
}
