#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A file at the root of a disc image.
struct DiscFile {
    std::wstring name;
    struct Extent {
        std::uint32_t sector;
        std::uint64_t sizeBytes;
    };
    std::vector<Extent> extents;
    std::uint64_t sizeBytes = 0;
};

struct DiscVolume {
    std::wstring label;
    bool isUdf = false;
    std::vector<DiscFile> files;
};

/// Reads the root of an ISO 9660 image with Joliet, or of a UDF one; nothing when the image has neither.
std::optional<DiscVolume> ReadDiscVolume(const std::wstring& imagePath);

/// Makes the content of the image in `discFolder` appear in its volume folder, as a drive does some time after a write.
/// Returns false when the image cannot be read.
bool ShowDiscContent(const std::wstring& discFolder);
