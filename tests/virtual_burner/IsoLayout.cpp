#include "ImageLayout.h"

#include <algorithm>
#include <array>
#include <set>

namespace {

// Offsets and field forms are those of ECMA-119, the public text of ISO 9660, counted from 0 and not from 1.
constexpr std::size_t SectorBytes = 2048;
constexpr std::uint32_t FirstDescriptor = 16;

using Bytes = std::vector<std::uint8_t>;

struct PlacedEntry {
    const ImageEntry* entry = nullptr;
    std::uint32_t sector = 0;
};

/// A name of eight and three capital letters, digits and underscores, different from all in `taken`.
std::string ShortName(const std::wstring& name, std::set<std::string>& taken) {
    const auto reduced = [](const std::wstring& text, std::size_t length) {
        std::string result;
        for (wchar_t character : text.substr(0, length)) {
            if (character >= L'a' && character <= L'z') character = static_cast<wchar_t>(character - L'a' + L'A');
            const bool isKept = (character >= L'A' && character <= L'Z') || (character >= L'0' && character <= L'9');
            result += isKept ? static_cast<char>(character) : '_';
        }
        return result;
    };
    const auto dot = name.rfind(L'.');
    const std::string base = reduced(name.substr(0, dot), 8);
    const std::string ending = "." + (dot == std::wstring::npos ? std::string() : reduced(name.substr(dot + 1), 3));
    std::string candidate = base;
    for (int number = 1; !taken.insert(candidate + ending).second; ++number) {
        const std::string digits = std::to_string(number);
        candidate = base.substr(0, 8 - digits.size()) + digits;
    }
    return candidate + ending + ";1";
}

std::string BigEndian(const std::wstring& text) {
    std::string bytes;
    for (wchar_t character : text) {
        bytes += static_cast<char>(character >> 8);
        bytes += static_cast<char>(character & 0xFF);
    }
    return bytes;
}

/// ECMA-119, 9.1.
Bytes DirectoryRecord(const std::string& name, std::uint32_t sector, std::uint64_t sizeBytes, bool isFolder,
                      const SYSTEMTIME& time) {
    const std::size_t length = (33 + name.size() + 1) / 2 * 2;
    BlockWriter record(length);
    record.Little(0, length, 1);
    record.Both(2, sector, 4);
    record.Both(10, sizeBytes, 4);
    const std::array<int, 6> parts{time.wYear - 1900, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
    for (std::size_t index = 0; index < parts.size(); ++index)
        record.Little(18 + index, static_cast<std::uint64_t>(parts[index]), 1);
    record.Little(25, isFolder ? 2 : 0, 1);
    record.Both(28, 1, 2);
    record.Little(32, name.size(), 1);
    record.Text(33, name);
    return record.bytes;
}

/// Records do not cross the end of a sector (6.8.1.1).
Bytes Directory(const std::vector<Bytes>& records) {
    Bytes directory;
    for (const Bytes& record : records) {
        const std::size_t left = SectorBytes - directory.size() % SectorBytes;
        if (record.size() > left) directory.resize(directory.size() + left);
        directory.insert(directory.end(), record.begin(), record.end());
    }
    directory.resize(SectorsFor(directory.size()) * SectorBytes);
    return directory;
}

struct Tree {
    std::vector<std::pair<std::string, PlacedEntry>> names; ///< sorted by name
    std::uint32_t pathTableSector = 0;
    std::uint32_t rootSector = 0;
};

Bytes RootDirectory(const Tree& tree, std::size_t sizeBytes, const SYSTEMTIME& now) {
    std::vector<Bytes> records{DirectoryRecord(std::string(1, '\0'), tree.rootSector, sizeBytes, true, now),
                               DirectoryRecord(std::string(1, '\1'), tree.rootSector, sizeBytes, true, now)};
    for (const auto& [name, placed] : tree.names)
        records.push_back(DirectoryRecord(name, placed.sector, placed.entry->sizeBytes, false, placed.entry->modified));
    return Directory(records);
}

/// The record of the root alone (9.4), its numbers in either order of bytes.
Bytes PathTable(const Tree& tree, bool isBigEndian) {
    BlockWriter table(SectorBytes);
    table.Little(0, 1, 1);
    if (isBigEndian) {
        table.Big(2, tree.rootSector, 4);
        table.Big(6, 1, 2);
    } else {
        table.Little(2, tree.rootSector, 4);
        table.Little(6, 1, 2);
    }
    return table.bytes;
}

/// A primary (8.4) or, for Joliet, a supplementary volume descriptor (8.5).
Bytes Descriptor(int type, const Tree& tree, const std::string& label, std::uint64_t volumeSectors,
                 std::size_t rootBytes, const SYSTEMTIME& now) {
    const bool isJoliet = type == 2;
    BlockWriter block(SectorBytes);
    const auto fill = [&](std::size_t offset, std::size_t length, const std::string& text) {
        for (std::size_t index = 0; index < length; ++index) block.Little(offset + index, ' ', 1);
        if (isJoliet)
            for (std::size_t index = 0; index + 1 < length; index += 2) block.Big(offset + index, ' ', 2);
        block.Text(offset, text.substr(0, length));
    };
    block.Little(0, static_cast<std::uint64_t>(type), 1);
    block.Text(1, "CD001");
    block.Little(6, 1, 1);
    fill(8, 32, "");
    fill(40, 32, label);
    block.Both(80, volumeSectors, 4);
    // The escape sequence of UCS-2 level 3, which tells Joliet from other supplementary descriptors.
    if (isJoliet) block.Text(88, "%/E");
    block.Both(120, 1, 2);
    block.Both(124, 1, 2);
    block.Both(128, SectorBytes, 2);
    block.Both(132, 10, 4);
    block.Little(140, tree.pathTableSector, 4);
    block.Big(148, tree.pathTableSector + 1, 4);
    block.Copy(156, DirectoryRecord(std::string(1, '\0'), tree.rootSector, rootBytes, true, now));
    fill(190, 128, "");
    fill(318, 128, "");
    fill(446, 128, "");
    fill(574, 128, "");
    fill(702, 37, "");
    fill(739, 37, "");
    fill(776, 37, "");
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%04d%02d%02d%02d%02d%02d00", now.wYear, now.wMonth, now.wDay, now.wHour,
                  now.wMinute, now.wSecond);
    block.Text(813, stamp);
    block.Text(830, stamp);
    block.Text(847, std::string(16, '0'));
    block.Text(864, std::string(16, '0'));
    block.Little(881, 1, 1);
    return block.bytes;
}

std::string CapitalLabel(const std::wstring& label) {
    std::string result;
    for (wchar_t character : label) {
        if (character >= L'a' && character <= L'z') character = static_cast<wchar_t>(character - L'a' + L'A');
        const bool isKept = (character >= L'A' && character <= L'Z') || (character >= L'0' && character <= L'9');
        result += isKept ? static_cast<char>(character) : '_';
    }
    return result;
}

} // namespace

ImagePlan LayOutIso(const std::vector<ImageEntry>& entries, const std::wstring& label, std::uint32_t startSector) {
    SYSTEMTIME now{};
    GetSystemTime(&now);
    constexpr std::size_t directorySectors = 1;
    Tree plain;
    Tree joliet;
    // From the start: 16 sectors of nothing, three descriptors, two path tables for each tree, the two roots, the
    // files.
    plain.pathTableSector = startSector + FirstDescriptor + 3;
    joliet.pathTableSector = plain.pathTableSector + 2;
    plain.rootSector = joliet.pathTableSector + 2;
    joliet.rootSector = plain.rootSector + directorySectors;
    std::uint32_t sector = joliet.rootSector + directorySectors;

    ImagePlan plan;
    std::vector<ImagePlan::Piece> files;
    std::set<std::string> taken;
    for (const ImageEntry& entry : entries) {
        PlacedEntry placed{&entry, entry.stream ? sector : entry.earlierSector};
        if (entry.stream) {
            files.push_back({std::uint64_t{sector - startSector} * SectorBytes, entry.sizeBytes, {}, entry.stream});
            sector += static_cast<std::uint32_t>(SectorsFor(entry.sizeBytes));
        }
        plain.names.emplace_back(ShortName(entry.name, taken), placed);
        joliet.names.emplace_back(BigEndian(entry.name + L";1"), placed);
    }
    const auto byName = [](const auto& left, const auto& right) {
        return std::lexicographical_compare(
            left.first.begin(), left.first.end(), right.first.begin(), right.first.end(),
            [](char one, char other) { return static_cast<unsigned char>(one) < static_cast<unsigned char>(other); });
    };
    std::sort(plain.names.begin(), plain.names.end(), byName);
    std::sort(joliet.names.begin(), joliet.names.end(), byName);
    plan.sectors = sector - startSector;

    constexpr std::size_t rootBytes = directorySectors * SectorBytes;
    const auto place = [&](std::uint32_t at, Bytes bytes) {
        const std::uint64_t sizeBytes = bytes.size();
        plan.pieces.push_back({std::uint64_t{at - startSector} * SectorBytes, sizeBytes, std::move(bytes), {}});
    };
    const std::uint32_t descriptor = startSector + FirstDescriptor;
    place(descriptor, Descriptor(1, plain, CapitalLabel(label), sector, rootBytes, now));
    place(descriptor + 1, Descriptor(2, joliet, BigEndian(label), sector, rootBytes, now));
    BlockWriter last(SectorBytes);
    last.Little(0, 255, 1);
    last.Text(1, "CD001");
    last.Little(6, 1, 1);
    place(descriptor + 2, last.bytes);
    place(plain.pathTableSector, PathTable(plain, false));
    place(plain.pathTableSector + 1, PathTable(plain, true));
    place(joliet.pathTableSector, PathTable(joliet, false));
    place(joliet.pathTableSector + 1, PathTable(joliet, true));
    place(plain.rootSector, RootDirectory(plain, rootBytes, now));
    place(joliet.rootSector, RootDirectory(joliet, rootBytes, now));
    plan.pieces.insert(plan.pieces.end(), files.begin(), files.end());
    return plan;
}
