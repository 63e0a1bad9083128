#include "check/BackupList.h"

#include "archive/ControlFile.h"
#include "archive/clsListe.h"
#include "core/SequentialInput.h"
#include "core/TextDecoding.h"
#include "core/UserProfileMarker.h"
#include "platform/Text.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace {

constexpr std::wstring_view AllOfFolder = L"\\*.*";
constexpr std::wstring_view MailStoreMark = L".pst";
constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";
constexpr char EndOfFileMark = 26;
constexpr std::size_t PartBytes = 65536;

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

void FindOwnProblems(const std::wstring& path, ListedItem& item) {
    if (path.find(L',') != std::wstring::npos) Add(item, RowProblem::Comma);
    if (path.find(L'?') != std::wstring::npos) Add(item, RowProblem::LostLetters);
    if (RestorePlace(path).size() > LongestPath) Add(item, RowProblem::TooLong);
}

/// Gives the text of a list in parts of whole lines: all of it at once would take several times what its rows do.
template<typename Take>
void ForEachPart(std::string_view bytes, Take take) {
    const bool isUtf16 = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    if (isUtf16) return take(DecodeText(bytes));
    const bool isUtf8 = bytes.starts_with(Utf8Mark);
    if (isUtf8) bytes.remove_prefix(Utf8Mark.size());
    bytes = bytes.substr(0, bytes.find(EndOfFileMark));
    while (!bytes.empty()) {
        std::size_t length = std::min(bytes.find_first_of("\r\n", PartBytes), bytes.size());
        while (length < bytes.size() && (bytes[length] == '\r' || bytes[length] == '\n')) ++length;
        const std::string_view part = bytes.substr(0, length);
        // Only the beginning of a list can hold a mark: a later line that begins like one is a line.
        take(isUtf8 ? DecodeText(std::string(Utf8Mark) += part) : FromAnsi(part));
        bytes.remove_prefix(length);
    }
}

void FindSharedMailStores(std::deque<ListedItem>& items) {
    std::map<std::wstring, ListedItem*> places;
    for (ListedItem& item : items) {
        const std::wstring path = item.path;
        if (path.find(MailStoreMark) == std::wstring::npos) continue;
        const auto [place, isNew] = places.try_emplace(UpperCase(RestorePlace(path)), &item);
        if (isNew) continue;
        Add(item, RowProblem::SharedMailStore);
        Add(*place->second, RowProblem::SharedMailStore);
    }
}

/// Holds the rows against what the restore window reads, whatever its reader makes of them.
void FindLostRows(std::string_view bytes, const std::wstring& profileFolder, std::deque<ListedItem>& items) {
    const auto archiveOf = [&](std::uint32_t row) { return items[row].archive; };
    const TextIndex rows(items.size(), archiveOf, TextIndex::Case::Matters);
    std::vector<bool> isMet(items.size());
    std::vector<bool> isRestored(items.size());
    ControlFileReader reader(profileFolder);
    std::vector<ControlFileRecord> records;
    ForEachPart(bytes, [&](std::wstring text) {
        records.clear();
        reader.Read(std::move(text), records);
        for (const ControlFileRecord& record : records) {
            const auto found = rows.Find(record.innerArchive);
            // The first record of a name is the one that counts.
            if (found.empty() || isMet[found.front()]) continue;
            const std::wstring folder = FolderOf(WithoutFolderMark(record.restorePath));
            for (const std::uint32_t row : found) {
                isMet[row] = true;
                isRestored[row] = folder == FolderOf(RestorePlace(items[row].path));
            }
        }
    });
    for (std::size_t row = 0; row < items.size(); ++row) {
        if (!isRestored[row] && items[row].problems == 0) Add(items[row], RowProblem::NotRestorable);
    }
}

bool IsTwoFieldLine(const std::wstring& line) {
    return std::count(line.begin(), line.end(), L',') == 1;
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

std::deque<ListedItem> ReadBackupList(std::string_view bytes, const std::wstring& profileFolder, PackedTexts& texts) {
    std::deque<ListedItem> items;
    std::optional<bool> isTwoFieldList;
    ForEachPart(bytes, [&](std::wstring text) {
        SequentialInput input(std::move(text));
        while (!input.IsAtEnd()) {
            const std::wstring line = input.Line();
            if (!isTwoFieldList) isTwoFieldList = IsTwoFieldLine(line);
            if (line.empty()) continue;
            const Fields fields = FieldsOf(line);
            const std::wstring path = WithoutFolderMark(WithUserProfile(fields.path, profileFolder));
            ListedItem& item = items.emplace_back();
            item.number = static_cast<int>(items.size());
            item.path = texts.Keep(path);
            item.isFolder = fields.path.ends_with(AllOfFolder) || fields.kind == L"-1" || fields.kind == L"16";
            // Where the row names none, the archiver has named it after the row's place.
            item.archive = texts.Keep(fields.archive.empty() ? InnerArchiveName(item.number) : fields.archive);
            if (*isTwoFieldList) Add(item, RowProblem::TwoFields);
            if (!fields.isReadable) Add(item, RowProblem::NotRestorable);
            FindOwnProblems(path, item);
        }
    });
    FindSharedMailStores(items);
    FindLostRows(bytes, profileFolder, items);
    return items;
}
