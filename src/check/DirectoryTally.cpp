#include "check/DirectoryTally.h"

#include "check/ZipFormat.h"

#include <algorithm>

namespace {

constexpr std::size_t SignBytes = 4;
constexpr std::uint64_t LargestEnd = 16384;

// PKWARE's APPNOTE.TXT: extra fields: Zip64 4.5.3, NTFS times 4.5.5; the system that made the record 4.4.2.
constexpr std::uint64_t LargeSizesField = 0x0001;
constexpr std::uint64_t SystemTimesField = 0x000A;
constexpr std::size_t SystemTimesBytes = 32;
constexpr std::uint64_t DosSystem = 0;
constexpr std::uint64_t NtSystem = 10;

template<typename Text>
std::uint64_t Print(const Text& name, std::uint64_t sizeBytes) {
    // FNV-1a, 64 bits: the offset basis and the prime of its authors, Fowler, Noll and Vo.
    std::uint64_t hash = 14695981039346656037u;
    const auto mix = [&](std::uint64_t value) { hash = (hash ^ value) * 1099511628211u; };
    std::size_t length = name.size();
    while (length > 0 && (name[length - 1] == '/' || name[length - 1] == '\\')) --length;
    bool isPlain = true;
    for (const auto letter : name) isPlain = isPlain && static_cast<std::uint32_t>(letter) < 128 && letter > 0;
    for (std::size_t at = 0; isPlain && at < length; ++at)
        mix(name[at] == '\\' ? '/' : static_cast<unsigned>(name[at]));
    for (int shift = 0; shift < 64; shift += 16) mix(sizeBytes >> shift & 0xFFFF);
    return hash;
}

void ReadExtra(std::string_view extra, bool isPackedSizeLarge, DirectoryRecord& record) {
    while (extra.size() >= 4) {
        const std::uint64_t field = ZipNumber(extra, 0, 2);
        const auto length = static_cast<std::size_t>(ZipNumber(extra, 2, 2));
        if (length > extra.size() - 4) return;
        std::string_view value = extra.substr(4, length);
        if (field == LargeSizesField) {
            // Each number is there only when there is no room for it elsewhere.
            if (record.sizeBytes == ZipFull32 && value.size() >= 8) {
                record.sizeBytes = ZipNumber(value, 0, 8);
                value.remove_prefix(8);
            }
            if (isPackedSizeLarge) value.remove_prefix(std::min<std::size_t>(8, value.size()));
            if (record.entryPlace == ZipFull32 && value.size() >= 8) record.entryPlace = ZipNumber(value, 0, 8);
        }
        if (field == SystemTimesField && length >= SystemTimesBytes && ZipNumber(value, 4, 2) == 1) {
            record.written = ZipNumber(value, 8, 8);
            record.created = ZipNumber(value, 24, 8);
        }
        extra.remove_prefix(4 + length);
    }
}

} // namespace

void DirectoryTally::Met(std::wstring_view name, std::uint64_t sizeBytes) {
    ++metCount_;
    metSum_ += Print(name, sizeBytes);
}

void DirectoryTally::Take(std::string_view bytes) {
    if (hasEnded_ || isBroken_) return;
    pending_ += bytes;
    std::size_t taken = 0;
    while (!hasEnded_ && !isBroken_) {
        const std::size_t record = TakeRecord(std::string_view(pending_).substr(taken));
        if (record == 0) break;
        taken += record;
    }
    pending_.erase(0, taken);
}

/// How long the record at the beginning of the bytes is; 0 when it is not whole yet.
std::size_t DirectoryTally::TakeRecord(std::string_view bytes) {
    if (bytes.size() < SignBytes) return 0;
    if (bytes.starts_with(ZipRecordSign)) {
        if (bytes.size() < ZipRecordBytes) return 0;
        const auto nameLength = static_cast<std::size_t>(ZipNumber(bytes, 28, 2));
        const auto extraLength = static_cast<std::size_t>(ZipNumber(bytes, 30, 2));
        const std::size_t length =
            ZipRecordBytes + nameLength + extraLength + static_cast<std::size_t>(ZipNumber(bytes, 32, 2));
        if (bytes.size() < length) return 0;
        DirectoryRecord record;
        record.place = recordBytes_;
        record.entryPlace = ZipNumber(bytes, 42, 4);
        record.sizeBytes = ZipNumber(bytes, 24, 4);
        const bool isPackedSizeLarge = ZipNumber(bytes, 20, 4) == ZipFull32;
        ReadExtra(bytes.substr(ZipRecordBytes + nameLength, extraLength), isPackedSizeLarge, record);
        const std::uint64_t system = ZipNumber(bytes, 5, 1);
        if (system == DosSystem || system == NtSystem)
            record.attributes = static_cast<std::uint32_t>(ZipNumber(bytes, 38, 4) & 0xFFFF);
        record.name = bytes.substr(ZipRecordBytes, nameLength);
        namedSum_ += Print(record.name, record.sizeBytes);
        recordBytes_ += length;
        OnRecord(namedCount_++, record);
        return length;
    }
    if (bytes.starts_with(ZipLargeEndSign)) {
        if (bytes.size() < ZipLargeEndHeadBytes) return 0;
        const std::uint64_t length = ZipNumber(bytes, 4, 8);
        isBroken_ = length > LargestEnd;
        return isBroken_ || bytes.size() < ZipLargeEndHeadBytes + length ? 0 : ZipLargeEndHeadBytes + length;
    }
    if (bytes.starts_with(ZipLargeEndPlaceSign))
        return bytes.size() < ZipLargeEndPlaceBytes ? 0 : ZipLargeEndPlaceBytes;
    if (!bytes.starts_with(ZipEndSign)) {
        isBroken_ = true;
        return 0;
    }
    if (bytes.size() < ZipEndBytes) return 0;
    const std::uint64_t count = ZipNumber(bytes, 10, 2);
    isBroken_ = count != ZipFull16 && count != (namedCount_ & ZipFull16);
    hasEnded_ = !isBroken_;
    return ZipEndBytes;
}
