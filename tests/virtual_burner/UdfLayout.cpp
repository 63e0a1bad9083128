#include "ImageLayout.h"

#include <algorithm>

namespace {

constexpr std::size_t SectorBytes = 2048;
constexpr std::uint32_t MainSequence = 32;
constexpr std::uint32_t ReserveSequence = 48;
constexpr std::uint32_t SequenceSectors = 16;
constexpr std::uint32_t Integrity = 64;
constexpr std::uint32_t Anchor = 256;
constexpr std::uint32_t Partition = 257;
constexpr std::size_t DescriptorBytes = 512;
constexpr std::uint64_t LargestExtentBytes = 0x3FFFF800;

using Bytes = std::vector<std::uint8_t>;

/// The CRC of ECMA-167, 3/7.2.6: x^16 + x^12 + x^5 + 1, the highest bit first.
std::uint16_t Checksum(const Bytes& bytes, std::size_t first, std::size_t count) {
    std::uint16_t checksum = 0;
    for (std::size_t index = first; index < first + count; ++index) {
        checksum = static_cast<std::uint16_t>(checksum ^ (bytes[index] << 8));
        for (int bit = 0; bit < 8; ++bit)
            checksum = static_cast<std::uint16_t>(checksum & 0x8000 ? (checksum << 1) ^ 0x1021 : checksum << 1);
    }
    return checksum;
}

/// Fills in the sixteen bytes that every descriptor begins with (3/7.2); its own checksum skips the byte it stands in.
void Tag(BlockWriter& block, std::uint16_t id, std::uint32_t location, std::size_t lengthBytes) {
    constexpr std::size_t tagBytes = 16;
    block.Little(0, id, 2);
    block.Little(2, 2, 2);
    block.Little(8, Checksum(block.bytes, tagBytes, lengthBytes - tagBytes), 2);
    block.Little(10, lengthBytes - tagBytes, 2);
    block.Little(12, location, 4);
    unsigned sum = 0;
    for (std::size_t index = 0; index < tagBytes; ++index)
        if (index != 4) sum += block.bytes[index];
    block.Little(4, sum, 1);
}

/// OSTA Compressed Unicode (UDF 1.02, 2.1.1): 8 or 16 bits for each character, told by the first byte.
Bytes Compressed(const std::wstring& text) {
    const bool isNarrow = std::all_of(text.begin(), text.end(), [](wchar_t character) { return character < 256; });
    Bytes bytes{static_cast<std::uint8_t>(isNarrow ? 8 : 16)};
    for (wchar_t character : text) {
        if (!isNarrow) bytes.push_back(static_cast<std::uint8_t>(character >> 8));
        bytes.push_back(static_cast<std::uint8_t>(character & 0xFF));
    }
    return bytes;
}

/// A dstring (ECMA-167, 1/7.2.12): its last byte has its length.
void FieldText(BlockWriter& block, std::size_t offset, std::size_t width, const std::wstring& text) {
    if (text.empty()) return;
    Bytes bytes = Compressed(text);
    bytes.resize(std::min(bytes.size(), width - 1));
    block.Copy(offset, bytes);
    block.Little(offset + width - 1, bytes.size(), 1);
}

void CharacterSet(BlockWriter& block, std::size_t offset) {
    block.Text(offset + 1, "OSTA Compressed Unicode");
}

void Identifier(BlockWriter& block, std::size_t offset, const std::string& text, bool hasRevision) {
    block.Text(offset + 1, text);
    if (hasRevision) block.Little(offset + 24, 0x0102, 2);
}

/// A timestamp (1/7.3) in UTC.
void Time(BlockWriter& block, std::size_t offset, const SYSTEMTIME& time) {
    block.Little(offset, 0x1000, 2);
    block.Little(offset + 2, time.wYear, 2);
    block.Little(offset + 4, time.wMonth, 1);
    block.Little(offset + 5, time.wDay, 1);
    block.Little(offset + 6, time.wHour, 1);
    block.Little(offset + 7, time.wMinute, 1);
    block.Little(offset + 8, time.wSecond, 1);
}

void LongExtent(BlockWriter& block, std::size_t offset, std::uint32_t sizeBytes, std::uint32_t sector) {
    block.Little(offset, sizeBytes, 4);
    block.Little(offset + 4, sector, 4);
}

constexpr char Implementation[] = "*Virtual burner";

class UdfVolume {
  public:
    UdfVolume(const std::vector<ImageEntry>& entries, std::wstring label)
        : entries_(entries), label_(std::move(label)) {
        GetSystemTime(&now_);
    }

    ImagePlan LayOut() {
        // Of the partition: file set, its end, the root's entry, the root's names, the files' entries, the files.
        const Bytes names = RootNames();
        const auto nameSectors = static_cast<std::uint32_t>(SectorsFor(names.size()));
        std::uint32_t sector = FileEntrySector(nameSectors, entries_.size());
        std::vector<ImagePlan::Piece> files;
        for (std::size_t index = 0; index < entries_.size(); ++index) {
            const ImageEntry& entry = entries_[index];
            PlaceEntry(FileEntrySector(nameSectors, index), entry.sizeBytes, sector, false, entry.modified, index + 16);
            files.push_back({std::uint64_t{Partition + sector} * SectorBytes, entry.sizeBytes, {}, entry.stream});
            sector += static_cast<std::uint32_t>(SectorsFor(entry.sizeBytes));
        }
        partitionSectors_ = sector;
        PlaceFileSet();
        PlaceEntry(2, names.size(), 3, true, now_, 0);
        Place(Partition + 3, RootNames(nameSectors));

        PlaceRecognition();
        PlaceSequence(MainSequence);
        PlaceSequence(ReserveSequence);
        PlaceIntegrity();
        const std::uint32_t end = Partition + partitionSectors_;
        PlaceAnchor(Anchor);
        PlaceAnchor(end);
        plan_.sectors = end + 1;
        plan_.pieces.insert(plan_.pieces.end(), files.begin(), files.end());
        std::sort(plan_.pieces.begin(), plan_.pieces.end(),
                  [](const auto& left, const auto& right) { return left.offset < right.offset; });
        return std::move(plan_);
    }

  private:
    static std::uint32_t FileEntrySector(std::uint32_t nameSectors, std::size_t index) {
        return 3 + nameSectors + static_cast<std::uint32_t>(index);
    }
    void Place(std::uint32_t sector, Bytes bytes) {
        const std::uint64_t sizeBytes = bytes.size();
        plan_.pieces.push_back({std::uint64_t{sector} * SectorBytes, sizeBytes, std::move(bytes), {}});
    }
    void PlaceDescriptor(BlockWriter& block, std::uint16_t id, std::uint32_t sector) {
        Tag(block, id, sector, DescriptorBytes);
        Place(sector, block.bytes);
    }

    void PlaceRecognition() {
        std::uint32_t sector = 16;
        for (const char* name : {"BEA01", "NSR02", "TEA01"}) {
            BlockWriter block(SectorBytes);
            block.Text(1, name);
            block.Little(6, 1, 1);
            Place(sector++, block.bytes);
        }
    }
    void PlaceAnchor(std::uint32_t sector) {
        BlockWriter block(SectorBytes);
        block.Little(16, SequenceSectors * SectorBytes, 4);
        block.Little(20, MainSequence, 4);
        block.Little(24, SequenceSectors * SectorBytes, 4);
        block.Little(28, ReserveSequence, 4);
        PlaceDescriptor(block, 2, sector);
    }
    void PlaceSequence(std::uint32_t first) {
        BlockWriter primary(SectorBytes);
        FieldText(primary, 24, 32, label_);
        primary.Little(56, 1, 2);
        primary.Little(58, 1, 2);
        primary.Little(60, 2, 2);
        primary.Little(62, 2, 2);
        primary.Little(64, 1, 4);
        primary.Little(68, 1, 4);
        FieldText(primary, 72, 128, label_);
        CharacterSet(primary, 200);
        CharacterSet(primary, 264);
        Time(primary, 376, now_);
        Identifier(primary, 388, Implementation, false);
        PlaceDescriptor(primary, 1, first);

        BlockWriter use(SectorBytes);
        use.Little(16, 1, 4);
        Identifier(use, 20, "*UDF LV Info", true);
        CharacterSet(use, 52);
        FieldText(use, 116, 128, label_);
        Identifier(use, 352, Implementation, false);
        PlaceDescriptor(use, 4, first + 1);

        BlockWriter partition(SectorBytes);
        partition.Little(16, 2, 4);
        partition.Little(20, 1, 2);
        Identifier(partition, 24, "+NSR02", false);
        partition.Little(184, 1, 4);
        partition.Little(188, Partition, 4);
        partition.Little(192, partitionSectors_, 4);
        Identifier(partition, 196, Implementation, false);
        PlaceDescriptor(partition, 5, first + 2);

        BlockWriter logical(SectorBytes);
        logical.Little(16, 3, 4);
        CharacterSet(logical, 20);
        FieldText(logical, 84, 128, label_);
        logical.Little(212, SectorBytes, 4);
        Identifier(logical, 216, "*OSTA UDF Compliant", true);
        LongExtent(logical, 248, SectorBytes, 0);
        logical.Little(264, 6, 4);
        logical.Little(268, 1, 4);
        Identifier(logical, 272, Implementation, false);
        logical.Little(432, 2 * SectorBytes, 4);
        logical.Little(436, Integrity, 4);
        logical.Little(440, 1, 1);
        logical.Little(441, 6, 1);
        logical.Little(442, 1, 2);
        PlaceDescriptor(logical, 6, first + 3);

        BlockWriter unallocated(SectorBytes);
        unallocated.Little(16, 4, 4);
        PlaceDescriptor(unallocated, 7, first + 4);
        BlockWriter last(SectorBytes);
        PlaceDescriptor(last, 8, first + 5);
    }
    void PlaceIntegrity() {
        BlockWriter block(SectorBytes);
        Time(block, 16, now_);
        block.Little(28, 1, 4);
        block.Little(40, entries_.size() + 16, 8);
        block.Little(72, 1, 4);
        block.Little(76, 46, 4);
        block.Little(84, partitionSectors_, 4);
        Identifier(block, 88, Implementation, false);
        block.Little(120, entries_.size(), 4);
        block.Little(124, 1, 4);
        for (std::size_t offset : {128, 130, 132}) block.Little(offset, 0x0102, 2);
        PlaceDescriptor(block, 9, Integrity);
        BlockWriter last(SectorBytes);
        PlaceDescriptor(last, 8, Integrity + 1);
    }
    void PlaceFileSet() {
        BlockWriter block(SectorBytes);
        Time(block, 16, now_);
        block.Little(28, 3, 2);
        block.Little(30, 3, 2);
        block.Little(32, 1, 4);
        block.Little(36, 1, 4);
        CharacterSet(block, 48);
        FieldText(block, 112, 128, label_);
        CharacterSet(block, 240);
        FieldText(block, 304, 32, label_);
        LongExtent(block, 400, SectorBytes, 2);
        Identifier(block, 416, "*OSTA UDF Compliant", true);
        Tag(block, 256, 0, DescriptorBytes);
        Place(Partition, block.bytes);
        BlockWriter last(SectorBytes);
        Tag(last, 8, 1, DescriptorBytes);
        Place(Partition + 1, last.bytes);
    }
    void PlaceEntry(std::uint32_t sector, std::uint64_t sizeBytes, std::uint32_t dataSector, bool isFolder,
                    const SYSTEMTIME& time, std::uint64_t uniqueId) {
        BlockWriter block(SectorBytes);
        block.Little(20, 4, 2);
        block.Little(24, 1, 2);
        block.Little(27, isFolder ? 4 : 5, 1);
        block.Little(36, 0xFFFFFFFF, 4);
        block.Little(40, 0xFFFFFFFF, 4);
        constexpr std::uint32_t readAndSearchForAll = 0x14A5;
        constexpr std::uint32_t readForAll = 0x1084;
        block.Little(44, isFolder ? readAndSearchForAll : readForAll, 4);
        block.Little(48, 1, 2);
        block.Little(56, sizeBytes, 8);
        block.Little(64, SectorsFor(sizeBytes), 8);
        for (std::size_t offset : {72, 84, 96}) Time(block, offset, time);
        block.Little(108, 1, 4);
        Identifier(block, 128, Implementation, false);
        block.Little(160, uniqueId, 8);
        std::size_t extents = 0;
        for (std::uint64_t placed = 0; placed < sizeBytes; placed += LargestExtentBytes, ++extents) {
            block.Little(176 + extents * 8, std::min(sizeBytes - placed, LargestExtentBytes), 4);
            block.Little(180 + extents * 8, dataSector + placed / SectorBytes, 4);
        }
        block.Little(172, extents * 8, 4);
        Tag(block, 261, sector, 176 + extents * 8);
        Place(Partition + sector, block.bytes);
    }
    Bytes NameRecord(const std::wstring& name, std::uint32_t entrySector, std::uint32_t uniqueId, int characteristics,
                     std::uint32_t ownSector) const {
        const Bytes text = name.empty() ? Bytes() : Compressed(name);
        const std::size_t length = (38 + text.size() + 3) / 4 * 4;
        BlockWriter record(length);
        record.Little(16, 1, 2);
        record.Little(18, static_cast<std::uint64_t>(characteristics), 1);
        record.Little(19, text.size(), 1);
        LongExtent(record, 20, SectorBytes, entrySector);
        record.Little(32, uniqueId, 4);
        record.Copy(38, text);
        Tag(record, 257, ownSector, length);
        return record.bytes;
    }
    Bytes RootNames(std::uint32_t nameSectors = 1) const {
        constexpr int folderAndParent = 0x0A;
        Bytes names = NameRecord({}, 2, 0, folderAndParent, 3);
        for (std::size_t index = 0; index < entries_.size(); ++index) {
            const auto ownSector = 3 + static_cast<std::uint32_t>(names.size() / SectorBytes);
            const Bytes record = NameRecord(entries_[index].name, FileEntrySector(nameSectors, index),
                                            static_cast<std::uint32_t>(index + 16), 0, ownSector);
            names.insert(names.end(), record.begin(), record.end());
        }
        return names;
    }

    const std::vector<ImageEntry>& entries_;
    std::wstring label_;
    SYSTEMTIME now_{};
    std::uint32_t partitionSectors_ = 0;
    ImagePlan plan_;
};

} // namespace

ImagePlan LayOutUdf(const std::vector<ImageEntry>& entries, const std::wstring& label) {
    return UdfVolume(entries, label).LayOut();
}
