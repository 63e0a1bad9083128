#include "ui/IconList.h"

#include "win32/PixelBitmap.h"

#include <cstring>

namespace ui {

namespace {

/// Where a screen without alpha shows nothing: one bit for each pixel, each row filled up to 16.
UniqueBitmap MaskOf(const std::vector<std::uint32_t>& pixels, int size) {
    const int rowBytes = (size + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(static_cast<std::size_t>(rowBytes) * static_cast<std::size_t>(size));
    for (int at = 0; at < size * size; ++at) {
        const bool isClear = pixels[static_cast<std::size_t>(at)] >> 24 < 128;
        const auto byte = static_cast<std::size_t>(at / size * rowBytes + at % size / 8);
        if (isClear) bits[byte] = static_cast<std::uint8_t>(bits[byte] | 0x80 >> at % size % 8);
    }
    return UniqueBitmap(CreateBitmap(size, size, 1, 1, bits.data()));
}

UniqueIcon IconOf(const std::vector<std::uint32_t>& pixels, int size) {
    const PixelBitmap colors({size, size});
    if (!colors) return {};
    std::memcpy(colors.Bytes(), pixels.data(), pixels.size() * sizeof pixels[0]);
    const UniqueBitmap mask = MaskOf(pixels, size);
    ICONINFO parts{};
    parts.fIcon = TRUE;
    parts.hbmMask = mask.Get();
    parts.hbmColor = colors.Get();
    return UniqueIcon(CreateIconIndirect(&parts));
}

} // namespace

IconList::IconList(int count, const Painter& paint) {
    const int size = GetSystemMetrics(SM_CXSMICON);
    images_.Reset(ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, count, 0));
    for (int index = 0; index < count; ++index) {
        icons_.push_back(IconOf(paint(index, size), size));
        ImageList_ReplaceIcon(images_.Get(), -1, icons_.back().Get());
    }
}

} // namespace ui
