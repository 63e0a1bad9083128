#include "restore/RestoreRows.h"

#include "core/LongConversion.h"
#include "core/UserProfileMarker.h"
#include "platform/Locale.h"
#include "platform/RuntimeError.h"
#include "resources/TextId.h"
#include "selection/clsFileInfo.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace {

constexpr std::int32_t ReadOnlyAttribute = 1;
constexpr std::int32_t HiddenAttribute = 2;
constexpr std::int32_t SystemAttribute = 4;
constexpr std::int32_t DirectoryAttribute = 16;

std::optional<std::int16_t> ToInteger(const std::wstring& text, const std::wstring& decimalSeparator) {
    try {
        const std::int32_t value = ToLong(text, decimalSeparator);
        if (std::in_range<std::int16_t>(value)) return static_cast<std::int16_t>(value);
    } catch (const RuntimeError&) {
        // no number
    }
    return std::nullopt;
}

} // namespace

void RemplirAttrib(std::int32_t attributes, std::wstring& text) {
    if ((attributes & HiddenAttribute) != 0) text += L'H';
    if ((attributes & SystemAttribute) != 0) text += L'S';
    if ((attributes & ReadOnlyAttribute) != 0) text += L'R';
}

std::wstring KindLabel(const Application& app, const std::wstring& kind) {
    const auto integer = ToInteger(kind, app.machine.locale->DecimalSeparator());
    if (!integer) return {};
    const std::int16_t attributes = *integer;
    if (attributes == KindFolder) return app.Text(TextId::FolderMark);
    std::wstring label = app.Text((attributes & DirectoryAttribute) != 0 ? TextId::FolderKind : TextId::FileKind);
    std::wstring letters;
    RemplirAttrib(attributes, letters);
    return letters.empty() ? label : label + L" " + letters;
}

std::wstring ExtractionPath(const std::wstring& restorePath) {
    return ReplaceAll(restorePath, L"\\*.*", L"");
}

void RestoreRows::Clear() {
    rows_.clear();
    tickedCount_ = 0;
    holdItems_ = false;
}

void RestoreRows::ShowNoBackup(const std::wstring& text) {
    Clear();
    for (int line = 0; line < 2; ++line) rows_.push_back({{text, {}, {}}, {}});
}

void RestoreRows::Add(const Application& app, std::vector<ControlFileRecord> records) {
    holdItems_ = true;
    rows_.reserve(rows_.size() + records.size());
    // Nearly every row is of the same kind as the one before it.
    std::wstring kind;
    std::wstring label;
    for (ControlFileRecord& record : records) {
        rows_.push_back({std::move(record), {}});
        Row& row = rows_.back();
        if (kind != row.record.kind) {
            kind = row.record.kind;
            label = KindLabel(app, kind);
        }
        row.kindLabel = label;
    }
}

std::span<const RestoreRows::Column> RestoreRows::Columns() {
    static constexpr std::array columns{
        Column{TextId::PathHeader, 0, [](const Row& row) { return row.record.restorePath; }},
        Column{TextId::TypeHeader, 1400, [](const Row& row) { return row.kindLabel; }},
        // The kind's number and the inner archive's name are for the program.
        Column{TextId::None, 0, [](const Row& row) { return row.record.kind; }},
        Column{TextId::None, 0, [](const Row& row) { return row.record.innerArchive; }},
    };
    return columns;
}

std::wstring RestoreRows::Cell(int row, int column) const {
    const Row& shown = At(row);
    const auto columns = Columns();
    const auto index = static_cast<std::size_t>(column);
    return index < columns.size() ? columns[index].cell(shown) : std::wstring();
}

void RestoreRows::Toggle(int row) {
    if (!holdItems_) return;
    bool& isTicked = rows_.at(static_cast<std::size_t>(row)).isTicked;
    isTicked = !isTicked;
    tickedCount_ += isTicked ? 1 : -1;
}

bool RestoreRows::IsAnyTickedUnfit() const {
    return std::any_of(rows_.begin(), rows_.end(),
                       [](const Row& row) { return row.isTicked && !row.record.couldBeWritten; });
}

std::vector<bool> RestoreRows::Ticks() const {
    std::vector<bool> ticks;
    ticks.reserve(rows_.size());
    for (const Row& row : rows_) ticks.push_back(row.isTicked);
    return ticks;
}

void RestoreRows::SetTicks(const std::vector<bool>& ticks) {
    TickAll(false);
    for (std::size_t row = 0; row < std::min(rows_.size(), ticks.size()); ++row) {
        if (ticks[row]) Toggle(static_cast<int>(row));
    }
}

void RestoreRows::TickAll(bool isTicked) {
    if (!holdItems_) return;
    for (Row& row : rows_) row.isTicked = isTicked;
    tickedCount_ = isTicked ? Count() : 0;
}
