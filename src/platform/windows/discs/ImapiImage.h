#pragma once

#include "platform/windows/discs/ImapiDrive.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What is to be written.
struct BurnJob {
    std::vector<std::wstring> files; ///< each goes to the root of the disc under its own name
    std::wstring label;
    std::optional<double> speed; ///< multiples of the family's single speed; none is the drive's fastest
};

/// A file that goes into the image, open as long as the image lives.
struct ImageSource {
    std::wstring name;
    ComPointer<IStream> stream;
    std::uint64_t sizeBytes = 0;
};

HRESULT OpenSources(const std::vector<std::wstring>& files, std::vector<ImageSource>& sources);

/// What the drive says of the disc before a write.
struct WriteGround {
    LONG state = 0;
    LONG freeSectors = 0;
    LONG totalSectors = 0;
    bool isBlank = false;
    bool isOverwriteOnly = false;
};

/// Fails where the disc cannot be written to in its present state.
HRESULT ReadGround(const ImapiDrive& drive, WriteGround& ground);

/// The label that an image gets for `label`, found out without a drive.
std::wstring LabelOnImage(const std::wstring& label);

/// What is written is read from these until the write has returned: the system does not say that one keeps the other.
struct BuiltImage {
    ComPointer<IFileSystemImage> image;
    ComPointer<IFileSystemImageResult> result;
};

/// The image of the sources for the disc in the drive, after what the disc holds already. Fails, before anything is
/// written, where that cannot be read.
HRESULT BuildImage(const ImapiDrive& drive, const WriteGround& ground, const std::wstring& label,
                   const std::vector<ImageSource>& sources, BuiltImage& built);
