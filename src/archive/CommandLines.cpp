#include "archive/CommandLines.h"

#include <string_view>
#include <vector>

namespace {

std::vector<std::wstring_view> Pieces(std::wstring_view path) {
    std::vector<std::wstring_view> pieces;
    std::size_t from = 0;
    for (std::size_t at = path.find(L'\\'); at != std::wstring_view::npos; at = path.find(L'\\', from)) {
        pieces.push_back(path.substr(from, at - from));
        from = at + 1;
    }
    pieces.push_back(path.substr(from));
    return pieces;
}

std::wstring Quoted(std::wstring_view text) {
    return L"\"" + std::wstring(text) + L"\"";
}

std::wstring Pack(const std::wstring& programFolder) {
    return programFolder + L"\\" + ArchiverName + L" a -tzip ";
}

std::wstring Unpack(const std::wstring& programFolder) {
    return programFolder + L"\\7za x ";
}

} // namespace

std::wstring SegmentQuoted(const std::wstring& path) {
    const auto pieces = Pieces(path);
    std::wstring quoted = std::wstring(pieces.front()) + L"\\";
    for (std::size_t at = 1; at < pieces.size(); ++at) {
        quoted += Quoted(pieces[at]);
        if (at + 1 < pieces.size()) quoted += L"\\";
    }
    return quoted;
}

std::wstring SegmentQuotedFolderOf(const std::wstring& path) {
    const auto pieces = Pieces(path);
    std::wstring quoted = std::wstring(pieces.front()) + L"\\";
    for (std::size_t at = 1; at + 1 < pieces.size(); ++at) quoted += Quoted(pieces[at]) + L"\\";
    return quoted;
}

std::wstring PackFolderCommand(const std::wstring& programFolder, const std::wstring& source,
                               const std::wstring& destination) {
    return Pack(programFolder) + SegmentQuoted(destination) + L" " + SegmentQuoted(source) + L" -r0";
}

std::wstring PackFileCommand(const std::wstring& programFolder, const std::wstring& source,
                             const std::wstring& destination) {
    return Pack(programFolder) + Quoted(destination) + L" " + Quoted(source);
}

std::wstring PackFinalCommand(const std::wstring& programFolder, const std::wstring& source,
                              const std::wstring& destination, const std::wstring& password) {
    return Pack(programFolder) + Quoted(destination) + L" -p" + password + L" " + Quoted(source);
}

std::wstring UnpackOuterCommand(const std::wstring& programFolder, const std::wstring& archive,
                                const std::wstring& workFolder, const std::wstring& password) {
    return Unpack(programFolder) + archive + L" -o" + SegmentQuoted(workFolder) + L" -aoa -p" + password;
}

std::wstring UnpackInnerCommand(const std::wstring& programFolder, const std::wstring& workFolder,
                                const std::wstring& restorePath, const std::wstring& innerName) {
    // The work folder's own name stands bare, as long as it can.
    const std::wstring_view name = Pieces(workFolder).back();
    const bool isOneWord = name.find(L' ') == std::wstring_view::npos;
    const std::wstring folder = SegmentQuotedFolderOf(workFolder) + (isOneWord ? std::wstring(name) : Quoted(name));
    const std::wstring innerArchive = folder + L"\\" + innerName + L".zip";
    return Unpack(programFolder) + innerArchive + L" -aoa -o" + SegmentQuotedFolderOf(restorePath);
}
