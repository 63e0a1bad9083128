#include "check/BackupList.h"

#include "archive/ControlFile.h"
#include "archive/clsListe.h"
#include "core/SequentialInput.h"
#include "core/TextDecoding.h"
#include "core/UserProfileMarker.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

#include <algorithm>
#include <map>

namespace {

constexpr std::wstring_view AllOfFolder = L"\\*.*";
constexpr std::wstring_view MailStoreMark = L".pst";
constexpr std::size_t LongestPath = 259;

bool IsNumber(std::wstring_view text) {
    if (text.starts_with(L'-')) text.remove_prefix(1);
    return !text.empty() && text.size() < 10 && text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

bool IsInnerArchive(std::wstring_view text) {
    return text.size() >= 7 && text.starts_with(L"Zip") && IsNumber(text.substr(3));
}

struct Fields {
    std::wstring path;
    std::wstring kind;
    std::wstring archive;
    bool isReadable = false;
};

/// Takes a row apart from its end, where no path stands.
Fields FieldsOf(const std::wstring& line) {
    const std::size_t last = line.rfind(L',');
    if (last == std::wstring::npos) return {line, {}, {}, false};
    const std::wstring end = line.substr(last + 1);
    if (IsNumber(end)) return {line.substr(0, last), end, {}, true};
    const std::size_t middle = last == 0 ? std::wstring::npos : line.rfind(L',', last - 1);
    if (middle != std::wstring::npos) {
        const std::wstring kind = line.substr(middle + 1, last - middle - 1);
        if (IsNumber(kind)) return {line.substr(0, middle), kind, IsInnerArchive(end) ? end : std::wstring(), true};
    }
    return {line, {}, {}, false};
}

/// Where the restore window puts an item that was saved from `path`.
std::wstring RestorePlace(const std::wstring& path) {
    return path.find(MailStoreMark) == std::wstring::npos ? path : MailStoreFolder + LastName(path);
}

std::wstring FolderOf(const std::wstring& path) {
    const std::size_t end = path.find_last_of(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(0, end);
}

std::wstring WithoutFolderMark(const std::wstring& path) {
    return ReplaceAll(path, AllOfFolder, L"");
}

void Add(ListedItem& item, RowProblem problem) {
    item.problems |= static_cast<unsigned>(problem);
}

void FindOwnProblems(ListedItem& item) {
    if (item.path.find(L',') != std::wstring::npos) Add(item, RowProblem::Comma);
    if (item.path.find(L'?') != std::wstring::npos) Add(item, RowProblem::LostLetters);
    if (RestorePlace(item.path).size() > LongestPath) Add(item, RowProblem::TooLong);
}

void FindSharedMailStores(std::vector<ListedItem>& items) {
    std::map<std::wstring, ListedItem*> places;
    for (ListedItem& item : items) {
        if (item.path.find(MailStoreMark) == std::wstring::npos) continue;
        const auto [place, isNew] = places.try_emplace(UpperCase(RestorePlace(item.path)), &item);
        if (isNew) continue;
        Add(item, RowProblem::SharedMailStore);
        Add(*place->second, RowProblem::SharedMailStore);
    }
}

/// Holds the rows against what the restore window reads, whatever its reader makes of them.
void FindLostRows(std::string_view bytes, const std::wstring& profileFolder, std::vector<ListedItem>& items) {
    std::vector<ControlFileRecord> records;
    try {
        ReadControlFile(bytes, profileFolder, records);
    } catch (const RuntimeError&) {
        // The rows before the one that could not be read are there.
    }
    std::map<std::wstring, const ControlFileRecord*> byArchive;
    for (const ControlFileRecord& record : records) byArchive.try_emplace(record.innerArchive, &record);
    for (ListedItem& item : items) {
        const auto found = byArchive.find(item.archive);
        const bool isFound = found != byArchive.end() && FolderOf(WithoutFolderMark(found->second->restorePath)) ==
                                                             FolderOf(RestorePlace(item.path));
        if (!isFound && item.problems == 0) Add(item, RowProblem::NotRestorable);
    }
}

bool IsTwoFieldList(std::string_view bytes) {
    const std::wstring first = SequentialInput(DecodeText(bytes)).Line();
    return std::count(first.begin(), first.end(), L',') == 1;
}

} // namespace

std::wstring LastName(const std::wstring& path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

bool IsNameMeant(const std::wstring& listed, const std::wstring& real) {
    const std::wstring meant = UpperCase(listed);
    const std::wstring found = UpperCase(real);
    if (meant == found || meant == UpperCase(FromAnsi(ToAnsi(real)))) return true;
    // A letter outside of the list's alphabet became a question mark, or two where it takes two units.
    if (meant.size() != found.size()) return false;
    for (std::size_t at = 0; at < found.size(); ++at) {
        const bool isLost = meant[at] == L'?' && static_cast<std::uint32_t>(found[at]) > 127;
        if (meant[at] != found[at] && !isLost) return false;
    }
    return true;
}

std::vector<ListedItem> ReadBackupList(std::string_view bytes, const std::wstring& profileFolder) {
    std::vector<ListedItem> items;
    const bool isTwoFieldList = IsTwoFieldList(bytes);
    SequentialInput input(DecodeText(bytes));
    while (!input.IsAtEnd()) {
        const std::wstring line = input.Line();
        if (line.empty()) continue;
        Fields fields = FieldsOf(line);
        ListedItem item;
        item.number = static_cast<int>(items.size()) + 1;
        item.path = WithoutFolderMark(WithUserProfile(fields.path, profileFolder));
        item.isFolder = fields.path.ends_with(AllOfFolder) || fields.kind == L"-1" || fields.kind == L"16";
        item.kind = fields.kind;
        // Where the row names none, the archiver has named it after the row's place.
        item.archive = fields.archive.empty() ? InnerArchiveName(item.number) : fields.archive;
        if (isTwoFieldList) Add(item, RowProblem::TwoFields);
        if (!fields.isReadable) Add(item, RowProblem::NotRestorable);
        FindOwnProblems(item);
        items.push_back(std::move(item));
    }
    FindSharedMailStores(items);
    FindLostRows(bytes, profileFolder, items);
    return items;
}
