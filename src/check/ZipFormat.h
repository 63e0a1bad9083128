#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// What a directory of the zip format is made of; PKWARE's APPNOTE.TXT: local header 4.3.7, central directory
// record 4.3.12, Zip64 end 4.3.14, its locator 4.3.15, end 4.3.16.
inline constexpr std::string_view ZipEntrySign("PK\3\4", 4);
inline constexpr std::string_view ZipRecordSign("PK\1\2", 4);
inline constexpr std::string_view ZipLargeEndSign("PK\6\6", 4);
inline constexpr std::string_view ZipLargeEndPlaceSign("PK\6\7", 4);
inline constexpr std::string_view ZipEndSign("PK\5\6", 4);
inline constexpr std::size_t ZipRecordBytes = 46;
inline constexpr std::size_t ZipLargeEndHeadBytes = 12; ///< up to what the length that it tells counts
inline constexpr std::size_t ZipLargeEndBytes = 56;
inline constexpr std::size_t ZipLargeEndPlaceBytes = 20;
inline constexpr std::size_t ZipEndBytes = 22;
/// A field that is full stands for a number in the Zip64 fields (4.4.1.4).
inline constexpr std::uint64_t ZipFull16 = 0xFFFF;
inline constexpr std::uint64_t ZipFull32 = 0xFFFFFFFF;

/// The number in so many bytes, the lowest first; they are there.
inline std::uint64_t ZipNumber(std::string_view bytes, std::size_t at, std::size_t length) {
    std::uint64_t value = 0;
    for (std::size_t i = length; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}
