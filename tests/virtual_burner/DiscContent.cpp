#include "DiscContent.h"

#include "Drives.h"

#include "platform/discs/MasteringCodes.h"
#include "win32/UniqueHandle.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>

namespace {

using Bytes = std::vector<std::uint8_t>;

class Image {
  public:
    explicit Image(const std::wstring& path)
        : file_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, 0, nullptr)) {}

    Bytes Read(std::uint64_t offset, std::uint64_t sizeBytes) const {
        Bytes bytes(static_cast<std::size_t>(sizeBytes));
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        DWORD count = 0;
        if (!file_ || !ReadFile(file_.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, &place)) count = 0;
        bytes.resize(count);
        return bytes;
    }
    Bytes Sectors(std::uint64_t sector, std::uint64_t count = 1) const {
        Bytes bytes = Read(sector * Mastering::SectorBytes, count * Mastering::SectorBytes);
        bytes.resize(static_cast<std::size_t>(count * Mastering::SectorBytes));
        return bytes;
    }

  private:
    UniqueFile file_;
};

std::uint64_t Little(const Bytes& bytes, std::size_t offset, std::size_t width) {
    std::uint64_t value = 0;
    for (std::size_t index = width; index-- > 0;) value = value << 8 | bytes.at(offset + index);
    return value;
}

std::wstring BigEndianText(const Bytes& bytes, std::size_t offset, std::size_t sizeBytes) {
    std::wstring text;
    for (std::size_t index = 0; index + 1 < sizeBytes; index += 2)
        text += static_cast<wchar_t>(bytes.at(offset + index) << 8 | bytes.at(offset + index + 1));
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\0')) text.pop_back();
    return text;
}

std::optional<DiscVolume> ReadJoliet(const Image& image) {
    for (std::uint64_t sector = 16; sector < 32; ++sector) {
        const Bytes descriptor = image.Sectors(sector);
        if (std::memcmp(descriptor.data() + 1, "CD001", 5) != 0 || descriptor[0] == 255) return std::nullopt;
        if (descriptor[0] != 2 || std::memcmp(descriptor.data() + 88, "%/E", 3) != 0) continue;
        DiscVolume volume;
        volume.label = BigEndianText(descriptor, 40, 32);
        const std::uint64_t sizeBytes = Little(descriptor, 156 + 10, 4);
        const Bytes root = image.Sectors(Little(descriptor, 156 + 2, 4), sizeBytes / Mastering::SectorBytes);
        for (std::size_t offset = 0; offset < root.size();) {
            const std::size_t length = root[offset];
            if (length == 0) {
                offset = (offset / Mastering::SectorBytes + 1) * Mastering::SectorBytes;
                continue;
            }
            const std::size_t nameBytes = root.at(offset + 32);
            if (!(root.at(offset + 25) & 2)) {
                DiscFile file;
                file.name = BigEndianText(root, offset + 33, nameBytes);
                file.name = file.name.substr(0, file.name.rfind(L';'));
                file.sizeBytes = Little(root, offset + 10, 4);
                file.extents.push_back({static_cast<std::uint32_t>(Little(root, offset + 2, 4)), file.sizeBytes});
                volume.files.push_back(std::move(file));
            }
            offset += length;
        }
        return volume;
    }
    return std::nullopt;
}

std::wstring CompressedText(const Bytes& bytes, std::size_t offset, std::size_t sizeBytes) {
    if (sizeBytes < 2) return {};
    if (bytes.at(offset) == 16) return BigEndianText(bytes, offset + 1, sizeBytes - 1);
    std::wstring text;
    for (std::size_t index = 1; index < sizeBytes; ++index) text += static_cast<wchar_t>(bytes.at(offset + index));
    return text;
}

std::vector<DiscFile::Extent> UdfExtents(const Bytes& entry, std::uint32_t partition) {
    std::vector<DiscFile::Extent> extents;
    const std::size_t start = 176 + Little(entry, 168, 4);
    const std::size_t sizeBytes = Little(entry, 172, 4);
    for (std::size_t offset = start; offset + 8 <= start + sizeBytes; offset += 8)
        extents.push_back({partition + static_cast<std::uint32_t>(Little(entry, offset + 4, 4)),
                           Little(entry, offset, 4) & 0x3FFFFFFF});
    return extents;
}

std::optional<DiscVolume> ReadUdf(const Image& image) {
    constexpr std::uint64_t anchorTag = 2;
    const Bytes anchor = image.Sectors(256);
    if (Little(anchor, 0, 2) != anchorTag) return std::nullopt;
    DiscVolume volume;
    volume.isUdf = true;
    std::uint32_t partition = 0;
    std::uint32_t fileSet = 0;
    const std::uint64_t sequence = Little(anchor, 20, 4);
    for (std::uint64_t sector = sequence; sector < sequence + 16; ++sector) {
        const Bytes descriptor = image.Sectors(sector);
        const std::uint64_t tag = Little(descriptor, 0, 2);
        if (tag == 5) partition = static_cast<std::uint32_t>(Little(descriptor, 188, 4));
        if (tag == 6) {
            volume.label = CompressedText(descriptor, 84, descriptor[84 + 127]);
            fileSet = static_cast<std::uint32_t>(Little(descriptor, 252, 4));
        }
        if (tag == 8) break;
    }
    const Bytes set = image.Sectors(partition + fileSet);
    const Bytes rootEntry = image.Sectors(partition + Little(set, 404, 4));
    const auto rootExtents = UdfExtents(rootEntry, partition);
    if (rootExtents.empty()) return std::nullopt;
    const std::uint64_t rootBytes = Little(rootEntry, 56, 8);
    const Bytes root = image.Read(std::uint64_t{rootExtents[0].sector} * Mastering::SectorBytes, rootBytes);
    for (std::size_t offset = 0; offset + 38 <= root.size();) {
        const std::size_t nameBytes = root[offset + 19];
        const std::size_t useBytes = Little(root, offset + 36, 2);
        if (!(root[offset + 18] & 2)) {
            const Bytes entry = image.Sectors(partition + Little(root, offset + 24, 4));
            DiscFile file;
            file.name = CompressedText(root, offset + 38 + useBytes, nameBytes);
            file.sizeBytes = Little(entry, 56, 8);
            file.extents = UdfExtents(entry, partition);
            volume.files.push_back(std::move(file));
        }
        offset += (38 + useBytes + nameBytes + 3) / 4 * 4;
    }
    return volume;
}

bool CopyOut(const Image& image, const DiscFile& file, const std::wstring& path) {
    constexpr std::uint64_t pieceBytes = 1 << 20;
    const UniqueFile target(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!target) return false;
    std::uint64_t left = file.sizeBytes;
    for (const auto& extent : file.extents) {
        std::uint64_t offset = std::uint64_t{extent.sector} * Mastering::SectorBytes;
        std::uint64_t extentLeft = std::min(extent.sizeBytes, left);
        while (extentLeft > 0) {
            const Bytes piece = image.Read(offset, std::min(extentLeft, pieceBytes));
            DWORD written = 0;
            if (piece.empty() ||
                !WriteFile(target.Get(), piece.data(), static_cast<DWORD>(piece.size()), &written, nullptr))
                return false;
            offset += piece.size();
            extentLeft -= piece.size();
            left -= piece.size();
        }
    }
    return left == 0;
}

} // namespace

std::optional<DiscVolume> ReadDiscVolume(const std::wstring& imagePath) {
    const Image image(imagePath);
    try {
        if (auto volume = ReadJoliet(image)) return volume;
        return ReadUdf(image);
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

bool ShowDiscContent(const std::wstring& discFolder) {
    namespace fs = std::filesystem;
    const ProcessLock lock(L"VirtualBurnerContent");
    SettingsFile settings(discFolder + L"\\disc.ini");
    // The showing of an earlier write may have come late and shown this one's content already.
    if (settings.Text("content") != "pending") return true;
    const std::wstring imagePath = discFolder + L"\\disc.iso";
    const fs::path volumePath(discFolder + L"\\volume");
    const fs::path preparedPath(discFolder + L"\\volume.new");
    const auto volume = ReadDiscVolume(imagePath);
    std::error_code ignored;
    fs::remove_all(preparedPath, ignored);
    fs::create_directory(preparedPath, ignored);
    bool isWhole = volume.has_value();
    if (volume) {
        const Image image(imagePath);
        for (const DiscFile& file : volume->files)
            isWhole = isWhole && CopyOut(image, file, (preparedPath / file.name).wstring());
        std::ofstream(preparedPath / ".windows-label") << Narrow(volume->label) << '\n';
    }
    // A later write has its own showing to come, and so has another disc; either may come at this moment.
    const ProcessLock whileCompared(SettingsLockName);
    const SettingsFile now(discFolder + L"\\disc.ini");
    if (now.Text("id") != settings.Text("id") || now.Text("writes") != settings.Text("writes")) return isWhole;
    fs::remove_all(volumePath, ignored);
    fs::rename(preparedPath, volumePath, ignored);
    settings.Set("content", isWhole ? "shown" : "unreadable");
    return isWhole;
}
