#pragma once

#include "platform/windows/discs/ComPointer.h"

#include <cstdint>
#include <string>
#include <vector>

/// A file that goes into an image: either a stream still to be written, or what an earlier session holds.
struct ImageEntry {
    std::wstring name;
    ComPointer<IStream> stream;
    std::uint64_t sizeBytes = 0;
    SYSTEMTIME modified{};
    std::uint32_t earlierSector = 0; ///< where an earlier session has it; counts when there is no stream
};

/// An image as pieces, so that it is never whole in memory.
struct ImagePlan {
    struct Piece {
        std::uint64_t offset = 0; ///< in the image, from its own start
        std::uint64_t sizeBytes = 0;
        std::vector<std::uint8_t> bytes; ///< what the piece holds, unless it is a stream
        ComPointer<IStream> stream;
    };

    std::vector<Piece> pieces; ///< by offset; what lies between them is zero
    std::uint64_t sectors = 0;
};

/// An ISO 9660 volume with Joliet names whose first sector is `startSector` of the disc.
ImagePlan LayOutIso(const std::vector<ImageEntry>& entries, const std::wstring& label, std::uint32_t startSector);

/// A UDF 1.02 volume, for files that ISO 9660 cannot hold.
ImagePlan LayOutUdf(const std::vector<ImageEntry>& entries, const std::wstring& label);

/// The sectors that `sizeBytes` bytes take.
constexpr std::uint64_t SectorsFor(std::uint64_t sizeBytes) {
    return (sizeBytes + 2047) / 2048;
}

/// Puts numbers and texts into a block of bytes.
class BlockWriter {
  public:
    explicit BlockWriter(std::size_t sizeBytes) : bytes(sizeBytes) {}

    void Little(std::size_t offset, std::uint64_t value, std::size_t width) {
        for (std::size_t index = 0; index < width; ++index)
            bytes.at(offset + index) = static_cast<std::uint8_t>(value >> (8 * index));
    }
    void Big(std::size_t offset, std::uint64_t value, std::size_t width) {
        for (std::size_t index = 0; index < width; ++index)
            bytes.at(offset + index) = static_cast<std::uint8_t>(value >> (8 * (width - 1 - index)));
    }
    void Both(std::size_t offset, std::uint64_t value, std::size_t width) {
        Little(offset, value, width);
        Big(offset + width, value, width);
    }
    void Text(std::size_t offset, const std::string& text) {
        for (std::size_t index = 0; index < text.size(); ++index)
            bytes.at(offset + index) = static_cast<std::uint8_t>(text[index]);
    }
    void Copy(std::size_t offset, const std::vector<std::uint8_t>& other) {
        for (std::size_t index = 0; index < other.size(); ++index) bytes.at(offset + index) = other[index];
    }

    std::vector<std::uint8_t> bytes;
};
