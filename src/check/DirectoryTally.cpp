#include "check/DirectoryTally.h"

#include <algorithm>

namespace {

// PKWARE's APPNOTE.TXT: central directory record 4.3.12, Zip64 end 4.3.14, its locator 4.3.15, end 4.3.16.
constexpr std::string_view RecordSign("PK\1\2", 4);
constexpr std::string_view LargeEndSign("PK\6\6", 4);
constexpr std::string_view LargeEndPlaceSign("PK\6\7", 4);
constexpr std::string_view EndSign("PK\5\6", 4);
constexpr std::size_t RecordBytes = 46;
constexpr std::size_t LargeEndHeadBytes = 12;
constexpr std::size_t LargeEndPlaceBytes = 20;
constexpr std::size_t EndBytes = 22;
constexpr std::size_t SignBytes = 4;
// A field that is full stands for a number in the Zip64 fields (4.4.1.4).
constexpr std::uint64_t Saturated32 = 0xFFFFFFFF;
constexpr std::uint64_t Saturated16 = 0xFFFF;
constexpr std::uint64_t LargestEnd = 16384;

// Extra fields: Zip64 4.5.3, NTFS times 4.5.5; the system that made the record 4.4.2.
constexpr std::uint64_t LargeSizesField = 0x0001;
constexpr std::uint64_t SystemTimesField = 0x000A;
constexpr std::size_t SystemTimesBytes = 32;
constexpr std::uint64_t DosSystem = 0;
constexpr std::uint64_t NtSystem = 10;

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t length) {
    std::uint64_t value = 0;
    for (std::size_t i = length; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

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
        const std::uint64_t field = Number(extra, 0, 2);
        const auto length = static_cast<std::size_t>(Number(extra, 2, 2));
        if (length > extra.size() - 4) return;
        std::string_view value = extra.substr(4, length);
        if (field == LargeSizesField) {
            // Each number is there only when there is no room for it elsewhere.
            if (record.sizeBytes == Saturated32 && value.size() >= 8) {
                record.sizeBytes = Number(value, 0, 8);
                value.remove_prefix(8);
            }
            if (isPackedSizeLarge) value.remove_prefix(std::min<std::size_t>(8, value.size()));
            if (record.entryPlace == Saturated32 && value.size() >= 8) record.entryPlace = Number(value, 0, 8);
        }
        if (field == SystemTimesField && length >= SystemTimesBytes && Number(value, 4, 2) == 1) {
            record.written = Number(value, 8, 8);
            record.created = Number(value, 24, 8);
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
    if (bytes.starts_with(RecordSign)) {
        if (bytes.size() < RecordBytes) return 0;
        const auto nameLength = static_cast<std::size_t>(Number(bytes, 28, 2));
        const auto extraLength = static_cast<std::size_t>(Number(bytes, 30, 2));
        const std::size_t length =
            RecordBytes + nameLength + extraLength + static_cast<std::size_t>(Number(bytes, 32, 2));
        if (bytes.size() < length) return 0;
        DirectoryRecord record;
        record.place = recordBytes_;
        record.entryPlace = Number(bytes, 42, 4);
        record.sizeBytes = Number(bytes, 24, 4);
        const bool isPackedSizeLarge = Number(bytes, 20, 4) == Saturated32;
        ReadExtra(bytes.substr(RecordBytes + nameLength, extraLength), isPackedSizeLarge, record);
        const std::uint64_t system = Number(bytes, 5, 1);
        if (system == DosSystem || system == NtSystem)
            record.attributes = static_cast<std::uint32_t>(Number(bytes, 38, 4) & 0xFFFF);
        record.name = bytes.substr(RecordBytes, nameLength);
        namedSum_ += Print(record.name, record.sizeBytes);
        recordBytes_ += length;
        OnRecord(namedCount_++, record);
        return length;
    }
    if (bytes.starts_with(LargeEndSign)) {
        if (bytes.size() < LargeEndHeadBytes) return 0;
        const std::uint64_t length = Number(bytes, 4, 8);
        isBroken_ = length > LargestEnd;
        return isBroken_ || bytes.size() < LargeEndHeadBytes + length ? 0 : LargeEndHeadBytes + length;
    }
    if (bytes.starts_with(LargeEndPlaceSign)) return bytes.size() < LargeEndPlaceBytes ? 0 : LargeEndPlaceBytes;
    if (!bytes.starts_with(EndSign)) {
        isBroken_ = true;
        return 0;
    }
    if (bytes.size() < EndBytes) return 0;
    const std::uint64_t count = Number(bytes, 10, 2);
    isBroken_ = count != Saturated16 && count != (namedCount_ & Saturated16);
    hasEnded_ = !isBroken_;
    return EndBytes;
}
